#include "content/signature.h"

#include "platform/byte_reader.h"

#include <cstring>
#include <string>

#define FORM_OFFSET 8 // of a RIFF file's kind, behind "RIFF" and a size

static const struct {
    const char *start;
    size_t length;
    const char *extension;
} signatures[] = {
    {"\x89PNG\r\n\x1A\n", 8, ".png"},
    {"\xFF\xD8\xFF", 3, ".jpg"},
    {"GIF87a", 6, ".gif"},
    {"GIF89a", 6, ".gif"},
    {"%PDF-", 5, ".pdf"},
};

static const struct {
    const char *form;
    const char *extension;
} riffForms[] = {{"wave", ".wav"}, {"avi ", ".avi"}, {"acon", ".ani"}};

static const char *RiffExtension(const BYTE *data, size_t size)
{
    if (size < FORM_OFFSET + 4 || !EqualLetters(data, "riff", 4))
        return nullptr;
    for (const auto &row : riffForms)
        if (EqualLetters(data + FORM_OFFSET, row.form, 4))
            return row.extension;
    return nullptr;
}

// The beginning of a text, without marks and blanks; of UTF-16 the low halves.
static std::string TextStart(const BYTE *data, size_t size)
{
    const bool isWide = size >= 2 && ((data[0] == 0xFF && data[1] == 0xFE) || data[1] == 0);
    std::string text;
    for (size_t at = 0; at < size; at += isWide ? 2 : 1)
        text += (char)data[at];
    if (text.rfind("\xEF\xBB\xBF", 0) == 0)
        text.erase(0, 3);
    else if (isWide && text[0] == '\xFF')
        text.erase(0, 1);
    return text.erase(0, text.find_first_not_of(" \t\r\n"));
}

static bool BeginsWith(const std::string &text, const char *word)
{
    return text.size() > strlen(word) && EqualLetters(text.data(), word, strlen(word));
}

const char *SignatureExtension(const BYTE *data, size_t size)
{
    for (const auto &row : signatures)
        if (size >= row.length && memcmp(data, row.start, row.length) == 0)
            return row.extension;
    const char *riff = RiffExtension(data, size);
    if (riff != nullptr)
        return riff;
    const std::string text = TextStart(data, size);
    if (BeginsWith(text, "<?xml "))
        return ".xml";
    return BeginsWith(text, "<!doctype html") || BeginsWith(text, "<html>") ||
                   BeginsWith(text, "<html ")
               ? ".html"
               : nullptr;
}

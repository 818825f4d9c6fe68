#include "content/version_info.h"

#include "platform/byte_reader.h"
#include "platform/page_text.h"

#include <algorithm>
#include <cstring>

#define SIGNATURE 0xFEEF04BD
#define NUMBERS_SIZE 52
#define UTF16_PAGE 1200

// The version data that are read.
struct VersionReader {
    const BYTE *data;
    size_t size;
    bool isWide;   // UTF-16
    UINT codePage; // of the table that is read
};

// A block of the tree. Places are offsets in the data.
struct VersionBlock {
    std::string key;
    size_t value;     // where the value begins
    size_t valueSize; // bytes, as far as they lie in the block
    size_t inner;     // where the first block in it begins
    size_t end;       // its own, and the end of all in it
    size_t next;      // where the block behind it begins
};

static size_t AlignUp(size_t offset)
{
    return (offset + 3) & ~(size_t)3;
}

// Where the text at a place ends: at its zero, or at `end`.
static size_t TextEnd(const VersionReader *reader, size_t at, size_t end)
{
    const size_t unit = reader->isWide ? 2 : 1;
    while (end - at >= unit && (reader->data[at] != 0 || reader->data[at + unit - 1] != 0))
        at += unit;
    return at;
}

static std::string TextAt(const VersionReader *reader, size_t at, size_t end)
{
    const BYTE *text = reader->data + at;
    const size_t size = TextEnd(reader, at, end) - at;
    return reader->isWide ? UnitsToUtf8(text, size / 2)
                          : PageTextToUtf8(reader->codePage, (const char *)text, size);
}

// Reads the block at a place inside one that ends at `end`. Returns false when there is none.
static bool ReadBlock(const VersionReader *reader, size_t at, size_t end, VersionBlock *block)
{
    const size_t unit = reader->isWide ? 2 : 1, headerSize = reader->isWide ? 6 : 4;
    if (at > end || end - at <= headerSize)
        return false;
    ByteReader fields = OpenBytes(reader->data, end);
    const size_t length = ReadU16(&fields, at), valueLength = ReadU16(&fields, at + 2);
    const bool isText = reader->isWide && ReadU16(&fields, at + 4) != 0;
    if (length <= headerSize)
        return false;
    block->end = std::min(at + length, end);
    block->next = AlignUp(at + length);
    block->key = TextAt(reader, at + headerSize, block->end);
    const size_t keyEnd = TextEnd(reader, at + headerSize, block->end);
    block->value = std::min(AlignUp(keyEnd + unit), block->end);
    block->valueSize = std::min(isText ? valueLength * 2 : valueLength, block->end - block->value);
    block->inner = AlignUp(block->value + block->valueSize);
    return true;
}

static bool IsKey(const VersionBlock *block, const char *key)
{
    return block->key.size() == strlen(key) && EqualLetters(block->key.data(), key, strlen(key));
}

static void TakeVersion(ByteReader *fields, WORD version[4])
{
    for (int pair = 0; pair < 4; pair += 2) {
        version[pair + 1] = TakeU16(fields);
        version[pair] = TakeU16(fields);
    }
}

static void ReadNumbers(const VersionReader *reader, const VersionBlock *root, VersionInfo *info)
{
    ByteReader fields = OpenBytes(reader->data + root->value, root->valueSize);
    if (root->valueSize < NUMBERS_SIZE || TakeU32(&fields) != SIGNATURE)
        return;
    TakeU32(&fields); // the structure's own version
    TakeVersion(&fields, info->numbers.file);
    TakeVersion(&fields, info->numbers.product);
    const DWORD mask = TakeU32(&fields);
    info->numbers.flags = TakeU32(&fields) & mask;
    info->numbers.os = TakeU32(&fields);
    info->numbers.type = TakeU32(&fields);
    info->numbers.subtype = TakeU32(&fields);
    info->hasNumbers = true;
}

// Reads the language and code page that a table's key tells. Returns false when it tells none.
static bool ReadKey(const std::string &key, VersionTable *table)
{
    DWORD number = 0;
    for (const char letter : key) {
        const char *digits = "0123456789abcdef";
        const char *digit = strchr(digits, letter | (letter >= 'A' ? 0x20 : 0));
        if (letter == 0 || digit == nullptr)
            return false;
        number = number << 4 | (DWORD)(digit - digits);
    }
    table->language = (WORD)(number >> 16);
    table->codePage = (WORD)number;
    return key.size() == 8;
}

static void ReadTable(VersionReader *reader, const VersionBlock *block, UINT codePage,
                      VersionInfo *info)
{
    VersionTable table = {};
    VersionBlock text;
    table.key = block->key;
    table.isKnown = ReadKey(block->key, &table);
    if (!table.isKnown)
        table.language = table.codePage = 0;
    reader->codePage = codePage;
    if (!reader->isWide && codePage == 0 && table.codePage != UTF16_PAGE &&
        KnowsCodePage(table.codePage))
        reader->codePage = table.codePage;
    // A text's length is told in units or, by some compilers, in bytes: the zero behind it counts.
    for (size_t at = block->inner; ReadBlock(reader, at, block->end, &text); at = text.next)
        table.texts.push_back({text.key, TextAt(reader, text.value, text.end)});
    info->tables.push_back(table);
}

static void ReadTranslations(const VersionReader *reader, const VersionBlock *block,
                             VersionInfo *info)
{
    VersionBlock translation;
    for (size_t at = block->inner; ReadBlock(reader, at, block->end, &translation);
         at = translation.next) {
        if (!IsKey(&translation, "translation"))
            continue;
        ByteReader fields = OpenBytes(reader->data + translation.value, translation.valueSize);
        for (size_t count = translation.valueSize / 4; count > 0; count--) {
            const WORD language = TakeU16(&fields);
            info->translations.push_back({language, TakeU16(&fields)});
        }
    }
}

static void ReadParts(VersionReader *reader, const VersionBlock *root, UINT codePage,
                      VersionInfo *info)
{
    VersionBlock part, table;
    for (size_t at = root->inner; ReadBlock(reader, at, root->end, &part); at = part.next) {
        if (IsKey(&part, "varfileinfo"))
            ReadTranslations(reader, &part, info);
        if (!IsKey(&part, "stringfileinfo"))
            continue;
        for (size_t inner = part.inner; ReadBlock(reader, inner, part.end, &table);
             inner = table.next)
            ReadTable(reader, &table, codePage, info);
    }
}

bool ReadVersionInfo(const BYTE *data, size_t size, UINT codePage, VersionInfo *info)
{
    VersionReader reader = {data, size, 0, codePage};
    VersionBlock root;
    *info = {};
    const auto isWidth = [&](bool isWide) {
        reader.isWide = isWide;
        return ReadBlock(&reader, 0, size, &root) && IsKey(&root, "vs_version_info");
    };
    if (!isWidth(true) && !isWidth(false))
        return false;
    ReadNumbers(&reader, &root, info);
    ReadParts(&reader, &root, codePage, info);
    return info->hasNumbers || !info->tables.empty() || !info->translations.empty();
}

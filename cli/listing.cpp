#include "cli/listing.h"

#include "exe/language_tags.h"
#include "platform/console.h"
#include "platform/utf8.h"

#include <nlohmann/json.hpp>

#define PART_SIZE 65536

static void Flush(Listing *listing)
{
    if (!listing->failed && !listing->part.empty())
        listing->failed = !PrintText(listing->out, listing->part);
    listing->part.clear();
}

void AppendText(Listing *listing, const std::string &text)
{
    listing->part += text;
    if (listing->part.size() >= PART_SIZE)
        Flush(listing);
}

std::string EscapeSteering(const std::string &text)
{
    std::string escaped;
    for (size_t at = 0; at < text.size();) {
        const Utf8Letter letter = LetterAt(text, at);
        if (SteersText(letter.code)) {
            char code[8];
            snprintf(code, sizeof code, "\\u%04x", (unsigned)letter.code & 0xFFFF);
            escaped += code;
        } else {
            escaped.append(text, at, letter.length);
        }
        at += letter.length;
    }
    return escaped;
}

bool FinishListing(Listing *listing, FILE *err)
{
    Flush(listing);
    if (listing->failed && !OutputIsClosed())
        PrintText(err, "quillmoor-cli: The list cannot be written.\n");
    return !listing->failed;
}

std::string JsonText(const std::string &text)
{
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void AddField(JsonObject *object, const char *name, const std::string &json)
{
    *object += object->empty() ? "{\"" : ",\"";
    *object += name;
    *object += "\":";
    *object += json;
}

void AddTextField(JsonObject *object, const char *name, const std::string &text)
{
    AddField(object, name, JsonText(text));
}

void AddNumberField(JsonObject *object, const char *name, unsigned long long number)
{
    AddField(object, name, std::to_string(number));
}

void AddIdField(JsonObject *object, const char *name, const SurveyId &id)
{
    AddField(object, name, id.isText ? JsonText(id.text) : std::to_string(id.number));
}

void AddPictureFields(JsonObject *object, const PictureInfo *info)
{
    AddField(object, "width", info == nullptr ? "null" : std::to_string(info->width));
    AddField(object, "height", info == nullptr ? "null" : std::to_string(info->height));
    AddField(object, "bits", info == nullptr ? "null" : std::to_string(info->bits));
}

void AddLanguageFields(JsonObject *object, WORD language)
{
    const char *tag = LanguageTag(language);
    AddNumberField(object, "language", language);
    AddField(object, "languageTag", tag == nullptr ? "null" : JsonText(tag));
}

void AppendObject(Listing *listing, const JsonObject &object)
{
    AppendText(listing, EscapeSteering(object) + "}\n");
}

#include "cli/version_json.h"

#include "cli/listing.h"

#include <set>

struct NumberName {
    DWORD number;
    const char *name;
};

static const NumberName flagNames[] = {
    {0x01, "debug"},         {0x02, "prerelease"},    {0x04, "patched"},
    {0x08, "private build"}, {0x10, "info inferred"}, {0x20, "special build"},
};

static const NumberName systemNames[] = {
    {0x00001, "Windows 16-bit"},
    {0x00002, "Presentation Manager 16-bit"},
    {0x00003, "Presentation Manager"},
    {0x00004, "Windows 32-bit"},
    {0x10000, "DOS"},
    {0x10001, "DOS, Windows 16-bit"},
    {0x10004, "DOS, Windows 32-bit"},
    {0x20000, "OS/2 16-bit"},
    {0x20002, "OS/2 16-bit, Presentation Manager 16-bit"},
    {0x30000, "OS/2"},
    {0x30003, "OS/2, Presentation Manager"},
    {0x40000, "Windows NT"},
    {0x40004, "Windows NT, Windows 32-bit"},
};

static const NumberName typeNames[] = {
    {1, "application"}, {2, "library"},        {3, "driver"},
    {4, "font"},        {5, "virtual device"}, {7, "static library"},
};

template <size_t Count>
static void AddNamedNumber(JsonObject *object, const char *field, DWORD number,
                           const NumberName (&names)[Count])
{
    const std::string nameField = std::string(field) + "Name";
    AddNumberField(object, field, number);
    for (const NumberName &row : names)
        if (row.number == number) {
            AddTextField(object, nameField.c_str(), row.name);
            return;
        }
    AddField(object, nameField.c_str(), "null");
}

std::string DottedVersion(const WORD version[4])
{
    std::string text;
    for (int i = 0; i < 4; i++)
        text += (i == 0 ? "" : ".") + std::to_string(version[i]);
    return text;
}

static std::string NumbersJson(const VersionNumbers *numbers)
{
    JsonObject object;
    std::string flags;
    AddTextField(&object, "fileVersion", DottedVersion(numbers->file));
    AddTextField(&object, "productVersion", DottedVersion(numbers->product));
    AddNumberField(&object, "flags", numbers->flags);
    for (const NumberName &row : flagNames)
        if (numbers->flags & row.number)
            flags += std::string(flags.empty() ? "\"" : ",\"") + row.name + '"';
    AddField(&object, "flagNames", '[' + flags + ']');
    AddNamedNumber(&object, "os", numbers->os, systemNames);
    AddNamedNumber(&object, "type", numbers->type, typeNames);
    AddNumberField(&object, "subtype", numbers->subtype);
    return object + '}';
}

static std::string SafeJsonText(const std::string &text)
{
    return EscapeSteering(JsonText(text));
}

static std::string TableJson(const VersionTable *table)
{
    JsonObject object, texts;
    std::set<std::string> names;
    AddField(&object, "key", SafeJsonText(table->key));
    if (table->isKnown) {
        AddLanguageFields(&object, table->language);
        AddNumberField(&object, "codePage", table->codePage);
    }
    for (const VersionText &text : table->texts)
        if (names.insert(text.name).second) {
            texts += texts.empty() ? "{\n      " : ",\n      ";
            texts += SafeJsonText(text.name) + ':' + SafeJsonText(text.text);
        }
    AddField(&object, "texts", texts.empty() ? "{}" : texts + "\n    }");
    return object + '}';
}

static std::string TranslationJson(const VersionTranslation *translation)
{
    JsonObject object;
    AddLanguageFields(&object, translation->language);
    AddNumberField(&object, "codePage", translation->codePage);
    return object + '}';
}

// Adds an element of a list to its text.
static void AddElement(std::string *list, const std::string &json)
{
    *list += (list->empty() ? "\n    " : ",\n    ") + json;
}

std::string MakeVersionJson(const VersionInfo *info)
{
    std::string tables, translations;
    for (const VersionTable &table : info->tables)
        AddElement(&tables, TableJson(&table));
    for (const VersionTranslation &translation : info->translations)
        AddElement(&translations, TranslationJson(&translation));
    return "{\n  \"fixed\":" +
           (info->hasNumbers ? NumbersJson(&info->numbers) : std::string("null")) +
           ",\n  \"strings\":[" + tables + (tables.empty() ? "" : "\n  ") +
           "],\n  \"translations\":[" + translations + (translations.empty() ? "" : "\n  ") +
           "]\n}\n";
}

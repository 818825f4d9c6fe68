// What a command prints on standard output: lines for people, or JSON, one object a line.
#pragma once

#include "content/picture_info.h"
#include "exe/surveyed.h"

#include <cstdio>
#include <string>

// What is printed, handed on a part at a time.
struct Listing {
    FILE *out;
    std::string part;
    bool failed; // nothing more is wanted
};

// Adds text as it stands, which is UTF-8 and safe to print (SafeText).
void AppendText(Listing *listing, const std::string &text);

// Text with the letters that steer text in the escapes of JSON, other letters as they are.
std::string EscapeSteering(const std::string &text);

// Hands on what was added. Returns false, with the fault told on err unless nobody reads the other
// end, when it, or what was handed on before, could not be written.
bool FinishListing(Listing *listing, FILE *err);

// A JSON object that grows field by field: its text, without the bracket at the end. The library's
// own objects allocate while they are destroyed, which ends the program where that fails.
typedef std::string JsonObject;

// A text in UTF-8 as JSON; what is not UTF-8 gets U+FFFD.
std::string JsonText(const std::string &text);

// Add a field: a text in UTF-8, a number, or a value that is JSON.
void AddTextField(JsonObject *object, const char *name, const std::string &text);
void AddNumberField(JsonObject *object, const char *name, unsigned long long number);
void AddField(JsonObject *object, const char *name, const std::string &json);

// Adds a type or name: a number or a text.
void AddIdField(JsonObject *object, const char *name, const SurveyId &id);

// Adds a picture's width, height and bits, null each when they are not known (NULL).
void AddPictureFields(JsonObject *object, const PictureInfo *info);

// Adds `language`, and `languageTag`, null for a number that has none.
void AddLanguageFields(JsonObject *object, WORD language);

// Adds an object as one line, with the letters that steer text escaped and other letters as they
// are.
void AppendObject(Listing *listing, const JsonObject &object);

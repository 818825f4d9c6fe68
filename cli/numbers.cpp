#include "cli/numbers.h"

#include "platform/console.h"
#include "platform/page_text.h"

#include <CLI/CLI.hpp>
#include <charconv>

bool ReadNumber(const std::string &word, unsigned limit, unsigned *number)
{
    const bool isHex = word.rfind("0x", 0) == 0 || word.rfind("0X", 0) == 0;
    const char *first = word.data() + (isHex ? 2 : 0), *last = word.data() + word.size();
    const auto [end, error] = std::from_chars(first, last, *number, isHex ? 16 : 10);
    return error == std::errc() && end == last && *number <= limit;
}

// Checks a code page for the parser, and makes it decimal. Returns what is wrong with it, empty for
// nothing.
static std::string CheckCodePage(std::string &word)
{
    unsigned number = 0;
    if (!ReadNumber(word, 0xFFFF, &number) || !KnowsCodePage(number))
        return SafeText(word) + " is no code page that is known; give its number as 1251.";
    word = std::to_string(number);
    return "";
}

void AddCodePageOption(CLI::App *command, const char *description, UINT *codePage)
{
    command->add_option("--code-page", *codePage, description)
        ->type_name("NUMBER")
        ->transform(CLI::Validator(CheckCodePage, "", ""));
}

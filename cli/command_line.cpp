#include "cli/command_line.h"

#include "cli/icon.h"
#include "cli/list.h"
#include "cli/page.h"
#include "cli/reading.h"
#include "cli/save.h"
#include "cli/strings.h"
#include "platform/console.h"
#include "platform/files.h"
#include "program/globals.h"

#include <CLI/CLI.hpp>
#include <new>
#include <sstream>

// What stands behind a command's options, as " FILE..." or " FILE [OUT]".
static std::string Operands(const CLI::App *command)
{
    std::string operands;
    for (const CLI::Option *option : command->get_options()) {
        if (!option->get_positional())
            continue;
        const std::string name =
            option->get_name() + (option->get_items_expected_max() > 1 ? "..." : "");
        operands += option->get_required() ? " " + name : " [" + name + "]";
    }
    return operands;
}

// What was wrong, and how it is right.
static std::string UsageText(const CLI::App *app, const CLI::Error &error)
{
    std::string commands;
    for (const CLI::App *command : app->get_subcommands([](const CLI::App *) { return true; })) {
        if (command->parsed())
            return std::string("quillmoor-cli: ") + error.what() + "\nUsage: quillmoor-cli " +
                   command->get_name() + " [OPTIONS]" + Operands(command) + "; quillmoor-cli " +
                   command->get_name() + " --help tells the options.\n";
        commands += (commands.empty() ? "" : ", ") + command->get_name();
    }
    return std::string("quillmoor-cli: ") + error.what() + "\nUsage: quillmoor-cli COMMAND; " +
           "the commands are " + commands + "; quillmoor-cli --help tells of them.\n";
}

// A file where a command is to stand.
static bool NamesAFile(const std::vector<std::string> &arguments)
{
    if (arguments.empty())
        return false;
    FILE *file = OpenForReading(arguments[0].c_str());
    if (file != nullptr)
        fclose(file);
    return file != nullptr;
}

static ExitStatus ReportParsing(CLI::App &app, const CLI::ParseError &error,
                                const std::vector<std::string> &arguments, FILE *out, FILE *err)
{
    std::ostringstream toOut, toErr;
    const int status = app.exit(error, toOut, toErr);
    if (status != 0 && NamesAFile(arguments))
        toErr.str("quillmoor-cli: A command stands before the file: quillmoor-cli list " +
                  SafeText(arguments[0]) + "\n");
    if (!PrintText(out, toOut.str()) || !PrintText(err, toErr.str()))
        return ExitFailed;
    return status == 0 ? ExitDone : ExitUsage;
}

static ExitStatus ParseAndRun(const std::vector<std::string> &arguments, FILE *out, FILE *err)
{
    CLI::App app("Lists and saves the bitmaps, icons, string tables and raw data that Windows\n"
                 "executables and libraries carry (32-bit PE, 16-bit NE), and lists all that\n"
                 "they and 64-bit ones carry.",
                 "quillmoor-cli");
    ListOptions listOptions;
    SaveOptions saveOptions;
    IconOptions iconOptions;
    StringsOptions stringsOptions;
    PageOptions pageOptions;
    app.set_version_flag("--version", "quillmoor-cli " QUILLMOOR_VERSION);
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    app.failure_message(UsageText);
    app.footer("Exit status: 0 all that was asked was done, 1 a file was refused or a write\n"
               "failed, 2 wrong usage.");
    CLI::App *list = AddListCommand(app, &listOptions);
    AddSaveCommand(app, &saveOptions);
    CLI::App *icon = AddIconCommand(app, &iconOptions);
    CLI::App *strings = AddStringsCommand(app, &stringsOptions);
    CLI::App *page = AddPageCommand(app, &pageOptions);
    try {
        // The parser takes its arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError &error) {
        return ReportParsing(app, error, arguments, out, err);
    }
    if (icon->parsed())
        return RunIcon(iconOptions, out, err);
    if (strings->parsed())
        return RunStrings(stringsOptions, out, err);
    if (page->parsed())
        return RunPage(pageOptions, out, err);
    return list->parsed() ? RunList(listOptions, out, err) : RunSave(saveOptions, out, err);
}

ExitStatus RunCommandLine(const std::vector<std::string> &arguments, FILE *out, FILE *err)
{
    globals.instance = GetModuleHandleA(nullptr);
    FailWritesPastLimit();
    try {
        return ParseAndRun(arguments, out, err);
    } catch (const std::bad_alloc &) {
        PrintNoMemory(err);
        return ExitFailed;
    } catch (const std::exception &failure) {
        fprintf(err, "quillmoor-cli: %s\n", failure.what());
        fflush(err);
        return ExitFailed;
    }
}

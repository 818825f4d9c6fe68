// What commands that take long show on a terminal meanwhile.
#include "cli/command_line.h"
#include "samples/builder/builder.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#ifndef _WIN32

#include <chrono>
#include <pty.h>
#include <unistd.h>

using namespace std::literals;
typedef std::chrono::steady_clock Clock;

// The linker leads those who ask for the time here, where it may run fast.
static std::chrono::nanoseconds passed, eachTime;
Clock::time_point RealNow() __asm__("__real__ZNSt6chrono3_V212steady_clock3nowEv");
Clock::time_point FastNow() __asm__("__wrap__ZNSt6chrono3_V212steady_clock3nowEv");
Clock::time_point FastNow()
{
    return eachTime.count() == 0 ? RealNow() : Clock::time_point(passed += eachTime);
}

static std::string ShownBy(const std::vector<std::string> &command, std::chrono::nanoseconds step)
{
    int terminal, side;
    EXPECT_EQ(openpty(&terminal, &side, nullptr, nullptr, nullptr), 0);
    FILE *out = tmpfile(), *err = fdopen(side, "w");
    eachTime = step;
    RunCommandLine(command, out, err);
    eachTime = {};
    fputc('\4', err); // the end
    fflush(err);
    std::string shown;
    for (char letter = 0; read(terminal, &letter, 1) == 1 && letter != '\4';)
        shown += letter;
    fclose(out);
    fclose(err);
    close(terminal);
    return shown;
}

TEST(Progress, IsShownOnATerminalNowAndThenAfterASecondAndCleared)
{
    const TempFolder folder;
    const std::string cleared = "\r" + std::string(40, ' ') + "\r";
    ExecutableDescription description;
    for (int i = 0; i < 14; i++)
        description.resources.push_back({10, i, {1}});
    const std::string file = folder.Write("in/a.dll", BuildPe(description).bytes);
    EXPECT_EQ(ShownBy({"save", "-o", folder.Path("out"), file}, 76ms), "");
    EXPECT_EQ(ShownBy({"save", "-o", folder.Path("seen"), file}, 90ms),
              "\r12 of 14 resources" + cleared);
    EXPECT_EQ(ShownBy({"save", "--all", "-o", folder.Path("all"), file}, 100ms),
              "\r10 of 14 resources\r11 of 14 resources\r12 of 14 resources\r13 of 14 resources" +
                  cleared);
    EXPECT_EQ(ShownBy({"page", "-o", folder.Path("page"), file}, 110ms),
              "\r10 of 14 resources\r11 of 14 resources\r12 of 14 resources\r13 of 14 resources"
              "\r14 of 14 resources" +
                  cleared);
    const std::string second =
        folder.Write("in/b.dll", BuildPe({.resources = {{2, 1, {1}}}}).bytes);
    EXPECT_EQ(ShownBy({"page", "-o", folder.Path("pages"), file, second}, 2s),
              "\r1 of 2 files" + cleared + "quillmoor-cli: " + second +
                  ": Pictures that cannot be drawn: 1.\r\n\r2 of 2 files" + cleared);
}

#endif

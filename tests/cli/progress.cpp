#include "cli/progress.h"

#include <gtest/gtest.h>

#ifndef _WIN32

#include <pty.h>
#include <string>
#include <unistd.h>

using namespace std::literals;

TEST(Progress, IsShownOnATerminalNowAndThenAfterASecondAndCleared)
{
    int terminal, side;
    ASSERT_EQ(openpty(&terminal, &side, nullptr, nullptr, nullptr), 0);
    FILE *err = fdopen(side, "w");
    Progress progress = StartProgress(err);
    ShowProgress(&progress, 1, 9, "files");
    ClearProgress(&progress);
    progress.start -= 1s;
    ShowProgress(&progress, 2, 9, "files");
    ShowProgress(&progress, 3, 9, "files");
    progress.shown -= 100ms;
    ShowProgress(&progress, 4, 9, "files");
    ClearProgress(&progress);
    ClearProgress(&progress);
    fputc('.', err);
    fflush(err);
    std::string told;
    for (char letter = 0; letter != '.' && read(terminal, &letter, 1) == 1;)
        told += letter;
    EXPECT_EQ(told, "\r2 of 9 files\r4 of 9 files\r" + std::string(40, ' ') + "\r.");
    fclose(err);
    close(terminal);
}

#endif

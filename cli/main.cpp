#include "cli/command_line.h"
#include "cli/reading.h"
#include "platform/console.h"

#include <new>

int main(int count, char **arguments)
{
    PrepareConsole();
    try {
        return RunCommandLine(ConsoleArguments(count, arguments), stdout, stderr);
    } catch (const std::bad_alloc &) {
        PrintNoMemory(stderr);
        return ExitFailed;
    }
}

#include "cli/command_line.h"
#include "platform/console.h"

int main(int count, char **arguments)
{
    PrepareConsole();
    return RunCommandLine(ConsoleArguments(count, arguments), stdout, stderr);
}

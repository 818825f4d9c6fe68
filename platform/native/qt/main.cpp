// Where the window program starts on Linux.
#include <string>

#include "platform/native/qt/display.h"
#include "platform/win32.h"

int main(int argc, char **argv)
{
    // A desktop hands over one path; what a shell split at spaces is one path too.
    std::string commandLine;
    for (int i = 1; i < argc; ++i)
        commandLine += (i > 1 ? " " : "") + std::string(argv[i]);
    // Qt has options of its own, which a path must not be taken for.
    int qtArguments = 1;
    AttachDisplay(&qtArguments, argv);
    const int result =
        WinMain(GetModuleHandleA(nullptr), nullptr, commandLine.data(), SW_SHOWNORMAL);
    DetachDisplay();
    return result;
}

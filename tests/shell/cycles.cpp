// Opening, looking and closing over and over leaves nothing behind.
#include "exe/catalog.h"
#include "resources/ids.h"
#include "shell/globals.h"
#include "shell/main_window.h"
#include "tests/support/drive.h"

#include <gtest/gtest.h>

#include <fstream>

// The process's memory in pages; 0 where the system has no such file, and under the address
// sanitizer, which keeps freed memory and tells of leaks itself.
static long ResidentPages()
{
#ifdef __SANITIZE_ADDRESS__
    return 0;
#endif
    long whole = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> whole >> resident;
    return resident;
}

TEST(Cycles, LeaveNoMemoryBehind)
{
    const std::string path = TestFolder() + "every.dll";
    ASSERT_TRUE(WriteBytes(path.c_str(), EveryKind()));
    ASSERT_TRUE(StartProgram());
    const std::pair<const char *, const char *> all[] = {
        {"BINARY DATA", ""}, {"BINARY DATA", "500"}, {"BINARY DATA", "501"}, {"BITMAP", "101"},
        {"ICON", "1"},       {"ICON", "2"},          {"STRING TABLE", "7"},
    };
    long after100 = 0;
    for (int cycle = 1; cycle <= 1000; cycle++) {
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)path.c_str());
        ASSERT_GT(openCatalog.count, 4);
        for (const auto &[category, name] : all)
            Select(category, name);
        Command(IDM_CLOSE);
        RecordText(1, 1, [](HDC) {}); // forgets what the test's own recorder kept
        ASSERT_EQ(openCatalog.count, 0);
        if (cycle == 100)
            after100 = ResidentPages();
    }
    // The heap and the system's bookkeeping move by a few pages either way.
    EXPECT_LE(ResidentPages(), after100 + 64);
    StopProgram();
}

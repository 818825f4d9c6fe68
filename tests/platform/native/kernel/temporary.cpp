#include "platform/win32.h"

#include "tests/support/temp_folder.h"
#include "tests/support/variable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

// Kills a process that has a file in its temporary folder.
static void LeaveFileBehind(const std::filesystem::path &parent)
{
    const pid_t child = fork();
    if (child == 0) {
        const Variable variable("TMPDIR", parent);
        char path[MAX_PATH];
        GetTempPathA(sizeof path, path);
        std::ofstream(std::string(path) + "VLX1.png") << "x";
        std::filesystem::create_symlink(parent / "quillmoor-filled", std::string(path) + "link");
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
}

TEST(TemporaryFolder, IsTheUsersAloneAndGoesWithTheProcess)
{
    const TempFolder folder;
    // One is stale, the others are young, or someone's own.
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
    for (const char *name :
         {"quillmoor-stale1", "quillmoor-young1", "quillmoor-filled", "quillmoor"}) {
        const auto path = folder.path / name;
        std::filesystem::create_directory(path);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        if (path.filename() == "quillmoor-filled")
            std::ofstream(path / "file") << "x";
        if (path.filename() != "quillmoor-young1")
            std::filesystem::last_write_time(path, old);
    }
    LeaveFileBehind(folder.path);
    std::filesystem::create_directory_symlink("quillmoor-filled", folder.path / "quillmoor-linked");
    int told[2];
    ASSERT_EQ(pipe(told), 0);
    const pid_t child = fork();
    if (child == 0) {
        const Variable parent("TMPDIR", folder.path);
        char path[MAX_PATH];
        GetTempPathA(sizeof path, path);
        std::ofstream(std::string(path) + "left behind") << "x";
        LeaveFileBehind(folder.path); // whose start leaves what is in use
        bool isGood =
            std::filesystem::status(path).permissions() == std::filesystem::perms::owner_all &&
            std::string(path).starts_with(folder.path.string() + "/") &&
            std::filesystem::exists(std::string(path) + "left behind");
        // Taken away, it is made anew, in the system's folder where no other is told.
        for (const auto &[chosen, made] :
             {std::pair(folder.path.c_str(), folder.path.c_str()), std::pair(".", "/tmp")}) {
            const Variable variable("TMPDIR", chosen);
            std::filesystem::remove_all(path);
            GetTempPathA(sizeof path, path);
            isGood = isGood && std::filesystem::path(path).parent_path().parent_path() == made &&
                     std::filesystem::is_directory(path);
        }
        const char answer = isGood ? 'y' : 'n';
        if (write(told[1], &answer, 1) != 1)
            _exit(1);
        exit(0);
    }
    char answer = 0;
    EXPECT_EQ(read(told[0], &answer, 1), 1);
    waitpid(child, nullptr, 0);
    close(told[0]);
    close(told[1]);
    EXPECT_EQ(answer, 'y');
    char name[MAX_PATH];
    for (const UINT slashes : {248, 249}) // the longer path does not fit
        EXPECT_EQ(GetTempFileNameA(std::string(slashes, '/').c_str(), "ABC", 0xFFFF, name),
                  slashes == 248 ? 0xFFFFu : 0u);
    std::set<std::string> left;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.path))
        left.insert(entry.path().lexically_relative(folder.path));
    EXPECT_EQ(left, (std::set<std::string>{"quillmoor", "quillmoor-filled", "quillmoor-filled/file",
                                           "quillmoor-linked", "quillmoor-young1"}));
}

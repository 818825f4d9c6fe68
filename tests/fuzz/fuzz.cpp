#include "tests/fuzz/fuzz.h"

#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "export/formats.h"
#include "platform/files.h"
#include "tests/support/canvas.h"
#include "viewer/pane.h"

#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

void ReportBroken(const char *text, const char *file, int line)
{
    fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, text);
    abort();
}

const char *FileOf(const uint8_t *data, size_t size)
{
    static const int descriptor = memfd_create("fuzzed", MFD_CLOEXEC);
    static const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    Check(ftruncate(descriptor, 0) == 0);
    Check(pwrite(descriptor, data, size, 0) == (ssize_t)size);
    return path.c_str();
}

const char *FileOf(const Bytes &bytes)
{
    return FileOf(bytes.data(), bytes.size());
}

// A resource's bytes are those of the file at its place.
static void CheckEntry(const ResourceEntry &entry, const uint8_t *data, size_t size)
{
    Check(entry.name[0] != 0 && strlen(entry.name) <= ENTRY_NAME_LENGTH);
    Check(CategoryLabel(entry.category) != nullptr);
    const void *kept = GlobalLock(entry.data);
    Check(kept != nullptr);
    if (entry.size > 0) {
        Check(entry.fileOffset <= size && entry.size <= size - entry.fileOffset);
        Check(memcmp(kept, data + entry.fileOffset, entry.size) == 0);
    }
    GlobalUnlock(entry.data);
}

void ReadAndCheck(const uint8_t *data, size_t size, int (*read)(HWND tree, FILE *file))
{
    static const HWND tree = CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0,
                                             HWND_MESSAGE, nullptr, nullptr, nullptr);
    FILE *file = OpenForReading(FileOf(data, size));
    Check(file != nullptr);
    ClearFailure();
    const int result = read(tree, file);
    fclose(file);
    Check((result != 0) == (NotedFailure() == FailureNone));
    char reason[REASON_SIZE];
    DescribeFailure(reason);
    Check(strlen(reason) < REASON_SIZE);
    unsigned long long keptBytes = 0;
    ResourceEntry entry;
    for (LONG index = 0; index < openCatalog.count; index++) {
        Check(GetEntry(openCatalog.entries, &entry, index));
        CheckEntry(entry, data, size);
        keptBytes += entry.size;
    }
    Check(keptBytes <= KeptBytesLimit(size));
    ReleaseCatalog(&openCatalog);
    SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
}

ResourceEntry KeepOne(DWORD category, const uint8_t *data, size_t size)
{
    ResourceEntry entry = {};
    entry.category = category;
    entry.size = (DWORD)size;
    strcpy(entry.name, "1");
    // No tree, whose items are marks.
    Check(KeepResource(nullptr, AddCategoryItem(nullptr, category), &entry, data));
    Check(GetEntry(openCatalog.entries, &entry, 0));
    return entry;
}

void ShowAndSave(DWORD category, const uint8_t *data, size_t size)
{
    static Canvas canvas(160, 120);
    static FILE *const stream = fopen("/dev/null", "wb");
    const RECT pane = {0, 0, canvas.width, canvas.height};
    const ResourceEntry entry = KeepOne(category, data, size);
    Check(PaintResource(canvas.dc, &pane, openCatalog.entries, openCatalog.count, 0));
    Check(FindExportFormat(&entry)->writeStream(stream, &entry) == WriteDone);
    ReleaseCatalog(&openCatalog);
}

HMODULE OpenModuleOf(const std::vector<ResourceDescription> &resources)
{
    return LoadLibraryA(FileOf(BuildPe({.resources = resources}).bytes));
}

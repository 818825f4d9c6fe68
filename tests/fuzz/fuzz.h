// What the fuzz targets share. A target is one source file named after it, whose
// LLVMFuzzerTestOneInput takes the bytes of one try; what must hold of every outcome it asks with
// Check, and the sanitizers watch the rest.
#pragma once

#include "exe/catalog.h"
#include "samples/builder/builder.h"

#include <cstdio>
#include <string>
#include <vector>

// Takes one try's bytes; the answer is 0.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

// Ends the run as a crash does, so that the try is kept, when something that must hold does not.
#define Check(holds)                                                                               \
    do {                                                                                           \
        if (!(holds))                                                                              \
            ReportBroken(#holds, __FILE__, __LINE__);                                              \
    } while (0)
[[noreturn]] void ReportBroken(const char *text, const char *file, int line);

// The path of a file, in memory, of these bytes: the same file for every call.
const char *FileOf(const uint8_t *data, size_t size);
const char *FileOf(const Bytes &bytes);

// Reads the bytes as an executable with `read`, into openCatalog and a tree without a picture, and
// checks what was catalogued against the bytes.
void ReadAndCheck(const uint8_t *data, size_t size, int (*read)(HWND tree, FILE *file));

// Keeps the bytes as the one resource of openCatalog, which the caller releases, and returns it.
ResourceEntry KeepOne(DWORD category, const uint8_t *data, size_t size);

// Shows the bytes in a pane as a resource of the category, and saves them in its format.
void ShowAndSave(DWORD category, const uint8_t *data, size_t size);

// A target that does no more than that.
#define FUZZ_KIND(category)                                                                        \
    int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)                                   \
    {                                                                                              \
        ShowAndSave(category, data, size);                                                         \
        return 0;                                                                                  \
    }

// Opens a module with these resources, which the caller frees. NULL when it could not be opened.
HMODULE OpenModuleOf(const std::vector<ResourceDescription> &resources);

#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const char *path = FileOf(data, size);
    for (const char *section : {"Paths", "", "PROGRAM"})
        for (const char *key : {"Host", "", "path"})
            for (const DWORD room : {1u, 8u, 260u}) {
                char text[260];
                const DWORD length =
                    GetPrivateProfileStringA(section, key, "none ", text, room, path);
                Check(length < room && text[length] == 0);
            }
    return 0;
}

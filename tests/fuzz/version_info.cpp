// Version data: the first byte gives the code page, the rest is the data.
#include "content/version_info.h"

#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const UINT pages[] = {0, 1252, 932, 65001};
    if (size < 1)
        return 0;
    // What lies behind the data is not there, so that a sanitizer sees a read past it.
    const Bytes block(data + 1, data + size);
    VersionInfo info;
    size_t texts = 0;
    const int isVersion = ReadVersionInfo(block.data(), block.size(), pages[data[0] & 3], &info);
    Check(isVersion || (!info.hasNumbers && info.tables.empty() && info.translations.empty()));
    for (const VersionTable &table : info.tables)
        for (const VersionText &text : table.texts)
            texts += text.name.size() + text.text.size();
    Check(texts <= block.size() * 3 && info.translations.size() <= block.size() / 4);
    return 0;
}

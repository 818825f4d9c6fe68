#include "platform/native/kernel/module_image.h"

#include "program/ids.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

extern "C" const uint8_t QuillmoorResources[];
extern "C" const uint8_t QuillmoorResourcesEnd[];

static const ResourceKey bitmapType = {true, 2, {}};
static const ResourceKey folder = {true, IDB_FOLDER_CLOSED, {}};

// Looks for a bitmap in a copy that ends exactly where the image ends, and touches its bytes.
static bool FindFolder(const uint8_t *bytes, size_t size)
{
    ModuleImage image;
    ResourcePlace place;
    if (!ReadModuleImage(bytes, size, &image) ||
        !FindImageResource(image, bitmapType, folder, &place))
        return false;
    EXPECT_LE(place.size, size);
    EXPECT_LE(place.fileOffset, size - place.size);
    return true;
}

TEST(ModuleImage, NoDamageReadsOutsideTheFile)
{
    const size_t size = (size_t)(QuillmoorResourcesEnd - QuillmoorResources);
    ASSERT_TRUE(FindFolder(QuillmoorResources, size));
    for (size_t length = 0; length < size; length += length < 0x400 ? 1 : 61) {
        std::unique_ptr<uint8_t[]> cut(new uint8_t[length]);
        memcpy(cut.get(), QuillmoorResources, length);
        FindFolder(cut.get(), length);
    }
    std::unique_ptr<uint8_t[]> copy(new uint8_t[size]);
    memcpy(copy.get(), QuillmoorResources, size);
    int lost = 0;
    for (size_t at = 0; at < size && at < 0x1000; at++) {
        for (const char value : {'\0', '\1', '\x7F', '\x80', '\xFF'}) {
            copy[at] = (uint8_t)value;
            lost += !FindFolder(copy.get(), size);
        }
        copy[at] = QuillmoorResources[at];
    }
    EXPECT_GT(lost, 100); // damage was noticed
}

#include "platform/native/kernel/module_image.h"

#include "program/ids.h"
#include "samples/builder/bytes.h"

#include <gtest/gtest.h>

extern "C" const uint8_t QuillmoorResources[];
extern "C" const uint8_t QuillmoorResourcesEnd[];

static const ResourceKey bitmapType = {true, 2, {}};
static const ResourceKey folder = {true, IDB_FOLDER_CLOSED, {}};

// Looks for a bitmap in bytes that end exactly where the image ends.
static bool FindFolder(const Bytes &bytes)
{
    ModuleImage image;
    ResourcePlace place;
    if (!ReadModuleImage(bytes.data(), bytes.size(), &image) ||
        !FindImageResource(image, bitmapType, folder, &place))
        return false;
    EXPECT_LE(place.size, bytes.size());
    EXPECT_LE(place.fileOffset, bytes.size() - place.size);
    return true;
}

TEST(ModuleImage, NoDamageReadsOutsideTheFile)
{
    Bytes bytes(QuillmoorResources, QuillmoorResourcesEnd);
    ASSERT_TRUE(FindFolder(bytes));
    for (size_t length = 0; length < bytes.size(); length += length < 0x400 ? 1 : 61)
        FindFolder(Bytes(QuillmoorResources, QuillmoorResources + length));
    int lost = 0;
    for (size_t at = 0; at < bytes.size() && at < 0x1000; at++) {
        for (const BYTE value : Bytes{0, 1, 0x7F, 0x80, 0xFF}) {
            bytes[at] = value;
            lost += !FindFolder(bytes);
        }
        bytes[at] = QuillmoorResources[at];
    }
    EXPECT_GT(lost, 100); // damage was noticed
}

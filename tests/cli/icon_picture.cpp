#include "cli/icon_picture.h"
#include "exe/survey.h"
#include "export/picture_pixels.h"
#include "platform/codec/decode.h"
#include "samples/builder/builder.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

// "WIDTHxHEIGHT AABBGGRR" by the first pixel of the PNG file that is made of an executable's icon.
static std::string MakeAndTell(const Bytes &executable, int size)
{
    FilePages pages;
    Survey survey;
    PictureIndex index;
    std::vector<GroupMember> members;
    size_t missing;
    FILE *file = OpenContent(executable);
    OpenPages(&pages, file);
    SurveyFile(&pages, 0, &survey);
    IndexPictures(&survey, &index);
    for (const SurveyedResource &resource : survey.resources)
        if (IsIconGroup(&resource))
            ReadGroup(&pages, &index, &resource, &members, &missing);
    const std::vector<BYTE> png = MakeIconPng(&pages, members, size);
    fclose(file);
    HGLOBAL dib = DecodePng(png);
    PicturePixels pixels;
    ReadDecodedPixels((const BYTE *)GlobalLock(dib), (DWORD)GlobalSize(dib), &pixels);
    GlobalUnlock(dib);
    GlobalFree(dib);
    char told[60];
    snprintf(told, sizeof told, "%dx%d %08X", (int)pixels.width, (int)pixels.height,
             (unsigned)pixels.values.at(0));
    return told;
}

TEST(IconPicture, IsTheSmallestThatIsLargeEnough)
{
    const Bytes images[] = {
        MakeIconImage(MakePicture(16, 16, 0xFF000010), 4),
        MakeIconImage(MakePicture(16, 16, 0xFF000011), 32),
        MakeIconImage(MakePicture(64, 64, 0xFF000040), 24),
        MakePng(MakePicture(300, 150, 0x80000099)),
        MakeIconImage(MakePicture(32, 32, 0xFF000020), 8),
    };
    std::vector<ResourceDescription> resources;
    std::vector<IconGroupMember> members;
    for (const Bytes &image : images) {
        const unsigned id = (unsigned)members.size() + 1;
        // Sizes and depths that are not told are found in the pictures.
        members.push_back({0, 0, 0, image.size(), id});
        resources.push_back({3, (int)id, image});
    }
    resources.push_back({14, 1, MakeIconGroup(members)});
    const Bytes program = BuildPe({.resources = resources}).bytes;
    const struct {
        int size;
        const char *told;
    } cases[] = {
        {1, "1x1 FF110000"},       {16, "16x16 FF110000"},    {17, "17x17 FF200000"},
        {32, "32x32 FF200000"},    {48, "48x48 FF400000"},    {65, "65x32 80990000"},
        {300, "300x150 80990000"}, {999, "300x150 80990000"},
    };
    for (const auto &row : cases)
        EXPECT_EQ(MakeAndTell(program, row.size), row.told);

    // One that cannot be drawn leaves its place to the next.
    BuiltExecutable damaged = BuildPe({.resources = resources});
    PutU16(damaged.bytes, damaged.resources[4].data + 14, 7);
    EXPECT_EQ(MakeAndTell(damaged.bytes, 32), "32x32 FF400000");
}

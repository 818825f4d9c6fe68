#include "content/block.h"
#include "export/formats.h"
#include "samples/builder/pictures.h"
#include "samples/builder/texts.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

static ResourceEntry MakeEntry(DWORD category, const char *name, const Bytes &bytes)
{
    ResourceEntry entry = {};
    entry.category = category;
    entry.size = (DWORD)bytes.size();
    std::copy(bytes.begin(), bytes.end(), (BYTE *)AllocateLocked(entry.size, &entry.data));
    ProbeWave(&entry, bytes.data());
    GlobalUnlock(entry.data);
    strcpy(entry.name, name);
    return entry;
}

// What an entry's writer makes of it.
static Bytes Written(DWORD category, const char *name, const Bytes &bytes)
{
    const TempFolder folder;
    const std::string path = folder.Path("file");
    ResourceEntry entry = MakeEntry(category, name, bytes);
    EXPECT_EQ(FindExportFormat(&entry)->writeFile(path.c_str(), &entry), WriteDone);
    GlobalFree(entry.data);
    return ReadFile(folder.path / "file");
}

TEST(Writers, PutAFileHeaderBeforeABitmap)
{
    const Picture picture = MakePicture(4, 4, 0xFF336699);
    const std::vector<uint32_t> sixteen(16);
    Bytes cut = MakeDib(picture, 8);
    cut.resize(36);
    for (const auto &[dib, offset] : {std::pair(MakeDib(picture, 1), 62u),
                                      {MakeDib(picture, 4), 118},
                                      {MakeDib(picture, 8), 1078},
                                      {cut, 1078},
                                      {MakeDib(picture, 8, DibForm::Plain, sixteen, true), 118},
                                      {MakeDib(picture, 24), 54},
                                      {MakeDib(picture, 32), 54},
                                      {MakeDib(picture, 4, DibForm::Core), 14 + 12 + 48}}) {
        Bytes expected = Text("BM");
        AddU32(expected, (uint32_t)dib.size() + 14);
        AddU32(expected, 0);
        AddU32(expected, offset);
        AddBytes(expected, dib);
        EXPECT_EQ(Written(CategoryBitmap, "1", dib), expected) << offset;
    }
}

TEST(Writers, PutADirectoryBeforeAnIcon)
{
    Bytes topDown = MakeIconImage(MakePicture(16, 16, 0xFF000000), 4);
    PutU32(topDown, 8, (uint32_t)-65);
    const struct {
        const char *name;
        Bytes image;
        Bytes fields; // width, height, colours
    } cases[] = {
        {"32 x 32, 4 bits", MakeIconImage(MakePicture(32, 32, 0xFF000000), 4), {32, 32, 16}},
        {"48 x 48, 8 bits", MakeIconImage(MakePicture(48, 48, 0xFF000000), 8), {48, 48, 0}},
        {"48 x 48, 32 bits", MakeIconImage(MakePicture(48, 48, 0xFF000000), 32), {48, 48, 0}},
        {"256 x 256, 24 bits", MakeIconImage(MakePicture(256, 256, 0xFF000000), 24), {0, 0, 0}},
        {"odd negative height", topDown, {16, 0xE0, 16}},
        {"PNG", MakePng(MakePicture(16, 16, 0xFF000000)), {0, 0, 0}},
        {"shorter than a header", Bytes{40, 0, 0, 0}, {0, 0, 1}},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.name);
        Bytes expected = {0, 0, 1, 0, 1, 0};
        AddBytes(expected, row.fields);
        AddU8(expected, 0);
        AddU32(expected, 0);
        AddU32(expected, (uint32_t)row.image.size());
        AddU32(expected, 22);
        AddBytes(expected, row.image);
        EXPECT_EQ(Written(CategoryIcon, "1", row.image), expected);
    }
}

TEST(Writers, DumpStringsALineEach)
{
    const std::u16string longText(300, u'x');
    Bytes endsEarly = MakeStringBlock({u"whole"});
    endsEarly.resize(endsEarly.size() - 28);
    AddU16(endsEarly, 5);
    AddU16(endsEarly, 'c');
    const struct {
        const char *name;
        Bytes block;
        std::string text;
    } cases[] = {
        {"7", MakeStringBlock({u"", u"", u"", u"", u"Hello", u"A\tB"}),
         "7,\t\"Hello\"\r\n8,\t\"A\\tB\"\r\n"},
        {" -12 and more", MakeStringBlock({u"a \"quoted\" word", u"\r\n\x1\u00E9\u4E00"}),
         "-12,\t\"a \"quoted\" word\"\r\n-11,\t\"\\r\\n\xA4\xE9?\"\r\n"},
        {"NAME", MakeStringBlock({longText, u"next"}),
         "0,\t\"" + std::string(260, 'x') + "\"\r\n1,\t\"next\"\r\n"},
        {"1", MakeStringBlock({std::u16string(u"\0abcd", 5), u"after"}), "1,\t\"after\"\r\n"},
        {"2", endsEarly, "2,\t\"whole\"\r\n"},
        {"3", MakeStringBlock({}), ""},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.name);
        const Bytes file = Written(CategoryString, row.name, row.block);
        EXPECT_EQ(std::string(file.begin(), file.end()), row.text);
    }
}

TEST(Writers, CopyRawDataAndWriteNothingForNothing)
{
    const Bytes wave = Text("RIFF????WAVEdata");
    EXPECT_EQ(Written(CategoryBinary, "1", wave), wave);
    EXPECT_EQ(Written(CategoryBinary, "1", {}), Bytes());
    EXPECT_EQ(Written(CategoryString, "1", {}), Bytes());
    EXPECT_EQ(Written(CategoryBitmap, "1", {}).size(), 14u);
    EXPECT_EQ(Written(CategoryIcon, "1", {}).size(), 22u);
    const ResourceEntry sound = MakeEntry(CategoryBinary, "1", wave);
    EXPECT_STREQ(FindExportFormat(&sound)->defaultName, "%s.WAV");
    GlobalFree(sound.data);
}

TEST(Writers, TellWhatFailed)
{
    const TempFolder folder;
    const std::string nowhere = folder.Path("missing/file");
    const std::string path = folder.Path("file");
    for (const DWORD category : {CategoryBitmap, CategoryIcon, CategoryString, CategoryBinary}) {
        ResourceEntry entry = MakeEntry(category, "1", MakeStringBlock({u"text"}));
        const ExportFormat *format = FindExportFormat(&entry);
        EXPECT_EQ(format->writeFile(nowhere.c_str(), &entry), WriteNotCreated);
        GlobalFree(entry.data);
        EXPECT_EQ(format->writeFile(path.c_str(), &entry), WriteDataUnavailable);
        // The text is the one whose file is made only when the data are there.
        EXPECT_EQ(std::filesystem::exists(folder.path / "file"), category != CategoryString);
        std::filesystem::remove(folder.path / "file");
    }
    // A stream that cannot be written to.
    folder.Write("read only", {});
    FILE *stream = fopen(folder.Path("read only").c_str(), "rb");
    ResourceEntry entry = MakeEntry(CategoryString, "1", MakeStringBlock({u"text"}));
    EXPECT_EQ(WriteStringTableStream(stream, &entry), WriteShort);
    EXPECT_EQ(WriteRawStream(stream, &entry), WriteShort);
    GlobalFree(entry.data);
    fclose(stream);
}

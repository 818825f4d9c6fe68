#include "export/group_file.h"
#include "exe/survey.h"
#include "samples/builder/builder.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

struct MadeFile {
    GroupOutcome outcome;
    GroupFile file;
};

// The file of the first group that an executable holds.
static MadeFile MakeFirst(const Bytes &executable)
{
    MadeFile made = {};
    FilePages pages;
    Survey survey;
    PictureIndex index;
    FILE *file = OpenContent(executable);
    OpenPages(&pages, file);
    SurveyFile(&pages, 0, &survey);
    IndexPictures(&survey, &index);
    for (const SurveyedResource &resource : survey.resources)
        if (IsIconGroup(&resource) || IsCursorGroup(&resource)) {
            made.outcome = MakeGroupFile(&pages, &index, &resource, &made.file);
            break;
        }
    fclose(file);
    return made;
}

// A cursor's group as the published tools write it: 16-bit sizes, the height doubled.
static Bytes MakeCursorGroup(int width, int height, size_t size, unsigned id)
{
    Bytes group;
    for (const size_t word : {(size_t)0, (size_t)2, (size_t)1, (size_t)width, (size_t)height * 2,
                              (size_t)1, (size_t)1, size, (size_t)0, (size_t)id})
        AddU16(group, (unsigned)word);
    return group;
}

static const Picture picture = MakePicture(4, 4, 0xFF336699);

TEST(GroupFile, OfOnePictureIsTheFileItWasMadeOf)
{
    const Bytes icon = MakeIconImage(picture, 24), cursor = MakeCursorImage(picture, 3, 2);
    const std::vector<ResourceDescription> icons = {
        {3, 7, icon}, {14, 1, MakeIconGroup({{4, 4, 24, icon.size(), 7}})}};
    const std::vector<ResourceDescription> cursors = {
        {1, 9, cursor}, {12, 1, MakeCursorGroup(4, 4, cursor.size(), 9)}};
    Bytes cursorFile = MakeCurFile(picture, 3, 2);
    cursorFile[8] = 0; // a group of cursors tells no number of colours
    for (const auto &[resources, file] :
         {std::pair(icons, MakeIcoFile(picture, 24)), {cursors, cursorFile}})
        for (const Bytes &executable : {BuildPe({.resources = resources}).bytes,
                                        BuildPe({.resources = resources, .is64 = true}).bytes,
                                        BuildNe({.resources = resources}).bytes}) {
            const MadeFile made = MakeFirst(executable);
            EXPECT_EQ(made.outcome, GroupDone);
            EXPECT_EQ(made.file.bytes, file);
            EXPECT_EQ(made.file.missing, 0u);
        }
}

// Expects what is made of the first group of a file with these resources. pictures are what lies
// behind the directory.
static void ExpectMade(const std::vector<ResourceDescription> &resources, GroupOutcome outcome,
                       size_t missing, const std::string &pictures)
{
    const MadeFile made = MakeFirst(BuildPe({.resources = resources}).bytes);
    EXPECT_EQ(made.outcome, outcome);
    EXPECT_EQ(made.file.missing, missing);
    if (outcome != GroupDone) {
        EXPECT_TRUE(made.file.bytes.empty());
        return;
    }
    const Bytes &file = made.file.bytes;
    const size_t first = GetU32(file, 18);
    EXPECT_EQ(first, 6 + 16 * GetU16(file, 4));
    EXPECT_EQ(std::string(file.begin() + (ptrdiff_t)first, file.end()), pictures);
}

TEST(GroupFile, HoldsWhatTheFileHasOfItsPictures)
{
    const Bytes two = MakeIconGroup({{256, 256, 32, 999, 1}, {16, 16, 4, 0, 2}});
    Bytes cut = two, more = two;
    cut.resize(cut.size() - 1);
    PutU16(more, 4, 65535);
    const struct {
        const char *what;
        std::vector<ResourceDescription> resources;
        GroupOutcome outcome;
        size_t missing;
        std::string pictures; // behind the directory
    } cases[] = {
        {"both",
         {{3, 1, Text("P")}, {3, 2, Text("second")}, {14, 1, two}},
         GroupDone,
         0,
         "Psecond"},
        {"its language first",
         {{3, 1, Text("German"), 0x407},
          {3, 1, Text("English")},
          {3, 2, Text("second"), 0x407},
          {3, 2, Text("third"), 0x411},
          {14, 1, two}},
         GroupDone,
         0,
         "Englishsecond"},
        {"one missing, one of another type",
         {{1, 1, Text("cursor")}, {3, 2, Text("second")}, {14, 1, two}},
         GroupDone,
         1,
         "second"},
        {"none", {{3, 1, {}}, {3, u"2", Text("named")}, {14, 1, two}}, GroupEmpty, 2, ""},
        {"cut entry",
         {{3, 1, Text("PNG")}, {3, 2, Text("second")}, {14, 1, cut}},
         GroupDone,
         1,
         "PNG"},
        {"more told",
         {{3, 1, Text("PNG")}, {3, 2, Text("second")}, {14, 1, more}},
         GroupDone,
         65533,
         "PNGsecond"},
        {"no directory", {{3, 1, Text("PNG")}, {14, 1, {0, 0, 1, 0, 1}}}, GroupUnreadable, 0, ""},
        {"no hot spot",
         {{1, 1, {1, 0, 1, 0}}, {12, 1, MakeCursorGroup(4, 4, 4, 1)}},
         GroupEmpty,
         1,
         ""},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.what);
        ExpectMade(row.resources, row.outcome, row.missing, row.pictures);
    }
}

TEST(GroupFile, OfOnePictureNamedOverAndOverIsBounded)
{
    const std::vector<IconGroupMember> members(20000, {16, 16, 32, 0, 1});
    const MadeFile made = MakeFirst(
        BuildPe({.resources = {{3, 1, Bytes(1 << 14)}, {14, 1, MakeIconGroup(members)}}}).bytes);
    EXPECT_EQ(made.outcome, GroupTooLarge);
    EXPECT_TRUE(made.file.bytes.empty());
}

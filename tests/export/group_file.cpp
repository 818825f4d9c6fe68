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

TEST(GroupFile, OfOnePictureNamedOverAndOverIsBounded)
{
    const std::vector<IconGroupMember> members(20000, {16, 16, 32, 0, 1});
    const MadeFile made = MakeFirst(
        BuildPe({.resources = {{3, 1, Bytes(1 << 14)}, {14, 1, MakeIconGroup(members)}}}).bytes);
    EXPECT_EQ(made.outcome, GroupTooLarge);
    EXPECT_TRUE(made.file.bytes.empty());
}

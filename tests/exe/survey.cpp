#include "exe/survey.h"
#include "exe/refusal.h"
#include "samples/builder/builder.h"
#include "tests/support/damage.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

struct Surveyed {
    ProbeOutcome outcome;
    FailureKind failure;
    ExecutableKind kind;
    Lines lines; // "TYPE NAME LANGUAGE CONTENT", a text in quotes; "-" for what is not in the file
    Lines numbers; // " OFFSET CODE-PAGE FLAGS" of each
};

static std::string Told(const SurveyId &id)
{
    return id.isText ? "'" + id.text + "'" : std::to_string(id.number);
}

static Surveyed SurveyBytes(const Bytes &bytes, UINT codePage = 0,
                            const SurveyChoice *choice = nullptr)
{
    FILE *file = OpenContent(bytes);
    FilePages pages;
    Survey survey;
    Surveyed told = {};
    OpenPages(&pages, file);
    told.outcome = SurveyFile(&pages, codePage, &survey, choice);
    told.failure = NotedFailure();
    told.kind = survey.kind;
    for (const SurveyedResource &resource : survey.resources) {
        std::vector<BYTE> data;
        const int isRead = ReadSurveyedBytes(&pages, &resource, &data);
        EXPECT_EQ(isRead, resource.isInFile);
        EXPECT_EQ(data.size(), isRead ? resource.size : 0);
        told.numbers.push_back(" " + std::to_string(resource.fileOffset) + " " +
                               std::to_string(resource.codePage) + " " +
                               std::to_string(resource.flags));
        told.lines.push_back(Told(resource.type) + " " + Told(resource.name) + " " +
                             std::to_string(resource.language) + " " +
                             (isRead ? std::string(data.begin(), data.end()) : "-"));
    }
    fclose(file);
    return told;
}

static ExecutableDescription DescribeFour()
{
    return {.resources = {{u"OWN", u"\u00C9\u4E00", Text("named")},
                          {2, 1, Text("German"), 0x407},
                          {2, 1, Text("English"), 0x409},
                          {24, 7, Text("manifest"), 0}}};
}

static const Lines fourLines = {"'OWN' '\xC3\x89\xE4\xB8\x80' 1033 named", "2 1 1031 German",
                                "2 1 1033 English", "24 7 0 manifest"};

TEST(Survey, FindsWhatLoadersFindWhereverItLies)
{
    for (const bool is64 : {false, true}) {
        ExecutableDescription description = DescribeFour();
        description.is64 = is64;
        description.sectionsBefore = {{".text", Bytes(5000, 'c')}};
        for (const char *name : {".rsrc", "DATA"}) {
            description.sectionName = name;
            const BuiltExecutable built = BuildPe(description);
            const Surveyed told = SurveyBytes(built.bytes);
            EXPECT_EQ(told.outcome, ProbeRead);
            EXPECT_EQ(told.lines, fourLines);
            EXPECT_EQ(told.kind.format, is64 ? FormatPe32Plus : FormatPe32);

            // Without the directory of the headers the section's name leads there, or nothing.
            Bytes without = built.bytes;
            PutU32(without, built.header + 24 + (is64 ? 112 : 96) + 16, 0);
            EXPECT_EQ(SurveyBytes(without).outcome, ProbeRead);
            EXPECT_EQ(SurveyBytes(without).lines, name[0] == '.' ? fourLines : Lines{});
            // So it does to what lies past its end.
            const size_t stored = built.resources[0].data - built.table;
            PutU32(without, built.sectionHeader + 8, (uint32_t)stored);
            PutU32(without, built.sectionHeader + 16, (uint32_t)stored);
            EXPECT_EQ(SurveyBytes(without).lines, name[0] == '.' ? fourLines : Lines{});
        }
    }
}

TEST(Survey, FindsWhatIsChosenAlone)
{
    ExecutableDescription wide = DescribeFour();
    wide.resources.push_back({2, u"ONE", Text("named")});
    wide.is64 = true;
    for (const Bytes &file : {BuildPe(wide).bytes, BuildNe(wide).bytes})
        for (const auto &[choice, count] :
             {std::pair(SurveyChoice{2, {}}, 3u), {{2, {1}}, 2}, {{2, {7}}, 0}, {{24, {1, 7}}, 1}})
            EXPECT_EQ(SurveyBytes(file, 0, &choice).lines.size(), count);
}

// What surveying the bytes gave, as one line of ASCII.
static std::string OutcomeOf(const Bytes &bytes)
{
    const Surveyed told = SurveyBytes(bytes);
    EXPECT_EQ(told.outcome == ProbeRead, told.failure == FailureNone);
    char reason[REASON_SIZE] = "Read.";
    if (told.failure != FailureNone)
        DescribeFailure(reason);
    std::string outcome = reason;
    for (size_t i = 0; i < told.lines.size(); i++)
        outcome += " " + told.lines[i] + told.numbers[i] + ".";
    outcome += " Machine " + std::to_string(told.kind.machine) +
               (told.kind.isLibrary ? ", a library." : ".");
    for (char &letter : outcome)
        if (letter < ' ' || letter > '~')
            letter = '~';
    return outcome;
}

TEST(Survey, DamagedFilesComeToWhatTheirTextTells)
{
    ExecutableDescription four = DescribeFour(), wide = four;
    four.alignmentShift = 0;
    wide.is64 = true;
    Lines told;
    BuiltExecutable bare = BuildPe({.resources = {}});
    PutU16(bare.bytes, bare.header + 6, 0); // sections
    for (const auto &[what, good] : {std::pair("32 bits.", BuildPe(four).bytes),
                                     {"32 bits, no sections.", bare.bytes},
                                     {"64 bits.", BuildPe(wide).bytes},
                                     {"16 bits.", BuildNe(four).bytes}}) {
        told.push_back(what);
        const Lines lines = TellDamaged(good, good.size(), OutcomeOf);
        told.insert(told.end(), lines.begin(), lines.end());
    }
    ExpectTold(told, EXE_FOLDER "/damaged_survey.txt", TOLD_FOLDER "/damaged_survey.told.txt");
}

TEST(Survey, ReadsNamesOf16BitFilesInTheirCodePage)
{
    BuiltExecutable built = BuildNe(
        {.resources = {{2, u"\u0083\u0065", Text("picture")}, {4, 3, Text("sixteen letters.")}},
         .keepOrder = true});
    EXPECT_EQ(SurveyBytes(built.bytes, 932).lines[0].substr(0, 9), "2 '\xE3\x83\x86' 0");
    // What lies past the end does not keep the rest.
    PutU16(built.bytes, built.resources[0].entry, 0xFFFF);
    const Surveyed damaged = SurveyBytes(built.bytes, 12345);
    EXPECT_EQ(damaged.failure, FailureData);
    EXPECT_EQ(damaged.lines, (Lines{"2 '\xEF\xBF\xBD\x65' 0 -", "4 3 0 sixteen letters."}));
}

TEST(Survey, RefusesNamesThatAreNamedOverAndOver)
{
    ExecutableDescription description = {.resources = {{std::u16string(65535, u'N'), 1, {}}}};
    for (int i = 1; i < 1000; i++)
        description.emptyTypes.push_back(i);
    BuiltExecutable built = BuildPe(description);
    for (const TypePlaces &type : built.types)
        PutU32(built.bytes, type.entry, GetU32(built.bytes, built.types[0].entry));
    EXPECT_EQ(SurveyBytes(built.bytes).failure, FailureNames);
}

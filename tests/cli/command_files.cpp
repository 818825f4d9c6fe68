#include "tests/cli/command_files.h"

#include "samples/builder/builder.h"
#include "tests/support/worst_files.h"

#include <algorithm>

static BuiltExecutable BuildFour()
{
    return BuildPe({.resources = {{2, 10, Text("ten")},
                                  {2, 2, Text("two")},
                                  {10, u"T\u00C9\u4E00", Text("RIFF????WAVE")},
                                  {6, 7, MakeStringBlock({u"Hello, all"})}}});
}

// What is saved with a header of its own, or written as text.
static Bytes EveryForm()
{
    const Picture picture = MakePicture(4, 4, 0xFF336699);
    const std::vector<uint32_t> sixteen(16);
    Bytes cut = MakeDib(picture, 8), odd = MakeIconImage(picture, 4);
    cut.resize(36);
    PutU32(odd, 8, (uint32_t)-65);
    Bytes endsEarly = MakeStringBlock({u"whole"});
    endsEarly.resize(endsEarly.size() - 28);
    AddU16(endsEarly, 5);
    AddU16(endsEarly, 'c');
    return BuildPe(
               {.resources = {{2, u"1 bit", MakeDib(picture, 1)},
                              {2, u"4 bits", MakeDib(picture, 4)},
                              {2, u"8 bits", MakeDib(picture, 8)},
                              {2, u"16 colours",
                               MakeDib(picture, 8, DibForm::Plain, sixteen, true)},
                              {2, u"24 bits", MakeDib(picture, 24)},
                              {2, u"core", MakeDib(picture, 4, DibForm::Core)},
                              {2, u"cut", cut},
                              {2, u"none", {}},
                              {3, u"4 bits", MakeIconImage(picture, 4)},
                              {3, u"8 bits", MakeIconImage(picture, 8)},
                              {3, u"256 x 256", MakeIconImage(MakePicture(256, 256, 0), 1)},
                              {3, u"odd", odd},
                              {3, u"PNG", MakePng(picture)},
                              {3, u"cut", {40, 0, 0, 0}},
                              {3, u"none", {}},
                              {6, 7, MakeStringBlock({u"", u"", u"Hello", u"A\tB"})},
                              {6, u" -12 and more",
                               MakeStringBlock({u"a \"quote\"", u"\r\n\x1\u00E9\u4E00"})},
                              {6, u"long", MakeStringBlock({std::u16string(300, u'x'), u"next"})},
                              {6, u"zero", MakeStringBlock({std::u16string(u"\0abcd", 5), u"b"})},
                              {6, u"cut", endsEarly},
                              {6, u"none", {}},
                              {10, u"none", {}}}})
        .bytes;
}

static void WritePe(const TempFolder &folder)
{
    const Bytes wave = Text("riFF????wAVe and more");
    folder.Write("kinds.dll", BuildPe({.resources = {{14, 1, Text("group")},
                                                     {10, u"TUNE", wave},
                                                     {10, u"NOTE", Text("RIFF????WAV")},
                                                     {6, 7, MakeStringBlock({u"text"})},
                                                     {16, 1, Text("version")},
                                                     {2, 2, Text("second")},
                                                     {2, 1, Text("English"), 0x409},
                                                     {2, 1, Text("German"), 0x407},
                                                     {u"BITMAP", 9, Text("of a named type")},
                                                     {240, 9, Text("of type F0")},
                                                     {3, 1, Text("icon")},
                                                     {2, u"MYLOGO", Text("named")}},
                                       .sectionName = ".RSRC",
                                       .sectionsBefore = {{".text", Text("code")}}})
                                  .bytes);
    BuiltExecutable names = BuildPe({.resources = {{2, std::u16string(300, u'N'), Text("a")},
                                                   {2, u"", Text("nameless")},
                                                   {2, u"\u00C9T\u00C9 \u4E00", Text("b")},
                                                   {2, 65535, {}}},
                                     .keepOrder = true});
    PutU32(names.bytes, names.resources[3].dataEntry, 0xFFFFFFF0); // far outside
    folder.Write("names.dll", names.bytes);
}

static void WriteNe(const TempFolder &folder)
{
    folder.Write("kinds.exe",
                 BuildNe({.resources = {{4, 1, Text("menu")},
                                        {2, 1, Text("picture of more than sixteen bytes")},
                                        {2, u"LOGO", Text("named")},
                                        {10, std::u16string(255, u'L'), Text("RIFF????WAVE")},
                                        {6, 1, MakeNeStringBlock({"text"})},
                                        {u"TYPE", 3, Text("of a named type")}},
                          .keepOrder = true})
                     .bytes);
    // Places and sizes past 16 bits; a size is 16 bits of units, and with none the place is
    // nothing.
    BuiltExecutable spread = BuildNe(
        {.resources = {{2, 1, Bytes(0x23456, 'a')}, {10, 2, Text("behind it")}, {10, 3, {}}},
         .keepOrder = true,
         .alignmentShift = 9});
    PutU16(spread.bytes, spread.resources[2].entry, 0xFFFF);
    folder.Write("spread.exe", spread.bytes);
    BuiltExecutable over = BuildNe(
        {.resources = std::vector<ResourceDescription>(65, {10, 1, {1}}), .alignmentShift = 15});
    for (const ResourcePlaces &places : over.resources)
        PutU32(over.bytes, places.entry, 32 << 16); // a mebibyte, from the file's first byte
    folder.Write("over.exe", over.bytes);
}

// What the window does not show.
static void WriteSurveyed(const TempFolder &folder)
{
    folder.Write("every64.dll", BuildPe({.resources = {{2, 1, Text("English"), 0x409},
                                                       {2, 1, Text("German"), 0x407},
                                                       {24, 1, Text("manifest"), 0},
                                                       {16, u"\u4E00", Text("odd"), 0x7FFF},
                                                       {u"OWN\n", u"", Text("named")}},
                                         .is64 = true})
                                    .bytes);
    const Picture picture = MakePicture(4, 2, 0xFF336699);
    Bytes wide = MakeIconGroup({{4, 2, 4, 0, 5}, {4, 2, 32, 0, 6}});
    folder.Write("pictures.dll",
                 BuildPe({.resources = {{1, 8, MakeCursorImage(picture, 1, 1)},
                                        {2, 1, MakeDib(picture, 8)},
                                        {2, 2, MakeDib(picture, 4, DibForm::Core)},
                                        {2, 3, MakeDib(picture, 24, DibForm::TopDown)},
                                        {2, 4, MakeDib(picture, 16, DibForm::BitFields)},
                                        {3, 5, MakeIconImage(picture, 4)},
                                        {3, 6, MakePng(picture), 0x407},
                                        {3, 7, MakeIconImage(picture, 1), 0x407},
                                        {3, 7, MakeIconImage(picture, 8), 0x409},
                                        {3, 9, MakeIconImage(picture, 8)},
                                        {12, 20, MakeIconGroup({{4, 2, 1, 0, 8}})},
                                        {14, u"MAIN", wide},
                                        {14, 30, MakeIconGroup({{4, 2, 1, 0, 7}}), 0x407},
                                        {14, 31, MakeIconGroup({{4, 2, 8, 0, 7}}), 0x409}}})
                     .bytes);
    ExecutableDescription kinds; // of PNG
    for (unsigned char kind = 0; kind < 8; kind++) {
        kinds.resources.push_back({3, kind + 1, MakePng(picture)});
        kinds.resources.back().data[25] = kind;
        PutU32(kinds.resources.back().data, 16, kind % 2 == 0 ? 0x04030201 : 0x04000000);
    }
    folder.Write("png.dll", BuildPe(kinds).bytes);
    BuiltExecutable unpacks =
        BuildPe({.resources = {{10, 1, Text("kept")}, {10, 2, Text("packed")}}});
    PutU32(unpacks.bytes, unpacks.sectionHeader + 16,
           (uint32_t)(unpacks.resources[0].data + 4 - unpacks.table));
    folder.Write("unpacks.exe", unpacks.bytes);
}

static void WriteTypes(const TempFolder &folder)
{
    ExecutableDescription description;
    for (int type = 1; type <= 25; type++)
        description.resources.push_back({type, 1, {1}});
    for (const int type : {240, 241, 242})
        description.resources.push_back({type, 1, {1}});
    folder.Write("numbers.dll", BuildPe(description).bytes);
    for (const std::vector<int> &types :
         {std::vector<int>{1, 4, 5, 7, 8, 9, 11, 12}, {14, 16, 17, 19, 20, 21, 22, 23, 24}}) {
        ExecutableDescription others;
        for (const int type : types)
            others.resources.push_back({type, 1, {1}});
        folder.Write("others" + std::to_string(types[0]) + ".dll", BuildPe(others).bytes);
    }
}

static void WriteRefused(const TempFolder &folder)
{
    folder.Write("empty", {});
    folder.Write("letter", Text("M"));
    folder.Write("letters", Text("MZ"));
    Bytes other = BuildFour().bytes;
    // Signatures of letters and of none.
    for (const std::string signature : {"LE", " E", "!~", "L\x7F", "\x7F!", "L "}) {
        std::copy(signature.begin(), signature.end(), other.begin() + GetU32(other, 60));
        folder.Write("new" + std::to_string(signature[0]) + "-" + std::to_string(signature[1]),
                     other);
    }
    folder.Write("nothing.dll", BuildPe({.resources = {}}).bytes);
    std::vector<ResourceDescription> types = {{16, 1, {1}},
                                              {24, 1, {1}},
                                              {u"TYPELIB", 1, {1}},
                                              {std::u16string(60, u'N'), 1, {1}},
                                              {std::u16string(61, u'N'), 1, {1}}};
    for (int type = 240; type < 249; type++)
        types.push_back({type, 1, {1}});
    folder.Write("types.dll", BuildPe({.resources = types}).bytes);
    folder.Write("over.dll", MakeWorstPe(10, 1025, Bytes(65536)));
    folder.Write("rsrc1.dll", BuildPe({.resources = {{2, 1, {1}}}, .sectionName = ".rsrc1"}).bytes);
}

// The icon of the program is the one with a name, in a 64-bit file.
static void WriteIcons(const TempFolder &folder)
{
    const Bytes icon = MakeIconImage(MakePicture(4, 4, 0xFF336699), 24);
    const std::vector<ResourceDescription> resources = {
        {3, 1, icon},
        {3, 2, Text("two")},
        {14, 1, MakeIconGroup({{4, 4, 4, 3, 2}})},
        {14, u"MAIN", MakeIconGroup({{4, 4, 24, icon.size(), 1}, {4, 4, 4, 9, 9}})},
        {2, 5, Text("bitmap")}};
    BuiltExecutable built = BuildPe({.resources = resources, .is64 = true});
    folder.Write("icon64.exe", built.bytes);
    PutU32(built.bytes, built.resources[4].dataEntry, 0x7FFFFFF0);
    folder.Write("-icon.exe", built.bytes);
    PutU32(built.bytes, built.resources[2].dataEntry, 0x7FFFFFF0);
    folder.Write("icons.exe", built.bytes);
    folder.Write("hollow.exe", BuildPe({.resources = {resources[2]}}).bytes);
    folder.Write("icon16.vbx", BuildNe({.resources = {resources[1], resources[2]}}).bytes);
}

// Pictures whose sizes and depths the group does not tell, and one of them damaged.
static void WriteSizes(const TempFolder &folder)
{
    const Bytes images[] = {MakeIconImage(MakePicture(16, 16, 0xFF000010), 4),
                            MakeIconImage(MakePicture(16, 16, 0xFF000011), 32),
                            MakeIconImage(MakePicture(64, 64, 0xFF000040), 24),
                            MakePng(MakePicture(300, 150, 0x80000099)),
                            MakeIconImage(MakePicture(32, 32, 0xFF000020), 8)};
    ExecutableDescription description;
    std::vector<IconGroupMember> members;
    for (const Bytes &image : images) {
        members.push_back({0, 0, 0, image.size(), (unsigned)members.size() + 1});
        description.resources.push_back({3, (int)members.size(), image});
    }
    description.resources.push_back({14, 1, MakeIconGroup(members)});
    BuiltExecutable sizes = BuildPe(description);
    folder.Write("sizes.exe", sizes.bytes);
    PutU16(sizes.bytes, sizes.resources[4].data + 14, 7); // bits
    folder.Write("sizes-damaged.exe", sizes.bytes);
}

// One of each form that a resource is saved in, and names and types that lead elsewhere, are taken
// for another or meet.
static void WriteSavedWhole(const TempFolder &folder)
{
    Bytes wide = {0xFF, 0xFE}, version = MakeVersion("a.b", "\xA9", true);
    AddEndedText(wide, "\r\n<?xml version", true);
    PutU32(version, 68, 0x15); // flags
    PutU32(version, 72, 5);    // a system that has no name
    folder.Write("forms.dll",
                 BuildPe({.resources = {{8, 1, Text("font")},
                                        {10, 1, MakePng(MakePicture(1, 1, 0xFF336699))},
                                        {10, 2, Text("\xFF\xD8\xFF\xE0")},
                                        {10, 3, Text("GIF89a")},
                                        {10, 4, Text("riff....AVI LIST")},
                                        {10, 5, Text("RIFF....ACON")},
                                        {10, 6, Text("%PDF-1.7")},
                                        {10, 7, wide},
                                        {10, 8, Text("\xFF<html>")},
                                        {23, 1, Text("\xEF\xBB\xBF <!DocType HTML>")},
                                        {23, 2, Text("<html5>")},
                                        {23, 3, Text("LIST....WAVE")},
                                        {16, 1, version},
                                        {16, 1, Text("GIF89a: no version"), 0x407},
                                        {24, 2, Text("<assembly>")}}})
                     .bytes);
    std::vector<ResourceDescription> meeting;
    for (const char16_t *type : {u"..", u".", u"", u" ", u"BITMAP", u"bitmap", u"2", u"COM1.x",
                                 u".unfinished-1", u"a/b", u"a%2Fb", u"end. "})
        meeting.push_back({type, u"..", Text("of a text")});
    for (const char16_t *name : {u"", u"unnamed", u"UNNAMED", u"1", u"../up", u"\u202E", u"x "})
        meeting.push_back({2, name, Text("named")});
    meeting.push_back({2, 1, Text("numbered")});
    meeting.push_back({2, 1, Text("neutral"), 0});
    folder.Write("meeting.dll", BuildPe({.resources = meeting, .keepOrder = true}).bytes);
}

// Groups that name pictures which are not there, are no pictures, are there in other languages, or
// come to too much.
static void WriteGroups(const TempFolder &folder)
{
    const Bytes two = MakeIconGroup({{256, 256, 32, 999, 1}, {16, 16, 4, 0, 2}});
    Bytes cut = two, more = two;
    cut.resize(cut.size() - 1);
    PutU16(more, 4, 65535);
    const Bytes over = MakeIconGroup(std::vector<IconGroupMember>(20000, {16, 16, 32, 0, 9}));
    folder.Write(
        "groups.dll",
        BuildPe({.resources = {{1, 3, {1, 0, 1, 0}},
                               {1, 4, Text("cursor")},
                               {3, 1, Text("German"), 0x407},
                               {3, 1, Text("English")},
                               {3, 2, Text("second"), 0x407},
                               {3, 2, Text("third"), 0x411},
                               {3, 5, {}},
                               {3, u"6", Text("named")},
                               {3, 9, Bytes(1 << 14)},
                               {12, u"BARE", MakeIconGroup({{4, 4, 1, 4, 3}})},
                               {14, u"BOTH", two},
                               {14, u"CUT", cut},
                               {14, u"MORE", more},
                               {14, u"ONE", MakeIconGroup({{4, 4, 1, 4, 4}, {4, 4, 1, 4, 2}})},
                               {14, u"NONE", MakeIconGroup({{4, 4, 1, 4, 5}, {4, 4, 1, 4, 6}})},
                               {14, u"OVER", over},
                               {14, u"SHORT", {0, 0, 1, 0, 1}}}})
            .bytes);
}

static Bytes OneMessage()
{
    Bytes table;
    for (const uint32_t number : {1u, 0xC0000005u, 0xC0000005u, 16u, 8u})
        AddU32(table, number);
    AddText(table, "\xC7\xE8!\n");
    return table;
}

static void WriteStrings(const TempFolder &folder)
{
    Bytes cut = MakeStringBlock({u"whole", u"cut"});
    cut.resize(16);
    folder.Write("texts.dll",
                 BuildPe({.resources = {{6, 1, MakeStringBlock({u"a\\b\r\n\t\u202E\u4E00"})},
                                        {6, 2, MakeStringBlock({u"", u"\xD800."}), 0x407},
                                        {6, 2, cut, 0x7FFF},
                                        {6, u"NAME", MakeStringBlock({u"", u"of a name"})},
                                        {6, u"FULL",
                                         MakeStringBlock(std::vector<std::u16string>(16, u"end"))},
                                        {11, 1, OneMessage()}},
                          .is64 = true})
                     .bytes);
    folder.Write("texts.exe", BuildNe({.resources = {{6, 3, MakeNeStringBlock({"", "\xC7\xE8"})},
                                                     {10, u"\u00C7\u00E8", Text("named")}}})
                                  .bytes);
}

// Names and texts that would do things in a page, and what a page shows of each kind.
static void WriteMarkup(const TempFolder &folder)
{
    const Picture picture = MakePicture(2, 1, 0x80336699);
    const std::u16string control(u"\0\r\n\u202E\uFFFE\xD800 ]]>", 10);
    folder.Write(
        "markup.dll",
        BuildPe(
            {.resources = {{u"<script>alert(1)</script>", u"\"'><img src=x onerror=alert(2)>",
                            Text("</pre><b>&amp;\r\n")},
                           {1, 4, MakeCursorImage(picture, 1, 1)},
                           {2, u"RUNS", MakeDib(picture, 8, DibForm::RunLength)},
                           {3, 5, MakeIconImage(picture, 32)},
                           {3, 6, Text("cut")},
                           {6, 2, MakeStringBlock({u"</td><!--", control, u"\u05D0 & b"}), 0x40D},
                           {6, u"\"><i>", MakeStringBlock({u"<br>"})},
                           {10, u"\u202E<tune>", Text("RIFF????WAVE")},
                           {11, 1, OneMessage()},
                           {12, 7, MakeIconGroup({{2, 1, 1, 0, 4}})}},
             .is64 = true})
            .bytes);
    folder.Write("many/b.exe",
                 BuildNe({.resources = {{6, 3, MakeNeStringBlock({"", "\xC7"})}}}).bytes);
    folder.Write("many/a/empty.dll", BuildPe({.resources = {}}).bytes);
    folder.Write("many/a/text.txt", Text("text"));
    folder.Write("many/c.exe", Text("MZ"));
}

// What browsers draw as it is stored, and what ends at a bound, for an odd machine.
static void WriteMedia(const TempFolder &folder)
{
    const Bytes markers = {0xFF, 0xD8, 0xFF, 0xE0, 0, 3,    'x',  0xFF, 0xC4, 0, 2, 0xFF, 0xC8, 0,
                           2,    0xFF, 0xCC, 0,    2, 0xFF, 0xC2, 0,    11,   8, 1, 2,    3,    4};
    Bytes cursor = {1, 0, 1, 0};
    AddBytes(cursor, MakePng(MakePicture(2, 1, 0xFF336699)));
    BuiltExecutable media = BuildPe(
        {.resources = {{1, 1, cursor},
                       {6, 1, MakeStringBlock({u"\uFDCF\uFDD0\uFDEF\uFDF0\uFFFF\x7F\x1F"}), 0x40A},
                       {6, 65535, MakeStringBlock({u"last"})},
                       {6, u"65536", MakeStringBlock({u"one past"})},
                       {10, 1, Text("GIF89a\x02\x01\x04\x03")},
                       {10, 2, markers},
                       {10, 3, Bytes(markers.begin(), markers.end() - 1)},
                       {10, 4, Text("\xFF\xD8\xFF no marker follows")},
                       {10, 5, Text("RIFF\x01\x01\x01\x01WAVE.")},
                       {10, 6, Bytes(130, 'x')},
                       {10, 7, Text("\x1F ~\x7F")}}});
    PutU16(media.bytes, media.header + 4, 0x200);
    PutU16(media.bytes, media.header + 22, 0x0102);
    folder.Write("media.exe", media.bytes);
}

void WriteCommandFiles(const TempFolder &folder)
{
    WriteMarkup(folder);
    WriteMedia(folder);
    WriteIcons(folder);
    WriteSizes(folder);
    WriteSavedWhole(folder);
    WriteGroups(folder);
    WriteStrings(folder);
    WritePe(folder);
    WriteNe(folder);
    WriteRefused(folder);
    WriteTypes(folder);
    WriteSurveyed(folder);
    BuiltExecutable damaged = BuildFour();
    folder.Write("four.dll", damaged.bytes);
    folder.Write("a\xC3\xA9 b.dll", damaged.bytes);
    PutU32(damaged.bytes, damaged.resources[1].dataEntry + 4, 0x7FFFFFFF);
    folder.Write("damaged.dll", damaged.bytes);
    folder.Write("text.txt", Text("text"));
    folder.Write("every.dll", EveryForm());
    folder.Write("none.dll", BuildPe({.resources = {{16, 1, {1}}, {u"OWN", 1, {2}}}}).bytes);
    folder.Write("64.dll", BuildPe({.resources = {{2, 1, {1}}}, .is64 = true}).bytes);
    BuiltExecutable code = BuildPe({.resources = {{2, 1, {1}}},
                                    .sectionName = ".te~\x7F",
                                    .sectionsBefore = {{".text", Text("code")}}});
    folder.Write("code.dll", code.bytes);
    PutU32(code.bytes, code.header + 24 + 92, 2); // directories: that of resources is none of them
    folder.Write("code2.dll", code.bytes);
    PutU32(code.bytes, code.header + 24 + 92, 16);
    PutU32(code.bytes, code.header + 24 + 112, 0); // no directory, though a section lies there
    PutU32(code.bytes, code.sectionHeader + 12, 0);
    folder.Write("code3.dll", code.bytes);
    BuiltExecutable program = BuildNe({.resources = {{2, 3, Text("sixteen bits")}}});
    PutU16(program.bytes, program.header + 12, 0);
    folder.Write("16.exe", program.bytes);
    folder.Write("hostile.dll", BuildPe({.resources = {{2, u"../../up", Text("a")},
                                                       {2, u"/abs", Text("b")},
                                                       {2, u"..", Text("c")},
                                                       {2, u"C:\\x", Text("d")},
                                                       {2, u"CON", Text("e")},
                                                       {2, u"nul .x", Text("f")},
                                                       {2, u"1\nBITMAP\u0081", Text("g")},
                                                       {3, 1, Text("icon")}}})
                                    .bytes);
}

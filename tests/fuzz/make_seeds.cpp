// Writes what each target starts from, and the words that its tries are made of:
// make_seeds FOLDER makes FOLDER/TARGET/seeds/NUMBER and FOLDER/TARGET/words.
#include "samples/builder/builder.h"
#include "tests/support/dib_kinds.h"

#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>

struct Start {
    std::vector<Bytes> seeds;
    std::vector<Bytes> words;
};

static Bytes Join(std::initializer_list<Bytes> parts)
{
    Bytes bytes;
    for (const Bytes &part : parts)
        AddBytes(bytes, part);
    return bytes;
}

static Bytes Words(std::initializer_list<int> words)
{
    Bytes bytes;
    for (const int word : words)
        AddU16(bytes, (unsigned)word & 0xFFFF);
    return bytes;
}

// UTF-16 with a 0 behind it.
static Bytes Wide(const char *text)
{
    Bytes bytes;
    for (; *text != 0; text++)
        AddU16(bytes, (unsigned char)*text);
    AddU16(bytes, 0);
    return bytes;
}

static Bytes Number(uint32_t number)
{
    Bytes bytes;
    AddU32(bytes, number);
    return bytes;
}

// A few colours and a clear corner.
static Picture PaintFew(int width, int height)
{
    Picture picture = MakePicture(width, height, 0xFF336699);
    picture.At(0, 0) = 0;
    picture.At(1, 0) = 0xFFFF0000;
    picture.At(1, 1) = 0x8000FF00;
    return picture;
}

static std::vector<ResourceDescription> OneOfEach()
{
    return {{2, 1, MakeDib(PaintFew(5, 3), 4)},
            {2, u"NAME", Text("x")},
            {3, 1, MakeIconImage(PaintFew(4, 4), 1)},
            {6, 7, MakeStringBlock({u"one", u"two"})},
            {10, u"É", Text("RIFF\4\0\0\0WAVE")},
            {14, 1, MakeIconGroup({{4, 4, 1, 100, 1}})},
            {16, 1, Text("version")},
            {u"TYPE", 1, Text("own")}};
}

static std::vector<Bytes> PeFiles()
{
    std::vector<Bytes> files = {BuildPe({.resources = OneOfEach()}).bytes,
                                BuildPe({.resources = {{2, 1, {1}}}}).bytes,
                                BuildPe({.resources = {{2, 1, {1}}}, .is64 = true}).bytes,
                                BuildPe({.resources = {{3, 1, {1}}}, .sectionName = ".text"}).bytes,
                                BuildPe({.resources = {{2, 1, {1}, 0x407}, {2, 1, {2}, 0}},
                                         .sectionsBefore = {{".text", Text("code")}}})
                                    .bytes};
    BuiltExecutable shared = BuildPe({.resources = {{10, 1, Text("one")}, {10, 2, Text("two")}}});
    PutU32(shared.bytes, shared.resources[1].languageEntry + 4, 0x80000000); // the root
    files.push_back(shared.bytes);
    return files;
}

static std::vector<Bytes> NeFiles()
{
    return {BuildNe({.resources = OneOfEach()}).bytes,
            BuildNe({.resources = {{2, 1, {1}}}, .alignmentShift = 0}).bytes,
            BuildNe({.resources = {}, .emptyTypes = {2}}).bytes};
}

static std::vector<Bytes> Bitmaps()
{
    std::vector<Bytes> bitmaps;
    for (const auto &kind : dibKinds)
        bitmaps.push_back(MakeDib(PaintFew(5, 3), kind.bits, kind.form, {}, kind.bits <= 8));
    return bitmaps;
}

static std::vector<Bytes> IconImages()
{
    std::vector<Bytes> images;
    for (const int bits : {1, 4, 8, 24, 32})
        images.push_back(MakeIconImage(PaintFew(4, 4), bits));
    return images;
}

static std::vector<Bytes> PngFiles()
{
    std::vector<Bytes> files = {MakePng(PaintFew(3, 2))};
    const struct {
        int bits, type, rowSize;
    } forms[] = {{1, 0, 2}, {8, 0, 4}, {16, 2, 19}, {4, 3, 3}, {8, 4, 7}, {16, 6, 25}};
    const Bytes palette = MakePngChunk("PLTE", {255, 0, 0, 0, 255, 0, 0, 0, 255});
    for (const auto &form : forms)
        for (const int interlace : {0, 1})
            files.push_back(MakePngOf(3, 2, form.bits, form.type, interlace,
                                      Bytes((size_t)form.rowSize * 4),
                                      form.type == 3 ? palette : Bytes()));
    return files;
}

static std::vector<Bytes> Sounds()
{
    const Bytes samples = {1, 2, 3, 4, 5, 6, 7, 8};
    const Bytes msFormat = {32, 0,   10, 0,  7, 0,   0, 1, 0, 0,   0, 2,  0,   255, 0, 0,  0,
                            0,  192, 0,  64, 0, 240, 0, 0, 0, 204, 1, 48, 255, 136, 1, 24, 255};
    return {
        MakeWave({.bits = 8, .samples = samples}),
        MakeWave({.channels = 2, .samples = samples}),
        MakeWave({.bits = 24, .samples = {1, 2, 3, 9, 254, 255}}),
        MakeWave({.tag = WAVE_TAG_FLOAT, .bits = 32, .samples = samples}),
        MakeWave({.tag = WAVE_TAG_MULAW, .bits = 8, .samples = samples}),
        MakeWave({.tag = WAVE_TAG_ALAW, .bits = 8, .samples = samples}),
        MakeWave({WAVE_TAG_MS_ADPCM,
                  1,
                  22050,
                  4,
                  11,
                  msFormat,
                  {0, 16, 0, 100, 0, 84, 0, 17, 17, 17, 17}}),
        MakeWave(
            {WAVE_TAG_IMA_ADPCM, 1, 22050, 4, 8, {2, 0, 9, 0}, {232, 3, 0, 0, 68, 204, 68, 204}})};
}

static std::vector<Bytes> Dialogs()
{
    return {
        Join({Words({0x00C4, 0x90C0, 1, 0, 2, 1, -2, 240, 222, 0, 0}), Wide("About"), Words({8}),
              Wide("MS Sans Serif"), Words({0, 0x0300, 0x5001, 0, 0, 128, 200, 50, 14, 1, -1, 128}),
              Wide("OK"), Words({0})}),
        Join({Words({1, -1, 0, 0, 0, 0, 0x00C4, 0x90C0, 1, 1, -2, 240, 222, 0, 0}), Wide("About"),
              Words({8, 0, 0}), Wide("F"),
              Words({0, 0, 0, 0, 3, 0x5000, -1, 4, 20, 20, -1, -1, -1, 130, -1, 5, 0})})};
}

static std::vector<Bytes> Menus()
{
    return {Join({Words({0, 0, 0x90}), Wide("&File"), Words({0, 100}), Wide("&Open"),
                  Words({0, 0, 0}), Words({0x80, 101}), Wide("E&xit")}),
            Join({Words({0, 4, 1, 2, 0x80, 100}), Wide("One")})};
}

static std::vector<Bytes> IconGroups()
{
    const Bytes group = MakeIconGroup({{4, 4, 1, 100, 1}, {16, 16, 4, 100, 1}});
    const Bytes cursors = Join({Words({0, 2, 1, 4, 8, 1, 1}), Number(100), Words({1})});
    std::vector<Bytes> groups = {Join({{(unsigned char)(0x80 | cursors.size())},
                                       cursors,
                                       MakeCursorImage(PaintFew(4, 4), 1, 2)})};
    for (const Bytes &image : IconImages())
        groups.push_back(Join({{(unsigned char)group.size()}, group, image}));
    return groups;
}

// What the numbers of these formats are most likely to go wrong with, and their marks.
static std::vector<Bytes> PeWords()
{
    return {Text("MZ"),          Number(0x4550),      Text(".rsrc"),      Number(0x80000000),
            Number(0x80000010),  Number(0x80000080),  Number(0xFFFFFFFF), Number(0x7FFFFFFF),
            Number(0x1000),      Words({0x10B}),      Words({0x20B}),     Words({224}),
            Words({2, 0, 1, 0}), Words({0, 0, 1, 1}), Number(3),          Number(6),
            Number(10),          Number(128)};
}

static std::vector<Bytes> DibWords()
{
    return {Number(12),         Number(40),         Number(108),        Number(124),
            Number(0xFFFFFFFF), Number(0x80000000), Number(0x7FFFFFFF), Number(3),
            Words({1, 1}),      Words({1, 4}),      Words({1, 8}),      Words({1, 16}),
            Words({1, 24}),     Words({1, 32}),     Number(256),        Number(0x10000),
            Number(0xF800),     Number(0x7E0),      Number(0x1F)};
}

static std::map<std::string, Start> Starts()
{
    const std::vector<Bytes> runs = {
        {0, 5, 3, 5, 1, 0, 0, 2, 2, 0, 1, 0, 0, 0, 3, 1, 2, 3, 0, 0, 1},
        {1, 5, 3, 5, 0x12, 0, 0, 0, 5, 1, 2, 3, 0, 0, 1}};
    std::vector<Bytes> icons = IconImages(), pngs = PngFiles();
    icons.push_back(pngs[0]);
    const std::vector<Bytes> blocks = {MakeStringBlock({u"one", u"", u"t\t\r\n\x1wo"}),
                                       MakeStringBlock({std::u16string(300, u'x')})};
    std::vector<Bytes> headers = PeFiles(), ne = NeFiles();
    headers.insert(headers.end(), ne.begin(), ne.end());
    const std::vector<Bytes> pngWords = {Text("IHDR"),
                                         Text("IDAT"),
                                         Text("IEND"),
                                         Text("PLTE"),
                                         Text("tRNS"),
                                         Text("gAMA"),
                                         Text("sRGB"),
                                         Text("iCCP"),
                                         {0, 0, 0, 0},
                                         {0, 0, 0, 13},
                                         {255, 255, 255, 255},
                                         {0x78, 0x9C},
                                         {0x89, 'P', 'N', 'G', 13, 10, 26, 10}};
    return {{"pe_reader", {PeFiles(), PeWords()}},
            {"ne_reader",
             {ne,
              {Text("NE"), Words({0x8002}), Words({0x8003}), Words({0x8006}), Words({0x800A}),
               Words({31}), Words({0, 0}), Words({-1})}}},
            {"probe", {headers, PeWords()}},
            {"survey", {headers, PeWords()}},
            {"page", {headers, PeWords()}},
            {"module", {PeFiles(), PeWords()}},
            {"bitmap", {Bitmaps(), DibWords()}},
            {"icon", {icons, DibWords()}},
            {"icon_group", {IconGroups(), DibWords()}},
            {"run_length", {runs, {{0, 0}, {0, 1}, {0, 2, 255, 255}, {255, 1}, {0, 255}}}},
            {"png", {pngs, pngWords}},
            {"string_table", {blocks, {Words({-1}), Words({0}), Words({260}), Words({0x7FFF})}}},
            {"version_info",
             {{Join({{0}, MakeVersion("a.dll", "What it is", true)}),
               Join({{1}, MakeVersion("a.drv", "What it is", false)})},
              {Wide("StringFileInfo"), Wide("VarFileInfo"), Wide("Translation"), Wide("040904B0"),
               Text("040904E4"), Words({0}), Words({-1}), Words({52}), Number(0xFEEF04BD)}}},
            {"binary_data",
             {{Text("some bytes, more than a line of them"), Sounds()[0]},
              {Text("RIFF"), Text("WAVE")}}},
            {"wave",
             {Sounds(),
              {Text("RIFF"), Text("WAVE"), Text("fmt "), Text("data"), Text("fact"), Text("LIST"),
               Number(0xFFFFFFFF), Number(16), Words({-2}), Words({2}), Words({17}), Words({85})}}},
            {"dialog", {Dialogs(), {Words({-1}), Words({1, -1}), Words({0x40}), Words({0})}}},
            {"menu", {Menus(), {Words({0x10}), Words({0x90}), Words({0x80}), Words({0})}}},
            {"profile",
             {{Text("; note\r\n[Paths]\r\nHost = \"C:\\vlx\"\r\nOther=1\n"),
               Text("path=$ORIGIN/x\n[PROGRAM]\npath = ' a '\n"),
               Join({{0xFF, 0xFE}, Wide("[Paths]\nHost=x\n")})},
              {Text("[Paths]"), Text("Host="), Text("$ORIGIN"), {0xFF, 0xFE}, {0}}}},
            {"text",
             {{Join({{2}, Wide("\xC9t\x80 <name>")}), Join({{3}, Text("com1 .x")}),
               Join({{9}, Text("ru_RU.UTF-8")}), Join({{4}, Text("\xE2\x80\xAE\xC3\x89")})},
              {Text("nul"), Text("con"), Text("@latin"), Words({0xD800, 0xDC00})}}}};
}

// libFuzzer's form: a quoted text a line.
static Bytes Dictionary(const std::vector<Bytes> &words)
{
    Bytes text;
    for (const Bytes &word : words) {
        AddText(text, "\"");
        for (const unsigned char letter : word) {
            char code[5];
            snprintf(code, sizeof code, "\\x%02X", letter);
            AddText(text, code);
        }
        AddText(text, "\"\n");
    }
    return text;
}

int main(int count, char **arguments)
{
    if (count != 2)
        return 2;
    for (const auto &[target, start] : Starts()) {
        const std::filesystem::path folder = std::filesystem::path(arguments[1]) / target;
        std::filesystem::create_directories(folder / "seeds");
        bool isWritten = WriteBytes((folder / "words").c_str(), Dictionary(start.words));
        for (size_t i = 0; i < start.seeds.size(); i++)
            isWritten = isWritten &&
                        WriteBytes((folder / "seeds" / std::to_string(i)).c_str(), start.seeds[i]);
        if (!isWritten)
            return 1;
    }
    return 0;
}

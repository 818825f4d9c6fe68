#include "samples/sample_files.h"

#include "samples/artwork/sample_artwork.h"
#include "samples/templates.h"
#include "samples/tune.h"

// Windows' numbers of the resource types
enum {
    Cursor = 1,
    Bitmap = 2,
    Icon = 3,
    Menu = 4,
    Dialog = 5,
    String = 6,
    RawData = 10,
    CursorGroup = 12,
    IconGroup = 14,
    Version = 16,
    Manifest = 24,
};

#define ENGLISH 0x409
#define GERMAN 0x407

typedef std::vector<ResourceDescription> Resources;

static Bytes TextBytes(std::string_view text)
{
    Bytes bytes;
    AddText(bytes, text);
    return bytes;
}

static Bytes CountingBytes()
{
    Bytes bytes;
    for (unsigned i = 0; i < 256; i++)
        AddU8(bytes, i);
    return bytes;
}

static Bytes MonochromeQuill()
{
    return MakeDib(Dither(DrawQuillOnPaper(128, 104), MonochromeColors(), 255), 1, DibForm::Plain,
                   MonochromeColors());
}

static Bytes SixteenColorMoor()
{
    return MakeDib(Dither(DrawMoor(dusk, 160, 108), DuskColors(), 40), 4, DibForm::Plain,
                   DuskColors());
}

static Bytes PaletteMoor(const Hour &hour)
{
    return MakeDib(Dither(DrawMoor(hour, 200, 133), CubeColors(), 51), 8, DibForm::Plain,
                   CubeColors(), true);
}

// Adds an icon of several sizes and depths: the images, numbered from `first` on, and their group.
static void AddIcon(Resources &resources, ResourceId group, int first, Picture (*draw)(int),
                    const std::vector<std::pair<int, int>> &sizesAndBits)
{
    std::vector<IconGroupMember> members;
    for (auto [size, bits] : sizesAndBits) {
        Picture picture = draw(size);
        Bytes image;
        if (size == 256)
            image = MakePng(picture);
        else if (bits == 32)
            image = MakeIconImage(picture, bits);
        else
            image = MakeIconImage(picture, bits, bits == 4 ? SixteenColors() : CubeColors());
        int id = first + (int)members.size();
        members.push_back({size, size, bits, image.size(), (unsigned)id});
        resources.push_back({Icon, id, image});
    }
    resources.push_back({IconGroup, group, MakeIconGroup(members)});
}

static Bytes Pointer()
{
    Picture arrow = MakePicture(32, 32, 0);
    for (int y = 0; y < 16; y++)
        for (int x = 0; x <= y; x++)
            arrow.At(x, y) = x == 0 || x == y || y == 15 ? 0xff000000 : 0xffffffff;
    return MakeCursorImage(arrow, 0, 0);
}

ExecutableDescription DescribeHeather()
{
    ExecutableDescription heather;
    Resources &resources = heather.resources;
    resources = {
        {Bitmap, 101, MonochromeQuill()},
        {Bitmap, 102, SixteenColorMoor()},
        {Bitmap, 103, PaletteMoor(dusk), GERMAN},
        {Bitmap, 103, PaletteMoor(morning), ENGLISH},
        {Bitmap, 104, MakeDib(DrawMoor(morning, 240, 160), 24)},
        {Bitmap, "QUILL", MakeDib(DrawQuillOnPaper(200, 160), 24)},
        {String, 1,
         MakeStringBlock({u"Heather", u"", u"First line\r\nsecond line\tafter a tab",
                          u"A bell \a and an escape \x1b[0m", u"100 % of the moor",
                          u"C:\\Moor\\heather.dll"}),
         ENGLISH},
        {String, 1, MakeStringBlock({u"Heide", u"", u"Erste Zeile\r\nzweite Zeile"}), GERMAN},
        {String, 7,
         MakeStringBlock({u"Gr\u00fc\u00dfe aus dem Moor", u"\u00e9t\u00e9, \u00f8l, \u20ac 5",
                          u"\u0395\u03c1\u03b5\u03af\u03ba\u03b7",
                          u"\u0412\u0435\u0440\u0435\u0441\u043a", u"\u30d2\u30fc\u30b9",
                          u"\U0001fab6 a quill"})},
        {RawData, 500, MakeTune(22050, 16)},
        {RawData, 501, CountingBytes()},
        {RawData, "NOTES", TextBytes("Heather blooms on the moor in late summer.\r\n")},
        {"HEATHER", 1, TextBytes("A kind of its own.")},
        {Menu, 1, MakeMenu("&Moor", "&Walk", 40, true)},
        {Dialog, 1, MakeDialog("Heather", "A walk over the moor.", true)},
        {Version, 1, MakeVersion("heather.dll", "Pictures and texts of the moor", true)},
        {Manifest, 2,
         TextBytes("<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" "
                   "manifestVersion=\"1.0\"/>\r\n")},
        {Cursor, 1, Pointer()},
        {CursorGroup, 1, MakeCursorGroup(Pointer().size(), 1)},
    };
    AddIcon(resources, 1, 1, DrawQuillIcon, {{32, 4}, {32, 8}, {48, 32}, {256, 32}});
    AddIcon(resources, "INKWELL", 5, DrawBottleIcon, {{16, 4}, {32, 8}, {64, 32}});
    return heather;
}

ExecutableDescription DescribeCurlew()
{
    ExecutableDescription curlew;
    Resources &resources = curlew.resources;
    resources = {
        {Bitmap, 1, MonochromeQuill()},
        {Bitmap, 2, SixteenColorMoor()},
        {Bitmap, 3, PaletteMoor(night)},
        {Bitmap, "DUSK", MakeDib(DrawMoor(dusk, 120, 80), 24)},
        {String, 1,
         MakeNeStringBlock({"Curlew", "", "First line\r\nsecond line\tafter a tab",
                            "Gr\xfc\xdf"
                            "e aus dem Moor",
                            "A bell \a"})},
        {RawData, 1, MakeTune(11025, 8)},
        {RawData, "TABLE", CountingBytes()},
        {"SONG", 1, TextBytes("A kind of its own.")},
        {Menu, 1, MakeMenu("&Moor", "&Listen", 40, false)},
        {Dialog, 1, MakeDialog("Curlew", "A call over the moor.", false)},
        {Version, 1, MakeVersion("curlew.vbx", "Pictures and texts of the moor", false)},
        {Cursor, 1, Pointer()},
        {CursorGroup, 1, MakeCursorGroup(Pointer().size(), 1)},
    };
    AddIcon(resources, 1, 1, DrawQuillIcon, {{32, 4}, {32, 8}});
    AddIcon(resources, "INKWELL", 3, DrawBottleIcon, {{32, 4}, {32, 32}});
    return curlew;
}

// What every cut and every wild byte of a bitmap and of an icon image comes to.
#include "content/dib.h"
#include "content/picture_info.h"
#include "export/picture_pixels.h"
#include "tests/support/damage.h"
#include "tests/support/dib_kinds.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

#include <algorithm>

typedef std::vector<std::string> Lines;

// The first pixels of a picture in memory, and some past its edges, each in hexadecimal.
static std::string PixelsAt(const void *dib, int isIcon = 0)
{
    DibHeader header;
    ReadDibHeader(dib, 40, &header);
    std::string pixels;
    char digits[12];
    for (LONG y = -1; y < std::min<LONG>(std::abs(header.height) + 1, 3); y++)
        for (LONG x = -1; x < std::min<LONG>(header.width + 1, 10); x++) {
            const DWORD pixel = (isIcon ? GetIconPixel : GetDibPixel)(dib, x, y);
            snprintf(digits, sizeof digits, " %06X", (unsigned)pixel);
            pixels += pixel == NO_PIXEL ? " -" : digits;
        }
    return pixels;
}

// Those of a block, which is freed.
static std::string PixelsOf(HGLOBAL block)
{
    if (block == nullptr)
        return " none";
    const std::string pixels = PixelsAt(GlobalLock(block));
    GlobalUnlock(block);
    GlobalFree(block);
    return pixels;
}

static std::string OutcomeOf(const Bytes &bytes, int isIcon)
{
    DibHeader header;
    const DWORD size = (DWORD)bytes.size();
    std::string told = ReadDibHeader(bytes.data(), size, &header) ? "" : "no header,";
    for (const long long number :
         {(long long)header.width, (long long)header.height, (long long)header.bitCount,
          (long long)DibPixelStart(&header), (long long)DibMaskSize(&header)})
        told += " " + std::to_string(number);
    PictureInfo info;
    ReadPictureInfo(bytes.data(), std::min<size_t>(size, PICTURE_START_SIZE),
                    isIcon ? PictureIcon : PictureBitmap, &info);
    told += ", told as " + std::to_string(info.width) + " " + std::to_string(info.height);
    if (!PictureFits(bytes.data(), size, isIcon))
        return told + ", is none";
    if (!isIcon && (IsRunLength(&header) || header.bitCount == 16)) {
        HGLOBAL copy = nullptr;
        const BYTE *given = CopyDibInfo(bytes.data(), size, &copy);
        told += ", given with " + std::to_string(GetU32(Bytes(given, given + 24), 20));
        GlobalUnlock(copy);
        GlobalFree(copy);
        return told;
    }
    told += ":" + (header.bitCount <= 8 ? PixelsAt(bytes.data(), isIcon)
                                        : PixelsOf(FlattenOverWhite(bytes.data(), isIcon)));
    if (!isIcon)
        return told;
    PicturePixels pixels;
    if (header.bitCount < 32)
        told += ", mask" + PixelsOf(CopyIconMask(bytes.data())) + ", own" +
                PixelsOf(CopyIconColors(bytes.data()));
    told += ", seen";
    ReadIconPixels(bytes.data(), size, &pixels);
    for (size_t i = 0; i < std::min<size_t>(pixels.values.size(), 12); i++)
        told += " " + std::to_string(pixels.values[i]);
    return told;
}

static void TellAll(Lines *told, const std::vector<Bytes> &pictures, int isIcon)
{
    for (const Bytes &picture : pictures) {
        told->push_back("A picture of " + std::to_string(picture.size()) + " bytes.");
        const Lines lines =
            TellDamaged(picture, std::min<size_t>(picture.size(), 48),
                        [isIcon](const Bytes &bytes) { return OutcomeOf(bytes, isIcon); });
        told->insert(told->end(), lines.begin(), lines.end());
    }
}

TEST(DamagedPictures, ComeToWhatTheirTextTells)
{
    Lines told;
    TellAll(&told, DibsToDamage(), 0);
    Picture picture = MakePicture(9, 2, 0xFFFF0000);
    picture.At(1, 0) = 0xFF000000;
    picture.At(8, 1) = 0;
    std::vector<Bytes> icons;
    for (const int bits : {1, 4, 8, 24, 32})
        icons.push_back(MakeIconImage(picture, bits));
    TellAll(&told, icons, 1);
    ExpectTold(told, CONTENT_FOLDER "/damaged_pictures.txt",
               TOLD_FOLDER "/damaged_pictures.told.txt");
}

// What every cut and every wild byte of a bitmap is decoded to.
#include "platform/native/gdi/dib_decode.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/damage.h"
#include "tests/support/dib_kinds.h"
#include "tests/support/transcript.h"

static std::string OutcomeOf(const Bytes &bytes)
{
    DibLayout layout;
    if (!ReadDibLayout(bytes.data(), bytes.size(), &layout))
        return "none";
    std::string told = std::to_string(layout.width) + " " + std::to_string(layout.height);
    const size_t rest = bytes.size() - layout.infoSize;
    if (!layout.isRunLength && layout.pixelsSize > rest)
        return told + " beyond";
    Bitmap bitmap;
    if (layout.width > 1000 || layout.height > 1000 ||
        !DecodeDib(layout, bytes.data(), bytes.data() + layout.infoSize,
                   std::min(rest, layout.pixelsSize), &bitmap))
        return told + " too large";
    const PixelSurface &surface = bitmap.surface;
    char digits[12];
    for (int y = 0; y < std::min(surface.height, 3); y++)
        for (int x = 0; x < std::min(surface.width, 4); x++) {
            const size_t at = static_cast<size_t>(y) * surface.stride + static_cast<size_t>(x);
            snprintf(digits, sizeof digits, " %06X", surface.pixels[at]);
            told += digits;
        }
    return told;
}

TEST(DibDecode, OfDamagedBitmapsGivesWhatItsTextTells)
{
    std::vector<std::string> told;
    for (const Bytes &dib : DibsToDamage()) {
        told.push_back("A picture of " + std::to_string(dib.size()) + " bytes.");
        const auto lines = TellDamaged(dib, dib.size(), OutcomeOf);
        told.insert(told.end(), lines.begin(), lines.end());
    }
    ExpectTold(told, NATIVE_FOLDER "/gdi/damaged_dibs.txt", TOLD_FOLDER "/damaged_dibs.told.txt");
}

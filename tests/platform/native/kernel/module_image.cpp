// What every cut and every wild byte of a module comes to.
#include "platform/native/kernel/module_image.h"

#include <gtest/gtest.h>

#include <cstring>

#include "samples/builder/builder.h"
#include "tests/support/damage.h"
#include "tests/support/transcript.h"

// Where some resources are, of a copy that ends exactly where the bytes end.
static std::string OutcomeOf(const Bytes &bytes)
{
    static const struct {
        ResourceKey type, name;
    } keys[] = {
        {{true, 2, {}}, {true, 1, {}}},
        {{true, 10, {}}, {true, 7, {}}},
        {{true, 10, {}}, {false, 0, u"zaXt"}},
        {{false, 0, u"Own"}, {true, 3, {}}},
    };
    ModuleImage image;
    if (!ReadModuleImage(bytes.data(), bytes.size(), &image))
        return "none";
    std::string told;
    for (const auto &[type, name] : keys) {
        ResourcePlace place;
        if (!FindImageResource(image, type, name, &place)) {
            told += " -";
            continue;
        }
        EXPECT_LE(place.size, bytes.size());
        EXPECT_LE(place.fileOffset, bytes.size() - place.size);
        told += " " + std::to_string(place.fileOffset) + ":" + std::to_string(place.size);
    }
    return told;
}

TEST(ModuleImage, OfADamagedFileIsWhatItsTextTells)
{
    std::vector<std::string> told;
    for (const bool is64 : {false, true}) {
        ExecutableDescription description = {.resources = {{2, 1, Bytes(5), 0x407},
                                                           {2, 1, Bytes(6), 0x409},
                                                           {2, 1, Bytes(7), 0x40C},
                                                           {10, 7, Bytes(8), 0x407},
                                                           {10, 7, Bytes(9), 0},
                                                           {10, "ZAxt", Bytes(1)},
                                                           {"OWN", 3, Bytes(2)}}};
        description.is64 = is64;
        const Bytes module = BuildPe(description).bytes;
        const auto lines = TellDamaged(module, module.size(), OutcomeOf);
        told.insert(told.end(), lines.begin(), lines.end());
    }
    ExpectTold(told, NATIVE_FOLDER "/kernel/damaged_modules.txt",
               TOLD_FOLDER "/damaged_modules.told.txt");
}

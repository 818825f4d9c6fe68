// The layer's own reader of resources.
#include "platform/native/kernel/module_image.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ResourceKey keys[] = {{true, 1, {}},    {true, 2, {}},  {true, 3, {}},
                                       {true, 14, {}},   {true, 16, {}}, {false, 0, u"name"},
                                       {false, 0, u"É"}, {false, 0, {}}};
    ModuleImage image;
    if (!ReadModuleImage(data, size, &image))
        return 0;
    for (const ResourceKey &type : keys)
        for (const ResourceKey &name : keys) {
            ResourcePlace place;
            if (FindImageResource(image, type, name, &place))
                Check(place.fileOffset <= size && place.size <= size - place.fileOffset);
        }
    return 0;
}

// A sound's way from the resource to the device, which cannot be opened here: up to there the
// player has decoded it.
#include "shell/sound.h"
#include "tests/fuzz/fuzz.h"

#include <cstdlib>

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // A driver that writes to a file, and a file that cannot be made.
    static const int isSet =
        setenv("SDL_AUDIODRIVER", "disk", 1) | setenv("SDL_DISKAUDIOFILE", "/dev/null/none", 1);
    Check(isSet == 0);
    const ResourceEntry entry = KeepOne(CategoryBinary, data, size);
    PlaySoundEntry(&entry);
    StopSound();
    ReleaseCatalog(&openCatalog);
    return 0;
}

// The one sound that may be playing, from a locked block.
#pragma once

#include "exe/catalog.h"

// Plays an entry's data, a RIFF WAVE image, while the program goes on: from its own block, or from
// a copy with the size mended when the header tells of more bytes than there are. The block that it
// plays from stays locked until the next StopSound. Plays nothing when the entry's block cannot be
// locked or there is no memory for the copy. Whatever played before must have been stopped.
void PlaySoundEntry(const ResourceEntry *entry);

// Stops what plays, unlocks its block and frees a copy; to be called before the catalogue can be
// released.
void StopSound();

// Forgets a sound without stopping it: the state at the program's start.
void ForgetSound();

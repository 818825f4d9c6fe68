// The one sound that may be playing, from an entry's locked data block.
#pragma once

#include "exe/catalog.h"

// Plays an entry's data, a RIFF WAVE image, while the program goes on. Its block stays locked until
// the next StopSound. Does nothing when the block cannot be locked. Whatever played before must
// have been stopped.
void PlaySoundEntry(const ResourceEntry *entry);

// Stops what plays and unlocks its block; to be called before the catalogue can be released.
void StopSound();

// Forgets a sound without stopping it: the state at the program's start.
void ForgetSound();

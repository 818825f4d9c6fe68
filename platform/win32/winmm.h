// Playing sounds.
#pragma once

#include "platform/win32/types.h"

extern "C" {

#define SND_ASYNC 0x0001
#define SND_MEMORY 0x0004
#define SND_NOSTOP 0x0010

// Plays a RIFF WAVE sound that lies in memory; the flags are SND_ASYNC | SND_MEMORY, and SND_NOSTOP
// for giving way to a sound that plays already. Nothing is read past the size that the RIFF header
// announces. Returns at once: TRUE when the sound plays, FALSE when it gave way, is no sound of a
// known encoding, or there is nothing to play it on. No default sound takes its place.
// NULL stops what plays, whatever the flags, and gives TRUE.
BOOL WINAPI sndPlaySoundA(LPCSTR sound, UINT flags);

} // extern "C"

#include "shell/sound.h"

#include "content/block.h"
#include "content/byte_writer.h"
#include "platform/byte_reader.h"

#include <algorithm>
#include <cstring>

static HGLOBAL soundBlock;
static const void *soundAddress;
static bool soundIsCopy; // the block is not the catalogue's

// The player trusts the size that the RIFF header gives. Many old writers store 8 too many, so such
// a sound is played from a copy that tells its size truly. Stores the copy, locked, and returns its
// address; both are NULL when there is no memory.
static const void *CopyWithTrueSize(const BYTE *data, DWORD size, HGLOBAL *copy)
{
    const DWORD copySize = std::max<DWORD>(size, WAVE_HEADER_SIZE);
    BYTE *to = (BYTE *)AllocateLocked(copySize, copy);
    if (to == nullptr)
        return nullptr;
    memcpy(to, data, size);
    PutU32(to + 4, copySize - 8);
    return to;
}

static bool TellsTrueSize(const BYTE *data, DWORD size)
{
    ByteReader bytes = OpenBytes(data, size);
    const DWORD rest = ReadU32(&bytes, 4);
    return size >= WAVE_HEADER_SIZE && rest <= size - 8;
}

void PlaySoundEntry(const ResourceEntry *entry)
{
    const BYTE *data = (const BYTE *)GlobalLock(entry->data);
    if (data == nullptr)
        return;
    soundBlock = entry->data;
    soundAddress = data;
    soundIsCopy = !TellsTrueSize(data, entry->size);
    if (soundIsCopy) {
        soundAddress = CopyWithTrueSize(data, entry->size, &soundBlock);
        GlobalUnlock(entry->data);
    }
    if (soundAddress != nullptr)
        sndPlaySoundA((const char *)soundAddress, SND_ASYNC | SND_MEMORY | SND_NOSTOP);
}

void StopSound()
{
    if (soundBlock != nullptr && soundAddress != nullptr) {
        sndPlaySoundA(nullptr, 0);
        GlobalUnlock(soundBlock);
        if (soundIsCopy)
            GlobalFree(soundBlock);
    }
    ForgetSound();
}

void ForgetSound()
{
    soundBlock = nullptr;
    soundAddress = nullptr;
}

// The headers of a file in the Portable Executable layout (Microsoft's PE format), and its
// sections. `headers` is the file offset at which they begin, which the MZ header tells.
#pragma once

#include "platform/byte_reader.h"
#include "platform/win32.h"

#define PE_SIGNATURE 0x4550 // "PE", after which two bytes of 0 follow
#define SECTION_NAME_LENGTH 8
#define SECTION_HEADER_SIZE 40

struct PeSection {
    BYTE name[SECTION_NAME_LENGTH]; // padded with bytes of 0, which may be none
    DWORD address;                  // relative virtual address
    DWORD length;                   // bytes in memory
    DWORD fileOffset;               // of its bytes in the file
    DWORD storedLength;             // bytes that the file has of it
};

// Takes a section header of SECTION_HEADER_SIZE bytes apart.
void TakeSectionHeader(const BYTE *header, PeSection *section);

// Stores where the PE headers of an image begin. Returns false when they do not lie whole in the
// image or do not begin with the signature.
bool FindPeHeaders(ByteReader image, size_t *headers);

// Whether the headers are a 64-bit image's.
bool Is64BitImage(ByteReader image, size_t headers);

// Whether the image is a library with an entry point, whose code runs when it is loaded.
bool RunsWhenLoaded(ByteReader image, size_t headers);

// Finds the first section of a name, letters compared without case. The section table is taken to
// follow an optional header of the 32-bit size, whatever size is stated. Returns false when there
// is none before the image's end.
bool FindSection(ByteReader image, size_t headers, const char *name, PeSection *section);

// Finds the section that the image's resource directory lies in, whatever its name. Unlike
// FindSection this goes by the size that is stated for the optional header. Returns false when the
// image tells of no resources, or there is no such section before its end.
bool FindResourceSection(ByteReader image, size_t headers, PeSection *section);

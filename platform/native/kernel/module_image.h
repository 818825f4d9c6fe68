// Resources in a PE image (Microsoft's PE format): where the resource directory lies, and what it
// says of one type and name. The image is hostile: every read is held against its length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/byte_reader.h"

struct ImageSection {
    uint32_t address;  // relative to the image's base
    size_t fileOffset; // bytes
    size_t size;       // bytes that lie in the file
};

struct ModuleImage {
    const uint8_t *bytes; // the whole file, the caller's
    size_t size;
    std::vector<ImageSection> sections;
    ByteReader resources; // the resource directory, up to the end of its section; or no bytes
};

// A type or a name: a number, or a text in UTF-16 whose letters A to Z compare without case.
struct ResourceKey {
    bool isNumber;
    uint16_t number;
    std::u16string text;
};

// Where a resource's bytes are in the file.
struct ResourcePlace {
    size_t fileOffset;
    uint32_t size;
};

// Reads the headers of a PE32 or PE32+ file, whose bytes must outlive the image. Returns false when
// it is none. An image without a resource directory is one, with no bytes of resources.
bool ReadModuleImage(const uint8_t *bytes, size_t size, ModuleImage *image);

// Finds a resource; of several languages the neutral one, else American English, else the first.
// Returns false when there is none or its bytes are not all in the file.
bool FindImageResource(const ModuleImage &image, const ResourceKey &type, const ResourceKey &name,
                       ResourcePlace *place);

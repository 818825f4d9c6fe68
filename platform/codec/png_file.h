// PNG files as bytes (ISO/IEC 15948): header, chunks, packed rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

using PngBytes = std::vector<uint8_t>;

struct PngHeader {
    uint32_t width; // pixels
    uint32_t height;
    uint32_t bits; // a pixel, of all channels
    bool isInterlaced;
};

// Reads the header of a file. Returns false when it does not begin as a PNG file.
bool ReadPngHeader(const PngBytes &file, PngHeader *header);

// Makes a file with right checksums and a right end of one that has all of its rows. Empty when it
// lacks some, is no PNG file or has more than mostDecodedPixels.
PngBytes MendPng(const PngBytes &file);

// Makes a file of rows from the top: each a byte 0, then 8 bits a channel, red, green, blue and,
// with hasAlpha, alpha. Empty when they cannot be packed.
PngBytes MakePngFile(uint32_t width, uint32_t height, bool hasAlpha, const PngBytes &rows);

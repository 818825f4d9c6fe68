#include "content/run_length.h"

#include <algorithm>

// Second byte after a zero.
enum Escape {
    EndOfLine = 0,
    EndOfBitmap = 1,
    Delta = 2, // two bytes follow; from here on: a run of that many literal pixels
};

// Bytes of the code at the start of the data, which holds at least two.
static size_t CodeLength(const BYTE *data, WORD bitCount)
{
    if (data[0] != 0 || data[1] < Delta)
        return 2;
    // Literal runs are padded to 16 bits.
    return data[1] == Delta ? 4 : 2 + ((size_t)data[1] * bitCount + 15) / 16 * 2;
}

size_t RunsLength(const BYTE *data, size_t size, WORD bitCount)
{
    size_t at = 0;
    while (size - at >= 2 && (data[at] != 0 || data[at + 1] != EndOfBitmap)) {
        const size_t length = CodeLength(data + at, bitCount);
        if (length > size - at)
            break;
        at += length;
    }
    return at;
}

// The place that the codes have reached; rows count from the bottom.
struct RunPen {
    WORD *indexes;
    LONG width;
    LONG x;
    LONG y;
};

// Puts `count` pixels: the bytes one after another, or the same one again. Of 4 bits a byte is two,
// the high one first.
static void PutRun(RunPen *pen, const BYTE *bytes, bool isRepeated, size_t count, WORD bitCount)
{
    for (size_t i = 0; i < count && pen->x < pen->width; i++, pen->x++) {
        const BYTE pair = bytes[isRepeated ? 0 : bitCount == 8 ? i : i / 2];
        const WORD index = bitCount == 8 ? pair : i % 2 == 0 ? pair >> 4 : pair & 15;
        pen->indexes[(size_t)pen->y * (size_t)pen->width + (size_t)pen->x] = index;
    }
}

void UnpackRuns(const BYTE *data, size_t size, WORD bitCount, LONG width, LONG height,
                WORD *indexes)
{
    RunPen pen = {indexes, width, 0, 0};
    const size_t end = RunsLength(data, size, bitCount);
    std::fill(indexes, indexes + (size_t)width * (size_t)height, (WORD)NO_INDEX);
    for (size_t at = 0; at < end && pen.y < height; at += CodeLength(data + at, bitCount)) {
        const BYTE count = data[at], code = data[at + 1];
        if (count > 0) {
            PutRun(&pen, data + at + 1, 1, count, bitCount);
        } else if (code == EndOfLine) {
            pen.x = 0;
            pen.y++;
        } else if (code == Delta) {
            pen.x = std::min<LONG>(pen.x + data[at + 2], width);
            pen.y += data[at + 3];
        } else {
            PutRun(&pen, data + at + 2, 0, code, bitCount);
        }
    }
}

#include "content/run_length.h"

// Second byte after a zero; zero ends a line.
enum Escape {
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

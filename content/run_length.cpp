#include "content/run_length.h"

// Second byte after a zero.
enum Escape {
    EndOfLine = 0,
    EndOfBitmap = 1,
    Delta = 2, // two bytes follow; from here on: a run of that many literal pixels
};

int RunsEnd(const BYTE *data, size_t size, WORD bitCount)
{
    size_t at = 0;
    while (size - at >= 2) {
        const BYTE count = data[at];
        const BYTE code = data[at + 1];
        at += 2;
        if (count != 0 || code == EndOfLine)
            continue;
        if (code == EndOfBitmap)
            return 1;
        // Literal runs are padded to 16 bits.
        const size_t length = code == Delta ? 2 : ((size_t)code * bitCount + 15) / 16 * 2;
        if (length > size - at)
            return 0;
        at += length;
    }
    return 0;
}

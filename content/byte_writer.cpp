#include "content/byte_writer.h"

void PutU16(BYTE *at, WORD value)
{
    at[0] = (BYTE)value;
    at[1] = (BYTE)(value >> 8);
}

void PutU32(BYTE *at, DWORD value)
{
    PutU16(at, (WORD)value);
    PutU16(at + 2, (WORD)(value >> 16));
}

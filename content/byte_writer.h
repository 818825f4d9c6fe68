// Numbers written into bytes that go to a file or lie as in one: little-endian, at any address.
#pragma once

#include "platform/win32.h"

// Writes a value to the 2 or 4 bytes at `at`, which the caller knows to be there.
void PutU16(BYTE *at, WORD value);
void PutU32(BYTE *at, DWORD value);

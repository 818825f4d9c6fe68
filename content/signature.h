// Formats of files that bytes are known for by their beginning.
#pragma once

#include "platform/win32.h"

#define SIGNATURE_START_SIZE 256 // bytes of its start that tell all of it

// The extension (".png") of the format that data begins as: PNG, JPEG, GIF, PDF, the RIFF forms
// WAVE, AVI and ACON (animated cursors), XML and HTML, the last two in UTF-8 or UTF-16 with a byte
// order mark or without; else NULL. size is how many of its first bytes there are.
const char *SignatureExtension(const BYTE *data, size_t size);

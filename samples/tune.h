// A short tune, made by arithmetic.
#pragma once

#include "samples/builder/bytes.h"

// A RIFF WAVE of one channel: a rising chord of plucked tones, about a second and a half.
// bits is 8 or 16.
Bytes MakeTune(unsigned rate, unsigned bits);

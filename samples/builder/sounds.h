// RIFF WAVE sounds.
#pragma once

#include "samples/builder/bytes.h"

#define WAVE_TAG_PCM 1
#define WAVE_TAG_MS_ADPCM 2
#define WAVE_TAG_FLOAT 3
#define WAVE_TAG_ALAW 6
#define WAVE_TAG_MULAW 7
#define WAVE_TAG_IMA_ADPCM 17

struct WaveDescription {
    unsigned tag = WAVE_TAG_PCM;
    unsigned channels = 1;
    unsigned rate = 22050;   // frames a second
    unsigned bits = 16;      // a sample
    unsigned blockAlign = 0; // bytes; 0: of one frame of whole bytes
    Bytes formatExtra = {};  // after the 16 bytes of the format, with its own length in front
    Bytes samples = {};
};

Bytes MakeWave(const WaveDescription &description);

// The bytes of 16-bit samples.
Bytes PackSamples(const std::vector<int16_t> &samples);

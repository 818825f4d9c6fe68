#include "samples/builder/sounds.h"

Bytes MakeWave(const WaveDescription &description)
{
    unsigned align = description.blockAlign;
    if (align == 0)
        align = description.channels * ((description.bits + 7) / 8);
    Bytes wave;
    AddText(wave, "RIFF");
    AddU32(wave, 0);
    AddText(wave, "WAVEfmt ");
    AddU32(wave, (uint32_t)(16 + description.formatExtra.size()));
    AddU16(wave, description.tag);
    AddU16(wave, description.channels);
    AddU32(wave, description.rate);
    AddU32(wave, description.rate * align);
    AddU16(wave, align);
    AddU16(wave, description.bits);
    AddBytes(wave, description.formatExtra);
    AddText(wave, "data");
    AddU32(wave, (uint32_t)description.samples.size());
    AddBytes(wave, description.samples);
    PadTo(wave, 2);
    PutU32(wave, 4, (uint32_t)wave.size() - 8);
    return wave;
}

Bytes PackSamples(const std::vector<int16_t> &samples)
{
    Bytes bytes;
    for (int16_t sample : samples)
        AddU16(bytes, (unsigned)sample & 0xffff);
    return bytes;
}

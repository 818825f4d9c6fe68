#include "samples/tune.h"

#include "samples/builder/sounds.h"

#include <algorithm>
#include <cmath>

struct Tone {
    double start; // seconds
    double pitch; // hertz
};

static const Tone tones[] = {{0.00, 293.66}, {0.14, 369.99}, {0.28, 440.00},
                             {0.42, 587.33}, {0.62, 880.00}, {0.62, 293.66}};

// A plucked string's first overtones, the higher ones dying sooner.
static double ToneAt(const Tone &tone, double time)
{
    double since = time - tone.start;
    if (since < 0)
        return 0;
    double sum = 0;
    for (int part = 1; part <= 4; part++)
        sum += sin(2 * 3.14159265358979 * tone.pitch * part * since) *
               exp(-since * (2.5 + 2.0 * part)) / (part * part);
    return sum * std::min(1.0, since / 0.004);
}

Bytes MakeTune(unsigned rate, unsigned bits)
{
    const double length = 1.6;
    WaveDescription wave;
    wave.rate = rate;
    wave.bits = bits;
    for (int i = 0; i < (int)(length * rate); i++) {
        double time = (double)i / rate;
        double sum = 0;
        for (const Tone &tone : tones)
            sum += ToneAt(tone, time);
        sum *= 0.35 * std::min(1.0, (length - time) / 0.2); // silent at the end
        if (bits == 8)
            AddU8(wave.samples, (unsigned)std::lround(128 + 120 * std::clamp(sum, -1.0, 1.0)));
        else
            AddU16(wave.samples,
                   (unsigned)std::lround(30000 * std::clamp(sum, -1.0, 1.0)) & 0xffff);
    }
    return MakeWave(wave);
}

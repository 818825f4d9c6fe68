// Sounds are heard through SDL's disk driver, which writes what a device would get into a file.
// SDL takes its driver once in a process, so each case runs in a process of its own.
#include "platform/win32.h"
#include "samples/builder/builder.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

static const char heardFile[] = BUILD_FOLDER "/tests/heard.raw";
static const UINT play = SND_ASYNC | SND_MEMORY | SND_NOSTOP;

// Runs work() with an SDL driver; its result is the process's. -1 for a process that was killed.
static int RunWithDriver(const char *driver, const char *bufferDelay,
                         const std::function<int()> &work)
{
    pid_t child = fork();
    if (child == 0) {
        setenv("SDL_AUDIODRIVER", driver, 1);
        setenv("SDL_DISKAUDIOFILE", heardFile, 1);
        setenv("SDL_DISKAUDIODELAY", bufferDelay, 1);
        SDL_LogSetAllPriority(SDL_NUM_LOG_PRIORITIES); // the disk driver announces itself
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

static Bytes Heard()
{
    std::ifstream file(heardFile, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

static bool Holds(const Bytes &heard, const Bytes &samples)
{
    return std::search(heard.begin(), heard.end(), samples.begin(), samples.end()) != heard.end();
}

// Waits until the sound has been heard, a minute at most as the machine may be busy. The file is
// written through a buffer, which the silence after the sound fills.
static bool WaitToHear(const Bytes &samples)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!Holds(Heard(), samples) && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return Holds(Heard(), samples);
}

static BOOL Play(const Bytes &wave)
{
    return sndPlaySoundA((const char *)wave.data(), play);
}

static Bytes Pack32(const std::vector<uint32_t> &samples)
{
    Bytes bytes;
    for (uint32_t sample : samples)
        AddU32(bytes, sample);
    return bytes;
}

// One block of each compressed encoding: 10 samples of MS ADPCM, 9 of IMA ADPCM.
static const Bytes msBlock = {0, 16, 0, 100, 0, 84, 0, 0x11, 0x11, 0x11, 0x11};
static const Bytes imaBlock = {0xe8, 3, 0, 0, 0x44, 0xcc, 0x44, 0xcc};
static const Bytes msFormat = {32, 0,    10,   0, 7,    0,    0,    1, 0,    0,   0,   2,
                               0,  0xff, 0,    0, 0,    0,    192,  0, 64,   0,   240, 0,
                               0,  0,    0xcc, 1, 0x30, 0xff, 0x88, 1, 0x18, 0xff};

struct Encoding {
    const char *name;
    WaveDescription wave;
    Bytes heard;
};

static std::vector<Encoding> Encodings()
{
    const Bytes floats = Pack32({0x3f000000, 0xbe800000}), eight = {1, 2, 3, 4, 5, 6, 7, 8};
    std::vector<Encoding> all = {
        {"8 bits", {.bits = 8, .samples = {1, 2, 0x90, 0xff}}, {1, 2, 0x90, 0xff}},
        {"24 bits",
         {.bits = 24, .samples = {1, 2, 3, 9, 0xfe, 0xff}},
         {0, 1, 2, 3, 0, 9, 0xfe, 0xff}},
        {"32 bits", {.bits = 32, .samples = eight}, eight},
        {"floating point", {.tag = WAVE_TAG_FLOAT, .bits = 32, .samples = floats}, floats},
        {"16 bits", {.channels = 2, .samples = eight}, eight},
    };
    const auto add = [&](const char *name, const WaveDescription &wave,
                         const std::vector<int16_t> &heard) {
        all.push_back({name, wave, PackSamples(heard)});
    };
    add("mu-law", {.tag = WAVE_TAG_MULAW, .bits = 8, .samples = {0x80, 0x00, 0xff, 0xf0}},
        {32124, -32124, 0, 120});
    add("A-law", {.tag = WAVE_TAG_ALAW, .bits = 8, .samples = {0xaa, 0x2a, 0xd5, 0x55}},
        {32256, -32256, 8, -8});
    add("MS ADPCM", {WAVE_TAG_MS_ADPCM, 1, 22050, 4, 11, msFormat, msBlock},
        {84, 100, 116, 132, 148, 164, 180, 196, 212, 228});
    add("IMA ADPCM", {WAVE_TAG_IMA_ADPCM, 1, 22050, 4, 8, {2, 0, 9, 0}, imaBlock},
        {1000, 1007, 1017, 1005, 991, 1009, 1030, 1005, 974});
    return all;
}

TEST(Sound, PlaysEveryCommonEncoding)
{
    const auto work = [] {
        // A device of another format begins the file anew.
        Bytes before;
        std::string told;
        for (const Encoding &encoding : Encodings()) {
            sndPlaySoundA(nullptr, 0);
            if (!Play(MakeWave(encoding.wave)) || !WaitToHear(encoding.heard))
                told += std::string(" not ") + encoding.name;
            told += Holds(Heard(), before) ? " +" : " new";
            before = encoding.heard;
        }
        return told == " + new + new new new + + +" ? 0 : 1;
    };
    EXPECT_EQ(RunWithDriver("disk", "5", work), 0);
}

TEST(Sound, StopsAtOnceAndGivesWayToWhatPlays)
{
    const Bytes wholeSound(5'000'000, 0x55), last = {9, 7, 5, 3};
    const Bytes longSound = MakeWave({.bits = 8, .samples = wholeSound});
    const Bytes shortSound = MakeWave({.bits = 8, .samples = last});
    const auto work = [&]() -> int {
        if (!Play(longSound) || !WaitToHear(Bytes(3000, 0x55)))
            return 1;
        if (Play(shortSound))
            return 2;
        if (!sndPlaySoundA(nullptr, 0) || !Play(shortSound) || !WaitToHear(last))
            return 3;
        // The long one ends before the short one begins, and is not whole.
        const Bytes heard = Heard();
        const auto shortOne = std::search(heard.begin(), heard.end(), last.begin(), last.end());
        if (std::find(shortOne, heard.end(), 0x55) != heard.end() || Holds(heard, wholeSound))
            return 4;
        return sndPlaySoundA(nullptr, 0) && sndPlaySoundA(nullptr, 0) ? 0 : 5;
    };
    EXPECT_EQ(RunWithDriver("disk", "5", work), 0);
}

TEST(Sound, IsSilentWithoutADevice)
{
    static const char errorFile[] = BUILD_FOLDER "/tests/sound.err";
    Bytes wave = MakeWave({.bits = 8, .samples = {1, 2, 3}});
    auto work = [&] {
        setenv("ALSA_CONFIG_PATH", "/dev/null", 1); // it knows of no device
        if (!freopen(errorFile, "w", stderr) || Play(wave) || !sndPlaySoundA(nullptr, 0))
            return 1;
        fflush(stderr);
        return std::ifstream(errorFile).get() == EOF ? 0 : 2;
    };
    for (const char *driver : {"no such driver", "alsa"})
        EXPECT_EQ(RunWithDriver(driver, "5", work), 0) << driver;
}

// A device is closed when its buffers have run out; the window waits for it.
TEST(Sound, ChangesTheFormatOfTheSlowestSoundWithoutDelay)
{
    Bytes slow = MakeWave({.rate = 100, .bits = 8, .samples = Bytes(1000, 1)});
    Bytes other = MakeWave({.bits = 8, .samples = {1, 2, 3}});
    auto work = [&]() -> int {
        if (!Play(slow))
            return 1;
        const auto start = std::chrono::steady_clock::now();
        if (!sndPlaySoundA(nullptr, 0) || !Play(other))
            return 2;
        return std::chrono::steady_clock::now() - start < std::chrono::seconds(2) ? 0 : 3;
    };
    EXPECT_EQ(RunWithDriver("dummy", "5", work), 0);
}

TEST(Sound, LeavesTheSignalsThatEndTheProgramAlone)
{
    Bytes wave = MakeWave({.bits = 8, .samples = {1, 2, 3}});
    auto work = [&]() -> int {
        // A shell starts what runs in the background with the interrupt ignored.
        signal(SIGINT, SIG_DFL);
        signal(SIGTERM, SIG_DFL);
        if (!Play(wave))
            return 1;
        for (int number : {SIGINT, SIGTERM}) {
            struct sigaction action;
            if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
                return 2;
        }
        return 0;
    };
    EXPECT_EQ(RunWithDriver("dummy", "5", work), 0);
}

// The sound's last byte, by the size in its header, is the last before memory that cannot be read.
static BOOL PlayBeforeUnreadable(const Bytes &wave)
{
    const size_t page = 4096;
    BYTE *pages =
        (BYTE *)mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    mprotect(pages + page, page, PROT_NONE);
    BYTE *start = pages + page - wave.size();
    std::copy(wave.begin(), wave.end(), start);
    sndPlaySoundA(nullptr, 0);
    BOOL played = sndPlaySoundA((const char *)start, play);
    munmap(pages, 2 * page);
    return played;
}

// From now on there is only so much more memory.
static void LimitMemory(rlim_t bytes)
{
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit limit = {pages * 4096 + bytes, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
}

TEST(Sound, ReadsNothingBehindTheSizeInTheRiffHeader)
{
    auto work = []() -> int {
        Bytes wave = MakeWave({.bits = 8, .samples = {1, 2, 3, 4}});
        // every length; a sound plays, if only for no time, when the data has begun
        for (size_t length = 8; length <= wave.size(); length++) {
            Bytes cut(wave.begin(), wave.begin() + (ptrdiff_t)length);
            PutU32(cut, 4, (uint32_t)length - 8);
            if (PlayBeforeUnreadable(cut) != (length >= wave.size() - 4))
                return 1;
        }
        LimitMemory(256u << 20);
        PutU32(wave, 40, 0x7fffffff); // the data's own size, for which no memory is set aside
        if (!PlayBeforeUnreadable(wave))
            return 2;
        for (uint32_t rate : {0u, 99u, 100u, 1000000u, 1000001u, 0x7fffffffu, 0xffffffffu}) {
            PutU32(wave, 24, rate);
            if (PlayBeforeUnreadable(wave) != (rate == 100 || rate == 1000000))
                return 3;
        }
        for (unsigned channels : {8u, 9u})
            if (PlayBeforeUnreadable(MakeWave({.channels = channels, .samples = Bytes(144)})) !=
                (channels == 8))
                return 6;
        // Blocks that hold more samples than they tell.
        for (const Bytes &samples : {Bytes{2, 0, 2, 0}, {2, 0, 3, 0}, {2, 0, 8, 0}})
            if (Play(MakeWave({WAVE_TAG_IMA_ADPCM, 1, 22050, 4, 8, samples, Bytes(15, 0x30)})))
                return 5;
        PutU32(wave, 0, 0x58464952); // "RIFX"
        return PlayBeforeUnreadable(wave) ? 4 : 0;
    };
    EXPECT_EQ(RunWithDriver("dummy", "5", work), 0);
}

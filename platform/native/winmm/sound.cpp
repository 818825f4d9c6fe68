// sndPlaySoundA on SDL2. The sound is decoded and handed to SDL whole, so the caller's memory is
// not read any more when the call returns.
#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <dlfcn.h>
#include <functional>
#include <type_traits>
#include <vector>

#include "platform/byte_reader.h"
#include "platform/native/no_memory.h"
#include "platform/win32/winmm.h"

constexpr uint32_t riffHeaderSize = 8;    // bytes
constexpr uint32_t firstChunk = 12;       // behind "WAVE"
constexpr uint32_t chunkHeaderSize = 8;   // its name and length
constexpr unsigned buffersPerSecond = 50; // or a few less: how far a stop can be heard late
constexpr unsigned leastBufferFrames = 16;
constexpr unsigned mostBufferFrames = 32768;

namespace
{

// SDL is loaded for the first sound: it brings thirty libraries, a fifth of the program's start.
struct Sdl {
    decltype(&SDL_SetMainReady) SetMainReady;
    decltype(&SDL_SetHint) SetHint;
    decltype(&SDL_InitSubSystem) InitSubSystem;
    decltype(&SDL_QuitSubSystem) QuitSubSystem;
    decltype(&SDL_OpenAudioDevice) OpenAudioDevice;
    decltype(&SDL_CloseAudioDevice) CloseAudioDevice;
    decltype(&SDL_GetAudioDeviceStatus) GetAudioDeviceStatus;
    decltype(&SDL_PauseAudioDevice) PauseAudioDevice;
    decltype(&SDL_QueueAudio) QueueAudio;
    decltype(&SDL_ClearQueuedAudio) ClearQueuedAudio;
    decltype(&SDL_GetQueuedAudioSize) GetQueuedAudioSize;
    decltype(&SDL_RWFromConstMem) RWFromConstMem;
    decltype(&SDL_LoadWAV_RW) LoadWAV_RW;
    decltype(&SDL_FreeWAV) FreeWAV;

    // Returns false where there is no SDL, or an older one.
    bool Load()
    {
        void *library = dlopen("libSDL2-2.0.so.0", RTLD_LAZY);
        const auto find = [library](const char *name, auto *call) {
            *call =
                reinterpret_cast<std::remove_reference_t<decltype(*call)>>(dlsym(library, name));
            return *call;
        };
        return library && find("SDL_SetMainReady", &SetMainReady) &&
               find("SDL_SetHint", &SetHint) && find("SDL_InitSubSystem", &InitSubSystem) &&
               find("SDL_QuitSubSystem", &QuitSubSystem) &&
               find("SDL_OpenAudioDevice", &OpenAudioDevice) &&
               find("SDL_CloseAudioDevice", &CloseAudioDevice) &&
               find("SDL_GetAudioDeviceStatus", &GetAudioDeviceStatus) &&
               find("SDL_PauseAudioDevice", &PauseAudioDevice) &&
               find("SDL_QueueAudio", &QueueAudio) &&
               find("SDL_ClearQueuedAudio", &ClearQueuedAudio) &&
               find("SDL_GetQueuedAudioSize", &GetQueuedAudioSize) &&
               find("SDL_RWFromConstMem", &RWFromConstMem) && find("SDL_LoadWAV_RW", &LoadWAV_RW) &&
               find("SDL_FreeWAV", &FreeWAV);
    }
};

struct WaveSound {
    SDL_AudioSpec format;
    Uint8 *samples; // SDL_FreeWAV's
    Uint32 size;    // bytes
};

} // namespace

static Sdl sdl;

static void HearNothing(const char *, int, const char *, int, const char *, ...)
{
}

// A machine without sound is no error, but the system's sound library writes what it misses to
// standard error unless another listener is set. SDL uses the same copy of the library.
static void SilenceSoundLibrary()
{
    using SetListener = int (*)(decltype(&HearNothing));
    void *library = dlopen("libasound.so.2", RTLD_LAZY);
    void *setter = library ? dlsym(library, "snd_lib_error_set_handler") : nullptr;
    if (setter)
        reinterpret_cast<SetListener>(setter)(HearNothing);
}

namespace
{

// The device stays open between sounds of one format: closing it waits for its buffers to run out.
class AudioDevice
{
  public:
    ~AudioDevice()
    {
        Close();
        if (started)
            sdl.QuitSubSystem(SDL_INIT_AUDIO);
    }

    // Makes SDL ready; its handlers would swallow the signals that end the program.
    bool Start()
    {
        if (!started && sdl.Load()) {
            SilenceSoundLibrary();
            sdl.SetMainReady();
            sdl.SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
            started = sdl.InitSubSystem(SDL_INIT_AUDIO) == 0;
        }
        return started;
    }

    bool IsPlaying() const
    {
        return device != 0 && sdl.GetQueuedAudioSize(device) > 0;
    }

    void Stop()
    {
        if (device == 0)
            return;
        sdl.PauseAudioDevice(device, 1);
        sdl.ClearQueuedAudio(device);
    }

    bool Play(const WaveSound &sound)
    {
        Stop();
        if (!OpenFor(sound.format) || sdl.QueueAudio(device, sound.samples, sound.size) != 0)
            return false;
        sdl.PauseAudioDevice(device, 0);
        return true;
    }

  private:
    bool OpenFor(const SDL_AudioSpec &wanted)
    {
        // a device that was unplugged stops for good
        if (device != 0 && sdl.GetAudioDeviceStatus(device) != SDL_AUDIO_STOPPED &&
            wanted.freq == format.freq && wanted.format == format.format &&
            wanted.channels == format.channels)
            return true;
        Close();
        format = wanted;
        const auto frames = std::bit_floor(static_cast<unsigned>(wanted.freq) / buffersPerSecond);
        format.samples =
            static_cast<Uint16>(std::clamp(frames, leastBufferFrames, mostBufferFrames));
        format.callback = nullptr;
        device = sdl.OpenAudioDevice(nullptr, 0, &format, nullptr, 0);
        return device != 0;
    }

    void Close()
    {
        if (device != 0)
            sdl.CloseAudioDevice(device);
        device = 0;
    }

    bool started = false;
    SDL_AudioDeviceID device = 0;
    SDL_AudioSpec format = {};
};

} // namespace

static AudioDevice audio;

static bool IsPlayable(const SDL_AudioSpec &format)
{
    return format.freq >= 100 && format.freq <= 1000000 && format.channels >= 1 &&
           format.channels <= 8;
}

namespace
{

struct Chunk {
    size_t content;       // its place
    uint32_t told, there; // its length, as it says and as much as there is of it
};

} // namespace

// Hands on each chunk of a RIFF file in turn.
static void TakeChunks(const char *bytes, uint32_t size,
                       const std::function<void(const Chunk &)> &take)
{
    ByteReader riff = OpenBytes(bytes, size);
    for (size_t at = firstChunk; at < size;) {
        const uint32_t told = ReadU32(&riff, at + 4);
        if (riff.failed)
            return;
        const size_t content = at + chunkHeaderSize;
        take({content, told, std::min(told, size - static_cast<uint32_t>(content))});
        at = content + told + told % 2;
    }
}

// A block of IMA ADPCM has, for each channel, a sample in four bytes and two in each that follows
// (Microsoft's "Multimedia Data Standards Update"). For a format that tells of fewer SDL writes
// past its memory.
static bool TellsWholeBlocks(const char *format, uint32_t length)
{
    constexpr WORD imaAdpcm = 0x11, extensible = 0xFFFE;
    ByteReader fields = OpenBytes(format, length);
    const WORD tag = ReadU16(&fields, 0);
    const int64_t channels = ReadU16(&fields, 2), blockSize = ReadU16(&fields, 12);
    if (tag != imaAdpcm && (tag != extensible || ReadU16(&fields, 24) != imaAdpcm))
        return true;
    const int64_t samples = ReadU16(&fields, 18);
    return samples == 0 || 2 * (blockSize - 4 * channels) == channels * (samples - 1);
}

static bool IsDecodedSafely(const char *bytes, uint32_t size)
{
    bool isSafe = true;
    TakeChunks(bytes, size, [&](const Chunk &chunk) {
        const char *content = bytes + chunk.content;
        if (memcmp(content - chunkHeaderSize, "fmt ", 4) == 0)
            isSafe = isSafe && TellsWholeBlocks(content, chunk.there);
    });
    return isSafe;
}

// SDL sets as much memory aside as a chunk says that it is long. Of one that says more than there
// is, the last, the length is made true, in a copy; without one the copy stays empty.
static std::vector<char> MendLastChunk(const char *bytes, uint32_t size)
{
    std::vector<char> mended;
    TakeChunks(bytes, size, [&](const Chunk &chunk) {
        if (chunk.told == chunk.there)
            return;
        mended.assign(bytes, bytes + size);
        for (size_t i = 0; i < 4; ++i)
            mended[chunk.content - 4 + i] = static_cast<char>(chunk.there >> 8 * i);
    });
    return mended;
}

// Decodes the sound. On success its samples are freed with SDL_FreeWAV.
static bool LoadSound(const char *bytes, WaveSound *sound)
{
    ByteReader header = OpenBytes(bytes, riffHeaderSize);
    const uint32_t rest = ReadU32(&header, 4);
    if (memcmp(bytes, "RIFF", 4) != 0 || rest > SDL_MAX_SINT32 - riffHeaderSize)
        return false;
    const uint32_t size = rest + riffHeaderSize;
    if (!IsDecodedSafely(bytes, size))
        return false;
    // a sound that ends early plays as far as it goes
    sdl.SetHint(SDL_HINT_WAVE_RIFF_CHUNK_SIZE, "force");
    sdl.SetHint(SDL_HINT_WAVE_TRUNCATION, "dropframe");
    *sound = {};
    const std::vector<char> mended = MendLastChunk(bytes, size);
    const char *whole = mended.empty() ? bytes : mended.data();
    if (!sdl.LoadWAV_RW(sdl.RWFromConstMem(whole, static_cast<int>(size)), 1, &sound->format,
                        &sound->samples, &sound->size))
        return false;
    if (IsPlayable(sound->format))
        return true;
    sdl.FreeWAV(sound->samples);
    return false;
}

BOOL WINAPI sndPlaySoundA(LPCSTR sound, UINT flags)
{
    if (!sound) {
        audio.Stop();
        return TRUE;
    }
    if ((flags & (SND_ASYNC | SND_MEMORY)) != (SND_ASYNC | SND_MEMORY) || !audio.Start() ||
        ((flags & SND_NOSTOP) != 0 && audio.IsPlaying()))
        return FALSE;
    WaveSound wave;
    if (!UnlessMemoryRunsOut(false, [&] { return LoadSound(sound, &wave); }))
        return FALSE;
    bool plays = audio.Play(wave);
    sdl.FreeWAV(wave.samples);
    return plays;
}

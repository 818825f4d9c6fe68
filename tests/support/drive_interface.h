// Stands between the program and the interface: what is written here is called in place of the
// interface's own operation by everything in the test program.
//
// On Linux the linker leads the calls here (tests/CMakeLists.txt takes the names from the lines
// that begin with REPLACE), on Windows the table of imports is changed at start.
#pragma once

#include "platform/win32.h"

// REPLACE(result, Operation, parameters) { ... } is called in place of Operation, and
// RealOperation is the interface's own.
#ifdef _WIN32

struct Replacement {
    Replacement(const char *name, void *replacement, void **real);
};

#define REPLACE(result, name, ...)                                                                 \
    static result(WINAPI *Real##name)(__VA_ARGS__);                                                \
    static result WINAPI Told##name(__VA_ARGS__);                                                  \
    static const Replacement replacementOf##name(#name, (void *)Told##name, (void **)&Real##name); \
    static result WINAPI Told##name(__VA_ARGS__)

#else

#define REPLACE(result, name, ...)                                                                 \
    extern "C" result Real##name(__VA_ARGS__) __asm__("__real_" #name);                            \
    extern "C" result Told##name(__VA_ARGS__) __asm__("__wrap_" #name);                            \
    result Told##name(__VA_ARGS__)

#endif

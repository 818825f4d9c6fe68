// Counts what is made by the interface and not yet given back: the linker leads the calls here.
#pragma once

struct Handles {
    int blocks, locks, objects, contexts, imageLists, modules;

    bool operator==(const Handles &) const = default;
};

extern Handles liveHandles;

// The windows there are: a table of records, reached by handle.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/win32/user.h"

// What a control keeps of its own; each control's file derives its record from this.
struct ControlState {
    virtual ~ControlState() = default;
};

struct Window {
    HWND self;
    WNDPROC procedure;
    DWORD style;
    HWND parent; // NULL for a top-level window
    std::vector<HWND> children;
    std::string text; // ANSI code page
    std::unique_ptr<ControlState> state;
    bool dying; // its WM_DESTROY has been sent
};

// The record behind a handle, NULL for a dead one. It stays where it is until the window goes,
// which any message may bring about: ask again after sending one.
Window *WindowOf(HWND window);

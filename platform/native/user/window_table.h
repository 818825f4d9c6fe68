// The windows there are: a table of records, reached by handle. All sizes and places are in logical
// pixels.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/native/gdi/surface.h"
#include "platform/native/visible.h"
#include "platform/win32/user.h"

// What a control or dialog keeps of its own; its file derives its record from this.
struct ControlState {
    virtual ~ControlState() = default;
};

// Icon, cursor and background stay their maker's.
struct WindowClass {
    std::string name; // as it was registered; compared without case
    UINT style;       // CS_
    WNDPROC procedure;
    HINSTANCE instance;
    HICON icon;           // NULL: none
    HCURSOR cursor;       // NULL: the desktop's own
    HBRUSH background;    // NULL: nothing fills it
    std::string menuName; // a resource of the instance; empty: no menu
    bool isSystems;       // a control that the system brings
    int windows;          // how many there are
};

// Pixels that belong to a window, as large as its client area was when they were made.
struct WindowPixels {
    PixelSurface surface; // on the memory below; no pixels until it is first painted
    std::vector<uint32_t> memory;
};

// What GetDC of a window with children drew on: it lies above the children where `covered` says.
struct WindowOverlay {
    WindowPixels pixels;
    std::vector<RECT> covered; // rectangles that do not meet; empty: there is no overlay
};

struct Window {
    HWND self;
    WindowClass *windowClass;
    DWORD style;                // WS_ and the control's own
    HWND parent;                // of a child, else NULL
    HWND owner;                 // of a window that is no child, or NULL
    std::vector<HWND> children; // in the order they were made
    int id;                     // of a child
    HMENU menu;                 // the window's own, ended with it; NULL: none
    HINSTANCE instance;
    std::string text;   // ANSI code page; a frame's may be UTF-8
    HFONT font;         // its maker's; NULL: the system's
    bool isMessageOnly; // below HWND_MESSAGE: it never shows
    bool isDying;       // its WM_DESTROY has been sent
    bool wasShown;
    bool isMaximized; // how it is to be shown first
    bool takesDrops;  // files can be dropped on it

    RECT rect;   // outer; on the screen, a child's in its parent's client area
    RECT around; // widths of what lies around the client area

    // Client sizes from which the window manager was asked for another since they last settled, and
    // whether it would have been asked from one of them again.
    std::vector<SIZE> askedFrom;
    bool isAskWithheld;
    // When the sizes settled, how often in a row, and from which size that asked once more.
    std::chrono::steady_clock::time_point settledAt;
    int settledInRow;
    SIZE settledFrom;

    RECT invalid;      // in the client area; empty when nothing is
    bool isEraseAsked; // the next painting fills the background first
    WindowPixels pixels;
    WindowOverlay overlay;

    std::unique_ptr<ControlState> state; // of a control or dialog, made in its WM_CREATE or after
};

// The record behind a handle, NULL for a dead one. It stays where it is until the window goes,
// which any message may bring about: ask again after sending one.
Window *WindowOf(HWND window);

// Adds an empty record with its handle in `self`. NULL when there is no room.
Window *AddWindow();

// Ends a record, and with it the window's pixels and state; nothing for a dead handle.
void RemoveWindow(HWND window);

// The windows that are no children and are not below HWND_MESSAGE, the topmost last. All live.
std::vector<HWND> &TopLevelWindows();

// Whether a window is of the class with that name, without case.
bool IsOfClass(const Window *window, LPCSTR name);

// Whether a window is visible with all its parents, and whether it takes input with all of them.
// NULL does not show, and takes input.
bool IsShown(const Window *window);
bool TakesInput(const Window *window);

// The top-level window that a window lies in, itself perhaps; NULL for NULL.
Window *FrameOf(Window *window);

// Whether a window is another or lies in it. False for a dead window other than that one.
bool IsInside(HWND window, HWND ancestor);

// Tells the visible half what happened to a window, unless that is below HWND_MESSAGE.
void TellChange(const Window *window, WindowChange change);

// The size of the client area, at least 0 each way.
SIZE ClientSizeOf(const Window *window);

// Where the client area begins on the screen.
POINT ClientOriginOf(const Window *window);

// A control's state as the record that its file made it; NULL for a dead window and for one whose
// state is of another kind. It goes with the window.
template <typename State> State *StateOf(HWND window)
{
    Window *record = WindowOf(window);
    return record ? dynamic_cast<State *>(record->state.get()) : nullptr;
}

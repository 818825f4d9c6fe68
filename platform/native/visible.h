// The one table through which the quiet half calls the visible one.
//
// The visible half fills it at start, a test fills it with its own recorder, quillmoor-cli leaves
// it as it is: each entry begins as one that does nothing, as if there were no display.
// All calls come on the one thread that has the windows, from inside calls of the interface, and
// pass live windows. Pointers are not kept: what they point to is the caller's and holds during the
// call. When memory runs out an entry does what it can; only windowChanged with Made, and those
// that measure or draw text, show a menu or choose a file, throw std::bad_alloc. Calls the other
// way, what the user and the desktop did, are those named Report... in platform/native/user
// (input.h, geometry.h, painting.h, menus.h) and platform/native/comctl/tree_user.h.
#pragma once

#include "platform/win32/comctl.h"
#include "platform/win32/types.h"

// In logical pixels.
struct SIZE {
    LONG cx;
    LONG cy;
};

struct Font;         // platform/native/gdi/objects.h
struct PixelSurface; // platform/native/gdi/surface.h

// Of one font, in logical pixels.
struct FontSize {
    int ascent;       // from the cell's top to the base line
    int descent;      // from there to the cell's bottom
    int averageWidth; // of the letters A to Z and a to z
};

// What a file chooser is asked for. Filters are UTF-8 when they are valid UTF-8, else in the code
// page, in which the offered name always is; paths are the system's own bytes. All pointers stay
// the caller's.
struct FileChoice {
    HWND owner;        // takes no input meanwhile; NULL for none
    bool isSave;       // asks before it replaces a file; else the file must exist
    LPCSTR filters;    // pairs of description and patterns, each terminated, then an empty text
    DWORD filterIndex; // from 1 on; on return what the user left selected
    LPCSTR folder;     // where to start; NULL: where the user chose last
    LPSTR path;        // the name offered, on return the chosen path
    DWORD pathSize;    // bytes that path holds; a longer one is refused while the chooser is open
};

enum class WindowChange {
    Made,    // it is new, hidden, and has had no message yet
    Rect,    // its outer rectangle
    Text,    // its text or font
    Shown,   // whether it is visible, and how
    Enabled, // whether it takes input
    Menu,    // the states in its menu bar
    Focus,   // it has the keyboard now
    Order,   // a window that is no child came to the top
    Gone,    // its record goes after this call; its children went before it
};

struct VisibleHalf {
    // --- events ---

    // A message loop found nothing to do: treats what the display has to tell; with nothing to tell
    // and wait set, waits for something or for wakeUp. It may report and dispatch anything. False:
    // there is no display, nothing will ever come, and loops end.
    bool (*runEvents)(bool wait) = [](bool) { return false; };
    // Something was put in the queue: runEvents returns, and a loop of the display's own calls
    // DispatchWaiting.
    void (*wakeUp)() = [] {};

    // --- windows ---

    // Something of a window changed; its record is as it is now. It may report the window's
    // rectangle or focus at once. Windows below HWND_MESSAGE are never told.
    void (*windowChanged)(HWND window, WindowChange what) = [](HWND, WindowChange) {};
    // Whether a window manager may give a top-level window another size than WindowChange::Rect
    // asks for. The quiet half then counts what it asks.
    bool mayRefuseSizes = false;
    // Asked when a top-level window is made, before it is told of and after: gives the widths of
    // what lies around its client area, in logical pixels: left, top with caption and menu bar,
    // right, bottom. It leaves those of a window that it does not show.
    void (*frameAround)(HWND window, RECT *around) = [](HWND, RECT *) {};
    // Gives the size of the main screen.
    void (*screenSize)(SIZE *size) = [](SIZE *size) { *size = {1024, 768}; };
    // The mouse shows this cursor, until it moves into another window.
    void (*cursorChanged)(HCURSOR cursor) = [](HCURSOR) {};

    // --- pictures of windows ---

    // Asked before pixels are made: memory pixels for each logical pixel of the screen that the
    // window is on.
    double (*ratio)(HWND window) = [](HWND) { return 1.0; };
    // A part of the window's client area, in logical pixels, was painted: Window::pixels has new
    // ones there, or a window that the visible half draws itself is to be drawn.
    void (*painted)(HWND window, const RECT *part) = [](HWND, const RECT *) {};
    // Window::overlay has new pixels or covers another part.
    void (*overlayChanged)(HWND window) = [](HWND) {};
    // UpdateWindow was called: all that was painted is to show at once.
    void (*flush)(HWND window) = [](HWND) {};
    // Draws the window's client area and its children, as they look without an overlay, on a black
    // surface of that size. False, when it does not show the window: the quiet half then puts
    // together what each last painted.
    bool (*compose)(HWND window, const PixelSurface *surface) = [](HWND, const PixelSurface *) {
        return false;
    };

    // --- text; bytes are in the ANSI code page and not terminated ---

    void (*measureFont)(const Font &font, FontSize *size) = [](const Font &, FontSize *size) {
        *size = {11, 2, 6};
    };
    // The width of a line without tabs in logical pixels.
    int (*measureText)(const Font &font, LPCSTR text,
                       int bytes) = [](const Font &, LPCSTR, int bytes) { return 6 * bytes; };
    // Draws a line, the cell's top-left corner at (x, y), nothing outside the clip rectangle, all
    // in the surface's logical pixels; pixel is the colour, 0x00RRGGBB.
    void (*drawText)(const PixelSurface *surface, const RECT *clip, const Font &font, int x, int y,
                     uint32_t pixel, LPCSTR text, int bytes) =
        [](const PixelSurface *, const RECT *, const Font &, int, int, uint32_t, LPCSTR, int) {};

    // --- controls and dialogs ---

    // The tree's items or pictures are about to be others. Many changes may come before the items
    // are next looked at, which happens outside this call.
    void (*treeChanged)(HWND tree) = [](HWND) {};
    // Shows a popup menu at a place on the screen; ReportMenuClosed follows, at once or later.
    // False when it cannot be shown, and nothing follows. The menu stays the caller's.
    bool (*showMenu)(HMENU menu, POINT place, HWND owner) = [](HMENU, POINT, HWND) {
        return false;
    };
    // Takes away the menu that showMenu shows.
    void (*closeMenu)() = [] {};
    // Asks the user for a path, and loops over messages meanwhile. True when the user confirmed one
    // that fits; else nothing of the choice is looked at.
    bool (*chooseFile)(FileChoice *choice) = [](FileChoice *) { return false; };
};

// The table as it begins: assigning it to `visible` takes the display away.
inline constexpr VisibleHalf noDisplay;

extern VisibleHalf visible;

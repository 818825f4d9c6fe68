// The one table through which the quiet half calls the visible one.
//
// The visible half fills it at start, a test fills it with its own recorder, quillmoor-cli leaves
// it empty: every entry may be NULL, and the quiet half then goes on as if there were no display.
// Calls the other way, what the user did, are in platform/native/user/reports.h and
// platform/native/comctl/tree.h.
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

// What a file chooser is asked for. Texts are UTF-8 when they are valid UTF-8, else in the code
// page; paths are the system's own bytes.
struct FileChoice {
    HWND owner;
    bool isSave;       // asks before it replaces a file; else the file must exist
    LPCSTR filters;    // pairs of description and patterns, each terminated, then an empty text
    DWORD filterIndex; // from 1 on; on return what the user left selected
    LPCSTR folder;     // where to start, or NULL
    LPSTR path;        // the name offered, on return the chosen path
    DWORD pathSize;    // bytes that path holds; a longer one is refused while the chooser is open
};

enum class WindowChange {
    Rect,    // its outer rectangle
    Text,    // its text or font
    Shown,   // whether it is visible, and how
    Enabled, // whether it takes input
    Menu,    // the states in its menu bar
    Focus,   // it has the keyboard now
    Order,   // a window that is no child came to the top
    Look,    // a button's style or a tree's images
};

struct VisibleHalf {
    // --- events ---

    // Treats what the display has to tell; with nothing to tell and wait set, waits for something
    // or for wakeUp.
    void (*runEvents)(bool wait);
    // Something was put in the queue: runEvents returns, and a loop of the display's own calls
    // DispatchWaiting.
    void (*wakeUp)();

    // --- windows ---

    void (*windowMade)(HWND window);
    void (*windowChanged)(HWND window, WindowChange what);
    void (*windowGone)(HWND window);
    // What lies around the client area of a top-level window now: left, top with caption and menu
    // bar, right, bottom.
    void (*frameAround)(HWND window, RECT *around);
    void (*screenSize)(SIZE *size);
    // The mouse shows this cursor, until it moves into another window.
    void (*cursorChanged)(HCURSOR cursor);

    // --- pictures of windows ---

    // Memory pixels for each logical pixel of the screen that the window is on.
    double (*ratio)(HWND window);
    // The window's surface (WindowSurface) has new pixels there.
    void (*painted)(HWND window, const RECT *part);
    // The window's overlay (WindowOverlay) has new pixels or covers another part.
    void (*overlayChanged)(HWND window);
    // All that was painted is to show at once.
    void (*flush)(HWND window);
    // Draws the window and its children, as they look without an overlay.
    void (*compose)(HWND window, const PixelSurface *surface);

    // --- text; bytes are in the ANSI code page ---

    void (*measureFont)(const Font &font, FontSize *size);
    // The width in logical pixels.
    int (*measureText)(const Font &font, LPCSTR text, int bytes);
    // Draws a line, the cell's top-left corner at (x, y), nothing outside the clip rectangle.
    void (*drawText)(const PixelSurface *surface, const RECT *clip, const Font &font, int x, int y,
                     uint32_t pixel, LPCSTR text, int bytes);

    // --- controls and dialogs ---

    // The tree's items are others. Many changes may come before the next look.
    void (*treeChanged)(HWND tree);
    // Shows a popup menu; ReportMenuClosed follows, at once or later. closeMenu takes it away.
    void (*showMenu)(HMENU menu, POINT place, HWND owner);
    void (*closeMenu)();
    // Returns true when the user confirmed a path that fits.
    bool (*chooseFile)(FileChoice *choice);
};

extern VisibleHalf visible;

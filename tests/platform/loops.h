// What tests of windows need of the system beside the interface itself.
#pragma once

#include "platform/win32.h"

#ifdef _WIN32

// Lets message loops run. Windows' own wait for real events.
struct Loops {
};

// Gives text a size.
struct SizedText {
};

// The dialog or message box that is shown above a window.
inline HWND DialogAbove(HWND owner)
{
    HWND top = GetLastActivePopup(owner);
    return top == owner ? nullptr : top;
}

#else

#include <gtest/gtest.h>

#include "platform/native/gdi/objects.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"

// Here nobody is there to act: a loop that finds nothing to do is a fault of the test, and ends.
struct Loops {
    Loops()
    {
        visible = {};
        visible.runEvents = [](bool) {
            ADD_FAILURE() << "a message loop waits for ever";
            PostQuitMessage(99);
        };
    }

    ~Loops()
    {
        visible = {};
    }
};

struct SizedText {
    SizedText()
    {
        visible.measureFont = [](const Font &font, FontSize *size) {
            *size = {font.height - 3, 3, 7};
        };
        visible.measureText = [](const Font &, LPCSTR, int bytes) { return 7 * bytes; };
    }

    ~SizedText()
    {
        visible = {};
    }
};

inline HWND DialogAbove(HWND owner)
{
    HWND top = TopLevelWindows().empty() ? nullptr : TopLevelWindows().back();
    return top && WindowOf(top)->owner == owner ? top : nullptr;
}

#endif

// What tests of windows need of the system beside the interface itself.
#pragma once

#include "platform/win32.h"

#include <string>

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

// Dispatches all that waits.
inline void RunWaiting()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

// What the user does: moves the mouse to a place in a window's client area, clicks there once or
// twice, selects an item of a tree.
inline void MoveMouse(HWND window, int x, int y)
{
    POINT place = {x, y};
    ClientToScreen(window, &place);
    SetCursorPos(place.x, place.y);
}

inline void Click(HWND window, int x, int y, bool isRight = false)
{
    MoveMouse(window, x, y);
    mouse_event(isRight ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    mouse_event(isRight ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

inline void DoubleClick(HWND window, int x, int y)
{
    Click(window, x, y);
    Click(window, x, y);
}

inline void SelectItem(HWND tree, HTREEITEM item)
{
    SendMessageA(tree, TVM_SELECTITEM, TVGN_CARET, (LPARAM)item);
}

inline void TakeInput(HWND window, bool takes)
{
    EnableWindow(window, takes);
}

#else

#include <gtest/gtest.h>

#include "platform/native/comctl/tree_user.h"
#include "platform/native/gdi/objects.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"

// Here nobody is there to act: a loop that finds nothing to do is a fault of the test, and ends.
struct Loops {
    Loops()
    {
        visible = noDisplay;
        visible.runEvents = [](bool) {
            ADD_FAILURE() << "a message loop waits for ever";
            PostQuitMessage(99);
            return true;
        };
    }

    ~Loops()
    {
        visible = noDisplay;
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
        visible = noDisplay;
    }
};

inline HWND DialogAbove(HWND owner)
{
    HWND top = TopLevelWindows().empty() ? nullptr : TopLevelWindows().back();
    return top && WindowOf(top)->owner == owner ? top : nullptr;
}

inline void RunWaiting()
{
    DispatchWaiting();
}

inline void MoveMouse(HWND window, int x, int y)
{
    ReportMouse(window, WM_MOUSEMOVE, x, y);
}

inline void Click(HWND window, int x, int y, bool isRight = false)
{
    MoveMouse(window, x, y);
    ReportMouse(window, isRight ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, x, y);
    if (!isRight)
        ReportMouse(window, WM_LBUTTONUP, x, y);
}

inline void DoubleClick(HWND window, int x, int y)
{
    Click(window, x, y);
    ReportMouse(window, WM_LBUTTONDBLCLK, x, y);
    ReportMouse(window, WM_LBUTTONUP, x, y);
}

inline void SelectItem(HWND tree, HTREEITEM item)
{
    ReportTreeSelection(tree, item);
}

inline void TakeInput(HWND window, bool takes)
{
    SetTakesInput(window, takes);
}

#endif

// Puts an item into a tree's order of labels, with pictures 3 and 4.
inline HTREEITEM InsertItem(HWND tree, std::string label, HTREEITEM parent = TVI_ROOT,
                            LPARAM value = 0)
{
    TVINSERTSTRUCTA insertion = {};
    insertion.hParent = parent;
    insertion.hInsertAfter = TVI_SORT;
    insertion.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insertion.item.iImage = 3;
    insertion.item.iSelectedImage = 4;
    insertion.item.pszText = label.data();
    insertion.item.cchTextMax = (int)label.size();
    insertion.item.lParam = value;
    return (HTREEITEM)SendMessageA(tree, TVM_INSERTITEMA, 0, (LPARAM)&insertion);
}

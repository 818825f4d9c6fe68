// What is invalid, the windows' pixels, and drawing contexts on them. Rectangles are in logical
// pixels of a window's client area.
#pragma once

#include "platform/native/user/window_table.h"

// The next window that shows and has an invalid part; NULL when there is none.
HWND NextInvalidWindow();

// Marks a window and all in it for painting, the background too; nothing for a dead one.
void InvalidateAll(HWND window);

// A window's painting: from here on nothing of it is invalid. The context draws on the window's
// pixels, in the part that was invalid; WM_ERASEBKGND is sent first, where the background was asked
// for. Its end closes the context and tells the visible half; the window may be gone by then.
class Painting
{
  public:
    explicit Painting(HWND window);
    ~Painting();
    Painting(const Painting &) = delete;
    Painting &operator=(const Painting &) = delete;

    HDC dc;    // closed here; NULL when there is nothing to paint
    RECT part; // what was invalid

  private:
    HWND window;
};

// For windows that the visible half paints: nothing is invalid any more, and it is told to paint.
void PaintElsewhere(HWND window);

// The visible half painted a window of its own anew, or scrolled it: what GetDC drew above goes.
void ReportRepaint(HWND window);

// A window's pixels are about to go: the contexts that are open on it draw nothing from here on.
void LosePixels(HWND window);

// What GetDC drew above windows goes: all that was drawn above this one, or what lies over a part
// of it, above this one and those that it lies in.
void DropOverlay(Window *window);
void UncoverPart(Window *window, RECT part);

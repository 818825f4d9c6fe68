// What is invalid, the windows' pixels, and drawing contexts on them.
#pragma once

#include "platform/native/user/window_table.h"

// The next visible window with an invalid part; NULL when there is none.
HWND NextInvalidWindow();

// Marks a window and all in it for painting, the background too.
void InvalidateAll(HWND window);

// A window's painting: from here on nothing of it is invalid. The context draws on the window's
// pixels, in the part that was invalid; the background is filled first, where that was asked for.
class Painting
{
  public:
    explicit Painting(HWND window);
    ~Painting();
    Painting(const Painting &) = delete;
    Painting &operator=(const Painting &) = delete;

    HDC dc;    // NULL when there is nothing to paint
    RECT part; // what was invalid

  private:
    HWND window;
};

// For windows that the visible half paints: nothing is invalid any more, and it is told to paint.
void PaintElsewhere(HWND window);

// The visible half painted a window of its own anew, or scrolled it.
void ReportRepaint(HWND window);

// A window's pixels are about to go: the contexts that are open on it draw nothing from here on.
void LosePixels(HWND window);

// What GetDC drew above windows goes: all of it, or what lies over a part of the client area.
void DropOverlay(Window *window);
void UncoverPart(Window *window, RECT part);

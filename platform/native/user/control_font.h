// The font that a control draws with.
#pragma once

#include "platform/native/gdi/objects.h"

// WM_SETFONT: the control, which must live, uses the font (wParam; NULL: the system's) from now on
// and is painted anew. The font stays the caller's.
void TakeFont(HWND control, WPARAM font);

// The font that the control has, or the system's where it has none, or a dead one, or is dead
// itself. It holds until the font is deleted.
const Font &FontOf(HWND control);

// Selects the control's font into a context for as long as this lives, which must not be longer
// than the context does. The system's is in every context already.
class ControlFont
{
  public:
    ControlFont(HWND control, HDC context);
    ~ControlFont();
    ControlFont(const ControlFont &) = delete;
    ControlFont &operator=(const ControlFont &) = delete;

  private:
    HDC dc;
    HGDIOBJ before;
};

// The font that a control draws with.
#pragma once

#include "platform/native/gdi/objects.h"
#include "platform/win32/user.h"

// WM_SETFONT: the control uses the font from now on.
void TakeFont(HWND control, WPARAM font);

// The font that the control has, or the system's. It holds until the font is deleted.
const Font &FontOf(HWND control);

// Selects the control's font into a context for as long as this lives.
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

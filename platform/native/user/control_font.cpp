#include "platform/native/user/control_font.h"

#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "platform/win32/user.h"

void TakeFont(HWND control, WPARAM font)
{
    Window *record = WindowOf(control);
    record->font = reinterpret_cast<HFONT>(font);
    TellChange(record, WindowChange::Text);
    InvalidateRect(control, nullptr, TRUE);
}

const Font &FontOf(HWND control)
{
    static const Font systemFont = {13, 0, "MS Sans Serif"};
    const Window *record = WindowOf(control);
    const Font *font = record ? FindDrawing<Font>(record->font) : nullptr;
    return font ? *font : systemFont;
}

ControlFont::ControlFont(HWND control, HDC context) : dc(context), before(nullptr)
{
    const Window *record = WindowOf(control);
    if (record && record->font)
        before = SelectObject(dc, record->font);
}

ControlFont::~ControlFont()
{
    if (before)
        SelectObject(dc, before);
}

#include "platform/native/user/static_text.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "platform/native/user/control_font.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/pictures.h"
#include "platform/native/user/text_lines.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "platform/win32/user.h"

namespace
{

struct StaticState : ControlState {
    HICON icon = nullptr;
};

} // namespace

static void MakeStatic(HWND control)
{
    Window *record = WindowOf(control);
    auto state = std::make_unique<StaticState>();
    if ((record->style & SS_TYPEMASK) == SS_ICON && !record->text.empty()) {
        const std::string &name = record->text;
        state->icon =
            LoadIconA(record->instance,
                      name[0] == '#' ? MAKEINTRESOURCEA(strtoul(name.c_str() + 1, nullptr, 10))
                                     : name.c_str());
    }
    const ImagePixels *picture = PictureOf(state->icon);
    record->state = std::move(state);
    if (picture)
        MoveWindow(control, record->rect.left, record->rect.top, picture->width, picture->height,
                   TRUE);
}

// Draws a picture over what is there, by its transparency (a colour without any inverts), in whole
// memory pixels.
static void DrawPicture(const ImagePixels &picture, const PixelSurface &surface)
{
    for (int y = 0; y < std::min(picture.height, surface.height); ++y)
        for (int x = 0; x < std::min(picture.width, surface.width); ++x) {
            const uint32_t color =
                picture.pixels[static_cast<size_t>(y) * static_cast<size_t>(picture.width) +
                               static_cast<size_t>(x)];
            const uint32_t alpha = color >> 24;
            for (int row = MemoryEdge(surface, y); row < MemoryEdge(surface, y + 1); ++row)
                for (int column = MemoryEdge(surface, x); column < MemoryEdge(surface, x + 1);
                     ++column) {
                    uint32_t &pixel = surface.pixels[static_cast<size_t>(row) * surface.stride +
                                                     static_cast<size_t>(column)];
                    uint32_t mixed = alpha == 0 ? pixel ^ color : 0;
                    for (int shift = 0; alpha > 0 && shift <= 16; shift += 8)
                        mixed |= ((color >> shift & 0xFF) * alpha +
                                  (pixel >> shift & 0xFF) * (255 - alpha)) /
                                     255
                                 << shift;
                    pixel = mixed;
                }
        }
}

static void DrawLines(HWND control, HDC dc, const RECT &all)
{
    const ControlFont selected(control, dc);
    const Font &font = FontOf(control);
    const Window *record = WindowOf(control);
    const std::string shown =
        record->style & SS_NOPREFIX ? record->text : WithoutMnemonic(record->text);
    const int height = LineHeight(font);
    SetBkMode(dc, TRANSPARENT);
    int y = 0;
    for (const std::string_view line : BreakLines(font, shown, all.right)) {
        const int free = all.right - TextWidth(font, line);
        const DWORD type = record->style & SS_TYPEMASK;
        const int left = type == SS_CENTER ? free / 2 : type == SS_RIGHT ? free : 0;
        for (const TextPiece &piece : PlacePieces(font, line))
            TextOutA(dc, left + piece.x, y, piece.text.data(), static_cast<int>(piece.text.size()));
        y += height;
    }
}

static void PaintStatic(HWND control)
{
    Painting painting(control);
    const Window *record = WindowOf(control);
    if (!painting.dc || !record)
        return;
    const auto brush = reinterpret_cast<HBRUSH>(SendMessageA(record->parent, WM_CTLCOLORSTATIC,
                                                             reinterpret_cast<WPARAM>(painting.dc),
                                                             reinterpret_cast<LPARAM>(control)));
    const StaticState *state = StateOf<StaticState>(control);
    if (!state)
        return;
    RECT all;
    GetClientRect(control, &all);
    FillRect(painting.dc, &all, brush);
    if (const ImagePixels *picture = PictureOf(state->icon))
        DrawPicture(*picture, WindowOf(control)->pixels.surface);
    else if ((WindowOf(control)->style & SS_TYPEMASK) != SS_ICON)
        DrawLines(control, painting.dc, all);
}

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: MakeStatic(control); break;
    case WM_PAINT: PaintStatic(control); break;
    case WM_ERASEBKGND: return TRUE;
    case WM_SETFONT: TakeFont(control, wParam); break;
    default: return DefWindowProcA(control, message, wParam, lParam);
    }
    return 0;
}

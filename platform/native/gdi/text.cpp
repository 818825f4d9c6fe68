// Lines of text: placed here, drawn by the visible half.
#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/native/gdi/device_context.h"
#include "platform/native/no_memory.h"
#include "platform/native/visible.h"

static SIZE MeasureLine(const Font &font, LPCSTR text, int count)
{
    FontSize size;
    visible.measureFont(font, &size);
    return {visible.measureText(font, text, count), size.ascent + size.descent};
}

static void DrawLine(HDC dc, const DeviceContext &context, POINT place, const RECT &clip,
                     LPCSTR text, int count)
{
    const Font &font = *FindDrawing<Font>(context.font);
    const SIZE size = MeasureLine(font, text, count);
    const RECT cell = {std::max(place.x, clip.left), std::max(place.y, clip.top),
                       std::min(place.x + size.cx, clip.right),
                       std::min(place.y + size.cy, clip.bottom)};
    if (context.backMode == OPAQUE && cell.left < cell.right && cell.top < cell.bottom) {
        HBRUSH brush = CreateSolidBrush(context.backColor);
        FillRect(dc, &cell, brush);
        DeleteObject(brush);
    }
    if (clip.left < clip.right && clip.top < clip.bottom)
        visible.drawText(&context.surface, &clip, font, place.x, place.y,
                         SwapRedBlue(context.textColor), text, count);
}

BOOL WINAPI TextOutA(HDC dc, int x, int y, LPCSTR text, int count)
{
    const DeviceContext *context = FindContext(dc);
    if (!context || count < 0 || (!text && count > 0))
        return FALSE;
    return count == 0 || DoesMemorySuffice([=] {
               DrawLine(dc, *context, {x, y}, context->clip, text, count);
           });
}

// Draws a line in the middle of a rectangle. Returns how far its bottom is below the rectangle's
// top.
static int DrawMiddleLine(HDC dc, const DeviceContext *context, LPCSTR text, int count,
                          const RECT *rect)
{
    const SIZE size = MeasureLine(*FindDrawing<Font>(context->font), text, count);
    const int left = (rect->left + rect->right - size.cx) / 2;
    const int down = (rect->bottom - rect->top) / 2 - size.cy / 2;
    const RECT clip = {
        std::max(context->clip.left, rect->left), std::max(context->clip.top, rect->top),
        std::min(context->clip.right, rect->right), std::min(context->clip.bottom, rect->bottom)};
    DrawLine(dc, *context, {left, rect->top + down}, clip, text, count);
    return down + size.cy;
}

int WINAPI DrawTextA(HDC dc, LPCSTR text, int count, LPRECT rect, UINT format)
{
    const DeviceContext *context = FindContext(dc);
    if (!context || !text || !rect ||
        format != (DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX))
        return 0;
    if (count < 0)
        count = static_cast<int>(std::min(strlen(text), static_cast<size_t>(INT_MAX)));
    return UnlessMemoryRunsOut(0, [=] { return DrawMiddleLine(dc, context, text, count, rect); });
}

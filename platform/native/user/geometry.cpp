#include "platform/native/user/geometry.h"

#include <algorithm>
#include <utility>

#include "platform/native/no_memory.h"
#include "platform/native/user/painting.h"
#include "platform/native/visible.h"

// Height of a menu bar that nobody shows.
constexpr LONG hiddenMenuHeight = 20;

static bool IsSame(const SIZE &a, const SIZE &b)
{
    return a.cx == b.cx && a.cy == b.cy;
}

RECT FrameAround(const Window *window)
{
    RECT around = {0, window->menu ? hiddenMenuHeight : 0, 0, 0};
    visible.frameAround(window->self, &around);
    return around;
}

bool IsSizedWhenShown(DWORD style)
{
    return !(style & (WS_CHILD | WS_POPUP));
}

void TellSize(HWND window)
{
    if (const Window *record = WindowOf(window)) {
        const SIZE size = ClientSizeOf(record);
        SendMessageA(window, WM_SIZE, 0, MAKELPARAM(size.cx, size.cy));
    }
}

// What a changed client size brings with it. The window may be gone afterwards.
static void AnnounceSize(HWND window, const SIZE &before)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    const SIZE now = ClientSizeOf(record);
    if (IsSame(now, before))
        return;
    DropOverlay(record);
    InvalidateRect(window, nullptr, TRUE);
    TellSize(window);
}

void ReportRect(HWND window, const RECT &outer, const RECT &around)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    const SIZE before = ClientSizeOf(record);
    record->rect = outer;
    record->around = around;
    AnnounceSize(window, before);
}

// Whether the window manager is to be asked for another client size. It is not when it was asked
// before from the very size that it gives now: it would give that again, without end.
static bool MayAsk(Window *window, const SIZE &wanted)
{
    const SIZE given = ClientSizeOf(window);
    if (IsSame(given, wanted) || !window->wasShown || !visible.mayRefuseSizes)
        return true;
    for (const SIZE &asked : window->askedFrom) {
        if (IsSame(asked, given)) {
            window->isAskWithheld = true;
            return false;
        }
    }
    window->isAskWithheld = false;
    // What cannot be counted is not asked.
    return DoesMemorySuffice([&] { window->askedFrom.push_back(given); });
}

// What stands is a new size, whatever was given before: the question may be asked anew. One that
// was withheld is asked now, once more from each size. A manager that takes back what it gave,
// after a while, ends this by its number.
void ReportSettled(HWND window)
{
    Window *record = WindowOf(window);
    if (!record || record->askedFrom.empty())
        return;
    const auto now = std::chrono::steady_clock::now();
    if (now - record->settledAt > std::chrono::seconds(10))
        record->settledInRow = 0;
    record->settledAt = now;
    if (++record->settledInRow > 8)
        return;
    record->askedFrom.clear();
    const SIZE size = ClientSizeOf(record);
    if (!std::exchange(record->isAskWithheld, false)) {
        record->settledFrom = {};
    } else if (!IsSame(size, record->settledFrom)) {
        record->settledFrom = size;
        TellSize(window);
    }
}

static bool SetRect(HWND window, const RECT &wanted)
{
    Window *record = WindowOf(window);
    if (!record)
        return false;
    const SIZE before = ClientSizeOf(record);
    const RECT old = record->rect;
    record->rect = wanted;
    const SIZE after = ClientSizeOf(record);
    record->rect = old;
    if (!record->parent && !MayAsk(record, after))
        record->rect = {wanted.left, wanted.top, wanted.left + old.right - old.left,
                        wanted.top + old.bottom - old.top};
    else
        record->rect = wanted;
    TellChange(record, WindowChange::Rect);
    if (Window *parent = WindowOf(record->parent)) {
        UncoverPart(parent, old);
        UncoverPart(parent, record->rect);
    }
    AnnounceSize(window, before);
    return true;
}

BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL)
{
    return SetRect(window, {x, y, x + std::max(width, 0), y + std::max(height, 0)});
}

BOOL WINAPI SetWindowPos(HWND window, HWND, int x, int y, int, int, UINT)
{
    const Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    auto &windows = TopLevelWindows();
    const auto place = std::find(windows.begin(), windows.end(), window);
    if (place != windows.end())
        std::rotate(place, place + 1, windows.end());
    TellChange(record, WindowChange::Order);
    return MoveWindow(window, x, y, record->rect.right - record->rect.left,
                      record->rect.bottom - record->rect.top, TRUE);
}

BOOL WINAPI GetClientRect(HWND window, LPRECT rect)
{
    const Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    const SIZE size = ClientSizeOf(record);
    *rect = {0, 0, size.cx, size.cy};
    return TRUE;
}

BOOL WINAPI GetWindowRect(HWND window, LPRECT rect)
{
    const Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    *rect = record->rect;
    if (const Window *parent = WindowOf(record->parent)) {
        const POINT origin = ClientOriginOf(parent);
        *rect = {rect->left + origin.x, rect->top + origin.y, rect->right + origin.x,
                 rect->bottom + origin.y};
    }
    return TRUE;
}

BOOL WINAPI ClientToScreen(HWND window, LPPOINT point)
{
    const Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    const POINT origin = ClientOriginOf(record);
    *point = {point->x + origin.x, point->y + origin.y};
    return TRUE;
}

static bool Holds(const Window *window, POINT point)
{
    RECT rect;
    return GetWindowRect(window->self, &rect) && point.x >= rect.left && point.x < rect.right &&
           point.y >= rect.top && point.y < rect.bottom;
}

// The topmost of these windows that shows at the point, or the child of it that does.
static HWND TopmostAt(const std::vector<HWND> &windows, POINT point)
{
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const Window *record = WindowOf(*window);
        // A child that takes no input is passed over; its frame is not, as in Windows.
        const bool isPassedOver = record->parent && !TakesInput(record);
        if (!IsShown(record) || isPassedOver || !Holds(record, point))
            continue;
        HWND child = TopmostAt(record->children, point);
        return child ? child : *window;
    }
    return nullptr;
}

HWND WINAPI WindowFromPoint(POINT point)
{
    return TopmostAt(TopLevelWindows(), point);
}

BOOL WINAPI ShowWindow(HWND window, int command)
{
    Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    const bool wasVisible = record->style & WS_VISIBLE;
    const bool isVisible = command != SW_HIDE;
    if (isVisible == wasVisible)
        return wasVisible;
    record->style ^= WS_VISIBLE;
    record->isMaximized = command == SW_SHOWMAXIMIZED;
    const bool isToldSize = isVisible && !record->wasShown && IsSizedWhenShown(record->style);
    record->wasShown = record->wasShown || isVisible;
    if (isVisible)
        InvalidateAll(window);
    TellChange(record, WindowChange::Shown);
    if (isToldSize)
        TellSize(window);
    return wasVisible;
}

BOOL WINAPI IsWindowEnabled(HWND window)
{
    const Window *record = WindowOf(window);
    return record && !(record->style & WS_DISABLED);
}

void SetTakesInput(HWND window, bool takesInput)
{
    Window *record = WindowOf(window);
    if (!record || takesInput == !(record->style & WS_DISABLED))
        return;
    record->style ^= WS_DISABLED;
    TellChange(record, WindowChange::Enabled);
}

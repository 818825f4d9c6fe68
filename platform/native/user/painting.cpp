#include "platform/native/user/painting.h"

#include <algorithm>
#include <utility>

#include "platform/native/gdi/device_context.h"
#include "platform/native/no_memory.h"
#include "platform/native/visible.h"
#include "platform/win32/user.h"

// Windows with an invalid part, in the order they got it; some may have been painted since.
static std::vector<HWND> waiting;

namespace
{

struct OpenContext {
    HDC dc;
    HWND window;
    bool isGiven; // by GetDC
};

} // namespace

// Contexts that draw on the pixels of windows.
static std::vector<OpenContext> openContexts;

// --- rectangles ---

static bool IsEmpty(const RECT &rect)
{
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

static RECT Meet(const RECT &a, const RECT &b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

static RECT Join(const RECT &a, const RECT &b)
{
    if (IsEmpty(a))
        return b;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

static RECT Moved(const RECT &rect, LONG x, LONG y)
{
    return {rect.left + x, rect.top + y, rect.right + x, rect.bottom + y};
}

static RECT ClientRectOf(const Window *window)
{
    const SIZE size = ClientSizeOf(window);
    return {0, 0, size.cx, size.cy};
}

// Takes a rectangle out of ones that do not meet.
static void Subtract(std::vector<RECT> *rects, const RECT &hole)
{
    std::vector<RECT> left;
    for (const RECT &rect : *rects) {
        const RECT both = Meet(rect, hole);
        if (IsEmpty(both)) {
            left.push_back(rect);
            continue;
        }
        const RECT parts[] = {{rect.left, rect.top, rect.right, both.top},
                              {rect.left, both.bottom, rect.right, rect.bottom},
                              {rect.left, both.top, both.left, both.bottom},
                              {both.right, both.top, rect.right, both.bottom}};
        for (const RECT &part : parts)
            if (!IsEmpty(part))
                left.push_back(part);
    }
    rects->swap(left);
}

// --- pixels ---

static HDC OpenContextOn(const WindowPixels &pixels, HWND window, const RECT &part, bool isGiven)
{
    openContexts.reserve(openContexts.size() + 1);
    const HDC dc = OpenSurfaceContext(pixels.surface, part);
    if (dc)
        openContexts.push_back({dc, window, isGiven});
    return dc;
}

static bool CloseContext(HDC dc)
{
    std::erase_if(openContexts, [dc](const OpenContext &open) { return open.dc == dc; });
    return CloseSurfaceContext(dc);
}

void LosePixels(HWND window)
{
    for (const OpenContext &open : openContexts)
        if (open.window == window)
            FindContext(open.dc)->clip = {};
}

// Makes the pixels fit the window's client area and the screen's ratio. Returns whether they are
// new; they are black then.
static bool FitPixels(const Window *window, WindowPixels *pixels)
{
    const SIZE size = ClientSizeOf(window);
    const double ratio = visible.ratio(window->self);
    PixelSurface &surface = pixels->surface;
    if (surface.pixels && surface.width == size.cx && surface.height == size.cy &&
        surface.ratio == ratio)
        return false;
    if (surface.pixels)
        LosePixels(window->self);
    surface = {static_cast<int>(size.cx), static_cast<int>(size.cy), ratio, nullptr, 0};
    surface.stride = static_cast<size_t>(MemoryEdge(surface, surface.width));
    const auto rows = static_cast<size_t>(MemoryEdge(surface, surface.height));
    pixels->memory.assign(surface.stride * rows, 0);
    surface.pixels = pixels->memory.data();
    return true;
}

// --- overlay ---

void DropOverlay(Window *window)
{
    if (window->overlay.covered.empty())
        return;
    LosePixels(window->self);
    window->overlay = {};
    visible.overlayChanged(window->self);
}

// On every overlay that lies above. What cannot be told apart any more goes whole.
void UncoverPart(Window *window, RECT part)
{
    for (; window; window = WindowOf(window->parent)) {
        std::vector<RECT> &covered = window->overlay.covered;
        if (!covered.empty()) {
            if (!DoesMemorySuffice([&] { Subtract(&covered, part); }))
                covered.clear();
            visible.overlayChanged(window->self);
        }
        part = Moved(part, window->rect.left + window->around.left,
                     window->rect.top + window->around.top);
    }
}

static void CopyPart(const PixelSurface &from, const PixelSurface &to, const RECT &part)
{
    const int left = MemoryEdge(from, part.left), right = MemoryEdge(from, part.right);
    for (int row = MemoryEdge(from, part.top); row < MemoryEdge(from, part.bottom); ++row)
        std::copy(from.pixels + static_cast<size_t>(row) * from.stride + left,
                  from.pixels + static_cast<size_t>(row) * from.stride + right,
                  to.pixels + static_cast<size_t>(row) * to.stride + left);
}

// Copies what the window and those in it last painted, as far as they keep pixels.
static void ComposeKept(const Window *window, const PixelSurface &to, POINT origin)
{
    const PixelSurface &from = window->pixels.surface;
    const RECT whole = {0, 0, to.width, to.height};
    const RECT part = Meet(whole, Moved({0, 0, from.width, from.height}, origin.x, origin.y));
    if (from.pixels && from.ratio == to.ratio && !IsEmpty(part))
        for (LONG y = part.top; y < part.bottom; ++y)
            std::copy_n(from.pixels + static_cast<size_t>(y - origin.y) * from.stride +
                            (part.left - origin.x),
                        part.right - part.left,
                        to.pixels + static_cast<size_t>(y) * to.stride + part.left);
    for (HWND handle : window->children) {
        const Window *child = WindowOf(handle);
        if (child->style & WS_VISIBLE)
            ComposeKept(child, to,
                        {origin.x + child->rect.left + child->around.left,
                         origin.y + child->rect.top + child->around.top});
    }
}

// Fills what the overlay does not cover yet with the window as it looks, and covers all.
static void CoverAll(Window *window)
{
    const RECT all = ClientRectOf(window);
    WindowPixels composed = {};
    FitPixels(window, &composed);
    if (!visible.compose(window->self, &composed.surface))
        ComposeKept(window, composed.surface, {0, 0});
    if (FitPixels(window, &window->overlay.pixels))
        window->overlay.covered.clear();
    std::vector<RECT> open = {all};
    for (const RECT &covered : window->overlay.covered)
        Subtract(&open, covered);
    for (const RECT &part : open)
        CopyPart(composed.surface, window->overlay.pixels.surface, part);
    window->overlay.covered = {all};
}

static HDC OpenWindowContext(Window *window)
{
    const bool isAboveChildren = !window->children.empty();
    if (isAboveChildren)
        CoverAll(window);
    else
        FitPixels(window, &window->pixels);
    const WindowPixels &pixels = isAboveChildren ? window->overlay.pixels : window->pixels;
    return OpenContextOn(pixels, window->self, ClientRectOf(window), true);
}

HDC WINAPI GetDC(HWND window)
{
    Window *record = WindowOf(window);
    return record ? UnlessMemoryRunsOut<HDC>(nullptr, [=] { return OpenWindowContext(record); })
                  : nullptr;
}

int WINAPI ReleaseDC(HWND window, HDC dc)
{
    if (std::none_of(openContexts.begin(), openContexts.end(),
                     [dc](const OpenContext &open) { return open.dc == dc && open.isGiven; }))
        return 0;
    CloseContext(dc);
    const Window *record = WindowOf(window);
    if (!record)
        return 1;
    const RECT all = ClientRectOf(record);
    if (!record->children.empty())
        visible.overlayChanged(window);
    else
        visible.painted(window, &all);
    return 1;
}

// --- what is invalid ---

static void MarkInvalid(Window *window, const RECT &part, bool erase)
{
    const RECT inside = Meet(part, ClientRectOf(window));
    if (IsEmpty(inside) || window->isMessageOnly)
        return;
    if (IsEmpty(window->invalid))
        waiting.push_back(window->self);
    window->invalid = Join(window->invalid, inside);
    window->isEraseAsked = window->isEraseAsked || erase;
    for (HWND handle : window->children) {
        Window *child = WindowOf(handle);
        MarkInvalid(child,
                    Moved(inside, -child->rect.left - child->around.left,
                          -child->rect.top - child->around.top),
                    erase);
    }
}

BOOL WINAPI InvalidateRect(HWND window, const RECT *part, BOOL erase)
{
    Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    const bool isMarked =
        DoesMemorySuffice([=] { MarkInvalid(record, part ? *part : ClientRectOf(record), erase); });
    if (!waiting.empty())
        visible.wakeUp();
    return isMarked;
}

void InvalidateAll(HWND window)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    InvalidateRect(window, nullptr, TRUE);
    for (HWND child : record->children)
        InvalidateAll(child);
}

HWND NextInvalidWindow()
{
    std::erase_if(waiting, [](HWND window) {
        const Window *record = WindowOf(window);
        return !record || IsEmpty(record->invalid);
    });
    const auto next = std::find_if(waiting.begin(), waiting.end(),
                                   [](HWND window) { return IsShown(WindowOf(window)); });
    return next == waiting.end() ? nullptr : *next;
}

static void PaintNow(HWND window)
{
    const Window *record = WindowOf(window);
    if (!record || !IsShown(record))
        return;
    if (!IsEmpty(record->invalid))
        SendMessageA(window, WM_PAINT, 0, 0);
    // Who paints may do anything, the end of the window included.
    const Window *painted = WindowOf(window);
    const std::vector<HWND> children = painted ? painted->children : std::vector<HWND>();
    for (HWND child : children)
        PaintNow(child);
}

BOOL WINAPI UpdateWindow(HWND window)
{
    if (!WindowOf(window))
        return FALSE;
    const bool isPainted = DoesMemorySuffice([=] { PaintNow(window); });
    if (WindowOf(window))
        visible.flush(window);
    return isPainted;
}

// --- painting ---

// What is invalid of a window, which nothing is any more.
static RECT TakeInvalid(Window *window)
{
    const RECT part = Meet(window->invalid, ClientRectOf(window));
    window->invalid = {};
    return part;
}

static void TellPainted(Window *window, const RECT &part)
{
    UncoverPart(window, part);
    visible.painted(window->self, &part);
}

Painting::Painting(HWND painted) : dc(nullptr), part(), window(painted)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    part = TakeInvalid(record);
    bool isErased = std::exchange(record->isEraseAsked, false);
    if (IsEmpty(ClientRectOf(record)))
        return;
    if (FitPixels(record, &record->pixels)) {
        part = ClientRectOf(record);
        isErased = true;
    }
    if (IsEmpty(part))
        return;
    dc = OpenContextOn(record->pixels, window, part, false);
    if (dc && isErased)
        SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
}

Painting::~Painting()
{
    if (!dc)
        return;
    CloseContext(dc);
    if (Window *record = WindowOf(window))
        TellPainted(record, part);
}

void PaintElsewhere(HWND window)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    record->isEraseAsked = false;
    const RECT part = TakeInvalid(record);
    if (!IsEmpty(part))
        TellPainted(record, part);
}

void ReportRepaint(HWND window)
{
    if (Window *record = WindowOf(window))
        UncoverPart(record, ClientRectOf(record));
}

#include "platform/native/user/dialog_keys.h"

#include <algorithm>

#include "platform/native/user/button.h"
#include "platform/native/user/window_table.h"

static bool IsReachable(HWND control)
{
    const Window *record = WindowOf(control);
    return record && record->style & WS_VISIBLE && !(record->style & WS_DISABLED);
}

// The next reachable control, round the ends, that has the style.
static HWND NextControl(HWND dialog, HWND from, bool isBackwards, DWORD style)
{
    const Window *record = WindowOf(dialog);
    if (!record || record->children.empty())
        return nullptr;
    const auto &controls = record->children;
    const size_t count = controls.size();
    const auto found = std::find(controls.begin(), controls.end(), from);
    size_t at = found != controls.end() ? static_cast<size_t>(found - controls.begin())
                : isBackwards           ? 0
                                        : count - 1;
    for (size_t i = 0; i < count; ++i) {
        at = (at + (isBackwards ? count - 1 : 1)) % count;
        if (IsReachable(controls[at]) && (WindowOf(controls[at])->style & style) == style)
            return controls[at];
    }
    return nullptr;
}

HWND NextTabStop(HWND dialog, HWND from, bool isBackwards)
{
    return NextControl(dialog, from, isBackwards, WS_TABSTOP);
}

static void GiveCommand(HWND dialog, int id)
{
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

bool TreatDialogKey(HWND dialog, const MSG &message)
{
    if (message.message != WM_KEYDOWN || !IsInside(message.hwnd, dialog))
        return false;
    const HWND from = message.hwnd == dialog ? nullptr : message.hwnd;
    const auto moveTo = [](HWND control) {
        if (control)
            SetFocus(control);
        return true;
    };
    switch (message.wParam) {
    case VK_TAB: return moveTo(NextTabStop(dialog, from, message.lParam != 0));
    case VK_LEFT:
    case VK_UP: return moveTo(NextControl(dialog, from, true, WS_TABSTOP));
    case VK_RIGHT:
    case VK_DOWN: return moveTo(NextControl(dialog, from, false, WS_TABSTOP));
    case VK_RETURN:
        return GiveCommand(dialog, IsPushButton(from) ? WindowOf(from)->id : IDOK), true;
    case VK_ESCAPE: return GiveCommand(dialog, IDCANCEL), true;
    default: return false;
    }
}

// The platform's own message box: a dialog that is laid out around its text.
#include <algorithm>

#include "platform/native/no_memory.h"
#include "platform/native/user/dialogs.h"
#include "platform/native/user/static_text.h"
#include "platform/native/user/text_lines.h"

// In dialog units: the icon itself is laid out in pixels.
constexpr int margin = 8, iconSpace = 20, buttonWidth = 50, buttonHeight = 14;
constexpr int widestText = 260, leastWidth = 120;

static INT_PTR CALLBACK MessageBoxProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: {
        RECT box;
        GetWindowRect(dialog, &box);
        SetWindowPos(dialog, HWND_TOP, (GetSystemMetrics(SM_CXSCREEN) - (box.right - box.left)) / 2,
                     (GetSystemMetrics(SM_CYSCREEN) - (box.bottom - box.top)) / 2, 0, 0,
                     SWP_NOSIZE);
        return TRUE;
    }
    case WM_COMMAND:
        // The one button answers the Escape key and the close box too.
        if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)
            return FALSE;
        EndDialog(dialog, IDOK);
        return TRUE;
    default: return FALSE;
    }
}

// Lays the box out around its text.
static DialogTemplate PlanBox(const std::string &text, bool hasIcon)
{
    const Font font = {-11, 0, "MS Sans Serif"};
    const int unitWidth = AverageWidth(font);
    int textWidth = 0, lines = 0;
    for (const std::string_view line : BreakLines(font, text, widestText * unitWidth / 4)) {
        textWidth = std::max(textWidth, (TextWidth(font, line) + 1) * 4 / unitWidth + 2);
        ++lines;
    }
    const int textLeft = margin + (hasIcon ? iconSpace + margin : 0);
    const int textHeight = std::max(lines * 8, hasIcon ? iconSpace : 8);
    DialogTemplate plan = {};
    plan.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;
    plan.fontHeight = 8;
    plan.fontFace = font.face;
    plan.width = std::max(textLeft + textWidth + margin, leastWidth);
    plan.height = margin + textHeight + margin + buttonHeight + margin;
    if (hasIcon)
        // The icon by its number, IDI_INFORMATION.
        plan.controls.push_back(
            {WS_VISIBLE | SS_ICON, margin, margin, iconSpace, iconSpace, -1, "static", "#32516"});
    const int textTop = margin + std::max(0, (textHeight - lines * 8) / 2);
    plan.controls.push_back({WS_VISIBLE | SS_NOPREFIX, textLeft, textTop, textWidth, lines * 8,
                             0xFFFF, "static", text});
    plan.controls.push_back({WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON,
                             (plan.width - buttonWidth) / 2, plan.height - margin - buttonHeight,
                             buttonWidth, buttonHeight, IDOK, "button", "OK"});
    return plan;
}

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    DialogTemplate plan;
    if (!DoesMemorySuffice([&] {
            plan = PlanBox(text ? text : "", type & MB_ICONINFORMATION);
            plan.caption = caption ? caption : "Error";
        }))
        return 0;
    const INT_PTR result = RunDialog(plan, nullptr, owner, MessageBoxProcedure, 0);
    return result == IDOK ? IDOK : 0;
}

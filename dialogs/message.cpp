#include "dialogs/message.h"

#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"

static INT_PTR OnInitDialog(HWND dialog, const char *text)
{
    SetDlgItemTextA(dialog, IDC_MESSAGE_TEXT, text);
    if (GetDlgItem(dialog, IDOK) != nullptr)
        SetFocus(GetDlgItem(dialog, IDOK));
    if (GetDlgItem(dialog, IDYES) != nullptr)
        SetFocus(GetDlgItem(dialog, IDYES));
    CenterOnScreen(dialog);
    return TRUE;
}

// The whole parameter is compared: only a click, whose notification code is 0, closes the dialog.
static INT_PTR OnCommand(HWND dialog, WPARAM wParam)
{
    if (wParam != IDOK && wParam != IDYES && wParam != IDCANCEL && wParam != IDNO)
        return FALSE;
    EndDialog(dialog, (INT_PTR)wParam);
    return TRUE;
}

static INT_PTR CALLBACK MessageProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return (INT_PTR)SetControlColors(dialog, (HDC)wParam);
    case WM_INITDIALOG: return OnInitDialog(dialog, (const char *)lParam);
    case WM_COMMAND: return OnCommand(dialog, wParam);
    default: return FALSE;
    }
}

INT_PTR ShowMessage(HWND owner, const char *text)
{
    // No module would mean the program's own.
    if (globals.hostModule == nullptr)
        return 0;
    return DialogBoxParamA(globals.hostModule, "MessageBox", owner, MessageProcedure, (LPARAM)text);
}

// Modal dialogs: their windows and their loop. Their keys are in dialog_keys.h.
#pragma once

#include "platform/native/user/dialog_template.h"
#include "platform/win32/user.h"

// The class of every dialog's window.
constexpr char dialogClass[] = "#32770";

// The window procedure of that class. Every message goes to the dialog's own procedure (DLGPROC)
// first; what that answers TRUE to is done, with the answer 0, or with the procedure's own for
// WM_INITDIALOG and the questions for colours. Else:
//   WM_CLOSE        posts WM_COMMAND (wParam: IDCANCEL, lParam: that button or NULL); answers 0
//   WM_ERASEBKGND   wParam: a drawing context; fills the client area with the brush that
//                   WM_CTLCOLORDLG answers; answers TRUE
//   others          as DefWindowProcA
LRESULT CALLBACK DialogWindowProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Shows a dialog over its owner (NULL: none), which takes no input meanwhile, and loops until it
// ends; the window is gone on return. The procedure gets WM_INITDIALOG (wParam: the first tab stop,
// lParam: the parameter) before the dialog shows. Returns EndDialog's result; 0 when it went
// otherwise, when the owner is dead or a quit request waits; -1 when a control's class is unknown.
INT_PTR RunDialog(const DialogTemplate &dialog, HINSTANCE instance, HWND owner, DLGPROC procedure,
                  LPARAM parameter);

// Modal dialogs: their windows, their keys and their loop.
//
// Escape sends WM_COMMAND IDCANCEL, Enter the focused push button's or IDOK, Tab and the arrows
// move the keyboard among the controls.
#pragma once

#include "platform/native/user/dialog_template.h"

#define DIALOG_CLASS "#32770"

LRESULT CALLBACK DialogWindowProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Shows a dialog over its owner and loops until it ends; see DialogBoxParamA for the answer.
INT_PTR RunDialog(const DialogTemplate &dialog, HINSTANCE instance, HWND owner, DLGPROC procedure,
                  LPARAM parameter);

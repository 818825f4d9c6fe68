// Class "button": push buttons, which the visible half draws, and owner-drawn ones.
//
// WM_LBUTTONDOWN, WM_LBUTTONUP, WM_KEYDOWN (VK_SPACE) and BM_CLICK press it: WM_COMMAND goes to
// the parent. An owner-drawn one is painted by the parent's WM_DRAWITEM, after WM_CTLCOLORBTN.
#pragma once

#include "platform/win32/user.h"

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam);

bool IsOwnerDrawn(HWND button);

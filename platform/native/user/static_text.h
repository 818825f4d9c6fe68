// Class "static": text, broken into lines and with tabs, and icons (SS_ICON). Text is at the left,
// in the middle (SS_CENTER) or at the right (SS_RIGHT); without SS_NOPREFIX "&" marks a mnemonic.
//
// Its messages; parameters not named are not looked at, and the answer is 0 unless another is told:
//   WM_CREATE       loads the icon of an icon control: its text is a name in the instance's
//                   resources, "#5" for number 5; the control becomes as large as the icon, and
//                   one whose icon is not there stays as it is and shows none
//   WM_PAINT        asks the parent for the colours (WM_CTLCOLORSTATIC), fills and draws
//   WM_ERASEBKGND   answers TRUE and fills nothing
//   WM_SETFONT      wParam: the font, which stays the caller's
#pragma once

#include "platform/win32/types.h"

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

constexpr DWORD SS_CENTER = 0x01;
constexpr DWORD SS_RIGHT = 0x02;
constexpr DWORD SS_ICON = 0x03;
constexpr DWORD SS_TYPEMASK = 0x1F; // of a static's style: its kind, one of these
constexpr DWORD SS_NOPREFIX = 0x80;

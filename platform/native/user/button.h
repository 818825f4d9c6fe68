// Class "button": push buttons, which the visible half draws, owner-drawn ones (BS_OWNERDRAW),
// which their parent draws, and group boxes (BS_GROUPBOX), a frame with a caption behind others.
//
// Its messages; parameters not named are not looked at, and the answer is 0 unless another is told:
//   WM_CREATE       makes the button's state
//   WM_PAINT        nothing is invalid any more; an owner-drawn button sends its parent
//                   WM_CTLCOLORBTN and then WM_DRAWITEM (wParam: its id, lParam: DRAWITEMSTRUCT);
//                   a group box asks it for the colours (WM_CTLCOLORSTATIC), fills and draws
//   WM_ERASEBKGND   answers TRUE and fills nothing
//   WM_SETFONT      wParam: the font, which stays the caller's
//   WM_SETFOCUS, WM_KILLFOCUS       it is painted anew
//   WM_LBUTTONDOWN, WM_LBUTTONDBLCLK    it is down, and has keyboard and capture
//   WM_LBUTTONUP    lParam: the place in its client area; one that was down is up again and gives
//                   up the capture; at a place inside it is pressed
//   WM_KEYDOWN      wParam: VK_SPACE presses it
//   BM_CLICK        presses it
// Pressed, it sends its parent WM_COMMAND (wParam: its id and BN_CLICKED, lParam: the button).
#pragma once

#include "platform/win32/types.h"

constexpr DWORD BS_TYPEMASK = 0x0F; // of a button's style: its kind
constexpr DWORD BS_GROUPBOX = 0x07;

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam);

// Whether a button's parent draws it. False for a dead handle.
bool IsOwnerDrawn(HWND button);

// Whether a button is a group box. False for a dead handle.
bool IsGroupBox(HWND button);

// Whether a window is a button that the visible half draws. False for a dead handle.
bool IsPushButton(HWND window);

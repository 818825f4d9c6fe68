// Classes "edit", "listbox", "scrollbar" and "combobox": an empty framed field stands in for each,
// so that a dialog of somebody else that has one is shown all the same.
//
// Its messages; parameters not named are not looked at, and the answer is 0 unless another is told:
//   WM_CREATE       a combo box whose list drops down is as high as its field
//   WM_PAINT        fills it with the colour of windows and frames it
//   WM_ERASEBKGND   answers TRUE and fills nothing
//   WM_SETFONT      wParam: the font, which stays the caller's
#pragma once

#include "platform/win32/types.h"

LRESULT CALLBACK StandInProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

// The one door to the Windows interface.
//
// Built for Windows this is the system's own headers. Built for Linux it declares exactly the part
// of the interface that the program uses, and platform/native provides it. The declarations are
// grouped as the system groups them; each says what the program relies on, and where we part from
// Windows on purpose.
#pragma once

#ifdef _WIN32

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <shellapi.h>
#include <shlobj.h>

#else

#include "platform/win32/types.h"

// Each group stands on types.h; that of the controls also on user.h.
#include "platform/win32/comctl.h"
#include "platform/win32/comdlg.h"
#include "platform/win32/gdi.h"
#include "platform/win32/kernel.h"
#include "platform/win32/shell32.h"
#include "platform/win32/user.h"
#include "platform/win32/winmm.h"

#endif

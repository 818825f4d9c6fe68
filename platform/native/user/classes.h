// The window classes there are: the controls that the system brings, and those that the program
// registers.
#pragma once

#include "platform/win32/user.h"

// The procedure of a class, by its name without case; NULL when there is none.
WNDPROC ProcedureOfClass(LPCSTR className);

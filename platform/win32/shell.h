// Per-user folders, and starting other programs.
#pragma once

#include "platform/win32/types.h"

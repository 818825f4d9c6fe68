// The open and save dialogs.
#pragma once

#include "platform/win32/types.h"

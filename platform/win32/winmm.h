// Playing sounds.
#pragma once

#include "platform/win32/types.h"

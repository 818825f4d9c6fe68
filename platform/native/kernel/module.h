// What the layer itself reads out of a module's resources.
#pragma once

#include "platform/byte_reader.h"
#include "platform/win32/types.h"

// Starts reading a resource, named as for FindResourceA; its bytes belong to the module. Where
// there is none, data is NULL and total 0.
ByteReader OpenResource(HMODULE module, LPCSTR name, LPCSTR type);

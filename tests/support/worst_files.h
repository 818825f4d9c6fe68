// The files that cost most of all that are known of their size: one name, one place and one
// resource's data are named over and over.
#pragma once

#include "samples/builder/builder.h"

// A PE file with count resources of one type. Their name is 260 control characters, which take most
// room when they are told, and their data are the same.
Bytes MakeWorstPe(int type, unsigned count, const Bytes &data);

// An NE file with count resources, 44 to 65,535, likewise; their name has 255 letters, and each
// keeps the same 257 bytes.
Bytes MakeWorstNe(unsigned count);

// A string block of size bytes whose text is longest: each string is one line feed.
Bytes MakeWorstStrings(size_t size);

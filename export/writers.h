// The four writers of output files. Each is two functions: one fills an open binary stream and
// leaves it open, the other creates the file by its name in the ANSI code page, calls the first and
// closes the file. The entry's data block is locked meanwhile and stays the catalogue's. Deleting
// an unfinished file is the caller's business.
#pragma once

#include "exe/catalog.h"

#include <cstdio>

enum WriteOutcome {
    WriteDone,            // the whole file was written
    WriteNotCreated,      // the file cannot be created; never a stream function's
    WriteDataUnavailable, // the entry's data block cannot be locked; the file is there, but empty
    WriteShort,           // a write, or the closing, came back short
};

#define BMP_HEADER_SIZE 14

// Fills the header of a BMP file (Microsoft's BITMAPFILEHEADER) of size bytes behind it, whose
// pixels begin pixelStart bytes behind it.
void FillBmpHeader(BYTE header[BMP_HEADER_SIZE], DWORD size, DWORD pixelStart);

// A BMP file: a 14-byte file header, then the data as stored.
WriteOutcome WriteBmpStream(FILE *stream, const ResourceEntry *entry);
WriteOutcome WriteBmpFile(const char *name, const ResourceEntry *entry);

// An ICO file of one picture: a 22-byte directory of one entry (Microsoft's icon file format), then
// the data as stored.
WriteOutcome WriteIcoStream(FILE *stream, const ResourceEntry *entry);
WriteOutcome WriteIcoFile(const char *name, const ResourceEntry *entry);

// A text of one line for each string that is not empty: its number, a comma, a tab, the string in
// double quotes, carriage return and line feed; in the ANSI code page. Numbers count on from the
// entry's name. The file function locks the data before it creates the file, so that no file is
// there when it cannot be locked, and reports a text whose lines could not all be written as done;
// the stream function tells.
WriteOutcome WriteStringTableStream(FILE *stream, const ResourceEntry *entry);
WriteOutcome WriteStringTableText(const char *name, const ResourceEntry *entry);

// The data, byte for byte: WAV files (Microsoft and IBM's RIFF WAVE, as a resource holds it) and
// BIN files.
WriteOutcome WriteRawStream(FILE *stream, const ResourceEntry *entry);
WriteOutcome WriteRawFile(const char *name, const ResourceEntry *entry);

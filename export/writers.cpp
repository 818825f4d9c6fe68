#include "export/writers.h"

#include "content/byte_writer.h"
#include "content/dib.h"
#include "content/string_block.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#define ICO_HEADER_SIZE 22

static WriteOutcome WriteBytes(FILE *stream, const void *bytes, size_t size)
{
    return fwrite(bytes, 1, size, stream) == size ? WriteDone : WriteShort;
}

void FillBmpHeader(BYTE header[BMP_HEADER_SIZE], DWORD size, DWORD pixelStart)
{
    memset(header, 0, BMP_HEADER_SIZE);
    header[0] = 'B';
    header[1] = 'M';
    PutU32(header + 2, BMP_HEADER_SIZE + size);
    PutU32(header + 10, BMP_HEADER_SIZE + pixelStart);
}

static WriteOutcome WriteBmp(FILE *stream, const ResourceEntry *entry, const BYTE *data)
{
    BYTE header[BMP_HEADER_SIZE];
    DibHeader dib;
    ReadDibHeader(data, entry->size, &dib);
    FillBmpHeader(header, entry->size, (DWORD)DibPixelStart(&dib));
    if (WriteBytes(stream, header, sizeof header) != WriteDone)
        return WriteShort;
    return WriteBytes(stream, data, entry->size);
}

// The picture fields of an icon directory; they stay 0 for what is no DIB (a PNG image).
static void FillIconPicture(BYTE *header, const BYTE *data, DWORD size)
{
    DibHeader dib;
    ReadDibHeader(data, size, &dib);
    if (dib.headerSize != sizeof(BITMAPINFOHEADER))
        return;
    header[6] = (BYTE)dib.width;
    header[7] = (BYTE)(dib.height / 2);
    header[8] = dib.bitCount < 8 ? (BYTE)(1 << dib.bitCount) : (BYTE)0;
}

static WriteOutcome WriteIco(FILE *stream, const ResourceEntry *entry, const BYTE *data)
{
    BYTE header[ICO_HEADER_SIZE] = {};
    PutU16(header + 2, 1);
    PutU16(header + 4, 1);
    PutU32(header + 14, entry->size);
    PutU32(header + 18, ICO_HEADER_SIZE);
    FillIconPicture(header, data, entry->size);
    if (WriteBytes(stream, header, sizeof header) != WriteDone)
        return WriteShort;
    return WriteBytes(stream, data, entry->size);
}

static WriteOutcome WriteLines(FILE *stream, const ResourceEntry *entry, const BYTE *data)
{
    // Counted in 32 bits on both systems; a name that begins with no number counts as 0.
    DWORD number =
        (DWORD)std::clamp<long long>(strtoll(entry->name, nullptr, 10), INT_MIN, INT_MAX);
    char text[STRING_TEXT_LENGTH + 1];
    char line[STRING_TEXT_LENGTH + 20];
    StringBlock block = {data, entry->size, 0};
    WriteOutcome outcome = WriteDone;
    while (NextString(&block, text)) {
        EscapeControlChars(text);
        const int length = snprintf(line, sizeof line, "%d,\t\"%s\"\r\n", (int)number, text);
        // Not fprintf: on Windows its result does not tell of a failed write.
        if (WriteBytes(stream, line, (size_t)length) != WriteDone)
            outcome = WriteShort;
        number++;
    }
    return outcome;
}

static WriteOutcome WriteRaw(FILE *stream, const ResourceEntry *entry, const BYTE *data)
{
    return WriteBytes(stream, data, entry->size);
}

typedef WriteOutcome (*FormatWriter)(FILE *stream, const ResourceEntry *entry, const BYTE *data);

// Runs a format's writer on the entry's locked data, and empties the stream's buffer, so that a
// full disk shows here.
static WriteOutcome WriteStream(FILE *stream, const ResourceEntry *entry, FormatWriter writer)
{
    const BYTE *data = (const BYTE *)GlobalLock(entry->data);
    if (data == nullptr)
        return WriteDataUnavailable;
    WriteOutcome outcome = writer(stream, entry, data);
    if (fflush(stream) != 0)
        outcome = WriteShort;
    GlobalUnlock(entry->data);
    return outcome;
}

// Creates the file, fills it and closes it.
static WriteOutcome WriteFile(const char *name, const ResourceEntry *entry, FormatWriter writer)
{
    FILE *stream = fopen(name, "wb");
    if (stream == nullptr)
        return WriteNotCreated;
    // Of the stream's own it may have none, and then loses lines.
    static char buffer[1 << 16];
    setvbuf(stream, buffer, _IOFBF, sizeof buffer);
    WriteOutcome outcome = WriteStream(stream, entry, writer);
    if (fclose(stream) != 0 && outcome == WriteDone)
        outcome = WriteShort;
    return outcome;
}

WriteOutcome WriteBmpStream(FILE *stream, const ResourceEntry *entry)
{
    return WriteStream(stream, entry, WriteBmp);
}

WriteOutcome WriteBmpFile(const char *name, const ResourceEntry *entry)
{
    return WriteFile(name, entry, WriteBmp);
}

WriteOutcome WriteIcoStream(FILE *stream, const ResourceEntry *entry)
{
    return WriteStream(stream, entry, WriteIco);
}

WriteOutcome WriteIcoFile(const char *name, const ResourceEntry *entry)
{
    return WriteFile(name, entry, WriteIco);
}

WriteOutcome WriteStringTableStream(FILE *stream, const ResourceEntry *entry)
{
    return WriteStream(stream, entry, WriteLines);
}

WriteOutcome WriteStringTableText(const char *name, const ResourceEntry *entry)
{
    // Data that cannot be had must not leave, or empty, a file.
    if (GlobalLock(entry->data) == nullptr)
        return WriteDataUnavailable;
    const WriteOutcome outcome = WriteFile(name, entry, WriteLines);
    GlobalUnlock(entry->data);
    return outcome == WriteShort ? WriteDone : outcome;
}

WriteOutcome WriteRawStream(FILE *stream, const ResourceEntry *entry)
{
    return WriteStream(stream, entry, WriteRaw);
}

WriteOutcome WriteRawFile(const char *name, const ResourceEntry *entry)
{
    return WriteFile(name, entry, WriteRaw);
}

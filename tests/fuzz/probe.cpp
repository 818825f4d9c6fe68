// What a file is, and the look at the headers of one that is refused.
#include "exe/probe.h"
#include "exe/pe_headers.h"
#include "tests/fuzz/fuzz.h"

static int Probe(HWND tree, FILE *file)
{
    return ProbeFile(tree, file) == ProbeRead;
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const ByteReader image = OpenBytes(data, size);
    size_t headers;
    PeSection section;
    if (FindPeHeaders(image, &headers)) {
        Is64BitImage(image, headers);
        RunsWhenLoaded(image, headers);
        FindSection(image, headers, ".rsrc", &section);
        FindResourceSection(image, headers, &section);
    }
    ReadAndCheck(data, size, Probe);
    return 0;
}

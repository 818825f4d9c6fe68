#include "exe/probe.h"

#include "exe/catalog.h"
#include "exe/ne_reader.h"
#include "exe/pe_headers.h"
#include "exe/pe_reader.h"
#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "platform/byte_reader.h"
#include "program/ids.h"

#include <new>

// Empties the tree and gives it its pictures for a new reading.
static void PrepareTree(HWND tree)
{
    if (tree != nullptr)
        SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    SetTreeImages(tree, &treeImages);
}

ProbeOutcome FindNewHeader(FilePages *pages, NewHeader *header)
{
    BYTE bytes[4] = {};
    *header = {60, 0};
    ClearFailure();
    if (!ReadPages(pages, 0, bytes, 2) || bytes[0] != 'M' || bytes[1] != 'Z') {
        NoteFailure(FailureNotExecutable);
        return ProbeNotExecutable;
    }
    BYTE signature[2] = {};
    if (ReadPages(pages, 60, bytes, sizeof bytes)) {
        ByteReader reader = OpenBytes(bytes, sizeof bytes);
        header->offset = ReadU32(&reader, 0);
        if (!ReadPages(pages, header->offset, signature, sizeof signature))
            signature[0] = signature[1] = 0;
    }
    header->signature = signature[0] | signature[1] << 8;
    if (header->signature == NE_SIGNATURE || header->signature == PE_SIGNATURE)
        return ProbeRead;
    NoteNewHeader(signature, header->offset);
    return ProbeNotStandard;
}

static ProbeOutcome RecogniseAndRead(HWND tree, FILE *file)
{
    NewHeader header;
    FilePages pages;
    OpenPages(&pages, file);
    const ProbeOutcome outcome = FindNewHeader(&pages, &header);
    if (outcome != ProbeRead)
        return outcome;
    PrepareTree(tree);
    if (pages.length >= 1ull << 32) {
        NoteFailure(FailureTooLarge);
        return ProbeFailed;
    }
    const int result = header.signature == NE_SIGNATURE ? ReadNeResources(tree, file, header.offset)
                                                        : ReadPeResources(tree, file);
    return result ? ProbeRead : ProbeFailed;
}

ProbeOutcome ProbeFile(HWND tree, FILE *file)
{
    try {
        return RecogniseAndRead(tree, file);
    } catch (const std::bad_alloc &) {
        NoteFailure(FailureMemory);
        return ProbeFailed;
    }
}

int ProbeMessageIds(ProbeOutcome outcome, LONG count, UINT ids[2])
{
    int messages = 0;
    if (outcome == ProbeNotExecutable)
        return 0;
    if (outcome == ProbeNotStandard) {
        ids[0] = IDS_NOT_STANDARD;
        return 1;
    }
    if (outcome == ProbeFailed)
        ids[messages++] = IDS_CORRUPT;
    if (count == 0)
        ids[messages++] = IDS_NOTHING_INTERESTING;
    return messages;
}

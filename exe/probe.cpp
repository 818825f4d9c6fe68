#include "exe/probe.h"

#include "exe/catalog.h"
#include "exe/ne_reader.h"
#include "exe/pe_headers.h"
#include "exe/pe_reader.h"
#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "platform/byte_reader.h"
#include "platform/files.h"
#include "program/ids.h"

#include <cstdint>

#define NE_SIGNATURE 0x454E

static int TooLarge(FILE *file)
{
    return FileLength(file) >= (int64_t)1 << 32;
}

// Empties the tree and gives it its pictures for a new reading.
static void PrepareTree(HWND tree)
{
    if (tree != nullptr)
        SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    SetTreeImages(tree, &treeImages);
}

ProbeOutcome ProbeFile(HWND tree, FILE *file)
{
    BYTE bytes[4] = {};
    ClearFailure();
    if (!SeekTo(file, 0) || fread(bytes, 1, 2, file) != 2 || bytes[0] != 'M' || bytes[1] != 'Z') {
        NoteFailure(FailureNotExecutable, 0);
        return ProbeNotExecutable;
    }
    BYTE signature[2] = {};
    DWORD headerOffset = 60;
    if (SeekTo(file, 60) && fread(bytes, 1, 4, file) == 4) {
        ByteReader reader = OpenBytes(bytes, sizeof bytes);
        headerOffset = ReadU32(&reader, 0);
        if (!SeekTo(file, headerOffset) || fread(signature, 1, 2, file) != 2)
            signature[0] = signature[1] = 0;
    }
    const int letters = signature[0] | signature[1] << 8;
    if (letters != NE_SIGNATURE && letters != PE_SIGNATURE) {
        NoteNewHeader(signature, headerOffset);
        return ProbeNotStandard;
    }
    PrepareTree(tree);
    if (TooLarge(file)) {
        NoteFailure(FailureTooLarge, 0);
        return ProbeFailed;
    }
    const int result = letters == NE_SIGNATURE ? ReadNeResources(tree, file, headerOffset)
                                               : ReadPeResources(tree, file);
    return result ? ProbeRead : ProbeFailed;
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

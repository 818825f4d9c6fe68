#include "shell/save.h"

#include "dialogs/message.h"
#include "export/formats.h"
#include "export/writers.h"
#include "program/globals.h"
#include "program/ids.h"
#include "program/texts.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

// Forms the name that is offered: the entry's, cut so that the extension stays whole.
static void FormDefaultName(char *name, const ExportFormat *format, const ResourceEntry *entry)
{
    const char *extension = format->defaultName + strlen("%s");
    const size_t room = MAX_PATH - 1 - strlen(extension);
    const size_t length = std::min(strlen(entry->name), room);
    memcpy(name, entry->name, length);
    strcpy(name + length, extension);
}

int AskSaveFileName(HWND owner, char *name, const char *filters)
{
    char title[MAX_PATH] = "";
    OPENFILENAMEA request = {};
    request.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    request.hwndOwner = owner;
    request.hInstance = globals.instance;
    request.lpstrFilter = filters;
    request.nFilterIndex = 1;
    request.lpstrFile = name;
    request.nMaxFile = MAX_PATH;
    request.lpstrFileTitle = title;
    request.nMaxFileTitle = sizeof title;
    request.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
    const bool confirmed = GetSaveFileNameA(&request) != 0;
    UpdateWindow(owner);
    return confirmed;
}

// Whether the writer had created the file before it failed with this outcome.
static bool WasCreated(WriteOutcome outcome, const ExportFormat *format)
{
    return outcome == WriteShort || (outcome == WriteDataUnavailable && !format->asksDataFirst);
}

static void ReportFailure(HWND owner, WriteOutcome outcome)
{
    UINT id = IDS_WRITE_ERROR;
    if (outcome == WriteNotCreated)
        id = IDS_CREATE_ERROR;
    else if (outcome == WriteDataUnavailable)
        id = IDS_MEMORY_ERROR;
    ShowMessage(owner, LoadMessageText(id));
}

int SaveResource(HWND owner, const ResourceCatalog *catalog, LONG index)
{
    ResourceEntry entry;
    char name[MAX_PATH];
    if (index < 0 || index >= catalog->count || !GetEntry(catalog->entries, &entry, index) ||
        entry.data == nullptr)
        return 0;
    const ExportFormat *format = FindExportFormat(&entry);
    if (format == nullptr)
        return 0;
    FormDefaultName(name, format, &entry);
    if (!AskSaveFileName(owner, name, format->filters))
        return 0;
    HCURSOR oldCursor = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    const WriteOutcome outcome = format->writeFile(name, &entry);
    if (outcome != WriteDone) {
        ReportFailure(owner, outcome);
        if (WasCreated(outcome, format))
            remove(name);
    }
    if (oldCursor != nullptr)
        SetCursor(oldCursor);
    return outcome == WriteDone;
}

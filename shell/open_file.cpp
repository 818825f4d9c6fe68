#include "shell/open_file.h"

#include "dialogs/message.h"
#include "exe/catalog.h"
#include "exe/probe.h"
#include "platform/files.h"
#include "program/globals.h"
#include "program/texts.h"

#include <cstdio>

int ProbeAndRead(HWND tree, const char *path)
{
    FILE *file = OpenPathForReading(path);
    if (file == nullptr)
        return 0;
    const ProbeOutcome outcome = ProbeFile(tree, file);
    fclose(file);
    UINT ids[2];
    const int count = ProbeMessageIds(outcome, openCatalog.count, ids);
    for (int i = 0; i < count; i++)
        ShowMessage(globals.mainWindow, LoadMessageText(ids[i]));
    return outcome == ProbeRead && openCatalog.count > 0;
}

// The open and save dialogs: the visible half shows them, the record is read and filled here.
#include <cstring>
#include <string>

#include "platform/native/no_memory.h"
#include "platform/native/visible.h"
#include "platform/win32/comdlg.h"

static BOOL Choose(OPENFILENAMEA *parameters, bool isSave)
{
    if (!parameters->lpstrFile || !parameters->nMaxFile)
        return FALSE;
    // The caller's buffer changes only when a file was confirmed.
    std::string path(parameters->lpstrFile);
    path.resize(parameters->nMaxFile);
    FileChoice choice = {};
    choice.owner = parameters->hwndOwner;
    choice.isSave = isSave;
    choice.filters = parameters->lpstrFilter ? parameters->lpstrFilter : "\0";
    choice.filterIndex = parameters->nFilterIndex;
    choice.folder = parameters->lpstrInitialDir;
    choice.path = path.data();
    choice.pathSize = parameters->nMaxFile;
    if (!visible.chooseFile(&choice))
        return FALSE;
    path.resize(std::strlen(path.c_str()));
    if (path.size() >= parameters->nMaxFile)
        return FALSE;
    std::strcpy(parameters->lpstrFile, path.c_str());
    parameters->nFilterIndex = choice.filterIndex;
    return TRUE;
}

BOOL WINAPI GetOpenFileNameA(LPOPENFILENAMEA parameters)
{
    return UnlessMemoryRunsOut(FALSE, [=] { return Choose(parameters, false); });
}

BOOL WINAPI GetSaveFileNameA(LPOPENFILENAMEA parameters)
{
    return UnlessMemoryRunsOut(FALSE, [=] { return Choose(parameters, true); });
}

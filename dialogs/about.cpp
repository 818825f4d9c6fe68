#include "dialogs/about.h"

#include "content/dib.h"
#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"
#include "viewer/dib_draw.h"

#include <cstdio>
#include <cstdlib>

// The edition of the window, which a release does not change.
static const int editionMajor = 3;
static const int editionMinor = 0;
static const char editionLetter = 'a';

// The control's text is a format with places for the edition.
static void FillVersion(HWND dialog)
{
    const size_t length = (size_t)GetWindowTextLengthA(GetDlgItem(dialog, IDC_ABOUT_TEXT));
    const size_t formatSize = length + 16;
    const size_t textSize = 2 * length + 16;
    char *format = (char *)calloc(formatSize, 1);
    char *text = (char *)calloc(textSize, 1);
    if (format != nullptr && text != nullptr) {
        GetDlgItemTextA(dialog, IDC_ABOUT_TEXT, format, (int)length + 1);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        snprintf(text, textSize, format, editionMajor, editionMinor, editionLetter);
#pragma GCC diagnostic pop
        SetDlgItemTextA(dialog, IDC_ABOUT_TEXT, text);
    }
    free(text);
    free(format);
}

static INT_PTR OnInitDialog(HWND dialog)
{
    FillVersion(dialog);
    CenterOnScreen(dialog);
    return FALSE;
}

static void DrawPicture(const DRAWITEMSTRUCT *item, HRSRC resource, HGLOBAL loaded)
{
    const void *dib = LockResource(loaded);
    const DWORD size = SizeofResource(globals.hostModule, resource);
    if (dib != nullptr && PictureFits(dib, size, false))
        DrawDibAt(item->hDC, item->rcItem.left, item->rcItem.top, dib, size, SRCCOPY);
    FrameRect(item->hDC, &item->rcItem, GetSysColorBrush(COLOR_BTNSHADOW));
}

static INT_PTR OnDrawItem(const DRAWITEMSTRUCT *item)
{
    if (item->CtlID != IDC_ABOUT_PICTURE)
        return FALSE;
    // No module would mean the program's own.
    if (globals.hostModule == nullptr)
        return TRUE;
    HRSRC resource =
        FindResourceA(globals.hostModule, MAKEINTRESOURCEA(IDB_ABOUT_PICTURE), (LPCSTR)RT_BITMAP);
    HGLOBAL loaded = resource != nullptr ? LoadResource(globals.hostModule, resource) : nullptr;
    if (loaded == nullptr)
        return TRUE;
    DrawPicture(item, resource, loaded);
    FreeResource(loaded);
    return TRUE;
}

static INT_PTR OnCommand(HWND dialog, WPARAM wParam)
{
    if (LOWORD(wParam) == IDOK)
        EndDialog(dialog, IDOK);
    return FALSE;
}

static INT_PTR CALLBACK AboutProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: return OnInitDialog(dialog);
    case WM_DRAWITEM: return OnDrawItem((const DRAWITEMSTRUCT *)lParam);
    case WM_COMMAND: return OnCommand(dialog, wParam);
    default: return FALSE;
    }
}

INT_PTR ShowAboutBox(HWND owner)
{
    const INT_PTR result = DialogBoxParamA(globals.instance, "AboutBox", owner, AboutProcedure, 0);
    UpdateWindow(owner);
    return result;
}

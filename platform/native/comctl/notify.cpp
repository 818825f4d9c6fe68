#include "platform/native/comctl/notify.h"

#include "platform/native/user/window_table.h"

LRESULT NotifyParent(HWND control, UINT code, NMHDR *header)
{
    const Window *record = WindowOf(control);
    if (!record || !record->parent)
        return 0;
    *header = {control, static_cast<UINT_PTR>(record->id), code};
    return SendMessageA(record->parent, WM_NOTIFY, header->idFrom,
                        reinterpret_cast<LPARAM>(header));
}

LRESULT NotifyParent(HWND control, UINT code)
{
    NMHDR header;
    return NotifyParent(control, code, &header);
}

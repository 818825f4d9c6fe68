#include "platform/native/user/classes.h"

#include <strings.h>

#include "platform/native/comctl/tree.h"

WNDPROC ProcedureOfClass(LPCSTR className)
{
    return className && strcasecmp(className, WC_TREEVIEWA) == 0 ? TreeProcedure : nullptr;
}

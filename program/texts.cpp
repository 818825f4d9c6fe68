#include "program/texts.h"

#include "program/globals.h"

#include <cstring>

static char messageText[260];

char *LoadMessageText(UINT id)
{
    if (LoadStringA(globals.instance, id, messageText, sizeof messageText) == 0)
        strcpy(messageText, "String table error - this application may be damaged");
    return messageText;
}

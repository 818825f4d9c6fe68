// The names of Windows' language identifiers, from the list that Microsoft publishes of them
// (MS-LCID: "Windows Language Code Identifier Reference").
#pragma once

#include "platform/win32.h"

// The tag (RFC 5646, "pt-BR") of a language identifier: the primary language in its low 10 bits,
// the kind of it above. NULL for 0, which is neutral, and for those that the list has no tag for.
const char *LanguageTag(WORD language);

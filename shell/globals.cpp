#include "shell/globals.h"

Globals globals;

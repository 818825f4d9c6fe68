#include "program/globals.h"

Globals globals;

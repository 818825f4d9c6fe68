// The save command: one entry into a file that the user names.
#pragma once

#include "exe/catalog.h"

// Saves entry index of the catalogue in the format that suits it. Says in the message dialog when
// the file cannot be created, its data not be had or a write fails, and deletes a file that it
// created and did not fill. Returns 1 when the file was written; 0 also when there is no such
// entry, its category has no format, or the user cancelled.
int SaveResource(HWND owner, const ResourceCatalog *catalog, LONG index);

// Asks the user for the name to save under. name holds MAX_PATH bytes: the name that is offered,
// then the confirmed one. filters are pairs of description and pattern, ended by an empty text; the
// first is selected. Replacing a file is confirmed by the user. Returns 0 when none was confirmed.
int AskSaveFileName(HWND owner, char *name, const char *filters);

// Per-user folders.
#pragma once

// The path of a settings file of the sibling application: the user's application-data folder, the
// folder Orrindale in it, the name. Returns one shared buffer which the next call overwrites; the
// empty text when there is no such folder or the path would pass 259 bytes. Nothing is created.
char *UserSettingsPath(const char *name);

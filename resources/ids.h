// Numbers of the program's own resources, shared by the resource script and the code.
#pragma once

#define IDS_NOT_STANDARD 100
#define IDS_CORRUPT 101
#define IDS_TITLE 102
#define IDS_NO_FILE 104
#define IDS_CREATE_ERROR 105
#define IDS_MEMORY_ERROR 106
#define IDS_WRITE_ERROR 107
#define IDS_HOST_MISSING 108
#define IDS_NOTHING_INTERESTING 112

#define IDB_FOLDER_CLOSED 6030
#define IDB_FOLDER_SELECTED 6031

// Numbers of the program's own resources, commands and controls, shared by the resource script and
// the code.
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

#define IDC_SPLITTER_CURSOR 6000

// Commands of MainMenu.
#define IDM_OPEN 100
#define IDM_CLOSE 101
#define IDM_SAVE_AS 102
#define IDM_PLAY 103
#define IDM_EXIT 199
#define IDM_HELP 998
#define IDM_ABOUT 999

// The main window's children.
#define IDC_TREE 1000
#define IDC_PANE 1001

// Controls of AboutBox.
#define IDC_ABOUT_TEXT 101
#define IDC_ABOUT_PICTURE 102

// In the host module: the control of its "MessageBox" that takes the text, and the picture of
// AboutBox.
#define IDC_MESSAGE_TEXT 101
#define IDB_ABOUT_PICTURE 9004

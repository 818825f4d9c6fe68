// Windows and messages, and the program's own texts and pictures.
#pragma once

#include "platform/win32/types.h"

// --- windows ---

// A window's procedure: answers every message that the window gets.
typedef LRESULT(CALLBACK *WNDPROC)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Sent while the window is made, before CreateWindowExA returns. An answer of -1 undoes the making.
#define WM_CREATE 0x0001

// Sent while the window goes, to it first and then to its children.
#define WM_DESTROY 0x0002

#define WS_CHILD 0x40000000L

// Parent of windows that are never shown and only take messages.
#define HWND_MESSAGE ((HWND)(intptr_t)-3)

// Makes a window of a class. NULL when the class is unknown or the parent is dead.
HWND WINAPI CreateWindowExA(DWORD extendedStyle, LPCSTR className, LPCSTR text, DWORD style, int x,
                            int y, int width, int height, HWND parent, HMENU menuOrId,
                            HINSTANCE instance, LPVOID parameter);

// Destroys a window and its children. FALSE for a dead handle.
BOOL WINAPI DestroyWindow(HWND window);

// Runs the window's procedure on a message and gives its answer; 0 for a dead handle.
LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The answer to every message that a window's own procedure does not treat.
LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// --- resources ---

// Copies a text of the module's string table, cut to size - 1 bytes and terminated, in the ANSI
// code page. Returns its length; 0 when there is no such text or it is empty.
int WINAPI LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size);

// Loads a bitmap of the module. The caller deletes it. NULL when there is none.
HBITMAP WINAPI LoadBitmapA(HINSTANCE instance, LPCSTR name);

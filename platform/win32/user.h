// Windows and messages, menus and dialogs, and the program's own texts and pictures.
//
// Sizes and places are in logical pixels. Texts are terminated bytes in the ANSI code page. A dead
// handle makes a call fail: FALSE, 0 or NULL, and nothing is changed or filled.
#pragma once

#include "platform/win32/types.h"

extern "C" {

// Where the window program starts; it defines this. commandLine is the text after the program's
// name: on Linux the arguments joined by single spaces.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int showCommand);

// --- window classes ---

// A window's procedure: answers every message that the window gets.
typedef LRESULT(CALLBACK *WNDPROC)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

#define CS_VREDRAW 0x0001 // a change of height redraws the whole window
#define CS_HREDRAW 0x0002 // a change of width does
#define CS_DBLCLKS 0x0008 // a second press comes as a double click

typedef struct tagWNDCLASSA {
    UINT style;
    WNDPROC lpfnWndProc;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground; // what default processing fills the window with; stays the caller's
                          // (Windows deletes it with the class, if the caller has not)
    LPCSTR lpszMenuName;  // a menu of the instance by its name, or NULL
    LPCSTR lpszClassName; // compared without case
} WNDCLASSA;

// Registers a class; the texts are copied. 0 when the name is taken or missing.
ATOM WINAPI RegisterClassA(const WNDCLASSA *windowClass);

// Forgets a class. FALSE while a window of the class exists, for an unknown class and for a control
// that the system brings. instance is not looked at.
BOOL WINAPI UnregisterClassA(LPCSTR className, HINSTANCE instance);

// --- windows ---

#define WS_POPUP 0x80000000L
#define WS_CHILD 0x40000000L
#define WS_VISIBLE 0x10000000L
#define WS_DISABLED 0x08000000L
#define WS_CAPTION 0x00C00000L
#define WS_BORDER 0x00800000L
#define WS_VSCROLL 0x00200000L
#define WS_SYSMENU 0x00080000L
#define WS_TABSTOP 0x00010000L
#define WS_OVERLAPPEDWINDOW 0x00CF0000L

// As x: at (0, 0).
#define CW_USEDEFAULT ((int)0x80000000)

// Parent of windows that are never shown and only take messages.
#define HWND_MESSAGE ((HWND)(intptr_t)-3)

// Makes a window of a class: one that the program registered, "button", "static" or
// "SysTreeView32". x, y, width and height are the outer rectangle, a child's in its parent's client
// area. menuOrId is a child's id; another window owns it as its menu, with NULL it gets its
// class's. extendedStyle and parameter are not looked at. A window with a parent and without
// WS_CHILD is owned: it goes with its owner and stays above it. The first WM_SIZE follows
// WM_CREATE; that of a window with neither WS_CHILD nor WS_POPUP follows its first showing. NULL
// when the class is unknown, the parent is dead or the window was destroyed while it was made.
HWND WINAPI CreateWindowExA(DWORD extendedStyle, LPCSTR className, LPCSTR text, DWORD style, int x,
                            int y, int width, int height, HWND parent, HMENU menuOrId,
                            HINSTANCE instance, LPVOID parameter);

// Destroys a window, those it owns and its children; each gets WM_DESTROY, parents first. FALSE
// for a dead handle.
BOOL WINAPI DestroyWindow(HWND window);

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_SHOWMAXIMIZED 3
#define SW_SHOW 5

// Shows or hides a window. TRUE when it was visible before.
BOOL WINAPI ShowWindow(HWND window, int command);

// Paints what is invalid of the window and its children at once. FALSE for a dead handle.
BOOL WINAPI UpdateWindow(HWND window);

// Marks a part of the client area (NULL: all) for painting, and what its children show there.
// erase: the background is to be filled anew. FALSE for a dead handle.
BOOL WINAPI InvalidateRect(HWND window, const RECT *part, BOOL erase);

// The client area, left and top 0. FALSE for a dead handle.
BOOL WINAPI GetClientRect(HWND window, LPRECT rect);

// The outer rectangle on the screen: frame, caption and menu bar included once the desktop has
// told them, before that the client area and the menu bar. FALSE for a dead handle.
BOOL WINAPI GetWindowRect(HWND window, LPRECT rect);

// Gives a window an outer rectangle; WM_SIZE follows at once when its client size changes. A top
// level window's manager may give another size, which a later WM_SIZE tells. The layer asks it at
// most once for each size that it gives; refused again, the window stays as it is. repaint is not
// looked at: what must be painted is. FALSE for a dead handle.
BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);

#define HWND_TOP ((HWND)0)
#define SWP_NOSIZE 0x0001

// Moves a window that is no child above the others and to (x, y). after is HWND_TOP and flags are
// SWP_NOSIZE: it keeps its size, width and height are not looked at. FALSE for a dead handle.
BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);

// Makes a place in the client area one on the screen. FALSE for a dead handle.
BOOL WINAPI ClientToScreen(HWND window, LPPOINT point);

// The window that shows at a point of the screen, by the layer's own rectangles; NULL for none.
// Children that take no input are passed over.
HWND WINAPI WindowFromPoint(POINT point);

// Whether the window itself takes input, which an owner does not while its dialog runs. FALSE for a
// dead handle.
BOOL WINAPI IsWindowEnabled(HWND window);

// A window's text: a frame's caption, a button's or static's label. Frames show UTF-8 when the text
// is valid UTF-8. The text is copied; NULL is an empty one. FALSE for a dead handle.
BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text);

// In bytes, without the terminator.
int WINAPI GetWindowTextLengthA(HWND window);

// The child with an id; NULL when there is none.
HWND WINAPI GetDlgItem(HWND window, int id);

// SetWindowTextA for that child. FALSE when there is none.
BOOL WINAPI SetDlgItemTextA(HWND window, int id, LPCSTR text);

// Copies at most size - 1 bytes of that child's text, terminates, and answers their count; an empty
// text when there is no such child.
UINT WINAPI GetDlgItemTextA(HWND window, int id, LPSTR text, int size);

typedef BOOL(CALLBACK *WNDENUMPROC)(HWND window, LPARAM parameter);

// Calls the procedure for every child, grandchildren included, until it answers FALSE, which is
// then the answer.
BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC procedure, LPARAM parameter);

// SM_CXSCREEN and SM_CYSCREEN: the size of the main screen; 0 for others.
int WINAPI GetSystemMetrics(int index);
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1

// A drawing context for the window's client area. That of a window with children draws above them:
// what is drawn stays until the child below is painted again or the window is updated. NULL for a
// dead handle. Every context is released.
HDC WINAPI GetDC(HWND window);

// Ends a context of GetDC, and what was drawn shows. 0 for any other context.
int WINAPI ReleaseDC(HWND window, HDC dc);

// --- keyboard and mouse ---

// Gives a window the keyboard: the one that had it gets WM_KILLFOCUS, this one WM_SETFOCUS.
// Returns the window that had it; NULL also for a window that takes no input.
HWND WINAPI SetFocus(HWND window);

// While a window holds the capture, all mouse messages go to it. Returns the window that held it.
HWND WINAPI SetCapture(HWND window);

// The window that holds the capture, or NULL.
HWND WINAPI GetCapture(void);

// Nobody holds the capture any more. Always TRUE.
BOOL WINAPI ReleaseCapture(void);

// Where the mouse was at its last event (Wayland tells no other place), on the screen. Always TRUE.
BOOL WINAPI GetCursorPos(LPPOINT point);

// --- messages ---

#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_SIZE 0x0005 // lParam: client width and height
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_PAINT 0x000F
#define WM_CLOSE 0x0010           // default: the window is destroyed
#define WM_QUERYENDSESSION 0x0011 // default: TRUE
#define WM_QUIT 0x0012
#define WM_ERASEBKGND 0x0014 // wParam: a drawing context. Default: filled with the class's brush
#define WM_DRAWITEM 0x002B   // to the parent of an owner-drawn button. lParam: DRAWITEMSTRUCT
#define WM_SETFONT 0x0030    // to a control. wParam: the font, which stays the caller's
#define WM_NOTIFY 0x004E     // to the parent. lParam: a record that begins with NMHDR
#define WM_KEYDOWN 0x0100    // wParam: a VK_ number
#define WM_INITDIALOG 0x0110 // lParam: the parameter of DialogBoxParamA
#define WM_COMMAND 0x0111    // wParam: id, and a control's code above it; lParam: the control
#define WM_SYSCOMMAND 0x0112 // SC_CLOSE, default: WM_CLOSE
#define WM_MOUSEMOVE 0x0200  // lParam of mouse messages: the place in the client area
#define WM_LBUTTONDOWN 0x0201
#define WM_LBUTTONUP 0x0202
#define WM_LBUTTONDBLCLK 0x0203
#define WM_RBUTTONDOWN 0x0204
#define WM_PARENTNOTIFY 0x0210 // to the parents before a child gets a press. wParam: that message
#define WM_DROPFILES 0x0233    // wParam: what was dropped, an HDROP
#define WM_USER 0x0400

// Asked for a control's or dialog's colours; wParam: its drawing context, lParam: its window. The
// answer is the brush for the background; text and background colour are set in the context.
#define WM_CTLCOLORMSGBOX 0x0132
#define WM_CTLCOLORBTN 0x0135
#define WM_CTLCOLORDLG 0x0136
#define WM_CTLCOLORSTATIC 0x0138

#define SC_CLOSE 0xF060

#define VK_TAB 0x09
#define VK_RETURN 0x0D
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28

typedef struct tagMSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    POINT pt; // of a press: where the mouse was on the screen
} MSG, *LPMSG;

typedef struct tagNMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
} NMHDR;

// Runs the window's procedure on a message and gives its answer; 0 for a dead handle.
LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Puts a message at the end of the queue. FALSE for a dead handle.
BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Waits for the next message, in the order posted, quit, input, paint. FALSE for the quit request,
// and when there is nothing to wait for: no display and an empty queue. window is NULL, first and
// last are 0.
BOOL WINAPI GetMessageA(LPMSG message, HWND window, UINT first, UINT last);

// Keys reach the controls as they are; there are no characters to translate into. Always FALSE.
BOOL WINAPI TranslateMessage(const MSG *message);

// Sends a message that a loop took to its window, and gives the answer.
LRESULT WINAPI DispatchMessageA(const MSG *message);

// Asks every message loop, nested ones first, to end once the posted messages are through.
void WINAPI PostQuitMessage(int exitCode);

// The answer to every message that a window's own procedure does not treat.
LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// --- controls ---

#define BS_DEFPUSHBUTTON 0x00000001L
#define BS_OWNERDRAW 0x0000000BL
#define BN_CLICKED 0

#define ODT_BUTTON 4
#define ODA_DRAWENTIRE 0x0001
#define ODS_SELECTED 0x0001
#define ODS_DISABLED 0x0004
#define ODS_FOCUS 0x0010

typedef struct tagDRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemAction; // always ODA_DRAWENTIRE
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
} DRAWITEMSTRUCT;

// --- menus ---

#define MF_ENABLED 0x00000000L
#define MF_BYCOMMAND 0x00000000L
#define MF_GRAYED 0x00000001L
#define MF_DISABLED 0x00000002L
#define MF_POPUP 0x00000010L
#define MF_SEPARATOR 0x00000800L

// The menu bar of a window; NULL when it has none.
HMENU WINAPI GetMenu(HWND window);

// Finds an item by its command, in submenus too, and greys it or not (MF_GRAYED, MF_ENABLED).
// Answers those flags as they were; -1 when there is no such item.
BOOL WINAPI EnableMenuItem(HMENU menu, UINT id, UINT flags);

// An item's flags (MF_); -1 when there is no such item.
UINT WINAPI GetMenuState(HMENU menu, UINT id, UINT flags);

// Makes an empty menu. The caller destroys a menu that is no window's.
HMENU WINAPI CreatePopupMenu(void);

// Puts an item at a menu's end; the text is copied.
BOOL WINAPI AppendMenuA(HMENU menu, UINT flags, UINT_PTR id, LPCSTR text);

// Ends a menu and its submenus.
BOOL WINAPI DestroyMenu(HMENU menu);

// Shows a menu at a point of the screen, and loops over messages until it closes. A chosen item's
// command is posted to the owner (WM_COMMAND). FALSE for a dead menu or owner, with no display, and
// while another is shown. flags, reserved and keepOut are not looked at.
BOOL WINAPI TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND owner,
                           const RECT *keepOut);

// --- dialogs ---

#define DS_SETFONT 0x40L
#define DS_MODALFRAME 0x80L

#define IDOK 1
#define IDCANCEL 2
#define IDYES 6
#define IDNO 7

typedef INT_PTR(CALLBACK *DLGPROC)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Shows a DIALOG or DIALOGEX template of the module over its owner, which takes no input
// meanwhile, and loops over messages until EndDialog. Returns EndDialog's result; -1 when there is
// no such template; 0 when the owner is dead. A quit request, or the end of the owner, ends it.
INT_PTR WINAPI DialogBoxParamA(HINSTANCE instance, LPCSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter);

// Ends a dialog's loop with that result, once the message that is treated now is done. FALSE for a
// window that is no dialog.
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result);

#define MB_ICONINFORMATION 0x00000040L

// Shows a text with an OK button, and an icon with MB_ICONINFORMATION; loops as a dialog does.
// Returns IDOK, 0 when it went otherwise.
int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);

// --- resources ---

// Copies a text of the module's string table, cut to size - 1 bytes and terminated, in the ANSI
// code page. Returns its length; 0 when there is no such text or it is empty.
int WINAPI LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size);

// Loads a bitmap of the module. The caller deletes it. NULL when there is none that can be read.
HBITMAP WINAPI LoadBitmapA(HINSTANCE instance, LPCSTR name);

// Load a module's icon or cursor, or, with no module, the desktop's information icon or one of its
// cursors. They are shared: nobody deletes them. NULL when there is none that can be read.
HICON WINAPI LoadIconA(HINSTANCE instance, LPCSTR name);
#define IDI_INFORMATION MAKEINTRESOURCEA(32516)
HCURSOR WINAPI LoadCursorA(HINSTANCE instance, LPCSTR name);
#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_WAIT MAKEINTRESOURCEA(32514)

// Shows a cursor until the mouse next moves into another window. Returns the one shown before.
HCURSOR WINAPI SetCursor(HCURSOR cursor);

} // extern "C"

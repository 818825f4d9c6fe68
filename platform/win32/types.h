// Types, handles and small macros of the Windows interface, with Windows' own widths on every
// system: 32 bits for LONG, DWORD, UINT and COLORREF, a pointer's width for message parameters.
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI
#define CALLBACK

typedef int BOOL;
typedef unsigned char BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef uint32_t UINT;
typedef int32_t LONG;
typedef char16_t WCHAR; // one UTF-16 code unit
typedef uint16_t ATOM;
typedef uintptr_t WPARAM;
typedef intptr_t LPARAM;
typedef intptr_t LRESULT;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef uintptr_t DWORD_PTR;
typedef size_t SIZE_T;
typedef int32_t HRESULT;
typedef DWORD COLORREF; // 0x00BBGGRR

typedef void *LPVOID;
typedef const void *LPCVOID;
typedef char *LPSTR;
typedef const char *LPCSTR;
typedef WCHAR *LPWSTR;
typedef const WCHAR *LPCWSTR;
typedef BOOL *LPBOOL;

#define TRUE 1
#define FALSE 0
#define MAX_PATH 260

// A handle is a number of one of the layer's tables, with a generation: a handle whose object is
// gone makes every call fail, it never means another object.
#define DECLARE_HANDLE(name)                                                                       \
    struct name##__;                                                                               \
    typedef struct name##__ *name

typedef void *HANDLE;
typedef HANDLE HGLOBAL;
typedef void *HGDIOBJ;
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HRSRC);
DECLARE_HANDLE(HWND);
typedef HINSTANCE HMODULE;
typedef HICON HCURSOR;

typedef struct tagPOINT {
    LONG x;
    LONG y;
} POINT, *LPPOINT;

// right and bottom lie just outside the rectangle
typedef struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
} RECT, *LPRECT;

#define LOWORD(l) ((WORD)((DWORD_PTR)(l)&0xffff))
#define HIWORD(l) ((WORD)(((DWORD_PTR)(l) >> 16) & 0xffff))
#define MAKELONG(a, b) ((LONG)(((DWORD)(WORD)(a)) | (((DWORD)(WORD)(b)) << 16)))
#define MAKEWPARAM(l, h) ((WPARAM)(DWORD)MAKELONG(l, h))
#define MAKELPARAM(l, h) ((LPARAM)(DWORD)MAKELONG(l, h))
#define MAKEINTRESOURCEA(i) ((LPSTR)((DWORD_PTR)((WORD)(i))))
#define IS_INTRESOURCE(r) ((((DWORD_PTR)(r)) >> 16) == 0)

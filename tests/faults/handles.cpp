#include "tests/faults/handles.h"

#include "platform/win32.h"

Handles liveHandles;

#define COUNT(result, name, parameters, arguments, field, change)                                  \
    extern "C" result Real##name parameters __asm__("__real_" #name);                              \
    extern "C" result Counted##name parameters __asm__("__wrap_" #name);                           \
    result Counted##name parameters                                                                \
    {                                                                                              \
        const result made = Real##name arguments;                                                  \
        liveHandles.field += change;                                                               \
        return made;                                                                               \
    }
#define MAKES(result, name, parameters, arguments, field)                                          \
    COUNT(result, name, parameters, arguments, field, made != nullptr ? 1 : 0)
#define ENDS(name, parameters, arguments, field)                                                   \
    COUNT(BOOL, name, parameters, arguments, field, made ? -1 : 0)

MAKES(HGLOBAL, GlobalAlloc, (UINT flags, SIZE_T bytes), (flags, bytes), blocks)
COUNT(HGLOBAL, GlobalFree, (HGLOBAL block), (block), blocks,
      made == nullptr && block != nullptr ? -1 : 0)
MAKES(LPVOID, GlobalLock, (HGLOBAL block), (block), locks)
COUNT(BOOL, GlobalUnlock, (HGLOBAL block), (block), locks, -1)
MAKES(HFONT, CreateFontA,
      (int height, int width, int escapement, int orientation, int weight, DWORD italic,
       DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision,
       DWORD quality, DWORD pitch, LPCSTR face),
      (height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet,
       outPrecision, clipPrecision, quality, pitch, face),
      objects)
MAKES(HBRUSH, CreateSolidBrush, (COLORREF color), (color), objects)
MAKES(HBRUSH, CreatePatternBrush, (HBITMAP bitmap), (bitmap), objects)
MAKES(HBITMAP, CreateBitmap, (int width, int height, UINT planes, UINT bits, LPCVOID rows),
      (width, height, planes, bits, rows), objects)
MAKES(HBITMAP, CreateDIBitmap,
      (HDC dc, const BITMAPINFOHEADER *header, DWORD flags, LPCVOID bits, const BITMAPINFO *info,
       UINT usage),
      (dc, header, flags, bits, info, usage), objects)
MAKES(HBITMAP, LoadBitmapA, (HINSTANCE instance, LPCSTR name), (instance, name), objects)
ENDS(DeleteObject, (HGDIOBJ object), (object), objects)
MAKES(HDC, CreateCompatibleDC, (HDC dc), (dc), contexts)
ENDS(DeleteDC, (HDC dc), (dc), contexts)
MAKES(HDC, GetDC, (HWND window), (window), contexts)
COUNT(int, ReleaseDC, (HWND window, HDC dc), (window, dc), contexts, -made)
MAKES(HIMAGELIST, ImageList_Create, (int width, int height, UINT flags, int count, int growth),
      (width, height, flags, count, growth), imageLists)
ENDS(ImageList_Destroy, (HIMAGELIST list), (list), imageLists)
MAKES(HMODULE, LoadLibraryA, (LPCSTR path), (path), modules)
ENDS(FreeLibrary, (HMODULE module), (module), modules)

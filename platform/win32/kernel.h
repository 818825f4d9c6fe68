// Movable memory, code pages, modules and their resources. All of it works with no display.
#pragma once

#include "platform/win32/types.h"

extern "C" {

// --- movable memory ---

#define GMEM_MOVEABLE 0x0002
#define GMEM_ZEROINIT 0x0040

// Makes a movable block of exactly `bytes` bytes, all zero with GMEM_ZEROINIT; flags always hold
// GMEM_MOVEABLE. The caller frees it with GlobalFree. Returns NULL when there is no memory. A block
// of zero bytes cannot be locked.
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes);

// Changes a block's size; what it held stays, new bytes are zero with GMEM_ZEROINIT. Returns the
// handle to use from now on; NULL on failure, and then the old block is as it was. Growing a block
// record by record costs, in total, time linear in its final size.
HGLOBAL WINAPI GlobalReAlloc(HGLOBAL block, SIZE_T bytes, UINT flags);

// Releases the block, locked or not. Returns NULL, or the handle itself when it is not a block's.
HGLOBAL WINAPI GlobalFree(HGLOBAL block);

// Gives the block's address, which holds until it is unlocked as often as it was locked. NULL for
// a dead handle and for a block of zero bytes.
LPVOID WINAPI GlobalLock(HGLOBAL block);

// Takes one lock away. TRUE while the block is still locked; FALSE also for a dead handle.
BOOL WINAPI GlobalUnlock(HGLOBAL block);

// The block's size in bytes; 0 for a dead handle.
SIZE_T WINAPI GlobalSize(HGLOBAL block);

// --- code pages ---

#define CP_ACP 0
#define CP_UTF8 65001

// Converts UTF-16 to the ANSI code page, or to UTF-8. Returns the number of bytes written; 0 when
// an argument is wrong or the output is too small. units may be -1: up to and with the terminator.
// A size of 0 asks for the number of bytes needed. What the ANSI page lacks becomes "?", with no
// best fit; in UTF-8 a surrogate without its pair becomes U+FFFD.
int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int units, LPSTR out,
                               int outSize, LPCSTR defaultChar, LPBOOL usedDefault);

// Converts the ANSI code page, and no other, to UTF-16; the counterpart of the above, outSize and
// the result in code units.
int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int bytes, LPWSTR out,
                               int outSize);

// --- modules and their resources ---

#define RT_CURSOR MAKEINTRESOURCEA(1)
#define RT_BITMAP MAKEINTRESOURCEA(2)
#define RT_ICON MAKEINTRESOURCEA(3)
#define RT_MENU MAKEINTRESOURCEA(4)
#define RT_DIALOG MAKEINTRESOURCEA(5)
#define RT_STRING MAKEINTRESOURCEA(6)
#define RT_GROUP_CURSOR MAKEINTRESOURCEA(12)
#define RT_GROUP_ICON MAKEINTRESOURCEA(14)

// Only NULL is asked for: the program itself, whose resources are embedded in it. NULL for a name.
HMODULE WINAPI GetModuleHandleA(LPCSTR name);

// Opens a PE file (PE32 or PE32+) as a module of resources; no code of it runs. The caller frees it
// with FreeLibrary. NULL when the file cannot be opened or is not one.
HMODULE WINAPI LoadLibraryA(LPCSTR path);

// Lets the module go, with the bytes of its resources. FALSE for a handle that is none.
BOOL WINAPI FreeLibrary(HMODULE module);

// Finds a resource by type and name (each an integer, or a text compared without case; "#123" means
// nothing else here). NULL when there is none. A module of NULL is the program itself.
HRSRC WINAPI FindResourceA(HMODULE module, LPCSTR name, LPCSTR type);

// The resource's size in bytes; 0 on failure.
DWORD WINAPI SizeofResource(HMODULE module, HRSRC resource);

// LoadResource, then LockResource, give the resource's bytes, which belong to the module; each NULL
// for a dead handle.
// FreeResource does nothing and answers FALSE.
HGLOBAL WINAPI LoadResource(HMODULE module, HRSRC resource);
LPVOID WINAPI LockResource(HGLOBAL resource);
BOOL WINAPI FreeResource(HGLOBAL resource);

// --- files, folders and settings ---

// The path of the running program, with links resolved; module is the program's. Returns its
// length, or `size` when it is cut to size - 1 bytes; 0 on failure.
DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR path, DWORD size);

// INVALID_FILE_ATTRIBUTES when there is nothing of that name, or it cannot be looked at; any other
// answer (here 0) says that there is something.
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu
DWORD WINAPI GetFileAttributesA(LPCSTR path);

// Both write a text and return its length; when size is too small, the size needed, with the
// terminator; 0 on failure. The temporary folder is one of this process, which only the user can
// enter; it is removed when the program ends. Its path ends with a separator.
DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR path);
DWORD WINAPI GetTempPathA(DWORD size, LPSTR path);

// Forms the name folder + the first three characters of prefix + unique in hexadecimal + ".tmp";
// no file is made and none is looked for. unique is not 0. path holds MAX_PATH bytes. Returns
// unique, or 0 when there is no such folder or the name would not fit.
UINT WINAPI GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR path);

// Reads a value of a settings file. A section is looked for without case, the first of its name
// counts, and in it the first line of the key. Spaces around a value go, then one pair of quotes.
// What is not there gives fallback, without the spaces at its end. The text is cut to size - 1
// bytes; its length is returned. Only fallback may be NULL. The file is in the ANSI code page,
// or in UTF-16 with its mark. On Linux a file that is missing in the user's configuration folder is
// looked for in the system-wide ones ($XDG_CONFIG_DIRS), then beside the program, by the same
// relative path; so are the program's settings for the empty name, which a path without room
// leaves. A value of the file beside the program that is $ORIGIN or begins with $ORIGIN/ means the
// program's folder. A relative name is that of no file.
DWORD WINAPI GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR text,
                                      DWORD size, LPCSTR file);

// --- processes ---

#define NORMAL_PRIORITY_CLASS 0x00000020u
#define STARTF_USESHOWWINDOW 0x00000001u

typedef struct _STARTUPINFOA {
    DWORD cb;
    DWORD dwFlags;
    WORD wShowWindow;
} STARTUPINFOA, *LPSTARTUPINFOA;

typedef struct _PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
} PROCESS_INFORMATION, *LPPROCESS_INFORMATION;

typedef struct _SECURITY_ATTRIBUTES *LPSECURITY_ATTRIBUTES;

// Starts a program by its path, without waiting for it. The command line is that path, which may
// hold spaces (the shortest beginning that names a program is it), a space, and the one argument.
// Only commandLine and information are looked at. Nothing is kept of the process: both handles
// are NULL. FALSE, and information as it was, when there is no such program or it cannot be
// started.
BOOL WINAPI CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES forProcess,
                           LPSECURITY_ATTRIBUTES forThread, BOOL inherit, DWORD flags,
                           LPVOID environment, LPCSTR folder, LPSTARTUPINFOA startup,
                           LPPROCESS_INFORMATION information);

// Gives back a handle that CreateProcessA made: nothing to do, TRUE for NULL.
BOOL WINAPI CloseHandle(HANDLE handle);

} // extern "C"

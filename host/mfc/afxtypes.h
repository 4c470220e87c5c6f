// The few plain types of the system's own headers that the plug-in interface speaks in.
//
// They are the types the 32-bit system declares, so a file may see both the system's headers and, after them, these;
// where that system is not, DWORD and LONG keep their 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

typedef int BOOL;
typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef unsigned int UINT;
typedef int INT;
typedef wchar_t WCHAR;
typedef WCHAR TCHAR;
#if defined(_WIN32)
typedef unsigned long DWORD;
typedef long LONG;
#else
typedef unsigned int DWORD;
typedef int LONG;
#endif
#if defined(_WIN64)
typedef long long INT_PTR;
typedef unsigned long long UINT_PTR;
typedef long long LONG_PTR;
typedef unsigned long long ULONG_PTR;
typedef ULONG_PTR DWORD_PTR;
#elif defined(_WIN32)
typedef int INT_PTR;
typedef unsigned int UINT_PTR;
typedef long LONG_PTR;
typedef unsigned long ULONG_PTR;
typedef ULONG_PTR DWORD_PTR;
#else
typedef std::intptr_t INT_PTR;
typedef std::uintptr_t UINT_PTR;
typedef std::intptr_t LONG_PTR;
typedef std::uintptr_t ULONG_PTR;
typedef std::uintptr_t DWORD_PTR;
#endif
typedef DWORD COLORREF;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;

typedef void* LPVOID;
typedef void* HANDLE;
typedef WCHAR* LPWSTR;
typedef const WCHAR* LPCWSTR;
typedef WCHAR* LPTSTR;
typedef const WCHAR* LPCTSTR;
typedef char* LPSTR;
typedef const char* LPCSTR;

typedef struct HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
typedef struct HWND__* HWND;
typedef struct HBRUSH__* HBRUSH;
typedef struct HICON__* HICON;
typedef HICON HCURSOR;
typedef struct tagMSG MSG;
typedef struct tagRECT RECT;
#if !defined(_WINDEF_)
struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
#endif

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#ifndef MAX_PATH
#define MAX_PATH 260
#endif
#ifndef WINAPI
#if defined(_WIN32)
#define WINAPI __stdcall
#else
#define WINAPI
#endif
#endif
#ifndef APIENTRY
#define APIENTRY WINAPI
#endif
#ifndef CALLBACK
#if defined(_WIN32)
#define CALLBACK __stdcall
#else
#define CALLBACK
#endif
#endif
#ifndef _T
#define _T(text) L##text
#endif
#ifndef DLL_PROCESS_ATTACH
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3
#define DLL_PROCESS_DETACH 0
#endif

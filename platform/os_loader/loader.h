#pragma once

// The operating system's library loader.

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX 1
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN 1
#endif
#include <windows.h>

#else

using BOOL = int;
using DWORD = unsigned int;
using HINSTANCE = void*;
using LPVOID = void*;
constexpr BOOL TRUE = 1;
#define WINAPI

// Why a library's load entry point is called.
constexpr DWORD DLL_PROCESS_ATTACH = 1;
constexpr DWORD DLL_PROCESS_DETACH = 0;

// Asks the system not to tell the library of threads that start and end. Non-zero on success.
BOOL WINAPI DisableThreadLibraryCalls(HINSTANCE module);

// A library's load entry point, defined by the library; non-zero on success.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);

#endif

#pragma once

// The operating system's library loader.

using LoaderModule = void*;

// Why a library's load entry point is called.
constexpr unsigned long kProcessAttach = 1;
constexpr unsigned long kProcessDetach = 0;

// Asks the system not to tell the library of threads that start and end. Non-zero on success.
int DisableThreadLibraryCalls(LoaderModule module);

// A library's load entry point, defined by the library; non-zero on success.
extern "C" int LibraryEntry(LoaderModule module, unsigned long reason, void* reserved);

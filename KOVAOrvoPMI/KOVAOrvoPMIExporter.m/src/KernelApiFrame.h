#pragma once

#include <functional>

// Runs `body`, which creates one kernel entity, inside the kernel's bulletin board and error
// context. True when the frame ended without a kernel error.
//
// After false the kernel has taken back what the body made. Throws KOVAAllocException on a kernel
// memory error, and KOVAAbortException on an access violation when the framework asks for it; in a
// frame within another frame both go on as kernel exceptions. On an interrupt the kernel's own
// exception leaves the frame. Whatever the body throws besides passes through. Bulletin board,
// logging, error mark and error context are as before in every case.
bool RunInKernelApiFrame(const std::function<void()>& body);

#pragma once

#include <functional>

class ENTITY;

// Runs `body`, which creates one kernel entity and gives it back, inside the kernel's bulletin
// board and error context. Afterwards `product` is that entity, or null when the body made none or
// the kernel, after an error, has taken it back; so too when the frame is left by an exception.
//
// Throws KOVAAllocException on a kernel memory error, and KOVAAbortException on an access violation
// when the framework asks for it; in a frame within another frame both go on as kernel exceptions.
// On an interrupt the kernel error that the frame caught, if any, leaves it as a kernel exception.
// Whatever the body throws besides passes through. Bulletin board, logging, error mark and error
// context are as before afterwards, unless the kernel's own check for pending errors, which comes
// before the body, raises one: that leaves them open.
void RunInKernelApiFrame(const std::function<ENTITY*()>& body, ENTITY*& product);

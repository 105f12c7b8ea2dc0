#include "framework_base/KOVAExceptions.h"

KOVAUnrecoverableError::~KOVAUnrecoverableError() = default;

KOVAAllocException::~KOVAAllocException() = default;
const char* KOVAAllocException::what() const noexcept { return "kernel out of memory"; }

KOVAAbortException::~KOVAAbortException() = default;
const char* KOVAAbortException::what() const noexcept { return "kernel access violation"; }

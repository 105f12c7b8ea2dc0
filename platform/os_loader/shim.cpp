// Linked into a library: calls its load entry point, as the system does elsewhere by itself.
#include "os_loader/loader.h"

namespace {

__attribute__((constructor)) void Attach() { LibraryEntry(nullptr, kProcessAttach, nullptr); }
__attribute__((destructor)) void Detach() { LibraryEntry(nullptr, kProcessDetach, nullptr); }

}  // namespace

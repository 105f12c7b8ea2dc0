// Linked into a library: calls its load entry point, as the system does elsewhere by itself.
#include "os_loader/loader.h"

namespace {

__attribute__((constructor)) void Attach() { DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr); }
__attribute__((destructor)) void Detach() { DllMain(nullptr, DLL_PROCESS_DETACH, nullptr); }

}  // namespace

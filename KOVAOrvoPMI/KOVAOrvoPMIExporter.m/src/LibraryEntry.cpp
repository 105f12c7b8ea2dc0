#include "KernelMemoryManager.h"
#include "os_loader/loader.h"

extern "C" int LibraryEntry(LoaderModule module, unsigned long reason, void* /*reserved*/) {
  if (reason == kProcessAttach) DisableThreadLibraryCalls(module);
  return 1;
}

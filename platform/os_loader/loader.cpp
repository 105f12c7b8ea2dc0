#include "os_loader/loader.h"

#include "os_loader/internals.h"

namespace loader_state {

std::atomic<long> threadCallsDisabled{0};

}  // namespace loader_state

#ifndef _WIN32

BOOL DisableThreadLibraryCalls(HINSTANCE /*module*/) {
  ++loader_state::threadCallsDisabled;
  return TRUE;
}

#endif

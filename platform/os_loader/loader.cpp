#include "os_loader/loader.h"

#include "os_loader/internals.h"

namespace loader_state {

std::atomic<long> threadCallsDisabled{0};

}  // namespace loader_state

int DisableThreadLibraryCalls(LoaderModule /*module*/) {
  ++loader_state::threadCallsDisabled;
  return 1;
}

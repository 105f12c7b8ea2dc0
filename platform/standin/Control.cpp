#include "standin/Control.h"

#include "framework_base/internals.h"
#include "orvo_kernel/errors.h"
#include "orvo_kernel/internals.h"
#include "os_loader/internals.h"

namespace standin {

Counters Count() {
  return {kernel_state::liveEntities,
          kernel_state::trackedBytes,
          kernel_state::managerStarts,
          kernel_state::context().openBoards,
          kernel_state::context().errorDepth,
          kernel_state::context().logging,
          get_error_mark().state,
          kernel_state::deletionCalls,
          kernel_state::deletionsOfDead,
          loader_state::threadCallsDisabled,
          kernel_state::lastMemoryType};
}

Fault::Fault(const kernel_state::Faults& faults) { kernel_state::faults() = faults; }
Fault::~Fault() { kernel_state::faults() = kernel_state::Faults(); }

Fault Fault::KernelCall(long n, int errorNumber, bool afterWork) {
  kernel_state::Faults faults;
  faults.failCall = n;
  faults.callError = errorNumber;
  faults.failAfterWork = afterWork;
  return Fault(faults);
}

Fault Fault::TrackedAllocation(long n) {
  kernel_state::Faults faults;
  faults.failAllocation = n;
  return Fault(faults);
}

Fault Fault::Raise(int code) {
  kernel_state::Faults faults;
  faults.raiseCode = code;
  return Fault(faults);
}

Fault Fault::RaiseTwice(int code, int again) {
  kernel_state::Faults faults;
  faults.raiseCode = code;
  faults.raiseAgainCode = again;
  return Fault(faults);
}

Fault Fault::None() { return Fault(kernel_state::Faults()); }

bool Fault::HasFired() const { return kernel_state::faults().fired; }
long Fault::Calls() const { return kernel_state::faults().calls; }
long Fault::Allocations() const { return kernel_state::faults().allocations; }
void Fault::Interrupt() { kernel_state::faults().interrupted = true; }

UseStdHash::UseStdHash(bool use) { framework_switches::useStdHash = use; }
UseStdHash::~UseStdHash() { framework_switches::useStdHash = false; }

PropagateAccessViolations::PropagateAccessViolations() {
  framework_switches::propagateAccessViolations = true;
}
PropagateAccessViolations::~PropagateAccessViolations() {
  framework_switches::propagateAccessViolations = false;
}

}  // namespace standin

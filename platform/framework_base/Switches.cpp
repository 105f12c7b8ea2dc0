#include "framework_base/internals.h"

#include "framework_base/KOVAHashOption.h"
#include "framework_base/KOVAQalOrvoDepthCounter.h"

namespace framework_switches {

std::atomic<bool> useStdHash{false};
std::atomic<bool> propagateAccessViolations{false};

}  // namespace framework_switches

namespace {

thread_local int depthCount = 0;

}  // namespace

bool KOVAHashOption::GetUseStdHash() { return framework_switches::useStdHash; }

KOVAQalOrvoDepthCounter::KOVAQalOrvoDepthCounter() { ++depthCount; }
KOVAQalOrvoDepthCounter::~KOVAQalOrvoDepthCounter() { --depthCount; }
int KOVAQalOrvoDepthCounter::GetCurrentDepthCount() { return depthCount; }
bool KOVAQalOrvoDepthCounter::ShouldPropagateAccessViolations() {
  return framework_switches::propagateAccessViolations;
}

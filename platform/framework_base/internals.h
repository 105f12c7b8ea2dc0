#pragma once

#include <atomic>

// The state behind the two framework switches. The plug-in may not use it.
namespace framework_switches {

// What KOVAHashOption answers.
extern std::atomic<bool> useStdHash;
// What KOVAQalOrvoDepthCounter answers.
extern std::atomic<bool> propagateAccessViolations;

}  // namespace framework_switches

#pragma once

#include <atomic>

// The state behind the loader. The plug-in may not use it.
namespace loader_state {

// How often a library asked to be left alone.
extern std::atomic<long> threadCallsDisabled;

}  // namespace loader_state

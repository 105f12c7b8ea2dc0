#pragma once

#include <atomic>

// The state behind the loader. No part of what the plug-in may use.
namespace loader_state {

// How often a library asked to be left alone.
extern std::atomic<long> threadCallsDisabled;

}  // namespace loader_state

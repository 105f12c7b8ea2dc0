#pragma once

// Whether allocations inside shared libraries are counted and can be failed, too.
#ifdef _WIN32
constexpr bool kSharedLibrariesToo = false;
#else
constexpr bool kSharedLibrariesToo = true;
#endif

// Calls of the global operator new by this thread since it began, but for storage aligned beyond
// the usual, which nothing here asks for. They are counted in every program that
// AllocationCounter.cpp is part of; on Windows without those of the shared libraries.
long CountAllocations();

// Lets the n-th of them from now on fail, once or with all that follow, while it lives.
class FailingAllocation {
 public:
  explicit FailingAllocation(long n, bool forGood = false);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();
  bool HasFired() const;
};

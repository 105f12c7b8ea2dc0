#pragma once

// Calls of the global operator new, in all its forms, by this thread since it began. They are
// counted in every program that AllocationCounter.cpp is part of.
long CountAllocations();

// Lets the n-th of them from now on fail, once, while it lives.
class FailingAllocation {
 public:
  explicit FailingAllocation(long n);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();
  bool HasFired() const;
};

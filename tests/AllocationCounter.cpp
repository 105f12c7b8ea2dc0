#include "AllocationCounter.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local long allocations = 0;
thread_local long failing = 0;  // the first allocation that fails; 0: none
thread_local bool othersFail = false;

// Storage of malloc's, so that sanitizers and leak checkers keep seeing it.
void* Allocate(std::size_t size) noexcept {
  ++allocations;
  if (allocations == failing || (othersFail && allocations > failing)) return nullptr;
  return std::malloc(size == 0 ? 1 : size);
}

void* OrThrow(void* storage) { return storage != nullptr ? storage : throw std::bad_alloc(); }

}  // namespace

long CountAllocations() { return allocations; }
FailingAllocation::FailingAllocation(long n, bool forGood) {
  failing = allocations + n;
  othersFail = forGood;
}
FailingAllocation::~FailingAllocation() {
  failing = 0;
  othersFail = false;
}
bool FailingAllocation::HasFired() const { return allocations >= failing; }

void* operator new(std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new[](std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }

void operator delete(void* storage) noexcept { std::free(storage); }
void operator delete[](void* storage) noexcept { std::free(storage); }
void operator delete(void* storage, std::size_t) noexcept { std::free(storage); }
void operator delete[](void* storage, std::size_t) noexcept { std::free(storage); }
void operator delete(void* storage, const std::nothrow_t&) noexcept { std::free(storage); }
void operator delete[](void* storage, const std::nothrow_t&) noexcept { std::free(storage); }

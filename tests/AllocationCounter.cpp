#include "AllocationCounter.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local long allocations = 0;
thread_local long failing = 0;  // the allocation that fails; 0: none

// Storage of malloc's, so that sanitizers and leak checkers keep seeing it.
void* Allocate(std::size_t size, std::size_t alignment = 0) noexcept {
  if (++allocations == failing) return nullptr;
  if (size == 0) size = 1;
  if (alignment <= alignof(std::max_align_t)) return std::malloc(size);
  return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* OrThrow(void* storage) { return storage != nullptr ? storage : throw std::bad_alloc(); }

}  // namespace

long CountAllocations() { return allocations; }
FailingAllocation::FailingAllocation(long n) { failing = allocations + n; }
FailingAllocation::~FailingAllocation() { failing = 0; }
bool FailingAllocation::HasFired() const { return allocations >= failing; }

void* operator new(std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new[](std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return OrThrow(Allocate(size, static_cast<std::size_t>(alignment)));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return OrThrow(Allocate(size, static_cast<std::size_t>(alignment)));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }

void operator delete(void* storage) noexcept { std::free(storage); }
void operator delete[](void* storage) noexcept { std::free(storage); }
void operator delete(void* storage, std::size_t) noexcept { std::free(storage); }
void operator delete[](void* storage, std::size_t) noexcept { std::free(storage); }
void operator delete(void* storage, std::align_val_t) noexcept { std::free(storage); }
void operator delete[](void* storage, std::align_val_t) noexcept { std::free(storage); }
void operator delete(void* storage, std::size_t, std::align_val_t) noexcept { std::free(storage); }
void operator delete[](void* storage, std::size_t, std::align_val_t) noexcept {
  std::free(storage);
}
void operator delete(void* storage, const std::nothrow_t&) noexcept { std::free(storage); }
void operator delete[](void* storage, const std::nothrow_t&) noexcept { std::free(storage); }

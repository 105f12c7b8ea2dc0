#pragma once

// Included by every source unit of the library, which so takes part in starting the kernel's memory
// manager when the library is loaded and in stopping it when it is unloaded.

#include "orvo_kernel/entity.h"

namespace {

struct KernelMemoryManager {
  KernelMemoryManager() { initialize_mmgr_system(); }
  KernelMemoryManager(const KernelMemoryManager&) = delete;
  KernelMemoryManager& operator=(const KernelMemoryManager&) = delete;
  ~KernelMemoryManager() { terminate_mmgr_system(); }
};

const KernelMemoryManager kernelMemoryManager;

}  // namespace

#include "framework_base/KOVAReferenceCount.h"

KOVAReferenceCount::~KOVAReferenceCount() = default;

void KOVAReferenceCount::RaiseReference() { references_.fetch_add(1, std::memory_order_relaxed); }

void KOVAReferenceCount::LowerReference() {
  if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

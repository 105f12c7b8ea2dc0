#pragma once

#include <vector>

#include "framework_core/KOVAIdentifier.h"

// The framework's list of identifiers.
class KOVAIdentifiers {
 public:
  // Appends a copy. Throws std::bad_alloc and leaves the list as it was.
  void add(const KOVAIdentifier& identifier) { identifiers_.push_back(identifier); }

  // Identifiers in the list.
  int count() const noexcept { return static_cast<int>(identifiers_.size()); }
  // REQUIRES: 0 <= index < count().
  const KOVAIdentifier& at(int index) const {
    return identifiers_[static_cast<std::size_t>(index)];
  }

 private:
  std::vector<KOVAIdentifier> identifiers_;
};

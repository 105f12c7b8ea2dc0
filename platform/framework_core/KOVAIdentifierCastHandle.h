#pragma once

#include <utility>

#include "framework_base/KOVAReferenceCount.h"

// How the framework views an exported object as one of another kind.
class KOVAIdentifierCast : public KOVAReferenceCount {};

// Shares a cast between identifiers; may hold none.
class KOVAIdentifierCastHandle {
 public:
  // Shares `cast`, which may be null.
  explicit KOVAIdentifierCastHandle(KOVAIdentifierCast* cast) : cast_(cast) { Raise(); }
  // Shares what the other one holds.
  KOVAIdentifierCastHandle(const KOVAIdentifierCastHandle& other) : cast_(other.cast_) { Raise(); }
  // Takes over what the other one holds.
  KOVAIdentifierCastHandle(KOVAIdentifierCastHandle&& other) noexcept
      : cast_(std::exchange(other.cast_, nullptr)) {}
  // Holds what the other one does, and lets go of its own.
  KOVAIdentifierCastHandle& operator=(KOVAIdentifierCastHandle other) noexcept {
    std::swap(cast_, other.cast_);
    return *this;
  }
  ~KOVAIdentifierCastHandle() {
    if (cast_ != nullptr) cast_->LowerReference();
  }

 private:
  void Raise() {
    if (cast_ != nullptr) cast_->RaiseReference();
  }

  KOVAIdentifierCast* cast_;
};

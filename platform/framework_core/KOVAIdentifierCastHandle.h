#pragma once

#include <utility>

#include "framework_base/KOVAReferenceCount.h"

// How the framework views an exported object as one of another kind.
class KOVAIdentifierCast : public KOVAReferenceCount {};

// Shares a cast between identifiers; may hold none.
class KOVAIdentifierCastHandle {
 public:
  explicit KOVAIdentifierCastHandle(KOVAIdentifierCast* cast) : cast_(cast) { Raise(); }
  KOVAIdentifierCastHandle(const KOVAIdentifierCastHandle& other) : cast_(other.cast_) { Raise(); }
  KOVAIdentifierCastHandle(KOVAIdentifierCastHandle&& other) noexcept
      : cast_(std::exchange(other.cast_, nullptr)) {}
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

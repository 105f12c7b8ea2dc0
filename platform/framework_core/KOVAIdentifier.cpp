#include "framework_core/KOVAIdentifier.h"

#include <cstring>

namespace {

bool SameName(const char* a, const char* b) noexcept {
  if (a == nullptr || b == nullptr) return a == b;
  return a == b || std::strcmp(a, b) == 0;
}

}  // namespace

KOVAIdentifier::~KOVAIdentifier() = default;

bool KOVAIdentifier::IsValid() const noexcept {
  return nativeObject_ != nullptr || typeName_ != nullptr || representation_ != nullptr ||
         nativeTypeName_ != nullptr;
}

bool KOVAIdentifier::operator==(const KOVAIdentifier& other) const noexcept {
  if (nativeObject_ != nullptr || other.nativeObject_ != nullptr) {
    return nativeObject_ == other.nativeObject_;
  }
  return representation_ == other.representation_ && SameName(typeName_, other.typeName_) &&
         SameName(nativeTypeName_, other.nativeTypeName_);
}

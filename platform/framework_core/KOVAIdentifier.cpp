#include "framework_core/KOVAIdentifier.h"

#include <cstring>

namespace {

bool SameName(const char* a, const char* b) noexcept {
  if (a == nullptr || b == nullptr) return a == b;
  return a == b || std::strcmp(a, b) == 0;
}

}  // namespace

bool KOVAIdentifier::SameNames(const KOVAIdentifier& other) const noexcept {
  return representation_ == other.representation_ && SameName(typeName_, other.typeName_) &&
         SameName(nativeTypeName_, other.nativeTypeName_);
}

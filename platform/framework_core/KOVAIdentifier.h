#pragma once

#include "framework_core/KOVAIdentifierCastHandle.h"

class KOVARepresentation;

// The framework's handle for one exported object. It owns nothing: the native object belongs to
// the model, the names are constants that outlive every identifier.
class KOVAIdentifier {
 public:
  // The empty identifier.
  KOVAIdentifier() : cast_(nullptr) {}
  // An identifier of these components. REQUIRES: the names outlive it.
  KOVAIdentifier(void* nativeObject, const char* typeName, KOVARepresentation* representation,
                 const char* nativeTypeName, const KOVAIdentifierCastHandle& cast)
      : nativeObject_(nativeObject),
        typeName_(typeName),
        representation_(representation),
        nativeTypeName_(nativeTypeName),
        cast_(cast) {}
  KOVAIdentifier(const KOVAIdentifier&) = default;
  KOVAIdentifier(KOVAIdentifier&&) noexcept = default;
  KOVAIdentifier& operator=(const KOVAIdentifier&) = default;
  KOVAIdentifier& operator=(KOVAIdentifier&&) noexcept = default;
  virtual ~KOVAIdentifier() = default;

  // The object in the model, or null.
  void* GetNativeObject() const noexcept { return nativeObject_; }
  // The framework's name of its kind, or null.
  const char* GetTypeName() const noexcept { return typeName_; }
  // The representation that handed it out, or null.
  KOVARepresentation* GetRepresentation() const noexcept { return representation_; }
  // The name of its class in the model, or null.
  const char* GetNativeTypeName() const noexcept { return nativeTypeName_; }

  // Names another object.
  void SetNativeObject(void* nativeObject) noexcept { nativeObject_ = nativeObject; }
  // REQUIRES: `typeName` outlives the identifier.
  void SetTypeName(const char* typeName) noexcept { typeName_ = typeName; }
  // REQUIRES: `name` outlives the identifier.
  void SetNativeTypeName(const char* name) noexcept { nativeTypeName_ = name; }

  // True unless native object, type name, representation and native type name are all absent.
  bool IsValid() const noexcept {
    return nativeObject_ != nullptr || typeName_ != nullptr || representation_ != nullptr ||
           nativeTypeName_ != nullptr;
  }

  // Same native object; when neither side has one, type name, representation and native type name
  // decide (names by content).
  bool operator==(const KOVAIdentifier& other) const noexcept {
    if (nativeObject_ != nullptr || other.nativeObject_ != nullptr) {
      return nativeObject_ == other.nativeObject_;
    }
    return SameNames(other);
  }

 private:
  bool SameNames(const KOVAIdentifier& other) const noexcept;

  void* nativeObject_ = nullptr;
  const char* typeName_ = nullptr;
  KOVARepresentation* representation_ = nullptr;
  const char* nativeTypeName_ = nullptr;
  KOVAIdentifierCastHandle cast_;
};

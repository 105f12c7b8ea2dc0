// Names and identifiers of entities.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "QueryShape.h"
#include "framework_orvo/KOVAOrvoDocument.h"
#include "orvo_kernel/api.h"

namespace {

constexpr const char* kNameAttribute = "ATTRIB_XORVO_NAME";
constexpr const char* kIdAttribute = "ATTRIB_XORVO_ID";

// The value of a narrow string attribute; null for an attribute of another kind.
const char* NarrowValue(const ATTRIB_GEN_NAME* attribute) {
  if (is_ATTRIB_GEN_STRING(attribute) != 1) return nullptr;
  return static_cast<const ATTRIB_GEN_STRING*>(attribute)->value();
}

wchar_t* NewCopy(const wchar_t* text) {
  const std::size_t length = std::wcslen(text);
  auto* copy = new wchar_t[length + 1];
  std::wmemcpy(copy, text, length + 1);
  return copy;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetPID(const KOVAIdentifier& identifier, KOVAString& pid) {
  return AnswerFromUntested<ENTITY>(identifier, [&](ENTITY& entity) {
    Ov_AttribTransfer::getID(&entity, pid);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetEntityID(ENTITY* entity, char*& id) {
  ATTRIB_GEN_NAME* attribute = nullptr;
  const outcome found = api_find_named_attribute(entity, kIdAttribute, attribute);
  id = nullptr;
  if (found.error_number() != 0) return Failure;
  const char* value = NarrowValue(attribute);
  if (value == nullptr) return Failure;
  const std::size_t size = std::strlen(value) + 1;
  id = new char[size];
  std::memcpy(id, value, size);
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationName(const KOVAIdentifier& annotation,
                                                  KOVAString& name) {
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    UseEntityName(&entity, [&](const wchar_t* text) { name = KOVAString(text); });
    return Success;
  });
}

bool KOVAOrvoPMIExporter::GetEntityNameW(ENTITY* entity, wchar_t*& name) {
  return UseEntityName(entity, [&](const wchar_t* text) { name = NewCopy(text); });
}

// CAVEAT: the outcome of the lookup matters for a narrow name alone.
template <typename Use>
bool KOVAOrvoPMIExporter::UseEntityName(ENTITY* entity, Use use) {
  ATTRIB_GEN_NAME* attribute = nullptr;
  const outcome found = api_find_named_attribute(entity, kNameAttribute, attribute);
  if (attribute == nullptr) return false;
  if (is_ATTRIB_GEN_WSTRING(attribute) != 0) {
    const wchar_t* value = static_cast<ATTRIB_GEN_WSTRING*>(attribute)->value();
    if (value == nullptr || *value == L'\0') return false;
    use(value);
    return true;
  }
  const char* value = NarrowValue(attribute);
  if (found.error_number() != 0 || value == nullptr) return false;
  // A text that can't be converted gives a count with all bits set; it becomes an empty one.
  const std::size_t room = std::mbstowcs(nullptr, value, 0) + 1;
  std::vector<wchar_t> converted(std::max<std::size_t>(room, 1));
  CopyFromMBCS(value, converted.data());
  use(converted.data());
  return true;
}

bool KOVAOrvoPMIExporter::CopyFromMBCS(const char* const source, wchar_t* const destination) {
  // A text that can't be converted gives a count with all bits set, and so a limit of 0.
  const std::size_t count = std::mbstowcs(nullptr, source, std::strlen(source) + 1);
  destination[0] = L'\0';
  return std::mbstowcs(destination, source, count + 1) != 0;
}

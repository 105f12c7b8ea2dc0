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
const char* NarrowValue(ATTRIB_GEN_NAME* attribute) {
  if (attribute == nullptr || is_ATTRIB_GEN_STRING(attribute) != 1) return nullptr;
  return static_cast<ATTRIB_GEN_STRING*>(attribute)->value();
}

// A copy of the first `length` characters, terminated, for the caller to delete[].
template <typename Character>
Character* NewCopy(const Character* text, std::size_t length) {
  auto* copy = new Character[length + 1];
  std::copy_n(text, length, copy);
  copy[length] = 0;
  return copy;
}

// Calls use(text) with the entity's name and returns true if it has one: a wide name goes to the
// caller's string where it stands, a copy less. A narrow one is converted by convert(from, to).
// CAVEAT: the outcome of the look-up matters for a narrow name only.
template <typename Convert, typename Use>
bool UseName(ENTITY* entity, Convert convert, Use use) {
  ATTRIB_GEN_NAME* attribute = nullptr;
  outcome found = api_find_named_attribute(entity, kNameAttribute, attribute);
  if (attribute == nullptr) return false;
  if (is_ATTRIB_GEN_WSTRING(attribute) != 0) {
    const wchar_t* value = static_cast<ATTRIB_GEN_WSTRING*>(attribute)->value();
    if (value == nullptr || *value == L'\0') return false;
    use(value);
    return true;
  }
  const char* value = NarrowValue(attribute);
  if (found.error_number() != 0 || value == nullptr) return false;
  // Some encodings turn one byte into several wide characters: the bytes can't be counted instead.
  const std::size_t size = std::mbstowcs(nullptr, value, 0) + 1;
  std::vector<wchar_t> converted(std::max<std::size_t>(size, 1));
  convert(value, converted.data());
  use(converted.data());
  return true;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetPID(const KOVAIdentifier& identifier, KOVAString& pid) {
  return AnswerFromObject<ENTITY>(identifier, [&](ENTITY& entity) {
    Ov_AttribTransfer::getID(&entity, pid);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetEntityID(ENTITY* entity, char*& id) {
  ATTRIB_GEN_NAME* attribute = nullptr;
  outcome found = api_find_named_attribute(entity, kIdAttribute, attribute);
  id = nullptr;
  if (found.error_number() != 0) return Failure;
  const char* value = NarrowValue(attribute);
  if (value == nullptr) return Failure;
  id = NewCopy(value, std::strlen(value));
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationName(const KOVAIdentifier& annotation,
                                                  KOVAString& name) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    UseName(
        &entity, [this](const char* from, wchar_t* to) { CopyFromMBCS(from, to); },
        [&](const wchar_t* text) { name = KOVAString(text); });
    return Success;
  });
}

bool KOVAOrvoPMIExporter::GetEntityNameW(ENTITY* entity, wchar_t*& name) {
  return UseName(
      entity, [this](const char* from, wchar_t* to) { CopyFromMBCS(from, to); },
      [&](const wchar_t* text) { name = NewCopy(text, std::wcslen(text)); });
}

// A text that can't be converted gives a count with all bits set, and so a limit of 0.
bool KOVAOrvoPMIExporter::CopyFromMBCS(const char* const source, wchar_t* const destination) {
  const std::size_t count = std::mbstowcs(nullptr, source, std::strlen(source) + 1);
  destination[0] = L'\0';
  return std::mbstowcs(destination, source, count + 1) != 0;
}

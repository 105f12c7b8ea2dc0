#include "framework_orvo/KOVAOrvoDocument.h"

#include <cstring>
#include <string>

#include "orvo_kernel/model.h"

KOVAOrvoDocument::~KOVAOrvoDocument() = default;

void KOVAOrvoEntityUtils::GetExporterIdentifier(ENTITY* entity, const char* typeName,
                                                KOVARepresentation* representation,
                                                const char* nativeTypeName,
                                                KOVAIdentifier& identifier) {
  identifier = KOVAIdentifier(entity, typeName, representation, nativeTypeName,
                              KOVAIdentifierCastHandle(nullptr));
}

namespace {

template <typename Attribute>
const Attribute* Find(const ENTITY* entity, int (*test)(const ENTITY*), const char* name) {
  for (const ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) {
    if (test(a) != 1) continue;
    const auto* found = static_cast<const Attribute*>(a);
    if (std::strcmp(found->name(), name) == 0) return found;
  }
  return nullptr;
}

}  // namespace

bool Ov_AttribTransfer::getCurrent(ENTITY* entity, bool& current) {
  const auto* mark = Find<ATTRIB_GEN_INTEGER>(entity, is_ATTRIB_GEN_INTEGER, "current");
  current = mark == nullptr || mark->value() != 0;
  return mark != nullptr;
}

bool Ov_AttribTransfer::getID(ENTITY* entity, KOVAString& id) {
  const auto* text = Find<ATTRIB_GEN_STRING>(entity, is_ATTRIB_GEN_STRING, "ATTRIB_XORVO_ID");
  if (text == nullptr || text->value() == nullptr) return false;
  // Identifiers are plain ASCII.
  const std::string narrow(text->value());
  id = KOVAString(std::wstring(narrow.begin(), narrow.end()).c_str());
  return true;
}

bool Ov_AttribTransfer::getShow(ENTITY* entity, int& show) {
  const auto* mark = Find<ATTRIB_GEN_INTEGER>(entity, is_ATTRIB_GEN_INTEGER, "show");
  if (mark == nullptr) return false;
  show = mark->value();
  return true;
}

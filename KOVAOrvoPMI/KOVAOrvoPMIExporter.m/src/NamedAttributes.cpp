#include "NamedAttributes.h"

#include "KernelMemoryManager.h"
#include "orvo_kernel/api.h"

const char* const kCalloutTypeAttribute = "QENATTRIB_COANNOT_TYPE";
const char* const kGroupTypeAttribute = "ATTRIB_XORVO_GROUP_TYPE";

namespace {

ATTRIB_GEN_NAME* Find(ENTITY* entity, const char* name) {
  ATTRIB_GEN_NAME* attribute = nullptr;
  outcome found = api_find_named_attribute(entity, name, attribute);
  return found.error_number() == 0 ? attribute : nullptr;
}

}  // namespace

bool HasNamedAttribute(ENTITY* entity, const char* name) { return Find(entity, name) != nullptr; }

bool FindInteger(ENTITY* entity, const char* name, int& value) {
  ATTRIB_GEN_NAME* attribute = Find(entity, name);
  if (attribute == nullptr || is_ATTRIB_GEN_INTEGER(attribute) != 1) return false;
  value = static_cast<ATTRIB_GEN_INTEGER*>(attribute)->value();
  return true;
}

#pragma once

// The shape that queries share, and the type tests. Included by the exporter's source files.

#include "IdentifierConventions.h"
#include "KOVAOrvoPMIExporter.h"
#include "KernelMemoryManager.h"
#include "ResultCodes.h"
#include "orvo_kernel/model.h"
#include "pmi_entities/pmi_semantics.h"

// True when the library's type test of a class answers exactly 1; the test is not asked about null.
template <typename Kind>
bool IsKind(ENTITY* entity);

#define KOVA_KIND_TEST(NAME)                            \
  template <>                                           \
  inline bool IsKind<NAME>(ENTITY * entity) {           \
    return entity != nullptr && is_##NAME(entity) == 1; \
  }
KOVA_KIND_TEST(BODY)
KOVA_KIND_TEST(FACE)
KOVA_KIND_TEST(EDGE)
KOVA_KIND_TEST(VERTEX)
KOVA_KIND_TEST(QENGROUP)
KOVA_KIND_TEST(QENCOLLECTION)
KOVA_KIND_TEST(KOVAPMI_DIMENSION)
KOVA_KIND_TEST(KOVAPMI_DATUM)
KOVA_KIND_TEST(KOVAPMI_DATUMTGT)
KOVA_KIND_TEST(KOVAPMI_DRF)
KOVA_KIND_TEST(KOVAPMI_CAPTURE)
KOVA_KIND_TEST(ATTRIB_KOVAPMI_TEXT)
KOVA_KIND_TEST(ATTRIB_KOVAPMI_FLAGNOTE)
KOVA_KIND_TEST(ATTRIB_KOVAPMI_ROUGHNESS)
KOVA_KIND_TEST(ATTRIB_KOVAPMI_DATUM)
KOVA_KIND_TEST(ATTRIB_KOVAPMI_DATUM_TARGET)
KOVA_KIND_TEST(ATTRIB_KOVAPMI_GEOM_TOL)
#undef KOVA_KIND_TEST

// The entity as a class, or null when it is of another one.
template <typename Kind>
Kind* As(ENTITY* entity) {
  return IsKind<Kind>(entity) ? static_cast<Kind*>(entity) : nullptr;
}

// What a map links an entity to, or null.
inline ENTITY* LinkedTo(ENTITY* entity, const std::map<ENTITY*, ENTITY*>& links) {
  const auto found = links.find(entity);
  return found != links.end() ? found->second : nullptr;
}

// Some operations take constant objects whose getters the libraries may not declare const.
template <typename Object>
Object& Changeable(const Object& object) {
  return const_cast<Object&>(object);
}

template <typename Object, typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFromObject(const KOVAIdentifier& identifier, Answer answer) {
  if (!initialized) return NotInitialised;
  auto* object = static_cast<Object*>(identifier.GetNativeObject());
  return object == nullptr ? Failure : answer(*object);
}

template <typename Kind, typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFrom(const KOVAIdentifier& identifier, Answer answer) {
  return AnswerFromObject<ENTITY>(identifier, [&](ENTITY& entity) {
    auto* object = As<Kind>(&entity);
    return object == nullptr ? Failure : answer(*object);
  });
}

#pragma once

// The shape that queries share, and the type tests it runs. Included by the rooms of the exporter.

#include "IdentifierConventions.h"
#include "KOVAOrvoPMIExporter.h"
#include "KernelMemoryManager.h"
#include "ResultCodes.h"
#include "orvo_kernel/model.h"
#include "pmi_entities/pmi_semantics.h"

// The library's type test of a class; only an answer of exactly 1 passes.
template <typename Kind>
bool IsKind(const ENTITY* entity);

#define KOVA_KIND_TEST(NAME)                       \
  template <>                                      \
  inline bool IsKind<NAME>(const ENTITY* entity) { \
    return is_##NAME(entity) == 1;                 \
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
template <typename Kind>
const Kind* As(const ENTITY* entity) {
  return IsKind<Kind>(entity) ? static_cast<const Kind*>(entity) : nullptr;
}

// The attribute that carries an entity, or the entity itself when none does; an entity asked for is
// a key from then on.
inline ENTITY* CarrierOf(ENTITY* entity, std::map<ENTITY*, ENTITY*>& carriers) {
  ENTITY* carrier = carriers[entity];
  return carrier != nullptr ? carrier : entity;
}

template <typename Kind, typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFromUntested(const KOVAIdentifier& identifier,
                                                   Answer answer) {
  if (!initialized) return NotInitialised;
  auto* object = static_cast<Kind*>(identifier.GetNativeObject());
  return object == nullptr ? Failure : answer(*object);
}

template <typename Kind, typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFrom(const KOVAIdentifier& identifier, Answer answer) {
  return AnswerFromUntested<ENTITY>(identifier, [&](ENTITY& entity) {
    return IsKind<Kind>(&entity) ? answer(static_cast<Kind&>(entity)) : Failure;
  });
}

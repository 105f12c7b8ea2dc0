#include "IdentifierConventions.h"

#include <cstring>

#include "KernelMemoryManager.h"
#include "framework_pmi/KOVAPMIExporter.h"

const char* const kEntityTypeName = "ENTITY";

namespace {

constexpr const char* kLeaderTypeName = "KOVAOrvoPMILeader";
constexpr const char* kDisplayInfoTypeName = "KOVAOrvoPMIDisplayInfo";

KOVAIdentifier Identifier(void* nativeObject, const char* typeName,
                          KOVARepresentation* representation, const char* nativeTypeName) {
  return KOVAIdentifier(nativeObject, typeName, representation, nativeTypeName,
                        KOVAIdentifierCastHandle(nullptr));
}

void AddTyped(void* nativeObject, const char* typeName, KOVAIdentifiers& identifiers) {
  KOVAIdentifier identifier = EmptyIdentifier();
  identifier.SetNativeObject(nativeObject);
  identifier.SetTypeName(typeName);
  identifiers.add(identifier);
}

}  // namespace

KOVAIdentifier EmptyIdentifier() { return Identifier(nullptr, nullptr, nullptr, nullptr); }

KOVAIdentifier AnnotationIdentifier(ENTITY* annotation, KOVARepresentation* exporter) {
  return Identifier(annotation, KOVAPMIExporter::KOVAPMITypeAnnotation, exporter, kEntityTypeName);
}

KOVAIdentifier ViewIdentifier(ENTITY* plane, KOVARepresentation* exporter) {
  return Identifier(plane, KOVAPMIExporter::KOVAPMITypeAnnotationView, exporter, kEntityTypeName);
}

KOVAIdentifier BareIdentifier(ENTITY* entity) {
  return Identifier(entity, nullptr, nullptr, nullptr);
}

KOVAIdentifier TextIdentifier(ENTITY* annotation) {
  return Identifier(annotation, KOVAPMIExporter::KOVAPMITypeText, nullptr, kEntityTypeName);
}

KOVAIdentifier OwnerIdentifier(ENTITY* owner, KOVARepresentation* exporter) {
  return Identifier(owner, nullptr, exporter, kEntityTypeName);
}

void AddDatumReference(void* reference, KOVAIdentifiers& identifiers) {
  AddTyped(reference, KOVAPMIExporter::KOVAPMITypeDatumRef, identifiers);
}

void AddZoneModifier(void* modifier, KOVAIdentifiers& identifiers) {
  AddTyped(modifier, KOVAPMIExporter::KOVAPMITypeZoneModifierData, identifiers);
}

void BecomeLeader(void* leader, KOVAIdentifier& identifier) {
  identifier.SetNativeObject(leader);
  identifier.SetTypeName(kLeaderTypeName);
  identifier.SetNativeTypeName(kDisplayInfoTypeName);
}

void BecomeReferenceFrame(void* frame, KOVAIdentifier& identifier) {
  identifier.SetNativeObject(frame);
  identifier.SetTypeName(KOVAPMIExporter::KOVAPMITypeDatumRef);
}

void BecomeAnnotation(ENTITY* annotation, KOVAIdentifier& identifier) {
  identifier.SetNativeObject(annotation);
  identifier.SetTypeName(KOVAPMIExporter::KOVAPMITypeAnnotation);
}

bool IsLeader(const KOVAIdentifier& identifier) {
  const char* name = identifier.GetTypeName();
  return name == kLeaderTypeName || (name != nullptr && std::strcmp(name, kLeaderTypeName) == 0);
}

// The model entities that an annotation applies to.
#include "QueryShape.h"
#include "framework_orvo/KOVAOrvoDocument.h"

KOVAResult KOVAOrvoPMIExporter::GetNumberOfEntitiesFromAnnotation(const KOVAIdentifier& annotation,
                                                                  int& count) {
  if (!initialized) return NotInitialised;
  const auto found = annotationOwnerMap.find(EntityOf(annotation));
  if (found == annotationOwnerMap.end()) return Failure;
  count = static_cast<int>(found->second.size());
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetEntityFromAnnotationAt(const KOVAIdentifier& annotation,
                                                          int index, KOVAIdentifiers& entities) {
  if (!initialized) return NotInitialised;
  const auto found = annotationOwnerMap.find(EntityOf(annotation));
  if (found == annotationOwnerMap.end()) return Failure;
  const Owners& owners = found->second;
  if (index < 0 || static_cast<std::size_t>(index) >= owners.size()) return Failure;
  ENTITY* owner = owners[static_cast<std::size_t>(index)];
  if (owner == nullptr) return Failure;

  if (!IsKind<BODY>(owner) && !IsKind<FACE>(owner) && !IsKind<EDGE>(owner) &&
      !IsKind<VERTEX>(owner)) {
    entities.add(OwnerIdentifier(owner, this));
    return Success;
  }
  // Topology is named as the model's B-rep exporter names it.
  KOVAExportRepresentation* brep = nullptr;
  if (KOVADocument* document = GetDocument()) document->GetExportRep(KOVARepType("BRep"), brep);
  KOVAIdentifier identifier = EmptyIdentifier();
  KOVAOrvoEntityUtils::GetExporterIdentifier(owner, nullptr, brep, kEntityTypeName, identifier);
  entities.add(identifier);
  return Success;
}

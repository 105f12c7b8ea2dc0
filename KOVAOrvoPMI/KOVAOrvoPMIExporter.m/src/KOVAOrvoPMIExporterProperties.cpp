// What every annotation has: kind, visibility and display properties.
#include "DisplayProperties.h"
#include "QueryShape.h"
#include "framework_orvo/KOVAOrvoDocument.h"

namespace {

// The first test that holds decides.
KOVAPMIAnnotationType TypeOf(ENTITY& entity) {
  if (IsKind<ATTRIB_KOVAPMI_TEXT>(&entity)) return AnnotationTypeText;
  if (IsKind<ATTRIB_KOVAPMI_ROUGHNESS>(&entity)) return AnnotationTypeRoughness;
  if (IsKind<ATTRIB_KOVAPMI_GEOM_TOL>(&entity)) return AnnotationTypeGeometricTolerance;
  if (IsKind<KOVAPMI_DIMENSION>(&entity)) return AnnotationTypeDimension;
  if (IsKind<ATTRIB_KOVAPMI_DATUM>(&entity)) return AnnotationTypeDatum;
  if (IsKind<KOVAPMI_DATUM>(&entity)) return AnnotationTypeDatum;
  if (IsKind<ATTRIB_KOVAPMI_DATUM_TARGET>(&entity)) return AnnotationTypeDatumTarget;
  if (IsKind<KOVAPMI_DATUMTGT>(&entity)) return AnnotationTypeDatumTarget;
  if (IsKind<ATTRIB_KOVAPMI_FLAGNOTE>(&entity)) return AnnotationTypeFlagNote;
  return AnnotationTypeUnknown;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetAnnotationType(const KOVAIdentifier& annotation,
                                                  KOVAPMIAnnotationType& type) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    type = TypeOf(entity);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::IsAnnotationHidden(const KOVAIdentifier& annotation, bool& hidden) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    int show = 1;  // an entity that says nothing is shown
    Ov_AttribTransfer::getShow(&entity, show);
    hidden = show == 0;
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDisplayInformation(ENTITY const* entity,
                                                      KOVAPMI_DISPLAY_PROPERTIES*& display) {
  if (!initialized) return NotInitialised;
  if (entity != nullptr) display = FindDisplayProperties(&Changeable(*entity));
  return display != nullptr ? Success : Failure;
}

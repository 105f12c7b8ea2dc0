// What every annotation has: kind, name, visibility, text, display, geometry, a row's frame.

#include "DisplayProperties.h"
#include "QueryShape.h"
#include "framework_orvo/KOVAOrvoDocument.h"

namespace {

// The first test that holds decides.
KOVAPMIAnnotationType TypeOf(const ENTITY& entity) {
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
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    type = TypeOf(entity);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::IsAnnotationHidden(const KOVAIdentifier& annotation, bool& hidden) {
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    int show = 1;  // an entity that says nothing is shown
    Ov_AttribTransfer::getShow(&entity, show);
    hidden = show == 0;
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationTextCount(const KOVAIdentifier& annotation,
                                                       int& count) {
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    if (!IsKind<ATTRIB_KOVAPMI_TEXT>(&entity) && !IsKind<ATTRIB_KOVAPMI_FLAGNOTE>(&entity)) {
      return Failure;
    }
    count = 1;
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationText(const KOVAIdentifier& annotation, int /*index*/,
                                                  KOVAIdentifier& text) {
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    text = TextIdentifier(&entity);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation,
                                                                int row, KOVAString& note,
                                                                KOVAIdentifier& frame) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    KOVAPMI_GEOM_TOL_ROW* found = nullptr;
    if (tolerance.get_geom_tol_row_at(row, found) != 1 || found == nullptr) return Failure;
    KOVAPMI_DRF* referenceFrame = found->GetDRF();
    if (!IsKind<KOVAPMI_DRF>(referenceFrame)) return Failure;
    note = KOVAString(referenceFrame->get_wnote());
    BecomeReferenceFrame(referenceFrame, frame);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDisplayInformation(ENTITY const* entity,
                                                      KOVAPMI_DISPLAY_PROPERTIES*& display) {
  if (!initialized) return NotInitialised;
  FindDisplayProperties(entity, display);
  return display != nullptr ? Success : Failure;
}

KOVAResult KOVAOrvoPMIExporter::GetDatumFeatureFromAnnotation(const KOVAIdentifier& annotation,
                                                              KOVAPMI_DATUM*& datum) {
  ENTITY* entity = EntityOf(annotation);
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM>(entity)) {
    if (attribute->identity(0) != ATTRIB_KOVAPMI_DATUM_TYPE) return Failure;
    entity = attribute->get_datum();
  }
  auto* found = As<KOVAPMI_DATUM>(entity);
  if (found == nullptr) return Failure;
  datum = found;
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetFromAnnotation(const KOVAIdentifier& annotation,
                                                             KOVAPMI_DATUMTGT*& target) {
  ENTITY* entity = EntityOf(annotation);
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity)) {
    if (attribute->identity(0) != ATTRIB_KOVAPMI_DATUM_TARGET_TYPE) return Failure;
    entity = attribute->get_datum_target();
  }
  auto* found = As<KOVAPMI_DATUMTGT>(entity);
  if (found == nullptr) return Failure;
  target = found;
  return Success;
}

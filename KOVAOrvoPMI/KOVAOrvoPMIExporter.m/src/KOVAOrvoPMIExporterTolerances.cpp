// Geometric tolerances: characteristic, rows, their frames, zone modifiers, notes.
#include "QueryShape.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

// The row as the tolerance gives it, or null.
KOVAPMI_GEOM_TOL_ROW* RowOf(ATTRIB_KOVAPMI_GEOM_TOL& tolerance, int row) {
  KOVAPMI_GEOM_TOL_ROW* found = nullptr;
  return tolerance.get_geom_tol_row_at(row, found) == 1 ? found : nullptr;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetToleranceInfo(const KOVAIdentifier& annotation,
                                                 KOVAPMIToleranceType& type, bool& allAround) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    type = KOVAOrvoPMIEnumUtils::ToEnum(tolerance.get_tolerance_type());
    allAround = tolerance.get_all_around() == 1;
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetToleranceRowCount(const KOVAIdentifier& annotation, int& count) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    count = tolerance.get_geom_tol_row_count();
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetToleranceRowInfo(const KOVAIdentifier& annotation, int row,
                                                    KOVAPMIToleranceValueType& valueType,
                                                    double& magnitude, double& refinement,
                                                    double& rateUnit1, double& rateUnit2) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    KOVAPMI_GEOM_TOL_ROW* found = RowOf(tolerance, row);
    if (found == nullptr) return Failure;
    valueType = KOVAOrvoPMIEnumUtils::ToEnum(found->GetModDiaType());
    magnitude = found->GetToleranceMagnitude();
    refinement = found->GetRefinementTol();
    rateUnit1 = found->GetRateUnit1();
    rateUnit2 = found->GetRateUnit2();
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationToleranceModifiers(const KOVAIdentifier& annotation,
                                                                int row,
                                                                KOVAIdentifiers& modifiers) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    KOVAPMI_GEOM_TOL_ROW* found = RowOf(tolerance, row);
    if (found == nullptr) return Failure;
    KOVAResult result = Failure;
    const int count = found->GetZoneModifierCount();
    for (int i = 0; i < count; ++i) {
      AddZoneModifier(found->GetZoneModifierAt(i), modifiers);
      result = Success;
    }
    return result;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetZoneModifierData(const KOVAIdentifier& modifier,
                                                    KOVAPMIToleranceModifier& type,
                                                    bool& hasMagnitude, double& magnitude) {
  return AnswerFromObject<KOVAPMI_ZONE_MODIFIER>(modifier, [&](KOVAPMI_ZONE_MODIFIER& found) {
    type = KOVAOrvoPMIEnumUtils::ToEnum(found.GetZoneModifierType());
    hasMagnitude = found.GetZoneModifierMagnitude(magnitude);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation,
                                                                int row, KOVAString& note,
                                                                KOVAIdentifier& frame) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    KOVAPMI_GEOM_TOL_ROW* found = RowOf(tolerance, row);
    auto* referenceFrame = found != nullptr ? As<KOVAPMI_DRF>(found->GetDRF()) : nullptr;
    if (referenceFrame == nullptr) return Failure;
    note = KOVAString(referenceFrame->get_wnote());
    BecomeReferenceFrame(referenceFrame, frame);
    return Success;
  });
}

// The six notes differ in the getter only.
template <typename Text>
KOVAResult KOVAOrvoPMIExporter::GetToleranceNote(const KOVAIdentifier& annotation,
                                                 KOVAString& output, Text text) {
  return AnswerFrom<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, [&](ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    KOVAPMI_NOTE* note = tolerance.GetPMINote();
    if (note == nullptr) return Failure;
    output = KOVAString(text(*note));
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetBeforeToleranceNote(const KOVAIdentifier& annotation,
                                                       KOVAString& note) {
  return GetToleranceNote(annotation, note, [](KOVAPMI_NOTE& n) { return n.GetBeforeNote(); });
}
KOVAResult KOVAOrvoPMIExporter::GetAfterToleranceNote(const KOVAIdentifier& annotation,
                                                      KOVAString& note) {
  return GetToleranceNote(annotation, note, [](KOVAPMI_NOTE& n) { return n.GetAfterNote(); });
}
KOVAResult KOVAOrvoPMIExporter::GetUpperToleranceNote(const KOVAIdentifier& annotation,
                                                      KOVAString& note) {
  return GetToleranceNote(annotation, note, [](KOVAPMI_NOTE& n) { return n.GetUpperNote(); });
}
KOVAResult KOVAOrvoPMIExporter::GetLowerToleranceNote(const KOVAIdentifier& annotation,
                                                      KOVAString& note) {
  return GetToleranceNote(annotation, note, [](KOVAPMI_NOTE& n) { return n.GetLowerNote(); });
}
KOVAResult KOVAOrvoPMIExporter::GetPrefixToleranceNote(const KOVAIdentifier& annotation,
                                                       KOVAString& note) {
  return GetToleranceNote(annotation, note, [](KOVAPMI_NOTE& n) { return n.GetPrefixNote(); });
}
KOVAResult KOVAOrvoPMIExporter::GetSuffixToleranceNote(const KOVAIdentifier& annotation,
                                                       KOVAString& note) {
  return GetToleranceNote(annotation, note, [](KOVAPMI_NOTE& n) { return n.GetSuffixNote(); });
}

// Datums and datum targets.
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

void CopyCoordinates(const APOINT* point, double* output) {
  if (point == nullptr) return;
  const QENposition& coordinates = point->coordinates();
  output[0] = coordinates.x();
  output[1] = coordinates.y();
  output[2] = coordinates.z();
}

}  // namespace

// CAVEAT: a datum of a derived class resolves, and is then not answered from: success, and nothing
// written.
template <typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFromDatum(const KOVAIdentifier& identifier, Answer answer) {
  if (!initialized) return NotInitialised;
  KOVAPMI_DATUM* datum = nullptr;
  const KOVAResult result = GetDatumFeatureFromAnnotation(identifier, datum);
  if (!result.IsSuccess() || datum->identity(0) != KOVAPMI_DATUM_TYPE) return result;
  return answer(*datum);
}

// The same for a datum target.
template <typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFromDatumTarget(const KOVAIdentifier& identifier,
                                                      Answer answer) {
  if (!initialized) return NotInitialised;
  KOVAPMI_DATUMTGT* target = nullptr;
  const KOVAResult result = GetDatumTargetFromAnnotation(identifier, target);
  if (!result.IsSuccess() || target->identity(0) != KOVAPMI_DATUMTGT_TYPE) return result;
  return answer(*target);
}

KOVAResult KOVAOrvoPMIExporter::GetDatumLabel(const KOVAIdentifier& datum, KOVAString& label) {
  return AnswerFromDatum(datum, [&](KOVAPMI_DATUM& found) {
    label = KOVAString(found.get_wlabel());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetCount(const KOVAIdentifier& datum,
                                                    unsigned int& count) {
  return AnswerFromDatum(datum, [&](KOVAPMI_DATUM& found) {
    count = static_cast<unsigned int>(found.get_datumtgt_count());
    return Success;
  });
}

// Remembers which annotation the target was reached from and what owns the target's geometry.
KOVAResult KOVAOrvoPMIExporter::GetDatumTargetAt(const KOVAIdentifier& datum, unsigned int& index,
                                                 KOVAIdentifier& target) {
  return AnswerFromDatum(datum, [&](KOVAPMI_DATUM& found) {
    KOVAResult result = Success;
    if (index >= static_cast<unsigned int>(found.get_datumtgt_count())) return result;
    KOVAPMI_DATUMTGT* handedOut = found.get_datumtgt_at(static_cast<int>(index));
    if (handedOut == nullptr) return result;
    datumTargetDatumMap[handedOut] = EntityOf(datum);
    if (ENTITY* geometry = handedOut->get_geometry()) {
      Owners owners;
      result &= GetOwnerList(geometry, owners);
      annotationOwnerMap[handedOut] = std::move(owners);
    }
    BecomeAnnotation(CarrierOf(handedOut, datumTargetAnnotationMap), target);
    return result;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetLabel(const KOVAIdentifier& target,
                                                    KOVAString& label) {
  return AnswerFromDatumTarget(target, [&](KOVAPMI_DATUMTGT& found) {
    label = KOVAString(found.get_wname());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetInfo(const KOVAIdentifier& target,
                                                   KOVAPMIDatumTargetType& type, bool& /*movable*/,
                                                   KOVAString& /*size*/, KOVAString& note,
                                                   double* const position1,
                                                   double* const position2) {
  return AnswerFromDatumTarget(target, [&](KOVAPMI_DATUMTGT& found) {
    type = KOVAOrvoPMIEnumUtils::ToEnum(found.get_datum_target_type());
    note = KOVAString(found.get_wnote());
    CopyCoordinates(found.get_position1(), position1);
    CopyCoordinates(found.get_position2(), position2);
    return Success;
  });
}

// Datums and datum targets.
#include <utility>

#include "Coordinates.h"
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

// The datum or target that an identifier names, directly or by the attribute that carries it, which
// has to be exactly of its class.
template <typename Attribute, typename Object, typename Carried>
KOVAResult Resolve(const KOVAIdentifier& identifier, int attributeType, Carried carried,
                   Object*& object) {
  ENTITY* entity = EntityOf(identifier);
  if (auto* attribute = As<Attribute>(entity)) {
    if (attribute->identity(0) != attributeType) return Failure;
    entity = carried(*attribute);
  }
  auto* found = As<Object>(entity);
  if (found == nullptr) return Failure;
  object = found;
  return Success;
}

bool IsExact(KOVAPMI_DATUM& datum) { return datum.identity(0) == KOVAPMI_DATUM_TYPE; }
bool IsExact(KOVAPMI_DATUMTGT& target) { return target.identity(0) == KOVAPMI_DATUMTGT_TYPE; }

void CopyPoint(APOINT* point, double* output) {
  if (point != nullptr) CopyCoordinates(point->coordinates(), output);
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetDatumFeatureFromAnnotation(const KOVAIdentifier& annotation,
                                                              KOVAPMI_DATUM*& datum) {
  return Resolve<ATTRIB_KOVAPMI_DATUM>(
      annotation, ATTRIB_KOVAPMI_DATUM_TYPE,
      [](ATTRIB_KOVAPMI_DATUM& attribute) { return attribute.get_datum(); }, datum);
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetFromAnnotation(const KOVAIdentifier& annotation,
                                                             KOVAPMI_DATUMTGT*& target) {
  return Resolve<ATTRIB_KOVAPMI_DATUM_TARGET>(
      annotation, ATTRIB_KOVAPMI_DATUM_TARGET_TYPE,
      [](ATTRIB_KOVAPMI_DATUM_TARGET& attribute) { return attribute.get_datum_target(); }, target);
}

// CAVEAT: an object of a derived class resolves, and is then not answered from: success, and
// nothing written.
template <typename Object, typename Answer>
KOVAResult KOVAOrvoPMIExporter::AnswerFromDatum(
    const KOVAIdentifier& identifier,
    KOVAResult (KOVAOrvoPMIExporter::*resolve)(const KOVAIdentifier&, Object*&), Answer answer) {
  if (!initialized) return NotInitialised;
  Object* object = nullptr;
  const KOVAResult result = (this->*resolve)(identifier, object);
  if (object == nullptr || !IsExact(*object)) return result;
  return answer(*object);
}

KOVAResult KOVAOrvoPMIExporter::GetDatumLabel(const KOVAIdentifier& datum, KOVAString& label) {
  return AnswerFromDatum(datum, &KOVAOrvoPMIExporter::GetDatumFeatureFromAnnotation,
                         [&](KOVAPMI_DATUM& found) {
                           label = KOVAString(found.get_wlabel());
                           return Success;
                         });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetCount(const KOVAIdentifier& datum,
                                                    unsigned int& count) {
  return AnswerFromDatum(datum, &KOVAOrvoPMIExporter::GetDatumFeatureFromAnnotation,
                         [&](KOVAPMI_DATUM& found) {
                           count = static_cast<unsigned int>(found.get_datumtgt_count());
                           return Success;
                         });
}

// Remembers which annotation the target was reached from and what owns the target's geometry.
KOVAResult KOVAOrvoPMIExporter::GetDatumTargetAt(const KOVAIdentifier& datum, unsigned int& index,
                                                 KOVAIdentifier& target) {
  return AnswerFromDatum(
      datum, &KOVAOrvoPMIExporter::GetDatumFeatureFromAnnotation, [&](KOVAPMI_DATUM& found) {
        if (index >= static_cast<unsigned int>(found.get_datumtgt_count())) return Success;
        KOVAPMI_DATUMTGT* handedOut = found.get_datumtgt_at(static_cast<int>(index));
        if (handedOut == nullptr) return Success;
        KOVAResult result = Success;
        datumTargetDatumMap[handedOut] = EntityOf(datum);
        if (ENTITY* geometry = handedOut->get_geometry()) {
          Owners owners;
          result &= GetOwnerList(geometry, owners);
          annotationOwnerMap[handedOut] = std::move(owners);
        }
        ENTITY* carrier = LinkedTo(handedOut, datumTargetAnnotationMap);
        BecomeAnnotation(carrier != nullptr ? carrier : handedOut, target);
        return result;
      });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetLabel(const KOVAIdentifier& target,
                                                    KOVAString& label) {
  return AnswerFromDatum(target, &KOVAOrvoPMIExporter::GetDatumTargetFromAnnotation,
                         [&](KOVAPMI_DATUMTGT& found) {
                           label = KOVAString(found.get_wname());
                           return Success;
                         });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumTargetInfo(const KOVAIdentifier& target,
                                                   KOVAPMIDatumTargetType& type,
                                                   bool& /*unansweredFlag*/,
                                                   KOVAString& /*unansweredText*/, KOVAString& note,
                                                   double* const position1,
                                                   double* const position2) {
  return AnswerFromDatum(target, &KOVAOrvoPMIExporter::GetDatumTargetFromAnnotation,
                         [&](KOVAPMI_DATUMTGT& found) {
                           KOVAString noteCopy(found.get_wnote());
                           type = KOVAOrvoPMIEnumUtils::ToEnum(found.get_datum_target_type());
                           note = std::move(noteCopy);
                           CopyPoint(found.get_position1(), position1);
                           CopyPoint(found.get_position2(), position2);
                           return Success;
                         });
}

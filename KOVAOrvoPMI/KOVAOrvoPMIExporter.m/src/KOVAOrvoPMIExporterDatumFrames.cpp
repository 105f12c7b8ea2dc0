// Datum reference frames: references, their labels, their datums with modifiers.
#include "QueryShape.h"

KOVAResult KOVAOrvoPMIExporter::GetDatumReferences(const KOVAIdentifier& frame,
                                                   KOVAIdentifiers& references) {
  return AnswerFrom<KOVAPMI_DRF>(frame, [&](KOVAPMI_DRF& found) {
    const int count = found.get_dref_count();
    for (int i = 0; i < count; ++i) {
      if (KOVAPMI_DREF* reference = found.get_dref_at(i)) AddDatumReference(reference, references);
    }
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumReferenceLabel(const KOVAIdentifier& reference,
                                                       KOVAString& label) {
  return AnswerFromObject<KOVAPMI_DREF>(reference, [&](KOVAPMI_DREF& found) {
    label = KOVAString(found.get_wnote());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumReferenceDatumCount(const KOVAIdentifier& reference,
                                                            int& count) {
  return AnswerFromObject<KOVAPMI_DREF>(reference, [&](KOVAPMI_DREF& found) {
    count = found.GetModifiedDatumCount();
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDatumAt(const KOVAIdentifier& reference, int index,
                                           KOVAIdentifier& datum, KOVAIdentifier& /*unanswered*/,
                                           KOVAIdentifiers& modifiers) {
  return AnswerFromObject<KOVAPMI_DREF>(reference, [&](KOVAPMI_DREF& found) {
    KOVAPMI_MODIFIED_DATUM* modified = nullptr;
    if (found.GetDatumAt(index, modified) != 1 || modified == nullptr) return Failure;
    if (KOVAPMI_DATUM* named = modified->GetDatum()) {
      ENTITY* carrier = LinkedTo(named, datumAnnotationMap);
      BecomeAnnotation(carrier != nullptr ? carrier : named, datum);
    }
    const int count = modified->GetModifierCount();
    for (int i = 0; i < count; ++i) AddZoneModifier(modified->GetZoneModifierAt(i), modifiers);
    return Success;
  });
}

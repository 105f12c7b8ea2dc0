// Surface texture.
#include "QueryShape.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

KOVAResult KOVAOrvoPMIExporter::GetRoughnessObtention(const KOVAIdentifier& annotation,
                                                      KOVAPMIRoughnessObtentionType& obtention) {
  return AnswerFrom<ATTRIB_KOVAPMI_ROUGHNESS>(annotation, [&](ATTRIB_KOVAPMI_ROUGHNESS& found) {
    obtention = KOVAOrvoPMIEnumUtils::ToEnum(found.get_obtention_type());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetRoughnessApplicability(
    const KOVAIdentifier& annotation, KOVAPMIRoughnessApplicabilityType& applicability) {
  return AnswerFrom<ATTRIB_KOVAPMI_ROUGHNESS>(annotation, [&](ATTRIB_KOVAPMI_ROUGHNESS& found) {
    applicability = KOVAOrvoPMIEnumUtils::ToEnum(found.get_applicability_type());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetRoughnessFieldCount(const KOVAIdentifier& annotation,
                                                       unsigned int& count) {
  return AnswerFrom<ATTRIB_KOVAPMI_ROUGHNESS>(annotation, [&](ATTRIB_KOVAPMI_ROUGHNESS& found) {
    count = static_cast<unsigned int>(found.get_field_count());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetRoughnessFieldAt(const KOVAIdentifier& annotation,
                                                    unsigned int index, KOVAString& field) {
  return AnswerFrom<ATTRIB_KOVAPMI_ROUGHNESS>(annotation, [&](ATTRIB_KOVAPMI_ROUGHNESS& found) {
    if (index >= static_cast<unsigned int>(found.get_field_count())) return Failure;
    field = KOVAString(found.get_wfield_at(static_cast<int>(index)));
    return Success;
  });
}

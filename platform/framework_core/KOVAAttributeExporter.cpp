#include "framework_core/KOVAAttributeExporter.h"

KOVAAttributeExporter::~KOVAAttributeExporter() = default;
KOVAQALAttributeExporter::~KOVAQALAttributeExporter() = default;

KOVAResult KOVAQALAttributeExporter::GetCurrentState(const KOVAIdentifier& /*identifier*/,
                                                     bool& /*current*/) const {
  return KOVAResult(0x1000005);
}

#include "framework_core/KOVARepresentation.h"

namespace {

constexpr long kNotImplemented = 0x1000005;

}  // namespace

KOVADocument::~KOVADocument() = default;
KOVARepresentation::~KOVARepresentation() = default;
KOVAExportRepresentation::~KOVAExportRepresentation() = default;

KOVAResult KOVAExportRepresentation::GetAttributeExporter(KOVAAttributeExporter*& /*exporter*/) {
  return KOVAResult(kNotImplemented);
}

KOVAResult KOVAExportRepresentation::GetPID(const KOVAIdentifier& /*identifier*/,
                                            KOVAString& /*pid*/) {
  return KOVAResult(kNotImplemented);
}

KOVAResult KOVAExportRepresentation::DoPreProcess() {
  SetPreProcessed();
  return KOVAResult(0);
}

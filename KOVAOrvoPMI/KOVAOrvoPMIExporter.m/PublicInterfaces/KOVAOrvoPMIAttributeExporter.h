#pragma once

#include "KOVAOrvoPMIExporterExport.h"
#include "framework_core/KOVAAttributeExporter.h"

// Attributes of single objects: all as the framework answers them, except the current state.
//
//   KOVAAttributeExporter* attributes = nullptr;
//   bool current = false;
//   if (exporter->GetAttributeExporter(attributes).IsSuccess()) {
//     attributes->GetCurrentState(annotation, current);
//   }
class KOVA_ORVO_PMI_EXPORT KOVAOrvoPMIAttributeExporter : public KOVAQALAttributeExporter {
 public:
  KOVAOrvoPMIAttributeExporter();
  // One more of the same; there is nothing to copy.
  KOVAOrvoPMIAttributeExporter(const KOVAOrvoPMIAttributeExporter& other);
  // Copies nothing.
  KOVAOrvoPMIAttributeExporter& operator=(const KOVAOrvoPMIAttributeExporter& other);
  ~KOVAOrvoPMIAttributeExporter() override;

  // Sets `current` to true if the identifier's entity is current. An identifier without a native
  // object fails with 0x1000001. CAVEAT: `current` is false after a failure.
  KOVAResult GetCurrentState(const KOVAIdentifier& identifier, bool& current) const override;
};

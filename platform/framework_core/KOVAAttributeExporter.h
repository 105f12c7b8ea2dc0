#pragma once

#include "framework_base/KOVAResult.h"
#include "framework_core/KOVAIdentifier.h"

// Answers the framework's questions about attributes of single objects.
class KOVAAttributeExporter {
 public:
  KOVAAttributeExporter() = default;
  KOVAAttributeExporter(const KOVAAttributeExporter&) = default;
  KOVAAttributeExporter& operator=(const KOVAAttributeExporter&) = default;
  virtual ~KOVAAttributeExporter();

  // Writes whether the object is current (in force, not suppressed).
  virtual KOVAResult GetCurrentState(const KOVAIdentifier& identifier, bool& current) const = 0;
};

// The framework's defaults.
class KOVAQALAttributeExporter : public KOVAAttributeExporter {
 public:
  KOVAQALAttributeExporter() = default;
  KOVAQALAttributeExporter(const KOVAQALAttributeExporter&) = default;
  KOVAQALAttributeExporter& operator=(const KOVAQALAttributeExporter&) = default;
  ~KOVAQALAttributeExporter() override;

  // DEFAULT: 0x1000005, output untouched.
  KOVAResult GetCurrentState(const KOVAIdentifier& identifier, bool& current) const override;
};

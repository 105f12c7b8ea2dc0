// The older forms of queries, none of which is answered.
#include "QueryShape.h"

KOVAResult KOVAOrvoPMIExporter::IsDrivingDimension(const KOVAIdentifier& /*annotation*/,
                                                   bool& /*driving*/) {
  return NotImplemented;
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionFakeValue(const KOVAIdentifier& /*annotation*/,
                                                      int& /*kind*/, KOVAString& /*value*/) {
  return NotImplemented;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationToleranceModifierCount(
    const KOVAIdentifier& /*annotation*/, int& /*count*/, bool /*composite*/) {
  return NotImplemented;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationToleranceModifier(
    const KOVAIdentifier& /*annotation*/, int /*index*/, KOVAPMIToleranceModifier& /*modifier*/) {
  return NotImplemented;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationAssociatedRefFrame(
    const KOVAIdentifier& /*annotation*/, KOVAString& /*note*/, KOVAIdentifier& /*frame*/,
    bool /*composite*/) {
  return NotImplemented;
}

KOVAResult KOVAOrvoPMIExporter::GetToleranceInfo(
    const KOVAIdentifier& /*annotation*/, KOVAPMIToleranceType& /*type*/,
    KOVAPMIToleranceValueType& /*valueType*/, double& /*magnitude*/, double& /*refinement*/,
    double& /*rateUnit1*/, double& /*rateUnit2*/, double& /*projected*/, double& /*maximum*/,
    bool& /*allAround*/, KOVAString& /*note*/, bool& /*composite*/) {
  return NotImplemented;
}

KOVAResult KOVAOrvoPMIExporter::GetCompositeToleranceInfo(const KOVAIdentifier& /*annotation*/,
                                                          KOVAPMIToleranceValueType& /*valueType*/,
                                                          double& /*magnitude*/,
                                                          double& /*refinement*/,
                                                          double& /*rateUnit*/) {
  return NotImplemented;
}

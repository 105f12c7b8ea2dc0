#include "framework_pmi/KOVADefaultPMIExporter.h"

const char* const KOVAPMIExporter::KOVAPMITypeAnnotation = "Annotation";
const char* const KOVAPMIExporter::KOVAPMITypeAnnotationView = "AnnotationView";
const char* const KOVAPMIExporter::KOVAPMITypeText = "Text";
const char* const KOVAPMIExporter::KOVAPMITypeDatumRef = "DatumRef";
const char* const KOVAPMIExporter::KOVAPMITypeZoneModifierData = "ZoneModifierData";

KOVAPMIExporter::~KOVAPMIExporter() = default;
KOVAPMIExporterExtended::~KOVAPMIExporterExtended() = default;
KOVADefaultPMIExporter::~KOVADefaultPMIExporter() = default;

namespace {

constexpr long kNotImplemented = 0x1000005;

}  // namespace

KOVAResult KOVADefaultPMIExporter::GetAnnotationSetCount(int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationSet(int /*index*/, KOVAIdentifier& /*set*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationViewCount(const KOVAIdentifier& /*set*/,
                                                          int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationView(const KOVAIdentifier& /*set*/, int /*index*/,
                                                     KOVAIdentifier& /*view*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCalloutAnnotationCount(KOVAIdentifier /*annotation*/,
                                                             int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCalloutAnnotationAt(const KOVAIdentifier& /*annotation*/,
                                                          int /*index*/,
                                                          KOVAIdentifier& /*callout*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetViewCoordinateSystem(const KOVAIdentifier& /*view*/,
                                                           float* /*frame*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationPositionInView(const KOVAIdentifier& /*annotation*/,
                                                               float* /*position*/,
                                                               KOVAPMIOrientation& /*orientation*/,
                                                               float& /*angle*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationZDepth(const KOVAIdentifier& /*annotation*/,
                                                       float& /*depth*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetViewAnnotationCount(const KOVAIdentifier& /*view*/,
                                                          int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetViewAnnotation(const KOVAIdentifier& /*view*/, int /*index*/,
                                                     KOVAIdentifier& /*annotation*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationName(const KOVAIdentifier& /*annotation*/,
                                                     KOVAString& /*name*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationType(const KOVAIdentifier& /*annotation*/,
                                                     KOVAPMIAnnotationType& /*type*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::IsAnnotationHidden(const KOVAIdentifier& /*annotation*/,
                                                      bool& /*hidden*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationLeaderCount(const KOVAIdentifier& /*annotation*/,
                                                            int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationLeader(const KOVAIdentifier& /*annotation*/,
                                                       int /*index*/, KOVAIdentifier& /*leader*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetLeaderPointCount(const KOVAIdentifier& /*leader*/,
                                                       int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetLeader3DPoint(const KOVAIdentifier& /*leader*/, int /*index*/,
                                                    double* /*point*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationTextCount(const KOVAIdentifier& /*annotation*/,
                                                          int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationText(const KOVAIdentifier& /*annotation*/,
                                                     int /*index*/, KOVAIdentifier& /*text*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetNumberOfEntitiesFromAnnotation(
    const KOVAIdentifier& /*annotation*/, int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetEntityFromAnnotationAt(const KOVAIdentifier& /*annotation*/,
                                                             int /*index*/,
                                                             KOVAIdentifiers& /*entities*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionType(const KOVAIdentifier& /*annotation*/,
                                                    KOVAPMIDimensionType& /*type*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionMainType(const KOVAIdentifier& /*annotation*/,
                                                        KOVAPMIDimensionMainType& /*type*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCalloutFeatureAnnotationProperties(
    const KOVAIdentifier& /*annotation*/, KOVAPMICalloutFeatureAnnotationType& /*type*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionExtensionLines(const KOVAIdentifier& /*annotation*/,
                                                              float* /*first*/, float* /*second*/,
                                                              float* /*third*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionLine(const KOVAIdentifier& /*annotation*/,
                                                    KOVAPMIArrowSymbol& /*firstArrow*/,
                                                    float* /*firstPoint*/,
                                                    KOVAPMIArrowSymbol& /*secondArrow*/,
                                                    float* /*secondPoint*/, bool& /*hasThirdPoint*/,
                                                    float* /*thirdPoint*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionValue(const KOVAIdentifier& /*annotation*/,
                                                     double& /*value*/, KOVAPMIUnit& /*unit*/,
                                                     double& /*precision*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionTolerance(const KOVAIdentifier& /*annotation*/,
                                                         double& /*lower*/, double& /*upper*/,
                                                         double& /*precision*/,
                                                         bool& /*hasTolerance*/,
                                                         KOVAString& /*upperText*/,
                                                         KOVAString& /*lowerText*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCoordDimensionValue(const KOVAIdentifier& /*annotation*/,
                                                          int& /*coordinate*/, double& /*value*/,
                                                          double& /*upper*/, double& /*lower*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionTexts(const KOVAIdentifier& /*annotation*/,
                                                     KOVAString& /*prefix*/, KOVAString& /*suffix*/,
                                                     KOVAString& /*before*/, KOVAString& /*after*/,
                                                     KOVAString& /*upper*/, KOVAString& /*lower*/,
                                                     KOVAString& /*holeCallout*/,
                                                     KOVAString& /*below*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetTextString(const KOVAIdentifier& /*text*/,
                                                 KOVAString& /*string*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetTextFont(const KOVAIdentifier& /*text*/,
                                               KOVAPMIFont& /*font*/, KOVAString& /*fontName*/,
                                               bool& /*fixedPitch*/, float& /*height*/,
                                               bool& /*bold*/, bool& /*italic*/,
                                               bool& /*underline*/, bool& /*strikeThrough*/,
                                               bool& /*overline*/, float& /*ratio*/,
                                               float& /*slant*/, double* const /*colour*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationToleranceModifiers(
    const KOVAIdentifier& /*annotation*/, int /*row*/, KOVAIdentifiers& /*modifiers*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationAssociatedRefFrame(
    const KOVAIdentifier& /*annotation*/, int /*row*/, KOVAString& /*note*/,
    KOVAIdentifier& /*frame*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumReferences(const KOVAIdentifier& /*frame*/,
                                                      KOVAIdentifiers& /*references*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumReferenceLabel(const KOVAIdentifier& /*reference*/,
                                                          KOVAString& /*label*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumReferenceDatumCount(const KOVAIdentifier& /*reference*/,
                                                               int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumAt(const KOVAIdentifier& /*reference*/, int /*index*/,
                                              KOVAIdentifier& /*datum*/, KOVAIdentifier& /*owner*/,
                                              KOVAIdentifiers& /*modifiers*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumAt(const KOVAIdentifier& /*reference*/, int /*index*/,
                                              KOVAIdentifier& /*datum*/,
                                              KOVAPMIToleranceModifier& /*modifier*/,
                                              KOVAIdentifier& /*owner*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetToleranceInfo(const KOVAIdentifier& /*annotation*/,
                                                    KOVAPMIToleranceType& /*type*/,
                                                    bool& /*allAround*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetToleranceInfo(const KOVAIdentifier& /*annotation*/,
                                                    KOVAPMIToleranceType& /*type*/,
                                                    KOVAPMIToleranceValueType& /*valueType*/,
                                                    double& /*magnitude*/, double& /*refinement*/,
                                                    double& /*rateUnit1*/, double& /*rateUnit2*/,
                                                    double& /*projected*/, double& /*maximum*/,
                                                    bool& /*allAround*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetToleranceRowInfo(
    const KOVAIdentifier& /*annotation*/, int /*row*/, KOVAPMIToleranceValueType& /*valueType*/,
    double& /*magnitude*/, double& /*refinement*/, double& /*rateUnit1*/, double& /*rateUnit2*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetToleranceRowCount(const KOVAIdentifier& /*annotation*/,
                                                        int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetZoneModifierData(const KOVAIdentifier& /*modifier*/,
                                                       KOVAPMIToleranceModifier& /*type*/,
                                                       bool& /*hasMagnitude*/,
                                                       double& /*magnitude*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetBeforeToleranceNote(const KOVAIdentifier& /*annotation*/,
                                                          KOVAString& /*note*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAfterToleranceNote(const KOVAIdentifier& /*annotation*/,
                                                         KOVAString& /*note*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetUpperToleranceNote(const KOVAIdentifier& /*annotation*/,
                                                         KOVAString& /*note*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetLowerToleranceNote(const KOVAIdentifier& /*annotation*/,
                                                         KOVAString& /*note*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetPrefixToleranceNote(const KOVAIdentifier& /*annotation*/,
                                                          KOVAString& /*note*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetSuffixToleranceNote(const KOVAIdentifier& /*annotation*/,
                                                          KOVAString& /*note*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumLabel(const KOVAIdentifier& /*datum*/,
                                                 KOVAString& /*label*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumTargetCount(const KOVAIdentifier& /*datum*/,
                                                       unsigned int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumTargetAt(const KOVAIdentifier& /*datum*/,
                                                    unsigned int& /*index*/,
                                                    KOVAIdentifier& /*target*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumTargetLabel(const KOVAIdentifier& /*target*/,
                                                       KOVAString& /*label*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDatumTargetInfo(const KOVAIdentifier& /*target*/,
                                                      KOVAPMIDatumTargetType& /*type*/,
                                                      bool& /*movable*/, KOVAString& /*size*/,
                                                      KOVAString& /*note*/,
                                                      double* const /*position1*/,
                                                      double* const /*position2*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetRoughnessObtention(
    const KOVAIdentifier& /*annotation*/, KOVAPMIRoughnessObtentionType& /*obtention*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetRoughnessApplicability(
    const KOVAIdentifier& /*annotation*/, KOVAPMIRoughnessApplicabilityType& /*applicability*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetRoughnessFieldCount(const KOVAIdentifier& /*annotation*/,
                                                          unsigned int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetRoughnessFieldAt(const KOVAIdentifier& /*annotation*/,
                                                       unsigned int /*index*/,
                                                       KOVAString& /*field*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCaptureCount(const KOVAIdentifier& /*set*/,
                                                   unsigned int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCapture(const KOVAIdentifier& /*set*/,
                                              unsigned int& /*index*/,
                                              KOVAIdentifier& /*capture*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCaptureEntityCount(const KOVAIdentifier& /*capture*/,
                                                         unsigned int& /*count*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCaptureEntity(const KOVAIdentifier& /*capture*/,
                                                    unsigned int& /*index*/,
                                                    KOVAIdentifier& /*entity*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCaptureCameraData(
    const KOVAIdentifier& /*capture*/, KOVAString& /*name*/, KOVAPMICameraType& /*type*/,
    double* /*origin*/, double* /*target*/, double* /*viewDirection*/,
    double* /*viewDirectionNormal*/, double& /*viewAngle*/, double& /*zoom*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCaptureHiddenText(const KOVAIdentifier& /*capture*/,
                                                        KOVAString& /*text*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::HasClippingPlane(const KOVAIdentifier& /*capture*/,
                                                    bool& /*has*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetActiveView(const KOVAIdentifier& /*capture*/,
                                                 float* /*plane*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::IsDrivingDimension(const KOVAIdentifier& /*annotation*/,
                                                      bool& /*driving*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetDimensionFakeValue(const KOVAIdentifier& /*annotation*/,
                                                         int& /*kind*/, KOVAString& /*value*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationToleranceModifierCount(
    const KOVAIdentifier& /*annotation*/, int& /*count*/, bool /*composite*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationToleranceModifier(
    const KOVAIdentifier& /*annotation*/, int /*index*/, KOVAPMIToleranceModifier& /*modifier*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetAnnotationAssociatedRefFrame(
    const KOVAIdentifier& /*annotation*/, KOVAString& /*note*/, KOVAIdentifier& /*frame*/,
    bool /*composite*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetToleranceInfo(
    const KOVAIdentifier& /*annotation*/, KOVAPMIToleranceType& /*type*/,
    KOVAPMIToleranceValueType& /*valueType*/, double& /*magnitude*/, double& /*refinement*/,
    double& /*rateUnit1*/, double& /*rateUnit2*/, double& /*projected*/, double& /*maximum*/,
    bool& /*allAround*/, KOVAString& /*note*/, bool& /*composite*/) {
  return KOVAResult(kNotImplemented);
}
KOVAResult KOVADefaultPMIExporter::GetCompositeToleranceInfo(
    const KOVAIdentifier& /*annotation*/, KOVAPMIToleranceValueType& /*valueType*/,
    double& /*magnitude*/, double& /*refinement*/, double& /*rateUnit*/) {
  return KOVAResult(kNotImplemented);
}

#pragma once

#include "framework_pmi/KOVAPMIExporter.h"

// Answers every query with the framework's default: 0x1000005, outputs untouched. What a query is
// to answer is told at KOVAPMIExporter.
class KOVADefaultPMIExporter : public KOVAPMIExporterExtended {
 public:
  // REQUIRES: `document` outlives the exporter.
  explicit KOVADefaultPMIExporter(KOVADocument& document) : KOVAPMIExporterExtended(document) {}
  ~KOVADefaultPMIExporter() override;

  KOVAResult GetAnnotationSetCount(int& /*count*/) override { return DefaultAnswer(); }
  KOVAResult GetAnnotationSet(int /*index*/, KOVAIdentifier& /*set*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationViewCount(const KOVAIdentifier& /*set*/, int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationView(const KOVAIdentifier& /*set*/, int /*index*/,
                               KOVAIdentifier& /*view*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCalloutAnnotationCount(KOVAIdentifier /*annotation*/, int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCalloutAnnotationAt(const KOVAIdentifier& /*annotation*/, int /*index*/,
                                    KOVAIdentifier& /*callout*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetViewCoordinateSystem(const KOVAIdentifier& /*view*/, float* /*frame*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationPositionInView(const KOVAIdentifier& /*annotation*/, float* /*position*/,
                                         KOVAPMIOrientation& /*orientation*/,
                                         float& /*unanswered*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationZDepth(const KOVAIdentifier& /*annotation*/, float& /*depth*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetViewAnnotationCount(const KOVAIdentifier& /*view*/, int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetViewAnnotation(const KOVAIdentifier& /*view*/, int /*index*/,
                               KOVAIdentifier& /*annotation*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationName(const KOVAIdentifier& /*annotation*/,
                               KOVAString& /*name*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationType(const KOVAIdentifier& /*annotation*/,
                               KOVAPMIAnnotationType& /*type*/) override {
    return DefaultAnswer();
  }
  KOVAResult IsAnnotationHidden(const KOVAIdentifier& /*annotation*/, bool& /*hidden*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationLeaderCount(const KOVAIdentifier& /*annotation*/,
                                      int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationLeader(const KOVAIdentifier& /*annotation*/, int /*index*/,
                                 KOVAIdentifier& /*leader*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetLeaderPointCount(const KOVAIdentifier& /*leader*/, int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetLeader3DPoint(const KOVAIdentifier& /*leader*/, int /*index*/,
                              double* /*point*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationTextCount(const KOVAIdentifier& /*annotation*/, int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationText(const KOVAIdentifier& /*annotation*/, int /*index*/,
                               KOVAIdentifier& /*text*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetNumberOfEntitiesFromAnnotation(const KOVAIdentifier& /*annotation*/,
                                               int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetEntityFromAnnotationAt(const KOVAIdentifier& /*annotation*/, int /*index*/,
                                       KOVAIdentifiers& /*entities*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionType(const KOVAIdentifier& /*annotation*/,
                              KOVAPMIDimensionType& /*type*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionMainType(const KOVAIdentifier& /*annotation*/,
                                  KOVAPMIDimensionMainType& /*type*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCalloutFeatureAnnotationProperties(
      const KOVAIdentifier& /*annotation*/,
      KOVAPMICalloutFeatureAnnotationType& /*type*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionExtensionLines(const KOVAIdentifier& /*annotation*/, float* /*first*/,
                                        float* /*second*/, float* /*third*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionLine(const KOVAIdentifier& /*annotation*/,
                              KOVAPMIArrowSymbol& /*firstArrow*/, float* /*firstPoint*/,
                              KOVAPMIArrowSymbol& /*secondArrow*/, float* /*secondPoint*/,
                              bool& /*hasThirdPoint*/, float* /*thirdPoint*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionValue(const KOVAIdentifier& /*annotation*/, double& /*value*/,
                               KOVAPMIUnit& /*unit*/, double& /*precision*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionTolerance(const KOVAIdentifier& /*annotation*/, double& /*lower*/,
                                   double& /*upper*/, double& /*precision*/, bool& /*hasTolerance*/,
                                   KOVAString& /*upperText*/, KOVAString& /*lowerText*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCoordDimensionValue(const KOVAIdentifier& /*annotation*/, int& /*coordinate*/,
                                    double& /*value*/, double& /*upper*/,
                                    double& /*lower*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionTexts(const KOVAIdentifier& /*annotation*/, KOVAString& /*prefix*/,
                               KOVAString& /*suffix*/, KOVAString& /*before*/,
                               KOVAString& /*after*/, KOVAString& /*upper*/, KOVAString& /*lower*/,
                               KOVAString& /*holeCallout*/, KOVAString& /*below*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetTextString(const KOVAIdentifier& /*text*/, KOVAString& /*string*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetTextFont(const KOVAIdentifier& /*text*/, KOVAPMIFont& /*font*/,
                         KOVAString& /*fontName*/, bool& /*fixedPitch*/, float& /*height*/,
                         bool& /*bold*/, bool& /*italic*/, bool& /*underline*/,
                         bool& /*strikeThrough*/, bool& /*overline*/, float& /*ratio*/,
                         float& /*slant*/, double* const /*colour*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationToleranceModifiers(const KOVAIdentifier& /*annotation*/, int /*row*/,
                                             KOVAIdentifiers& /*modifiers*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& /*annotation*/, int /*row*/,
                                             KOVAString& /*note*/,
                                             KOVAIdentifier& /*frame*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumReferences(const KOVAIdentifier& /*frame*/,
                                KOVAIdentifiers& /*references*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumReferenceLabel(const KOVAIdentifier& /*reference*/,
                                    KOVAString& /*label*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumReferenceDatumCount(const KOVAIdentifier& /*reference*/,
                                         int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumAt(const KOVAIdentifier& /*reference*/, int /*index*/,
                        KOVAIdentifier& /*datum*/, KOVAIdentifier& /*unanswered*/,
                        KOVAIdentifiers& /*modifiers*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumAt(const KOVAIdentifier& /*reference*/, int /*index*/,
                        KOVAIdentifier& /*datum*/, KOVAPMIToleranceModifier& /*modifier*/,
                        KOVAIdentifier& /*owner*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetToleranceInfo(const KOVAIdentifier& /*annotation*/, KOVAPMIToleranceType& /*type*/,
                              bool& /*allAround*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetToleranceInfo(const KOVAIdentifier& /*annotation*/, KOVAPMIToleranceType& /*type*/,
                              KOVAPMIToleranceValueType& /*valueType*/, double& /*magnitude*/,
                              double& /*refinement*/, double& /*rateUnit1*/, double& /*rateUnit2*/,
                              double& /*projected*/, double& /*maximum*/,
                              bool& /*allAround*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetToleranceRowInfo(const KOVAIdentifier& /*annotation*/, int /*row*/,
                                 KOVAPMIToleranceValueType& /*valueType*/, double& /*magnitude*/,
                                 double& /*refinement*/, double& /*rateUnit1*/,
                                 double& /*rateUnit2*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetToleranceRowCount(const KOVAIdentifier& /*annotation*/, int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetZoneModifierData(const KOVAIdentifier& /*modifier*/,
                                 KOVAPMIToleranceModifier& /*type*/, bool& /*hasMagnitude*/,
                                 double& /*magnitude*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetBeforeToleranceNote(const KOVAIdentifier& /*annotation*/,
                                    KOVAString& /*note*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAfterToleranceNote(const KOVAIdentifier& /*annotation*/,
                                   KOVAString& /*note*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetUpperToleranceNote(const KOVAIdentifier& /*annotation*/,
                                   KOVAString& /*note*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetLowerToleranceNote(const KOVAIdentifier& /*annotation*/,
                                   KOVAString& /*note*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetPrefixToleranceNote(const KOVAIdentifier& /*annotation*/,
                                    KOVAString& /*note*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetSuffixToleranceNote(const KOVAIdentifier& /*annotation*/,
                                    KOVAString& /*note*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumLabel(const KOVAIdentifier& /*datum*/, KOVAString& /*label*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumTargetCount(const KOVAIdentifier& /*datum*/,
                                 unsigned int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumTargetAt(const KOVAIdentifier& /*datum*/, unsigned int& /*index*/,
                              KOVAIdentifier& /*target*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumTargetLabel(const KOVAIdentifier& /*target*/, KOVAString& /*label*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDatumTargetInfo(const KOVAIdentifier& /*target*/, KOVAPMIDatumTargetType& /*type*/,
                                bool& /*unansweredFlag*/, KOVAString& /*unansweredText*/,
                                KOVAString& /*note*/, double* const /*position1*/,
                                double* const /*position2*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetRoughnessObtention(const KOVAIdentifier& /*annotation*/,
                                   KOVAPMIRoughnessObtentionType& /*obtention*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetRoughnessApplicability(
      const KOVAIdentifier& /*annotation*/,
      KOVAPMIRoughnessApplicabilityType& /*applicability*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetRoughnessFieldCount(const KOVAIdentifier& /*annotation*/,
                                    unsigned int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetRoughnessFieldAt(const KOVAIdentifier& /*annotation*/, unsigned int /*index*/,
                                 KOVAString& /*field*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCaptureCount(const KOVAIdentifier& /*set*/, unsigned int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCapture(const KOVAIdentifier& /*set*/, unsigned int& /*index*/,
                        KOVAIdentifier& /*capture*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCaptureEntityCount(const KOVAIdentifier& /*capture*/,
                                   unsigned int& /*count*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCaptureEntity(const KOVAIdentifier& /*capture*/, unsigned int& /*index*/,
                              KOVAIdentifier& /*entity*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCaptureCameraData(const KOVAIdentifier& /*capture*/, KOVAString& /*name*/,
                                  KOVAPMICameraType& /*type*/, double* /*origin*/,
                                  double* /*target*/, double* /*viewDirection*/,
                                  double* /*viewDirectionNormal*/, double& /*viewAngle*/,
                                  double& /*zoom*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCaptureHiddenText(const KOVAIdentifier& /*capture*/,
                                  KOVAString& /*text*/) override {
    return DefaultAnswer();
  }
  KOVAResult HasClippingPlane(const KOVAIdentifier& /*capture*/, bool& /*has*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetActiveView(const KOVAIdentifier& /*capture*/, float* /*plane*/) override {
    return DefaultAnswer();
  }
  KOVAResult IsDrivingDimension(const KOVAIdentifier& /*annotation*/, bool& /*driving*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetDimensionFakeValue(const KOVAIdentifier& /*annotation*/, int& /*kind*/,
                                   KOVAString& /*value*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationToleranceModifierCount(const KOVAIdentifier& /*annotation*/,
                                                 int& /*count*/, bool /*composite*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationToleranceModifier(const KOVAIdentifier& /*annotation*/, int /*index*/,
                                            KOVAPMIToleranceModifier& /*modifier*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& /*annotation*/,
                                             KOVAString& /*note*/, KOVAIdentifier& /*frame*/,
                                             bool /*composite*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetToleranceInfo(const KOVAIdentifier& /*annotation*/, KOVAPMIToleranceType& /*type*/,
                              KOVAPMIToleranceValueType& /*valueType*/, double& /*magnitude*/,
                              double& /*refinement*/, double& /*rateUnit1*/, double& /*rateUnit2*/,
                              double& /*projected*/, double& /*maximum*/, bool& /*allAround*/,
                              KOVAString& /*note*/, bool& /*composite*/) override {
    return DefaultAnswer();
  }
  KOVAResult GetCompositeToleranceInfo(const KOVAIdentifier& /*annotation*/,
                                       KOVAPMIToleranceValueType& /*valueType*/,
                                       double& /*magnitude*/, double& /*refinement*/,
                                       double& /*rateUnit*/) override {
    return DefaultAnswer();
  }

 private:
  static KOVAResult DefaultAnswer() { return KOVAResult(0x1000005); }
};

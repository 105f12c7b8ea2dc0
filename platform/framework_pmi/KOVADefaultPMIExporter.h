#pragma once

#include "framework_pmi/KOVAPMIExporter.h"

// Answers every query with the framework's default: 0x1000005, outputs untouched.
class KOVADefaultPMIExporter : public KOVAPMIExporterExtended {
 public:
  // REQUIRES: `document` outlives the exporter.
  explicit KOVADefaultPMIExporter(KOVADocument& document) : KOVAPMIExporterExtended(document) {}
  ~KOVADefaultPMIExporter() override;

  KOVAResult GetAnnotationSetCount(int& count) override;
  KOVAResult GetAnnotationSet(int index, KOVAIdentifier& set) override;
  KOVAResult GetAnnotationViewCount(const KOVAIdentifier& set, int& count) override;
  KOVAResult GetAnnotationView(const KOVAIdentifier& set, int index, KOVAIdentifier& view) override;
  KOVAResult GetCalloutAnnotationCount(KOVAIdentifier annotation, int& count) override;
  KOVAResult GetCalloutAnnotationAt(const KOVAIdentifier& annotation, int index,
                                    KOVAIdentifier& callout) override;
  KOVAResult GetViewCoordinateSystem(const KOVAIdentifier& view, float* frame) override;
  KOVAResult GetAnnotationPositionInView(const KOVAIdentifier& annotation, float* position,
                                         KOVAPMIOrientation& orientation, float& angle) override;
  KOVAResult GetAnnotationZDepth(const KOVAIdentifier& annotation, float& depth) override;
  KOVAResult GetViewAnnotationCount(const KOVAIdentifier& view, int& count) override;
  KOVAResult GetViewAnnotation(const KOVAIdentifier& view, int index,
                               KOVAIdentifier& annotation) override;
  KOVAResult GetAnnotationName(const KOVAIdentifier& annotation, KOVAString& name) override;
  KOVAResult GetAnnotationType(const KOVAIdentifier& annotation,
                               KOVAPMIAnnotationType& type) override;
  KOVAResult IsAnnotationHidden(const KOVAIdentifier& annotation, bool& hidden) override;
  KOVAResult GetAnnotationLeaderCount(const KOVAIdentifier& annotation, int& count) override;
  KOVAResult GetAnnotationLeader(const KOVAIdentifier& annotation, int index,
                                 KOVAIdentifier& leader) override;
  KOVAResult GetLeaderPointCount(const KOVAIdentifier& leader, int& count) override;
  KOVAResult GetLeader3DPoint(const KOVAIdentifier& leader, int index, double* point) override;
  KOVAResult GetAnnotationTextCount(const KOVAIdentifier& annotation, int& count) override;
  KOVAResult GetAnnotationText(const KOVAIdentifier& annotation, int index,
                               KOVAIdentifier& text) override;
  KOVAResult GetNumberOfEntitiesFromAnnotation(const KOVAIdentifier& annotation,
                                               int& count) override;
  KOVAResult GetEntityFromAnnotationAt(const KOVAIdentifier& annotation, int index,
                                       KOVAIdentifiers& entities) override;
  KOVAResult GetDimensionType(const KOVAIdentifier& annotation,
                              KOVAPMIDimensionType& type) override;
  KOVAResult GetDimensionMainType(const KOVAIdentifier& annotation,
                                  KOVAPMIDimensionMainType& type) override;
  KOVAResult GetCalloutFeatureAnnotationProperties(
      const KOVAIdentifier& annotation, KOVAPMICalloutFeatureAnnotationType& type) override;
  KOVAResult GetDimensionExtensionLines(const KOVAIdentifier& annotation, float* first,
                                        float* second, float* third) override;
  KOVAResult GetDimensionLine(const KOVAIdentifier& annotation, KOVAPMIArrowSymbol& firstArrow,
                              float* firstPoint, KOVAPMIArrowSymbol& secondArrow,
                              float* secondPoint, bool& hasThirdPoint, float* thirdPoint) override;
  KOVAResult GetDimensionValue(const KOVAIdentifier& annotation, double& value, KOVAPMIUnit& unit,
                               double& precision) override;
  KOVAResult GetDimensionTolerance(const KOVAIdentifier& annotation, double& lower, double& upper,
                                   double& precision, bool& hasTolerance, KOVAString& upperText,
                                   KOVAString& lowerText) override;
  KOVAResult GetCoordDimensionValue(const KOVAIdentifier& annotation, int& coordinate,
                                    double& value, double& upper, double& lower) override;
  KOVAResult GetDimensionTexts(const KOVAIdentifier& annotation, KOVAString& prefix,
                               KOVAString& suffix, KOVAString& before, KOVAString& after,
                               KOVAString& upper, KOVAString& lower, KOVAString& holeCallout,
                               KOVAString& below) override;
  KOVAResult GetTextString(const KOVAIdentifier& text, KOVAString& string) override;
  KOVAResult GetTextFont(const KOVAIdentifier& text, KOVAPMIFont& font, KOVAString& fontName,
                         bool& fixedPitch, float& height, bool& bold, bool& italic, bool& underline,
                         bool& strikeThrough, bool& overline, float& ratio, float& slant,
                         double* const colour) override;
  KOVAResult GetAnnotationToleranceModifiers(const KOVAIdentifier& annotation, int row,
                                             KOVAIdentifiers& modifiers) override;
  KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation, int row,
                                             KOVAString& note, KOVAIdentifier& frame) override;
  KOVAResult GetDatumReferences(const KOVAIdentifier& frame, KOVAIdentifiers& references) override;
  KOVAResult GetDatumReferenceLabel(const KOVAIdentifier& reference, KOVAString& label) override;
  KOVAResult GetDatumReferenceDatumCount(const KOVAIdentifier& reference, int& count) override;
  KOVAResult GetDatumAt(const KOVAIdentifier& reference, int index, KOVAIdentifier& datum,
                        KOVAIdentifier& owner, KOVAIdentifiers& modifiers) override;
  KOVAResult GetDatumAt(const KOVAIdentifier& reference, int index, KOVAIdentifier& datum,
                        KOVAPMIToleranceModifier& modifier, KOVAIdentifier& owner) override;
  KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                              bool& allAround) override;
  KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                              KOVAPMIToleranceValueType& valueType, double& magnitude,
                              double& refinement, double& rateUnit1, double& rateUnit2,
                              double& projected, double& maximum, bool& allAround) override;
  KOVAResult GetToleranceRowInfo(const KOVAIdentifier& annotation, int row,
                                 KOVAPMIToleranceValueType& valueType, double& magnitude,
                                 double& refinement, double& rateUnit1, double& rateUnit2) override;
  KOVAResult GetToleranceRowCount(const KOVAIdentifier& annotation, int& count) override;
  KOVAResult GetZoneModifierData(const KOVAIdentifier& modifier, KOVAPMIToleranceModifier& type,
                                 bool& hasMagnitude, double& magnitude) override;
  KOVAResult GetBeforeToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) override;
  KOVAResult GetAfterToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) override;
  KOVAResult GetUpperToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) override;
  KOVAResult GetLowerToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) override;
  KOVAResult GetPrefixToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) override;
  KOVAResult GetSuffixToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) override;
  KOVAResult GetDatumLabel(const KOVAIdentifier& datum, KOVAString& label) override;
  KOVAResult GetDatumTargetCount(const KOVAIdentifier& datum, unsigned int& count) override;
  KOVAResult GetDatumTargetAt(const KOVAIdentifier& datum, unsigned int& index,
                              KOVAIdentifier& target) override;
  KOVAResult GetDatumTargetLabel(const KOVAIdentifier& target, KOVAString& label) override;
  KOVAResult GetDatumTargetInfo(const KOVAIdentifier& target, KOVAPMIDatumTargetType& type,
                                bool& movable, KOVAString& size, KOVAString& note,
                                double* const position1, double* const position2) override;
  KOVAResult GetRoughnessObtention(const KOVAIdentifier& annotation,
                                   KOVAPMIRoughnessObtentionType& obtention) override;
  KOVAResult GetRoughnessApplicability(const KOVAIdentifier& annotation,
                                       KOVAPMIRoughnessApplicabilityType& applicability) override;
  KOVAResult GetRoughnessFieldCount(const KOVAIdentifier& annotation, unsigned int& count) override;
  KOVAResult GetRoughnessFieldAt(const KOVAIdentifier& annotation, unsigned int index,
                                 KOVAString& field) override;
  KOVAResult GetCaptureCount(const KOVAIdentifier& set, unsigned int& count) override;
  KOVAResult GetCapture(const KOVAIdentifier& set, unsigned int& index,
                        KOVAIdentifier& capture) override;
  KOVAResult GetCaptureEntityCount(const KOVAIdentifier& capture, unsigned int& count) override;
  KOVAResult GetCaptureEntity(const KOVAIdentifier& capture, unsigned int& index,
                              KOVAIdentifier& entity) override;
  KOVAResult GetCaptureCameraData(const KOVAIdentifier& capture, KOVAString& name,
                                  KOVAPMICameraType& type, double* origin, double* target,
                                  double* viewDirection, double* viewDirectionNormal,
                                  double& viewAngle, double& zoom) override;
  KOVAResult GetCaptureHiddenText(const KOVAIdentifier& capture, KOVAString& text) override;
  KOVAResult HasClippingPlane(const KOVAIdentifier& capture, bool& has) override;
  KOVAResult GetActiveView(const KOVAIdentifier& capture, float* plane) override;
  KOVAResult IsDrivingDimension(const KOVAIdentifier& annotation, bool& driving) override;
  KOVAResult GetDimensionFakeValue(const KOVAIdentifier& annotation, int& kind,
                                   KOVAString& value) override;
  KOVAResult GetAnnotationToleranceModifierCount(const KOVAIdentifier& annotation, int& count,
                                                 bool composite) override;
  KOVAResult GetAnnotationToleranceModifier(const KOVAIdentifier& annotation, int index,
                                            KOVAPMIToleranceModifier& modifier) override;
  KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation, KOVAString& note,
                                             KOVAIdentifier& frame, bool composite) override;
  KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                              KOVAPMIToleranceValueType& valueType, double& magnitude,
                              double& refinement, double& rateUnit1, double& rateUnit2,
                              double& projected, double& maximum, bool& allAround, KOVAString& note,
                              bool& composite) override;
  KOVAResult GetCompositeToleranceInfo(const KOVAIdentifier& annotation,
                                       KOVAPMIToleranceValueType& valueType, double& magnitude,
                                       double& refinement, double& rateUnit) override;
};

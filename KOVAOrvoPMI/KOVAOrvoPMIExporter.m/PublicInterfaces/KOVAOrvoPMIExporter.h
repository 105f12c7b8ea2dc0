#pragma once

#include <map>
#include <vector>

#include "IdentifierHashMap.h"
#include "KOVAOrvoPMIAttributeExporter.h"
#include "KOVAOrvoPMIExporterExport.h"
#include "ReverseIndex.h"
#include "framework_pmi/KOVADefaultPMIExporter.h"

class ENTITY;
class ENTITY_LIST;
class KOVAPMI_DATUM;
class KOVAPMI_DATUMTGT;
class KOVAPMI_DISPLAY_PROPERTIES;
class PLANE;
class QENGROUP;
class QENposition;
class QENvector;

// The product manufacturing information of one kernel-backed document.
//
//   KOVAPMIExporter* exporter = nullptr;
//   if (KOVACreateOrvoPMIExporter(&document, &exporter) != 0) return;
//   exporter->PreProcess();
//   KOVAIdentifier set, view, annotation;
//   exporter->GetAnnotationSet(0, set);
//   exporter->GetAnnotationView(set, 0, view);
//   exporter->GetViewAnnotation(view, 0, annotation);
//   KOVAString name;
//   exporter->GetAnnotationName(annotation, name);
//   delete exporter;
//
// The constructor scans the document's model once and keeps an index; the model is not changed. The
// only entities made are the views' planes: one for each annotation whose display properties
// describe one, owned here and deleted with the exporter. What identifiers point to belongs to the
// document's model, which outlives the exporter.
//
// KOVAPMIExporter says at each query what it answers, in which units, and what it writes. Unless it
// says otherwise, a query answers 0x1000008 while the document has not been found (the two about
// leader points do not look), 0x1000001 for an object of the wrong kind or an index out of range,
// and 0 otherwise, and on failure leaves its outputs untouched. An identifier is resolved by its
// native object; what else it says counts only for the set in the two capture queries that take it
// and for leaders.
//
// CAVEAT: one exporter must not be queried from two threads at once, since GetDatumTargetAt writes
// to it and queries move the iteration of the model's lists; separate exporters of separate
// documents share nothing.
class KOVA_ORVO_PMI_EXPORT KOVAOrvoPMIExporter : public KOVADefaultPMIExporter {
 public:
  // Scans the model when the document is available. Throws what the scan throws; then nothing is
  // left behind. REQUIRES: `document` outlives the exporter.
  explicit KOVAOrvoPMIExporter(KOVADocument& document);
  ~KOVAOrvoPMIExporter() override;

  // Builds the index, once. 0x1000001 when there is no kernel-backed document or the index has been
  // built; otherwise 0, whatever the model holds. Throws what the scan throws; then the index stays
  // as far as it was built, and is not built again.
  KOVAResult Initialize();

  // The entity's identifier string in a new array, which the caller releases with delete[]. When
  // there is none, 0x1000001 and `id` is null. Works at any time; throws std::bad_alloc.
  KOVAResult GetEntityID(ENTITY* entity, char*& id);

  // The exporter's attribute exporter; ownership stays here.
  KOVAResult GetAttributeExporter(KOVAAttributeExporter*& exporter) override;
  // The entity's persistent identifier. CAVEAT: a success also when the entity has none; `pid` is
  // then what the framework left there.
  KOVAResult GetPID(const KOVAIdentifier& identifier, KOVAString& pid) override;

  // --- The annotation set ---

  KOVAResult GetAnnotationSetCount(int& count) override;
  KOVAResult GetAnnotationSet(int index, KOVAIdentifier& set) override;

  // --- Navigation ---

  KOVAResult GetAnnotationViewCount(const KOVAIdentifier& set, int& count) override;
  KOVAResult GetAnnotationView(const KOVAIdentifier& set, int index, KOVAIdentifier& view) override;
  KOVAResult GetCalloutAnnotationCount(KOVAIdentifier annotation, int& count) override;
  KOVAResult GetCalloutAnnotationAt(const KOVAIdentifier& annotation, int index,
                                    KOVAIdentifier& callout) override;

  // --- Placement ---

  KOVAResult GetViewCoordinateSystem(const KOVAIdentifier& view, float* frame) override;
  KOVAResult GetAnnotationPositionInView(const KOVAIdentifier& annotation, float* position,
                                         KOVAPMIOrientation& orientation,
                                         float& unanswered) override;
  KOVAResult GetAnnotationZDepth(const KOVAIdentifier& annotation, float& depth) override;

  // --- Annotations of a view ---

  KOVAResult GetViewAnnotationCount(const KOVAIdentifier& view, int& count) override;
  KOVAResult GetViewAnnotation(const KOVAIdentifier& view, int index,
                               KOVAIdentifier& annotation) override;

  // --- What every annotation has ---

  KOVAResult GetAnnotationName(const KOVAIdentifier& annotation, KOVAString& name) override;
  KOVAResult GetAnnotationType(const KOVAIdentifier& annotation,
                               KOVAPMIAnnotationType& type) override;
  KOVAResult IsAnnotationHidden(const KOVAIdentifier& annotation, bool& hidden) override;

  // --- Leaders ---

  KOVAResult GetAnnotationLeaderCount(const KOVAIdentifier& annotation, int& count) override;
  KOVAResult GetAnnotationLeader(const KOVAIdentifier& annotation, int index,
                                 KOVAIdentifier& leader) override;
  KOVAResult GetLeaderPointCount(const KOVAIdentifier& leader, int& count) override;
  KOVAResult GetLeader3DPoint(const KOVAIdentifier& leader, int index, double* point) override;

  // --- Texts and geometry of an annotation ---

  KOVAResult GetAnnotationTextCount(const KOVAIdentifier& annotation, int& count) override;
  KOVAResult GetAnnotationText(const KOVAIdentifier& annotation, int index,
                               KOVAIdentifier& text) override;
  KOVAResult GetNumberOfEntitiesFromAnnotation(const KOVAIdentifier& annotation,
                                               int& count) override;
  KOVAResult GetEntityFromAnnotationAt(const KOVAIdentifier& annotation, int index,
                                       KOVAIdentifiers& entities) override;

  // --- Dimensions ---

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

  // --- Text and font ---

  KOVAResult GetTextString(const KOVAIdentifier& text, KOVAString& string) override;
  KOVAResult GetTextFont(const KOVAIdentifier& text, KOVAPMIFont& font, KOVAString& fontName,
                         bool& fixedPitch, float& height, bool& bold, bool& italic, bool& underline,
                         bool& strikeThrough, bool& overline, float& ratio, float& slant,
                         double* const colour) override;

  // --- Geometric tolerances and datum reference frames ---

  KOVAResult GetAnnotationToleranceModifiers(const KOVAIdentifier& annotation, int row,
                                             KOVAIdentifiers& modifiers) override;
  KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation, int row,
                                             KOVAString& note, KOVAIdentifier& frame) override;
  KOVAResult GetDatumReferences(const KOVAIdentifier& frame, KOVAIdentifiers& references) override;
  KOVAResult GetDatumReferenceLabel(const KOVAIdentifier& reference, KOVAString& label) override;
  KOVAResult GetDatumReferenceDatumCount(const KOVAIdentifier& reference, int& count) override;
  KOVAResult GetDatumAt(const KOVAIdentifier& reference, int index, KOVAIdentifier& datum,
                        KOVAIdentifier& unanswered, KOVAIdentifiers& modifiers) override;
  using KOVADefaultPMIExporter::GetDatumAt;
  KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                              bool& allAround) override;
  using KOVADefaultPMIExporter::GetToleranceInfo;
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

  // --- Datums and datum targets ---

  KOVAResult GetDatumLabel(const KOVAIdentifier& datum, KOVAString& label) override;
  KOVAResult GetDatumTargetCount(const KOVAIdentifier& datum, unsigned int& count) override;
  KOVAResult GetDatumTargetAt(const KOVAIdentifier& datum, unsigned int& index,
                              KOVAIdentifier& target) override;
  KOVAResult GetDatumTargetLabel(const KOVAIdentifier& target, KOVAString& label) override;
  KOVAResult GetDatumTargetInfo(const KOVAIdentifier& target, KOVAPMIDatumTargetType& type,
                                bool& unansweredFlag, KOVAString& unansweredText, KOVAString& note,
                                double* const position1, double* const position2) override;

  // --- Surface texture ---

  KOVAResult GetRoughnessObtention(const KOVAIdentifier& annotation,
                                   KOVAPMIRoughnessObtentionType& obtention) override;
  KOVAResult GetRoughnessApplicability(const KOVAIdentifier& annotation,
                                       KOVAPMIRoughnessApplicabilityType& applicability) override;
  KOVAResult GetRoughnessFieldCount(const KOVAIdentifier& annotation, unsigned int& count) override;
  KOVAResult GetRoughnessFieldAt(const KOVAIdentifier& annotation, unsigned int index,
                                 KOVAString& field) override;

  // --- Captures ---

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

  // --- Not implemented: 0x1000005, nothing looked at, nothing written ---

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

 protected:
  // Builds the index when the document has become available since construction. 2 from the first
  // call when there is no annotation set, else 0. Throws as Initialize.
  KOVAResult DoPreProcess() override;

 private:
  // Tests look at the geometry before it is narrowed.
  friend struct ExporterInsides;

  using Owners = std::vector<ENTITY*>;
  struct Frame;

  // The shape of a query about one object: initialised, native object, answer. For an object that
  // has no type test of its own.
  template <typename Object, typename Answer>
  KOVAResult AnswerFromObject(const KOVAIdentifier& identifier, Answer answer);
  // The same for an object of one kind.
  template <typename Kind, typename Answer>
  KOVAResult AnswerFrom(const KOVAIdentifier& identifier, Answer answer);
  // The same for a datum or a datum target, which `resolve` finds behind the identifier.
  template <typename Object, typename Answer>
  KOVAResult AnswerFromDatum(const KOVAIdentifier& identifier,
                             KOVAResult (KOVAOrvoPMIExporter::*resolve)(const KOVAIdentifier&,
                                                                        Object*&),
                             Answer answer);
  template <typename Text>
  KOVAResult GetToleranceNote(const KOVAIdentifier& annotation, KOVAString& output, Text text);

  // Gives back everything, in the order of destruction.
  KOVA_ORVO_PMI_INTERNAL void Release();
  KOVA_ORVO_PMI_INTERNAL void DeleteViewPlanes();

  // The scan: what hangs on an entity, and what that is attached to. Results are folded by the
  // framework's own operators. No `ENTITY*&` parameter is ever set to another entity.
  KOVAResult InitializeAnnotationSetFromEntities(ENTITY*& entity);
  KOVAResult GetOwnerList(ENTITY*& entity, Owners& owners);
  KOVAResult InitializeDimension(ENTITY*& dimension);
  KOVAResult InitializeManufacturingGroup(const QENGROUP* group);
  bool IsManufacturing(QENGROUP* group);
  bool IsDrivingDimensionGroup(QENGROUP* group);
  bool IsDimensionCalloutAnnotation(ENTITY* entity, int& calloutType);
  KOVAResult InitializeCapture(ENTITY*& capture);

  // The scan: the records of annotations.
  KOVAResult InitializeAnnotationFromAttributes(ENTITY_LIST const& entities, Owners owners);
  KOVA_ORVO_PMI_INTERNAL void InitializeAnnotation(ENTITY* entity, const Owners& owners,
                                                   KOVAPMI_DISPLAY_PROPERTIES* display);
  // The plane that display properties describe, or null when they describe none. The exporter owns
  // it, also when making it ends with an exception.
  KOVA_ORVO_PMI_INTERNAL ENTITY* MakeViewPlane(KOVAPMI_DISPLAY_PROPERTIES& display);
  KOVAResult InitialiseViewVsAnnotationMap(KOVAIdentifier const& view,
                                           KOVAIdentifier const& annotation);
  // Makes the reverse indexes fit for use; needs no memory.
  KOVA_ORVO_PMI_INTERNAL void SortReverseIndexes();
  // The collectors append every attribute that is exactly of their class, once, in chain order, and
  // return true if `found` then holds anything.
  bool GetTextAttribute(ENTITY const* entity, ENTITY_LIST& found);
  bool GetFlagNoteAttribute(ENTITY const* entity, ENTITY_LIST& found);
  bool GetRoughnessAttribute(ENTITY const* entity, ENTITY_LIST& found);
  bool GetDatumAttribute(ENTITY const* entity, ENTITY_LIST& found);
  bool GetDatumTargetAttribute(ENTITY const* entity, ENTITY_LIST& found);
  bool GetGeomtolAttribute(ENTITY const* entity, ENTITY_LIST& found);

  // Objects behind annotations. `display` is null when it is passed in.
  KOVAResult GetDisplayInformation(ENTITY const* entity, KOVAPMI_DISPLAY_PROPERTIES*& display);
  KOVAResult GetDatumFeatureFromAnnotation(const KOVAIdentifier& annotation, KOVAPMI_DATUM*& datum);
  KOVAResult GetDatumTargetFromAnnotation(const KOVAIdentifier& annotation,
                                          KOVAPMI_DATUMTGT*& target);

  // The entity's name in a new array, which the caller releases with delete[]. When it returns
  // false, `name` is untouched.
  bool GetEntityNameW(ENTITY* entity, wchar_t*& name);
  // Multibyte to wide under the process's locale. REQUIRES: `destination` holds the converted text
  // and its terminator.
  bool CopyFromMBCS(const char* const source, wchar_t* const destination);

  // Plane frames and projection. Axes as stored, not normalised.
  KOVAResult GetPlaneParameters(const PLANE& plane, QENposition& origin, QENvector& normal,
                                QENvector& xAxis, QENvector& yAxis);
  KOVAResult GetAnnotPlaneParameters(KOVAIdentifier annotation, QENposition& origin,
                                     QENvector& normal, QENvector& xAxis, QENvector& yAxis);
  KOVAResult InvertPointOnPlane(const QENposition& origin, const QENvector& xAxis,
                                const QENvector& yAxis, const QENposition& point, double* out);
  KOVA_ORVO_PMI_INTERNAL KOVAResult GetFrame(const KOVAIdentifier& annotation, Frame& frame);
  KOVA_ORVO_PMI_INTERNAL KOVAResult GetPlace(const KOVAIdentifier& annotation,
                                             bool redirectsCallouts, QENposition& point,
                                             Frame& frame);
  KOVA_ORVO_PMI_INTERNAL void WriteInView(const QENposition& point, const Frame* view,
                                          float* output);
  KOVAResult GetDimensionAnnotFromCalloutAnnot(ENTITY* callout, KOVAIdentifier& placement);
  KOVAResult GetDatumFeatureAnnotFromDatumTarget(ENTITY* target, KOVAIdentifier& placement);

  bool initialized = false;
  KOVAOrvoPMIAttributeExporter* attributeExporter = nullptr;  // owned
  KOVAIdentifier* annotationSet = nullptr;                    // owned; null without a set
  std::vector<KOVAIdentifier> annotationViews;                // in order of registration
  std::vector<KOVAIdentifier> captures;                       // in order of the scan
  IdentifierHashMap viewAnnotationMap;                        // view -> its annotations
  std::map<ENTITY*, Owners> annotationOwnerMap;               // annotation -> model entities
  IdentifierHashMap calloutAnnotationMap;                     // dimension -> its callouts
  std::map<ENTITY*, ENTITY*> datumTargetDatumMap;       // target -> annotation it was reached from
  std::map<ENTITY*, ENTITY*> datumAnnotationMap;        // datum -> the attribute that carries it
  std::map<ENTITY*, ENTITY*> datumTargetAnnotationMap;  // target -> the attribute that carries it

  ReverseIndex planesOfAnnotations_;  // annotation -> the planes of the views that hold it; the
                                      // first one counts
  ReverseIndex
      dimensionsOfCallouts_;         // callout -> the dimensions that list it; the last one counts
  std::vector<ENTITY*> viewPlanes_;  // owned: every plane made for a view, or null
};

#pragma once

#include "framework_core/KOVAIdentifiers.h"
#include "framework_core/KOVARepresentation.h"
#include "framework_pmi/KOVAPMIEnums.h"

// The framework's queries for product manufacturing information.
//
// Every object is named by an identifier that an earlier query handed out:
//
//   KOVAIdentifier set, view, annotation;
//   int views = 0, annotations = 0;
//   exporter.GetAnnotationSet(0, set);
//   exporter.GetAnnotationViewCount(set, views);
//   for (int v = 0; v < views; ++v) {
//     exporter.GetAnnotationView(set, v, view);
//     exporter.GetViewAnnotationCount(view, annotations);
//     for (int a = 0; a < annotations; ++a) exporter.GetViewAnnotation(view, a, annotation);
//   }
//
// Indexes count from 0. A query that fails leaves its outputs untouched unless it says otherwise;
// lists are appended to and never cleared. Strings and identifiers are copied out; what identifiers
// point to stays the model's.
class KOVAPMIExporter : public KOVAExportRepresentation {
 public:
  // The type name of an annotation's identifier.
  static const char* const KOVAPMITypeAnnotation;
  // The type name of a view's identifier.
  static const char* const KOVAPMITypeAnnotationView;
  // The type name of a text's identifier.
  static const char* const KOVAPMITypeText;
  // The type name of a datum reference, and of a datum reference frame (ISO 5459).
  static const char* const KOVAPMITypeDatumRef;
  // The type name of a tolerance row's zone modifier.
  static const char* const KOVAPMITypeZoneModifierData;

  // REQUIRES: `document` outlives the exporter.
  explicit KOVAPMIExporter(KOVADocument& document) : KOVAExportRepresentation(document) {}
  ~KOVAPMIExporter() override;

  // --- The annotation set ----------------------------------------------------------------------

  // The number of annotation sets: 1, or 0 when the model has neither annotations nor captures.
  virtual KOVAResult GetAnnotationSetCount(int& count) = 0;

  // The annotation set, the root of every walk; `index` is not looked at. CAVEAT: without a set the
  // result is a success too and `set` is untouched.
  virtual KOVAResult GetAnnotationSet(int index, KOVAIdentifier& set) = 0;

  // --- Navigation: set, views, annotations, callouts -------------------------------------------

  // The number of views of the set.
  virtual KOVAResult GetAnnotationViewCount(const KOVAIdentifier& set, int& count) = 0;
  // A view: its native object is its plane, or none for the one view of unplaced annotations.
  virtual KOVAResult GetAnnotationView(const KOVAIdentifier& set, int index,
                                       KOVAIdentifier& view) = 0;
  // The number of callouts of a dimension; 0 and success for any other annotation.
  virtual KOVAResult GetCalloutAnnotationCount(KOVAIdentifier annotation, int& count) = 0;
  // A callout of a dimension: an identifier that carries only its native object.
  virtual KOVAResult GetCalloutAnnotationAt(const KOVAIdentifier& annotation, int index,
                                            KOVAIdentifier& callout) = 0;

  // --- Placement -------------------------------------------------------------------------------

  // The frame of a view's plane: origin, x axis, y axis, three floats each, model coordinates in
  // model length units; the axes are as stored, not normalised. Fails for a view without a plane
  // and for any identifier that is not a view of this exporter.
  virtual KOVAResult GetViewCoordinateSystem(const KOVAIdentifier& view, float* frame) = 0;
  // The annotation's display point in the frame of its view: two floats, in multiples of the axes.
  // A callout is placed in its dimension's view. A datum target that is named by itself is placed
  // in the view of the datum that GetDatumTargetAt has reached it from; one that is named by the
  // attribute that carries it always stands in its own. Fails without display properties and in a
  // view without a plane. `orientation` and `unanswered` are not written.
  virtual KOVAResult GetAnnotationPositionInView(const KOVAIdentifier& annotation, float* position,
                                                 KOVAPMIOrientation& orientation,
                                                 float& unanswered) = 0;
  // The display point's distance from its foot O + u X + v Y in the frame of its view (from the
  // plane, when the x axis lies in it), model length units, never negative. Fails as the position.
  // CAVEAT: a callout's depth is measured in its own view.
  virtual KOVAResult GetAnnotationZDepth(const KOVAIdentifier& annotation, float& depth) = 0;

  // --- Annotations of a view -------------------------------------------------------------------

  // The number of annotations of a view. CAVEAT: 0 is written also when the view is not known.
  virtual KOVAResult GetViewAnnotationCount(const KOVAIdentifier& view, int& count) = 0;
  // An annotation of a view.
  virtual KOVAResult GetViewAnnotation(const KOVAIdentifier& view, int index,
                                       KOVAIdentifier& annotation) = 0;

  // --- What every annotation has ---------------------------------------------------------------

  // The annotation's name. CAVEAT: without a name the result is a success, `name` untouched.
  virtual KOVAResult GetAnnotationName(const KOVAIdentifier& annotation, KOVAString& name) = 0;
  // The annotation's kind; AnnotationTypeUnknown for an object that is not an annotation.
  virtual KOVAResult GetAnnotationType(const KOVAIdentifier& annotation,
                                       KOVAPMIAnnotationType& type) = 0;
  // True when the annotation is hidden in the model.
  virtual KOVAResult IsAnnotationHidden(const KOVAIdentifier& annotation, bool& hidden) = 0;

  // --- Leaders ---------------------------------------------------------------------------------

  // The number of leaders. Fails without display properties.
  virtual KOVAResult GetAnnotationLeaderCount(const KOVAIdentifier& annotation, int& count) = 0;
  // A leader: native object, type name and native type name of `leader` are set.
  virtual KOVAResult GetAnnotationLeader(const KOVAIdentifier& annotation, int index,
                                         KOVAIdentifier& leader) = 0;
  // The number of points of a leader: 2.
  virtual KOVAResult GetLeaderPointCount(const KOVAIdentifier& leader, int& count) = 0;
  // A leader's tail (index 0) or head (any other index): three doubles, model coordinates in model
  // length units.
  virtual KOVAResult GetLeader3DPoint(const KOVAIdentifier& leader, int index, double* point) = 0;

  // --- Texts and geometry of an annotation -----------------------------------------------------

  // The number of texts: 1 for a note and a flag note, a failure for every other kind.
  virtual KOVAResult GetAnnotationTextCount(const KOVAIdentifier& annotation, int& count) = 0;
  // The text of an annotation, for GetTextString and GetTextFont; `index` is not looked at.
  virtual KOVAResult GetAnnotationText(const KOVAIdentifier& annotation, int index,
                                       KOVAIdentifier& text) = 0;
  // The number of model entities that the annotation applies to. A datum target that is named by
  // itself, and not by the attribute that carries it, is unknown until GetDatumTargetAt has handed
  // it out, and stays unknown when it has no geometry.
  virtual KOVAResult GetNumberOfEntitiesFromAnnotation(const KOVAIdentifier& annotation,
                                                       int& count) = 0;
  // Appends the identifier of one of these entities; `entities` is not cleared.
  virtual KOVAResult GetEntityFromAnnotationAt(const KOVAIdentifier& annotation, int index,
                                               KOVAIdentifiers& entities) = 0;

  // --- Dimensions (ASME Y14.5, ISO 129-1) ------------------------------------------------------

  // What the dimension measures, in detail.
  virtual KOVAResult GetDimensionType(const KOVAIdentifier& annotation,
                                      KOVAPMIDimensionType& type) = 0;
  // What the dimension measures, in the large.
  virtual KOVAResult GetDimensionMainType(const KOVAIdentifier& annotation,
                                          KOVAPMIDimensionMainType& type) = 0;
  // The feature that a callout dimension belongs to; a failure for a dimension that is not a
  // callout.
  virtual KOVAResult GetCalloutFeatureAnnotationProperties(
      const KOVAIdentifier& annotation, KOVAPMICalloutFeatureAnnotationType& type) = 0;
  // The three points of the extension lines, two floats each, in the frame of the dimension's view;
  // model x and y when that view has no plane. Fails when there are none.
  virtual KOVAResult GetDimensionExtensionLines(const KOVAIdentifier& annotation, float* first,
                                                float* second, float* third) = 0;
  // The two ends of the dimension line, as above. The arrows, `hasThirdPoint` and `thirdPoint` are
  // not written.
  virtual KOVAResult GetDimensionLine(const KOVAIdentifier& annotation,
                                      KOVAPMIArrowSymbol& firstArrow, float* firstPoint,
                                      KOVAPMIArrowSymbol& secondArrow, float* secondPoint,
                                      bool& hasThirdPoint, float* thirdPoint) = 0;
  // Nominal value (model length units; degrees for angles; the document's own unit for other
  // quantities) and its decimal places. `unit` is not written.
  virtual KOVAResult GetDimensionValue(const KOVAIdentifier& annotation, double& value,
                                       KOVAPMIUnit& unit, double& precision) = 0;
  // Lower limit, upper limit (deviations from the value, in its unit), decimal places, a flag that
  // is always true, and the upper and lower values as text. CAVEAT: lower before upper in numbers,
  // upper before lower in texts. CAVEAT: on std::bad_alloc some outputs may have been written.
  virtual KOVAResult GetDimensionTolerance(const KOVAIdentifier& annotation, double& lower,
                                           double& upper, double& precision, bool& hasTolerance,
                                           KOVAString& upperText, KOVAString& lowerText) = 0;
  // Value, upper and lower limit (deviations from it, in its unit). `coordinate` is not written.
  // CAVEAT: upper before lower.
  virtual KOVAResult GetCoordDimensionValue(const KOVAIdentifier& annotation, int& coordinate,
                                            double& value, double& upper, double& lower) = 0;
  // The texts around a dimension. CAVEAT: without a note only `holeCallout` is written; on
  // std::bad_alloc some outputs may have been written.
  virtual KOVAResult GetDimensionTexts(const KOVAIdentifier& annotation, KOVAString& prefix,
                                       KOVAString& suffix, KOVAString& before, KOVAString& after,
                                       KOVAString& upper, KOVAString& lower,
                                       KOVAString& holeCallout, KOVAString& below) = 0;

  // --- Text and font ---------------------------------------------------------------------------

  // The string of a note or flag note.
  virtual KOVAResult GetTextString(const KOVAIdentifier& text, KOVAString& string) = 0;
  // The character format of a note or flag note: height in model length units, ratio of width to
  // height, slant as stored. Fails without text properties. `font`, `fontName` and `colour` are not
  // written.
  virtual KOVAResult GetTextFont(const KOVAIdentifier& text, KOVAPMIFont& font,
                                 KOVAString& fontName, bool& fixedPitch, float& height, bool& bold,
                                 bool& italic, bool& underline, bool& strikeThrough, bool& overline,
                                 float& ratio, float& slant, double* const colour) = 0;

  // --- Geometric tolerances and their datum reference frames (ASME Y14.5, ISO 1101, ISO 5459) --

  // Appends the zone modifiers of a row; a failure when it has none. CAVEAT: on std::bad_alloc some
  // may have been appended.
  virtual KOVAResult GetAnnotationToleranceModifiers(const KOVAIdentifier& annotation, int row,
                                                     KOVAIdentifiers& modifiers) = 0;
  // The datum reference frame of a row and its note; sets native object and type name of `frame`.
  // Fails for a row without one.
  virtual KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation, int row,
                                                     KOVAString& note, KOVAIdentifier& frame) = 0;
  // Appends the frame's datum references in order of precedence. CAVEAT: on std::bad_alloc some may
  // have been appended.
  virtual KOVAResult GetDatumReferences(const KOVAIdentifier& frame,
                                        KOVAIdentifiers& references) = 0;
  // The label of a datum reference as written in its compartment.
  // REQUIRES, as the next two: an identifier from GetDatumReferences.
  virtual KOVAResult GetDatumReferenceLabel(const KOVAIdentifier& reference, KOVAString& label) = 0;
  // The number of datums of a reference: more than one for a common datum.
  virtual KOVAResult GetDatumReferenceDatumCount(const KOVAIdentifier& reference, int& count) = 0;
  // A datum of a reference: sets native object and type name of `datum`, appends the datum's
  // modifiers. CAVEAT: an entry without a datum is a success, `datum` untouched; on std::bad_alloc
  // `datum` and some modifiers may have been written. `unanswered` is not written.
  virtual KOVAResult GetDatumAt(const KOVAIdentifier& reference, int index, KOVAIdentifier& datum,
                                KOVAIdentifier& unanswered, KOVAIdentifiers& modifiers) = 0;
  // The form with one modifier.
  virtual KOVAResult GetDatumAt(const KOVAIdentifier& reference, int index, KOVAIdentifier& datum,
                                KOVAPMIToleranceModifier& modifier, KOVAIdentifier& owner) = 0;
  // The tolerance's characteristic and whether it applies all around.
  virtual KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                                      bool& allAround) = 0;
  // The framework's own long form.
  virtual KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                                      KOVAPMIToleranceValueType& valueType, double& magnitude,
                                      double& refinement, double& rateUnit1, double& rateUnit2,
                                      double& projected, double& maximum, bool& allAround) = 0;
  // A row: zone shape, magnitude, refinement and the two per-unit values, model length units (a
  // unit angle in degrees).
  virtual KOVAResult GetToleranceRowInfo(const KOVAIdentifier& annotation, int row,
                                         KOVAPMIToleranceValueType& valueType, double& magnitude,
                                         double& refinement, double& rateUnit1,
                                         double& rateUnit2) = 0;
  // The number of rows.
  virtual KOVAResult GetToleranceRowCount(const KOVAIdentifier& annotation, int& count) = 0;
  // A zone modifier and its magnitude (model length units), when it has one; `magnitude` means
  // nothing when not. REQUIRES: an identifier from GetAnnotationToleranceModifiers or GetDatumAt.
  virtual KOVAResult GetZoneModifierData(const KOVAIdentifier& modifier,
                                         KOVAPMIToleranceModifier& type, bool& hasMagnitude,
                                         double& magnitude) = 0;
  // The note before the frame; like the five others a failure, and `note` untouched, when the
  // tolerance carries no notes.
  virtual KOVAResult GetBeforeToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) = 0;
  // The note after the frame.
  virtual KOVAResult GetAfterToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) = 0;
  // The note above the frame.
  virtual KOVAResult GetUpperToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) = 0;
  // The note below the frame.
  virtual KOVAResult GetLowerToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) = 0;
  // The prefix of the frame's text.
  virtual KOVAResult GetPrefixToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) = 0;
  // The suffix of the frame's text.
  virtual KOVAResult GetSuffixToleranceNote(const KOVAIdentifier& annotation, KOVAString& note) = 0;

  // --- Datums and datum targets (ASME Y14.5, ISO 5459) -----------------------------------------

  // CAVEAT: for a datum or target of a derived class these five succeed and write nothing.

  // The datum's letter.
  virtual KOVAResult GetDatumLabel(const KOVAIdentifier& datum, KOVAString& label) = 0;
  // The number of the datum's targets.
  virtual KOVAResult GetDatumTargetCount(const KOVAIdentifier& datum, unsigned int& count) = 0;
  // A target: sets native object and type name of `target`, and remembers the datum that it was
  // reached from and the entities that it lies on. CAVEAT: outside the list the result is
  // a success and `target` is untouched.
  virtual KOVAResult GetDatumTargetAt(const KOVAIdentifier& datum, unsigned int& index,
                                      KOVAIdentifier& target) = 0;
  // The target's label, such as A1.
  virtual KOVAResult GetDatumTargetLabel(const KOVAIdentifier& target, KOVAString& label) = 0;
  // The target's form, note and defining points (three doubles each, model coordinates in model
  // length units; a missing point leaves its array untouched). `unansweredFlag` and
  // `unansweredText` are not written.
  virtual KOVAResult GetDatumTargetInfo(const KOVAIdentifier& target, KOVAPMIDatumTargetType& type,
                                        bool& unansweredFlag, KOVAString& unansweredText,
                                        KOVAString& note, double* const position1,
                                        double* const position2) = 0;

  // --- Surface texture (ISO 21920-1, ASME Y14.36) ----------------------------------------------

  // Says if material has to be removed.
  virtual KOVAResult GetRoughnessObtention(const KOVAIdentifier& annotation,
                                           KOVAPMIRoughnessObtentionType& obtention) = 0;
  // The surfaces that the symbol speaks of.
  virtual KOVAResult GetRoughnessApplicability(
      const KOVAIdentifier& annotation, KOVAPMIRoughnessApplicabilityType& applicability) = 0;
  // The number of the symbol's fields.
  virtual KOVAResult GetRoughnessFieldCount(const KOVAIdentifier& annotation,
                                            unsigned int& count) = 0;
  // The text of one field, counted from 0. Fails outside.
  virtual KOVAResult GetRoughnessFieldAt(const KOVAIdentifier& annotation, unsigned int index,
                                         KOVAString& field) = 0;

  // --- Captures: saved views -------------------------------------------------------------------

  // The number of captures of the set. CAVEAT: for an identifier that is not the set the result is
  // a success and `count` is untouched.
  virtual KOVAResult GetCaptureCount(const KOVAIdentifier& set, unsigned int& count) = 0;
  // A capture: an identifier that carries only its native object.
  virtual KOVAResult GetCapture(const KOVAIdentifier& set, unsigned int& index,
                                KOVAIdentifier& capture) = 0;
  // The number of a capture's members.
  virtual KOVAResult GetCaptureEntityCount(const KOVAIdentifier& capture, unsigned int& count) = 0;
  // A member: sets the native object of `entity`. CAVEAT: for a member that is not an annotation
  // the result is a success and `entity` is untouched.
  virtual KOVAResult GetCaptureEntity(const KOVAIdentifier& capture, unsigned int& index,
                                      KOVAIdentifier& entity) = 0;
  // The camera: three doubles an array, model coordinates in model length units, the last one the
  // up vector; angle and zoom in the camera's own units. Fails without a camera.
  virtual KOVAResult GetCaptureCameraData(const KOVAIdentifier& capture, KOVAString& name,
                                          KOVAPMICameraType& type, double* origin, double* target,
                                          double* viewDirection, double* viewDirectionNormal,
                                          double& viewAngle, double& zoom) = 0;
  // Fails when the capture has no hidden text.
  virtual KOVAResult GetCaptureHiddenText(const KOVAIdentifier& capture, KOVAString& text) = 0;
  // Writes true. CAVEAT: a capture without a clipping plane is a failure, `has` untouched.
  virtual KOVAResult HasClippingPlane(const KOVAIdentifier& capture, bool& has) = 0;
  // The clipping plane: a point and a vector, three floats each, model coordinates in model length
  // units. Fails without one.
  virtual KOVAResult GetActiveView(const KOVAIdentifier& capture, float* plane) = 0;

  // --- Older forms that a representation may leave out -----------------------------------------

  // Where they are left out, they answer 0x1000005 and leave their outputs untouched.

  // Says if a dimension drives the geometry.
  virtual KOVAResult IsDrivingDimension(const KOVAIdentifier& annotation, bool& driving) = 0;
  // A value that is shown in place of the measured one, and its kind.
  virtual KOVAResult GetDimensionFakeValue(const KOVAIdentifier& annotation, int& kind,
                                           KOVAString& value) = 0;
  // The number of modifiers of a tolerance, or of its composite row.
  virtual KOVAResult GetAnnotationToleranceModifierCount(const KOVAIdentifier& annotation,
                                                         int& count, bool composite) = 0;
  // One of these modifiers, counted from 0.
  virtual KOVAResult GetAnnotationToleranceModifier(const KOVAIdentifier& annotation, int index,
                                                    KOVAPMIToleranceModifier& modifier) = 0;
  // The datum reference frame of a tolerance, or of its composite row, and its note.
  virtual KOVAResult GetAnnotationAssociatedRefFrame(const KOVAIdentifier& annotation,
                                                     KOVAString& note, KOVAIdentifier& frame,
                                                     bool composite) = 0;
  // Type and values of a tolerance of one row. Lengths in model length units.
  virtual KOVAResult GetToleranceInfo(const KOVAIdentifier& annotation, KOVAPMIToleranceType& type,
                                      KOVAPMIToleranceValueType& valueType, double& magnitude,
                                      double& refinement, double& rateUnit1, double& rateUnit2,
                                      double& projected, double& maximum, bool& allAround,
                                      KOVAString& note, bool& composite) = 0;
  // The values of the second row of a composite tolerance. Lengths in model length units.
  virtual KOVAResult GetCompositeToleranceInfo(const KOVAIdentifier& annotation,
                                               KOVAPMIToleranceValueType& valueType,
                                               double& magnitude, double& refinement,
                                               double& rateUnit) = 0;
};

// The framework's place for queries added later.
class KOVAPMIExporterExtended : public KOVAPMIExporter {
 public:
  // REQUIRES: `document` outlives the exporter.
  explicit KOVAPMIExporterExtended(KOVADocument& document) : KOVAPMIExporter(document) {}
  ~KOVAPMIExporterExtended() override;
};

#include "report/WalkAnnotation.h"

#include <cmath>
#include <limits>

#include "framework_core/KOVAIdentifiers.h"
#include "report/EnumNames.h"

namespace {

// An enumerator's name when the query succeeds.
template <typename Enum, typename Query>
Text EnumText(Query query) {
  Enum value{};
  return query(value).IsSuccess() ? Text(NameOf(value)) : Text();
}

// A string when the query succeeds.
template <typename Query>
Text StringText(Query query) {
  KOVAString value;
  return query(value).IsSuccess() ? TextOf(value) : Text();
}

ModifierReport Modifier(KOVAPMIExporter& exporter, const KOVAIdentifier& identifier) {
  ModifierReport report;
  KOVAPMIToleranceModifier type = ToleranceModifierNone;
  bool hasMagnitude = false;
  double magnitude = 0;
  if (exporter.GetZoneModifierData(identifier, type, hasMagnitude, magnitude).IsSuccess()) {
    report.type = NameOf(type);
    if (hasMagnitude) report.magnitude = magnitude;
  }
  return report;
}

std::vector<ModifierReport> Modifiers(KOVAPMIExporter& exporter, const KOVAIdentifiers& list) {
  std::vector<ModifierReport> reports;
  for (int i = 0; i < list.count(); ++i) reports.push_back(Modifier(exporter, list.at(i)));
  return reports;
}

ReferenceReport Reference(KOVAPMIExporter& exporter, const KOVAIdentifier& reference) {
  ReferenceReport report;
  report.label = StringText(
      [&](KOVAString& label) { return exporter.GetDatumReferenceLabel(reference, label); });
  int count = 0;
  exporter.GetDatumReferenceDatumCount(reference, count);
  for (int i = 0; i < count; ++i) {
    KOVAIdentifier datum;
    KOVAIdentifier owner;
    KOVAIdentifiers modifiers;
    if (!exporter.GetDatumAt(reference, i, datum, owner, modifiers).IsSuccess()) continue;
    FrameDatumReport& entry = report.datums.emplace_back();
    entry.label =
        StringText([&](KOVAString& label) { return exporter.GetDatumLabel(datum, label); });
    entry.modifiers = Modifiers(exporter, modifiers);
  }
  return report;
}

RowReport Row(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation, int row) {
  RowReport report;
  KOVAPMIToleranceValueType valueType = ToleranceValueTypeNone;
  double magnitude = 0;
  double refinement = 0;
  double rate1 = 0;
  double rate2 = 0;
  if (exporter.GetToleranceRowInfo(annotation, row, valueType, magnitude, refinement, rate1, rate2)
          .IsSuccess()) {
    report.valueType = NameOf(valueType);
    report.magnitude = magnitude;
    report.refinement = refinement;
    report.rateUnit1 = rate1;
    report.rateUnit2 = rate2;
  }
  KOVAIdentifiers modifiers;
  exporter.GetAnnotationToleranceModifiers(annotation, row, modifiers);
  report.modifiers = Modifiers(exporter, modifiers);
  KOVAString note;
  KOVAIdentifier frame;
  if (exporter.GetAnnotationAssociatedRefFrame(annotation, row, note, frame).IsSuccess()) {
    report.frame.emplace().note = TextOf(note);
    KOVAIdentifiers references;
    exporter.GetDatumReferences(frame, references);
    for (int i = 0; i < references.count(); ++i) {
      report.frame->references.push_back(Reference(exporter, references.at(i)));
    }
  }
  return report;
}

ToleranceReport Tolerance(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  ToleranceReport report;
  KOVAPMIToleranceType type = ToleranceTypeUnknown;
  bool allAround = false;
  if (exporter.GetToleranceInfo(annotation, type, allAround).IsSuccess()) {
    report.type = NameOf(type);
    report.allAround = allAround;
  }
  int rows = 0;
  exporter.GetToleranceRowCount(annotation, rows);
  for (int row = 0; row < rows; ++row) report.rows.push_back(Row(exporter, annotation, row));
  const auto note = [&](KOVAResult (KOVAPMIExporter::*query)(const KOVAIdentifier&, KOVAString&)) {
    return StringText([&](KOVAString& text) { return (exporter.*query)(annotation, text); });
  };
  report.notes.before = note(&KOVAPMIExporter::GetBeforeToleranceNote);
  report.notes.after = note(&KOVAPMIExporter::GetAfterToleranceNote);
  report.notes.upper = note(&KOVAPMIExporter::GetUpperToleranceNote);
  report.notes.lower = note(&KOVAPMIExporter::GetLowerToleranceNote);
  report.notes.prefix = note(&KOVAPMIExporter::GetPrefixToleranceNote);
  report.notes.suffix = note(&KOVAPMIExporter::GetSuffixToleranceNote);
  return report;
}

Text CalloutType(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  return EnumText<KOVAPMICalloutFeatureAnnotationType>(
      [&](auto& type) { return exporter.GetCalloutFeatureAnnotationProperties(annotation, type); });
}

void ReadValues(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                DimensionReport& report) {
  double value = 0;
  double precision = 0;
  KOVAPMIUnit unit = UnitUnknown;
  if (exporter.GetDimensionValue(annotation, value, unit, precision).IsSuccess()) {
    report.value = value;
    report.precision = precision;
  }
  double lower = 0;
  double upper = 0;
  bool hasTolerance = false;
  KOVAString upperText;
  KOVAString lowerText;
  if (exporter
          .GetDimensionTolerance(annotation, lower, upper, precision, hasTolerance, upperText,
                                 lowerText)
          .IsSuccess()) {
    report.lower = lower;
    report.upper = upper;
    report.tolerancePrecision = precision;
    report.upperText = TextOf(upperText);
    report.lowerText = TextOf(lowerText);
  }
  // Texts that the query leaves alone stay marked.
  const KOVAString unset(L"\x1");
  KOVAString prefix = unset, suffix = unset, before = unset, after = unset;
  KOVAString above = unset, underneath = unset, holeCallout = unset, below = unset;
  exporter.GetDimensionTexts(annotation, prefix, suffix, before, after, above, underneath,
                             holeCallout, below);
  const auto set = [&](const KOVAString& text) {
    return text.equals(unset) ? Text() : TextOf(text);
  };
  report.texts = {set(prefix), set(suffix),     set(before),      set(after),
                  set(above),  set(underneath), set(holeCallout), set(below)};
}

DimensionReport Dimension(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  DimensionReport report;
  report.type = EnumText<KOVAPMIDimensionType>(
      [&](auto& type) { return exporter.GetDimensionType(annotation, type); });
  report.mainType = EnumText<KOVAPMIDimensionMainType>(
      [&](auto& type) { return exporter.GetDimensionMainType(annotation, type); });
  report.calloutType = CalloutType(exporter, annotation);
  ReadValues(exporter, annotation, report);
  KOVAPMIArrowSymbol arrow1 = ArrowSymbolNone;
  KOVAPMIArrowSymbol arrow2 = ArrowSymbolNone;
  float a[2];
  float b[2];
  float c[2];
  bool third = false;
  if (exporter.GetDimensionLine(annotation, arrow1, a, arrow2, b, third, c).IsSuccess()) {
    report.line = {{{a[0], a[1]}, {b[0], b[1]}}};
  }
  if (exporter.GetDimensionExtensionLines(annotation, a, b, c).IsSuccess()) {
    report.extensionLines = {{{a[0], a[1]}, {b[0], b[1]}, {c[0], c[1]}}};
  }
  int callouts = 0;
  exporter.GetCalloutAnnotationCount(annotation, callouts);
  for (int i = 0; i < callouts; ++i) {
    KOVAIdentifier callout;
    if (!exporter.GetCalloutAnnotationAt(annotation, i, callout).IsSuccess()) continue;
    CalloutReport& entry = report.callouts.emplace_back();
    entry.name = NameOfObject(exporter, callout);
    entry.calloutType = CalloutType(exporter, callout);
    double value = 0;
    double precision = 0;
    KOVAPMIUnit unit = UnitUnknown;
    if (exporter.GetDimensionValue(callout, value, unit, precision).IsSuccess()) {
      entry.value = value;
    }
  }
  return report;
}

Text DatumTargetLabel(KOVAPMIExporter& exporter, const KOVAIdentifier& target) {
  return StringText([&](KOVAString& label) { return exporter.GetDatumTargetLabel(target, label); });
}

DatumReport Datum(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  DatumReport report;
  report.label =
      StringText([&](KOVAString& label) { return exporter.GetDatumLabel(annotation, label); });
  unsigned int targets = 0;
  exporter.GetDatumTargetCount(annotation, targets);
  for (unsigned int i = 0; i < targets; ++i) {
    KOVAIdentifier target;
    exporter.GetDatumTargetAt(annotation, i, target);
    report.targets.push_back(DatumTargetLabel(exporter, target));
  }
  return report;
}

DatumTargetReport DatumTarget(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  DatumTargetReport report;
  report.label = DatumTargetLabel(exporter, annotation);
  // A point that the query leaves alone stays no number.
  const double unset = std::numeric_limits<double>::quiet_NaN();
  Point3 point1{unset, unset, unset};
  Point3 point2 = point1;
  KOVAPMIDatumTargetType type = DatumTargetTypeUnknown;
  bool movable = false;
  KOVAString size;
  KOVAString note;
  if (exporter
          .GetDatumTargetInfo(annotation, type, movable, size, note, point1.data(), point2.data())
          .IsSuccess()) {
    report.type = NameOf(type);
    report.note = TextOf(note);
    if (!std::isnan(point1[0])) report.point1 = point1;
    if (!std::isnan(point2[0])) report.point2 = point2;
  }
  return report;
}

RoughnessReport Roughness(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  RoughnessReport report;
  report.obtention = EnumText<KOVAPMIRoughnessObtentionType>(
      [&](auto& type) { return exporter.GetRoughnessObtention(annotation, type); });
  report.applicability = EnumText<KOVAPMIRoughnessApplicabilityType>(
      [&](auto& type) { return exporter.GetRoughnessApplicability(annotation, type); });
  unsigned int fields = 0;
  exporter.GetRoughnessFieldCount(annotation, fields);
  for (unsigned int i = 0; i < fields; ++i) {
    report.fields.push_back(StringText(
        [&](KOVAString& field) { return exporter.GetRoughnessFieldAt(annotation, i, field); }));
  }
  return report;
}

TextReport TextWithFont(KOVAPMIExporter& exporter, const KOVAIdentifier& text) {
  TextReport report;
  report.string =
      StringText([&](KOVAString& string) { return exporter.GetTextString(text, string); });
  FontReport font{};
  KOVAPMIFont family = FontUnknown;
  KOVAString fontName;
  float height = 0;
  float ratio = 0;
  float slant = 0;
  double colour[3] = {};
  if (exporter
          .GetTextFont(text, family, fontName, font.fixedPitch, height, font.bold, font.italic,
                       font.underline, font.strikeThrough, font.overline, ratio, slant, colour)
          .IsSuccess()) {
    font.height = height;
    font.ratio = ratio;
    font.slant = slant;
    report.font = font;
  }
  return report;
}

void ReadCommon(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                const DocumentNames& names, AnnotationReport& report) {
  report.name = NameOfObject(exporter, annotation);
  bool hidden = false;
  if (exporter.IsAnnotationHidden(annotation, hidden).IsSuccess()) report.hidden = hidden;
  int texts = 0;
  exporter.GetAnnotationTextCount(annotation, texts);
  for (int i = 0; i < texts; ++i) {
    KOVAIdentifier text;
    exporter.GetAnnotationText(annotation, i, text);
    report.texts.push_back(TextWithFont(exporter, text));
  }
  int entities = 0;
  exporter.GetNumberOfEntitiesFromAnnotation(annotation, entities);
  KOVAIdentifiers list;
  for (int i = 0; i < entities; ++i) exporter.GetEntityFromAnnotationAt(annotation, i, list);
  for (int i = 0; i < list.count(); ++i) {
    report.entities.push_back(names.entity(list.at(i).GetNativeObject()));
  }
  float position[2];
  KOVAPMIOrientation orientation = OrientationUnknown;
  float angle = 0;
  if (exporter.GetAnnotationPositionInView(annotation, position, orientation, angle).IsSuccess()) {
    report.position = {position[0], position[1]};
  }
  float depth = 0;
  if (exporter.GetAnnotationZDepth(annotation, depth).IsSuccess()) report.depth = depth;
  int leaders = 0;
  exporter.GetAnnotationLeaderCount(annotation, leaders);
  for (int i = 0; i < leaders; ++i) {
    KOVAIdentifier leader;
    if (!exporter.GetAnnotationLeader(annotation, i, leader).IsSuccess()) continue;
    std::array<Point3, 2>& ends = report.leaders.emplace_back();
    exporter.GetLeader3DPoint(leader, 0, ends[0].data());
    exporter.GetLeader3DPoint(leader, 1, ends[1].data());
  }
}

}  // namespace

AnnotationReport WalkAnnotation(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                                const DocumentNames& names) {
  AnnotationReport report;
  KOVAPMIAnnotationType type = AnnotationTypeUnknown;
  exporter.GetAnnotationType(annotation, type);
  report.kind = NameOf(type);
  ReadCommon(exporter, annotation, names, report);
  switch (type) {
    case AnnotationTypeDimension:
      report.dimension = Dimension(exporter, annotation);
      break;
    case AnnotationTypeGeometricTolerance:
      report.tolerance = Tolerance(exporter, annotation);
      break;
    case AnnotationTypeDatum:
      report.datum = Datum(exporter, annotation);
      break;
    case AnnotationTypeDatumTarget:
      report.datumTarget = DatumTarget(exporter, annotation);
      break;
    case AnnotationTypeRoughness:
      report.roughness = Roughness(exporter, annotation);
      break;
    default:
      break;
  }
  return report;
}

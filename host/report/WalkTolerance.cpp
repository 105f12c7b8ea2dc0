// Geometric tolerances: rows, zone modifiers, datum reference frames, notes.

#include "report/Answers.h"
#include "report/EnumNames.h"
#include "report/WalkAnnotation.h"

namespace {

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
    entry.id = IdOfObject(exporter, datum);
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

}  // namespace

ToleranceReport WalkTolerance(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
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

// Datums and datum targets.

#include <cmath>

#include "report/Answers.h"
#include "report/EnumNames.h"
#include "report/WalkAnnotation.h"

namespace {

Text DatumTargetLabel(KOVAPMIExporter& exporter, const KOVAIdentifier& target) {
  return StringText([&](KOVAString& label) { return exporter.GetDatumTargetLabel(target, label); });
}

}  // namespace

DatumReport WalkDatum(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  DatumReport report;
  report.label =
      StringText([&](KOVAString& label) { return exporter.GetDatumLabel(annotation, label); });
  unsigned int targets = 0;
  exporter.GetDatumTargetCount(annotation, targets);
  for (unsigned int i = 0; i < targets; ++i) {
    KOVAIdentifier target;
    exporter.GetDatumTargetAt(annotation, i, target);
    report.targets.push_back(DatumTargetLabel(exporter, target));
    report.targetIds.push_back(IdOfObject(exporter, target));
  }
  return report;
}

DatumTargetReport WalkDatumTarget(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  DatumTargetReport report;
  report.label = DatumTargetLabel(exporter, annotation);
  // A point that the query leaves alone stays no number.
  Point3 point1{kNotAnswered, kNotAnswered, kNotAnswered};
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

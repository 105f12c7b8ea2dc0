// What annotations of every kind have, surface texture and texts.

#include "report/WalkAnnotation.h"

#include "report/Answers.h"
#include "report/EnumNames.h"

namespace {

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
                EntityTable& entityTable, AnnotationReport& report) {
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
    report.entities.push_back(entityTable.Use(list.at(i), annotation, report.id));
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
    const Point3 unset{kNotAnswered, kNotAnswered, kNotAnswered};
    std::array<Point3, 2>& ends = report.leaders.emplace_back(std::array{unset, unset});
    exporter.GetLeader3DPoint(leader, 0, ends[0].data());
    exporter.GetLeader3DPoint(leader, 1, ends[1].data());
  }
}

}  // namespace

AnnotationReport WalkAnnotation(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                                const DocumentNames& names, EntityTable& entities) {
  AnnotationReport report;
  KOVAPMIAnnotationType type = AnnotationTypeUnknown;
  exporter.GetAnnotationType(annotation, type);
  report.kind = NameOf(type);
  report.id = IdOfObject(exporter, annotation);
  report.written = names.written(annotation.GetNativeObject());
  ReadCommon(exporter, annotation, entities, report);
  switch (type) {
    case AnnotationTypeDimension:
      report.dimension = WalkDimension(exporter, annotation);
      break;
    case AnnotationTypeGeometricTolerance:
      report.tolerance = WalkTolerance(exporter, annotation);
      break;
    case AnnotationTypeDatum:
      report.datum = WalkDatum(exporter, annotation);
      break;
    case AnnotationTypeDatumTarget:
      report.datumTarget = WalkDatumTarget(exporter, annotation);
      break;
    case AnnotationTypeRoughness:
      report.roughness = Roughness(exporter, annotation);
      break;
    default:
      break;
  }
  return report;
}

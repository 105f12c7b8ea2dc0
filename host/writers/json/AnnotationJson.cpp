#include <cmath>

#include "writers/json/Trees.h"

namespace json {

namespace {

Json PointToJson(const Point3& point) { return std::isnan(point[0]) ? Json() : Json(point); }

Json FontToJson(const FontReport& font) {
  return {{"fixedPitch", font.fixedPitch},
          {"height", font.height},
          {"bold", font.bold},
          {"italic", font.italic},
          {"underline", font.underline},
          {"strikeThrough", font.strikeThrough},
          {"overline", font.overline},
          {"ratio", font.ratio},
          {"slant", font.slant}};
}

Json ModifierToJson(const ModifierReport& modifier) {
  return {{"type", OrNull(modifier.type)}, {"magnitude", OrNull(modifier.magnitude)}};
}

Json FrameToJson(const FrameReport& frame) {
  return {{"note", OrNull(frame.note)},
          {"references", List(frame.references, [](const ReferenceReport& reference) {
             return Json{{"label", OrNull(reference.label)},
                         {"datums", List(reference.datums, [](const FrameDatumReport& datum) {
                            return Json{{"id", OrNull(datum.id)},
                                        {"label", OrNull(datum.label)},
                                        {"modifiers", List(datum.modifiers, ModifierToJson)}};
                          })}};
           })}};
}

Json RowToJson(const RowReport& row) {
  return {
      {"valueType", OrNull(row.valueType)},     {"magnitude", OrNull(row.magnitude)},
      {"refinement", OrNull(row.refinement)},   {"rateUnit1", OrNull(row.rateUnit1)},
      {"rateUnit2", OrNull(row.rateUnit2)},     {"modifiers", List(row.modifiers, ModifierToJson)},
      {"frame", OrNull(row.frame, FrameToJson)}};
}

Json NotesToJson(const ToleranceNotesReport& notes) {
  return {{"before", OrNull(notes.before)}, {"after", OrNull(notes.after)},
          {"upper", OrNull(notes.upper)},   {"lower", OrNull(notes.lower)},
          {"prefix", OrNull(notes.prefix)}, {"suffix", OrNull(notes.suffix)}};
}

Json TextsToJson(const DimensionTextsReport& texts) {
  return {{"prefix", OrNull(texts.prefix)},
          {"suffix", OrNull(texts.suffix)},
          {"before", OrNull(texts.before)},
          {"after", OrNull(texts.after)},
          {"upper", OrNull(texts.upper)},
          {"lower", OrNull(texts.lower)},
          {"holeCallout", OrNull(texts.holeCallout)},
          {"below", OrNull(texts.below)}};
}

Json ToleranceToJson(const ToleranceReport& tolerance) {
  return {{"type", OrNull(tolerance.type)},
          {"allAround", OrNull(tolerance.allAround)},
          {"rows", List(tolerance.rows, RowToJson)},
          {"notes", NotesToJson(tolerance.notes)}};
}

Json DimensionToJson(const DimensionReport& dimension) {
  return {{"type", OrNull(dimension.type)},
          {"mainType", OrNull(dimension.mainType)},
          {"tolerance", OrNull(dimension.tolerance)},
          {"value", OrNull(dimension.value)},
          {"precision", OrNull(dimension.precision)},
          {"lower", OrNull(dimension.lower)},
          {"upper", OrNull(dimension.upper)},
          {"tolerancePrecision", OrNull(dimension.tolerancePrecision)},
          {"lowerText", OrNull(dimension.lowerText)},
          {"upperText", OrNull(dimension.upperText)},
          {"texts", TextsToJson(dimension.texts)},
          {"line", OrNull(dimension.line)},
          {"extensionLines", OrNull(dimension.extensionLines)},
          {"callouts", List(dimension.callouts,
                            [](const CalloutReport& callout) {
                              return Json{{"id", OrNull(callout.id)},
                                          {"name", OrNull(callout.name)},
                                          {"value", OrNull(callout.value)},
                                          {"calloutType", OrNull(callout.calloutType)}};
                            })},
          {"calloutType", OrNull(dimension.calloutType)}};
}

Json DatumToJson(const DatumReport& datum) {
  return {{"label", OrNull(datum.label)},
          {"targets", List(datum.targets, TextToJson)},
          {"targetIds", List(datum.targetIds, TextToJson)}};
}

Json DatumTargetToJson(const DatumTargetReport& target) {
  return {{"label", OrNull(target.label)},
          {"type", OrNull(target.type)},
          {"note", OrNull(target.note)},
          {"point1", OrNull(target.point1)},
          {"point2", OrNull(target.point2)}};
}

Json RoughnessToJson(const RoughnessReport& roughness) {
  return {{"obtention", OrNull(roughness.obtention)},
          {"applicability", OrNull(roughness.applicability)},
          {"fields", List(roughness.fields, TextToJson)}};
}

}  // namespace

Json EntityToJson(const EntityReport& entity) {
  return {{"kind", entity.kind}, {"id", OrNull(entity.id)}, {"label", OrNull(entity.label)}};
}

namespace {

Json WrittenToJson(const WrittenReport& written) {
  return {{"field", written.field}, {"text", written.text}, {"unit", written.unit}};
}

}  // namespace

Json AnnotationToJson(const AnnotationReport& annotation) {
  Json json{
      {"kind", annotation.kind},
      {"id", OrNull(annotation.id)},
      {"name", OrNull(annotation.name)},
      {"hidden", OrNull(annotation.hidden)},
      {"texts",
       List(annotation.texts,
            [](const TextReport& text) {
              return Json{{"string", OrNull(text.string)}, {"font", OrNull(text.font, FontToJson)}};
            })},
      {"entities", List(annotation.entities, EntityToJson)},
      {"position", OrNull(annotation.position)},
      {"depth", OrNull(annotation.depth)},
      {"leaders", List(annotation.leaders, [](const std::array<Point3, 2>& ends) {
         return Json{{"tail", PointToJson(ends[0])}, {"head", PointToJson(ends[1])}};
       })}};
  if (!annotation.written.empty()) json["written"] = List(annotation.written, WrittenToJson);
  if (annotation.dimension) json["dimension"] = DimensionToJson(*annotation.dimension);
  if (annotation.tolerance) json["tolerance"] = ToleranceToJson(*annotation.tolerance);
  if (annotation.datum) json["datum"] = DatumToJson(*annotation.datum);
  if (annotation.datumTarget) json["datumTarget"] = DatumTargetToJson(*annotation.datumTarget);
  if (annotation.roughness) json["roughness"] = RoughnessToJson(*annotation.roughness);
  return json;
}

}  // namespace json

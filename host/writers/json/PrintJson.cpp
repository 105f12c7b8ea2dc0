#include "writers/json/PrintJson.h"

#include <cmath>
#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

// The version of the JSON's shape, in docs/report.schema.json too.
constexpr int kFormat = 2;

// File names may hold any bytes.
std::string Dump(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

template <typename T>
Json OrNull(const std::optional<T>& value) {
  return value.has_value() ? Json(*value) : Json();
}

template <typename T, typename Convert>
Json List(const std::vector<T>& items, Convert convert) {
  Json list = Json::array();
  for (const T& item : items) list.push_back(convert(item));
  return list;
}

template <typename T, typename Convert>
Json OrNull(const std::optional<T>& value, Convert convert) {
  return value.has_value() ? convert(*value) : Json();
}

Json TextToJson(const Text& text) { return OrNull(text); }

// A text that is empty where there is none.
Json OrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

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

Json EntityToJson(const EntityReport& entity) {
  return {{"kind", entity.kind}, {"id", OrNull(entity.id)}, {"label", OrNull(entity.label)}};
}

Json WrittenToJson(const WrittenReport& written) {
  return {{"field", written.field}, {"text", written.text}, {"unit", written.unit}};
}

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

Json ViewToJson(const ViewReport& view) {
  return {
      {"id", OrNull(view.id)},
      {"frame",
       OrNull(
           view.frame,
           [](const ViewFrameReport& frame) {
             return Json{{"origin", frame.origin}, {"xAxis", frame.xAxis}, {"yAxis", frame.yAxis}};
           })},
      {"annotations", List(view.annotations, AnnotationToJson)}};
}

Json CameraToJson(const CameraReport& camera) {
  return {{"name", OrNull(camera.name)},
          {"type", camera.type},
          {"origin", camera.origin},
          {"target", camera.target},
          {"viewDirection", camera.viewDirection},
          {"viewDirectionNormal", camera.viewDirectionNormal},
          {"viewAngle", camera.viewAngle},
          {"zoom", camera.zoom}};
}

Json CaptureToJson(const CaptureReport& capture) {
  return {{"id", OrNull(capture.id)},
          {"name", OrNull(capture.name)},
          {"camera", OrNull(capture.camera, CameraToJson)},
          {"hiddenText", OrNull(capture.hiddenText)},
          {"clippingPlane", OrNull(capture.clippingPlane,
                                   [](const std::array<Point3, 2>& plane) {
                                     return Json{{"point", plane[0]}, {"normal", plane[1]}};
                                   })},
          {"members",
           {{"count", capture.memberCount},
            {"annotations",
             List(capture.members, [](const MemberReport& member) { return OrNull(member.name); })},
            {"ids", List(capture.members,
                         [](const MemberReport& member) { return OrNull(member.id); })}}}};
}

Json AppliedToJson(const AppliedEntityReport& applied) {
  Json json = EntityToJson(applied.entity);
  json["annotations"] = List(applied.annotations, TextToJson);
  return json;
}

Json SkippedToJson(const SkippedReport& skipped) {
  return {{"severity", skipped.severity}, {"kind", skipped.kind},
          {"id", OrNull(skipped.id)},     {"annotation", OrNull(skipped.annotation)},
          {"reason", skipped.reason},     {"line", skipped.line > 0 ? Json(skipped.line) : Json()},
          {"count", skipped.count}};
}

Json SourceToJson(const SourceReport& source) {
  Json json{{"file", source.file},
            {"format", OrNull(source.format)},
            {"linearUnit", OrNull(source.linearUnit)},
            {"angularUnit", "degree"},
            {"pmiLinearUnit", OrNull(source.pmiLinearUnit)},
            {"pmiAngularUnit", OrNull(source.pmiAngularUnit)},
            {"counts", source.counts}};
  long all = 0;
  for (const char* severity : {"lost", "reduced", "ignored"}) {
    long count = 0;
    for (const SkippedReport& skipped : source.skipped) {
      if (skipped.severity == severity) count += skipped.count;
    }
    json[severity] = count;
    all += count;
  }
  json["skippedCount"] = all;
  json["skipped"] = List(source.skipped, SkippedToJson);
  return json;
}

}  // namespace

std::string PrintJson(const ModelReport& report, const std::string& program, int indent) {
  return Dump({{"format", kFormat},
               {"program", program},
               {"totals", report.totals},
               {"views", List(report.views, ViewToJson)},
               {"captures", List(report.captures, CaptureToJson)},
               {"entities", List(report.entities, AppliedToJson)},
               {"source", SourceToJson(report.source)}},
              indent);
}

std::string PrintJsonError(const std::string& file, const std::string& error,
                           const std::string& program, int indent) {
  return Dump(
      {{"format", kFormat}, {"program", program}, {"source", {{"file", file}, {"error", error}}}},
      indent);
}

#include <nlohmann/json.hpp>

#include "writers/json/PrintJson.h"

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
                            return Json{{"label", OrNull(datum.label)},
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
                              return Json{{"name", OrNull(callout.name)},
                                          {"value", OrNull(callout.value)},
                                          {"calloutType", OrNull(callout.calloutType)}};
                            })},
          {"calloutType", OrNull(dimension.calloutType)}};
}

Json DatumToJson(const DatumReport& datum) {
  return {{"label", OrNull(datum.label)}, {"targets", List(datum.targets, TextToJson)}};
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

Json AnnotationToJson(const AnnotationReport& annotation) {
  Json json{
      {"kind", annotation.kind},
      {"name", OrNull(annotation.name)},
      {"hidden", OrNull(annotation.hidden)},
      {"texts",
       List(annotation.texts,
            [](const TextReport& text) {
              return Json{{"string", OrNull(text.string)}, {"font", OrNull(text.font, FontToJson)}};
            })},
      {"entities", List(annotation.entities,
                        [](const EntityReport& entity) {
                          return Json{{"kind", entity.kind}, {"label", OrNull(entity.label)}};
                        })},
      {"position", OrNull(annotation.position)},
      {"depth", OrNull(annotation.depth)},
      {"leaders", List(annotation.leaders, [](const std::array<Point3, 2>& ends) {
         return Json{{"tail", ends[0]}, {"head", ends[1]}};
       })}};
  if (annotation.dimension) json["dimension"] = DimensionToJson(*annotation.dimension);
  if (annotation.tolerance) json["tolerance"] = ToleranceToJson(*annotation.tolerance);
  if (annotation.datum) json["datum"] = DatumToJson(*annotation.datum);
  if (annotation.datumTarget) json["datumTarget"] = DatumTargetToJson(*annotation.datumTarget);
  if (annotation.roughness) json["roughness"] = RoughnessToJson(*annotation.roughness);
  return json;
}

Json ViewToJson(const ViewReport& view) {
  return {
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
  return {{"name", OrNull(capture.name)},
          {"camera", OrNull(capture.camera, CameraToJson)},
          {"hiddenText", OrNull(capture.hiddenText)},
          {"clippingPlane", OrNull(capture.clippingPlane,
                                   [](const std::array<Point3, 2>& plane) {
                                     return Json{{"point", plane[0]}, {"normal", plane[1]}};
                                   })},
          {"members",
           {{"count", capture.memberCount},
            {"annotations", List(capture.members, [](const MemberReport& member) {
               return TextToJson(member.name);
             })}}}};
}

}  // namespace

std::string PrintJson(const ModelReport& report, const std::string& program, int indent) {
  const Json json{{"format", kFormat},
                  {"program", program},
                  {"totals", report.totals},
                  {"views", List(report.views, ViewToJson)},
                  {"captures", List(report.captures, CaptureToJson)},
                  {"source",
                   {{"file", report.source.file},
                    {"linearUnit", report.source.linearUnit},
                    {"counts", report.source.counts},
                    {"skippedCount", report.source.skipped.size()},
                    {"skipped", List(report.source.skipped, [](const SkippedReport& skipped) {
                       return Json{{"severity", skipped.severity},
                                   {"kind", skipped.kind},
                                   {"id", skipped.id},
                                   {"annotation", skipped.annotation},
                                   {"reason", skipped.reason},
                                   {"line", skipped.line},
                                   {"count", skipped.count}};
                     })}}}};
  return Dump(json, indent);
}

std::string PrintJsonError(const std::string& file, const std::string& error,
                           const std::string& program, int indent) {
  return Dump(
      {{"format", kFormat}, {"program", program}, {"source", {{"file", file}, {"error", error}}}},
      indent);
}

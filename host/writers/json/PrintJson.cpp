#include "writers/json/PrintJson.h"

#include "writers/json/JsonText.h"
#include "writers/json/Trees.h"

namespace json {

namespace {

// The version of the JSON's shape, in docs/report.schema.json too.
constexpr int kFormat = 2;

Json FrameToJson(const ViewFrameReport& frame) {
  return {{"origin", frame.origin}, {"xAxis", frame.xAxis}, {"yAxis", frame.yAxis}};
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
            {"ids",
             List(capture.members, [](const MemberReport& member) { return OrNull(member.id); })},
            {"entities", List(capture.entities, EntityToJson)}}}};
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

void WriteView(const ViewReport& view, JsonText& text) {
  text.Open('{').Key("id").Value(OrNull(view.id));
  text.Key("frame").Value(OrNull(view.frame, FrameToJson));
  text.Key("annotations").List(view.annotations, AnnotationToJson).Close('}');
}

void WriteSource(const SourceReport& source, JsonText& text) {
  text.Open('{').Key("file").Value(source.file);
  text.Key("format").Value(OrNull(source.format));
  text.Key("partFile").Value(OrNull(source.partFile));
  text.Key("partFormat").Value(OrNull(source.partFormat));
  text.Key("linearUnit").Value(OrNull(source.linearUnit));
  text.Key("angularUnit").Value("degree");
  text.Key("pmiLinearUnit").Value(OrNull(source.pmiLinearUnit));
  text.Key("pmiAngularUnit").Value(OrNull(source.pmiAngularUnit));
  text.Key("counts").Value(source.counts);
  long all = 0;
  for (const char* severity : {"lost", "reduced", "ignored"}) {
    long count = 0;
    for (const SkippedReport& skipped : source.skipped) {
      if (skipped.severity == severity) count += skipped.count;
    }
    text.Key(severity).Value(count);
    all += count;
  }
  text.Key("skippedCount").Value(all);
  text.Key("skipped").List(source.skipped, SkippedToJson).Close('}');
}

void WriteChecks(const ChecksReport& checks, JsonText& text) {
  std::map<std::string, long> counts;
  for (const FindingReport& finding : checks.findings)
    ++counts[checks.rules[finding.rule].severity];
  text.Open('{').Key("errors").Value(counts["error"]).Key("warnings").Value(counts["warning"]);
  text.Key("notes").Value(counts["note"]).Key("rules");
  text.List(checks.rules, [](const RuleReport& rule) { return rule.id; }).Key("findings");
  text.List(checks.findings, [&](const FindingReport& finding) {
    const RuleReport& rule = checks.rules[finding.rule];
    return Json{{"rule", rule.id},
                {"severity", rule.severity},
                {"annotation", OrNull(finding.annotation)},
                {"name", OrNull(finding.name)},
                {"message", finding.message},
                {"title", rule.title},
                {"standard", OrNull(rule.standard)},
                {"advice", rule.advice}};
  });
  text.Close('}');
}

// The first keys of every document: version of the shape, program.
JsonText Begin(const std::string& program, int indent, JsonText::Sink sink = {}) {
  JsonText text(indent, std::move(sink));
  text.Open('{').Key("format").Value(kFormat).Key("program").Value(program);
  return text;
}

}  // namespace

void PrintJson(const ModelReport& report, const std::string& program, int indent,
               const std::function<void(const std::string&)>& sink) {
  JsonText text = Begin(program, indent, sink);
  text.Key("totals").Value(report.totals);
  text.Key("views").Open('[');
  for (const ViewReport& view : report.views) WriteView(view, text);
  text.Close(']');
  text.Key("captures").List(report.captures, CaptureToJson);
  text.Key("entities").List(report.entities, AppliedToJson);
  text.Key("source");
  WriteSource(report.source, text);
  if (report.checks) {
    text.Key("checks");
    WriteChecks(*report.checks, text);
  }
  sink(text.Close('}').Take());
}

std::string PrintJson(const ModelReport& report, const std::string& program, int indent) {
  std::string all;
  PrintJson(report, program, indent, [&all](const std::string& piece) { all += piece; });
  return all;
}

std::string PrintJsonError(const std::string& file, const std::string& error,
                           const std::string& program, int indent) {
  JsonText text = Begin(program, indent);
  text.Key("source").Value({{"file", file}, {"error", error}});
  return text.Close('}').Take();
}

}  // namespace json

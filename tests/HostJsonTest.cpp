// The JSON form of a report.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "SavedReports.h"
#include "report/EnumNames.h"
#include "writers/json/PrintJson.h"

namespace {

using Json = nlohmann::ordered_json;

// A report in which no two values are the same.
ModelReport EveryField() {
  ModelReport report;
  report.totals = {{"captures", 1},  {"datum", 2},    {"datumTarget", 3},
                   {"dimension", 4}, {"flagNote", 5}, {"geometricTolerance", 6},
                   {"roughness", 7}, {"text", 8},     {"unknown", 9}};
  ViewReport& view = report.views.emplace_back();
  view.id = "view 1";
  view.frame = {{1, 2, 3}, {1, 0, 0}, {0, 1, 0}};
  AnnotationReport note;
  note.kind = "text";
  note.id = "10";
  note.name = "a note";
  note.hidden = true;
  note.texts = {{"words", FontReport{true, false, true, false, true, false, 3.5, 0.7, 15}},
                {"bare", {}}};
  note.entities = {{"face", "100", "top"}, {"edge", {}, {}}};
  note.position = {4.5, 5.5};
  note.depth = 6.5;
  note.leaders = {{{{7, 8, 9}, {10, 11, 12}}}};
  note.written = {{"value", ".375", "inch"}};
  view.annotations.push_back(note);
  AnnotationReport other;
  other.kind = "dimension";
  other.dimension = DimensionReport{"width",
                                    "linear",
                                    "hole",
                                    "limits",
                                    20.5,
                                    1,
                                    -0.1,
                                    0.3,
                                    2,
                                    "20.8",
                                    "20.4",
                                    {"a", "b", "c", "d", "e", "f", "g", "h"},
                                    std::array<Point2, 2>{{{1, 2}, {3, 4}}},
                                    std::array<Point2, 3>{{{5, 6}, {7, 8}, {9, 10}}},
                                    {{"11", "bore", "counterbore", 12.5}}};
  view.annotations.push_back(other);
  other = {};
  other.kind = "geometricTolerance";
  const ModifierReport modifier{"maximumMaterial", 0.25};
  other.tolerance = ToleranceReport{"position",
                                    false,
                                    {{"diametrical",
                                      0.5,
                                      0.125,
                                      25,
                                      26,
                                      {modifier},
                                      FrameReport{"A B", {{"A", {{"12", "A", {{"basic", {}}}}}}}}},
                                     {"none", {}, {}, {}, {}, {}, {}}},
                                    {"p", "q", "r", "s", "t", "u"}};
  view.annotations.push_back(other);
  other = {};
  other.kind = "datum";
  other.datum = DatumReport{"B", {"B1", {}}, {"13", {}}};
  view.annotations.push_back(other);
  other = {};
  other.kind = "datumTarget";
  other.datumTarget = DatumTargetReport{"B1", "line", "⌀5", {{1, 2, 3}}, {{4, 5, 6}}};
  view.annotations.push_back(other);
  other = {};
  other.kind = "roughness";
  other.roughness = RoughnessReport{"machiningMandatory", "allPartSurfaces", {"3.2 um", {}}};
  view.annotations.push_back(other);
  report.views.emplace_back();
  report.views.back().id = "view 2";
  CaptureReport& capture = report.captures.emplace_back();
  capture.id = "30";
  capture.name = "front";
  capture.hiddenText = "secret";
  capture.camera = {"eye", "perspective", {1, 2, 3}, {4, 5, 6}, {0, 0, -1}, {0, 1, 0}, 45, 0.01};
  capture.clippingPlane = {{{7, 8, 9}, {0, 0, 1}}};
  capture.memberCount = 3;
  capture.members = {{"10", "a note"}, {{}, "no id"}};
  report.entities = {{{"face", "100", "top"}, {"10", {}}}, {{"vertex", {}, {}}, {}}};
  report.source = {"part.qif",
                   "QIF 3.0",
                   "mm",
                   "inch",
                   "radian",
                   {{"faces", 18}},
                   {{"lost", "Length", "14", "15", "no value", 70, 2},
                    {"reduced", "Plane", "", "", "r", 0, 4},
                    {"ignored", "Measure", "", "", "s", 1, 8},
                    {"lost", "Width", "", "", "t", 2, 16}}};
  return report;
}

TEST(HostJson, EveryFieldStandsUnderItsKey) {
  const std::string line = PrintJson(EveryField(), "pmi_report 7", -1);
  SaveReport(line);
  EXPECT_EQ(
      line,
      R"({"format":2,"program":"pmi_report 7","totals":{"captures":1,"datum":2,"datumTarget":3,)"
      R"("dimension":4,"flagNote":5,"geometricTolerance":6,"roughness":7,"text":8,"unknown":9},)"
      R"("views":[{"id":"view 1","frame":{"origin":[1.0,2.0,3.0],"xAxis":[1.0,0.0,0.0],)"
      R"("yAxis":[0.0,1.0,0.0]},"annotations":[{"kind":"text","id":"10","name":"a note",)"
      R"("hidden":true,"texts":[{"string":"words","font":{"fixedPitch":true,"height":3.5,)"
      R"("bold":false,"italic":true,"underline":false,"strikeThrough":true,"overline":false,)"
      R"("ratio":0.7,"slant":15.0}},{"string":"bare","font":null}],"entities":[{"kind":"face",)"
      R"("id":"100","label":"top"},{"kind":"edge","id":null,"label":null}],"position":[4.5,)"
      R"(5.5],"depth":6.5,"leaders":[{"tail":[7.0,8.0,9.0],"head":[10.0,11.0,12.0]}],)"
      R"("written":[{"field":"value","text":".375","unit":"inch"}]},{"kind":"dimension",)"
      R"("id":null,"name":null,"hidden":null,"texts":[],"entities":[],"position":null,)"
      R"("depth":null,"leaders":[],"dimension":{"type":"width","mainType":"linear",)"
      R"("tolerance":"limits","value":20.5,"precision":1.0,"lower":-0.1,"upper":0.3,)"
      R"("tolerancePrecision":2.0,"lowerText":"20.4","upperText":"20.8","texts":{"prefix":"a",)"
      R"("suffix":"b","before":"c","after":"d","upper":"e","lower":"f","holeCallout":"g",)"
      R"("below":"h"},"line":[[1.0,2.0],[3.0,4.0]],"extensionLines":[[5.0,6.0],[7.0,8.0],[9.0,)"
      R"(10.0]],"callouts":[{"id":"11","name":"bore","value":12.5,)"
      R"("calloutType":"counterbore"}],"calloutType":"hole"}},{"kind":"geometricTolerance",)"
      R"("id":null,"name":null,"hidden":null,"texts":[],"entities":[],"position":null,)"
      R"("depth":null,"leaders":[],"tolerance":{"type":"position","allAround":false,"rows":[{)"
      R"("valueType":"diametrical","magnitude":0.5,"refinement":0.125,"rateUnit1":25.0,)"
      R"("rateUnit2":26.0,"modifiers":[{"type":"maximumMaterial","magnitude":0.25}],"frame":{)"
      R"("note":"A B","references":[{"label":"A","datums":[{"id":"12","label":"A","modifiers":[)"
      R"({"type":"basic","magnitude":null}]}]}]}},{"valueType":"none","magnitude":null,)"
      R"("refinement":null,"rateUnit1":null,"rateUnit2":null,"modifiers":[],"frame":null}],)"
      R"("notes":{"before":"p","after":"q","upper":"r","lower":"s","prefix":"t",)"
      R"("suffix":"u"}}},{"kind":"datum","id":null,"name":null,"hidden":null,"texts":[],)"
      R"("entities":[],"position":null,"depth":null,"leaders":[],"datum":{"label":"B",)"
      R"("targets":["B1",null],"targetIds":["13",null]}},{"kind":"datumTarget","id":null,)"
      R"("name":null,"hidden":null,"texts":[],"entities":[],"position":null,"depth":null,)"
      R"("leaders":[],"datumTarget":{"label":"B1","type":"line","note":"⌀5","point1":[1.0,2.0,)"
      R"(3.0],"point2":[4.0,5.0,6.0]}},{"kind":"roughness","id":null,"name":null,"hidden":null,)"
      R"("texts":[],"entities":[],"position":null,"depth":null,"leaders":[],"roughness":{)"
      R"("obtention":"machiningMandatory","applicability":"allPartSurfaces","fields":["3.2 um",)"
      R"(null]}}]},{"id":"view 2","frame":null,"annotations":[]}],"captures":[{"id":"30",)"
      R"("name":"front","camera":{"name":"eye","type":"perspective","origin":[1.0,2.0,3.0],)"
      R"("target":[4.0,5.0,6.0],"viewDirection":[0.0,0.0,-1.0],"viewDirectionNormal":[0.0,1.0,)"
      R"(0.0],"viewAngle":45.0,"zoom":0.01},"hiddenText":"secret","clippingPlane":{"point":[)"
      R"(7.0,8.0,9.0],"normal":[0.0,0.0,1.0]},"members":{"count":3,"annotations":["a note",)"
      R"("no id"],"ids":["10",null]}}],"entities":[{"kind":"face","id":"100","label":"top",)"
      R"("annotations":["10",null]},{"kind":"vertex","id":null,"label":null,"annotations":[]}],)"
      R"("source":{"file":"part.qif","format":"QIF 3.0","linearUnit":"mm",)"
      R"("angularUnit":"degree","pmiLinearUnit":"inch","pmiAngularUnit":"radian","counts":{)"
      R"("faces":18},"lost":18,"reduced":4,"ignored":8,"skippedCount":30,"skipped":[{)"
      R"("severity":"lost","kind":"Length","id":"14","annotation":"15","reason":"no value",)"
      R"("line":70,"count":2},{"severity":"reduced","kind":"Plane","id":null,"annotation":null,)"
      R"("reason":"r","line":null,"count":4},{"severity":"ignored","kind":"Measure","id":null,)"
      R"("annotation":null,"reason":"s","line":1,"count":8},{"severity":"lost","kind":"Width",)"
      R"("id":null,"annotation":null,"reason":"t","line":2,"count":16}]}})");
  for (const int indent : {0, 2}) {
    EXPECT_EQ(PrintJson(EveryField(), "pmi_report 7", indent), Json::parse(line).dump(indent));
  }
}

TEST(HostJson, ModelThatCouldNotBeReportedOnHasALineOfItsOwn) {
  const std::string line = PrintJsonError("a\xFF.qif", "line 3: \"no\"", "pmi_report 7", -1);
  SaveReport(line);
  EXPECT_EQ(line,
            "{\"format\":2,\"program\":\"pmi_report 7\","
            "\"source\":{\"file\":\"a\uFFFD.qif\",\"error\":\"line 3: \\\"no\\\"\"}}");
}

// The names of an enumeration, which starts at 0.
template <typename Enum>
std::vector<std::string> Names() {
  std::vector<std::string> names{NameOf(Enum())};
  for (int i = 1; NameOf(static_cast<Enum>(i)) != names[0]; ++i) {
    names.emplace_back(NameOf(static_cast<Enum>(i)));
  }
  return names;
}

TEST(HostJson, SchemaListsTheNamesOfEveryEnumeration) {
  const Json schema = Json::parse(std::ifstream(REPORT_SCHEMA));
  const auto listed = [&](const char* type, const char* key) {
    std::vector<std::string> names;
    for (const Json& name : schema.at("$defs").at(type).at("properties").at(key).at("enum")) {
      if (!name.is_null()) names.push_back(name);
    }
    return names;
  };
  EXPECT_EQ(listed("dimension", "type"), Names<KOVAPMIDimensionType>());
  EXPECT_EQ(listed("dimension", "mainType"), Names<KOVAPMIDimensionMainType>());
  EXPECT_EQ(listed("dimension", "calloutType"), Names<KOVAPMICalloutFeatureAnnotationType>());
  EXPECT_EQ(listed("tolerance", "type"), Names<KOVAPMIToleranceType>());
  EXPECT_EQ(listed("row", "valueType"), Names<KOVAPMIToleranceValueType>());
  EXPECT_EQ(listed("modifier", "type"), Names<KOVAPMIToleranceModifier>());
  EXPECT_EQ(listed("datumTarget", "type"), Names<KOVAPMIDatumTargetType>());
  EXPECT_EQ(listed("roughness", "obtention"), Names<KOVAPMIRoughnessObtentionType>());
  EXPECT_EQ(listed("roughness", "applicability"), Names<KOVAPMIRoughnessApplicabilityType>());
  EXPECT_EQ(listed("camera", "type"), Names<KOVAPMICameraType>());
}

}  // namespace

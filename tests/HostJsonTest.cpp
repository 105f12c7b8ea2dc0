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
  const Json expected = Json::parse(std::ifstream(EVERY_FIELD));
  for (const int indent : {-1, 0, 2}) {
    const std::string text = PrintJson(EveryField(), "pmi_report 7", indent);
    SaveReport(text);
    EXPECT_EQ(text, expected.dump(indent));
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

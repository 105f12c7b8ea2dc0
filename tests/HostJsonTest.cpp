// The JSON form of a report.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "EveryReport.h"
#include "SavedReports.h"
#include "report/EnumNames.h"
#include "writers/json/PrintJson.h"

namespace {

using Json = nlohmann::ordered_json;

TEST(HostJson, EveryFieldStandsUnderItsKey) {
  ModelReport report = Everything();
  DimensionReport& bore = *report.views.at(0).annotations.at(0).dimension;
  bore.upperText = "20.8";
  bore.lowerText = "20.4";
  report.captures.at(0).members.push_back({{}, "no id"});
  report.source.skipped.push_back({"reduced", "Plane", "", "", "r", 0, 4});
  report.checks = {{{"N9", "note", "title", "", "do"}, {"E9", "error", "bad", "ISO 1", "mend"}},
                   {{1, "10", "Bore", "what"}, {1, {}, {}, "why"}, {0, "20", {}, "that"}}};
  const Json expected = Json::parse(std::ifstream(EVERY_FIELD));
  for (const int indent : {-1, 0, 2}) {
    const std::string text = json::PrintJson(report, "pmi_report 7", indent);
    SaveReport(text);
    EXPECT_EQ(text, expected.dump(indent));
  }
}

TEST(HostJson, ModelThatCouldNotBeReportedOnHasALineOfItsOwn) {
  const std::string line = json::PrintJsonError("a\xFF.qif", "line 3: \"no\"", "pmi_report 7", -1);
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

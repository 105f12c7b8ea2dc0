// The values that the program gives of models.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "HostProgram.h"
#include "report/Wide.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

using HostReport = HostProgram;

const Json& AnnotationNamed(const Json& report, const std::string& name) {
  for (const Json& view : report.at("views")) {
    for (const Json& annotation : view.at("annotations")) {
      if (annotation.at("name") == name) return annotation;
    }
  }
  ADD_FAILURE() << "no annotation " << name;
  return report;
}

TEST_F(HostReport, BundledModelShowsEveryKindWithItsValues) {
  const Outcome run = Run("--json");
  ASSERT_TRUE(run.Reported()) << run.err;
  const Json report = Json::parse(run.out);
  EXPECT_EQ(report.at("totals"),
            Json::parse(R"({"text": 5, "roughness": 2, "geometricTolerance": 11, "dimension": 14,
                            "datum": 6, "datumTarget": 4, "flagNote": 1, "unknown": 0,
                            "captures": 2})"));
  const Json& bore = AnnotationNamed(report, "Bore diameter").at("dimension");
  EXPECT_EQ(bore.at("type"), "diameter");
  EXPECT_EQ(bore.at("value"), 35);
  EXPECT_EQ(bore.at("upper"), 0.2);
  EXPECT_EQ(bore.at("lower"), 0);
  // .375 ± .005 inch in a document in millimetres.
  const Json& holes = AnnotationNamed(report, "Mounting hole diameter, 4X").at("dimension");
  EXPECT_NEAR(holes.at("value").get<double>(), 9.525, 1e-12);
  EXPECT_NEAR(holes.at("upper").get<double>(), 0.127, 1e-12);
  const Json& position = AnnotationNamed(report, "Mounting hole position, composite");
  EXPECT_EQ(position.at("entities").size(), 4U);
  EXPECT_EQ(position.at("tolerance").at("rows").size(), 2U);
  const Json& wall = AnnotationNamed(report, "Wall hole position").at("tolerance").at("rows")[0];
  EXPECT_EQ(wall.at("frame").at("references")[2].at("datums").size(), 2U);  // a common datum
  EXPECT_EQ(AnnotationNamed(report, "A").at("datum").at("targets"), Json({"A1", "A2", "A3"}));
  EXPECT_EQ(AnnotationNamed(report, "A3").at("datumTarget").at("type"), "circle");
  EXPECT_EQ(AnnotationNamed(report, "Bottom surface texture").at("roughness").at("obtention"),
            "machiningMandatory");
  const Json& note = AnnotationNamed(report, "Material note").at("texts")[0];
  EXPECT_EQ(note.at("string"), "MATERIAL: ALUMINIUM ALLOY\nHEAT TREATED\nANODISE 10 µm");
  EXPECT_EQ(note.at("font").at("height"), 3.5);
  EXPECT_TRUE(AnnotationNamed(report, "General note").at("position").is_null());
  EXPECT_TRUE(report.at("captures")[0].at("clippingPlane").is_null());
  EXPECT_EQ(report.at("captures")[1].at("clippingPlane").at("normal"), Json({0.0, 1.0, 0.0}));
}

TEST_F(HostReport, LimitsOfZeroAreToldFromNone) {
  const std::string limits =
      "<Tolerance>\n          <MaxValue decimalPlaces=\"1\">0.2</MaxValue><MinValue "
      "decimalPlaces=\"1\">0</MinValue>\n          "
      "<DefinedAsLimit>false</DefinedAsLimit>\n        </Tolerance>";
  const struct {
    const char* tolerance;
    const char* kind;
    Json limit;
  } cases[] = {
      {"<Tolerance><MaxValue>0</MaxValue><MinValue>0</MinValue></Tolerance>", "plusMinus", 0},
      {"", "none", {}}};
  for (const auto& each : cases) {
    const Json report = Json::parse(Run("--json " + Edited(limits, each.tolerance)).out);
    const Json& bore = AnnotationNamed(report, "Bore diameter").at("dimension");
    EXPECT_EQ(bore.at("tolerance"), each.kind);
    for (const char* key : {"lower", "upper", "tolerancePrecision"}) {
      EXPECT_EQ(bore.at(key), each.limit) << each.kind << key;
    }
    EXPECT_EQ(AnnotationNamed(report, "Overall height").at("dimension").at("tolerance"),
              "reference");
    const Json& spacing = AnnotationNamed(report, "Mounting hole spacing").at("dimension");
    EXPECT_EQ(spacing.at("tolerance"), "basic");
    EXPECT_TRUE(spacing.at("upper").is_null());
    const Json& thickness = AnnotationNamed(report, "Wall thickness").at("dimension");
    EXPECT_TRUE(thickness.at("value").is_null());
    EXPECT_TRUE(thickness.at("lower").is_null());
  }
}

TEST_F(HostReport, RealModelsGiveTheirTotals) {
  if (!fs::exists(REAL_MODELS)) GTEST_SKIP() << "no real models at " REAL_MODELS;
  const struct {
    const char* file;
    int dimensions, tolerances, datums, texts, captures, views;
  } cases[] = {{"nist_ctc_01_asme1_ap242.qif", 8, 6, 3, 6, 1, 23},
               {"nist_ctc_03_asme1_ap242.qif", 9, 13, 6, 2, 0, 30},
               {"nist_ftc_08_asme1_ap242.qif", 10, 27, 11, 2, 13, 50}};
  for (const auto& model : cases) {
    if (!fs::exists(fs::path(REAL_MODELS) / model.file)) continue;
    const Outcome run = Run(std::string("--json " REAL_MODELS "/") + model.file);
    ASSERT_TRUE(run.Reported()) << run.err;
    const Json report = Json::parse(run.out);
    const Json& totals = report.at("totals");
    EXPECT_EQ(totals.at("dimension"), model.dimensions) << model.file;
    EXPECT_EQ(totals.at("geometricTolerance"), model.tolerances) << model.file;
    EXPECT_EQ(totals.at("datum"), model.datums) << model.file;
    EXPECT_EQ(totals.at("text"), model.texts) << model.file;
    EXPECT_EQ(totals.at("captures"), model.captures) << model.file;
    EXPECT_EQ(report.at("views").size(), static_cast<std::size_t>(model.views)) << model.file;
    for (const Json& view : report.at("views")) EXPECT_FALSE(view.at("frame").is_null());
  }
}

TEST(HostWide, TextsOfEveryLengthOfCodeGoToUtf8AndBrokenOnesAreReplaced) {
  EXPECT_EQ(ToUtf8(L"µ ⌀ \U0001F4D0 \U0010FFFD"), "µ ⌀ \xF0\x9F\x93\x90 \xF4\x8F\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::wstring{static_cast<wchar_t>(0xD800)}), "\xEF\xBF\xBD");
}

}  // namespace

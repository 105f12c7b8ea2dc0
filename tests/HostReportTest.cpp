// The program as people run it, and the lines it prints.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "SavedReports.h"
#include "report/Wide.h"
#include "writers/text/Drawing.h"
#include "writers/text/PrintText.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Read(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

struct Outcome {
  int code;
  std::string out, err;
};

class HostReport : public testing::Test {
 protected:
  HostReport() : folder_(fs::temp_directory_path() / ("pmi_report_" + std::to_string(getpid()))) {
    fs::create_directories(folder_);
  }
  ~HostReport() override { fs::remove_all(folder_); }

  Outcome Run(const std::string& arguments) {
    const std::string out = folder_ / "out";
    const std::string err = folder_ / "err";
    const int status = std::system((PROGRAM " " + arguments + " >" + out + " 2>" + err).c_str());
    const Outcome outcome{WEXITSTATUS(status), Read(out), Read(err)};
    if (outcome.out.rfind('{', 0) == 0) SaveReport(outcome.out);
    return outcome;
  }
  // A file with `text`; its path.
  std::string File(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return folder_ / name;
  }
  // The bundled model with its first `from` become `to`.
  std::string Edited(const std::string& from, const std::string& to) {
    std::string text = Read(BUNDLED_MODEL);
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return File("edited.qif", text.replace(at, from.size(), to));
  }

  fs::path folder_;
};

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
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_THAT(run.err, IsEmpty());
  const Json report = Json::parse(run.out);
  EXPECT_EQ(report.at("totals"),
            Json::parse(R"({"text": 4, "roughness": 2, "geometricTolerance": 11, "dimension": 14,
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

TEST_F(HostReport, TextFormWritesAnnotationsAsADrawingDoes) {
  const Outcome run = Run("");
  ASSERT_EQ(run.code, 0) << run.err;
  for (const char* line :
       {"⌀35 +0.2/0\n", "⌀20.10/20.00\n", "⏥ | 0.1 / 0.05/25×25\n", "⌖ | ⌀0.3 Ⓜ | A | E Ⓜ | C-D\n",
        "⌖ | ⌀0.4 Ⓜ | A | B | C / ⌀0.15 Ⓜ | A | B\n", "45° ±0.5°\n", "datum \"A\"  [A]\n",
        "⌓ | 0.5 Ⓤ0.2 | A | B | C (all around)\n", "totals: captures 2"}) {
    EXPECT_THAT(run.out, HasSubstr(line));
  }
}

TEST_F(HostReport, BadModelGivesOneLineWithFileAndPlaceAndNothingOnStdout) {
  const struct {
    std::string path;
    const char* says;
  } cases[] = {
      {"/nowhere/at/all.qif", "/nowhere/at/all.qif"},
      {folder_, folder_.c_str()},
      {File("empty.qif", ""), "empty.qif"},
      {File("broken.qif", "<QIFDocument>\n  <Header>\n</QIFDocument>"), "broken.qif:3:"},
      {File("other.qif", "<?xml version=\"1.0\"?>\n<drawing/>"), "other.qif:2:"},
      {Edited("versionQIF=\"3.0.0\"", "versionQIF=\"2.1.0\""), "edited.qif:"},
  };
  for (const auto& bad : cases) {
    const Outcome run = Run("--json " + bad.path);
    EXPECT_EQ(run.code, 2) << bad.path;
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_THAT(run.err, AllOf(HasSubstr(bad.says), EndsWith("\n")));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  }
}

TEST_F(HostReport, BadPluginGivesItsOwnExitCodeWithTheReason) {
  const struct {
    const char* plugin;
    const char* says;
  } cases[] = {{"/nowhere/plugin.so", "/nowhere/plugin.so"},
               {NO_PLUGIN, "KOVACreateOrvoPMIExporter"},
               {FAILING_PLUGIN, "0x1000001"},
               {RAISING_PLUGIN, "raised on purpose"}};
  for (const auto& bad : cases) {
    const Outcome run = Run(std::string("--plugin ") + bad.plugin);
    EXPECT_EQ(run.code, 3) << bad.plugin;
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_THAT(run.err, HasSubstr(bad.says));
  }
}

TEST_F(HostReport, SeveralModelsGiveALineEachAndGoOnAfterABadOne) {
  const Outcome run =
      Run("--json " BUNDLED_MODEL " " + File("bad.qif", "no model") + " " BUNDLED_MODEL);
  EXPECT_EQ(run.code, 2);
  EXPECT_THAT(run.err, HasSubstr("bad.qif"));
  std::istringstream lines(run.out);
  int reports = 0;
  for (std::string line; std::getline(lines, line); ++reports) {
    EXPECT_EQ(Json::parse(line).at("totals").at("dimension"), 14);
  }
  EXPECT_EQ(reports, 2);
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
    ASSERT_EQ(run.code, 0) << run.err;
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

TEST(HostDrawing, NumbersAndLimitsAreAsShortAsTheyCanBe) {
  EXPECT_EQ(DrawNumber(35), "35");
  EXPECT_EQ(DrawNumber(-1e-13), "0");
  EXPECT_EQ(DrawNumber(2e-7), "0.0000002");
  EXPECT_EQ(DrawNumber(1e300).size(), 301U);
  EXPECT_EQ(DrawNumber(std::nan("")), "?");
  DimensionReport angle;
  angle.mainType = "angular";
  angle.value = 60;
  angle.upper = 0.5;
  angle.lower = -0.25;
  EXPECT_EQ(DrawDimension(angle), "60° +0.5°/-0.25°");
  EXPECT_EQ(DrawDimension(DimensionReport()), "");
  DimensionReport limit;
  limit.value = 0;
  limit.upperText = "15.2";
  EXPECT_EQ(DrawDimension(limit), "15.2");
}

TEST(HostWide, TextsOfEveryLengthOfCodeGoToUtf8AndBrokenOnesAreReplaced) {
  EXPECT_EQ(ToUtf8(L"µ ⌀ \U0001F4D0 \U0010FFFD"), "µ ⌀ \xF0\x9F\x93\x90 \xF4\x8F\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::wstring{static_cast<wchar_t>(0xD800)}), "\xEF\xBF\xBD");
}

}  // namespace

// Documents that are damaged, or that nobody would write in good faith.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "readers/qif/QifReader.h"
#include "standin/Control.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

// The bundled model with its first `from` become `to`.
std::string Edited(const std::string& from, const std::string& to) {
  std::ostringstream read;
  read << std::ifstream(BUNDLED_MODEL).rdbuf();
  std::string text = read.str();
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

// Why a text is no model; empty when it is one.
std::string ErrorOf(const std::string& text) {
  const long alive = standin::Count().liveEntities;
  std::string error;
  try {
    ReadQifText(text, "part.qif");
  } catch (const ModelError& thrown) {
    error = thrown.what();
  }
  EXPECT_EQ(standin::Count().liveEntities, alive);
  EXPECT_EQ(error.find('\n'), std::string::npos);
  return error;
}

// The reasons for which a model skips what belongs to an id.
std::vector<std::string> SkippedOf(const std::string& text, const std::string& id) {
  std::vector<std::string> reasons;
  for (const SkippedItem& item : ReadQifText(text, "part.qif").skipped) {
    if (item.id == id) reasons.push_back(item.reason);
  }
  return reasons;
}

std::string Repeat(const std::string& text, int times) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

std::string Document(const std::string& content) {
  return "<QIFDocument xmlns=\"http://qifstandards.org/xsd/qif3\" versionQIF=\"3.0.0\">" + content +
         "</QIFDocument>";
}

TEST(HostHostile, DamagedStructureIsAnErrorThatSaysWhereAndWhat) {
  const struct {
    const char* from;
    const char* to;
    const char* says;
  } cases[] = {
      {"id=\"302\"", "id=\"301\"", "301"},
      {"id=\"302\"", "id=\"99999999999999999999\"", "99999999999999999999"},
      {"id=\"302\"", "id=\"-3\"", "-3"},
      {"id=\"302\"", "id=\"three\"", "three"},
      {"<CharacteristicDefinitionId>201<", "<CharacteristicDefinitionId>88888<", "88888"},
      {"<Id>1701</Id><Id>1702</Id>", "<Id>88888</Id><Id>1702</Id>", "88888"},
      {"xmlns=\"http://qifstandards.org/xsd/qif3\"", "xmlns=\"http://nowhere\"", "part.qif:"}};
  for (const auto& damage : cases) {
    const std::string error = ErrorOf(Edited(damage.from, damage.to));
    EXPECT_THAT(error, AllOf(ContainsRegex("^part\\.qif:[0-9]+:[0-9]+: "), HasSubstr(damage.says)))
        << damage.to;
  }
}

TEST(HostHostile, DamageToOneAnnotationCostsThatAnnotationAndIsListed) {
  const struct {
    const char* from;
    const char* to;
    const char* id;
  } cases[] = {
      {"<FeatureNominalIds n=\"1\"><Id>110</Id></FeatureNominalIds>\n        <Name>Bore diameter",
       "<FeatureNominalIds n=\"1\"><Id>88888</Id></FeatureNominalIds>\n        <Name>Bore diameter",
       "301"},
      {"<TargetValue decimalPlaces=\"1\">35<", "<TargetValue decimalPlaces=\"1\">NaN<", "301"},
      {"<TargetValue decimalPlaces=\"1\">35<", "<TargetValue decimalPlaces=\"1\">1e999<", "301"},
      {"<TargetValue decimalPlaces=\"1\">35<", "<TargetValue decimalPlaces=\"1\">35mm<", "301"},
      {"<Origin>20 110 15</Origin>", "<Origin>20 110 INF</Origin>", "301"},
      {"<Origin>20 110 15</Origin>", "<Origin>20 110</Origin>", "301"},
      {"<AnnotationViewId><Id>561</Id></AnnotationViewId><Origin>20 110",
       "<AnnotationViewId><Id>88888</Id></AnnotationViewId><Origin>20 110", "301"},
      {"<Reference><Id>301</Id></Reference>", "<Reference><Id>88888</Id></Reference>", "88888"},
      {"<StartPoint>41.25 -54.844555<", "<StartPoint>here<", "301"}};
  for (const auto& damage : cases) {
    const std::vector<std::string> whole = SkippedOf(Edited("", ""), damage.id);
    EXPECT_THAT(SkippedOf(Edited(damage.from, damage.to), damage.id),
                testing::Contains(testing::ResultOf(
                    [&](const std::string& reason) {
                      return testing::Value(whole, testing::Contains(reason));
                    },
                    false)))
        << damage.to;
  }
}

TEST(HostHostile, FeaturesThatConsistOfThemselvesAreReadOnce) {
  const std::string loop = Edited("<FeatureNominalIds n=\"2\"><Id>115</Id><Id>116</Id>",
                                  "<FeatureNominalIds n=\"2\"><Id>123</Id><Id>116</Id>");
  EXPECT_EQ(ErrorOf(loop), "");
}

TEST(HostHostile, DeepAndWideDocumentsEndInBoundedTimeAndMemory) {
  const int many = 1000000;
  EXPECT_THAT(ErrorOf(Document(Repeat("<a>", many) + Repeat("</a>", many))),
              AllOf(HasSubstr("part.qif:1:"), HasSubstr("250 levels")));
  EXPECT_THAT(ErrorOf(Document(Repeat("<Product/>", many))), HasSubstr("too many"));
  EXPECT_EQ(ErrorOf(Edited("n=\"40\"", "n=\"18446744073709551615\"")), "");
  const std::string enormous(10000000, 'x');
  EXPECT_EQ(ErrorOf(Edited("<Name>Bore diameter<", "<Name>" + enormous + "<")), "");
  EXPECT_EQ(ErrorOf(Edited("<Name>Bore diameter<", "<Name><")), "");
  EXPECT_THAT(ErrorOf("<!DOCTYPE a [<!ENTITY b \"&b;&b;\">]><QIFDocument>&b;</QIFDocument>"),
              HasSubstr("loop"));
}

}  // namespace

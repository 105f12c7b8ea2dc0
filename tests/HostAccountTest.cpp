// What a model lacks of its document: how it is listed, and what is not lost.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "readers/qif/Account.h"
#include "readers/qif/QifReader.h"
#include "standin/Part.h"

namespace {

using testing::ElementsAre;

// A part of two faces in one body, with what a test adds to the product and to the document.
std::string Document(const std::string& product, const std::string& content) {
  return R"(<QIFDocument xmlns="http://qifstandards.org/xsd/qif3" versionQIF="3.0.0"><FileUnits>
      <PrimaryUnits>
        <LinearUnit><UnitName>mm</UnitName><UnitConversion><Factor>0.001</Factor></UnitConversion>
        </LinearUnit>
        <PMILinearUnit><UnitName>inch</UnitName><UnitConversion><Factor>0.0254</Factor>
        </UnitConversion></PMILinearUnit>
      </PrimaryUnits></FileUnits>
    <Product><TopologySet>
      <FaceSet><Face id="1"/><Face id="2"/></FaceSet>
      <BodySet><Body id="3"><FaceIds><Id>1</Id><Id>2</Id></FaceIds></Body></BodySet>
    </TopologySet><ViewSet><AnnotationViewSet><AnnotationView id="4"><Normal>0 0 1</Normal>
      <Direction>1 0 0</Direction></AnnotationView></AnnotationViewSet></ViewSet>)" +
         product + "</Product>" + content + "</QIFDocument>";
}

std::string Characteristic(const std::string& kind, const std::string& definition,
                           const std::string& nominal) {
  return "<Characteristics><CharacteristicDefinitions><" + kind +
         "CharacteristicDefinition id=\"10\">" + definition + "</" + kind +
         "CharacteristicDefinition></CharacteristicDefinitions><CharacteristicNominals><" + kind +
         "CharacteristicNominal id=\"11\"><CharacteristicDefinitionId>10"
         "</CharacteristicDefinitionId>" +
         nominal + "</" + kind +
         "CharacteristicNominal></CharacteristicNominals></Characteristics>";
}

std::string Display(const std::string& parts) {
  return "<VisualizationSet><PMIDisplaySet><PMIDisplay><Plane><AnnotationViewId><Id>4</Id>"
         "</AnnotationViewId></Plane>" +
         parts +
         "<Reference><Id>11</Id></Reference></PMIDisplay></PMIDisplaySet></VisualizationSet>";
}

// The entries as "severity kind id/annotation xcount".
std::vector<std::string> AccountOf(const Model& model) {
  std::vector<std::string> entries;
  for (const SkippedItem& item : model.skipped) {
    const char* const severities[] = {"lost", "reduced", "ignored"};
    entries.push_back(std::string(severities[static_cast<int>(item.severity)]) + " " + item.kind +
                      " " + item.id + "/" + item.annotation + " x" + std::to_string(item.count));
  }
  return entries;
}
std::vector<std::string> AccountOf(const std::string& text) {
  return AccountOf(ReadQifText(text, "part.qif"));
}

template <typename Entity>
Entity& Find(const Model& model, int (*is)(const ENTITY*)) {
  for (ENTITY* entity : model.part->GetEntities()) {
    if (is(entity) == 1) return static_cast<Entity&>(*entity);
  }
  throw std::runtime_error("no such entity");
}

TEST(HostAccount, EntriesAreCountedCutAndLimited) {
  qif::Account account(2);
  const SkippedItem item{Severity::kLost, "Note", "5", "5", std::string(5000, 'x'), 7};
  for (int i = 0; i < 3; ++i) account.Add(item);
  for (const char* id : {"6", "7", "8"}) {
    account.Add({Severity::kReduced, std::string(59, 'y') + "\u00FC", id, "", "r", 9});
  }
  ASSERT_EQ(account.Items().size(), 3U);
  EXPECT_EQ(account.Items()[0].count, 3);
  EXPECT_EQ(account.Items()[0].line, 7);
  EXPECT_LT(account.Items()[0].reason.size(), 300U);
  EXPECT_EQ(account.Items()[1].kind, std::string(59, 'y') + "...");  // no half of a character
  EXPECT_EQ(account.Items()[2].count, 2);
  EXPECT_EQ(account.Items()[2].severity, Severity::kReduced);
}

TEST(HostAccount, EachLossSaysHowGraveItIsAndWhichAnnotationItTouches) {
  const std::string size = "<TargetValue>1</TargetValue>";
  const std::string limits = "<Tolerance><MaxValue>1</MaxValue><MinValue>0</MinValue></Tolerance>";
  const std::string broken =
      "<Features><P id=\"20\"><FeatureDefinitionId/><EntityInternalIds>"
      "<Id>99</Id></EntityInternalIds></P></Features>";
  const auto feature = [](const char* id) {
    return std::string("<FeatureNominalIds><Id>") + id + "</Id></FeatureNominalIds>";
  };
  const struct {
    std::string text;
    std::vector<std::string> entries;
  } cases[] = {
      {Document("", Characteristic("Width", limits, size)), {}},
      {Document("", Characteristic("Width", limits, "<TargetValue>NaN</TargetValue><Other/>")),
       {"lost WidthCharacteristicNominal 11/ x1"}},
      {Document("", Characteristic("Width", limits, "<TargetValue>1e308</TargetValue>")),
       {"lost WidthCharacteristicNominal 11/ x1"}},
      {Document("", Characteristic("Width", limits + "<NonTolerance>SET</NonTolerance>", size)),
       {"reduced NonTolerance 10/11 x1"}},
      {Document("", Characteristic("Width", limits, size + size)),
       {"reduced TargetValue 11/11 x1"}},
      {Document("", Characteristic("Width", limits, size + feature("98"))),
       {"lost WidthCharacteristicNominal 11/11 x1"}},
      {Document("", broken + Characteristic("Width", limits, size + feature("20"))),
       {"lost P 20/11 x1"}},
      {Document("<PartNoteSet><PartNote id=\"7\"/></PartNoteSet>", ""), {"lost PartNote 7/ x1"}},
      {Document("<PointCloudSet/><AssemblySet><a/><a/></AssemblySet>", ""), {"ignored a / x2"}},
      {Document("<NoteSet><Note id=\"5\"><EntityInternalIds><Id>99</Id><Id>99</Id>"
                "</EntityInternalIds></Note></NoteSet>",
                ""),
       {"lost Note 5/5 x2"}}};
  for (const auto& one : cases) EXPECT_EQ(AccountOf(one.text), one.entries) << one.text;
}

TEST(HostAccount, WhatSeveralAnnotationsUseIsListedForEach) {
  const std::string note = "<EntityInternalIds><Id>20</Id></EntityInternalIds></Note>";
  EXPECT_THAT(AccountOf(Document(
                  "<NoteSet><Note id=\"5\">" + note + "<Note id=\"6\">" + note + "</NoteSet>",
                  "<Features><P id=\"20\"><FeatureDefinitionId/>"
                  "<EntityInternalIds><Id>99</Id></EntityInternalIds></P>"
                  "</Features>")),
              ElementsAre("lost P 20/5 x1", "lost P 20/6 x1"));
}

TEST(HostAccount, PmiLiesOnWhatItNamesOnceAndOnNothingWhenItNamesNothing) {
  const Model model = ReadQifText(
      Document("<NoteSet><Note id=\"5\"/><Note id=\"6\"><EntityInternalIds><Id>1</Id><Id>2</Id>"
               "<Id>1</Id></EntityInternalIds></Note></NoteSet>",
               "<FeatureZones><FeatureZoneArea id=\"30\"><FaceIds><Id>1</Id><Id>2</Id></FaceIds>"
               "</FeatureZoneArea></FeatureZones><DatumTargetDefinitions><DatumTarget id=\"31\">"
               "<TargetZoneId>30</TargetZoneId></DatumTarget></DatumTargetDefinitions>"
               "<DatumDefinitions><DatumDefinition id=\"32\"><DatumTargetIds><Id>31</Id>"
               "</DatumTargetIds></DatumDefinition></DatumDefinitions>"),
      "part.qif");
  std::map<std::string, int> members;
  for (const ENTITY* entity : model.part->GetEntities()) {
    const auto* attribute = dynamic_cast<const ATTRIB*>(entity);
    const auto label = model.labels.find(entity);
    if (attribute == nullptr || label == model.labels.end()) continue;
    ASSERT_EQ(is_QENCOLLECTION(attribute->owner()), 1);
    members[label->second.label] =
        static_cast<const QENCOLLECTION*>(attribute->owner())->members().count();
  }
  EXPECT_THAT(members, ElementsAre(testing::Pair("31", 2), testing::Pair("32", 2),
                                   testing::Pair("5", 0), testing::Pair("6", 2)));
}

TEST(HostAccount, PmiUnitsHoldInCharacteristicsAloneAndLimitsSayTheirUnit) {
  const Model model = ReadQifText(
      Document("", Characteristic("Width",
                                  "<Tolerance><MaxValue decimalPlaces=\"2\">1.5</MaxValue>"
                                  "<MinValue linearUnit=\"mm\">20</MinValue>"
                                  "<DefinedAsLimit>1</DefinedAsLimit></Tolerance>",
                                  "<TargetValue>1</TargetValue>") +
                       "<FeatureZones><FeatureZoneAreaRectangular id=\"30\"><Rectangle>"
                       "<Length>2</Length><CornerPoint>1 1 0</CornerPoint>"
                       "<Width linearUnit=\"inch\">1</Width><WidthDirection>0 1 0</WidthDirection>"
                       "<LengthDirection>1 0 0</LengthDirection></Rectangle>"
                       "</FeatureZoneAreaRectangular></FeatureZones><DatumTargetDefinitions>"
                       "<DatumTarget id=\"31\"><TargetZoneId>30</TargetZoneId></DatumTarget>"
                       "</DatumTargetDefinitions>"),
      "part.qif");
  EXPECT_EQ(model.pmiLinearUnit, "inch");
  EXPECT_EQ(model.pmiAngularUnit, "radian");
  const auto& size = Find<KOVAPMI_DIMENSION>(model, is_KOVAPMI_DIMENSION);
  EXPECT_DOUBLE_EQ(size.get_dimension_value(), 25.4);
  const auto& fields = standin::Edit(const_cast<KOVAPMI_DIMENSION&>(size));
  EXPECT_EQ(fields.upper_text, L"1.50 inch");
  EXPECT_EQ(fields.lower_text, L"20");
  std::vector<std::string> written;
  for (const WrittenValue& value : model.written.at(&size)) {
    written.push_back(value.field + " " + value.text + " " + value.unit);
  }
  EXPECT_THAT(written, ElementsAre("value 1 inch", "upperText 1.5 inch"));
  const auto& target = Find<KOVAPMI_DATUMTGT>(model, is_KOVAPMI_DATUMTGT);
  EXPECT_STREQ(target.get_wnote(), L"2x1 inch");
  EXPECT_EQ(target.get_position2()->coordinates().x(), 3);
  EXPECT_DOUBLE_EQ(target.get_position2()->coordinates().y(), 26.4);
}

TEST(HostAccount, DrawnPartsAreInTheModelOrListed) {
  const std::string heads =
      "<HeadForm>DOT</HeadForm><HeadHeight>1</HeadHeight><HeadForm2>DOT</HeadForm2>";
  const std::string ends = "<StartPoint>0 0</StartPoint><EndPoint>5 0</EndPoint>" + heads;
  const auto line = [&](const std::string& kind, const std::string& more) {
    return Display("<" + kind + ">" + ends + more + "</" + kind + ">");
  };
  const std::string size = Characteristic("Width",
                                          "<StatisticalCharacteristic>1</StatisticalCharacteristic>"
                                          "<Tolerance><MaxValue>1</MaxValue><MinValue>0</MinValue>"
                                          "</Tolerance>",
                                          "<TargetValue>7</TargetValue>");
  const std::string flatness = Characteristic("Flatness", "<ToleranceValue>1</ToleranceValue>", "");
  const std::string atText = "<PointConnection>5 0</PointConnection>";
  const std::string before = "<PointConnection>2 0</PointConnection>";
  const struct {
    std::string display, characteristic;
    std::vector<std::string> kinds;
    int leaders;
  } cases[] = {
      {line("LeaderDoubleHead", atText), size, {"LeaderDoubleHead"}, 0},
      {line("LeaderDoubleHead", before), size, {"LeaderDoubleHead", "LeaderDoubleHead"}, 0},
      {line("LeaderDoubleHead", atText), flatness, {"LeaderDoubleHead", "LeaderDoubleHead"}, 1},
      {line("LeaderDoubleHead", before), flatness, {"LeaderDoubleHead"}, 2},
      {line("Leader", "<StartPoint>0 0 0</StartPoint>"), size, {"Leader", "StartPoint"}, 1},
      {Display("<Leader><StartPoint>0 1e39</StartPoint><EndPoint>5 0</EndPoint></Leader>"),
       size,
       {"PMIDisplay"},
       0},
      {Display("<Texts fontIndex=\"1\"><Text><Data>7{ST} DEEP</Data><XY>0 0</XY></Text><Text>"
               "<Data>{DIAMETER_SPHERICAL}</Data><XY>0 1</XY></Text></Texts><Frames/>"),
       size,
       {"Texts", "Texts", "Texts", "Frames"},
       0},
  };
  for (const auto& one : cases) {
    const Model model = ReadQifText(Document(one.display, one.characteristic), "part.qif");
    std::vector<std::string> kinds;
    for (const SkippedItem& item : model.skipped) {
      EXPECT_EQ(item.id + "/" + item.annotation, "11/11");
      kinds.push_back(item.kind);
    }
    EXPECT_EQ(kinds, one.kinds) << one.display;
    int leaders = 0;
    for (const ENTITY* entity : model.part->GetEntities()) leaders += is_KOVAPMI_LEADER_GEN(entity);
    EXPECT_EQ(leaders, one.leaders) << one.display;
    if (one.kinds.back() != "Frames") continue;
    const auto& note = Find<KOVAPMI_NOTE>(model, is_KOVAPMI_NOTE);
    EXPECT_STREQ(note.GetSuffixNote(), L"\u27E8ST\u27E9");
    EXPECT_STREQ(note.GetAfterNote(), L"DEEP\nS\u2300");
  }
}

}  // namespace

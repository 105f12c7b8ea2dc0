// STEP AP242 files: the exchange structure, what its entities mean, and files that are damaged.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>

#include "HostProgram.h"
#include "MakeReport.h"
#include "plugin/PluginLibrary.h"
#include "readers/step/Exchange.h"
#include "readers/step/StepReader.h"
#include "standin/Control.h"
#include "writers/text/PrintText.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

const char* const kHeader =
    "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF'));\n"
    "ENDSEC;\nDATA;\n";
const char* const kEnd = "ENDSEC;\nEND-ISO-10303-21;\n";

// A part of three faces in millimetres, which the aspects #31 to #33 are; datum A is the first of
// them. Line 6 of the file is #1; what a test adds begins at #50 on line 37.
const char* const kPart = R"(#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.));
#3=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#1);
#4=(CONVERSION_BASED_UNIT('INCH',#3)LENGTH_UNIT()NAMED_UNIT(*));
#5=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));
#6=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.0174533),#5);
#7=(CONVERSION_BASED_UNIT('DEGREE',#6)NAMED_UNIT(*)PLANE_ANGLE_UNIT());
#8=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MICRO.,.METRE.));
#9=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#1,#5))REPRESENTATION_CONTEXT('',''));
#10=PRODUCT_DEFINITION_SHAPE('','',#40);#40=PRODUCT_DEFINITION('','',$,$);#41=SHAPE_DEFINITION_REPRESENTATION(#10,#11);
#11=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#12),#9);
#12=MANIFOLD_SOLID_BREP('body',#13);
#13=CLOSED_SHELL('',(#14,#15,#16));
#14=ADVANCED_FACE('f1',(),$,.T.);
#15=ADVANCED_FACE('f2',(),$,.T.);
#16=ADVANCED_FACE('f3',(),$,.T.);
#17=CARTESIAN_POINT('',(1.,2.,3.));
#18=DIRECTION('',(0.,-1.,0.));
#19=DIRECTION('',(2.,0.,0.));
#20=AXIS2_PLACEMENT_3D('',#17,#18,#19);
#21=PLANE('',#20);
#22=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#1);
#31=DATUM_FEATURE('',$,#10,.T.);
#32=SHAPE_ASPECT('','',#10,.T.);
#33=SHAPE_ASPECT('','',#10,.T.);
#34=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#31,#11,#14);
#35=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#32,#11,#15);
#36=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#33,#11,SET_REPRESENTATION_ITEM((#15,#16)));
#37=DATUM('',$,#10,.F.,'A');
#38=SHAPE_ASPECT_RELATIONSHIP('','',#31,#37);
#39=DRAUGHTING_MODEL('',(),#9);
)";

std::string Document(const std::string& more) { return std::string(kHeader) + kPart + more + kEnd; }

// Why a text is no model; empty when it is one.
std::string ErrorOf(const std::string& text) {
  const long alive = standin::Count().liveEntities;
  std::string error;
  try {
    ReadStepText(text, "part.stp");
  } catch (const ModelError& thrown) {
    error = thrown.what();
  }
  EXPECT_EQ(standin::Count().liveEntities, alive);
  return error;
}

// What is listed as missing, a line each: "lost #50 37 why".
std::string ListedOf(const Model& model) {
  std::string all;
  for (const SkippedItem& item : model.skipped) {
    const char* const names[] = {"lost ", "reduced ", "ignored "};
    all += names[static_cast<int>(item.severity)] + item.id + " " + std::to_string(item.line) +
           " " + item.reason + "\n";
  }
  return all;
}

// A text of the report without the entities' ids, and a line for each of its columns.
std::string Columns(const std::string& text) {
  static const std::regex ids(" +id [0-9/#]+");
  static const std::regex gaps("\n +|  +");
  return std::regex_replace(std::regex_replace(text, ids, ""), gaps, "\n");
}

// The report on a file as text, with what is written in other units and what is listed.
std::string TextOf(const std::string& document) {
  static const PluginLibrary plugin(PLUGIN);
  const Model model = ReadStepText(document, "part.stp");
  const auto exporter = plugin.CreateExporter(model.part->GetDocument());
  std::string text = Columns(
      text::PrintText(MakeReport(model, *exporter, "part.stp"), {text::By::kView, true, false}));
  for (const auto& [entity, values] : model.written) {
    for (const WrittenValue& value : values) {
      text += "written " + value.field + " " + value.text + " " + value.unit + "\n";
    }
  }
  for (const auto& [kind, count] : model.counts) {
    text += "count " + kind + " " + std::to_string(count) + "\n";
  }
  return text + "listed " + std::to_string(model.skipped.size()) + "\n" + ListedOf(model);
}

// A table, a file each line: "instances => what its report has & what else"; @ is a line's end.
void Expect(const std::string& before, const std::string& table, const std::string& behind = "") {
  std::istringstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t arrow = line.find(" => ");
    if (arrow == std::string::npos) continue;
    const std::string text = TextOf(Document(before + line.substr(0, arrow) + behind));
    std::size_t end = 0;
    for (std::size_t at = arrow + 4; end != std::string::npos; at = end + 3) {
      end = line.find(" & ", at);
      std::string wanted = Columns(line.substr(at, end - at));
      if (wanted.back() == '@') wanted.back() = '\n';
      EXPECT_THAT(text, HasSubstr(wanted)) << line;
    }
  }
}

std::string Repeat(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

// So many instances, from #1000; @ in them is their number, % ten times that.
std::string Numbered(const std::string& instance, int count) {
  std::string all;
  for (int i = 1000; i < 1000 + count; ++i) {
    for (const char c : "#@=" + instance + ";") {
      all += c == '@' ? std::to_string(i) : c == '%' ? std::to_string(10 * i) : std::string(1, c);
    }
  }
  return all;
}

// A flatness whose measure, #51, is still to come.
std::string Flatness(const std::string& measure) {
  return "#50=FLATNESS_TOLERANCE('','',#51,#32);#51=" + measure;
}
// A size or location, which is #50, with items of its representation.
std::string Dimension(const std::string& entity, const std::string& items,
                      const std::string& more) {
  return "#50=" + entity +
         ";#51=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#50,#52);#52=SHAPE_DIMENSION_"
         "REPRESENTATION('',(" +
         items + "),#9);" + more;
}

// --- The exchange structure ----------------------------------------------------------------------

TEST(HostStepExchange, StringsResolveEveryDirective) {
  const struct {
    const char* text;
    const char* decoded;
  } cases[] = {{"plain", "plain"},
               {"it''s ''''", "it's ''"},
               {"a\\\\b", "a\\b"},
               {"\\X\\D8 5\\X\\e9", "Ø 5é"},
               {"\\S\\d", "ä"},
               {"\\PB\\\\S\\3\\PA\\\\S\\3", "ł³"},
               {"\\PI\\\\S\\p", "ğ"},
               {"\\PC\\\\S\\%", "\xEF\xBF\xBD"},
               {"\\X2\\230000D8\\X0\\1", "⌀Ø1"},
               {"\\X2\\D83DDE00\\X0\\", "😀"},
               {"\\X4\\0001F600\\X0\\", "😀"},
               {"\\X2\\D83DDC00DBFFDFFF\\X0\\", "🐀\xF4\x8F\xBF\xBF"},
               {"\\X2\\D83D\\X0\\", "\xEF\xBF\xBD"},
               {"\\X2\\080007FF\\X0\\", "\xE0\xA0\x80\xDF\xBF"},
               {"\\X4\\00110000\\X0\\", "\xEF\xBF\xBD"},
               {"a\\N\\b\\F\\c\r\nd", "abcd"},
               {"\\X2\\23\\X0\\", "\\X2\\23\\X0\\"},
               {"\\X2\\2300", "\\X2\\2300"},
               {"\\X\\G0\\", "\\X\\G0\\"},
               {"ü⌀😀", "ü⌀😀"},
               {"\xFC \xC3", "ü Ã"},
               {"\xE2\x82.", "\xC3\xA2\xC2\x82."},
               {"\xF5\x80\x80\x80", "\xC3\xB5\xC2\x80\xC2\x80\xC2\x80"},
               {"\xED\xA0\x80 \xE0\x80\x80 \xF4\x90\x80\x80",
                "\xC3\xAD\xC2\xA0\xC2\x80 "
                "\xC3\xA0\xC2\x80\xC2\x80 "
                "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80"}};
  for (const auto& each : cases) EXPECT_EQ(step::Decode(each.text), each.decoded) << each.text;
}

TEST(HostStepExchange, FormatIsToldByTheFirstBytes) {
  for (const char* text : {"ISO-10303-21;", "\nISO-10303-21;", " /* a */\t/**/ISO-10303-21;",
                           "\xEF\xBB\xBF/***/ISO-10303-21"}) {
    EXPECT_TRUE(IsStep(text)) << text;
  }
  for (const char* text :
       {"", "/*", "/* ISO-10303-21;", "/ISO-10303-21;", "ISO-10303-28;", "<x/>"}) {
    EXPECT_FALSE(IsStep(text)) << text;
  }
}

TEST(HostStepExchange, ReadsEveryFormOfInstancesAndParameters) {
  const std::string text =
      "/* first */ISO-10303-21 ;\r\nHEADER/**/;\r\nFILE_DESCRIPTION(('a;b''c'),'2;1');\r\n"
      "FILE_SCHEMA /* the 'first */ (('ONE','AP242'));ENDSEC /* ' "
      "*/;\r\nANCHOR;<a;>=#1;ENDSEC;\nREFERENCE;\n"
      "#90=<it's;.stp#a>;ENDSEC;\nDATA('one',('AP242'));\n"
      "#7 = A ( 'x;''(#9' , $,*, -1.5E+3, .T., \"0F\", #8, (1,(2,())), LENGTH(.5) ) ;\r\n"
      "#8=/* ; #3 */(B()/* ( "
      "*//**/C(#7,LIST((#7,#9)))\nB2(1));ENDSEC;\nDATA;\\F\\#3=A(\\N\\);ENDSEC;\n"
      "END-ISO-10303-21;\nSIGNATURE;'";
  step::Exchange file(text, "a.stp");
  EXPECT_THAT(file.Schemas(), testing::ElementsAre("ONE", "AP242"));
  EXPECT_EQ(file.Count(), 3U);
  EXPECT_THAT(file.Of("A"), testing::ElementsAre(7, 3));
  EXPECT_THAT(file.Of("B2"), testing::ElementsAre(8));
  EXPECT_THAT(file.ReferrersOf(7), testing::ElementsAre(8));
  EXPECT_THAT(file.ReferrersOf(9), testing::ElementsAre(8));
  EXPECT_THAT(file.ReferrersOf(8), testing::ElementsAre(7));
  EXPECT_EQ(file.LineOf(3), 12);
  EXPECT_EQ(file.LineOf(8), 10);
  EXPECT_EQ(file.LineOf(4), 0);
  EXPECT_EQ(file.Find(9), nullptr);
  const step::Record& a = file.Find(7)->records.at(0);
  ASSERT_EQ(a.count, 9U);
  EXPECT_EQ(a.Text(0), "x;'(#9");
  EXPECT_EQ(a.Text(1), "");
  EXPECT_EQ(a.Reference(2), 0U);
  EXPECT_EQ(a.Number(3), -1500);
  EXPECT_EQ(a.Enumeration(4), "T");
  EXPECT_EQ(a.At(5).Text(), "0F");
  EXPECT_EQ(a.Reference(6), 8U);
  EXPECT_EQ(a.List(7).items[1].items[1].size, 0U);
  EXPECT_EQ(a.At(8).TypeName(), "LENGTH");
  EXPECT_EQ(a.Number(8), 0.5);
  const step::Instance& b = *file.Find(8);
  ASSERT_EQ(b.records.size(), 3U);
  EXPECT_EQ(b.As("C").List(1).items[1].Reference(), 9U);
  for (const std::uint32_t wrong : {0U, 3U, 7U, 9U}) {
    EXPECT_THROW(a.Reference(wrong), step::Unreadable);
  }
  EXPECT_THROW(a.Text(3), step::Unreadable);
  EXPECT_THROW(a.List(0), step::Unreadable);
  EXPECT_THROW(a.Enumeration(0), step::Unreadable);
  EXPECT_THROW(a.Number(0), step::Unreadable);
  EXPECT_THROW(b.As("A"), step::Unreadable);
}

TEST(HostStepExchange, DamagedStructureIsAnErrorThatSaysWhereAndWhat) {
  const std::string whole = Document("");
  EXPECT_EQ(ErrorOf(whole), "");
  const auto with = [&](const char* from, const std::string& to) {
    std::string text = whole;
    return text.replace(text.find(from), std::string(from).size(), to);
  };
  const struct {
    std::string text;
    const char* says;
  } cases[] = {
      {"", "^part.stp:1:1: .*cut off"},
      {std::string(1000, '\0'), "^part.stp:1:1: "},
      {"<QIFDocument/>", "^part.stp:1:1: ISO-10303-21"},
      {whole.substr(0, 20), "^part.stp:2:.*cut off"},
      {whole.substr(0, 40), "^part.stp:3:14: a string does not end"},
      {whole.substr(0, whole.find("DATA")), "^part.stp:5:1: .*cut off"},
      {whole.substr(0, whole.find("#3=") + 9), "^part.stp:8:4: .*cut off.*#3"},
      {whole.substr(0, whole.find("#3=")), "^part.stp:8:1: .*cut off.*ENDSEC"},
      {whole.substr(0, whole.find("DATA")) + "END-ISO-10303-21;", "5:17: there is no data"},
      {std::string(kHeader) + kEnd, "7:17: there is no data"},
      {with("=CLOSED", "=closed"), "18:5: #13: an entity's name is not in capital letters"},
      {with("_UNIT()NAMED", "_UNIT()named"), "6:18: #1: an entity's name is not in capital"},
      {Document("#50=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#40,#40,$);"), "^part.stp:37:5: #50"},
      {whole.substr(0, whole.find("END-ISO")), "^part.stp:38:1: .*cut off.*END-ISO"},
      {with("#2=", "2="), "^part.stp:7:1: .*#"},
      {with("#2=", "#="), "^part.stp:7:1: # without a number"},
      {with("#2=", "#0="), "^part.stp:7:1: # without a number"},
      {with("#2=", "#4294967296="), "^part.stp:7:1: .*too large"},
      {with("#2=", "#2"), "^part.stp:7:3: = is missing"},
      {with("#2=", "#1="), "^part.stp:7:4: #1 is there twice"},
      {with("(#15,#16)", "(#,#16)"), "^part.stp:33:74: # without a number"},
      {with("'body'", "'body"), "^part.stp:"},
      {with("#39=", "/*"), "^part.stp:36:1: a comment does not end"},
      {with("'INCH'", "\"INCH"), "^part.stp:9:27: a string does not end"},
      {with("AP242", "AP214"), "^part.stp: .*AP214"},
      {with("FILE_SCHEMA", "FILE_NAME"), "^part.stp: .*not named"},
      {with("FILE_SCHEMA((", "FILE_SCHEMA((#"), "^part.stp:3:1: FILE_SCHEMA: "},
      {with("'))", "' /*'*/)"), "^part.stp:3:1: FILE_SCHEMA: a bracket is not closed"},
      {with("(#14,", "(#77,"), "^part.stp:.*#77"},
      {with("SI_UNIT(.MILLI.", "SI_UNIT((("), "^part.stp:6:4: #1: "}};
  for (const auto& damage : cases) {
    EXPECT_THAT(ErrorOf(damage.text), ContainsRegex(damage.says)) << damage.text.substr(0, 2000);
  }
}

TEST(HostStepExchange, WhatIsWrongInOneInstanceCostsThatInstanceAndIsListed) {
  Expect("#50=FLATNESS_TOLERANCE('','',", R"(
#51,#32); => lost #50 37 #51 does not exist
$,#32); => lost #50 37 it has no magnitude
#22,#52); => lost #50 37 #52 does not exist
#22); => lost #50 37 FLATNESS_TOLERANCE has 3 parameters
#22,'a'); => lost #50 37 parameter 4 of FLATNESS_TOLERANCE is not a reference
#22,#32; => lost #50 37 a bracket is not closed
#22,#32)x; => lost #50 37 there is more behind it
#22,#51);#51=SHAPE_ASPECT('','',#10,.T.);#52=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#21); => lost #52 37 its item #21 is nothing of the model
)");
  Expect(Flatness("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE("), R"(
1,5),#1); => lost #50 37 LENGTH_MEASURE is not closed
1E999),#1); => lost #50 37 '1E999' is not a number
1.0.0),#1); => lost #50 37 '1.0.0' is not a number
'1'),#1); => lost #50 37 '1' is not a number
1.),#5); => lost #50 37 it is no length
1.),#9); => lost #50 37 its unit is neither of length nor of angle
1.),$); => lost #50 37 a reference is missing
1.),#52);#52=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILI.,.METRE.)); => lost #50 37 its unit has an unknown prefix
1.),#52);#52=(CONVERSION_BASED_UNIT('A',#51)LENGTH_UNIT()NAMED_UNIT(*)); => lost #50 37 its unit can't be read
1.),#52);#52=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.GRAM.)); => lost #50 37 its SI unit is of another quantity
1.),#52);#52=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.METRE.)); => lost #50 37 its SI unit is of another quantity
1.),#52);#52=(CONVERSION_BASED_UNIT('A',#6)LENGTH_UNIT()NAMED_UNIT(*)); => lost #50 37 its unit is of two kinds
1.),#52);#52=(CONVERSION_BASED_UNIT('A',#53)LENGTH_UNIT()NAMED_UNIT(*));#53=MEASURE_WITH_UNIT(LENGTH_MEASURE(0.),#1); => lost #50 37 its unit has no size
)");
  Expect("", R"(
#50=GEOMETRIC_TOLERANCE_RELATIONSHIP('','',#22,#22); => lost #50 37 it does not join two tolerances
#50=DATUM_TARGET('','area',#10,.T.,'1'); => lost #50 37 it is the target of no datum
#50=(DATUM_TARGET('1')PLACED_DATUM_TARGET_FEATURE()SHAPE_ASPECT('','',#10,.T.)); => Lost: 1@ & lost #50 37 it is the target of no datum
#50=DIMENSIONAL_SIZE(#52,'width'); => lost #50 37 #52 does not exist
#50=DIMENSIONAL_SIZE(#32,'girth'); => reduced #50 37 its kind 'girth' is unknown
#50=DIMENSIONAL_SIZE_WITH_PATH(#32,'curve length',#33); => reduced #50 37 its path is left out
#50=DIRECTED_DIMENSIONAL_LOCATION('linear distance','',#31,#32); => reduced #50 37 its direction is left out
#50=GEOMETRIC_TOLERANCE_WITH_MODIFIERS('','',#22,#33,(.TANGENT_PLANE.)); => reduced #50 37 its kind is not stated
#50=PARALLELISM_TOLERANCE('','',#22,#33,(#22)); => lost #50 37 its datum reference #22 is of an unknown kind
#50=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#14); => lost #50 37 #51 does not exist
#50=SHAPE_ASPECT_RELATIONSHIP('','',#51,#33); => lost #50 37 #51 does not exist
#50=PLUS_MINUS_TOLERANCE(#51,#52);#51=TOLERANCE_VALUE(#22,#22); => lost #50 37 #52 does not exist
#50=STYLED_ITEM('',(#51),#14); => ignored #50 37 #51 does not exist
)");
  // What one instance lacks again and again is one entry.
  const Model model =
      ReadStepText(Document("#50=(FLATNESS_TOLERANCE()GEOMETRIC_TOLERANCE('','',#22,#32)"
                            "GEOMETRIC_TOLERANCE_WITH_MODIFIERS((" +
                            Repeat(".A.,", 29) + ".A.)));"),
                   "part.stp");
  ASSERT_EQ(model.skipped.size(), 1U);
  EXPECT_EQ(model.skipped.back().count, 30);
  // A hundred lists stand in each other at most.
  for (const char* open : {"(", "A("}) {
    for (const auto& [times, reason] :
         {std::pair(99, "parameter 4 of FLATNESS_TOLERANCE is not a reference"),
          std::pair(100, "its lists are nested too deeply"),
          std::pair(10000, "its lists are nested too deeply")}) {
      Expect("#50=FLATNESS_TOLERANCE('','',#22," + Repeat(open, times) + "$" + Repeat(")", times),
             std::string("); => lost #50 37 ") + reason);
    }
  }
}

TEST(HostStepExchange, WideAndCircularFilesEndInBoundedTime) {
  std::string chain = "#50=FLATNESS_TOLERANCE('','',#22,#32);";
  std::string sets =
      R"(#100000=DIMENSIONAL_SIZE(#32,'width');#100001=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#100000,#100002);#100002=SHAPE_DIMENSION_REPRESENTATION('',(#50),#9);)";
  for (int i = 50; i < 20000; ++i) {
    const std::string own = "#" + std::to_string(i);
    const std::string next = std::to_string(i + 1);
    chain += "#" + next + "=FLATNESS_TOLERANCE('','',#22,#32);#9000" + next +
             "=GEOMETRIC_TOLERANCE_RELATIONSHIP('',''," + own + ",#" + next + ");";
    sets += own + "=VALUE_RANGE('',(" + own + ",#" + next + ",#" + next + "));";
  }
  const std::string cases[] = {
      "#50=A(" + Repeat("$,", 1000000) + "$);",
      "#50=" + Repeat("(", 1000000) + ";",
      "#50=(" + Repeat("FLATNESS_TOLERANCE()", 100000) + ");",
      "#50=FLATNESS_TOLERANCE('" + std::string(10000000, 'x') + "','',#22,#32);",
      chain,
      sets,
      R"(#50=FLATNESS_TOLERANCE('','',#22,#51);#51=SHAPE_ASPECT('','',#10,.T.);#52=SHAPE_ASPECT_RELATIONSHIP('','',#51,#53);#53=SHAPE_ASPECT('','',#10,.T.);#54=SHAPE_ASPECT_RELATIONSHIP('','',#53,#51);#55=SHAPE_ASPECT_RELATIONSHIP('','',#51,#51);)",
      R"(#50=ANNOTATION_PLANE('',(),#21,(#50,#51));#51=DRAUGHTING_CALLOUT('',(#51,#52,#53));#52=ANNOTATION_CURVE_OCCURRENCE('',(),#52);#53=ANNOTATION_CURVE_OCCURRENCE('',(),#54);#54=GEOMETRIC_CURVE_SET('',()" +
          Repeat("#54,#55,", 1000) + "#54));#55=GEOMETRIC_CURVE_SET('',(" +
          Repeat("#54,#55,", 1000) + "#54));",
      "#50=MAPPED_ITEM('',#51,#50);#51=REPRESENTATION_MAP(#50,#52);"
      "#52=DRAUGHTING_MODEL('',(#50,#53),#9);#53=CAMERA_MODEL_D3('',#50,#53);"};
  for (const std::string& text : cases) EXPECT_EQ(ErrorOf(Document(text)), "");
}

// What many instances share is not worked through for each of them.
TEST(HostStepExchange, WhatIsSharedTooOftenIsRefusedOrListed) {
  const std::string text = "'" + std::string(200'000, 'x') + "'";
  const auto list = [](const char* item) { return Repeat(item, 20'000) + "#14"; };
  const std::string refused[] = {
      "#50=TEXT_LITERAL(''," + text + ",#20,'',.RIGHT.,$);" +
          Numbered("ANNOTATION_TEXT_OCCURRENCE('',(),#50)", 100),
      "#50=DRAUGHTING_CALLOUT(" + text + ",());" +
          Numbered(
              "DIMENSIONAL_SIZE(#32,'');#%=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#@,#39,#50)",
              100),
      "#50=CAMERA_MODEL_D3(" + text + ",#20,$);" + Numbered("DRAUGHTING_MODEL('',(#50),#9)", 100),
      "#50=DATUM('',$,#10,.F.," + text + ");" +
          Numbered("DATUM_TARGET('','',#10,.T.,'1');#%=SHAPE_ASPECT_RELATIONSHIP('','',#@,#50)",
                   100),
      "#50=SHAPE_ASPECT('','',#10,.T.);" +
          Numbered("SHAPE_ASPECT('','',#10,.T.);#%=SHAPE_ASPECT_RELATIONSHIP('','',#50,#@);#%1="
                   "SHAPE_ASPECT_RELATIONSHIP('','',#@,#50);#%2=FLATNESS_TOLERANCE('','',#22,#@)",
                   1000),
      "#50=SHAPE_DIMENSION_REPRESENTATION('',(" + list("#51,") +
          "),#9);#51=DESCRIPTIVE_REPRESENTATION_ITEM('','');" +
          Numbered("DIMENSIONAL_SIZE(#32,'');#%=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#@,#50)",
                   100),
      "#50=DATUM_SYSTEM('',$,#10,.F.,(#51));#51=DATUM_REFERENCE_COMPARTMENT('',$,#10,.F.,#37,(" +
          Repeat("LINE(.POINT.),", 20'000) + "LINE(.POINT.)));" +
          Numbered("PARALLELISM_TOLERANCE('','',#22,#32,(#50))", 100),
      "#50=ANNOTATION_PLANE('',(),#21,(#51" + Repeat(",#51", 200'000) +
          "));#51=DRAUGHTING_CALLOUT('',"
          "());" +
          Numbered("DRAUGHTING_MODEL('',(#50,#%),#9);#%=CAMERA_MODEL_D3('',#20,$)", 100),
      "#50=CLOSED_SHELL('',(" + list("#14,") + "));" + Numbered("MANIFOLD_SOLID_BREP('',#50)", 100),
      "#50=FACE_BOUND('',#51,.T.);#51=EDGE_LOOP('',(" + Repeat("#52,", 20'000) +
          "#52));#52=ORIENTED_EDGE('',*,*,#53,.T.);#53=EDGE_CURVE('',#54,#54,$,.T.);#54=VERTEX_"
          "POINT("
          "'',#17);#55=MANIFOLD_SOLID_BREP('',#56);#56=CLOSED_SHELL('',(" +
          "#1000,#1001,#1002,#1003,#1004,#1005,#1006,"
          "#1007,#1008,#1009));" +
          Numbered("ADVANCED_FACE('',(#50),$,.T.)", 10)};
  for (const std::string& file : refused) {
    EXPECT_THAT(ErrorOf(Document(file)), ContainsRegex("its size allows|shared too often"))
        << file.substr(0, 200);
  }
  std::string all = "#1000";
  for (int i = 1001; i < 1050; ++i) all += ",#" + std::to_string(i);
  Expect("#51=COORDINATES_LIST('',1,((1.,2.,3.)" + Repeat(",(1.,2.,3.)", 300'000) +
             "));#52=TESSELLATED_CURVE_SET('',#51,());#53=ANNOTATION_PLANE('',(),#21,(" + all +
             "));" + Numbered("TESSELLATED_ANNOTATION_OCCURRENCE('',(),#52)", 50),
         " => reduced #1049 37 it stands where its plane does: too many points are drawn\n");
  Expect("#51=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0." + std::string(1000, '0') + "1),#1);",
         "#50=FLATNESS_TOLERANCE('','',#51,#32); => lost #50 37 '0.00");
}

// What 50 levels of two components each would multiply to is left out, and listed.
TEST(HostStepExchange, MemoryStaysInProportionToAnyFile) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer takes memory of its own";
#endif
  std::string levels = Numbered("PRODUCT_DEFINITION('','',$,$)", 50);
  for (int i = 0; i < 100; ++i) {
    const int above = 1000 + i / 2;
    levels += "#" + std::to_string(2000 + i) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#" +
              std::to_string(above) + ",#" + (above == 1049 ? "40" : std::to_string(above + 1)) +
              ",$);";
  }
  const std::pair<std::string, int> files[] = {{Numbered("DIMENSIONAL_SIZE(#32,'')", 100'000), 0},
                                               {Numbered("DATUM('',$,#10,.F.,'A')", 100'000), 0},
                                               {levels, 4}};
  for (const auto& [more, code] : files) {
    const std::string text = Document(more);
    EXPECT_EQ(CodeWithin(60.0 * static_cast<double>(text.size()) + 100e6, text), code)
        << more.substr(0, 100);
  }
}

// --- Values --------------------------------------------------------------------------------------

TEST(HostStep, MeasuresAreReadInEveryFormAndUnit) {
  Expect("#50=FLATNESS_TOLERANCE('','',#51,#32);#51=", R"(
LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-1),#1); => ⏥ | 0.1
MEASURE_WITH_UNIT(LENGTH_MEASURE(+0.1),#1); => ⏥ | 0.1
MEASURE_REPRESENTATION_ITEM('',LENGTH_MEASURE(0.1),#1); => ⏥ | 0.1
(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#1)REPRESENTATION_ITEM('')); => ⏥ | 0.1
(MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#1)QUALIFIED_REPRESENTATION_ITEM((#1))REPRESENTATION_ITEM('')); => ⏥ | 0.1
LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.0001),#2); => ⏥ | 0.1 & written magnitude 0.0001 m
LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(100.),#8); => ⏥ | 0.1 & written magnitude 100 µm
LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(.010),#4); => ⏥ | 0.254 & written magnitude .01 inch
LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(50000000.E-10),#4); => ⏥ | 0.127 & written magnitude 50000000.E-10 inch
)");
  Expect(Dimension("ANGULAR_LOCATION('','',#32,#33,.SMALL.)", "#53",
                   "#53=MEASURE_REPRESENTATION_ITEM('',PLANE_ANGLE_MEASURE("),
         R"(
30.),#7); => angleBetween, angular, tolerance none, value 30, precision 0
1.57079632679489662),#5); => value 90, & written value 1.57079632679489662 radian
100.),#54);#54=(CONVERSION_BASED_UNIT('GRADIAN',#55)NAMED_UNIT(*)PLANE_ANGLE_UNIT());#55=MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.015708),#5); => value 90, & written value 100 gradian
1.),#1); => lost #50 37 it is no angle
)");
}

TEST(HostStep, LengthsAreInTheUnitThatTheFileStatesForItsShape) {
  const auto with = [](const std::string& from, const std::string& to) {
    std::string text = Document("#50=FLATNESS_TOLERANCE('','',#22,#32);");
    return TextOf(text.replace(text.find(from), from.size(), to));
  };
  EXPECT_THAT(with("ADVANCED_BREP_SHAPE_R", "CSG_SHAPE_R"), HasSubstr("⏥ | 0.1\n"));
  const std::string metres = with("GLOBAL_UNIT_ASSIGNED_CONTEXT((#1,#5))", "");
  EXPECT_THAT(metres, HasSubstr("⏥ | 0.0001\n"));
  EXPECT_THAT(metres, HasSubstr("reduced #1 6 no shape states its unit of length"));
}

TEST(HostStep, TolerancesOfEveryKindAreReadAloneAndInComplexInstances) {
  const char* const kinds[][2] = {
      {"CYLINDRICITY", "⌭"}, {"FLATNESS", "⏥"},     {"LINE_PROFILE", "⌒"},   {"POSITION", "⌖"},
      {"ROUNDNESS", "○"},    {"STRAIGHTNESS", "⏤"}, {"SURFACE_PROFILE", "⌓"}};
  const char* const withDatum[][2] = {
      {"ANGULARITY", "∠"},  {"CIRCULAR_RUNOUT", "↗"},  {"COAXIALITY", "◎"}, {"CONCENTRICITY", "◎"},
      {"PARALLELISM", "∥"}, {"PERPENDICULARITY", "⟂"}, {"SYMMETRY", "⌯"},   {"TOTAL_RUNOUT", "⌰"}};
  const std::string frame =
      "#51=DATUM_SYSTEM('',$,#10,.F.,(#52));#52=DATUM_REFERENCE_COMPARTMENT('',$,#10,.F.,#37,$); "
      "=> ";
  const std::string complex =
      "_TOLERANCE()GEOMETRIC_TOLERANCE('x','',#22,#33)GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE((#"
      "51)));";
  for (const auto& [entity, symbol] : kinds) {
    Expect("#50=", std::string(entity) + "_TOLERANCE('x','',#22,#33); => tolerance \"x\"  " +
                       symbol + " | 0.1\n");
    Expect("#50=(", entity + complex + frame + symbol + " | 0.1 | A & on face \"f2\", face \"f3\"");
  }
  for (const auto& [entity, symbol] : withDatum) {
    Expect("#50=", std::string(entity) + "_TOLERANCE('x','',#22,#33,(#51));" + frame + symbol +
                       " | 0.1 | A\n");
    Expect("#50=(", entity + complex + frame + symbol + " | 0.1 | A & on face \"f2\", face \"f3\"");
  }
}

TEST(HostStep, TolerancesHaveTheirZonesModifiersRowsAndUnits) {
  Expect(
      "#50=POSITION_TOLERANCE('','',#22,#33);#51=TOLERANCE_ZONE('',$,#10,.F.,(#50),#52);#52="
      "TOLERANCE_ZONE_FORM('",
      R"(
cylindrical or circular'); => ⌖ | ⌀0.1
within a cylinder'); => ⌖ | ⌀0.1
within a circle'); => ⌖ | ⌀0.1
spherical'); => ⌖ | S⌀0.1
within a sphere'); => ⌖ | S⌀0.1
between two equidistant surfaces'); => ⌖ | 0.1
non uniform'); => ⌖ | 0.1 & reduced #51 37 that the zone is 'non uniform' is left out
within a tube'); => reduced #51 37 that the zone is 'within a tube' is left out
');#53=TOLERANCE_ZONE('',$,#10,.F.,(#50),#54);#54=TOLERANCE_ZONE_FORM('spherical'); => ⌖ | 0.1@ & reduced #53 37 its second zone is left out & listed 1
');#53=PROJECTED_ZONE_DEFINITION(#51,(),#32,#54);#54=MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#4); => ⌖ | 0.1 Ⓟ25.4 & written projected 1 inch
');#53=PROJECTED_ZONE_DEFINITION(#51,(),#32,#22); => ⌖ | 0.1 Ⓟ0.1 & listed 0
');#53=PROJECTED_ZONE_DEFINITION_WITH_OFFSET(#51,(),#32,#22,#22); => ⌖ | 0.1 Ⓟ0.1 & reduced #53 37 the zone's further definition is left out
');#53=RUNOUT_ZONE_DEFINITION(#51,(),$); => reduced #53 37 the zone's further definition is left out
)");
  Expect(
      "#51=MEASURE_WITH_UNIT(LENGTH_MEASURE(25.),#1);#52=MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#4);#"
      "50=(GEOMETRIC_TOLERANCE('','',#22,#33)POSITION_TOLERANCE()",
      R"(
GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#51)); => ⌖ | 0.1/25
GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT(.SQUARE.,$)GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#51)); => ⌖ | 0.1/25×25
GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT(.RECTANGULAR.,#52)GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#51)); => ⌖ | 0.1/25×25.4
GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT(.CIRCULAR.,$)GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#51)); => ⌖ | 0.1/25 & reduced #50 37 that its unit area is CIRCULAR
GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE(#52)); => ⌖ | 0.1 MAX 25.4
UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE(#51)); => ⌖ | 0.1 Ⓤ25
MODIFIED_GEOMETRIC_TOLERANCE(.LEAST_MATERIAL_CONDITION.)); => ⌖ | 0.1 Ⓛ
MODIFIED_GEOMETRIC_TOLERANCE(.MAXIMUM_MATERIAL_CONDITION.)); => ⌖ | 0.1 Ⓜ
SOMETHING_ELSE()); => reduced #50 37 SOMETHING_ELSE is left out
)");
  Expect(
      "#50=(GEOMETRIC_TOLERANCE('','',#22,#33)POSITION_TOLERANCE()GEOMETRIC_TOLERANCE_WITH_"
      "MODIFIERS((",
      R"(
.MAXIMUM_MATERIAL_REQUIREMENT.,.FREE_STATE. => ⌖ | 0.1 Ⓜ Ⓕ
.RECIPROCITY_REQUIREMENT.,.LEAST_MATERIAL_REQUIREMENT. => ⌖ | 0.1 ⓁⓇ
.MAXIMUM_MATERIAL_REQUIREMENT.,.RECIPROCITY_REQUIREMENT. => ⌖ | 0.1 ⓂⓇ
.TANGENT_PLANE.,.STATISTICAL_TOLERANCE.,.COMMON_ZONE.,.EACH_RADIAL_ELEMENT. => ⌖ | 0.1 Ⓣ ST CZ eachRadialElement
.ANY_CROSS_SECTION.,.MAJOR_DIAMETER.,.MINOR_DIAMETER.,.PITCH_DIAMETER. => ⌖ | 0.1 anyCrossSection majorDiameter minorDiameter pitchDiameter
.SEPARATE_REQUIREMENT. => reduced #50 37 the model has no modifier SEPARATE_REQUIREMENT
)",
      ")));");
  Expect("#50=FLATNESS_TOLERANCE('','',#22,", R"(
#10); => on body "body"
#31); => on face "f1"
#51);#51=ALL_OVER_SHAPE_ASPECT('','',#10,.T.); => reduced #51 37 the model has no mark for it
#51);#51=BETWEEN_SHAPE_ASPECT('','',#10,.T.); => reduced #51 37 the model has no mark for it
#51);#51=ALL_AROUND_SHAPE_ASPECT('','',#10,.T.);#52=SHAPE_ASPECT_RELATIONSHIP('','',#51,#33);#53=SHAPE_ASPECT_RELATIONSHIP('','',#51,#31); => ⏥ | 0.1 (all around) & on face "f2", face "f3", face "f1"
#51);#51=SHAPE_ASPECT('','',#10,.T.);#52=SHAPE_ASPECT_RELATIONSHIP('','',#33,#51); => ⏥ | 0.1
#51);#51=DIMENSIONAL_SIZE(#33,'width'); => ⏥ | 0.1  on face "f2", face "f3"
#51);#51=DIMENSIONAL_LOCATION('linear distance','',#31,#32); => ⏥ | 0.1  on face "f1", face "f2"
#51);#51=SHAPE_ASPECT('','',#10,.T.);#52=CHAIN_BASED_GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#16,(),()); => on face "f3"
#31);#51=SHAPE_ASPECT_RELATIONSHIP('','',#33,#37); => ⏥ | 0.1  on face "f1"@ & [A]  on face "f1", face "f2", face "f3"
#10);#51=MANIFOLD_SOLID_BREP('b',#52);#52=CLOSED_SHELL('',());#53=GEOMETRIC_CURVE_SET('w',(#17));#54=SHAPE_REPRESENTATION('',(#53),#9); => on body "body", body "b"@
#32);#51=DIRECTED_TOLERANCE_ZONE('',$,#10,.F.,(#50),#52,#20,.PARALLEL.);#52=TOLERANCE_ZONE_FORM('within a cylinder'); => ⏥ | ⌀0.1 & reduced #51 37 DIRECTED_TOLERANCE_ZONE is left out
#32);#51=(SHAPE_ASPECT('',$,#10,.F.)TOLERANCE_ZONE((#50),#52)TOLERANCE_ZONE_WITH_DATUM(#37));#52=TOLERANCE_ZONE_FORM('spherical'); => ⏥ | S⌀0.1 & reduced #51 37 the zone's datum is left out & listed 1
#51);#51=DERIVED_SHAPE_ASPECT('','',#10,.T.);#52=SHAPE_ASPECT_DERIVING_RELATIONSHIP('','',#51,#32);#53=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#21); => on face "f2" & ignored #53
#51);#51=DERIVED_SHAPE_ASPECT('','',#10,.T.);#52=SHAPE_ASPECT_DERIVING_RELATIONSHIP('','',#51,#32);#53=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#22); => on face "f2" & lost #53
#51);#51=SHAPE_ASPECT('','',#10,.T.);#52=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#53);#53=COMPOUND_REPRESENTATION_ITEM('',LIST_REPRESENTATION_ITEM((#16,#14))); => on face "f3", face "f1"
)");
  // The lowest row's relationship comes first.
  Expect(
      R"(#56=GEOMETRIC_TOLERANCE_RELATIONSHIP('','',#51,#54);#50=POSITION_TOLERANCE('','',#22,#33);#51=POSITION_TOLERANCE('','',#53,#33);#52=GEOMETRIC_TOLERANCE_RELATIONSHIP('','',#50,#51);#53=MEASURE_WITH_UNIT(LENGTH_MEASURE(0.2),#1);#54=POSITION_TOLERANCE('','',#55,#33);#55=MEASURE_WITH_UNIT(LENGTH_MEASURE(0.3),#1);)",
      R"(
 => ⌖ | 0.1 / 0.2 / 0.3 & 1 tolerance
#57=GEOMETRIC_TOLERANCE_RELATIONSHIP('','',#54,#50); => ⌖ | 0.1 / 0.2 / 0.3 & 1 tolerance & reduced #50 37 its rows are joined in a ring
#57=POSITION_TOLERANCE('','',#22,#33);#58=GEOMETRIC_TOLERANCE_RELATIONSHIP('','',#57,#54); => lost #58 37 its lower row is one already
#57=POSITION_TOLERANCE('','',#22,#33);#58=GEOMETRIC_TOLERANCE_RELATIONSHIP('simultaneity','',#57,#50); => reduced #58 37 its tolerances' relation 'simultaneity' is left out
)");
}

TEST(HostStep, FramesHaveTheirDatumsInOrderWithModifiers) {
  const std::string datumB =
      "#60=DATUM('',$,#10,.F.,'B');#61=DATUM_FEATURE('',$,#10,.T.);#62=SHAPE_ASPECT_RELATIONSHIP(''"
      ",'',#61,#60);#63=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#61,#11,#15);";
  Expect(
      datumB +
          R"(#50=PARALLELISM_TOLERANCE('','',#22,#33,(#51));#51=DATUM_SYSTEM('',$,#10,.F.,(#52));#53=DATUM_REFERENCE_ELEMENT('',$,#10,.F.,#60,(SIMPLE_DATUM_REFERENCE_MODIFIER(.PLANE.)));#54=DATUM_REFERENCE_ELEMENT('',$,#10,.F.,#37,$);#55=DATUM_REFERENCE_MODIFIER_WITH_VALUE(.PROJECTED.,#22);#52=DATUM_REFERENCE_COMPARTMENT('',$,#10,.F.,)",
      R"(
COMMON_DATUM_LIST((#53,#54)),$); => ∥ | 0.1 | B plane-A
#60,(SIMPLE_DATUM_REFERENCE_MODIFIER(.MAXIMUM_MATERIAL_REQUIREMENT.),#55)); => ∥ | 0.1 | B Ⓜ Ⓟ0.1
#60,(SIMPLE_DATUM_REFERENCE_MODIFIER(.TRANSLATION.),SIMPLE_DATUM_REFERENCE_MODIFIER(.DEGREE_OF_FREEDOM_CONSTRAINT_X.))); => ∥ | 0.1 | B ▷ & reduced #50 37 the model has no datum modifier DEGREE_OF_FREEDOM_CONSTRAINT_X
#33,$); => ∥ | 0.1 & lost #50 37 its datum #33 could not be read
)");
  Expect(
      "#50=PARALLELISM_TOLERANCE('','',#22,#33,(#51));#51=(DATUM_SYSTEM((#52))SHAPE_ASPECT('',$,#"
      "10,.F.));#52=(DATUM_REFERENCE_COMPARTMENT()GENERAL_DATUM_REFERENCE(",
      R"(
#37,$)SHAPE_ASPECT('',$,#10,.F.)); => ∥ | 0.1 | A@
COMMON_DATUM_LIST((#53)),$)SHAPE_ASPECT('',$,#10,.F.));#53=(DATUM_REFERENCE_ELEMENT()GENERAL_DATUM_REFERENCE(#37,(SIMPLE_DATUM_REFERENCE_MODIFIER(.PLANE.)))SHAPE_ASPECT('',$,#10,.F.)); => ∥ | 0.1 | A plane
)");
  // The first edition's, by their precedence.
  Expect(datumB + "#50=PARALLELISM_TOLERANCE('','',#22,#33,(#51,#52));#51=DATUM_REFERENCE(2,#37);",
         R"(
#52=REFERENCED_MODIFIED_DATUM(1,#60,.LEAST_MATERIAL_CONDITION.); => ∥ | 0.1 | B Ⓛ | A
#52=(DATUM_REFERENCE(3,#60)REFERENCED_MODIFIED_DATUM(.MAXIMUM_MATERIAL_CONDITION.)); => ∥ | 0.1 | A | B Ⓜ
#52=DATUM_REFERENCE(1,#60); => ∥ | 0.1 | B | A & on face "f2" & [A]
)");
}

TEST(HostStep, DimensionsHaveTheirKindsValuesLimitsAndMarks) {
  Expect("#50=", R"(
DIMENSIONAL_SIZE(#33,'diameter'); => diameter, diametral, & reduced #50 37 it has no value
DIMENSIONAL_SIZE(#33,'radius'); => radius, radial,
DIMENSIONAL_SIZE(#33,'spherical diameter'); => sphericalDiameter, diametral,
DIMENSIONAL_SIZE(#33,'spherical radius'); => sphericalRadius, radial,
DIMENSIONAL_SIZE(#33,'toroidal minor radius'); => radius, radial,
DIMENSIONAL_SIZE(#33,'width'); => width, linear, & on face "f2", face "f3"
DIMENSIONAL_SIZE(#33,'height'); => height, linear,
DIMENSIONAL_SIZE(#33,'length'); => length, linear,
DIMENSIONAL_SIZE(#33,'thickness'); => thickness, linear,
DIMENSIONAL_SIZE_WITH_PATH(#33,'curve length',#32); => curveLength, curveLength,
ANGULAR_SIZE(#33,'angle',.SMALL.); => angle, angular,
ANGULAR_LOCATION('','',#32,#33,.SMALL.); => angleBetween, angular,
DIMENSIONAL_LOCATION('linear distance','',#31,#32); => distance, linear, & on face "f1", face "f2"
DIMENSIONAL_LOCATION('linear distance','',#37,#32); => distance, linear, & on face "f1", face "f2"
DIMENSIONAL_LOCATION('curved distance','',#32,#33); => curveLength, curveLength,
DIRECTED_DIMENSIONAL_LOCATION('linear distance inner outer','',#31,#32); => distance, linear,
DIMENSIONAL_SIZE_WITH_DATUM_FEATURE(#50,'diameter','','',#10,.T.);#51=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#50,#11,#16); => "diameter" & diameter, diametral, tolerance none & on face "f3"
DIMENSIONAL_SIZE_WITH_DATUM_FEATURE('f','',#10,.T.,#33,'diameter'); => "diameter" & diameter, diametral, tolerance none & on face "f2", face "f3"
DIMENSIONAL_LOCATION_WITH_DATUM_FEATURE('f','',#10,.T.,'linear distance','',#31,#33); => "linear distance" & on face "f1", face "f2", face "f3"
)");
  const std::string ten =
      "#53=MEASURE_REPRESENTATION_ITEM('nominal value',LENGTH_MEASURE(10.),#1);";
  Expect(Dimension("DIMENSIONAL_SIZE(#33,'width')", "#56,#53,#57", ten), R"(
#57=MEASURE_REPRESENTATION_ITEM('lower limit',LENGTH_MEASURE(9.8),#1);#56=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(10.1),#1); => 10.1/9.8 & value 10, lower -0.2, upper 0.1, precision 0, tolerance precision 1
#57=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(9.8),#1);#56=MEASURE_REPRESENTATION_ITEM('lower limit',LENGTH_MEASURE(10.1),#1); => 10.1/9.8 & value 10, lower -0.2, upper 0.1,
#56=MEASURE_REPRESENTATION_ITEM('lower limit',LENGTH_MEASURE(9.8),#1);#57=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(1.),#4); => lower -0.2, upper 15.4, & written upper 1 inch
#56=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(10.2),#1);#57=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(11.),#1); => upper 0.2, & lost #50 37 its second value is left out
#56=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(10.1),#1);#57=DESCRIPTIVE_REPRESENTATION_ITEM('','');#58=PLUS_MINUS_TOLERANCE(#59,#50);#59=TOLERANCE_VALUE(#22,#22); => lower 0.1, upper 0.1, & reduced #50 37 its limits are left out
#56=MEASURE_REPRESENTATION_ITEM('',LENGTH_MEASURE(9.8),#1);#57=DESCRIPTIVE_REPRESENTATION_ITEM('',''); => value 9.8, & lost #50 37 its second value is left out
)");
  Expect(Dimension("DIMENSIONAL_SIZE(#33,'width')", "#53", ten) +
             "#56=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(-0.2),#1);#57=LENGTH_MEASURE_WITH_UNIT("
             "LENGTH_MEASURE(0.01),#4);#54=PLUS_MINUS_TOLERANCE(#55,#50);#55=",
         R"(
TOLERANCE_VALUE(#56,#57); => value 10, lower -0.2, upper 0.254, precision 0, tolerance precision 2 & written upper 0.01 inch
TOLERANCE_VALUE(#57,#56); => value 10, lower -0.2, upper 0.254,
TOLERANCE_VALUE(#57,#6); => lost #50 37 it is no length
TOLERANCE_VALUE(#56,#57);#58=PLUS_MINUS_TOLERANCE(#59,#50);#59=TOLERANCE_VALUE(#22,#22); => lower -0.2, upper 0.254, & lost #50 37 its second tolerance is left out
LIMITS_AND_FITS('H','hole','7',''); => 10H7 & reduced #50 37 the model has the name of the fit
DATUM_REFERENCE(1,#37); => lost #50 37 it is no tolerance value
)");
  Expect(Dimension("DIMENSIONAL_SIZE(#33,'width')", "#53,#54", ten) +
             "#54=DESCRIPTIVE_REPRESENTATION_ITEM('dimensional note','",
         R"(
theoretical'); => [10]
theoretical exact'); => [10]
basic'); => [10]
auxiliary'); => (10)
reference'); => (10)
controlled radius'); => after "controlled radius"
statistical'); => after "statistical"
4 HOLES'); => after "4 HOLES"
square'); => □10
)");
  Expect(Dimension("DIMENSIONAL_SIZE(#33,'width')", "#56", ten), R"(
#56=(COMPOUND_REPRESENTATION_ITEM(SET_REPRESENTATION_ITEM((#53,#57)))REPRESENTATION_ITEM('')VALUE_RANGE());#57=MEASURE_REPRESENTATION_ITEM('upper limit',LENGTH_MEASURE(10.1),#1); => value 10, upper 0.1, precision 0, tolerance precision 1
#56=VALUE_RANGE('',(#53,#56,#57));#57=MEASURE_REPRESENTATION_ITEM('lower limit',LENGTH_MEASURE(9.50),#1); => value 10, lower -0.5, precision 0, tolerance precision 1
#56=(MEASURE_WITH_UNIT(LENGTH_MEASURE(9.5),#1)QUALIFIED_REPRESENTATION_ITEM((#57))REPRESENTATION_ITEM('upper limit'));#57=VALUE_FORMAT_TYPE_QUALIFIER('NR2 2.3'); => 9.500 & tolerance precision 3 & reduced #50 37 it has no value
#56=MEASURE_REPRESENTATION_ITEM('',LENGTH_MEASURE(1.25E1),#1); => value 12.5, & precision 1
)");
  Expect(Dimension("DIMENSIONAL_SIZE(#33,'width')", "#53",
                   "#53=(MEASURE_WITH_UNIT(LENGTH_MEASURE(10.25),#1)QUALIFIED_REPRESENTATION_ITEM(("
                   "#54))REPRESENTATION_ITEM('nominal value'));#54="),
         R"(
TYPE_QUALIFIER('maximum'); => 10.25 MAX & precision 2
TYPE_QUALIFIER('minimum'); => 10.25 MIN
VALUE_FORMAT_TYPE_QUALIFIER('NR2 2.3'); => precision 3
VALUE_FORMAT_TYPE_QUALIFIER('NR2 2.0'); => precision 0
VALUE_FORMAT_TYPE_QUALIFIER('NR3 2.3');#58=MEASURE_QUALIFICATION('','',#53,(#59,#60));#59=VALUE_FORMAT_TYPE_QUALIFIER('NR2 2.4');#60=TYPE_QUALIFIER('average'); => 10.25 average & precision 4
PRECISION_QUALIFIER(2); => reduced #50 37 PRECISION_QUALIFIER is left out
)");
}

TEST(HostStep, DatumsHaveTheirFeaturesAndTargetsTheirPlaces) {
  // The x of #20 is the model's, its y the model's z.
  Expect(
      "#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#37);#52=PROPERTY_DEFINITION('','',#50);#53=SHAPE_"
      "DEFINITION_REPRESENTATION(#52,#54);#50=PLACED_DATUM_TARGET_FEATURE('',",
      R"(
'point',#10,.T.,'1');#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20),#9); => point at (1, 2, 3) & [A] & targets A1 & on face "f1"
'rectangle',#10,.T.,'1');#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20,#55,#56),#9);#55=MEASURE_REPRESENTATION_ITEM('target length',LENGTH_MEASURE(4.),#1);#56=MEASURE_REPRESENTATION_ITEM('target width',LENGTH_MEASURE(2.),#1); => rectangle at (-1, 2, 2) to (3, 2, 4) & note "4x2"
'line',#10,.T.,'1');#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20,#55),#9);#55=MEASURE_REPRESENTATION_ITEM('target length',LENGTH_MEASURE(4.),#1); => line at (1, 2, 3) to (5, 2, 3) & note "4"
'circle',#10,.T.,'1');#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20,#55),#9);#55=MEASURE_REPRESENTATION_ITEM('target diameter',LENGTH_MEASURE(0.5),#4); => circle at (1, 2, 3) & note "⌀0.5 inch"
'point',#10,.T.,'1'); => lost #50 37 #54 does not exist
'point',#10,.T.,'1');#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#55),#9);#55=AXIS2_PLACEMENT_3D('',#56,$,$);#56=CARTESIAN_POINT('',(1.,2.,3.,4.)); => lost #50 37 a point has three coordinates
'point',#10,.T.,'1');#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20),#55);#55=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#5,#4))REPRESENTATION_CONTEXT('','')); => point at (25.4, 50.8, 76.2)
)");
  Expect("", R"(
#50=DATUM('',$,#10,.F.,'B');#51=DATUM_FEATURE('',$,#10,.T.);#52=SHAPE_ASPECT_RELATIONSHIP('','',#51,#50);#53=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#11,#16); => [B] & on face "f3"
#50=DATUM('',$,#10,.F.,'B');#51=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#50,#11,#16); => [B] & on face "f3"
#50=DATUM_TARGET('','area',#10,.T.,'2');#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#52);#52=DATUM('',$,#10,.F.,'Z');#54=FEATURE_FOR_DATUM_TARGET_RELATIONSHIP('','',#33,#50); => [Z] & targets Z2 & (Z2) & area & on face "f2", face "f3"
#50=PLACED_DATUM_TARGET_FEATURE('','point',#10,.T.,'1');#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#37); => reduced #50 37 its place is not stated
#50=(DATUM_TARGET('1')PLACED_DATUM_TARGET_FEATURE()SHAPE_ASPECT('','point',#10,.T.));#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#37);#52=PROPERTY_DEFINITION('','',#50);#53=SHAPE_DEFINITION_REPRESENTATION(#52,#54);#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20),#9); => (A1) & point at (1, 2, 3)
#50=DATUM_TARGET('','curve',#10,.T.,'2');#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#37); => (A2)  unknown & reduced #50 37 its kind 'curve' is unknown
#50=DATUM_TARGET('','circular curve',#10,.T.,'2');#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#37);#52=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#50,#11,#16); => (A2)  circle & [A]  targets A2  on face "f1"@
)");
}

TEST(HostStep, PresentationsAreJoinedWithWhatTheyMean) {
  // The line's points are medians; #20 has its normal against the model's y.
  const std::string drawn =
      R"(#60=ANNOTATION_CURVE_OCCURRENCE('',(),#61);#61=POLYLINE('',(#62,#17,#63));#62=CARTESIAN_POINT('',(0.,5.,5.));#63=CARTESIAN_POINT('',(9.,9.,9.));#64=LEADER_CURVE('',(),#65);#65=POLYLINE('',(#17,#62));#66=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#67);#67=TESSELLATED_GEOMETRIC_SET('',(#68));#68=TESSELLATED_CURVE_SET('',#69,((1,2)));#69=COORDINATES_LIST('',3,((1.,0.,1.),(2.,0.,3.),(9.,0.,9.)));#70=ANNOTATION_TEXT_OCCURRENCE('',(),#71);#71=TEXT_LITERAL('name','words',#20,'',.RIGHT.,$);#72=(ANNOTATION_TEXT_OCCURRENCE()REPRESENTATION_ITEM('')STYLED_ITEM((),#73));#73=(GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM('')TEXT_LITERAL('more',#20,'',.RIGHT.,$));#50=FLATNESS_TOLERANCE('flat','',#22,#31);#51=DIMENSIONAL_SIZE(#32,'width');#53=ANNOTATION_PLANE('',(),#21,(#52));#54=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#50,#39,#52);)";
  Expect(drawn + "#52=DRAUGHTING_CALLOUT('c',(", R"(
#60)); => at (1, 5, 5) x (1, 0, 0) & "flat"  ⏥ | 0.1 & reduced #52 37 the model has no drawn lines
#66)); => at (2, 0, 3) x (1, 0, 0) y (0, 0, 1)
#60,#64)); => leader (1, 2, 3) to (0, 5, 5)
#74));#74=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#75);#75=TESSELLATED_GEOMETRIC_SET('',(#76));#76=TESSELLATED_CURVE_SET('',#77,((1,2)));#77=COORDINATES_LIST('',3,( (1.,0.,1.),(2.,0.,3.),(9.,0.,9.))); => at (2, 0, 3)
#74));#74=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#75);#75=TESSELLATED_GEOMETRIC_SET('',(#76));#76=TESSELLATED_CURVE_SET('',#77,((1,2)));#77=COORDINATES_LIST('',4,((+1.,0.,1.),(2.,0.,3.),(9.,9.),(9.,9.),(9.,0.,9.))); => at (2, 0, 3)
#60));#55=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#51,#39,#52);#56=DRAUGHTING_MODEL('v',(#57,#52),#9);#57=CAMERA_MODEL_D3('v',#20,$); => "v"  2 annotations
#60));#55=DRAUGHTING_CALLOUT('d',(#66));#56=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#50,#39,#55); => at (1, 5, 5) & reduced #55 37 the annotation has a presentation already
#60));#55=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#31,#39,#52); => at (1, 5, 5) & View 1 without a plane
#60));#55=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#31,#39,#66);#56=ANNOTATION_PLANE('',(),#57,(#66));#57=PLANAR_BOX('',1.,1.,#58);#58=AXIS2_PLACEMENT_3D('',#17,#19,$); => at (2, 0, 3) x (0, 1, 0) y (0, 0, 1)
#60));#55=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#31,#39,#66);#56=ANNOTATION_PLANE('',(),#57,(#66));#57=PLANE('',#58);#58=AXIS2_PLACEMENT_3D('',#17,#18,#59);#59=DIRECTION('',(1.,-1.,0.)); => at (2, 0, 3) x (1, 0, 0) y (0, 0, 1)
#74));#74=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#75);#75=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#20)TESSELLATED_GEOMETRIC_SET((#68))TESSELLATED_ITEM()); => at (3, -1, 3) x (1, 0, 0) y (0, 0, 1)
)");
  Expect(drawn, R"(
#55=LEADER_DIRECTED_CALLOUT('n',(#70,#72)); => note "n"  "words⏎more"
#55=DRAUGHTING_CALLOUT('n',(#70));#56=ANNOTATION_PLANE('',(),#21,(#70));#57=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#33,#39,#55); => at (1, 2, 3) x (1, 0, 0) & on face "f2", face "f3" & lost #54 37 #52
)");
  // Of texts and places for texts alone nothing is left out.
  Expect("", R"(
#50=DRAUGHTING_CALLOUT('n',(#51,#55));#51=ANNOTATION_TEXT_OCCURRENCE('',(),#52);#52=TEXT_LITERAL('','words',#20,'',.RIGHT.,$);#53=ANNOTATION_PLANE('',(),#21,(#50));#55=ANNOTATION_PLACEHOLDER_OCCURRENCE('',(),#17,.GPS_DATA.,1.); => note "n"  "words" & at (1, 2, 3) & listed 0
)");
}

TEST(HostStep, DimensionsAndTolerancesHaveTheNameAndTheTextsOfTheirCallouts) {
  const std::string callout =
      "#50,#39,#60);#60=DRAUGHTING_CALLOUT('c',());#53=CHARACTERIZED_ITEM_WITHIN_REPRESENTATION('',"
      "'',#60,#39);#54=PROPERTY_DEFINITION('','',#53);#55=PROPERTY_DEFINITION_REPRESENTATION(#54,#"
      "56)"
      ";#56=REPRESENTATION('',(#57),#9);#57=DESCRIPTIVE_REPRESENTATION_ITEM('equivalent unicode "
      "string','";
  const std::string link = "#51=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',";
  Expect("#50=DIMENSIONAL_SIZE(#32,'width');" + link, R"(
#50,#39,#77); => "width" & width, linear & lost #51 37 #77 does not exist
#50,#39,#60);#60=DRAUGHTING_CALLOUT('',()); => "width"
#32,#39,#60);#60=DRAUGHTING_CALLOUT('c',()); => "width"
)");
  Expect("#50=DIMENSIONAL_SIZE(#32,'width');" + link + callout, R"(
DIM\\w2X \X2\2300\X0\8\\s+.1\\n-.2 DEEP'); => dimension "c" & before "2X" & after "DEEP"
DIM\\wSR\\sINNER WALL\\n.017'); => before "INNER WALL"
DIM\\w4X \\s\X2\21A7\X0\.3\\n\X2\2300\X0\8'); => before "4X" & hole callout "4X ↧.3⏎⌀8"
TXT\\wUPPER\\xDIM\\w2X 8\\xTXT\\wLOWER\\xFCF\\w0.1\\xTXT\\wNO'); => before "UPPER⏎2X" & after "LOWER"
)");
  Expect("#50=FLATNESS_TOLERANCE('flat','',#22,#32);" + link + callout, R"(
TXT\\w  SIM REQT \\xFCF\\w0.1\\wA\\xTXT\\wALL\\nWALLS'); => "flat" & before "SIM REQT" & after "ALL⏎WALLS"
DIM\\w2X 8\\xTXT\\wLOWER\\xFCF\\w0.1\\xTXT\\wSIM REQT'); => after "SIM REQT"
FCF\\w0.1\\xTXT\\wONE\\n0.2\\wA\\xTXT\\wTWO');#70=FLATNESS_TOLERANCE('','',#22,#32);#71=GEOMETRIC_TOLERANCE_RELATIONSHIP('','',#50,#70); => after "ONE⏎TWO"
)");
  Expect("#50=DATUM_TARGET('','area',#10,.T.,'1');#52=SHAPE_ASPECT_RELATIONSHIP('','',#50,#37);" +
             link + callout,
         R"(
TXT\\wL1'); => (A1) & reduced #60 37 its text 'L1' is left out
)");
}

TEST(HostStep, BodiesOfWiresAndShellsAreRead) {
  Expect(
      "#53=SHAPE_ASPECT('','',#10,.T.);#55=FLATNESS_TOLERANCE('','',#22,#53);#54=GEOMETRIC_ITEM_"
      "SPECIFIC_USAGE('','',#53,#11,#51);",
      R"(
#50=GEOMETRIC_CURVE_SET('w',(#51,#51,#17));#51=LINE('l',#17,$);#52=SHAPE_REPRESENTATION('',(#50),#9); => on edge "l" & count bodies 2 & count edges 1 & count vertices 1 & count wireBodies 1
#50=GEOMETRIC_CURVE_SET('w',(#51));#51=LINE('l',#17,$); => lost #54 37 its item #51 is nothing of the model & count bodies 1
#50=SHELL_BASED_SURFACE_MODEL('s',(#52));#52=OPEN_SHELL('',(#51));#51=ADVANCED_FACE('f',(#56),$,.T.);#56=FACE_OUTER_BOUND('',#57,.T.);#57=EDGE_LOOP('',(#58));#58=ORIENTED_EDGE('',*,*,#59,.T.);#59=EDGE_CURVE('e',#60,#61,$,.T.);#60=VERTEX_POINT('',#17);#61=VERTEX_POINT('',#17); => on face "f" & count faces 4 & count edges 1 & count vertices 2
#50=TESSELLATED_SOLID('t',(#51),$);#51=TRIANGULATED_FACE('f',$); => on face "f" & count faces 4
#50=EDGE_BASED_WIREFRAME_MODEL('w',(#52));#52=CONNECTED_EDGE_SET('',(#51));#51=EDGE_CURVE('e',#60,#60,$,.T.);#60=VERTEX_POINT('v',#17); => on edge "e" & count bodies 2 & count vertices 1
#50=BREP_WITH_VOIDS('b',#52,(#56));#52=CLOSED_SHELL('',(#51));#51=ADVANCED_FACE('f',(),$,.T.);#56=ORIENTED_CLOSED_SHELL('',*,#57,.F.);#57=CLOSED_SHELL('',(#58));#58=ADVANCED_FACE('g',(),$,.T.); => on face "f" & count faces 5
#50=(BREP_WITH_VOIDS((#57))FACETED_BREP()MANIFOLD_SOLID_BREP(#52)REPRESENTATION_ITEM('v')SOLID_MODEL());#52=CLOSED_SHELL('',(#58));#57=CLOSED_SHELL('',(#51));#51=ADVANCED_FACE('f',(),$,.T.);#58=ADVANCED_FACE('g',(),$,.T.); => on face "f" & count faces 5 & count bodies 2
#51=MANIFOLD_SOLID_BREP('again',#13); => on body "again" & ignored #14 19 it is in another body already
)");
}

TEST(HostStep, PartsOfAssembliesStandWithTheirPmiWhereTheyArePlaced) {
  Expect(
      R"(#50=PRODUCT_DEFINITION('','',$,$);#52=SHAPE_REPRESENTATION('',(#66),#9);#53=CARTESIAN_POINT('',(100.,0.,0.));#54=CARTESIAN_POINT('',(0.,0.,50.));#55=DIRECTION('',(0.,1.,0.));#65=AXIS2_PLACEMENT_3D('',#56,$,$);#56=CARTESIAN_POINT('',(0.,0.,0.));#66=AXIS2_PLACEMENT_3D('',#53,$,#55);#67=AXIS2_PLACEMENT_3D('',#54,$,$);#80=PLACED_DATUM_TARGET_FEATURE('','point',#10,.T.,'1');#81=SHAPE_ASPECT_RELATIONSHIP('','',#80,#37);#82=PROPERTY_DEFINITION('','',#80);#83=SHAPE_DEFINITION_REPRESENTATION(#82,#84);#84=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#20),#9);#85=FLATNESS_TOLERANCE('flat','',#22,#10);#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#50,#40,$);#61=PRODUCT_DEFINITION_SHAPE('','',#60);#62=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#63,#61);)",
      R"(
#63=SHAPE_REPRESENTATION_RELATIONSHIP('','',#11,#52); => point at (1, 2, 3) & on body "body"
#63=(REPRESENTATION_RELATIONSHIP('','',#11,#52)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#64)SHAPE_REPRESENTATION_RELATIONSHIP());#64=ITEM_DEFINED_TRANSFORMATION('','',#65,#66); => point at (98, 1, 3) & 1 tolerance & count bodies 1 & on body "body"
#63=(REPRESENTATION_RELATIONSHIP('','',#11,#52)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#64)SHAPE_REPRESENTATION_RELATIONSHIP());#64=ITEM_DEFINED_TRANSFORMATION('','',#65,#66);#90=DRAUGHTING_MODEL('',(#91),#9);#91=CAMERA_MODEL_D3('cam',#20,#92);#92=VIEW_VOLUME(.PARALLEL.,#56,1.,0.,.F.,0.,.F.,.F.,#93);#93=PLANAR_BOX('',2.,2.,#20);#94=PRODUCT_DEFINITION_SHAPE('','',#50);#95=FLATNESS_TOLERANCE('all','',#22,#94); => "cam" parallel at (1, 2, 3) & tolerance "all" & lost #94 37 its product has no body & 2 tolerances
#63=(REPRESENTATION_RELATIONSHIP('','',#52,#11)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#64)SHAPE_REPRESENTATION_RELATIONSHIP());#64=ITEM_DEFINED_TRANSFORMATION('','',#66,#65);#95=FLATNESS_TOLERANCE('','',#22,#96);#96=DIMENSIONAL_SIZE(#32,'width');#110=DRAUGHTING_CALLOUT('n',());#111=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#32,#39,#110);#112=DRAUGHTING_CALLOUT('of all',());#97=PRODUCT_DEFINITION('','',$,$);#98=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','','',#50,#97,$);#99=PRODUCT_DEFINITION_SHAPE('','',#97);#100=SHAPE_DEFINITION_REPRESENTATION(#99,#101);#101=SHAPE_REPRESENTATION('',(#102),#9);#102=MANIFOLD_SOLID_BREP('plain',#103);#103=CLOSED_SHELL('',());#104=PROPERTY_DEFINITION('','',#99);#70=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#50,#40,$);#71=PRODUCT_DEFINITION_SHAPE('','',#70);#72=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#73,#71);#73=(REPRESENTATION_RELATIONSHIP('','',#11,#52)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#74)SHAPE_REPRESENTATION_RELATIONSHIP());#74=ITEM_DEFINED_TRANSFORMATION('','',#65,#67); => point at (98, 1, 3) & point at (1, 2, 53) & 4 tolerances & 2 datums & 2 dimensions & count bodies 3 & 3 notes & note "of all" & listed 6
)");
}

TEST(HostStep, NotesHaveTheTextThatTheFileStates) {
  Expect(
      "#50=ANNOTATION_CURVE_OCCURRENCE('n',(),#51);#51=POLYLINE('',(#17));#52=ANNOTATION_PLANE('',("
      "),#21,(#50));",
      R"(
#53=CHARACTERIZED_ITEM_WITHIN_REPRESENTATION('','',#50,#39);#54=PROPERTY_DEFINITION('','',#53);#55=PROPERTY_DEFINITION_REPRESENTATION(#54,#56);#56=REPRESENTATION('',(#57,#22,#58),#9);#57=DESCRIPTIVE_REPRESENTATION_ITEM('else','no');#58=DESCRIPTIVE_REPRESENTATION_ITEM('equivalent unicode string','4X'); => note "n"  "4X" & at (1, 2, 3)
#53=CHARACTERIZED_ITEM_WITHIN_REPRESENTATION('','',#50,#39);#54=PROPERTY_DEFINITION('','',#53);#55=PROPERTY_DEFINITION_REPRESENTATION(#54,#56);#56=REPRESENTATION('',(#58),#9);#58=DESCRIPTIVE_REPRESENTATION_ITEM('equivalent unicode string','TXT\\nONE:\\n 2\\s#{diameter}3\\xTXT\\wFOUR'); => note "n"  "ONE:⏎ 2 #{diameter}3⏎FOUR"
#53=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#54,#39,#50);#54=PROPERTY_DEFINITION('','',#10);#55=PROPERTY_DEFINITION_REPRESENTATION(#54,#56);#56=REPRESENTATION('',(#57,#58),#9);#57=DESCRIPTIVE_REPRESENTATION_ITEM('','one');#58=DESCRIPTIVE_REPRESENTATION_ITEM('','two'); => note "n"  "one⏎two"
#53=ANNOTATION_TEXT_OCCURRENCE('t',(),#54);#54=TEXT_LITERAL('','alone',#20,'',.RIGHT.,$); => note "t"  "alone"
#53=ANNOTATION_TEXT_OCCURRENCE('t',(),#54);#54=COMPOSITE_TEXT('',(#55,#56,#54));#55=TEXT_LITERAL_WITH_EXTENT('','one',#20,'',.RIGHT.,$,#58);#56=(COMPOSITE_TEXT((#57))GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(''));#57=(GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM('')TEXT_LITERAL('two',#20,'',.RIGHT.,$)TEXT_LITERAL_WITH_EXTENT(#58));#58=PLANAR_EXTENT('',1.,1.); => note "t"  "one⏎two"
#53=STRUCTURED_DIMENSION_CALLOUT('s',(#50)); => note "s" & 1 note
#53=ANNOTATION_TEXT_OCCURRENCE('\X4\0001F600\X0\ü⌀',(),#54);#54=TEXT_LITERAL('','\X\E9',#20,'',.RIGHT.,$); => note "😀ü⌀"  "é"
#53=(ANNOTATION_OCCURRENCE()ANNOTATION_SYMBOL_OCCURRENCE()REPRESENTATION_ITEM('s')STYLED_ITEM((),#17)); => note "s" & 2 notes
#53=SURFACE_TEXTURE_REPRESENTATION('',(),#9); => lost #53 37 it is PMI that is not read
#53=INVISIBILITY((#50)); => note "n"  ""  hidden
#53=INVISIBILITY((#52)); => note "n"  ""  hidden
#53=DRAUGHTING_CALLOUT('c',(#50));#54=INVISIBILITY((#50)); => note "c"  ""  hidden
#53=DRAUGHTING_CALLOUT('c',(#50,#54));#54=ANNOTATION_CURVE_OCCURRENCE('',(),#51);#55=INVISIBILITY((#50)); => note "c"  ""  at
#53=DRAUGHTING_MODEL('',(#50),#54);#54=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2,#5))REPRESENTATION_CONTEXT('','')); => at (1000, 2000, 3000)
#53=DRAUGHTING_CALLOUT('c',(#50)); => note "c"  "" & 1 note & reduced #53 37 its text is drawn and not stated
#53=DRAUGHTING_CALLOUT('c',(#54));#54=ANNOTATION_PLACEHOLDER_OCCURRENCE_WITH_LEADER_LINE('',(),#21,.GPS_DATA.,1.,()); => 2 notes & reduced #53 37 it has no plane
)");
}

TEST(HostStep, SavedViewsHaveTheirCamerasAndMembers) {
  Expect(
      R"(#50=FLATNESS_TOLERANCE('flat','',#22,#31);#51=DRAUGHTING_CALLOUT('',());#52=ANNOTATION_PLANE('',(),#21,(#51,#52));#53=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#50,#39,#51);#54=DIMENSIONAL_SIZE(#32,'width');#55=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#54,#39,#51);#60=PLANAR_BOX('',20.,10.,#20);#61=CARTESIAN_POINT('',(0.,0.,50.));#62=CARTESIAN_POINT('',(0.,0.,0.));#63=VIEW_VOLUME(.PARALLEL.,#61,100.,0.,.F.,0.,.F.,.F.,#60);#66=VIEW_VOLUME(.CENTRAL.,#61,0.,0.,.F.,0.,.F.,.F.,#60);)",
      R"(
#64=CAMERA_MODEL_D3('cam',#20,#63);#65=DRAUGHTING_MODEL('m',(#64,#51),#9); => "cam"  2 annotations & "cam" parallel at (1, 2, 3) to (1, 102, 3) along (0, 1, 0) up (0, 0, 1) angle 0 zoom 0.2 & 2 annotations: "flat", "width"
#64=CAMERA_MODEL_D3('in',#20,#67);#65=DRAUGHTING_MODEL('m',(#64,#51),#9);#67=VIEW_VOLUME(.PARALLEL.,#62,3.,0.,.F.,0.,.F.,.F.,#60); => "in" parallel at (1, 2, 3) to (1, -1, 3) along (0, -1, 0)
#64=CAMERA_MODEL_D3('',#20,#66);#65=DRAUGHTING_MODEL('m',(#64,#52),#9); => "m"  2 annotations & perspective at (1, -48, 3) to (1, 2, 3) along (0, 1, 0) up (0, 0, 1) angle 11.421186 zoom 0.2
#64=CAMERA_MODEL_D3_MULTI_CLIPPING('cam',#20,#63,(#21));#65=DRAUGHTING_MODEL('m',(#64),#9); => "cam"  0 annotations & clipping plane through (1, 2, 3) normal (0, -1, 0) & 1 capture
#64=(CAMERA_MODEL_D3(#20,#63)CAMERA_MODEL_D3_MULTI_CLIPPING((#21,#21))REPRESENTATION_ITEM('cam'));#65=DRAUGHTING_MODEL('m',(#64),#9); => "cam" parallel at (1, 2, 3) & 1 capture & clipping plane through (1, 2, 3) & reduced #64 37 the model has one clipping plane
#64=CAMERA_MODEL_D3_MULTI_CLIPPING('cam',#20,#63,(#67));#65=DRAUGHTING_MODEL('m',(#64),#9);#67=CAMERA_MODEL_D3_MULTI_CLIPPING_INTERSECTION('',(#21,#21)); => "cam" parallel & reduced #64 37 the model has one clipping plane & listed 2
#64=CAMERA_MODEL_D3_WITH_HLHSR('cam',#20,#63,.T.);#65=DRAUGHTING_MODEL('m',(#64,#51),#9); => "cam"  2 annotations & "cam" parallel at (1, 2, 3)
#64=CAMERA_MODEL_D3('cam',#20,$);#65=DRAUGHTING_MODEL('m',(#64,#51),#9); => "cam"  2 annotations & reduced #64 37 a reference is missing
)");
}

}  // namespace

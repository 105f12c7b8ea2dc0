// What the report for people says of a small report that has everything.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "EveryReport.h"
#include "report/Clean.h"
#include "report/Notation.h"
#include "report/Select.h"
#include "report/Wide.h"
#include "writers/text/Page.h"
#include "writers/text/PrintText.h"
#include "writers/text/Table.h"

namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(HostText, AReportOpensWithAHeadAndGoesOnByKind) {
  EXPECT_EQ(
      text::PrintText(Everything()),
      R"(part�.qif: QIF 3.0, mm, written in inch, angles written in radian; 2 datums, 1 datum target, 1 tolerance, 1 dimension, 1 texture, 1 note, 1 flag note, 1 unknown annotation, 1 capture; 3 lost, 1 reduced, 2 ignored

Datums
  [A]  targets A1, A2  id 30
  "Second"  [B]  id 31

Datum targets
  (A1)  line at (1, 2, 3) to (4, 5, 6)  note "⌀8"  id 35  on body "part"

Tolerances
  "Holes"  ⌖ | ⌀0.4 Ⓜ Ⓟ7 | A | B-C Ⓛ / 0.1 / 0.05/25×26  before "b"  after "a"  above "4X"
      below "l"  prefix "p"  suffix "s"  id 20  on face "hole 1", edge id 201

Dimensions
  "Bore"  4X p⌀9.525 ±0.127s THRU  above "over"  below "under"  hole callout "hole"
      underneath "far below"  written: value .375 inch, upper .005 inch  id 10  hidden
      on face "hole 1" and 4 more

Surface textures
  "Texture"  √ Ra 1.6 MILLED  id 40

Notes
  "Note"  "LINE⏎TWO�[31m�"  "bare"  id 50

Flag notes
  "Flag"  "1"  id 60

Unknown annotations
  unnamed

Captures
  "Front"  5 annotations of 7 members: "M30", "M10", "M31", "M50" and 1 more  clipped  id 90

Lost: 3
  Zone: no number  3 times  ids 20, 30  line 12

Reduced: 1
  Leader: its arc  id 10  line 70

Ignored: 2
)");
}

TEST(HostText, VerboseReportsHoldEverything) {
  const std::string text = text::PrintText(Everything(), {text::By::kKind, true, false});
  for (const char* lines : {R"(
      on face "hole 1" id 101, face "hole 2" id 102, face "hole 3" id 103, face "hole 4" id 104, face "hole 5" id 105
      diameter, diametral, tolerance plusMinus, value 9.525, lower -0.127, upper 0.127, precision 3, tolerance precision 4, callout of hole
      prefix "p", suffix "s", before "4X", after "THRU"
      line (1, 2) to (3, 4)
      extension lines (5, 6) (7, 8) (9, 10)
      callout countersink "Sink" 12
      at (0.5, -1) depth 2
      leader (1, 2, 3) to (4, 5, 6)
)",
                            "\n      depth 3\n",
                            "\n      obtention machiningMandatory, applicability allPartSurfaces\n",
                            "\n      font height 3.5 ratio 0.7 slant 15 fixed italic strike-through"
                            "\n      font height 2 ratio 1 slant 5 bold underline overline\n",
                            R"("M50" id 50, "M40" id 40, body "part" id 6
      clipped  id 90
      camera "Cam" parallel at (1, 2, 3) to (4, 5, 6) along (0, 0, 1) up (0, 1, 0) angle 30 zoom 0.5
      hidden text "gone"
      clipping plane through (0, 0, 1) normal (1, 0, 0)
)",
                            "\n  Zone: no number  3 times  ids 299 of 20, 30  line 12\n",
                            "\nIgnored: 2\n  URI: no place  2 times  id 5  line 4\n",
                            "\nIn the document\n  face 6\n"}) {
    EXPECT_THAT(text, HasSubstr(lines));
  }
}

// The lines that are headings, and the ids or names of the annotations under them.
std::vector<std::string> Outline(const std::string& text) {
  std::vector<std::string> outline;
  std::istringstream lines(text.substr(0, text.find("\nLost")));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    if (line[0] != ' ') outline.push_back(line);
    const std::size_t id = line.find("  id ");
    if (line[0] == ' ' && id != std::string::npos) outline.back() += " +" + line.substr(id + 5, 2);
    if (line.find("  unknown annotation unnamed") == 0) outline.back() += " +unnamed";
  }
  outline.erase(outline.begin());
  return outline;
}

TEST(HostText, AnnotationsAreGroupedByViewFaceOrCapture) {
  ModelReport report = Everything();
  EXPECT_THAT(Outline(text::PrintText(report, {text::By::kView, false, false})),
              ElementsAre("View 1 at (0, 0, 5) x (1, 0, 0) y (0, 1, 0)  id 7 +10 +20 +31 +30 +35",
                          "View 2 without a plane +40 +50 +60 +unnamed", "Captures +90"));
  // A face of another's label, named twice.
  report.views[1].annotations[2].entities = {{"face", "150", "hole 1"}, {"face", "150", "hole 1"}};
  EXPECT_THAT(
      Outline(text::PrintText(report, {text::By::kFace, false, false})),
      ElementsAre("face \"hole 1\" id 101 +10 +20", "face \"hole 2\" id 102 +10",
                  "face \"hole 3\" id 103 +10", "face \"hole 4\" id 104 +10",
                  "face \"hole 5\" id 105 +10", "face \"hole 1\" id 150 +60", "edge id 201 +20",
                  "body \"part\" +35", "On no entity +31 +30 +40 +50 +unnamed", "Captures +90"));
  report.captures[0].members.push_back({{}, "Lone"});
  const std::string byCapture = text::PrintText(report, {text::By::kCapture, false, false});
  EXPECT_THAT(Outline(byCapture), ElementsAre("Capture \"Front\"  id 90 +30 +10 +31 +50 +40",
                                              "In no capture +20 +35 +60 +unnamed"));
  EXPECT_THAT(byCapture, HasSubstr("\n  \"Lone\"\n"));
  EXPECT_THAT(text::PrintText(report, {text::By::kCapture, true, false}),
              ContainsRegex("\n  camera [^\n]*\n.*\n  body \"part\" id 6\n"));
}

TEST(HostText, SelectionsLeaveWhatIsWantedAndWhatTellsOfTheModel) {
  ModelReport report = Everything();
  const ModelReport whole = report;
  EXPECT_THAT(Select({{"datum"}, {"Front", "nope", "91"}}, report), ElementsAre("nope", "91"));
  EXPECT_EQ(text::PrintText(report), text::PrintText(whole));
  EXPECT_THAT(Select({{"datum", "geometricTolerance"}, {}}, report), ElementsAre());
  EXPECT_THAT(Outline(text::PrintText(report)), ElementsAre("Datums +30 +31", "Tolerances +20"));
  EXPECT_EQ(report.views.size(), 1U);
  ASSERT_EQ(report.entities.size(), 1U);
  EXPECT_THAT(report.entities[0].annotations, ElementsAre(Text("20")));
  EXPECT_EQ(text::PrintSummary(report), text::PrintSummary(whole));
  report = whole;
  report.captures.push_back({"91", "Back", {}, {}, {}, 0, {}, {}});
  EXPECT_THAT(Select({{"dimension", "captures"}, {"90"}}, report), ElementsAre());
  EXPECT_THAT(Outline(text::PrintText(report)), ElementsAre("Dimensions +10", "Captures +90"));
  // Of what was reduced, the entries of what is left are listed and the others counted.
  text::Style style;
  style.selection.kinds = {"dimension", "captures", "datum", "datum"};
  EXPECT_THAT(text::PrintText(report, style),
              AllOf(HasSubstr("Lost: 3\n  Zone: "),
                    HasSubstr("\nReduced: 1\n  Leader: its arc  id 10  line 70\n\nIgnored"),
                    HasSubstr("\n\nNo annotation of kind datum\n\nLost")));
  report.views.clear();
  report.captures.clear();
  style.selection.captures = {"90"};
  EXPECT_THAT(text::PrintText(report, style),
              AllOf(HasSubstr("\nNo annotation of kind dimension in the captures asked for\n\nNo "
                              "captures\n\nNo annotation"),
                    HasSubstr("\nReduced: 1\n  1 elsewhere in the model\n\nIgnored")));
}

TEST(HostText, LongListsAndTextsAreCut) {
  ModelReport report;
  for (int i = 0; i < 25; ++i) {
    report.source.skipped.push_back(
        {"lost", "K" + std::to_string(i), "1", "", std::string(999, 'r')});
  }
  for (int i = 0; i < 7; ++i)
    report.source.skipped.push_back({"lost", "K0", "é", "", std::string(999, 'r')});
  for (int i = 0; i < 7; ++i)
    report.source.skipped.push_back({"lost", "K1", std::to_string(i), "", std::string(999, 'r')});
  report.views.emplace_back().annotations.push_back(
      Annotation("text", "1", std::string(99, 'n').c_str()));
  const std::string cut = text::PrintText(report);
  EXPECT_THAT(cut, HasSubstr("\n  \"" + std::string(60, 'n') + "…\"  id 1\n"));
  EXPECT_THAT(cut, HasSubstr("\n  K0: " + std::string(196, 'r') + "…\n      8 times  ids 1, é\n"));
  EXPECT_THAT(cut, HasSubstr("…\n      8 times  ids 1, 0, 1, 2, 3 and 3 more\n"));
  EXPECT_THAT(cut, HasSubstr("\n  and 5 more\n"));
  const std::string whole = text::PrintText(report, {text::By::kKind, true, false});
  EXPECT_THAT(whole, HasSubstr("K24: " + std::string(999, 'r')));
  EXPECT_THAT(whole, Not(AnyOf(HasSubstr("…"), HasSubstr("Reduced"))));
}

TEST(HostText, OneLineTellsHowMuchWasLostAndTheFirstByLine) {
  ModelReport report = Everything();
  EXPECT_EQ(text::LossLine(report, false),
            "PMI was lost (3 entries), the first at line 12: Zone \"A\" (id 30): no number");
  EXPECT_EQ(text::LossLine(report, true),
            "PMI was lost or reduced (4 entries), the first at line 12: Zone \"A\" (id 30): no "
            "number");
  // What is missing elsewhere because of an annotation comes before it in the document.
  std::vector<SkippedReport>& skipped = report.source.skipped;
  skipped = {{"lost", "Camera", "93", "90", "flat", 5}};
  EXPECT_EQ(text::LossLine(report, false),
            "PMI was lost (1 entry), at line 5: Camera \"Front\" (id 90): flat");
  skipped.push_back({"reduced", "Arc", "8", "", "r", 30});
  skipped.push_back({"lost", "Size", "8", "", "NaN", 40});
  skipped.push_back({"lost", "Display", "7", "8", "of 8", 20});
  skipped.push_back({"lost", "Size", "9", "", "NaN", 0});
  for (const bool strict : {false, true}) {
    EXPECT_THAT(text::LossLine(report, strict), HasSubstr(", the first at line 40: Size (id 8): "));
  }
  skipped.push_back({"lost", "Size", "10", "", "NaN", 39});
  EXPECT_THAT(text::LossLine(report, false), HasSubstr(" (5 entries), the first at line 39: "));
  report.source.skipped = {{"reduced", "Arc", "9", "", "a\nb", 0, 1}};
  EXPECT_EQ(text::LossLine(report, false), "");
  EXPECT_EQ(text::LossLine(report, true), "PMI was reduced (1 entry): Arc (id 9): a⏎b");
  report.source.skipped.push_back({"lost", "Zone", "", "", "gone", 3, 1});
  EXPECT_EQ(text::LossLine(report, false), "PMI was lost (1 entry), at line 3: Zone: gone");
  EXPECT_EQ(text::LossLine(report, true),
            "PMI was lost or reduced (2 entries), the first at line 3: Zone: gone");
}

TEST(HostText, LinesHaveAHundredCharactersAtMost) {
  text::Page page(false);
  const std::string a(56, 'a');
  page.Flow(1, {{a}, {std::string(40, 'b')}, {a}, {std::string(36, 'c')}, {"d"}});
  EXPECT_EQ(page.Take(), "  " + a + "  " + std::string(40, 'b') + "\n      " + a + "  " +
                             std::string(36, 'c') + "\n      d\n");
}

TEST(HostText, ManyModelsStandInATableWithAlignedColumns) {
  text::Table table;
  table.Add(Everything());
  table.AddRefused("a longer name.qif");
  EXPECT_EQ(table.Print(),
            "file               format   unit  datum  datumTarget  geometricTolerance  dimension  "
            "roughness  text  flagNote  unknown  captures  lost  reduced  ignored\n"
            "part�.qif          QIF 3.0  mm        2            1                   1          1  "
            "        1     1         1        1         1     3        1        2\n"
            "a longer name.qif  refused  -         -            -                   -          -  "
            "        -     -         -        -         -     -        -        -\n");
}

TEST(HostText, ColoursAddEscapeSequencesAndNothingElse) {
  std::string text = text::PrintText(Everything(), {text::By::kKind, false, true});
  for (const char* part :
       {"\x1b[31mLost: 3\x1b[0m\n", "  \x1b[33mhidden\x1b[0m\n", "\n\x1b[1mDatums\x1b[0m\n"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
  for (std::size_t at = 0; (at = text.find('\x1b')) != std::string::npos;) {
    text.erase(at, text.find('m', at) - at + 1);
  }
  EXPECT_EQ(text, text::PrintText(Everything()));
}

TEST(HostText, NothingThatATerminalObeysComesThrough) {
  const struct {
    const char *raw, *clean;
  } cases[] = {{"a\tb\r\nc\u2028d", "a b⏎c⏎d"},
               {"\x1b[1m\x7f\x01", "�[1m��"},
               {"\u0080\u009f\u00a0é", "��\u00a0é"},
               {"\u202a\u202e\u2066\u2069\u200f\u2065", "�����\u2065"},
               {"\x9b\xc3", "��"},
               {"\xc3(\u0920", "�(\u0920"},
               {"\xc0\x80\xe0\x80\x80\xed\xa0\x80", "��������"},
               {"\xf4\x90\x80\x80\xf0\x9f\x93\x90", "����\U0001F4D0"}};
  for (const auto& [raw, clean] : cases) EXPECT_EQ(text::OneLine(raw), clean);
  EXPECT_EQ(text::EscapeControls("{\"é\": \"\u009b\x7f\u2066\"}\n"),
            "{\"é\": \"\\u009b\\u007f\\u2066\"}\n");
}

TEST(HostText, TextsOfEveryLengthOfCodeGoToUtf8AndBrokenOnesAreReplaced) {
  EXPECT_EQ(ToUtf8(L"µ ⌀ \U0001F4D0 \U0010FFFD"), "µ ⌀ \xF0\x9F\x93\x90 \xF4\x8F\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::wstring{static_cast<wchar_t>(0xD800)}), "\xEF\xBF\xBD");
}

TEST(HostDrawing, NumbersAndLimitsAreAsShortAsTheyCanBe) {
  EXPECT_EQ(text::DrawNumber(35), "35");
  EXPECT_EQ(text::DrawNumber(-1e-13), "0");
  EXPECT_EQ(text::DrawNumber(2e-7), "0.0000002");
  EXPECT_EQ(text::DrawNumber(1e300).size(), 301U);
  EXPECT_EQ(text::DrawNumber(std::nan("")), "?");
  DimensionReport angle;
  angle.mainType = "angular";
  angle.value = 60;
  const struct {
    Number upper, lower;
    const char *tolerance, *drawing;
  } cases[] = {{0.5, -0.25, "plusMinus", "60° +0.5°/-0.25°"},
               {0.5, -0.5, "plusMinus", "60° ±0.5°"},
               {0, 0, "plusMinus", "60° ±0°"},
               {0, 0, "basic", "60°"},
               {0.5, {}, "plusMinus", "60° +0.5°"},
               {{}, {}, "none", "60°"}};
  for (const auto& [upper, lower, tolerance, drawing] : cases) {
    angle.upper = upper;
    angle.lower = lower;
    angle.tolerance = tolerance;
    EXPECT_EQ(text::DrawDimension(angle), drawing);
  }
  DimensionReport none;
  EXPECT_EQ(text::DrawDimension(none), "(no value)");
  none.type = "diameter";
  EXPECT_EQ(text::DrawDimension(none), "⌀ (no value)");
  none.texts.suffix = "H7";
  EXPECT_EQ(text::DrawDimension(none), "⌀H7");
  DimensionReport limit;
  limit.value = 0;
  limit.upperText = "15.2";
  EXPECT_EQ(text::DrawDimension(limit), "15.2");
  limit.lowerText = "15.1";
  EXPECT_EQ(text::DrawDimension(limit), "15.2/15.1");
}

}  // namespace

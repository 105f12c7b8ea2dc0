// The rules over a report, and the options that apply them.
#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <set>

#include "HostProgram.h"
#include "checks/Check.h"
#include "writers/text/PrintText.h"

namespace {

using Annotation = AnnotationReport;

Annotation Make(const char* kind, const char* id, std::vector<const char*> faces = {}) {
  Annotation made;
  made.kind = kind;
  made.id = id;
  made.name = std::string("name of ") + id;
  made.hidden = false;
  for (const char* face : faces) made.entities.push_back({"face", face, {}});
  return made;
}

FrameReport FrameOf(const std::vector<const char*>& labels) {
  FrameReport frame;
  for (const char* label : labels) {
    ReferenceReport& reference = frame.references.emplace_back();
    reference.label = label;
    for (const char* letter = label; *letter != '\0'; letter += letter[1] == '-' ? 2 : 1) {
      reference.datums.push_back({{}, std::string(1, *letter), {}});
    }
  }
  return frame;
}

RowReport RowOf(double magnitude, const std::vector<const char*>& datums = {},
                const char* shape = "none") {
  RowReport row;
  row.valueType = shape;
  row.magnitude = magnitude;
  if (!datums.empty()) row.frame = FrameOf(datums);
  return row;
}

Annotation Tolerance(const char* id, const char* type, std::vector<RowReport> rows,
                     std::vector<const char*> faces) {
  Annotation made = Make("geometricTolerance", id, std::move(faces));
  ToleranceReport& tolerance = made.tolerance.emplace();
  tolerance.type = type;
  tolerance.rows = std::move(rows);
  return made;
}

Annotation Datum(const char* id, const char* label, std::vector<const char*> faces,
                 const std::vector<Text>& targets = {}) {
  Annotation made = Make("datum", id, std::move(faces));
  made.datum = DatumReport{label, targets, {}};
  return made;
}

Annotation Target(const char* id, const char* label) {
  Annotation made = Make("datumTarget", id, {"f1"});
  made.datumTarget.emplace().label = label;
  return made;
}

Annotation Size(const char* id, const char* type, double value, std::vector<const char*> faces) {
  Annotation made = Make("dimension", id, std::move(faces));
  DimensionReport& dimension = made.dimension.emplace();
  dimension.type = type;
  dimension.value = value;
  dimension.tolerance = "plusMinus";
  dimension.lower = -0.1;
  dimension.upper = 0.1;
  dimension.line = {{{0, 0}, {5, 0}}};
  return made;
}

Annotation Texture(const char* field) {
  Annotation made = Make("roughness", "texture", {"f1"});
  made.roughness.emplace().fields = {{}, Text(field)};
  return made;
}

Annotation Note(const char* id, const char* string) {
  Annotation made = Make("text", id, {"f1"});
  made.texts = {{string, {}}};
  return made;
}

// A sound report: datums A, B and C, what refers to them, a size, and a view of them all.
struct Sample {
  Sample() {
    ViewReport& view = report.views.emplace_back();
    view.frame = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    Add(Datum("a", "A", {"f1"})).Add(Datum("b", "B", {"f2"})).Add(Datum("c", "C", {"f3"}));
    Add(Tolerance("abc", "position", {RowOf(0.2, {"A", "B", "C"}, "diametrical")}, {"f4"}));
    Add(Size("size", "diameter", 10, {"f4"}));
  }
  Sample& Add(const Annotation& annotation) {
    report.views[0].annotations.push_back(annotation);
    return *this;
  }
  Sample& Lose(const char* id) {
    report.source.skipped.push_back({"lost", "Value", id, id, "no number", 7, 2});
    return *this;
  }
  // A view that shows the first so many annotations.
  Sample& View(std::size_t count) {
    CaptureReport& capture = report.captures.emplace_back();
    capture.id = "view";
    for (std::size_t i = 0; i < count; ++i) {
      capture.members.push_back({report.views[0].annotations[i].id, {}});
    }
    capture.memberCount = static_cast<long>(count);
    return *this;
  }
  Annotation& Get(std::size_t place) { return report.views[0].annotations[place]; }
  RowReport& Row() { return Get(5).tolerance->rows[0]; }
  DimensionReport& Dimension() { return *Get(5).dimension; }

  ModelReport report;
};

using Change = std::function<void(Sample&)>;
#define DO(...) [](Sample& s) { __VA_ARGS__; }

// Adds a tolerance on one face, or on some.
Change Adds(const char* type, std::vector<RowReport> rows,
            std::vector<const char*> faces = {"f5"}) {
  return [=](Sample& s) { s.Add(Tolerance("new", type, rows, faces)); };
}
Change Then(const Change& first, const Change& second) {
  return [=](Sample& s) { first(s), second(s); };
}
Change AddsSize(const char* type, double value, const Change& then = DO((void)s)) {
  return Then([=](Sample& s) { s.Add(Size("new", type, value, {"f5"})); }, then);
}
// One of each kind, with a zone of that shape.
std::vector<Change> OfKinds(const char* shape, const std::vector<const char*>& kinds,
                            const std::vector<const char*>& datums) {
  std::vector<Change> changes;
  for (const char* kind : kinds) changes.push_back(Adds(kind, {RowOf(0.1, datums, shape)}));
  return changes;
}
std::vector<Change> Joined(const std::vector<std::vector<Change>>& lists) {
  std::vector<Change> all;
  for (const auto& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}
const Change kSecondRow = [](Sample& s) { s.Get(5).tolerance->rows.push_back(RowOf(0.1, {"A"})); };

Change Modified(const char* modifier) {
  return [=](Sample& s) { s.Row().modifiers.push_back({modifier, {}}); };
}
Change Refined(double value) {
  return [=](Sample& s) { s.Row().refinement = value; };
}
Change Twice(const Change& adds, const Change& then = DO((void)s)) {
  return [=](Sample& s) { adds(s), adds(s), s.Get(6).id = "second", then(s); };
}
Change Skips(const char* id, const char* reason) {
  return [=](Sample& s) {
    s.report.source.skipped.push_back({"reduced", "Display", id, id, reason});
  };
}
// What the reader says of a document of two parts.
void TwoComponents(Sample& s) {
  s.report.source.skipped.push_back({"ignored", "Component", "1", "", "the model is one part"});
  s.report.source.skipped.push_back(s.report.source.skipped.back());
}
// Draws the second new dimension along this line.
Change Along(double x, double y) {
  return [=](Sample& s) { s.Get(6).dimension->line = {{{0, 0}, {x, y}}}; };
}
// A text at each place around a frame.
std::vector<Change> WithNotes(const Change& adds) {
  std::vector<Change> changes;
  for (Text ToleranceNotesReport::*place :
       {&ToleranceNotesReport::before, &ToleranceNotesReport::after, &ToleranceNotesReport::upper,
        &ToleranceNotesReport::lower, &ToleranceNotesReport::prefix,
        &ToleranceNotesReport::suffix}) {
    changes.push_back(Then(adds, [=](Sample& s) { s.Get(5).tolerance->notes.*place = "4X"; }));
  }
  return changes;
}
Change Targets(std::vector<const char*> labels) {
  return [=](Sample& s) {
    for (const char* label : labels) s.Add(Target(label, label));
  };
}
Change InUnplacedView(const Annotation& annotation) {
  return [=](Sample& s) { s.report.views.emplace_back().annotations.push_back(annotation); };
}

struct Case {
  const char* rule;  // the one that finds something
  std::vector<Change> fails, passes;
};

std::vector<Case> Cases() {
  const auto round = "diametrical";
  const Change around = Adds("position", {RowOf(0.1, {"A"}, round)}, {"f5", "f6"});
  const Change distance = AddsSize("distance", 50);
  const Change paint = DO(s.Add(Note("new", "PAINT")));
  return {
      {"D1",
       {DO(s.Add(Datum("new", "A", {"f5"})))},
       {Then(DO(s.Add(Datum("#1/#2", "A", {"f5"}))),
             DO(s.Add(Tolerance("#1/#3", "parallelism", {RowOf(1, {"A"})}, {"f6"})))),
        Then(DO(s.Add(Datum("new", "A", {"f5"}))), TwoComponents)}},
      {"D2",
       {Adds("parallelism", {RowOf(0.1, {"Q"})}), Adds("parallelism", {RowOf(0.1, {"A-Q"})}),
        Adds("parallelism", {RowOf(0.1, {"Q"}), RowOf(0.1, {"Q"})}),
        Then(Adds("parallelism", {RowOf(0.1, {"Q"})}), DO(s.Add(Target("#1/2", "Q1")))),
        DO(s.Add(Tolerance("#1/#2", "parallelism", {RowOf(1, {"A"})}, {"f5"})))},
       {Adds("parallelism", {RowOf(0.1, {"A-B"})}),
        Then(Adds("parallelism", {RowOf(0.1, {"Q"})}),
             DO(s.Row().frame->references[0].datums[0].id = "a")),
        Then(Adds("parallelism", {RowOf(0.1, {"Q"})}),
             Then(DO(s.Row().frame->references[0] = {"D1", {}}),
                  DO(s.Add(Datum("d", "D1", {"f1"}))))),
        Then(Adds("parallelism", {RowOf(0.1, {"Q"})}),
             DO(s.Row().frame->references[0] = {"A-B", {}})),
        Then(Adds("parallelism", {RowOf(0.1, {"Q"})}), Targets({"Q1"}))}},
      {"D3", {DO(s.Get(0).entities.clear())}, {DO(s.Get(0) = Datum("a", "A", {}, {"A1"}))}},
      {"D4",
       {Adds("position", {RowOf(0.1, {"A", "B", "A"})})},
       {Adds("position", {RowOf(0.1, {"A-A", "A-B"})}),
        Then(Adds("position", {RowOf(0.1, {"A", "B"})}),
             DO(auto& references = s.Row().frame->references;
                references[0] = references[1] = {{}, {{{}, "", {}}}})),
        Adds("parallelism", {RowOf(0.2, {"A"}), RowOf(0.1, {"A"})}),
        Then(Adds("position", {RowOf(0.1, {"A", "A"})}),
             DO(s.Row().frame->references[1].datums[0].modifiers = {{"point", {}}}))}},
      {"D5",
       {DO(s.Add(Datum("new", "D", {"f5"}))),
        DO(s.Add(Datum("new", "D", {"f5"})).Add(Note("note", "D FITS"))),
        DO(s.Add(Datum("new", "D", {"f5"})).Add(Note("note", "DATUMS ARE AS DRAWN"))),
        DO(s.Add(Datum("new", "D", {"f5"})).Add(Note("#1/note", "DATUM D")))},
       {DO(s.Add(Datum("new", "D", {"f5"})).Add(Note("note", "⌓|.06|A|D ALL OVER"))),
        DO(s.Add(Datum("new", "D", {"f5"})).Add(Note("note", "Datums A, D."))),
        Then(Adds("parallelism", {RowOf(0.1, {"A-D"})}), DO(s.Add(Datum("d", "D", {"f5"})))),
        Then(Adds("parallelism", {RowOf(0.1, {"D"})}),
             DO(s.Row().frame->references[0] = {{}, {{"d", {}, {}}}};
                s.Add(Datum("d", "D", {"f5"}))))}},
      {"D6",
       {Targets({"A1", "A3"}), Targets({"A2"}), Targets({"A1", "A1"}),
        Then(Targets({"A1"}), DO(s.Get(5).entities.clear()))},
       {Targets({"A2", "A1"}), Targets({"A1", "Ax"}), Then(Targets({"A1", "A1"}), TwoComponents),
        Then(Targets({"A1"}),
             DO(s.Get(5).entities.clear(), s.Get(5).datumTarget->point1 = {1, 2, 3}))}},
      {"T1",
       {Adds("flatness", {RowOf(0.1)}, {})},
       {Adds("flatness", {RowOf(0.1)}), Then(Adds("surfaceProfile", {RowOf(1)}, {}),
                                             DO(s.Get(5).tolerance->notes.lower = "ALL OVER"))}},
      {"T2",
       {Adds("flatness", {RowOf(0)}), Adds("flatness", {RowOf(-0.1)}),
        Adds("parallelism", {RowOf(0.1, {"A"}), RowOf(0, {"A"})}),
        Then(Adds("flatness", {RowOf(-0.1)}), Modified("leastMaterial"))},
       {Then(Adds("surfaceProfile", {RowOf(0)}), Skips("new", "the zone is not uniform")),
        Then(Adds("perpendicularity", {RowOf(0, {"A"}, round)}), Modified("maximumMaterial")),
        Then(Adds("perpendicularity", {RowOf(0, {"A"}, round)}),
             Modified("leastMaterialReciprocity"))}},
      {"T3",
       {Adds("flatness", {RowOf(0.1, {"A"})}), Adds("straightness", {RowOf(0.1, {"A"})}),
        Adds("circularity", {RowOf(0.1, {"A"})}),
        Adds("cylindricity", {RowOf(0.2), RowOf(0.1, {"A"})})},
       {Adds("parallelism", {RowOf(0.1, {"A"})})}},
      {"T4",
       {Adds("angularity", {RowOf(0.1)}), Adds("perpendicularity", {RowOf(0.1)}),
        Adds("parallelism", {RowOf(0.1)}), Adds("circularRunout", {RowOf(0.1)}),
        Adds("totalRunout", {RowOf(0.1)})},
       {Adds("surfaceProfile", {RowOf(0.1)}),
        Then(Adds("angularity", {RowOf(0.1)}), DO(s.Row().frame = {"A", {}}))}},
      {"T5",
       {Adds("position", {RowOf(0.1)})},
       Joined({WithNotes(Adds("position", {RowOf(0.1)})),
               {Adds("position", {RowOf(0.1)}, {"f5", "f6"}),
                Then(Adds("position", {RowOf(0.1)}), Modified("commonZone"))}})},
      {"T6",
       {Then(Adds("circularity", {RowOf(0.1)}), Modified("maximumMaterial")),
        Then(Adds("cylindricity", {RowOf(0.1)}), Modified("leastMaterial")),
        Then(Adds("totalRunout", {RowOf(0.1, {"A"})}), Modified("maximumMaterialReciprocity")),
        Then(Adds("circularRunout", {RowOf(0.1, {"A"})}), Modified("maximumMaterial")),
        Then(Adds("lineProfile", {RowOf(0.1)}), Modified("maximumMaterial")),
        Then(Adds("totalRunout", {RowOf(0.1, {"A"}), RowOf(0.1, {"A"})}),
             DO(s.Get(5).tolerance->rows[1].modifiers = {{"maximumMaterial", {}}})),
        Then(Adds("surfaceProfile", {RowOf(0.1)}), Modified("maximumMaterial"))},
       {Then(Adds("circularity", {RowOf(0.1)}), Modified("freeState")),
        Then(Adds("flatness", {RowOf(0.1)}), Modified("maximumMaterial")),
        Then(Adds("surfaceProfile", {RowOf(0.1, {"A"})}),
             DO(s.Row().frame->references[0].datums[0].modifiers = {{"maximumMaterial", {}}}))}},
      {"T7",
       {Adds("position", {RowOf(0.1, {"A", "B"}), RowOf(0.2, {"A"})}),
        Adds("lineProfile", {RowOf(0.1, {"A"}), RowOf(0.1, {"A"})}),
        Adds("surfaceProfile", {RowOf(0.2, {"A", "B"}), RowOf(0.1, {"B"})}),
        Adds("position", {RowOf(0.2, {"A"}), RowOf(0.1, {"A", "B"})}),
        Adds("position", {RowOf(0.3, {"A"}), RowOf(0.2, {"A"}), RowOf(0.2, {"A"})}),
        Then(Adds("position", {RowOf(0.1, {"A"}), RowOf(0.1, {"A"})}),
             DO(s.Get(5).tolerance->rows[1].modifiers = {{"maximumMaterial", {}}}))},
       {Adds("position", {RowOf(0.2, {"A", "B-C"}), RowOf(0.1, {"A", "C-B"})}),
        Adds("position", {RowOf(0.2, {"A"}), RowOf(0.1)}),
        Adds("parallelism", {RowOf(0.1, {"A"}), RowOf(0.2, {"B"})}),
        Then(Adds("position", {RowOf(0.1, {"A"})}), Then(Modified("maximumMaterial"), kSecondRow)),
        Then(Adds("position", {RowOf(0, {"A"})}), Then(Modified("maximumMaterial"), kSecondRow)),
        Then(Adds("surfaceProfile", {RowOf(0.1, {"A"}), RowOf(0.1, {"A"})}),
             DO(s.Get(5).tolerance->rows[1].rateUnit1 = 25))}},
      {"T8",
       Joined(
           {{Adds("flatness", {RowOf(0.2), RowOf(0.1, {}, round)})},
            OfKinds("diametrical", {"flatness", "circularity", "cylindricity"}, {}),
            OfKinds("diametrical", {"surfaceProfile", "symmetry", "circularRunout", "totalRunout"},
                    {"A"}),
            OfKinds("spherical", {"straightness", "flatness", "circularity", "cylindricity"}, {}),
            OfKinds("spherical",
                    {"lineProfile", "surfaceProfile", "symmetry", "circularRunout", "totalRunout",
                     "angularity", "perpendicularity", "parallelism"},
                    {"A"})}),
       {Adds("straightness", {RowOf(0.1, {}, round)}), Adds("lineProfile", {RowOf(0.1, {}, round)}),
        Adds("position", {RowOf(0.1, {"A"}, "spherical")})}},
      {"T9",
       {Then(Adds("flatness", {RowOf(0.1)}), Refined(0.1)),
        Then(Adds("flatness", {RowOf(0.1), RowOf(0.1)}),
             DO(s.Get(5).tolerance->rows[1].refinement = 0.1)),
        Then(Adds("flatness", {RowOf(0.1)}), Refined(0.2))},
       {Then(Adds("flatness", {RowOf(0.1)}), Refined(0.05)),
        Then(Adds("flatness", {RowOf(0.1)}), Then(Refined(2), DO(s.Row().magnitude.reset())))}},
      {"S1", {AddsSize("length", 10, DO(s.Get(5).entities.clear()))}, {AddsSize("length", 10)}},
      {"S2",
       {AddsSize("length", 10, DO(s.Dimension().upper = -0.2)),
        AddsSize("length", 10, DO(s.Dimension().upper = -0.2, s.Get(5).id.reset()))},
       {AddsSize("length", 10, DO(s.Dimension().upper = -0.1)),
        AddsSize("length", 10,
                 Then(DO(s.Dimension().upper = -0.2), Skips("new", "MinValue is not stated")))}},
      {"S3",
       {AddsSize("length", 0), AddsSize("radius", -1)},
       {AddsSize("distance", 0), AddsSize("angle", -1), AddsSize("width", 0.01),
        AddsSize("radius", 0, DO(s.Dimension().lower = 0))}},
      {"S4",
       {AddsSize("length", 10, DO(s.Dimension().tolerance = "none")),
        AddsSize("length", 10,
                 DO(s.Dimension().tolerance = "none", s.Dimension().texts.before = "4×"))},
       {AddsSize("length", 10, DO(s.Dimension().tolerance = "basic")),
        AddsSize("thread", 10, DO(s.Dimension().tolerance = "none")),
        AddsSize("length", 10,
                 Then(DO(s.Dimension().tolerance = "none"), Skips("new", "no Tolerance"))),
        AddsSize("length", 10,
                 DO(s.Dimension().tolerance = "none", s.Dimension().texts.suffix = "h11")),
        AddsSize("length", 10, DO(s.Dimension().tolerance = "none", s.Dimension().value.reset()))}},
      {"R1",
       {DO(s.Add(Texture("MILLED"))), DO(s.Add(Texture("M")))},
       {DO(s.Add(Texture("Ra 1.6"))), DO(s.Add(Texture("z"))),
        DO(s.Add(Texture("")).Get(5).roughness->obtention = "machiningForbidden")}},
      {"V1",
       {DO(s.View(4))},
       {DO(s.View(4).Get(4).hidden = true), DO(s.View(4).report.captures[0].members[0].id.reset()),
        Then(AddsSize("depth", 5),
             DO(s.View(5).Get(4).dimension->callouts = {{"new", {}, {}, {}}}))}},
      {"V2",
       {DO(s.View(0))},
       {DO(s.View(0).report.captures[0].memberCount = 1),
        DO(s.View(0).report.captures[0].camera.emplace()),
        DO(s.View(0).report.captures[0].clippingPlane.emplace()),
        Then(DO(s.View(0)), Skips("view", "its camera has no direction"))}},
      {"V3",
       {InUnplacedView(Make("unknown", "new"))},
       {Then(InUnplacedView(Size("new", "depth", 5, {"f5"})),
             DO(s.Get(4).dimension->callouts = {{"new", {}, {}, {}}})),
        DO(s.report.views[0].frame.reset()),
        Then(Adds("parallelism", {RowOf(0.1, {"D"})}), InUnplacedView(Datum("d", "D", {}, {"D1"}))),
        Then(InUnplacedView(Make("unknown", "new")), Skips("new", "it has no plane"))}},
      {"N1",
       {DO(s.Add(Note("new", " \n"))), DO(s.Add(Make("flagNote", "new")))},
       {DO(s.Add(Note("new", "BREAK EDGES"))), DO(s.Add(Note("new", "")).Get(5).hidden = true)}},
      {"C1",
       {Twice(around), Twice(around, DO(std::swap(s.Get(6).entities[0], s.Get(6).entities[1]))),
        Twice(distance), Twice(paint), Twice(AddsSize("diameter", 5), Along(0, 5)),
        Twice(distance, Along(9, 0)), Twice(distance, Along(-5, 0)),
        Twice(distance, Then(Along(0, 5), DO(s.Dimension().line = s.Get(6).dimension->line))),
        Twice(Adds("perpendicularity", {RowOf(0.1, {"A"})}, {"f5"}))},
       {Twice(around, DO(s.Get(6).tolerance->rows[0].magnitude = 0.2)),
        Twice(around, DO(s.Get(6).entities.pop_back())),
        Twice(around, DO(s.Get(6).tolerance->rows[0].frame = FrameOf({"B"}))),
        Twice(around, DO(s.Get(6).tolerance->rows[0].frame->note = "SIM REQT")),
        Twice(around, DO(s.Get(6).tolerance->rows[0].frame->references[0].datums[0].modifiers =
                             {{"maximumMaterial", {}}})),
        Twice(Adds("straightness", {RowOf(0.1)}, {"f5"})),
        Twice(Adds("lineProfile", {RowOf(0.1)})),
        Twice(Adds("position", {RowOf(0.1, {"A"})})),
        Twice(Adds("symmetry", {RowOf(0.1, {"A"})})),
        Twice(Adds("angularity", {RowOf(0.1, {"A"})}, {"f5", "f6"})),
        Twice(Adds("perpendicularity", {RowOf(0.1, {"A"})}, {"f5", "f6"})),
        Twice(Adds("parallelism", {RowOf(0.1, {"A"})}, {"f5", "f6"})),
        Twice(distance, Along(0, 5)),
        Twice(distance, Along(5, 1.8)),
        Twice(distance, DO(s.Get(6).dimension->value.reset())),
        Twice(distance, Then(Along(5, 5), DO(s.Dimension().line = {{{0, 0}, {5, -5}}}))),
        Twice(distance, DO(s.Get(5).dimension->line.reset(), s.Get(6).dimension->line.reset())),
        Twice(around, DO(s.Get(6).tolerance->allAround = true)),
        Twice(DO(s.Add(Note("new", ""))), DO(s.Get(5).hidden = s.Get(6).hidden = true)),
        Twice(distance, DO(s.Get(6).dimension->line.reset())),
        Twice(paint, DO(s.Get(6).entities[0].id.reset())),
        Twice(paint, DO(s.Get(5).entities[0].kind = s.Get(6).entities[0].kind = "body")),
        Twice(around, Skips("second", "the zone's datum is left out"))}},
      {"L1", {DO(s.Lose("abc"))}, {Skips("abc", "its arc")}},
  };
}

std::vector<std::string> Found(const ModelReport& report, const checks::Choice& choice = {}) {
  const ChecksReport checks = checks::Check(report, choice);
  std::vector<std::string> rules;
  for (const FindingReport& finding : checks.findings) {
    rules.push_back(checks.rules[finding.rule].id);
  }
  return rules;
}

TEST(HostChecks, EveryRuleFindsItsFaultAndNothingElse) {
  std::vector<std::string> rules;
  for (const Case& each : Cases()) {
    rules.emplace_back(each.rule);
    EXPECT_FALSE(each.fails.empty() || each.passes.empty()) << each.rule;
    for (std::size_t i = 0; i < each.fails.size(); ++i) {
      Sample sample;
      each.fails[i](sample);
      EXPECT_THAT(Found(sample.report), testing::ElementsAre(each.rule)) << each.rule << " " << i;
    }
    for (std::size_t i = 0; i < each.passes.size(); ++i) {
      Sample sample;
      each.passes[i](sample);
      EXPECT_THAT(Found(sample.report), testing::IsEmpty()) << each.rule << " " << i;
    }
  }
  EXPECT_EQ(rules, checks::RuleIds());
}

// What is absent because the reader lost something is told once, as lost.
TEST(HostChecks, RuleIsSilentOnWhatTheReaderLost) {
  const std::set<std::string> absence{"D2", "D3", "T1", "T2", "T4", "T5", "T7", "S1", "S2",
                                      "S3", "S4", "R1", "V2", "V3", "N1", "C1", "D5", "V1"};
  for (const Case& each : Cases()) {
    if (absence.count(each.rule) == 0) continue;
    // By the annotation's id, and of no annotation that the report has.
    for (const char* id : {"", "elsewhere"}) {
      Sample sample;
      each.fails[0](sample);
      for (const std::string& rule : {std::string("a"), std::string("new")}) {
        if (*id == '\0') sample.Lose(rule.c_str()).Lose("view").Lose("#1/#2").Lose("texture");
      }
      if (*id != '\0') sample.Lose(id).report.source.skipped[0].annotation.clear();
      const std::string found = testing::PrintToString(Found(sample.report));
      EXPECT_EQ(found.find(each.rule), std::string::npos) << each.rule << " " << found;
    }
  }
}

TEST(HostChecks, FindingSaysWhatAndWhere) {
  Sample sample;
  Adds("position", {RowOf(0.25, {"A", "B"}), RowOf(0.5, {"B"})})(sample);
  sample.Lose("new").report.source.skipped[0].annotation = "abc";
  sample.report.checks = checks::Check(sample.report);
  const std::string text = text::PrintText(sample.report);
  EXPECT_THAT(text, testing::HasSubstr("; checked: 3 errors\n"));
  EXPECT_THAT(text,
              testing::HasSubstr("\nChecked by 26 rules: 3 errors\n  error T7\n      a lower"));
  EXPECT_THAT(text,
              testing::HasSubstr("    \"name of new\" id new: row 2 has 0.5 below 0.25\n"
                                 "    \"name of new\" id new: row 2 has datums B below A | B\n"));
  EXPECT_THAT(text, testing::HasSubstr("id abc: Value: no number, 2 times, line 7\n"));
  EXPECT_EQ(text::ErrorLine(sample.report),
            "3 errors found, the first: T7 \"name of new\" id new: row 2 has 0.5 below 0.25");
}

TEST(HostChecks, LongListsAndRowsAreTold) {
  Sample sample;
  for (const char* id : {"a2", "a3", "a4", "a5", "a6"}) sample.Add(Datum(id, "A", {"f5"}));
  sample.Add(Target("t1", "B1")).Add(Target("t9", "B9"));
  sample.Add(Tolerance("flat", "flatness", {RowOf(0.2), RowOf(0.1, {"A"})}, {"f5"}));
  for (const char* how : {"plusMinus", "limits"}) {
    sample.Add(Size(how, "length", 10, {how}));
    DimensionReport& size = *sample.report.views[0].annotations.back().dimension;
    size.tolerance = how;
    size.upper = -0.2;
  }
  std::vector<std::string> messages;
  const auto check = [&] {
    for (const FindingReport& each : checks::Check(sample.report).findings) {
      messages.push_back(each.message);
    }
  };
  check();
  sample = {};
  sample.report.source.skipped = {{"lost", "Value", "abc", "abc", "no number"}};
  check();
  EXPECT_THAT(messages, testing::ElementsAre(
                            "A is the label of 6 datums: ids a, a2, a3, a4, a5 and 1 more",
                            "the targets of B go up to B9 without B2, B3, B4, B5, B6 and 2 more",
                            "flatness with datums in row 2", "upper -0.2 is below lower -0.1",
                            "upper 9.8 is below lower 9.9", "Value: no number"));
}

TEST(HostChecks, TimeGrowsWithTheReport) {
  Sample sample;
  for (int i = 0; i < 32000; ++i) {
    const std::string id = std::to_string(i);
    sample.Add(Datum(id.c_str(), i % 2 == 0 ? "A" : id.c_str(), {}));
    sample.Add(Tolerance(id.c_str(), "position", {RowOf(0.1, {"A", "Q"})}, {"f1"}));
  }
  const auto start = std::chrono::steady_clock::now();
  EXPECT_GT(checks::Check(sample.report).findings.size(), 64000U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

using HostChecksProgram = HostProgram;

TEST_F(HostChecksProgram, OptionsChooseRulesAndErrorsGiveTheirExitCode) {
  // Two errors, T2 and T9, in tolerance 315; the bundled model has notes V3 besides.
  const std::string path = Edited(">0.1</ToleranceValue>", ">0</ToleranceValue>");
  const struct {
    const char* options;
    int code;
    const char *rules, *notRules;
  } cases[] = {{"", 0, "", "Checked"},
               {"--check", 5, "error T2", "error D1"},
               {"--check --ignore T2,T9", 0, "note V3", "T2"},
               {"--check --only 'V3, S4'", 0, "by 2 rules: 3 notes", "T2"},
               {"--check --severity warning", 5, "error T2", "V3"},
               {"--check --severity error --only V3", 0, "by 0 rules: nothing found", "V3"},
               {"--check --kind datum", 5, "error T2", "T9"},
               {"--check --summary", 5, "; checked: 1 error, 3 notes", "T2"}};
  for (const auto& [options, code, rules, notRules] : cases) {
    const Outcome outcome = Run(path + " " + options);
    EXPECT_EQ(outcome.code, code) << options << outcome.err;
    EXPECT_THAT(outcome.out, testing::HasSubstr(rules)) << options;
    EXPECT_THAT(outcome.out, testing::Not(testing::HasSubstr(notRules))) << options;
    EXPECT_EQ(outcome.err.find("1 error found: T2") != std::string::npos, code == 5) << options;
  }
  EXPECT_THAT(Run(path + " --json --check").out, testing::HasSubstr("\"rule\": \"T2\""));
  EXPECT_THAT(Run(path + " " BUNDLED_MODEL " --summary --check").out,
              testing::ContainsRegex("errors  warnings  notes\n.* 1 +0 +3\n.* 0 +0 +3\n"));
  const Outcome unknown = Run(path + " --check --only T99");
  EXPECT_GE(unknown.code, 100);
  EXPECT_THAT(unknown.err, testing::HasSubstr("C1,L1"));
  EXPECT_GE(Run(path + " --only T2").code, 100);
  // Lost, found and refused at once.
  const std::string lost = Edited("<ToleranceValue decimalPlaces=\"1\">0.4<", "<ToleranceValue>x<");
  EXPECT_EQ(Run(lost + " --check --ignore L1").code, 4);
  EXPECT_EQ(Run(lost + " --check").code, 5);
  EXPECT_EQ(Run(lost + " --check " + File("no.qif", "no")).code, 2);
}

// A callout that presents a part's annotation is no note of the assembly, and labels are the
// part's.
TEST_F(HostChecksProgram, APartThatIsPlacedTwiceIsAsSoundAsOnce) {
  std::string assembly =
      "#9000=PRODUCT_DEFINITION('','',$,$);#9001=SHAPE_REPRESENTATION('',(#28),#22);\n";
  for (const std::string at : {"#901", "#902"}) {
    assembly += at + "1=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#9000,#8,$);" + at +
                "2=PRODUCT_DEFINITION_SHAPE('','',";
    assembly += at + "1);" + at + "3=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + at + "4," + at +
                "2);" + at + "4=(REPRESENTATION_RELATIONSHIP('','',#11,#9001)" +
                "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + at +
                "5)SHAPE_REPRESENTATION_RELATIONSHIP());" + at +
                "5=ITEM_DEFINED_TRANSFORMATION('','',#28,#28);\n";
  }
  const std::string end = "ENDSEC;\nEND-ISO";
  const std::string path = File("twice.stp", With(Read(STEP_MODEL), end, assembly + end));
  const Outcome outcome = Run(path + " --check --ignore V3");
  EXPECT_THAT(outcome.out, testing::HasSubstr("16 dimensions, 2 notes, 3 captures"));
  EXPECT_THAT(outcome.out, testing::HasSubstr("Checked by 25 rules: nothing found"));
}

TEST_F(HostChecksProgram, DocumentOfTheRulesIsWhatTheProgramPrints) {
  const Outcome rules = Run("--rules no-such-model");
  EXPECT_EQ(rules.code, 0);
  EXPECT_EQ(rules.out, Read(RULES)) << "docs/checks.md: pmi_report --rules > docs/checks.md";
}

}  // namespace

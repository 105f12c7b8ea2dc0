#pragma once

#include "report/Report.h"

// A small report that has everything. No two values that could be taken for each other are the
// same.

inline EntityReport Face(int number) {
  return {"face", std::to_string(100 + number), "hole " + std::to_string(number)};
}

inline AnnotationReport Annotation(const char* kind, const char* id, const char* name) {
  AnnotationReport annotation;
  annotation.kind = kind;
  annotation.id = id;
  annotation.name = name;
  return annotation;
}

inline AnnotationReport Bore() {
  AnnotationReport bore = Annotation("dimension", "10", "Bore");
  DimensionReport& dimension = bore.dimension.emplace();
  // clang-format off
  dimension = {"diameter", "diametral", "hole", "plusMinus", 9.525, 3, -0.127, 0.127, 4, {}, {},
               {"p", "s", "4X", "THRU", "over", "under", "hole", "far below"}, {}, {}, {}};
  // clang-format on
  dimension.line = {{{1, 2}, {3, 4}}};
  dimension.extensionLines = {{{5, 6}, {7, 8}, {9, 10}}};
  dimension.callouts.push_back({"19", "Sink", "countersink", 12});
  bore.entities = {Face(1), Face(2), Face(3), Face(4), Face(5)};
  bore.hidden = true;
  bore.position = {0.5, -1};
  bore.depth = 2;
  bore.leaders = {{{{1, 2, 3}, {4, 5, 6}}}};
  bore.written = {{"value", ".375", "inch"}, {"upper", ".005", "inch"}};
  return bore;
}

inline AnnotationReport Position() {
  AnnotationReport position = Annotation("geometricTolerance", "20", "Holes");
  ToleranceReport& tolerance = position.tolerance.emplace();
  tolerance.type = "position";
  tolerance.allAround = false;
  RowReport& row = tolerance.rows.emplace_back();
  row.valueType = "diametrical";
  row.magnitude = 0.4;
  row.modifiers = {{"maximumMaterial", {}}, {"projectedZone", 7}};
  row.frame = {
      "A|B",
      {{"A", {{"30", "A", {}}}}, {"B", {{"31", "B", {}}, {"32", "C", {{"leastMaterial", {}}}}}}}};
  RowReport& second = tolerance.rows.emplace_back();
  second.magnitude = 0.1;
  second.refinement = 0.05;
  second.rateUnit1 = 25;
  second.rateUnit2 = 26;
  tolerance.notes = {"b", "a", "4X", "l", "p", "s"};
  position.depth = 3;
  position.entities = {Face(1), {"edge", "201", {}}};
  return position;
}

inline ModelReport Everything() {
  ModelReport report;
  report.totals = {{"dimension", 1},   {"datum", 2},     {"geometricTolerance", 1},
                   {"datumTarget", 1}, {"roughness", 1}, {"text", 1},
                   {"flagNote", 1},    {"unknown", 1},   {"captures", 1}};
  ViewReport& view = report.views.emplace_back();
  view.id = "7";
  view.frame = {{0, 0, 5}, {1, 0, 0}, {0, 1, 0}};
  AnnotationReport b = Annotation("datum", "31", "Second");
  b.datum.emplace().label = "B";
  AnnotationReport a = Annotation("datum", "30", "A");
  a.datum.emplace() = {"A", {"A1", "A2"}, {"35", "36"}};
  AnnotationReport target = Annotation("datumTarget", "35", "A1");
  target.datumTarget = {"A1", "line", "⌀8", Point3{1, 2, 3}, Point3{4, 5, 6}};
  target.entities = {{"body", {}, "part"}};
  view.annotations = {Bore(), Position(), b, a, target};
  ViewReport& flat = report.views.emplace_back();
  flat.id = "view 2";
  AnnotationReport texture = Annotation("roughness", "40", "Texture");
  texture.roughness = {"machiningMandatory", "allPartSurfaces", {"Ra 1.6", {}, "MILLED"}};
  AnnotationReport note = Annotation("text", "50", "Note");
  note.texts = {
      {"LINE\nTWO\x1b[31m\u202E", FontReport{true, false, true, false, true, false, 3.5, 0.7, 15}},
      {"bare", FontReport{false, true, false, true, false, true, 2, 1, 5}}};
  AnnotationReport flag = Annotation("flagNote", "60", "Flag");
  flag.texts = {{"1", {}}};
  AnnotationReport unknown;
  unknown.kind = "unknown";
  flat.annotations = {texture, note, flag, unknown};
  CaptureReport& front = report.captures.emplace_back(
      CaptureReport{"90", "Front", "gone", {}, {{{{0, 0, 1}, {1, 0, 0}}}}, 7, {}, {}});
  front.camera = {"Cam", "parallel", {1, 2, 3}, {4, 5, 6}, {0, 0, 1}, {0, 1, 0}, 30, 0.5};
  for (const std::string id : {"30", "10", "31", "50", "40"})
    front.members.push_back({id, "M" + id});
  front.entities = {{"body", "6", "part"}};
  report.entities = {{Face(1), {"10", "20"}}, {Face(2), {"10"}}, {{"vertex", {}, {}}, {}}};
  report.source = {"part\x9b.qif", "QIF 3.0",     "part.stp", "STEP AP242", "mm", "inch",
                   "radian",       {{"face", 6}}, {}};
  report.source.skipped = {{"ignored", "URI", "5", "", "no place", 4, 2},
                           {"lost", "Zone", "299", "20", "no number", 80, 1},
                           {"reduced", "Leader", "10", "10", "its arc", 70, 1},
                           {"lost", "Zone", "30", "30", "no number", 12, 2}};
  return report;
}

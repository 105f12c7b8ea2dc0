// The report as a whole: what is said twice, and what the reader lost.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <set>
#include <unordered_map>

#include "checks/Rule.h"

namespace checks {

namespace {

// What annotations say, as one text; equal texts say the same.
class Saying {
 public:
  Saying& Add(const Text& text) {
    text_.append(text.value_or("")).push_back('\0');
    return *this;
  }
  Saying& Add(const Number& number) {
    char text[32] = "";
    if (number) std::snprintf(text, sizeof text, "%.17g", *number);
    return Add(Text(text));
  }
  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

void AddModifiers(const std::vector<ModifierReport>& modifiers, Saying& saying) {
  for (const ModifierReport& modifier : modifiers) {
    saying.Add(modifier.type).Add(modifier.magnitude);
  }
  saying.Add("");
}

void AddRow(const RowReport& row, Saying& saying) {
  saying.Add(row.valueType).Add(row.magnitude).Add(row.refinement);
  saying.Add(row.rateUnit1).Add(row.rateUnit2);
  AddModifiers(row.modifiers, saying);
  if (!row.frame) return;
  saying.Add(row.frame->note);
  for (const ReferenceReport& reference : row.frame->references) {
    saying.Add(reference.label);
    for (const FrameDatumReport& datum : reference.datums) {
      saying.Add(datum.id).Add(datum.label);
      AddModifiers(datum.modifiers, saying);
    }
  }
}

// Whether two tolerances of equal zones could still be in two directions: between lines or planes,
// of a line or an axis.
bool HasDirection(const AnnotationReport& annotation, const ToleranceReport& tolerance) {
  static const std::set<std::string> directed{"straightness", "lineProfile", "position",
                                              "otherForm",    "symmetry",    "unknown"};
  static const std::set<std::string> orientation{"angularity", "perpendicularity", "parallelism"};
  const bool isRound =
      std::all_of(tolerance.rows.begin(), tolerance.rows.end(), [](const auto& row) {
        return row.valueType == "diametrical" || row.valueType == "spherical";
      });
  const std::string type = tolerance.type.value_or("unknown");
  if (isRound) return false;
  // One face is a plane more often than not; two may be the halves of a hole.
  return directed.count(type) != 0 ||
         (orientation.count(type) != 0 && annotation.entities.size() != 1);
}

bool AddTolerance(const AnnotationReport& annotation, Saying& saying) {
  const ToleranceReport& tolerance = *annotation.tolerance;
  if (HasDirection(annotation, tolerance) || tolerance.rows.empty()) return false;
  saying.Add(tolerance.type).Add(tolerance.allAround.value_or(false) ? "around" : "");
  for (const RowReport& row : tolerance.rows) AddRow(row, saying);
  const ToleranceNotesReport& notes = tolerance.notes;
  saying.Add(notes.before).Add(notes.after).Add(notes.upper).Add(notes.lower);
  saying.Add(notes.prefix).Add(notes.suffix);
  return tolerance.rows[0].magnitude.has_value();
}

// The direction in which a distance is measured, in hundredths along x, y and z: that of its drawn
// line. None when it isn't told.
std::optional<std::array<long, 3>> DirectionOf(const DimensionReport& dimension,
                                               const ViewFrameReport* plane) {
  if (!dimension.line || plane == nullptr) return {};
  const auto& [start, end] = *dimension.line;
  Point3 along{};
  double length = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    along[i] = (end[0] - start[0]) * plane->xAxis[i] + (end[1] - start[1]) * plane->yAxis[i];
    length += along[i] * along[i];
  }
  if (!(length > 0) || !std::isfinite(length)) return {};
  std::array<long, 3> direction{};
  for (std::size_t i = 0; i < 3; ++i)
    direction[i] = std::lround(100 * along[i] / std::sqrt(length));
  const std::array<long, 3> opposite{-direction[0], -direction[1], -direction[2]};
  return std::max(direction, opposite);
}

bool AddDimension(const DimensionReport& dimension, const ViewFrameReport* plane, Saying& saying) {
  static const std::set<std::string> sizes{
      "diameter", "sphericalDiameter", "radius", "sphericalRadius", "thread",
      "angle",    "angleBetween"};
  const std::string type = dimension.type.value_or("");
  saying.Add(type).Add(dimension.calloutType).Add(dimension.tolerance);
  saying.Add(dimension.value).Add(dimension.lower).Add(dimension.upper);
  saying.Add(dimension.upperText).Add(dimension.lowerText);
  const DimensionTextsReport& texts = dimension.texts;
  for (const Text* text : {&texts.prefix, &texts.suffix, &texts.before, &texts.after, &texts.upper,
                           &texts.lower, &texts.holeCallout, &texts.below}) {
    saying.Add(*text);
  }
  if (!dimension.value || sizes.count(type) != 0) return dimension.value.has_value();
  // Between the same two holes there are distances along two axes.
  const auto direction = DirectionOf(dimension, plane);
  if (!direction) return false;
  for (const long part : *direction) saying.Add(std::to_string(part));
  return true;
}

bool AddTexts(const AnnotationReport& note, Saying& saying) {
  // A note may stand at several places of a body.
  for (const EntityReport& entity : note.entities) {
    if (entity.kind == "body") return false;
  }
  bool any = false;
  for (const TextReport& text : note.texts) {
    saying.Add(text.string);
    any = any || text.string.value_or("").find_first_not_of(" \t\r\n") != std::string::npos;
  }
  return any;
}

// What an annotation says, and of what; empty where a report can't tell. Datums and targets have
// rules of their own.
std::string SayingOf(const Index& index, const AnnotationReport& annotation) {
  std::vector<std::string> entities;
  for (const EntityReport& entity : annotation.entities) {
    if (!entity.id) return "";
    entities.push_back(*entity.id);
  }
  if (entities.empty() || !index.IsWhole(annotation.id)) return "";
  for (const char* word : {"zone", "direction", "path", "modifier"}) {
    if (index.IsReduced(annotation.id, word)) return "";
  }
  std::sort(entities.begin(), entities.end());
  Saying saying;
  saying.Add(annotation.kind);
  bool isTold = false;
  if (annotation.tolerance) isTold = AddTolerance(annotation, saying);
  if (annotation.dimension) {
    isTold = AddDimension(*annotation.dimension, index.PlaneOf(annotation), saying);
  }
  if (annotation.roughness) {
    saying.Add(annotation.roughness->obtention).Add(annotation.roughness->applicability);
    for (const Text& field : annotation.roughness->fields) {
      saying.Add(field);
      isTold = isTold || !field.value_or("").empty();
    }
  }
  if (annotation.kind == "text") isTold = AddTexts(annotation, saying);
  if (!isTold) return "";
  saying.Add("on");
  for (const std::string& entity : entities) saying.Add(entity);
  return saying.Take();
}

void SaidTwice(const Index& index, Findings& findings) {
  std::unordered_map<std::string, const AnnotationReport*> said;
  for (const AnnotationReport* annotation : index.All()) {
    std::string saying = SayingOf(index, *annotation);
    if (saying.empty()) continue;
    const auto [first, isNew] = said.emplace(std::move(saying), annotation);
    if (isNew) continue;
    findings.Add(*annotation, "says the same as id " + first->second->id.value_or("(none)"));
  }
}

void Lost(const Index& index, Findings& findings) {
  for (const SkippedReport& skipped : index.Report().source.skipped) {
    if (skipped.severity != "lost") continue;
    const std::string& id = skipped.annotation.empty() ? skipped.id : skipped.annotation;
    const AnnotationReport* const annotation = index.Find(id);
    std::string message = skipped.kind + ": " + skipped.reason;
    if (skipped.count > 1) message += ", " + std::to_string(skipped.count) + " times";
    if (skipped.line > 0) message += ", line " + std::to_string(skipped.line);
    findings.Add(id.empty() ? Text() : Text(id), annotation == nullptr ? Text() : annotation->name,
                 message);
  }
}

}  // namespace

std::vector<Rule> ReportRules() {
  return {
      {"C1", "warning", "two annotations that say the same of the same",
       "ASME Y14.5-2018, section 4", "remove one of them", "flatness 0.1 on a face, twice",
       "flatness 0.1 on two faces; two distances of 50 between the same holes, along x and y",
       SaidTwice},
      {"L1", "error", "PMI that the reader lost", "",
       "read the entry in the document, and have it mended where the document was written",
       "a tolerance whose value is no number", "a tolerance without its drawn lines", Lost},
  };
}

}  // namespace checks

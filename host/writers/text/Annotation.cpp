#include "writers/text/Annotation.h"

#include "report/Kinds.h"
#include "report/Notation.h"
#include "writers/text/Details.h"

namespace text {

namespace {

constexpr std::size_t kEntitiesShown = 4;

using NamedTexts = std::vector<std::pair<const char*, Text>>;

// The texts around a dimension or tolerance that its drawing does not show.
void AddTexts(const NamedTexts& texts, std::vector<Piece>& pieces) {
  for (const auto& [name, text] : texts) {
    if (!text.value_or("").empty()) pieces.push_back({std::string(name) + " \"" + *text + "\""});
  }
}

void AddDimension(const DimensionReport& dimension, std::vector<Piece>& pieces) {
  const std::string drawing = DrawDimension(dimension);
  const bool isDrawn = dimension.texts.holeCallout == drawing;
  pieces.push_back({drawing, Ink::kBold});
  // Brackets and parentheses of the drawing say so already.
  const std::string prefix = dimension.texts.prefix.value_or("");
  const std::string before = dimension.texts.before.value_or("");
  for (const auto& [tolerance, mark] : {std::pair("basic", '['), std::pair("reference", '(')}) {
    if (dimension.tolerance == tolerance && (prefix + before).find(mark) == std::string::npos) {
      pieces.push_back({tolerance});
    }
  }
  const DimensionTextsReport& texts = dimension.texts;
  AddTexts({{"above", texts.upper},
            {"below", texts.lower},
            {"hole callout", isDrawn ? Text() : texts.holeCallout},
            {"underneath", texts.below}},
           pieces);
}

void AddTolerance(const ToleranceReport& tolerance, std::vector<Piece>& pieces) {
  pieces.push_back({DrawTolerance(tolerance), Ink::kBold});
  const ToleranceNotesReport& notes = tolerance.notes;
  AddTexts({{"before", notes.before},
            {"after", notes.after},
            {"above", notes.upper},
            {"below", notes.lower},
            {"prefix", notes.prefix},
            {"suffix", notes.suffix}},
           pieces);
}

void AddDatumTarget(const DatumTargetReport& target, std::vector<Piece>& pieces) {
  pieces.push_back({"(" + target.label.value_or("?") + ")", Ink::kBold});
  std::string form = target.type.value_or("of no form");
  if (target.point1) form += " at " + Tuple(*target.point1);
  if (target.point2) form += " to " + Tuple(*target.point2);
  pieces.push_back({form});
  AddTexts({{"note", target.note}}, pieces);
}

void AddContent(const AnnotationReport& annotation, std::vector<Piece>& pieces) {
  if (annotation.dimension) AddDimension(*annotation.dimension, pieces);
  if (annotation.tolerance) AddTolerance(*annotation.tolerance, pieces);
  if (annotation.datum) {
    pieces.push_back({"[" + annotation.datum->label.value_or("?") + "]", Ink::kBold});
    std::vector<std::string> targets;
    for (const Text& target : annotation.datum->targets) targets.push_back(target.value_or("?"));
    if (!targets.empty()) pieces.push_back({"targets " + Some(targets, targets.size())});
  }
  if (annotation.datumTarget) AddDatumTarget(*annotation.datumTarget, pieces);
  if (annotation.roughness) pieces.push_back({DrawRoughness(*annotation.roughness), Ink::kBold});
  for (const TextReport& text : annotation.texts) {
    if (text.string) pieces.push_back({"\"" + *text.string + "\"", Ink::kBold});
  }
}

void AddWritten(const std::vector<WrittenReport>& written, std::vector<Piece>& pieces) {
  std::vector<std::string> values;
  for (const WrittenReport& value : written) {
    values.push_back(value.field + " " + value.text + " " + value.unit);
  }
  if (!values.empty()) pieces.push_back({"written: " + Some(values, values.size())});
}

}  // namespace

std::string EntityName(const EntityReport& entity, bool verbose) {
  std::string name = entity.kind;
  if (entity.label) name += " " + Quoted(*entity.label, verbose);
  if (entity.id && (verbose || !entity.label)) name += " id " + *entity.id;
  return name;
}

Text LabelOf(const AnnotationReport& annotation) {
  if (annotation.datum) return annotation.datum->label;
  return annotation.datumTarget ? annotation.datumTarget->label : Text();
}

void PrintAnnotation(Page& page, int depth, const AnnotationReport& annotation, bool sayKind,
                     bool verbose) {
  std::string name = sayKind ? KindCalled(annotation.kind).one : "";
  // Of a datum that is named as its label, the label tells.
  if (!annotation.name || annotation.name != LabelOf(annotation)) {
    name += (name.empty() ? "" : " ") +
            (annotation.name ? Quoted(*annotation.name, verbose) : "unnamed");
  }
  std::vector<Piece> pieces;
  if (!name.empty()) pieces.push_back({name});
  AddContent(annotation, pieces);
  AddWritten(annotation.written, pieces);
  if (annotation.id) pieces.push_back({"id " + *annotation.id, Ink::kFaint});
  if (annotation.hidden.value_or(false)) pieces.push_back({"hidden", Ink::kYellow});
  std::vector<std::string> entities;
  for (const EntityReport& entity : annotation.entities) {
    entities.push_back(EntityName(entity, verbose));
  }
  const bool few = verbose || entities.size() <= kEntitiesShown;
  if (!entities.empty()) pieces.push_back({"on " + Some(entities, few ? entities.size() : 1)});
  page.Flow(depth, pieces);
  if (verbose) PrintDetails(page, depth + 2, annotation);
}

}  // namespace text

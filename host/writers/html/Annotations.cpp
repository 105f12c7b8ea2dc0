#include <algorithm>
#include <map>

#include "report/Kinds.h"
#include "report/Notation.h"
#include "writers/html/Glyphs.h"
#include "writers/html/Sections.h"
#include "writers/html/Signs.h"

namespace html {

namespace {

using NamedTexts = std::vector<std::pair<const char*, Text>>;

// The name of an enumerator as words: "surface profile".
std::string Words(const Text& name) {
  std::string words;
  for (const char c : name.value_or("")) {
    const bool isCapital = c >= 'A' && c <= 'Z';
    if (isCapital) words += ' ';
    words += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return words;
}

void PrintTexts(Html& page, const NamedTexts& texts) {
  for (const auto& [name, text] : texts) {
    if (text.value_or("").empty()) continue;
    page.Raw("<div>").Raw(name).Raw(": ").Text(*text).Raw("</div>");
  }
}

void PrintFrame(Html& page, const std::vector<std::string>& compartments) {
  page.Raw("<div class=\"frame\">");
  for (const std::string& compartment : compartments) {
    page.Raw("<span>");
    PrintSigns(page, compartment);
    page.Raw("</span>");
  }
  page.Raw("</div>");
}

void PrintTolerance(Html& page, const ToleranceReport& tolerance) {
  const ToleranceNotesReport& notes = tolerance.notes;
  PrintTexts(page, {{"above", notes.upper}, {"before", notes.before}, {"prefix", notes.prefix}});
  for (const RowReport& row : tolerance.rows) {
    std::vector<std::string> compartments = text::Compartments(row);
    compartments.insert(compartments.begin(), text::CharacteristicSymbol(tolerance));
    PrintFrame(page, compartments);
  }
  if (tolerance.rows.empty()) PrintFrame(page, {text::CharacteristicSymbol(tolerance)});
  PrintTexts(page, {{"suffix", notes.suffix}, {"after", notes.after}, {"below", notes.lower}});
}

void PrintDimension(Html& page, const DimensionReport& dimension) {
  const DimensionSign sign = SignOf(dimension);
  const DimensionTextsReport& texts = dimension.texts;
  PrintTexts(page, {{"above", texts.upper}});
  if (sign.isBoxed) {
    PrintFrame(page, {sign.text});
  } else if (!sign.text.empty()) {
    page.Raw("<div>");
    PrintSigns(page, sign.text);
    page.Raw("</div>");
  }
  PrintTexts(page, {{"below", texts.lower}, {"underneath", texts.below}});
  if (texts.holeCallout != sign.text) PrintTexts(page, {{"hole callout", texts.holeCallout}});
}

// What a drawing shows of it.
void PrintContent(Html& page, const AnnotationReport& annotation) {
  if (annotation.tolerance) PrintTolerance(page, *annotation.tolerance);
  if (annotation.dimension) PrintDimension(page, *annotation.dimension);
  if (annotation.datum) {
    PrintFrame(page, {annotation.datum->label.value_or("?")});
    std::string targets;
    for (const Text& target : annotation.datum->targets) {
      targets += (targets.empty() ? "" : ", ") + target.value_or("?");
    }
    PrintTexts(page, {{"targets", targets}});
  }
  if (annotation.datumTarget) {
    PrintFrame(page, {annotation.datumTarget->label.value_or("?")});
    PrintTexts(page, {{"size", annotation.datumTarget->note}});
  }
  if (annotation.roughness) {
    page.Raw("<div>");
    PrintSigns(page, text::DrawRoughness(*annotation.roughness));
    page.Raw("</div>");
  }
  for (const TextReport& text : annotation.texts) {
    page.Raw("<div>").Text(text.string.value_or("")).Raw("</div>");
  }
  for (const WrittenReport& value : annotation.written) {
    page.Raw("<div>written: ").Text(value.field + " " + value.text + " " + value.unit);
    page.Raw("</div>");
  }
}

// The same in words, as far as a name tells it.
std::string Meaning(const AnnotationReport& annotation) {
  std::string meaning;
  if (annotation.tolerance) {
    meaning = Words(annotation.tolerance->type);
    if (annotation.tolerance->rows.size() > 1) meaning += ", composite";
    if (annotation.tolerance->allAround.value_or(false)) meaning += ", all around";
  }
  if (annotation.dimension) {
    meaning = Words(annotation.dimension->type);
    const std::string& tolerance = annotation.dimension->tolerance;
    if (tolerance == "basic" || tolerance == "reference") meaning += ", " + tolerance;
  }
  if (annotation.datumTarget) meaning = Words(annotation.datumTarget->type);
  if (annotation.roughness) meaning = Words(annotation.roughness->obtention);
  const bool isNote = annotation.kind == "text" || annotation.kind == "flagNote";
  const auto hasText = [](const TextReport& text) { return !text.string.value_or("").empty(); };
  if (isNote && std::none_of(annotation.texts.begin(), annotation.texts.end(), hasText)) {
    meaning = "without text";
  }
  if (annotation.hidden.value_or(false)) meaning += meaning.empty() ? "hidden" : ", hidden";
  return meaning;
}

void PrintEntities(Html& page, const std::vector<EntityReport>& entities) {
  page.Raw("<ul>");
  for (const EntityReport& entity : entities) {
    page.Raw("<li");
    if (entity.id) page.Attribute("data-entity", *entity.id);
    page.Raw(">").Text(entity.kind);
    if (entity.label) page.Raw(" ").Text(*entity.label);
    page.Raw("</li>");
  }
  page.Raw("</ul>");
}

Text LabelOf(const AnnotationReport& annotation) {
  if (annotation.datum) return annotation.datum->label;
  return annotation.datumTarget ? annotation.datumTarget->label : Text();
}

void PrintFindingsOf(Html& page, const std::vector<Findings::Finding>& findings) {
  page.Raw("<ul class=\"findings\">");
  for (const auto& [rule, finding] : findings) {
    page.Raw("<li").Attribute("data-severity", rule->severity).Raw(">").Text(rule->severity);
    page.Raw(" ").Text(rule->id).Raw(": ").Text(finding->message).Raw("</li>");
  }
  page.Raw("</ul>");
}

void PrintRow(Html& page, const AnnotationReport& annotation, const Names& names,
              const Findings& all) {
  const std::vector<Findings::Finding>& findings = all.Of(annotation);
  page.Raw("<tr").Attribute("data-annotation", names.Of(annotation));
  if (!findings.empty()) page.Attribute("id", RowId(names.PlaceOf(&annotation)));
  page.Attribute("data-index", names.PlaceOf(&annotation)).Raw("><th scope=\"row\">");
  page.Text(annotation.name.value_or("")).Raw("</th><td>");
  PrintContent(page, annotation);
  page.Raw("</td><td>").Raw(Escape(Meaning(annotation)));
  if (!findings.empty()) PrintFindingsOf(page, findings);
  page.Raw("</td><td>");
  PrintEntities(page, annotation.entities);
  page.Raw("</td><td>").Text(annotation.id.value_or("")).Raw("</td></tr>\n");
}

}  // namespace

void PrintAnnotations(Html& page, const ModelReport& report, const Names& names) {
  std::map<const text::Kind*, std::vector<const AnnotationReport*>> byKind;
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) {
      byKind[&text::KindCalled(annotation.kind)].push_back(&annotation);
    }
  }
  const Findings findings(report);
  page.Raw("<section id=\"list\">\n<h2>Annotations</h2>\n");
  if (byKind.empty()) page.Raw("<p>There are none.</p>\n");
  for (const text::Kind& kind : text::Kinds()) {
    std::vector<const AnnotationReport*>& annotations = byKind[&kind];
    if (annotations.empty()) continue;
    // Datums and their targets by their labels, all others in the report's order.
    std::stable_sort(annotations.begin(), annotations.end(),
                     [](const AnnotationReport* a, const AnnotationReport* b) {
                       return LabelOf(*a) < LabelOf(*b);
                     });
    page.Raw("<table data-kind=\"").Raw(kind.name).Raw("\">\n<caption>").Raw(kind.heading);
    page.Raw("</caption>\n<thead><tr><th scope=\"col\">Name</th>");
    page.Raw("<th scope=\"col\">On the drawing</th><th scope=\"col\">In words</th>");
    page.Raw("<th scope=\"col\">Applies to</th><th scope=\"col\">Id</th></tr></thead>\n<tbody>\n");
    for (const AnnotationReport* annotation : annotations) {
      PrintRow(page, *annotation, names, findings);
    }
    page.Raw("</tbody>\n</table>\n");
  }
  page.Raw("</section>\n");
}

}  // namespace html

#include "writers/qif/PrintQif.h"

#include <cmath>
#include <cstdint>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

constexpr const char* kNoId = "00000000-0000-0000-0000-000000000000";

// The id of a document with this text: 128 bits of it, and the marks of an id made from a name.
std::string IdFor(const std::string& text) {
  std::string id;
  for (const std::uint64_t start : {14695981039346656037U, 1099511628211U}) {
    std::uint64_t hash = start;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    hash ^= hash >> 29U;
    for (int i = 0; i < 16; ++i, hash >>= 4U) id += "0123456789abcdef"[hash & 15U];
  }
  id[12] = '8';
  id[16] = 'a';
  for (const std::size_t dash : {8U, 13U, 18U, 23U}) id.insert(dash, "-");
  return id;
}

void WriteHeader(Xml& xml, const Plan& plan, const std::string& program) {
  xml.Attribute("xmlns", "http://qifstandards.org/xsd/qif3");
  xml.Attribute("idMax", std::to_string(plan.Last()));
  xml.Attribute("versionQIF", "3.0.0");
  xml.Leaf("QPId", kNoId);
  xml.Open("Header");
  xml.Open("Application");
  xml.Leaf("Name", program);
  xml.Close();
  xml.Close();
  // Characteristics ask for the standard that they follow, which a report does not tell.
  xml.OpenList("StandardsDefinitions", 1);
  xml.OpenWithId("Standard", plan.standard);
  xml.Open("Organization");
  xml.Leaf("OtherStandardsOrganization", "not stated");
  xml.Close();
  xml.Leaf("Designator", "not stated");
  xml.Close();
  xml.Close();
}

// Whether drawn text has a name in braces, which stands for a symbol there.
bool HasNameInBraces(const Text& text) {
  const std::string all = text.value_or("");
  for (std::size_t at = all.find('{'); at != std::string::npos; at = all.find('{', at + 1)) {
    const std::size_t end = all.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_", at + 1);
    if (end != std::string::npos && end > at + 1 && all[end] == '}') return true;
  }
  return false;
}

constexpr const char* kNoBraces = "drawn text with a name in braces: it is that of a symbol";

// What has no place in QIF whatever else an annotation has.
void ListRest(Plan& plan) {
  const auto add = [&](const Item& item, bool has, const char* what) {
    if (has) plan.omissions.Add("reduced", item, std::string("QIF has no ") + what);
  };
  const auto says = [](const Text& text) { return text.value_or("") != ""; };
  for (const Item& item : plan.items) {
    const AnnotationReport& annotation = *item.annotation;
    add(item, annotation.texts.size() > 1, "second text of an annotation");
    if (!annotation.texts.empty() && annotation.texts.front().font) {
      const FontReport& font = *annotation.texts.front().font;
      const bool isOdd = font.strikeThrough || font.overline || font.ratio != 1 || font.slant != 0;
      add(item, isOdd, "fonts that are struck through, overlined, stretched or slanted");
    }
    if (annotation.dimension) {
      const DimensionReport& dimension = *annotation.dimension;
      add(item,
          says(dimension.texts.upper) || says(dimension.texts.lower) || says(dimension.texts.below),
          "texts above and below a dimension");
      add(item, dimension.calloutType.has_value() || !dimension.callouts.empty(),
          "links from a dimension to its callouts");
      const DimensionTextsReport& texts = dimension.texts;
      const bool isThread = item.thread != 0;  // whose callout is not drawn text alone
      add(item,
          HasNameInBraces(texts.before) || HasNameInBraces(texts.after) ||
              (!isThread && HasNameInBraces(texts.holeCallout)),
          kNoBraces);
    }
    if (annotation.tolerance) {
      const ToleranceNotesReport& notes = annotation.tolerance->notes;
      add(item, says(notes.prefix) || says(notes.suffix), "prefix and suffix of a tolerance");
      add(item,
          HasNameInBraces(notes.before) || HasNameInBraces(notes.after) ||
              HasNameInBraces(notes.upper) || HasNameInBraces(notes.lower),
          kNoBraces);
    }
    const Text label = annotation.datum         ? annotation.datum->label
                       : annotation.datumTarget ? annotation.datumTarget->label
                                                : annotation.name;
    add(item, annotation.name.value_or("") != label.value_or(""), "name of a datum but its label");
    const bool hasLabel = annotation.datum || annotation.datumTarget;
    if (hasLabel && says(label) && Collapsed(*label) != *label) plan.ReduceName(item);
  }
}

}  // namespace

std::string LineFor(const SkippedReport& omission) {
  std::string line = omission.severity + ": " + omission.kind;
  if (!omission.id.empty()) line += ' ' + omission.id;
  line += ": " + omission.reason;
  if (omission.count > 1) line += " (" + std::to_string(omission.count) + " times)";
  return line;
}

QifDocument PrintQif(const ModelReport& report, const std::string& program) {
  Omissions omissions;
  const Units units(report);
  Plan plan(report, units, omissions);
  if (!units.KnowsSize()) {
    omissions.Add("reduced", "unit", "", "the size of its unit of length is not known");
  }
  ListRest(plan);
  Xml xml;
  xml.Open("QIFDocument");
  WriteHeader(xml, plan, program);
  units.Write(xml);
  for (const auto write : {WriteDatums, WriteDatumTargets, WriteFrames, WriteThreads, WriteProduct,
                           WriteFeatures, WriteZones, WriteCharacteristics}) {
    write(xml, plan);
  }
  xml.Close();
  if (!omissions.Items().empty()) {
    std::string list = "\n  What is not in this document:\n";
    for (const SkippedReport& omission : omissions.Items()) {
      list += "  " + LineFor(omission) + '\n';
    }
    xml.Comment(list);
  }
  QifDocument document{xml.Finish(), omissions.Take()};
  const std::size_t id = document.text.find(kNoId);
  document.text.replace(id, std::string(kNoId).size(), IdFor(document.text));
  return document;
}

}  // namespace qif_writer

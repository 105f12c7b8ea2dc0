// Datums, datum targets, and what refers to them.

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "checks/Rule.h"

namespace checks {

namespace {

std::string IdOf(const AnnotationReport& annotation) { return annotation.id.value_or("no id"); }

// Calls work with each tolerance, its row, and a compartment of the row's frame.
template <typename Work>
void ForReferences(const Index& index, Work work) {
  for (const AnnotationReport* tolerance : index.OfKind("geometricTolerance")) {
    for (const RowReport& row : tolerance->tolerance->rows) {
      if (!row.frame) continue;
      for (const ReferenceReport& reference : row.frame->references) work(*tolerance, reference);
    }
  }
}

// The letters that a label begins with: "A" of "A1" or "A[PL]". A character beyond ASCII counts as
// one.
std::string LettersOf(const std::string& label) {
  const auto end = std::find_if(label.begin(), label.end(),
                                [](char c) { return c >= 0 && std::isalpha(c) == 0; });
  return {label.begin(), end};
}

// A datum's letters, with the component that it is of.
using Label = std::pair<std::string, std::string>;

Label LabelOf(const AnnotationReport& target) {
  return {ComponentOf(target.id), LettersOf(target.datumTarget->label.value_or(""))};
}

// The letters of a common datum: "A" and "B" of "A-B".
std::vector<std::string> LettersIn(const std::string& label) {
  std::vector<std::string> letters;
  for (std::size_t at = 0; at != std::string::npos;) {
    const std::size_t end = label.find('-', at);
    letters.push_back(LettersOf(label.substr(at, end - at)));
    at = end == std::string::npos ? end : end + 1;
  }
  return letters;
}

void DefinedTwice(const Index& index, Findings& findings) {
  if (!index.IsOnePart()) return;
  for (const AnnotationReport* datum : index.OfKind("datum")) {
    const std::string label = datum->datum->label.value_or("");
    const Index::Annotations& all = index.Datums(datum->id, label);
    if (all.size() < 2 || all.front() != datum) continue;
    std::vector<std::string> ids;
    for (const AnnotationReport* each : all) ids.push_back(IdOf(*each));
    findings.Add(*datum, label + " is the label of " + std::to_string(all.size()) +
                             " datums: ids " + Listed(ids, ids.size()));
  }
}

void NotDefined(const Index& index, Findings& findings) {
  std::set<Label> byTargets;
  for (const AnnotationReport* target : index.OfKind("datumTarget")) {
    byTargets.insert(LabelOf(*target));
  }
  std::set<std::pair<const AnnotationReport*, std::string>> told;
  const auto require = [&](const AnnotationReport& tolerance, const std::string& label) {
    if (label.empty() || !index.Datums(tolerance.id, label).empty()) return;
    for (const std::string& letters : LettersIn(label)) {
      if (letters.empty() || !index.Datums(tolerance.id, letters).empty()) continue;
      if (byTargets.count({ComponentOf(tolerance.id), letters}) != 0) continue;
      if (!told.emplace(&tolerance, letters).second) continue;
      findings.Add(tolerance, "refers to datum " + letters + ", which nothing defines");
    }
  };
  ForReferences(index, [&](const AnnotationReport& tolerance, const ReferenceReport& reference) {
    if (!index.IsWhole(tolerance.id)) return;
    if (reference.datums.empty()) require(tolerance, reference.label.value_or(""));
    for (const FrameDatumReport& datum : reference.datums) {
      const AnnotationReport* const defined = index.Find(datum.id);
      if (defined == nullptr || !defined->datum) require(tolerance, datum.label.value_or(""));
    }
  });
}

void OnNothing(const Index& index, Findings& findings) {
  for (const AnnotationReport* datum : index.OfKind("datum")) {
    if (!datum->entities.empty() || !datum->datum->targets.empty()) continue;
    if (!index.IsWhole(datum->id)) continue;
    findings.Add(*datum, datum->datum->label.value_or("the datum") + " is on no geometry");
  }
}

// A datum may stand in several compartments when each takes another part of it.
bool IsWholeDatum(const FrameDatumReport& datum) {
  return std::all_of(datum.modifiers.begin(), datum.modifiers.end(), IsMaterialCondition);
}

void TwiceInFrame(const Index& index, Findings& findings) {
  for (const AnnotationReport* tolerance : index.OfKind("geometricTolerance")) {
    std::set<std::string> twice;
    for (const RowReport& row : tolerance->tolerance->rows) {
      if (!row.frame) continue;
      std::map<std::string, Text> seen;  // labels, with the datums' ids
      for (const ReferenceReport& reference : row.frame->references) {
        if (reference.datums.size() != 1 || !IsWholeDatum(reference.datums[0])) continue;
        const FrameDatumReport& datum = reference.datums[0];
        if (datum.label.value_or("").empty()) continue;
        const auto [first, isNew] = seen.emplace(*datum.label, datum.id);
        // Two datums of one label are another rule's.
        if (!isNew && first->second == datum.id) twice.insert(*datum.label);
      }
    }
    for (const std::string& label : twice) {
      findings.Add(*tolerance, "refers to datum " + label + " in two compartments of a row");
    }
  }
}

// Calls work with what may be a datum in a text that has a frame in it, "|A|B|", or tells of
// datums: each of its words.
template <typename Work>
void ForNamedDatums(const std::string& text, Work work) {
  for (const char* mark : {"|", "atum", "ATUM"}) {
    if (text.find(mark) == std::string::npos) continue;
    std::string word;
    for (const char c : text + " ") {
      if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
        word += c;
        continue;
      }
      work(word);
      word.clear();
    }
    return;
  }
}

void NotUsed(const Index& index, Findings& findings) {
  // What was lost may refer to any datum.
  if (!index.LostNothing()) return;
  std::set<Label> labels;
  std::set<const AnnotationReport*> used;
  ForReferences(index, [&](const AnnotationReport& tolerance, const ReferenceReport& reference) {
    const std::string component = ComponentOf(tolerance.id);
    labels.emplace(component, reference.label.value_or(""));
    for (std::string& letters : LettersIn(reference.label.value_or(""))) {
      labels.emplace(component, std::move(letters));
    }
    for (const FrameDatumReport& datum : reference.datums) {
      used.insert(index.Find(datum.id));
      labels.emplace(component, datum.label.value_or(""));
    }
  });
  for (const AnnotationReport* annotation : index.All()) {
    const std::string component = ComponentOf(annotation->id);
    for (const TextReport& text : annotation->texts) {
      ForNamedDatums(text.string.value_or(""),
                     [&](const std::string& word) { labels.emplace(component, word); });
    }
  }
  for (const AnnotationReport* datum : index.OfKind("datum")) {
    const std::string label = datum->datum->label.value_or("");
    if (used.count(datum) != 0 || labels.count({ComponentOf(datum->id), label}) != 0) continue;
    findings.Add(*datum, "no tolerance refers to " + (label.empty() ? "it" : label));
  }
}

// The targets of a datum by their numbers; 0 where a label has none.
using Numbered = std::multimap<long, const AnnotationReport*>;

void CheckNumbers(const std::string& letters, const Numbered& targets, bool isWhole,
                  Findings& findings) {
  if (targets.count(0) != 0) return;
  std::vector<std::string> missing;  // the first of them
  long count = 0;
  long next = 1;
  for (const auto& [number, target] : targets) {
    if (number < next) {
      findings.Add(*target, "a second target is numbered " + letters + std::to_string(number));
    }
    // A gap may be wide.
    count += std::max(number - next, 0L);
    for (; next < number && missing.size() < kMostListed; ++next) {
      missing.push_back(letters + std::to_string(next));
    }
    next = number + 1;
  }
  if (missing.empty() || !isWhole) return;
  const AnnotationReport& last = *targets.rbegin()->second;
  findings.Add(last, "the targets of " + letters + " go up to " + letters +
                         std::to_string(targets.rbegin()->first) + " without " +
                         Listed(missing, static_cast<std::size_t>(count)));
}

void BadTargets(const Index& index, Findings& findings) {
  std::map<Label, Numbered> datums;
  for (const AnnotationReport* target : index.OfKind("datumTarget")) {
    const std::string label = target->datumTarget->label.value_or("");
    const Label letters = LabelOf(*target);
    const std::string digits = label.substr(letters.second.size());
    const bool isNumber = !digits.empty() && digits.size() < 10 &&
                          digits.find_first_not_of("0123456789") == std::string::npos;
    datums[letters].emplace(isNumber ? std::stol(digits) : 0, target);
    const bool isPlaced = target->datumTarget->point1 || target->datumTarget->point2;
    if (target->entities.empty() && !isPlaced && index.IsWhole(target->id)) {
      findings.Add(*target, label + " is on no geometry and has no place");
    }
  }
  if (!index.IsOnePart()) return;
  for (const auto& [key, targets] : datums) {
    CheckNumbers(key.second, targets, index.LostNothing(), findings);
  }
}

}  // namespace

std::vector<Rule> DatumRules() {
  return {
      {"D1", "error", "a datum label that two datums define",
       "ASME Y14.5-2018, section 7; ISO 5459", "give each datum a letter of its own",
       "two datums A, on one face each", "datums A and B; a datum A in each of two components",
       DefinedTwice},
      {"D2", "error", "a frame refers to a label that no datum defines",
       "ASME Y14.5-2018, section 7; ISO 5459", "define the datum, or mend the label in the frame",
       "perpendicularity to Q in a model without a datum Q",
       "perpendicularity to A-B with datums A and B", NotDefined},
      {"D3", "error", "a datum on no geometry and without targets",
       "ASME Y14.5-2018, section 7; ISO 5459",
       "attach the datum to its feature, or give it targets", "datum A on nothing",
       "datum A on nothing but its targets A1, A2 and A3", OnNothing},
      {"D4", "error", "a label twice in one frame", "ASME Y14.5-2018, section 7; ISO 5459",
       "name each datum once, in the order of precedence", "position to A, B, A",
       "position to A, B-C; the common datum A-A of a pattern", TwiceInFrame},
      {"D5", "note", "a datum that nothing refers to", "ASME Y14.5-2018, section 7; ISO 5459",
       "remove the datum, or refer to it where it is meant", "datum C, and frames of A and B only",
       "datum C that one frame refers to as A-C; datum C in the note \"PROFILE 1 |A|B|C| ALL "
       "OVER\"",
       NotUsed},
      {"D6", "warning", "datum targets numbered with gaps or twice, or a target on no geometry",
       "ASME Y14.5-2018, section 7; ISO 5459",
       "number the targets of a datum from 1 on, and give each its point, line or area",
       "targets A1, A3; targets A1, A1", "targets A1, A2, A3, the third by its coordinates alone",
       BadTargets},
  };
}

}  // namespace checks

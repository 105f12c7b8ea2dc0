#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "report/Report.h"

namespace checks {

// What the rules look up in a report, found once. REQUIRES: the report outlives it.
class Index {
 public:
  using Annotations = std::vector<const AnnotationReport*>;

  explicit Index(const ModelReport& report);

  const ModelReport& Report() const { return report_; }

  // In the report's order. The kind is a key of the report's totals.
  const Annotations& OfKind(const std::string& kind) const;
  const Annotations& All() const { return all_; }
  // Null when there is none.
  const AnnotationReport* Find(const Text& id) const;
  // The plane that an annotation is written in; null when it has none.
  const ViewFrameReport* PlaneOf(const AnnotationReport& annotation) const;

  // The datums of a label, in the report's order; empty for none. Labels count within a component:
  // the id of an annotation tells which one it is of.
  const Annotations& Datums(const Text& of, const std::string& label) const;

  // Whether everything is there that the model states of the annotation or capture of that id, so
  // that what is absent is not stated. False for all while the reader lost something and does not
  // say of which annotation.
  bool IsWhole(const Text& id) const;
  // Whether a label can mean one datum alone: not where the document has several parts that the
  // report does not tell apart.
  bool IsOnePart() const { return components_ < 2; }
  bool LostNothing() const { return lost_.empty() && !lostElsewhere_; }
  // Whether the reader left out a part of the annotation and says so with this word, in the part's
  // name or in the reason.
  bool IsReduced(const Text& id, std::string_view word) const;

 private:
  const ModelReport& report_;
  Annotations all_;
  std::unordered_map<std::string, Annotations> byKind_;
  std::unordered_map<std::string, const AnnotationReport*> byId_;
  std::unordered_map<const AnnotationReport*, const ViewFrameReport*> planes_;
  std::unordered_map<std::string, Annotations> datums_;
  std::unordered_set<std::string> lost_;  // ids
  std::unordered_multimap<std::string, const SkippedReport*> reduced_;
  bool lostElsewhere_ = false;
  long components_ = 0;  // that the reader joined into one part
};

// The component of an assembly that an annotation is of: what its id begins with, up to the last
// slash. Empty where there are no components.
std::string ComponentOf(const Text& id);

bool HasDatums(const RowReport& row);
bool HasModifier(const std::vector<ModifierReport>& modifiers, std::string_view type);
// Maximum or least material condition, with or without reciprocity.
bool IsMaterialCondition(const ModifierReport& modifier);

}  // namespace checks

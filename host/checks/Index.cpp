#include "checks/Index.h"

#include <algorithm>

namespace checks {

namespace {

const Index::Annotations kNone;

template <typename Map>
const Index::Annotations& In(const Map& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? kNone : found->second;
}

}  // namespace

Index::Index(const ModelReport& report) : report_(report) {
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) {
      all_.push_back(&annotation);
      byKind_[annotation.kind].push_back(&annotation);
      if (view.frame) planes_.emplace(&annotation, &*view.frame);
      if (annotation.id) byId_.emplace(*annotation.id, &annotation);
      if (!annotation.datum || annotation.datum->label.value_or("").empty()) continue;
      datums_[ComponentOf(annotation.id) + "/" + *annotation.datum->label].push_back(&annotation);
    }
  }
  std::unordered_set<std::string> captures;
  for (const CaptureReport& capture : report.captures) captures.insert(capture.id.value_or(""));
  for (const SkippedReport& skipped : report.source.skipped) {
    if (skipped.kind == "Component") components_ += skipped.count;
    const bool isLost = skipped.severity == "lost";
    const std::string& id = skipped.annotation.empty() ? skipped.id : skipped.annotation;
    if (isLost && skipped.annotation.empty() && Find(id) == nullptr && captures.count(id) == 0) {
      lostElsewhere_ = true;
    } else if (isLost) {
      lost_.insert(id);
    } else {
      reduced_.emplace(id, &skipped);
    }
  }
}

const Index::Annotations& Index::OfKind(const std::string& kind) const { return In(byKind_, kind); }

const AnnotationReport* Index::Find(const Text& id) const {
  const auto found = id ? byId_.find(*id) : byId_.end();
  return found == byId_.end() ? nullptr : found->second;
}

const ViewFrameReport* Index::PlaneOf(const AnnotationReport& annotation) const {
  const auto found = planes_.find(&annotation);
  return found == planes_.end() ? nullptr : found->second;
}

const Index::Annotations& Index::Datums(const Text& of, const std::string& label) const {
  return In(datums_, ComponentOf(of) + "/" + label);
}

bool Index::IsWhole(const Text& id) const {
  return !lostElsewhere_ && (id ? lost_.count(*id) == 0 : lost_.empty());
}

bool Index::IsReduced(const Text& id, std::string_view word) const {
  if (!id) return false;
  const auto [first, last] = reduced_.equal_range(*id);
  return std::any_of(first, last, [&](const auto& entry) {
    const SkippedReport& skipped = *entry.second;
    return skipped.kind.find(word) != std::string::npos ||
           skipped.reason.find(word) != std::string::npos;
  });
}

std::string ComponentOf(const Text& id) {
  const std::size_t end = id ? id->rfind('/') : std::string::npos;
  return end == std::string::npos ? "" : id->substr(0, end);
}

bool HasDatums(const RowReport& row) {
  return row.frame && (!row.frame->references.empty() || !row.frame->note.value_or("").empty());
}

bool HasModifier(const std::vector<ModifierReport>& modifiers, std::string_view type) {
  return std::any_of(modifiers.begin(), modifiers.end(), [&](const ModifierReport& modifier) {
    return modifier.type.has_value() && *modifier.type == type;
  });
}

bool IsMaterialCondition(const ModifierReport& modifier) {
  return modifier.type == "maximumMaterial" || modifier.type == "leastMaterial" ||
         modifier.type == "maximumMaterialReciprocity" ||
         modifier.type == "leastMaterialReciprocity";
}

}  // namespace checks

#include "report/Select.h"

#include <algorithm>
#include <set>

namespace {

template <typename List, typename Value>
bool Holds(const List& list, const Value& value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

template <typename List, typename Condition>
void RemoveIf(List& list, Condition condition) {
  list.erase(std::remove_if(list.begin(), list.end(), condition), list.end());
}

bool IsCalled(const CaptureReport& capture, const std::string& nameOrId) {
  return capture.name == nameOrId || capture.id == nameOrId;
}

}  // namespace

std::vector<std::string> Select(const Selection& selection, ModelReport& report) {
  std::vector<std::string> missing;
  for (const std::string& wanted : selection.captures) {
    if (std::none_of(report.captures.begin(), report.captures.end(),
                     [&](const CaptureReport& capture) { return IsCalled(capture, wanted); })) {
      missing.push_back(wanted);
    }
  }
  if (!missing.empty() || IsAll(selection)) return missing;

  std::set<Text> shown;
  if (!selection.captures.empty()) {
    RemoveIf(report.captures, [&](const CaptureReport& capture) {
      return std::none_of(selection.captures.begin(), selection.captures.end(),
                          [&](const std::string& wanted) { return IsCalled(capture, wanted); });
    });
    for (const CaptureReport& capture : report.captures) {
      for (const MemberReport& member : capture.members) {
        if (member.id) shown.insert(member.id);
      }
    }
  }
  std::set<Text> left;
  for (ViewReport& view : report.views) {
    RemoveIf(view.annotations, [&](const AnnotationReport& annotation) {
      return (!selection.kinds.empty() && !Holds(selection.kinds, annotation.kind)) ||
             (!selection.captures.empty() && shown.count(annotation.id) == 0);
    });
    for (const AnnotationReport& annotation : view.annotations) {
      if (annotation.id) left.insert(annotation.id);
    }
  }
  RemoveIf(report.views, [](const ViewReport& view) { return view.annotations.empty(); });
  for (AppliedEntityReport& entity : report.entities) {
    RemoveIf(entity.annotations, [&](const Text& id) { return left.count(id) == 0; });
  }
  RemoveIf(report.entities,
           [](const AppliedEntityReport& entity) { return entity.annotations.empty(); });
  if (!selection.kinds.empty() && !Holds(selection.kinds, "captures")) {
    report.captures.clear();
  }
  return missing;
}

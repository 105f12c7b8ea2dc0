#include "writers/html/Names.h"

#include <unordered_set>

namespace html {

namespace {

// Gives out names: ids first, places after them.
class Giver {
 public:
  void Know(const Text& id) {
    if (id) ids_.insert(*id);
  }
  std::string Give(const Text& id, const std::string& place) {
    if (id && given_.insert(*id).second) return *id;
    std::string name = place;
    while (ids_.count(name) != 0) name += '\'';
    return name;
  }

 private:
  std::unordered_set<std::string> ids_, given_;
};

}  // namespace

Names::Names(const ModelReport& report) {
  Giver annotations;
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) annotations.Know(annotation.id);
  }
  for (std::size_t v = 0; v < report.views.size(); ++v) {
    const std::vector<AnnotationReport>& list = report.views[v].annotations;
    for (std::size_t a = 0; a < list.size(); ++a) {
      const std::string place = std::to_string(v) + ":" + std::to_string(a);
      items_[&list[a]] = {annotations.Give(list[a].id, place), place};
    }
  }
  Giver captures;
  for (const CaptureReport& capture : report.captures) captures.Know(capture.id);
  for (std::size_t i = 0; i < report.captures.size(); ++i) {
    const std::string place = std::to_string(i);
    items_[&report.captures[i]] = {captures.Give(report.captures[i].id, place), place};
  }
}

const std::string& Names::Of(const AnnotationReport& annotation) const {
  return items_.at(&annotation).name;
}

const std::string& Names::Of(const CaptureReport& capture) const {
  return items_.at(&capture).name;
}

}  // namespace html

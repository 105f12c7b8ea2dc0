#pragma once

#include <string>
#include <unordered_map>

#include "report/Report.h"

namespace html {

// What the page calls its annotations and captures: by their ids, as the report has them. Of those
// that have none, or one that was given out already, by their places in the report, "2:0" being the
// first annotation of the third view; names of either kind are unique.
class Names {
 public:
  explicit Names(const ModelReport& report);

  const std::string& Of(const AnnotationReport& annotation) const;
  const std::string& Of(const CaptureReport& capture) const;
  // Where it stands in the report, such as "2:0" or, of a capture, "1".
  const std::string& PlaceOf(const void* item) const { return items_.at(item).place; }

 private:
  struct Item {
    std::string name, place;
  };
  std::unordered_map<const void*, Item> items_;  // by the report's AnnotationReport, CaptureReport
};

}  // namespace html

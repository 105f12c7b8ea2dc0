#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "report/Report.h"

namespace html {

// What the rules found, by what it is about.
class Findings {
 public:
  // REQUIRES: the report outlives this.
  explicit Findings(const ModelReport& report);

  struct Finding {
    const RuleReport* rule;
    const FindingReport* finding;
  };
  // Those of an annotation; none where no rules were applied.
  const std::vector<Finding>& Of(const AnnotationReport& annotation) const;

 private:
  std::unordered_map<std::string, std::vector<Finding>> byId_;
};

// The id of an annotation's row, where findings lead to.
std::string RowId(const std::string& place);

}  // namespace html

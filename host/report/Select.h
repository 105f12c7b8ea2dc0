#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

// Which part of a report is wanted. An empty list wants all.
struct Selection {
  std::vector<std::string> kinds;     // as in `totals`, "captures" among them
  std::vector<std::string> captures;  // names or ids
};

inline bool IsAll(const Selection& selection) {
  return selection.kinds.empty() && selection.captures.empty();
}

// Removes everything else: annotations, views without annotations, captures, and entities without
// annotations. Totals and source stay those of the whole model. Returns the wanted captures that
// the model does not have; when there are any, the report is untouched.
std::vector<std::string> Select(const Selection& selection, ModelReport& report);

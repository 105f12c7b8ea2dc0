#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

// Which part of a report is wanted. An empty list wants all.
struct Selection {
  std::vector<std::string> kinds;     // as in `totals`, "captures" among them
  std::vector<std::string> captures;  // names or ids
};

// Takes out what is not wanted: annotations, views that hold none any more, captures, and entities
// of which no annotation is left. What tells of the whole model stays: totals and source. Gives the
// captures asked for that the model does not have; the report is untouched when there are any.
std::vector<std::string> Select(const Selection& selection, ModelReport& report);

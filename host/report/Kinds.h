#pragma once

#include <string>
#include <vector>

// What people call the kinds of annotations, in the order in which they are printed.

namespace text {

struct Kind {
  const char* name;  // as in a report's `totals`
  const char* one;
  const char* many;
  const char* heading;
};

const std::vector<Kind>& Kinds();

// The kind of that name; for any other name the kind "unknown".
const Kind& KindCalled(const std::string& name);

}  // namespace text

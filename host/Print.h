#pragma once

#include <string>

#include "Report.h"

// A report for people: a tree of views and their annotations, captures, totals, what was skipped.
// UTF-8.
std::string PrintText(const ModelReport& report);

// A report for programs: JSON in UTF-8, the same values. What the plug-in did not give is null.
// `indent` as nlohmann::json takes it: negative for one line.
std::string PrintJson(const ModelReport& report, int indent);

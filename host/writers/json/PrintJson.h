#pragma once

#include <string>

#include "report/Report.h"

// A report for programs: JSON in UTF-8, the same values. What the plug-in did not give is null.
// `indent` as nlohmann::json takes it: negative for one line.
std::string PrintJson(const ModelReport& report, int indent);

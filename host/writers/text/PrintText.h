#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

// A report for people. UTF-8; nothing of a document's control characters comes through.

namespace text {

enum class By { kKind, kView, kFace, kCapture };

struct Style {
  By by = By::kKind;     // what the annotations are grouped by
  bool verbose = false;  // everything that the report holds, and no list cut
  bool colour = false;   // with a terminal's escape sequences
};

// The head line, the annotations in groups, the captures, and the account of what was left out.
std::string PrintText(const ModelReport& report, const Style& style = {});

// The head line alone: what the model is, how much it holds and what was left out.
std::string PrintSummary(const ModelReport& report);

// One line on what was lost, with how much and the first of it; with `strict` on what was reduced,
// too. Empty when there is nothing.
std::string LossLine(const ModelReport& report, bool strict);

// How many entries of a severity there are.
long CountSkipped(const SourceReport& source, const std::string& severity);

// The names of all kinds, as a report's `totals` has them.
std::vector<std::string> KindNames();

}  // namespace text

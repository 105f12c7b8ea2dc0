#pragma once

#include <string>
#include <vector>

#include "report/Report.h"
#include "report/Select.h"

// A report for people. UTF-8; nothing of a document's control characters comes through.

namespace text {

enum class By { kKind, kView, kFace, kCapture };

struct Style {
  By by = By::kKind;         // what the annotations are grouped by
  bool verbose = false;      // everything that the report holds, and no list cut
  bool colour = false;       // with a terminal's escape sequences
  Selection selection = {};  // what was selected from the report before it is printed
};

// The head line, the annotations in groups, the captures, and the account of what was left out.
// When annotations were selected, entries about the others that were reduced are counted, not
// listed.
std::string PrintText(const ModelReport& report, const Style& style = {});

// The head line alone: what the model is, how much it holds and what was left out.
std::string PrintSummary(const ModelReport& report);

// One line that says that PMI was lost, how many entries of the account tell of it, and the first
// of them; with `strict` also for what was reduced. Empty when there is nothing. REQUIRES: nothing
// was selected from the report, which has the names.
std::string LossLine(const ModelReport& report, bool strict);

// One line that says how many errors the checks found, and names the first. Empty for none, or when
// the report was not checked.
std::string ErrorLine(const ModelReport& report);

// How many entries of a severity there are.
long CountSkipped(const SourceReport& source, const std::string& severity);

// The names of all kinds, as a report's `totals` has them.
std::vector<std::string> KindNames();

}  // namespace text

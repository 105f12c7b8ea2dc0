#pragma once

#include <string>
#include <vector>

#include "report/Report.h"
#include "writers/text/Page.h"

namespace text {

// What a model is and holds, in one line: file, format, units, annotations by kind, what was lost,
// reduced and ignored, what the checks found.
std::string Head(const ModelReport& report);

// The account of what was lost, reduced and ignored, the lost first; entries of equal kind and
// reason stand on one line. `verbose` cuts no list and tells what was ignored. When the report
// holds a selection, only the entries of its annotations and captures are listed under what was
// reduced, and the others are counted.
void PrintAccount(Page& page, const ModelReport& report, bool verbose, bool isSelection);

}  // namespace text

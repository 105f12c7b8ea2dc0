#pragma once

#include <string>

#include "report/Report.h"
#include "writers/text/Page.h"

namespace text {

// How many findings there are, such as "1 error, 2 warnings"; "nothing found" for none. REQUIRES:
// the report was checked.
std::string CountFindings(const ChecksReport& checks);

// How many findings are of a severity.
long CountFindings(const ChecksReport& checks, const std::string& severity);

// The findings rule by rule, errors first, with what to do about them. `verbose` cuts no list.
// Nothing for a report that was not checked.
void PrintChecks(Page& page, const ModelReport& report, bool verbose);

}  // namespace text

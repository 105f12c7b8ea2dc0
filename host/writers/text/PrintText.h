#pragma once

#include <string>

#include "report/Report.h"

// A report for people: a tree of views and their annotations, captures, totals, what was skipped.
// UTF-8.
std::string PrintText(const ModelReport& report);

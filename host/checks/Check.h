#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

// Rules over a report: whether the PMI of a model is complete and means something. They know what
// the plug-in answered and nothing of where the model came from; where a report can't tell, a rule
// is silent.
//
//   checks::Choice choice;
//   choice.severity = "warning";
//   report.checks = checks::Check(report, choice);

namespace checks {

// Which rules are applied.
struct Choice {
  std::vector<std::string> only;    // ids; empty for all
  std::vector<std::string> ignore;  // ids; wins over `only`
  std::string severity = "note";    // the lowest: "note", "warning" or "error"
};

// Applies the rules in time proportional to the report. REQUIRES: nothing was selected from it.
ChecksReport Check(const ModelReport& report, const Choice& choice = {});

// The ids of all rules.
std::vector<std::string> RuleIds();

// The severities, the lowest first.
std::vector<std::string> Severities();

// All rules as a document in Markdown, docs/checks.md.
std::string DescribeRules();

}  // namespace checks

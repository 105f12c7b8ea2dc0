#include "writers/text/Checks.h"

#include <algorithm>

#include "report/Clean.h"
#include "writers/text/PrintText.h"

namespace text {

namespace {

constexpr std::size_t kFindingsShown = 20;
constexpr std::size_t kMessageWidth = 200;

const struct {
  const char *name, *many;
  Ink ink;
} kSeverities[] = {{"error", "errors", Ink::kRed},
                   {"warning", "warnings", Ink::kYellow},
                   {"note", "notes", Ink::kBold}};

std::string Sentence(const FindingReport& finding, bool verbose) {
  std::string text = finding.name ? Quoted(*finding.name, verbose) : "";
  if (finding.annotation) {
    text += (text.empty() ? "" : " ") + ("id " + Cut(OneLine(*finding.annotation), kMessageWidth));
  }
  const std::string message =
      verbose ? finding.message : Cut(OneLine(finding.message), kMessageWidth);
  return text + (text.empty() ? "" : ": ") + message;
}

}  // namespace

long CountFindings(const ChecksReport& checks, const std::string& severity) {
  return std::count_if(checks.findings.begin(), checks.findings.end(), [&](const auto& finding) {
    return checks.rules[finding.rule].severity == severity;
  });
}

std::string CountFindings(const ChecksReport& checks) {
  std::vector<std::string> counts;
  for (const auto& [name, many, ink] : kSeverities) {
    const long count = CountFindings(checks, name);
    if (count != 0) counts.push_back(Count(count, name, many));
  }
  return counts.empty() ? "nothing found" : Some(counts, counts.size());
}

void PrintChecks(Page& page, const ModelReport& report, bool verbose) {
  if (!report.checks) return;
  const ChecksReport& checks = *report.checks;
  const auto rules = static_cast<long>(checks.rules.size());
  page.Heading("Checked by " + Count(rules, "rule", "rules") + ": " + CountFindings(checks));
  std::vector<std::vector<const FindingReport*>> byRule(checks.rules.size());
  for (const FindingReport& finding : checks.findings) byRule[finding.rule].push_back(&finding);
  for (const auto& [severity, many, ink] : kSeverities) {
    for (std::size_t i = 0; i < byRule.size(); ++i) {
      const RuleReport& rule = checks.rules[i];
      if (rule.severity != severity || byRule[i].empty()) continue;
      std::vector<Piece> head{{rule.severity + " " + rule.id, ink}, {rule.title, Ink::kBold}};
      if (!rule.standard.empty()) head.push_back({rule.standard, Ink::kFaint});
      page.Flow(1, head);
      page.Line(2, {"to do: " + rule.advice});
      const std::size_t shown = verbose ? byRule[i].size() : kFindingsShown;
      for (std::size_t f = 0; f < std::min(shown, byRule[i].size()); ++f) {
        page.Line(2, {Sentence(*byRule[i][f], verbose)});
      }
      if (shown < byRule[i].size()) {
        page.Line(2, {"and " + std::to_string(byRule[i].size() - shown) + " more"});
      }
    }
  }
}

std::string ErrorLine(const ModelReport& report) {
  const long errors = report.checks ? CountFindings(*report.checks, "error") : 0;
  if (errors == 0) return "";
  const auto first = std::find_if(
      report.checks->findings.begin(), report.checks->findings.end(),
      [&](const auto& each) { return report.checks->rules[each.rule].severity == "error"; });
  return Count(errors, "error", "errors") + " found" + (errors > 1 ? ", the first: " : ": ") +
         report.checks->rules[first->rule].id + " " + OneLine(Sentence(*first, false));
}

}  // namespace text

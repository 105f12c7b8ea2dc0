#include "checks/Check.h"

#include <algorithm>
#include <cstdio>

#include "checks/Rule.h"

namespace checks {

namespace {

const std::vector<Rule>& AllRules() {
  static const std::vector<Rule> all = [] {
    std::vector<Rule> rules;
    for (const auto& part :
         {DatumRules(), ToleranceRules(), ValueRules(), ViewRules(), ReportRules()}) {
      rules.insert(rules.end(), part.begin(), part.end());
    }
    return rules;
  }();
  return all;
}

bool Holds(const std::vector<std::string>& list, const std::string& value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

std::ptrdiff_t Rank(const std::string& severity) {
  const std::vector<std::string> all = Severities();
  return std::find(all.begin(), all.end(), severity) - all.begin();
}

bool IsChosen(const Rule& rule, const Choice& choice) {
  return (choice.only.empty() || Holds(choice.only, rule.id)) && !Holds(choice.ignore, rule.id) &&
         Rank(rule.severity) >= Rank(choice.severity);
}

}  // namespace

ChecksReport Check(const ModelReport& report, const Choice& choice) {
  const Index index(report);
  ChecksReport checks;
  Findings findings;
  for (const Rule& rule : AllRules()) {
    if (!IsChosen(rule, choice)) continue;
    findings.Begin(checks.rules.size());
    checks.rules.push_back({rule.id, rule.severity, rule.title, rule.standard, rule.advice});
    rule.check(index, findings);
  }
  checks.findings = findings.Take();
  return checks;
}

std::vector<std::string> RuleIds() {
  std::vector<std::string> ids;
  for (const Rule& rule : AllRules()) ids.emplace_back(rule.id);
  return ids;
}

std::vector<std::string> Severities() { return {"note", "warning", "error"}; }

std::string DescribeRules() {
  std::string text =
      "# Rules\n\n"
      "What `pmi_report --check` looks for, as `pmi_report --rules` prints it.\n\n"
      "| id | severity | finding | standard |\n|---|---|---|---|\n";
  for (const Rule& rule : AllRules()) {
    text += std::string("| ") + rule.id + " | " + rule.severity + " | " + rule.title + " | " +
            rule.standard + " |\n";
  }
  for (const Rule& rule : AllRules()) {
    text += std::string("\n## ") + rule.id + ": " + rule.title + "\n\n- Do: " + rule.advice +
            ".\n- Fails: " + rule.fails + ".\n- Passes: " + rule.passes + ".\n";
  }
  return text;
}

std::string Drawn(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", number);
  return text;
}

std::string Listed(const std::vector<std::string>& items, std::size_t count) {
  std::string list;
  for (std::size_t i = 0; i < std::min(items.size(), kMostListed); ++i) {
    list += (i == 0 ? "" : ", ") + items[i];
  }
  if (count > kMostListed) list += " and " + std::to_string(count - kMostListed) + " more";
  return list;
}

}  // namespace checks

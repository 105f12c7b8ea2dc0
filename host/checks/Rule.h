#pragma once

#include <string>
#include <vector>

#include "checks/Index.h"
#include "report/Report.h"

namespace checks {

// Collects the findings of one rule after another.
class Findings {
 public:
  // The findings that follow are of this rule.
  void Begin(std::size_t rule) { rule_ = rule; }
  // The annotation or capture that breaks the rule; what it states that does.
  template <typename Object>
  void Add(const Object& object, std::string message) {
    Add(object.id, object.name, std::move(message));
  }
  void Add(const Text& id, const Text& name, std::string message) {
    all_.push_back({rule_, id, name, std::move(message)});
  }
  std::vector<FindingReport> Take() { return std::move(all_); }

 private:
  std::size_t rule_ = 0;
  std::vector<FindingReport> all_;
};

// One rule: all that there is to say of it.
struct Rule {
  const char *id, *severity;
  const char* title;           // the finding, in one line
  const char* standard;        // where it comes from; empty where no standard says so
  const char* advice;          // what to do about a finding
  const char *fails, *passes;  // an example each
  void (*check)(const Index&, Findings&);
};

// The rules by subject. A rule is a row of one of these tables.
std::vector<Rule> DatumRules();
std::vector<Rule> ToleranceRules();
std::vector<Rule> ValueRules();
std::vector<Rule> ViewRules();
std::vector<Rule> ReportRules();

// Such as "0.15", in as few digits as tell the number.
std::string Drawn(double number);

// The first of a list of so many, such as "A, B", and how many more there are.
// REQUIRES: items are all of them, or the first kMostListed.
inline constexpr std::size_t kMostListed = 5;
std::string Listed(const std::vector<std::string>& items, std::size_t count);

}  // namespace checks

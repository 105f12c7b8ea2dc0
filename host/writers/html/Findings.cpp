#include "writers/html/Findings.h"

#include <array>

#include "writers/html/Sections.h"

namespace html {

namespace {

constexpr std::array<const char*, 3> kSeverities{"error", "warning", "note"};

// "2 warnings"
std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

class FindingsPrinter {
 public:
  FindingsPrinter(Html& page, const ModelReport& report, const Names& names)
      : page_(page), checks_(*report.checks) {
    for (const ViewReport& view : report.views) {
      for (const AnnotationReport& annotation : view.annotations) {
        if (annotation.id) annotations_.emplace(*annotation.id, names.PlaceOf(&annotation));
      }
    }
    for (const CaptureReport& capture : report.captures) {
      if (capture.id) captures_.emplace(*capture.id, names.PlaceOf(&capture));
    }
  }

  void Print() {
    std::vector<std::vector<const FindingReport*>> byRule(checks_.rules.size());
    for (const FindingReport& finding : checks_.findings) byRule[finding.rule].push_back(&finding);
    page_.Raw("<section id=\"findings\">\n<h2>What the rules found</h2>\n<p>Checked by ");
    page_.Raw(Counted(checks_.rules.size(), "rule") + ".</p>\n");
    for (const char* severity : kSeverities) {
      for (std::size_t i = 0; i < byRule.size(); ++i) {
        if (checks_.rules[i].severity == severity && !byRule[i].empty()) {
          PrintRule(checks_.rules[i], byRule[i]);
        }
      }
    }
    page_.Raw("</section>\n");
  }

 private:
  void PrintRule(const RuleReport& rule, const std::vector<const FindingReport*>& findings) {
    page_.Raw("<h3").Attribute("data-severity", rule.severity).Raw(">").Text(rule.severity);
    page_.Raw(" ").Text(rule.id).Raw(": ").Text(rule.title).Raw("</h3>\n<p>What to do: ");
    page_.Text(rule.advice);
    if (!rule.standard.empty()) page_.Raw(" (").Text(rule.standard).Raw(")");
    page_.Raw("</p>\n<table").Attribute("data-rule", rule.id);
    page_.Raw(">\n<thead><tr><th scope=\"col\">Where</th><th scope=\"col\">What</th>");
    page_.Raw("<th scope=\"col\">Id</th></tr></thead>\n<tbody>\n");
    for (const FindingReport* finding : findings) {
      page_.Raw("<tr><th scope=\"row\">");
      PrintPlace(*finding);
      page_.Raw("</th><td>").Text(finding->message).Raw("</td><td>");
      page_.Text(finding->annotation.value_or("")).Raw("</td></tr>\n");
    }
    page_.Raw("</tbody>\n</table>\n");
  }

  // The annotation or saved view, as a link where it is on the page.
  void PrintPlace(const FindingReport& finding) {
    const std::string id = finding.annotation.value_or("");
    const std::string name = finding.name.value_or("");
    const std::string& shown = name.empty() ? id : name;
    const auto annotation = annotations_.find(id);
    const auto capture = captures_.find(id);
    if (finding.annotation && annotation != annotations_.end()) {
      page_.Raw("<a").Attribute("href", "#" + RowId(annotation->second));
      page_.Attribute("data-place", annotation->second).Raw(">").Text(shown).Raw("</a>");
    } else if (finding.annotation && capture != captures_.end()) {
      page_.Raw("<a").Attribute("href", "#picture-" + capture->second);
      page_.Attribute("data-view", capture->second).Raw(">").Text(shown).Raw("</a>");
    } else {
      page_.Text(shown);
    }
  }

  Html& page_;
  const ChecksReport& checks_;
  std::unordered_map<std::string, std::string> annotations_, captures_;  // places by id
};

}  // namespace

Findings::Findings(const ModelReport& report) {
  if (!report.checks) return;
  for (const FindingReport& finding : report.checks->findings) {
    if (!finding.annotation) continue;
    byId_[*finding.annotation].push_back({&report.checks->rules[finding.rule], &finding});
  }
}

const std::vector<Findings::Finding>& Findings::Of(const AnnotationReport& annotation) const {
  static const std::vector<Finding> none;
  const auto found = annotation.id ? byId_.find(*annotation.id) : byId_.end();
  return found == byId_.end() ? none : found->second;
}

std::string RowId(const std::string& place) { return "annotation-" + place; }

void PrintFindingCounts(Html& page, const ChecksReport& checks) {
  page.Raw("<p><a href=\"#findings\">found by the rules: ");
  if (checks.findings.empty()) page.Raw("nothing");
  const char* separator = "";
  for (const char* severity : kSeverities) {
    std::size_t count = 0;
    for (const FindingReport& finding : checks.findings) {
      if (checks.rules[finding.rule].severity == severity) ++count;
    }
    if (count == 0) continue;
    page.Raw(separator).Raw("<span data-severity=\"").Raw(severity).Raw("\">");
    page.Raw(Counted(count, severity)).Raw("</span>");
    separator = ", ";
  }
  page.Raw("</a></p>\n");
}

void PrintFindings(Html& page, const ModelReport& report, const Names& names) {
  if (report.checks) FindingsPrinter(page, report, names).Print();
}

}  // namespace html

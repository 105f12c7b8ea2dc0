#include <array>

#include "report/Kinds.h"
#include "writers/html/Sections.h"

namespace html {

namespace {

struct Severity {
  const char *name, *heading, *meaning;
};

constexpr std::array<Severity, 3> kSeverities{
    {{"lost", "Lost", "The document states it and nothing on this page shows it."},
     {"reduced", "Reduced", "An annotation that lacks a part."},
     {"ignored", "Ignored", "Nothing of product manufacturing information."}}};

long CountOf(const SourceReport& source, const std::string& severity) {
  long count = 0;
  for (const SkippedReport& skipped : source.skipped) {
    if (skipped.severity == severity) count += skipped.count;
  }
  return count;
}

void PrintEntry(Html& page, const SkippedReport& skipped) {
  page.Raw("<tr><th scope=\"row\">").Text(skipped.kind).Raw("</th><td>").Text(skipped.reason);
  page.Raw("</td><td>").Text(skipped.id).Raw("</td><td>").Text(skipped.annotation);
  page.Raw("</td><td>").Raw(skipped.line > 0 ? std::to_string(skipped.line) : "");
  page.Raw("</td><td>").Raw(std::to_string(skipped.count)).Raw("</td></tr>\n");
}

}  // namespace

std::string FileName(const SourceReport& source) {
  return source.file.substr(source.file.find_last_of("/\\") + 1);
}

void PrintHeader(Html& page, const ModelReport& report) {
  const SourceReport& source = report.source;
  page.Raw("<header>\n<h1>").Text(FileName(source)).Raw("</h1>\n<ul>\n");
  if (!source.format.empty()) page.Raw("<li>").Text(source.format).Raw("</li>\n");
  page.Raw("<li>");
  if (source.linearUnit.empty()) {
    page.Raw("no unit of length");
  } else {
    page.Raw("lengths in ").Text(source.linearUnit);
  }
  if (!source.pmiLinearUnit.empty()) page.Raw(", written in ").Text(source.pmiLinearUnit);
  if (!source.pmiAngularUnit.empty()) page.Raw(", angles written in ").Text(source.pmiAngularUnit);
  page.Raw("</li>\n");
  const auto add = [&](const char* kind, const char* one, const char* many) {
    const auto found = report.totals.find(kind);
    if (found == report.totals.end() || found->second == 0) return;
    page.Raw("<li>" + std::to_string(found->second) + " ");
    page.Raw(found->second == 1 ? one : many).Raw("</li>\n");
  };
  for (const text::Kind& kind : text::Kinds()) add(kind.name, kind.one, kind.many);
  add("captures", "saved view", "saved views");
  page.Raw("</ul>\n<p><a href=\"#account\">");
  for (const Severity& severity : kSeverities) {
    page.Raw("<span data-severity=\"").Raw(severity.name).Raw("\">");
    page.Raw(std::to_string(CountOf(source, severity.name)) + " ").Raw(severity.name);
    page.Raw(&severity == &kSeverities.back() ? "</span>" : "</span>, ");
  }
  page.Raw("</a></p>\n");
  if (report.checks) PrintFindingCounts(page, *report.checks);
  page.Raw("</header>\n");
}

void PrintAccount(Html& page, const SourceReport& source) {
  page.Raw("<section id=\"account\">\n<h2>What is not on this page</h2>\n");
  for (const Severity& severity : kSeverities) {
    page.Raw("<h3 data-severity=\"").Raw(severity.name).Raw("\">");
    page.Raw(severity.heading).Raw(": ");
    page.Raw(std::to_string(CountOf(source, severity.name))).Raw("</h3>\n<p>");
    page.Raw(severity.meaning).Raw("</p>\n");
    bool isOpen = false;
    for (const SkippedReport& skipped : source.skipped) {
      if (skipped.severity != severity.name) continue;
      if (!isOpen) {
        page.Raw("<table data-severity=\"").Raw(severity.name);
        page.Raw("\">\n<thead><tr><th scope=\"col\">In the document</th>");
        page.Raw("<th scope=\"col\">Why</th><th scope=\"col\">Id</th>");
        page.Raw("<th scope=\"col\">Annotation</th><th scope=\"col\">Line</th>");
        page.Raw("<th scope=\"col\">Times</th></tr></thead>\n<tbody>\n");
        isOpen = true;
      }
      PrintEntry(page, skipped);
    }
    if (isOpen) page.Raw("</tbody>\n</table>\n");
  }
  page.Raw("</section>\n");
}

}  // namespace html

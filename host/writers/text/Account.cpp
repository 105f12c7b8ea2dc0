#include "writers/text/Account.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "report/Clean.h"
#include "report/Kinds.h"
#include "writers/text/Checks.h"
#include "writers/text/PrintText.h"

namespace text {

namespace {

constexpr std::size_t kGroupsShown = 20;
constexpr std::size_t kIdsShown = 5;
constexpr std::size_t kReasonWidth = 200;

// Entries of one severity, kind and reason.
struct Group {
  std::string title;
  std::vector<std::string> ids;
  long count = 0, line = 0;
};

// The annotation, which the report shows under this id; without one, the document's element.
std::string IdOf(const SkippedReport& skipped, bool verbose) {
  if (skipped.annotation.empty() || skipped.annotation == skipped.id) return skipped.id;
  return verbose && !skipped.id.empty() ? skipped.id + " of " + skipped.annotation
                                        : skipped.annotation;
}

using Entries = std::vector<const SkippedReport*>;

std::vector<Group> GroupsOf(const Entries& entries, bool verbose) {
  std::vector<Group> groups;
  std::map<std::string, std::size_t> places;
  for (const SkippedReport* entry : entries) {
    const SkippedReport& skipped = *entry;
    const std::string title = skipped.kind + ": " + skipped.reason;
    const auto [place, isNew] = places.emplace(title, groups.size());
    if (isNew) groups.push_back({title, {}, 0, 0});
    Group& group = groups[place->second];
    group.count += skipped.count;
    if (skipped.line > 0 && (group.line == 0 || skipped.line < group.line)) {
      group.line = skipped.line;
    }
    const std::string id = IdOf(skipped, verbose);
    if (!id.empty() && (group.ids.empty() || group.ids.back() != id)) group.ids.push_back(id);
  }
  return groups;
}

void PrintGroup(Page& page, const Group& group, bool verbose) {
  std::vector<Piece> pieces{{verbose ? group.title : Cut(OneLine(group.title), kReasonWidth)}};
  if (group.count > 1) pieces.push_back({std::to_string(group.count) + " times"});
  if (!group.ids.empty()) {
    const std::size_t shown = verbose ? group.ids.size() : kIdsShown;
    pieces.push_back({(group.ids.size() == 1 ? "id " : "ids ") + Some(group.ids, shown)});
  }
  if (group.line > 0) pieces.push_back({"line " + std::to_string(group.line), Ink::kFaint});
  page.Flow(1, pieces);
}

std::vector<std::string> CountsOf(const ModelReport& report) {
  std::vector<std::string> counts;
  const auto add = [&](const char* kind, const char* one, const char* many) {
    const auto found = report.totals.find(kind);
    if (found != report.totals.end() && found->second != 0) {
      counts.push_back(Count(found->second, one, many));
    }
  };
  for (const Kind& kind : Kinds()) add(kind.name, kind.one, kind.many);
  add("captures", "capture", "captures");
  return counts;
}

// The name of the annotation or capture of an id.
Text NameOf(const ModelReport& report, const std::string& id) {
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) {
      if (!id.empty() && annotation.id == id) return annotation.name;
    }
  }
  for (const CaptureReport& capture : report.captures) {
    if (!id.empty() && capture.id == id) return capture.name;
  }
  return {};
}

// The entry to name where one is named: the first by line of those that were lost, on annotations
// before captures. Of several on one annotation it is the reader's first: a capture's member or a
// display is missing because the annotation is.
const SkippedReport* FirstLost(const ModelReport& report, bool strict) {
  const SkippedReport* first = nullptr;
  std::set<Text> captures;
  for (const CaptureReport& capture : report.captures) captures.insert(capture.id);
  std::set<std::pair<std::string, std::string>> known;  // severity, id
  const auto rank = [&](const SkippedReport& skipped) {
    return std::tuple(skipped.severity != "lost", captures.count(skipped.annotation) != 0,
                      skipped.line == 0, skipped.line);
  };
  for (const SkippedReport& skipped : report.source.skipped) {
    if (skipped.severity != "lost" && !(strict && skipped.severity == "reduced")) continue;
    const std::string id = IdOf(skipped, false);
    if (!id.empty() && !known.emplace(skipped.severity, id).second) continue;
    if (first == nullptr || rank(skipped) < rank(*first)) first = &skipped;
  }
  return first;
}

}  // namespace

long CountSkipped(const SourceReport& source, const std::string& severity) {
  long count = 0;
  for (const SkippedReport& skipped : source.skipped) {
    if (skipped.severity == severity) count += skipped.count;
  }
  return count;
}

std::string Head(const ModelReport& report) {
  const SourceReport& source = report.source;
  std::string head = source.file + ": ";
  if (!source.format.empty()) head += source.format + ", ";
  head += source.linearUnit.empty() ? "no unit of length" : source.linearUnit;
  if (!source.pmiLinearUnit.empty()) head += ", written in " + source.pmiLinearUnit;
  if (!source.pmiAngularUnit.empty()) head += ", angles written in " + source.pmiAngularUnit;
  const std::vector<std::string> counts = CountsOf(report);
  head += "; " + (counts.empty() ? "no PMI" : Some(counts, counts.size()));
  std::vector<std::string> skipped;
  for (const char* severity : {"lost", "reduced", "ignored"}) {
    const long count = CountSkipped(source, severity);
    if (count != 0) skipped.push_back(std::to_string(count) + " " + severity);
  }
  head += "; " + (skipped.empty() ? "nothing lost" : Some(skipped, skipped.size()));
  return OneLine(report.checks ? head + "; checked: " + CountFindings(*report.checks) : head);
}

void PrintAccount(Page& page, const ModelReport& report, bool verbose, bool isSelection) {
  std::set<std::string> shown;
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& each : view.annotations) shown.insert(each.id.value_or(""));
  }
  for (const CaptureReport& capture : report.captures) shown.insert(capture.id.value_or(""));
  shown.erase("");
  const struct {
    const char *severity, *heading;
    Ink ink;
  } parts[] = {{"lost", "Lost", Ink::kRed},
               {"reduced", "Reduced", Ink::kYellow},
               {"ignored", "Ignored", Ink::kBold}};
  for (const auto& [severity, heading, ink] : parts) {
    const long count = CountSkipped(report.source, severity);
    if (count == 0) continue;
    page.Heading(std::string(heading) + ": " + std::to_string(count), ink);
    if (std::string(severity) == "ignored" && !verbose) continue;
    const bool onlyShown = isSelection && std::string(severity) == "reduced";
    Entries entries;
    long elsewhere = 0;
    for (const SkippedReport& skipped : report.source.skipped) {
      if (skipped.severity != severity) continue;
      if (onlyShown && shown.count(IdOf(skipped, false)) == 0) {
        elsewhere += skipped.count;
      } else {
        entries.push_back(&skipped);
      }
    }
    const std::vector<Group> groups = GroupsOf(entries, verbose);
    const std::size_t listed = verbose ? groups.size() : std::min(groups.size(), kGroupsShown);
    for (std::size_t i = 0; i < listed; ++i) PrintGroup(page, groups[i], verbose);
    if (listed < groups.size()) {
      page.Line(1, {"and " + std::to_string(groups.size() - listed) + " more"});
    }
    if (elsewhere > 0) page.Line(1, {std::to_string(elsewhere) + " elsewhere in the model"});
  }
  if (!verbose || report.source.counts.empty()) return;
  page.Heading("In the document");
  for (const auto& [kind, count] : report.source.counts) {
    page.Line(1, {kind + " " + std::to_string(count)});
  }
}

std::string LossLine(const ModelReport& report, bool strict) {
  const SkippedReport* first = FirstLost(report, strict);
  if (first == nullptr) return "";
  const long lost = CountSkipped(report.source, "lost");
  const long reduced = strict ? CountSkipped(report.source, "reduced") : 0;
  std::string line = "PMI was ";
  line += reduced == 0 ? "lost" : lost == 0 ? "reduced" : "lost or reduced";
  line += " (" + Count(lost + reduced, "entry", "entries") + ")";
  if (lost + reduced > 1) line += ", the first";
  if (first->line > 0)
    line += (lost + reduced > 1 ? " at line " : ", at line ") + std::to_string(first->line);
  line += ": " + first->kind;
  if (const Text name = NameOf(report, first->annotation)) line += " " + Quoted(*name, false);
  const std::string id = IdOf(*first, false);
  if (!id.empty()) line += " (id " + id + ")";
  return OneLine(line + ": ") + Cut(OneLine(first->reason), kReasonWidth);
}

}  // namespace text

#include "writers/text/PrintText.h"

#include <algorithm>
#include <map>
#include <set>

#include "report/Kinds.h"
#include "writers/text/Account.h"
#include "writers/text/Annotation.h"
#include "writers/text/Checks.h"
#include "writers/text/Details.h"

namespace text {

namespace {

constexpr std::size_t kMembersShown = 4;

// Prints the annotations of a report, grouped as the style says.
class Groups {
 public:
  Groups(Page& page, const ModelReport& report, const Style& style)
      : page_(page), report_(report), style_(style) {
    for (const ViewReport& view : report.views) {
      for (const AnnotationReport& annotation : view.annotations) all_.push_back(&annotation);
    }
  }

  void Print() {
    switch (style_.by) {
      case By::kKind:
        return ByKind();
      case By::kView:
        return ByView();
      case By::kFace:
        return ByFace();
      case By::kCapture:
        return ByCapture();
    }
  }

 private:
  using Annotations = std::vector<const AnnotationReport*>;

  // A group under its heading; nothing for an empty group.
  void PrintGroup(const std::string& heading, const Annotations& annotations) {
    if (annotations.empty()) return;
    page_.Heading(heading);
    for (const AnnotationReport* annotation : annotations) {
      PrintAnnotation(page_, 1, *annotation, style_.by != By::kKind, style_.verbose);
    }
  }

  void ByKind() {
    for (const Kind& kind : Kinds()) {
      Annotations annotations;
      for (const AnnotationReport* annotation : all_) {
        if (KindCalled(annotation->kind).name == kind.name) annotations.push_back(annotation);
      }
      // Datums and their targets by their labels, all others in the report's order.
      std::stable_sort(annotations.begin(), annotations.end(),
                       [](const AnnotationReport* a, const AnnotationReport* b) {
                         return LabelOf(*a) < LabelOf(*b);
                       });
      PrintGroup(kind.heading, annotations);
    }
  }

  void ByView() {
    for (std::size_t i = 0; i < report_.views.size(); ++i) {
      const ViewReport& view = report_.views[i];
      const std::string number = std::to_string(i + 1);
      std::string heading = "View " + number;
      if (view.frame) {
        heading += " at " + Tuple(view.frame->origin) + " x " + Tuple(view.frame->xAxis) + " y " +
                   Tuple(view.frame->yAxis);
      } else {
        heading += " without a plane";
      }
      if (view.id && view.id != "view " + number) heading += "  id " + *view.id;
      Annotations annotations;
      for (const AnnotationReport& annotation : view.annotations) {
        annotations.push_back(&annotation);
      }
      PrintGroup(heading, annotations);
    }
  }

  // Faces first, then edges, vertices, bodies and everything else.
  static std::size_t Rank(const std::string& kind) {
    const char* const kinds[] = {"face", "edge", "vertex", "body"};
    return static_cast<std::size_t>(std::find(std::begin(kinds), std::end(kinds), kind) -
                                    std::begin(kinds));
  }

  void ByFace() {
    struct Group {
      const EntityReport* entity;
      Annotations annotations;
    };
    std::vector<Group> groups;
    std::map<std::pair<std::string, Text>, std::size_t> places;
    Annotations others;
    for (const AnnotationReport* annotation : all_) {
      for (const EntityReport& entity : annotation->entities) {
        const auto [place, isNew] = places.emplace(
            std::pair(entity.kind, entity.id ? entity.id : entity.label), groups.size());
        if (isNew) groups.push_back({&entity, {}});
        Annotations& annotations = groups[place->second].annotations;
        if (annotations.empty() || annotations.back() != annotation) {
          annotations.push_back(annotation);
        }
      }
      if (annotation->entities.empty()) others.push_back(annotation);
    }
    std::stable_sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) {
      return Rank(a.entity->kind) < Rank(b.entity->kind);
    });
    for (const Group& group : groups) {
      PrintGroup(EntityName(*group.entity, true), group.annotations);
    }
    PrintGroup("On no entity", others);
  }

  void ByCapture() {
    std::map<std::string, Annotations> byId;
    for (const AnnotationReport* annotation : all_) {
      if (annotation->id) byId[*annotation->id].push_back(annotation);
    }
    std::set<const AnnotationReport*> shown;
    for (const CaptureReport& capture : report_.captures) {
      page_.Heading("Capture " + CaptureName(capture));
      if (style_.verbose) PrintDetails(page_, 1, capture);
      for (const EntityReport& entity : capture.entities) {
        if (style_.verbose) page_.Line(1, {EntityName(entity, true)});
      }
      for (const MemberReport& member : capture.members) {
        const auto found = byId.find(member.id.value_or(""));
        if (!member.id) page_.Line(1, {MemberName(member)});
        if (!member.id || found == byId.end()) continue;
        for (const AnnotationReport* annotation : found->second) {
          PrintAnnotation(page_, 1, *annotation, true, style_.verbose);
          shown.insert(annotation);
        }
      }
    }
    Annotations others;
    for (const AnnotationReport* annotation : all_) {
      if (shown.count(annotation) == 0) others.push_back(annotation);
    }
    PrintGroup("In no capture", others);
  }

  std::string CaptureName(const CaptureReport& capture) const {
    return Quoted(capture.name.value_or(""), style_.verbose) +
           (capture.id ? "  id " + *capture.id : "");
  }

  std::string MemberName(const MemberReport& member) const {
    std::string name = member.name ? Quoted(*member.name, style_.verbose) : "unnamed";
    if (member.id && (style_.verbose || !member.name)) name += " id " + *member.id;
    return name;
  }

 public:
  void PrintCaptures() {
    if (report_.captures.empty() || style_.by == By::kCapture) return;
    page_.Heading("Captures");
    for (const CaptureReport& capture : report_.captures) {
      std::vector<std::string> names;
      for (const MemberReport& member : capture.members) names.push_back(MemberName(member));
      const auto annotations = static_cast<long>(names.size());
      for (const EntityReport& entity : capture.entities) {
        if (style_.verbose) names.push_back(EntityName(entity, true));
      }
      std::vector<Piece> pieces{{Quoted(capture.name.value_or(""), style_.verbose)}};
      std::string shows =
          annotations == 1 ? "1 annotation" : std::to_string(annotations) + " annotations";
      if (capture.memberCount != annotations) {
        shows += " of " + std::to_string(capture.memberCount) + " members";
      }
      if (!names.empty())
        shows += ": " + Some(names, style_.verbose ? names.size() : kMembersShown);
      pieces.push_back({shows});
      if (capture.clippingPlane) pieces.push_back({"clipped"});
      if (capture.id) pieces.push_back({"id " + *capture.id, Ink::kFaint});
      page_.Flow(1, pieces);
      if (style_.verbose) PrintDetails(page_, 3, capture);
    }
  }

 private:
  Page& page_;
  const ModelReport& report_;
  const Style& style_;
  Annotations all_;
};

// Names the kinds that were asked for and have no annotation.
void PrintMissing(Page& page, const ModelReport& report, const Selection& selection) {
  std::set<std::string> shown;
  if (!report.captures.empty()) shown.insert("captures");
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) shown.insert(annotation.kind);
  }
  for (const std::string& kind : selection.kinds) {
    if (!shown.insert(kind).second) continue;
    const std::string where = selection.captures.empty() ? "" : " in the captures asked for";
    const bool isCapture = kind == "captures";
    page.Heading(isCapture ? "No captures" : "No annotation of kind " + kind + where, Ink::kPlain);
  }
}

}  // namespace

std::string PrintText(const ModelReport& report, const Style& style) {
  Page page(style.colour);
  page.Line(0, {Head(report), Ink::kBold});
  Groups groups(page, report, style);
  groups.Print();
  groups.PrintCaptures();
  PrintMissing(page, report, style.selection);
  PrintAccount(page, report, style.verbose, !IsAll(style.selection));
  PrintChecks(page, report, style.verbose);
  return page.Take();
}

std::string PrintSummary(const ModelReport& report) { return Head(report) + "\n"; }

std::vector<std::string> KindNames() {
  std::vector<std::string> names;
  for (const Kind& kind : Kinds()) names.emplace_back(kind.name);
  names.emplace_back("captures");
  return names;
}

}  // namespace text

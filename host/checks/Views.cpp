// What can be seen: saved views, places, texts.

#include <algorithm>
#include <unordered_set>

#include "checks/Rule.h"

namespace checks {

namespace {

bool IsVisible(const AnnotationReport& annotation) { return annotation.hidden == false; }

// The ids of callouts: one is shown with the dimension that it is a part of.
std::unordered_set<std::string> Callouts(const Index& index) {
  std::unordered_set<std::string> ids;
  for (const AnnotationReport* dimension : index.OfKind("dimension")) {
    for (const CalloutReport& callout : dimension->dimension->callouts) {
      if (callout.id) ids.insert(*callout.id);
    }
  }
  return ids;
}

void InNoView(const Index& index, Findings& findings) {
  std::unordered_set<std::string> shown;
  for (const CaptureReport& capture : index.Report().captures) {
    if (!index.IsWhole(capture.id)) return;
    for (const MemberReport& member : capture.members) {
      if (!member.id) return;
      shown.insert(*member.id);
    }
  }
  // Where no view lists what it shows, all of them may show all.
  if (shown.empty()) return;
  shown.merge(Callouts(index));
  for (const AnnotationReport* annotation : index.All()) {
    // What is not drawn at all is another rule's.
    if (!annotation->id || !IsVisible(*annotation) || index.PlaneOf(*annotation) == nullptr)
      continue;
    if (shown.count(*annotation->id) == 0) findings.Add(*annotation, "is in no saved view");
  }
}

// A view that only looks shows the part, as a standard view does, and a cut shows what is behind
// it.
void ViewOfNothing(const Index& index, Findings& findings) {
  for (const CaptureReport& capture : index.Report().captures) {
    if (capture.memberCount != 0 || capture.camera || capture.clippingPlane) continue;
    // Part of what it states was not read.
    if (!index.IsWhole(capture.id) || index.IsReduced(capture.id, "")) continue;
    findings.Add(capture, "the saved view has neither members nor a camera");
  }
}

void WithoutPlace(const Index& index, Findings& findings) {
  // A model where nothing is drawn gives the meaning of its PMI alone.
  const auto isDrawn = [&](const AnnotationReport* each) {
    return index.PlaneOf(*each) != nullptr;
  };
  if (std::none_of(index.All().begin(), index.All().end(), isDrawn)) return;
  const std::unordered_set<std::string> callouts = Callouts(index);
  for (const AnnotationReport* annotation : index.All()) {
    if (!IsVisible(*annotation) || isDrawn(annotation) || !index.IsWhole(annotation->id)) continue;
    if (callouts.count(annotation->id.value_or("")) != 0) continue;
    // On the screen, say.
    if (index.IsReduced(annotation->id, "has no plane")) continue;
    // The symbols of its targets show a datum.
    if (annotation->datum && !annotation->datum->targets.empty()) continue;
    findings.Add(*annotation, "is drawn nowhere");
  }
}

void NoteWithoutText(const Index& index, Findings& findings) {
  for (const char* kind : {"text", "flagNote"}) {
    for (const AnnotationReport* note : index.OfKind(kind)) {
      const bool isBlank =
          std::all_of(note->texts.begin(), note->texts.end(), [](const TextReport& text) {
            return text.string.value_or("").find_first_not_of(" \t\r\n") == std::string::npos;
          });
      if (!isBlank || !IsVisible(*note) || !index.IsWhole(note->id)) continue;
      findings.Add(*note, "the note has no characters");
    }
  }
}

}  // namespace

std::vector<Rule> ViewRules() {
  return {
      {"V1", "warning", "a visible annotation in no saved view, where there are saved views",
       "ASME Y14.41; ISO 16792", "add the annotation to a saved view",
       "a dimension in a plane, and one saved view of all others",
       "a hidden dimension in no saved view", InNoView},
      {"V2", "warning", "a saved view of nothing", "ASME Y14.41; ISO 16792",
       "add to the view what it is for, or remove it",
       "a saved view without members and without a camera",
       "a saved view of a body; the part alone, seen from a camera", ViewOfNothing},
      {"V3", "note", "a visible annotation without a place", "ASME Y14.41; ISO 16792",
       "place the annotation in an annotation plane",
       "a tolerance that is drawn nowhere among others that are",
       "a model where nothing is drawn; a note on the screen", WithoutPlace},
      {"N1", "note", "a visible note without characters", "ASME Y14.41; ISO 16792",
       "state the note's text, not its drawing alone", "a note of drawn curves",
       "a note that says BREAK EDGES", NoteWithoutText},
  };
}

}  // namespace checks

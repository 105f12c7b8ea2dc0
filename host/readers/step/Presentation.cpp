// How annotations are presented: callouts and annotation occurrences, their planes and leaders.
// A presentation without a meaning becomes a note.

#include <algorithm>

#include "model/WithDisplay.h"
#include "readers/step/Drawn.h"

namespace step {

namespace {

constexpr const char* kLinks[] = {"DRAUGHTING_MODEL_ITEM_ASSOCIATION",
                                  "DRAUGHTING_MODEL_ITEM_ASSOCIATION_WITH_PLACEHOLDER"};

class PresentationReader {
 public:
  explicit PresentationReader(Reading& reading) : reading_(reading) {}

  void Read() {
    FindPlanes();
    FindScales();
    FindInvisible();
    // What is meant comes before what is only pointed at: a datum by its feature.
    for (const bool byFeature : {false, true}) {
      for (const char* link : kLinks) {
        for (const Id id : reading_.file.Of(link)) {
          reading_.Try(id, [&] { ReadLink(reading_.Get(id).records.front(), byFeature); });
        }
      }
    }
    for (const std::string_view callout : kCallouts) {
      for (const Id id : reading_.file.Of(callout)) {
        if (shownHere_.count(id) == 0) reading_.Try(id, [&] { ReadNote(reading_.Get(id)); });
      }
    }
    std::unordered_set<Id> noted;
    for (const char* occurrence :
         {"ANNOTATION_CURVE_OCCURRENCE", "TESSELLATED_ANNOTATION_OCCURRENCE",
          "ANNOTATION_TEXT_OCCURRENCE", "ANNOTATION_FILL_AREA_OCCURRENCE",
          "ANNOTATION_SYMBOL_OCCURRENCE", "ANNOTATION_SUBFIGURE_OCCURRENCE",
          "DRAUGHTING_ANNOTATION_OCCURRENCE", "ANNOTATION_OCCURRENCE"}) {
      for (const Id id : reading_.file.Of(occurrence)) {
        if (!noted.insert(id).second) continue;  // a complex instance is of several kinds
        const bool isKnown = shownHere_.count(id) != 0 || !CalloutsOf(id).empty();
        if (!isKnown) reading_.Try(id, [&] { ReadNote(reading_.Get(id)); });
      }
    }
  }

 private:
  std::vector<Id> CalloutsOf(Id element) {
    std::vector<Id> callouts;
    const std::vector<Id> users = reading_.file.ReferrersOf(element);
    reading_.Spend(users.size() / 100);
    for (const Id user : users) {
      if (IsCallout(reading_, user)) callouts.push_back(user);
    }
    return callouts;
  }

  // The plane that a presentation element lies in.
  void FindPlanes() {
    for (const Id id : reading_.file.Of("ANNOTATION_PLANE")) {
      reading_.Try(id, [&] {
        const Record& record = reading_.Get(id).As("ANNOTATION_PLANE");
        const Value& elements = record.List(record.count - 1);
        for (const Value& element : elements) planes_.emplace(element.Reference(), id);
      });
    }
  }

  // What is drawn in another unit of length than the model's.
  void FindScales() {
    for (const Id id : reading_.file.Of("DRAUGHTING_MODEL")) {
      reading_.Try(id, [&] {
        const Record& record = reading_.Get(id).As("REPRESENTATION");
        const double scale = reading_.units.ScaleOf(record.Reference(2));
        if (scale == 1) return;
        for (const Value& item : record.List(1)) scales_.emplace(item.Reference(), scale);
      });
    }
  }

  // The scale of an element, or of the plane that it lies in.
  double ScaleOf(Id element, Id plane) const {
    for (const Id id : {element, plane}) {
      const auto found = scales_.find(id);
      if (found != scales_.end()) return found->second;
    }
    return 1;
  }

  void FindInvisible() {
    for (const Id id : reading_.file.Of("INVISIBILITY")) {
      reading_.Try(id, [&] {
        for (const Value& item : reading_.Get(id).As("INVISIBILITY").List(0)) {
          invisible_.insert(item.Reference());
        }
      });
    }
  }

  // Whether nothing of an element is seen: it is invisible, its plane, or all that is drawn of it.
  bool IsInvisible(Id element, Id plane) {
    if (invisible_.count(element) != 0 || invisible_.count(plane) != 0) return true;
    if (invisible_.empty() || !IsCallout(reading_, element)) return false;
    bool isDrawn = false;
    for (const Value& content : ContentsOf(reading_.Get(element))) {
      if (IsPlaceholder(reading_.Get(content.Reference()))) continue;
      if (invisible_.count(content.Reference()) == 0) return false;
      isDrawn = true;
    }
    return isDrawn;
  }

  // The plane of an element, of what it is part of, or of what it consists of; 0 for none.
  Id PlaneOf(Id element) {
    const auto own = planes_.find(element);
    if (own != planes_.end()) return own->second;
    for (const Id callout : CalloutsOf(element)) {
      const auto found = planes_.find(callout);
      if (found != planes_.end()) return found->second;
    }
    if (!IsCallout(reading_, element)) return 0;
    for (const Value& content : ContentsOf(reading_.Get(element))) {
      const auto found = planes_.find(content.Reference());
      if (found != planes_.end()) return found->second;
    }
    return 0;
  }

  // What a link says is meant by a presentation. Links to aspects that are no annotation only tell
  // what is pointed at. A callout may show several annotations, as a dimension with the tolerance
  // below it; the letter of a datum in a callout of something else is not its symbol.
  void ReadLink(const Record& link, bool byFeature) {
    const auto meant = reading_.annotations.find(link.Reference(2));
    if (meant == reading_.annotations.end()) return;
    ENTITY& annotation = *meant->second;
    const bool isFeature =
        is_ATTRIB_KOVAPMI_DATUM(&annotation) == 1 && !reading_.Is(meant->first, "DATUM");
    if (isFeature != byFeature) return;
    const Id element = link.Reference(4);
    reading_.Get(element);
    std::vector<ENTITY*>& shown = shownHere_[element];
    if (byFeature && !shown.empty()) return;
    if (std::find(shown.begin(), shown.end(), &annotation) != shown.end()) return;
    shown.push_back(&annotation);
    reading_.shown[element].push_back(&annotation);
    Present(element, annotation);
  }

  void Present(Id element, ENTITY& annotation) {
    if (!presented_.insert(&annotation).second) {
      return reading_.Skip(Severity::kReduced, element, "the annotation has a presentation already",
                           &annotation);
    }
    Place(element, annotation);
    AddAroundText(reading_, element, annotation);
  }

  void Place(Id element, ENTITY& annotation) {
    if (IsCallout(reading_, element)) reading_.Spend(ContentsOf(reading_.Get(element)).size / 100);
    const Id plane = PlaneOf(element);
    if (IsInvisible(element, plane)) reading_.part.Hide(annotation);
    if (plane == 0) {
      return reading_.Skip(Severity::kReduced, element, "it has no plane", &annotation);
    }
    const Record& record = reading_.Get(plane).As("ANNOTATION_PLANE");
    const Instance& geometry = reading_.Get(record.Reference(record.count - 2));
    const Record& first = geometry.records.front();
    const Id axes = geometry.Find("PLANE") != nullptr        ? first.Reference(1)
                    : geometry.Find("PLANAR_BOX") != nullptr ? first.Reference(3)
                                                             : geometry.id;
    const double scale = ScaleOf(element, plane);
    const Placement placement = reading_.PlacementOf(axes, scale);
    QENposition origin = placement.origin;
    try {
      origin = DrawnMiddle(reading_, element, placement, scale).value_or(origin);
    } catch (const Unreadable& problem) {
      reading_.Skip(Severity::kReduced, element,
                    std::string("it stands where its plane does: ") + problem.what(), &annotation);
    }
    WithDisplay(annotation, [&](auto& holder) {
      auto& display = reading_.part.Place(holder, origin, placement.x, placement.axis);
      AddLeaders(element, display, annotation, scale);
    });
  }

  // A leader is a curve that ends at what it points at; of what is drawn only its ends are kept.
  void AddLeaders(Id element, KOVAPMI_DISPLAY_PROPERTIES& display, const ENTITY& annotation,
                  double scale) {
    if (!IsCallout(reading_, element)) return;
    bool isDrawn = false;
    std::unordered_set<Id> seen;
    for (const Value& content : ContentsOf(reading_.Get(element))) {
      const Id id = content.Reference();
      if (!seen.insert(id).second) continue;
      if (!reading_.Is(id, "LEADER_CURVE")) {
        isDrawn = isDrawn || !(IsPlaceholder(reading_.Get(id)) ||
                               reading_.Is(id, "ANNOTATION_TEXT_OCCURRENCE"));
        continue;
      }
      const Instance& line = reading_.Get(ItemOf(reading_.Get(id)));
      const Record* const points = line.Find("POLYLINE");
      if (points == nullptr || points->List(points->count - 1).size < 2) {
        reading_.Skip(Severity::kReduced, id, "its curve is not a polyline", &annotation);
        continue;
      }
      const Value& list = points->List(points->count - 1);
      reading_.Spend(1);
      reading_.part.AddLeader(display, reading_.PointOf(list.begin()->Reference(), scale),
                              reading_.PointOf((list.end() - 1)->Reference(), scale));
      if (list.size > 2) {
        reading_.Skip(Severity::kReduced, id, "its break points are left out", &annotation);
      }
      reading_.Count("leaders");
    }
    if (isDrawn) {
      reading_.Skip(Severity::kReduced, element, "the model has no drawn lines and areas",
                    &annotation);
    }
  }

  // A note is of the product that it points at, else of the outermost one.
  void ReadNote(const Instance& element) {
    if (!IsNoteOfProduct(element.id)) return;
    reading_.Count("notes");
    const std::vector<ENTITY*> entities = PointedAt(element.id);
    const std::string text = NoteTextOf(reading_, element);
    auto& note = reading_.part.AddText(reading_.Carrier(entities), Wide(text).c_str());
    reading_.Describe(note, element.id, "note", reading_.NameOf(element.id));
    reading_.shown[element.id].push_back(&note);
    if (text.empty()) {
      reading_.Skip(Severity::kReduced, element.id, "its text is drawn and not stated", &note);
    }
    Place(element.id, note);
  }

  bool IsNoteOfProduct(Id element) {
    const bool isOutermost = reading_.IsOfProduct(0);
    for (const char* kind : kLinks) {
      for (const Id link : reading_.ReferrersOf(element, kind)) {
        const Id meant = reading_.Get(link).records.front().Reference(2);
        if (reading_.IsElsewhere(meant)) return false;
        if (reading_.IsOfProduct(meant) != isOutermost) return !isOutermost;
      }
    }
    return isOutermost;
  }

  std::vector<ENTITY*> PointedAt(Id element) {
    std::vector<ENTITY*> entities;
    std::unordered_set<const ENTITY*> seen;
    for (const Id link : reading_.ReferrersOf(element, "DRAUGHTING_MODEL_ITEM_ASSOCIATION")) {
      const Id aspect = reading_.Get(link).records.front().Reference(2);
      for (ENTITY* entity : reading_.EntitiesOf(aspect)) {
        if (seen.insert(entity).second) entities.push_back(entity);
      }
    }
    return entities;
  }

  Reading& reading_;
  std::unordered_map<Id, Id> planes_;      // by element
  std::unordered_map<Id, double> scales_;  // by element or plane, where it is not one
  std::unordered_set<Id> invisible_;
  std::unordered_set<const ENTITY*> presented_;
  std::unordered_map<Id, std::vector<ENTITY*>> shownHere_;  // in this occurrence, by element
};

}  // namespace

void ReadPresentation(Reading& reading) { PresentationReader(reading).Read(); }

}  // namespace step

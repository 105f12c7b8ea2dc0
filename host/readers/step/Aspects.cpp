// What a shape aspect stands for: the topology that it, or what it consists of, identifies.

#include <algorithm>

#include "readers/step/Reading.h"

namespace step {

namespace {

// What derived aspects are: a middle, an axis, a plane between others ...
constexpr const char* kGeometry[] = {
    "AXIS1_PLACEMENT", "AXIS2_PLACEMENT_3D", "CARTESIAN_POINT",          "CIRCLE", "LINE", "PLANE",
    "POLYLINE",        "TRIMMED_CURVE",      "B_SPLINE_CURVE_WITH_KNOTS"};

constexpr std::string_view kUsages[] = {"GEOMETRIC_ITEM_SPECIFIC_USAGE",
                                        "ITEM_IDENTIFIED_REPRESENTATION_USAGE",
                                        "CHAIN_BASED_GEOMETRIC_ITEM_SPECIFIC_USAGE",
                                        "CHAIN_BASED_ITEM_IDENTIFIED_REPRESENTATION_USAGE"};

class AspectReader {
 public:
  explicit AspectReader(Reading& reading) : reading_(reading) {}

  std::vector<ENTITY*> Read(Id aspect) {
    // What is still to come stands on a list and not on the call stack; the next one last.
    std::vector<Id> pending = {aspect};
    std::unordered_set<Id> seen = {aspect};
    while (!pending.empty()) {
      const Id next = pending.back();
      pending.pop_back();
      const std::vector<Id> parts = Open(next);
      for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (seen.insert(*part).second) pending.push_back(*part);
      }
    }
    return std::move(entities_);
  }

 private:
  // Listed once for a usage, however many of its items are missing and aspects are read.
  void Add(Id item, Id of) {
    reading_.Spend(1);
    const auto found = reading_.topology.find(item);
    if (found == reading_.topology.end()) {
      if (!reading_.listedUsages.insert(of).second) return;
      // What a derived aspect is derived from says what it is on; its geometry adds nothing.
      return reading_.Skip(isDerived_ && IsGeometry(item) ? Severity::kIgnored : Severity::kLost,
                           of, "its item #" + std::to_string(item) + " is nothing of the model");
    }
    if (added_.insert(found->second).second) entities_.push_back(found->second);
  }

  // Adds what an aspect identifies itself and gives the aspects that it consists of.
  std::vector<Id> Open(Id aspect) {
    const Instance& instance = reading_.Get(aspect);
    // On the product's shape: on all its bodies.
    if (instance.Find("PRODUCT_DEFINITION_SHAPE") != nullptr) {
      if (reading_.wholeShape.empty()) {
        reading_.Skip(Severity::kLost, aspect, "its product has no body");
      }
      reading_.Spend(reading_.wholeShape.size());
      for (ENTITY* body : reading_.wholeShape) {
        if (added_.insert(body).second) entities_.push_back(body);
      }
      return {};
    }
    isDerived_ = !reading_.ReferrersOf(aspect, "SHAPE_ASPECT_DERIVING_RELATIONSHIP").empty();
    // A tolerance may name a size or a location in the place of what that is on.
    std::vector<Id> parts = MeasuredBy(instance);
    const bool isDatum = IsDatum(aspect);
    const std::vector<Id> users = reading_.file.ReferrersOf(aspect);
    reading_.Spend(1 + users.size() / 100);
    for (const Id user : users) {
      const Instance* const use = Find(user);
      if (use == nullptr) continue;
      const Record& record = use->records.front();
      if (std::find(std::begin(kUsages), std::end(kUsages), record.name) != std::end(kUsages)) {
        if (record.Reference(2) == aspect) AddItems(record, user);
      } else if (record.name == "SHAPE_ASPECT_RELATIONSHIP" ||
                 record.name == "SHAPE_ASPECT_DERIVING_RELATIONSHIP") {
        // From the whole to a part, from what is derived to what it is derived from, from a datum
        // to the feature that defines it and not back.
        const Id relating = record.Reference(2);
        const Id related = record.Reference(3);
        if (relating == aspect && !IsDatum(related)) parts.push_back(related);
        if (isDatum && related == aspect && !IsTarget(relating)) parts.push_back(relating);
      } else if (record.name == "FEATURE_FOR_DATUM_TARGET_RELATIONSHIP") {
        if (record.Reference(3) == aspect) parts.push_back(record.Reference(2));
      }
    }
    return parts;
  }

  bool IsGeometry(Id item) {
    const Instance* const instance = Find(item);
    return instance != nullptr &&
           std::any_of(std::begin(kGeometry), std::end(kGeometry),
                       [&](const char* entity) { return instance->Find(entity) != nullptr; });
  }

  bool IsTarget(Id id) {
    return reading_.Is(id, "DATUM_TARGET") || reading_.Is(id, "PLACED_DATUM_TARGET_FEATURE");
  }

  bool IsDatum(Id id) { return reading_.Is(id, "DATUM") || reading_.Is(id, "COMMON_DATUM"); }

  const Instance* Find(Id id) {
    try {
      return reading_.file.Find(id);
    } catch (const Unreadable&) {
      return nullptr;
    }
  }

  // One item, or a set or list of them that is typed in place or an instance.
  void AddItems(const Record& usage, Id of) {
    const Value& item = usage.At(4);
    for (const Value& each : item.Untyped()) Add(each.Reference(), of);
    if (item.kind != Value::kReference) return;
    const Id id = item.Reference();
    const Instance* const instance = Find(id);
    const bool isSet =
        instance != nullptr && instance->records.front().name == "COMPOUND_REPRESENTATION_ITEM";
    if (!isSet) return Add(id, of);
    for (const Value& each : instance->records.front().List(1).Untyped()) Add(each.Reference(), of);
  }

  Reading& reading_;
  bool isDerived_ = false;  // the aspect that is being opened
  std::vector<ENTITY*> entities_;
  std::unordered_set<const ENTITY*> added_;
};

}  // namespace

const std::vector<ENTITY*>& Reading::EntitiesOf(Id aspect) {
  const auto known = entitiesOf_.find(aspect);
  if (known != entitiesOf_.end()) return known->second;
  return entitiesOf_.emplace(aspect, AspectReader(*this).Read(aspect)).first->second;
}

}  // namespace step

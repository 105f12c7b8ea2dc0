// Datums, datum features and datum targets (ISO 5459, ASME Y14.5).

#include <algorithm>

#include "readers/step/Reading.h"

namespace step {

namespace {

// The last parameter of a record as a text: a datum's letter, a target's number.
std::string LastText(const Instance& instance, std::string_view entity) {
  const Record& record = instance.As(entity);
  return record.Text(record.count - 1);
}

struct TargetKind {
  std::string_view name;
  datum_target_type type;
};

constexpr TargetKind kTargetKinds[] = {
    {"point", datum_target_point},         {"line", datum_target_line},
    {"circle", datum_target_circle},       {"circular curve", datum_target_circle},
    {"rectangle", datum_target_rectangle}, {"area", datum_target_area}};

class DatumsReader {
 public:
  explicit DatumsReader(Reading& reading) : reading_(reading) {}

  void Read() {
    for (const char* entity : {"DATUM", "COMMON_DATUM"}) {
      for (const Id id : reading_.file.Of(entity)) {
        if (!reading_.IsOfProduct(id, id)) continue;
        reading_.Count("datums");
        reading_.Try(id, [&] { ReadDatum(reading_.Get(id)); });
      }
    }
    std::unordered_set<Id> seen;  // a complex instance is of both
    for (const char* entity : {"DATUM_TARGET", "PLACED_DATUM_TARGET_FEATURE"}) {
      for (const Id id : reading_.file.Of(entity)) {
        if (reading_.annotations.count(id) == 0 && reading_.IsOfProduct(id) &&
            seen.insert(id).second) {
          reading_.Skip(Severity::kLost, id, "it is the target of no datum");
        }
      }
    }
  }

 private:
  // The feature that defines a datum, and its targets, are related to it.
  void ReadDatum(const Instance& datum) {
    const std::string label = LastText(datum, "DATUM");
    std::vector<Id> features;
    std::vector<Id> targets;
    for (const Id relation : reading_.ReferrersOf(datum.id, "SHAPE_ASPECT_RELATIONSHIP")) {
      const Record& record = reading_.Get(relation).records.front();
      const Id relating =
          record.Reference(2) == datum.id ? record.Reference(3) : record.Reference(2);
      const bool isTarget = reading_.Is(relating, "DATUM_TARGET") ||
                            reading_.Is(relating, "PLACED_DATUM_TARGET_FEATURE");
      (isTarget ? targets : features).push_back(relating);
    }
    std::vector<ENTITY*> entities;
    std::unordered_set<const ENTITY*> seen;
    const auto append = [&](Id aspect) {
      for (ENTITY* entity : reading_.EntitiesOf(aspect)) {
        if (seen.insert(entity).second) entities.push_back(entity);
      }
    };
    append(datum.id);  // its features, and what its own aspect identifies
    std::vector<ATTRIB_KOVAPMI_DATUM_TARGET*> made;
    for (const Id target : targets) {
      reading_.Count("datumTargets");
      reading_.Try(target, [&] { made.push_back(&ReadTarget(reading_.Get(target), label)); });
    }
    if (features.empty()) {
      for (const Id target : targets) append(target);
    }
    auto& attribute = reading_.part.AddDatum(reading_.Carrier(entities), Wide(label).c_str());
    for (auto* target : made) {
      standin::Edit(standin::DatumOf(attribute)).targets.push_back(&standin::TargetOf(*target));
    }
    reading_.annotations[datum.id] = &attribute;
    for (const Id feature : features) reading_.annotations.try_emplace(feature, &attribute);
    reading_.Describe(attribute, datum.id, "datum", label);
  }

  ATTRIB_KOVAPMI_DATUM_TARGET& ReadTarget(const Instance& instance, const std::string& datum) {
    const bool isPlaced = instance.Find("PLACED_DATUM_TARGET_FEATURE") != nullptr;
    const std::string label = reading_.Spend(datum) + LastText(instance, "DATUM_TARGET");
    const std::string kind = instance.As("SHAPE_ASPECT").Text(1);
    const std::vector<ENTITY*> entities = reading_.EntitiesOf(instance.id);
    auto& attribute =
        reading_.part.AddDatumTarget(reading_.Carrier(entities), Wide(label).c_str(), nullptr);
    auto& target = standin::Edit(standin::TargetOf(attribute));
    if (entities.empty()) target.geometry = nullptr;
    reading_.Describe(attribute, instance.id, "datum target", label);
    reading_.annotations[instance.id] = &attribute;
    const auto* const known =
        std::find_if(std::begin(kTargetKinds), std::end(kTargetKinds),
                     [&](const TargetKind& each) { return each.name == kind; });
    if (known != std::end(kTargetKinds)) {
      target.type = known->type;
    } else {
      target.type = datum_target_unknown;
      reading_.Skip(Severity::kReduced, instance.id, "its kind '" + kind + "' is unknown",
                    &attribute);
    }
    if (isPlaced) ReadPlace(instance.id, attribute, target);
    return attribute;
  }

  // The shape of a placed target: where it is and how large.
  void ReadPlace(Id id, const ENTITY& attribute, KOVAPMI_DATUMTGT::fields& target) {
    for (const Id property : reading_.ReferrersOf(id, "PROPERTY_DEFINITION")) {
      for (const Id use : reading_.ReferrersOf(property, "SHAPE_DEFINITION_REPRESENTATION")) {
        const Instance& shape = reading_.Get(reading_.Get(use).records.front().Reference(1));
        const Record& record = shape.As("REPRESENTATION");
        ReadShape(record, attribute, target, reading_.units.ScaleOf(record.Reference(2)));
        return;
      }
    }
    reading_.Skip(Severity::kReduced, id, "its place is not stated", &attribute);
  }

  void ReadShape(const Record& shape, const ENTITY& attribute, KOVAPMI_DATUMTGT::fields& target,
                 double scale) {
    Placement placement;
    std::string size[3];  // diameter, length, width, as written
    double length = 0;
    double width = 0;
    for (const Value& item : shape.List(1)) {
      const Id id = item.Reference();
      if (reading_.Is(id, "AXIS2_PLACEMENT_3D")) {
        placement = reading_.PlacementOf(id, scale);
        target.position1 = &reading_.part.Make<APOINT>(placement.origin);
        continue;
      }
      reading_.Spend(1);
      const std::string name = reading_.NameOf(id);
      const Quantity quantity = reading_.units.Measure(id, false);
      reading_.Write(attribute, "size", quantity);
      const std::string written = quantity.unit == reading_.units.LinearUnit()
                                      ? quantity.written
                                      : quantity.written + " " + quantity.unit;
      if (name == "target diameter") size[0] = written;
      if (name == "target length") size[1] = written, length = quantity.value;
      if (name == "target width") size[2] = written, width = quantity.value;
    }
    if (!size[0].empty()) {
      target.note = Wide("⌀" + size[0]);
    } else if (!size[1].empty() && !size[2].empty()) {
      target.note = Wide(size[1] + "x" + size[2]);
    } else if (!size[1].empty()) {
      target.note = Wide(size[1]);
    }
    if (target.position1 == nullptr || !(length > 0)) return;
    // A rectangle is placed by its middle, its length along x; a line by its start.
    const QENvector y = cross(placement.axis, placement.x);
    const QENvector along = length * placement.x;
    const QENvector across = width * y;
    const bool isRectangle = target.type == datum_target_rectangle;
    const QENposition corner =
        isRectangle ? placement.origin + -0.5 * (along + across) : placement.origin;
    target.position1 = &reading_.part.Make<APOINT>(corner);
    target.position2 = &reading_.part.Make<APOINT>(corner + (along + across));
  }

  Reading& reading_;
};

}  // namespace

void ReadDatums(Reading& reading) { DatumsReader(reading).Read(); }

}  // namespace step

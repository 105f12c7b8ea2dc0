// Datum reference frames: datum systems with their compartments, and the single datum references of
// the first edition.

#include <algorithm>
#include <cwchar>

#include "readers/step/Reading.h"

namespace step {

namespace {

struct NamedModifier {
  std::string_view name;
  zone_modifier_type type;
};

constexpr NamedModifier kModifiers[] = {
    {"ANY_CROSS_SECTION", zone_mod_any_cross_section},
    {"ANY_LONGITUDINAL_SECTION", zone_mod_any_longitudinal_section},
    {"BASIC", zone_mod_basic},
    {"CONTACTING_FEATURE", zone_mod_contacting_feature},
    {"DISTANCE_VARIABLE", zone_mod_distance_variable},
    {"FREE_STATE", zone_mod_free_state},
    {"LEAST_MATERIAL_REQUIREMENT", zone_mod_least_material},
    {"LEAST_MATERIAL_CONDITION", zone_mod_least_material},
    {"LINE", zone_mod_straight_line},
    {"MAJOR_DIAMETER", zone_mod_major_diameter},
    {"MAXIMUM_MATERIAL_REQUIREMENT", zone_mod_maximum_material},
    {"MAXIMUM_MATERIAL_CONDITION", zone_mod_maximum_material},
    {"MINOR_DIAMETER", zone_mod_minor_diameter},
    {"ORIENTATION", zone_mod_orientation_only},
    {"PITCH_DIAMETER", zone_mod_pitch_diameter},
    {"PLANE", zone_mod_plane},
    {"POINT", zone_mod_point},
    {"REGARDLESS_OF_FEATURE_SIZE", zone_mod_regardless_of_feature_size},
    {"TRANSLATION", zone_mod_translation},
};

class FrameReader {
 public:
  FrameReader(Reading& reading, Id of) : reading_(reading), of_(of) {}

  KOVAPMI_DRF* Read(const Value& systems) {
    std::vector<std::pair<int, Id>> single;  // precedence, reference
    for (const Value& value : systems) {
      const Id id = value.Reference();
      const Instance& instance = reading_.Get(id);
      if (const Record* system = instance.Find("DATUM_SYSTEM")) {
        for (const Value& compartment : system->List(system->count - 1)) {
          const Id next = compartment.Reference();
          if (compartments_.insert(next).second) AddCompartment(reading_.Get(next));
        }
      } else if (instance.Find("DATUM_REFERENCE") != nullptr ||
                 instance.Find("REFERENCED_MODIFIED_DATUM") != nullptr) {
        const double precedence = instance.As("DATUM_REFERENCE").Number(0);
        single.emplace_back(static_cast<int>(std::clamp(precedence, 0.0, 1000.0)), id);
      } else {
        reading_.Skip(Severity::kLost, of_,
                      "its datum reference #" + std::to_string(id) + " is of an unknown kind");
      }
    }
    std::stable_sort(single.begin(), single.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& reference : single) AddReference(reading_.Get(reference.second));
    if (references_.empty()) return nullptr;
    auto& frame = reading_.part.Make<KOVAPMI_DRF>();
    standin::Edit(frame).references = references_;
    return &frame;
  }

 private:
  KOVAPMI_DREF& NewReference() {
    reading_.Spend(1);
    references_.push_back(&reading_.part.Make<KOVAPMI_DREF>());
    return *references_.back();
  }

  // A datum, or the common datum of several elements, each with modifiers of its own.
  void AddCompartment(const Instance& compartment) {
    KOVAPMI_DREF& reference = NewReference();
    // In a simple instance behind what every shape aspect has.
    const Record& record = compartment.As("GENERAL_DATUM_REFERENCE");
    const Value& base = record.At(record.count - 2);
    const Value& modifiers = record.At(record.count - 1);
    if (base.kind == Value::kTyped) {
      for (const Value& element : base.Untyped()) {
        const Record& own = reading_.Get(element.Reference()).As("GENERAL_DATUM_REFERENCE");
        AddDatum(reference, own.At(own.count - 2).Reference(),
                 {&own.At(own.count - 1), &modifiers});
      }
    } else {
      AddDatum(reference, base.Reference(), {&modifiers});
    }
  }

  void AddReference(const Instance& instance) {
    const Record* modified = instance.Find("REFERENCED_MODIFIED_DATUM");
    KOVAPMI_DREF& reference = NewReference();
    KOVAPMI_MODIFIED_DATUM* const datum =
        AddDatum(reference, instance.As("DATUM_REFERENCE").Reference(1), {});
    if (datum != nullptr && modified != nullptr) {
      AddModifier(*datum, modified->Enumeration(modified->count - 1));
    }
  }

  KOVAPMI_MODIFIED_DATUM* AddDatum(KOVAPMI_DREF& reference, Id id,
                                   std::initializer_list<const Value*> modifiers) {
    const auto found = reading_.annotations.find(id);
    if (found == reading_.annotations.end() || is_ATTRIB_KOVAPMI_DATUM(found->second) != 1) {
      reading_.Skip(Severity::kLost, of_,
                    "its datum #" + std::to_string(id) + " could not be read");
      return nullptr;
    }
    KOVAPMI_DATUM& datum = standin::DatumOf(static_cast<ATTRIB_KOVAPMI_DATUM&>(*found->second));
    auto& made = reading_.part.Make<KOVAPMI_MODIFIED_DATUM>();
    standin::Edit(made).datum = &datum;
    auto& fields = standin::Edit(reference);
    fields.datums.push_back(&made);
    reading_.Spend(1 + std::wcslen(datum.get_wlabel()) / 16);
    fields.note = fields.note.value_or(L"") + (fields.note ? L"-" : L"") + datum.get_wlabel();
    for (const Value* list : modifiers) {
      for (const Value& modifier : *list) AddModifier(made, modifier);
    }
    return &made;
  }

  void AddModifier(KOVAPMI_MODIFIED_DATUM& datum, const Value& modifier) {
    reading_.Spend(1);
    if (modifier.kind != Value::kReference) {
      return AddModifier(datum, modifier.Untyped().Text());
    }
    const Record& record =
        reading_.Get(modifier.Reference()).As("DATUM_REFERENCE_MODIFIER_WITH_VALUE");
    const std::string_view type = record.Enumeration(0);
    if (type != "PROJECTED") return AddModifier(datum, type);
    const Quantity length = reading_.units.Measure(record.Reference(1), false);
    reading_.part.AddModifier(datum, zone_mod_projected_zone, length.value);
  }

  void AddModifier(KOVAPMI_MODIFIED_DATUM& datum, std::string_view name) {
    for (const NamedModifier& known : kModifiers) {
      if (name == known.name) {
        reading_.part.AddModifier(datum, known.type);
        return;
      }
    }
    reading_.Skip(Severity::kReduced, of_, "the model has no datum modifier " + std::string(name));
  }

  Reading& reading_;
  Id of_;
  std::vector<KOVAPMI_DREF*> references_;
  std::unordered_set<Id> compartments_;  // each stands once in a system
};

}  // namespace

KOVAPMI_DRF* ReadFrame(Reading& reading, const Instance& tolerance) {
  const Record* own = tolerance.Find("GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE");
  // A simple instance has its datum references behind what all tolerances have.
  constexpr std::uint32_t kCommon = 4;
  const Record& first = tolerance.records.front();
  if (own == nullptr && tolerance.records.size() == 1 && first.count == kCommon + 1 &&
      first.At(kCommon).begin() != first.At(kCommon).end() &&
      first.At(kCommon).begin()->kind == Value::kReference) {
    own = &first;
  }
  if (own == nullptr) return nullptr;
  return FrameReader(reading, tolerance.id).Read(own->List(own->count - 1));
}

}  // namespace step

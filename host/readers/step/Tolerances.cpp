// Geometric tolerances (ISO 1101, ASME Y14.5): each instance is a row, and rows that a relationship
// joins are one tolerance.

#include <algorithm>

#include "readers/step/Reading.h"

namespace step {

namespace {

struct ToleranceKind {
  std::string_view entity;
  tol_type type;
};

constexpr ToleranceKind kKinds[] = {
    {"ANGULARITY_TOLERANCE", tol_angularity},
    {"CIRCULAR_RUNOUT_TOLERANCE", tol_circular_runout},
    {"COAXIALITY_TOLERANCE", tol_coaxiality},
    {"CONCENTRICITY_TOLERANCE", tol_concentricity},
    {"CYLINDRICITY_TOLERANCE", tol_cylindricity},
    {"FLATNESS_TOLERANCE", tol_flatness},
    {"LINE_PROFILE_TOLERANCE", tol_line_profile},
    {"PARALLELISM_TOLERANCE", tol_parallelism},
    {"PERPENDICULARITY_TOLERANCE", tol_perpendicularity},
    {"POSITION_TOLERANCE", tol_position},
    {"ROUNDNESS_TOLERANCE", tol_circularity},
    {"STRAIGHTNESS_TOLERANCE", tol_straightness},
    {"SURFACE_PROFILE_TOLERANCE", tol_surface_profile},
    {"SYMMETRY_TOLERANCE", tol_symmetry},
    {"TOTAL_RUNOUT_TOLERANCE", tol_total_runout},
};

// What a tolerance can be besides its kind; with these alone its kind is not stated.
constexpr std::string_view kAspects[] = {"GEOMETRIC_TOLERANCE",
                                         "GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE",
                                         "GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT",
                                         "GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT",
                                         "GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE",
                                         "GEOMETRIC_TOLERANCE_WITH_MODIFIERS",
                                         "MODIFIED_GEOMETRIC_TOLERANCE",
                                         "UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE"};

struct ZoneModifier {
  std::string_view name;
  zone_modifier_type type;
};

constexpr ZoneModifier kModifiers[] = {
    {"ANY_CROSS_SECTION", zone_mod_any_cross_section},
    {"COMMON_ZONE", zone_mod_common_zone},
    {"EACH_RADIAL_ELEMENT", zone_mod_each_radial_element},
    {"FREE_STATE", zone_mod_free_state},
    {"LEAST_MATERIAL_REQUIREMENT", zone_mod_least_material},
    {"LEAST_MATERIAL_CONDITION", zone_mod_least_material},
    {"MAJOR_DIAMETER", zone_mod_major_diameter},
    {"MAXIMUM_MATERIAL_REQUIREMENT", zone_mod_maximum_material},
    {"MAXIMUM_MATERIAL_CONDITION", zone_mod_maximum_material},
    {"MINOR_DIAMETER", zone_mod_minor_diameter},
    {"PITCH_DIAMETER", zone_mod_pitch_diameter},
    {"REGARDLESS_OF_FEATURE_SIZE", zone_mod_regardless_of_feature_size},
    {"STATISTICAL_TOLERANCE", zone_mod_statistical_tolerance},
    {"TANGENT_PLANE", zone_mod_tangent_plane},
};

class TolerancesReader {
 public:
  explicit TolerancesReader(Reading& reading) : reading_(reading) {}

  void Read() {
    std::vector<Id> all;
    for (const ToleranceKind& kind : kKinds) {
      for (const Id id : reading_.file.Of(kind.entity))
        kinds_.emplace(id, kind.type).second ? all.push_back(id) : void();
    }
    for (const std::string_view aspect : kAspects) {
      for (const Id id : reading_.file.Of(aspect)) {
        if (kinds_.emplace(id, tol_unknown).second) all.push_back(id);
      }
    }
    std::sort(all.begin(), all.end(),
              [this](Id a, Id b) { return reading_.file.OffsetOf(a) < reading_.file.OffsetOf(b); });
    FindRows(all);
    for (const Id id : all) {
      if (!IsOfProduct(id)) continue;
      reading_.Count("geometricToleranceRows");
      if (isLower_.count(id) != 0) continue;
      reading_.Count("geometricTolerances");
      reading_.Try(id, [&] { ReadTolerance(id); });
    }
  }

 private:
  bool IsOfProduct(Id id) {
    try {
      return reading_.IsOfProduct(reading_.Get(id).As("GEOMETRIC_TOLERANCE").Reference(3), id);
    } catch (const Unreadable&) {
      return true;
    }
  }

  // The upper row relates to the lower one; which is the third is told by chains.
  void FindRows(const std::vector<Id>& all) {
    for (const Id id : reading_.file.Of("GEOMETRIC_TOLERANCE_RELATIONSHIP")) {
      reading_.Try(id, [&] {
        const Record& record = reading_.Get(id).records.front();
        const Id upper = record.Reference(2);
        const Id lower = record.Reference(3);
        if (kinds_.count(upper) == 0 || kinds_.count(lower) == 0 || upper == lower) {
          throw Unreadable(id, "it does not join two tolerances");
        }
        // Frames that hold at once or one before the other are no segments of one.
        const std::string name = record.Text(0);
        if (!name.empty() && name != "composite") {
          reading_.Skip(Severity::kReduced, id,
                        "its tolerances' relation '" + name + "' is left out");
          return;
        }
        if (!isLower_.insert(lower).second) {
          throw Unreadable(id, "its lower row is one already");
        }
        lower_[upper].push_back(lower);
      });
    }
    // A ring has no upper row; the first of it in the file counts as that.
    std::unordered_set<Id> reached;
    for (const Id id : all) {
      if (isLower_.count(id) == 0) Reach(id, reached);
    }
    for (const Id id : all) {
      if (reached.count(id) != 0) continue;
      reading_.Skip(Severity::kReduced, id, "its rows are joined in a ring");
      isLower_.erase(id);
      Reach(id, reached);
    }
  }

  void Reach(Id upper, std::unordered_set<Id>& reached) const {
    std::vector<Id> pending = {upper};
    while (!pending.empty()) {
      const Id next = pending.back();
      pending.pop_back();
      const auto more = lower_.find(next);
      if (!reached.insert(next).second || more == lower_.end()) continue;
      pending.insert(pending.end(), more->second.begin(), more->second.end());
    }
  }

  void ReadTolerance(Id id) {
    const Record& common = reading_.Get(id).As("GEOMETRIC_TOLERANCE");
    const std::vector<ENTITY*> entities = reading_.EntitiesOf(common.Reference(3));
    auto& tolerance = reading_.part.Make<ATTRIB_KOVAPMI_GEOM_TOL>(&reading_.Carrier(entities));
    reading_.Describe(tolerance, id, "geometric tolerance", common.Text(0));
    tolerance_ = &tolerance;
    auto& fields = standin::Edit(tolerance);
    fields.type = kinds_.at(id);
    fields.all_around = reading_.Is(common.Reference(3), "ALL_AROUND_SHAPE_ASPECT") ? 1 : 0;
    for (const char* part : {"ALL_OVER_SHAPE_ASPECT", "BETWEEN_SHAPE_ASPECT"}) {
      if (!reading_.Is(common.Reference(3), part)) continue;
      reading_.Skip(Severity::kReduced, common.Reference(3), "the model has no mark for it",
                    &tolerance);
    }
    if (fields.type == tol_unknown) {
      reading_.Skip(Severity::kReduced, id, "its kind is not stated", &tolerance);
    }
    std::vector<Id> pending = {id};
    std::unordered_set<Id> seen = {id};
    while (!pending.empty()) {
      const Id next = pending.back();
      pending.pop_back();
      reading_.annotations[next] = &tolerance;
      reading_.Try(next, [&] { fields.rows.push_back(&ReadRow(reading_.Get(next))); });
      const auto lower = lower_.find(next);
      if (lower == lower_.end()) continue;
      for (auto row = lower->second.rbegin(); row != lower->second.rend(); ++row) {
        if (seen.insert(*row).second) pending.push_back(*row);
      }
    }
  }

  double Length(Id measure, const char* field) {
    const Quantity quantity = reading_.units.Measure(measure, false);
    reading_.Write(*tolerance_, field, quantity);
    return quantity.value;
  }

  KOVAPMI_GEOM_TOL_ROW& ReadRow(const Instance& instance) {
    auto& row = reading_.part.Make<KOVAPMI_GEOM_TOL_ROW>();
    auto& fields = standin::Edit(row);
    const Id magnitude = instance.As("GEOMETRIC_TOLERANCE").Reference(2);
    if (magnitude == 0) {
      reading_.Skip(Severity::kLost, instance.id, "it has no magnitude", tolerance_);
    } else {
      fields.magnitude = Length(magnitude, "magnitude");
    }
    ReadUnit(instance, fields);
    fields.frame = ReadFrame(reading_, instance);
    AddModifiers(instance, row);
    ListUnread(instance);
    ReadZones(reading_, instance.id, row, *tolerance_);
    return row;
  }

  void ListUnread(const Instance& instance) {
    for (const Record& record : instance.records) {
      const bool isAspect =
          std::find(std::begin(kAspects), std::end(kAspects), record.name) != std::end(kAspects);
      const bool isKind =
          std::any_of(std::begin(kKinds), std::end(kKinds),
                      [&](const ToleranceKind& kind) { return kind.entity == record.name; });
      if (isAspect || isKind) continue;
      reading_.Skip(Severity::kReduced, instance.id, std::string(record.name) + " is left out",
                    tolerance_);
    }
  }

  // A tolerance on a unit basis: a length, or an area of a kind and, for rectangles, a second side.
  void ReadUnit(const Instance& instance, KOVAPMI_GEOM_TOL_ROW::fields& row) {
    const Record* const unit = instance.Find("GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT");
    if (unit == nullptr) return;
    row.rate_unit1 = Length(unit->Reference(unit->count - 1), "rateUnit1");
    const Record* const area = instance.Find("GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT");
    if (area == nullptr) return;
    const std::string_view kind = area->Enumeration(area->count - 2);
    const Id second = area->Reference(area->count - 1);
    if (kind == "SQUARE") row.rate_unit2 = row.rate_unit1;
    if (kind == "RECTANGULAR" && second != 0) row.rate_unit2 = Length(second, "rateUnit2");
    if (kind != "SQUARE" && kind != "RECTANGULAR") {
      reading_.Skip(Severity::kReduced, instance.id,
                    "that its unit area is " + std::string(kind) + " is left out", tolerance_);
    }
  }

  void AddModifiers(const Instance& instance, KOVAPMI_GEOM_TOL_ROW& row) {
    if (const Record* record = instance.Find("GEOMETRIC_TOLERANCE_WITH_MODIFIERS")) {
      const Value& list = record->List(record->count - 1);
      const bool reciprocity = std::any_of(list.begin(), list.end(), [](const Value& modifier) {
        return modifier.Text() == "RECIPROCITY_REQUIREMENT";
      });
      for (const Value& modifier : list)
        AddModifier(instance.id, modifier.Text(), reciprocity, row);
    }
    if (const Record* record = instance.Find("MODIFIED_GEOMETRIC_TOLERANCE")) {
      AddModifier(instance.id, record->Enumeration(record->count - 1), false, row);
    }
    if (const Record* record = instance.Find("GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE")) {
      reading_.part.AddModifier(row, zone_mod_maximum_tolerance,
                                Length(record->Reference(record->count - 1), "maximum"));
    }
    if (const Record* record = instance.Find("UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE")) {
      reading_.part.AddModifier(row, zone_mod_unequally_disposed,
                                Length(record->Reference(record->count - 1), "displacement"));
    }
  }

  // Reciprocity goes with the material requirement beside it.
  void AddModifier(Id id, std::string_view name, bool reciprocity, KOVAPMI_GEOM_TOL_ROW& row) {
    if (name == "RECIPROCITY_REQUIREMENT") return;
    for (const ZoneModifier& known : kModifiers) {
      if (name != known.name) continue;
      zone_modifier_type type = known.type;
      if (reciprocity && type == zone_mod_maximum_material) {
        type = zone_mod_maximum_material_reciprocity;
      }
      if (reciprocity && type == zone_mod_least_material) {
        type = zone_mod_least_material_reciprocity;
      }
      reading_.part.AddModifier(row, type);
      return;
    }
    reading_.Skip(Severity::kReduced, id, "the model has no modifier " + std::string(name),
                  tolerance_);
  }

  Reading& reading_;
  std::unordered_map<Id, tol_type> kinds_;
  std::unordered_map<Id, std::vector<Id>> lower_;  // the rows below one, in the order of the file
  std::unordered_set<Id> isLower_;
  const ENTITY* tolerance_ = nullptr;
};

}  // namespace

void ReadTolerances(Reading& reading) { TolerancesReader(reading).Read(); }

}  // namespace step

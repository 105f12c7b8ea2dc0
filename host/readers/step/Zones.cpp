// Tolerance zones: their shape, and how far they are projected (ISO 1101, ASME Y14.5).

#include <algorithm>
#include <utility>

#include "readers/step/Reading.h"

namespace step {

namespace {

mod_dia_type ZoneShape(const std::string& form) {
  if (form == "cylindrical or circular" || form == "within a cylinder" ||
      form == "within a circle") {
    return mod_dia_diametrical;
  }
  return form == "spherical" || form == "within a sphere" ? mod_dia_spherical : mod_dia_none;
}

bool EndsWith(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

// A zone by itself, or one with a datum, a direction or an orientation.
bool IsZone(Reading& reading, Id id) {
  constexpr std::string_view kZones[] = {"TOLERANCE_ZONE", "TOLERANCE_ZONE_WITH_DATUM",
                                         "DIRECTED_TOLERANCE_ZONE", "ORIENTED_TOLERANCE_ZONE"};
  return std::any_of(std::begin(kZones), std::end(kZones),
                     [&](std::string_view zone) { return reading.Is(id, zone); });
}

// What defines a zone further; of that the model has the length of a projected one.
void ReadDefinition(Reading& reading, Id id, KOVAPMI_GEOM_TOL_ROW& row, const ENTITY& tolerance) {
  const Record& definition = reading.Get(id).records.front();
  const std::string_view projected = "PROJECTED_ZONE_DEFINITION";
  if (definition.name.substr(0, projected.size()) == projected) {
    const Quantity length = reading.units.Measure(definition.Reference(3), false);
    reading.Write(tolerance, "projected", length);
    reading.part.AddModifier(row, zone_mod_projected_zone, length.value);
    if (definition.name == projected) return;
  } else if (!EndsWith(definition.name, "ZONE_DEFINITION")) {
    return;
  }
  reading.Skip(Severity::kReduced, id, "the zone's further definition is left out", &tolerance);
}

}  // namespace

void ReadZones(Reading& reading, Id tolerance, KOVAPMI_GEOM_TOL_ROW& row,
               const ENTITY& annotation) {
  bool isFirst = true;
  for (const Id zone : reading.file.ReferrersOf(tolerance)) {
    if (!IsZone(reading, zone)) continue;
    if (!std::exchange(isFirst, false)) {
      reading.Skip(Severity::kReduced, zone, "its second zone is left out", &annotation);
      continue;
    }
    // In a simple instance behind what every shape aspect has.
    const Instance& instance = reading.Get(zone);
    const Record& record = instance.As("TOLERANCE_ZONE");
    const Id formId = record.Reference(record.count == 2 ? 1 : 5);
    const std::string form = reading.Spend(reading.Get(formId).records.front().Text(0));
    standin::Edit(row).zone_shape = ZoneShape(form);
    // Zones between lines or surfaces are those without a sign.
    if (standin::Edit(row).zone_shape == mod_dia_none && form.substr(0, 7) != "between" &&
        !form.empty()) {
      reading.Skip(Severity::kReduced, zone, "that the zone is '" + form + "' is left out",
                   &annotation);
    }
    for (const Record& part : instance.records) {
      if (part.name == "TOLERANCE_ZONE" || part.name == "SHAPE_ASPECT") continue;
      reading.Skip(Severity::kReduced, zone,
                   part.name == "TOLERANCE_ZONE_WITH_DATUM"
                       ? "the zone's datum is left out"
                       : std::string(part.name) + " is left out",
                   &annotation);
    }
    const std::vector<Id> users = reading.file.ReferrersOf(zone);
    reading.Spend(users.size() / 10);
    for (const Id user : users) {
      ReadDefinition(reading, user, row, annotation);
    }
  }
}

}  // namespace step

// Geometric tolerances, with a row for each segment.

#include "readers/qif/Reading.h"

namespace qif {

namespace {

struct ToleranceKind {
  std::string_view name;
  tol_type type;
};

constexpr ToleranceKind kKinds[] = {
    {"Straightness", tol_straightness},
    {"Flatness", tol_flatness},
    {"Circularity", tol_circularity},
    {"Cylindricity", tol_cylindricity},
    {"Conicity", tol_conicity},
    {"Sphericity", tol_sphericity},
    {"Ellipticity", tol_ellipticity},
    {"Toroidicity", tol_toroidicity},
    {"OtherForm", tol_other_form},
    {"LineProfile", tol_line_profile},
    {"SurfaceProfile", tol_surface_profile},
    {"SurfaceProfileNonUniform", tol_surface_profile},
    {"PointProfile", tol_point_profile},
    {"Angularity", tol_angularity},
    {"Perpendicularity", tol_perpendicularity},
    {"Parallelism", tol_parallelism},
    {"Position", tol_position},
    {"Concentricity", tol_concentricity},
    {"Coaxiality", tol_coaxiality},
    {"Symmetry", tol_symmetry},
    {"CircularRunout", tol_circular_runout},
    {"TotalRunout", tol_total_runout},
};

struct FieldModifier {
  const char* field;
  zone_modifier_type type;
};

// Modifiers that a field turns on.
constexpr FieldModifier kFlags[] = {
    {"FreeState", zone_mod_free_state},
    {"TangentPlane", zone_mod_tangent_plane},
    {"StatisticalCharacteristic", zone_mod_statistical_tolerance},
    {"CommonZone", zone_mod_common_zone},
    {"EachRadialElement", zone_mod_each_radial_element},
    {"OrientationOnly", zone_mod_orientation_only},
};

// Modifiers whose magnitude a field has. An outer disposition is the part of the zone outside the
// material, an unequally disposed zone (ISO) the offset of its middle.
constexpr FieldModifier kLengths[] = {
    {"MaximumToleranceValue", zone_mod_maximum_tolerance},
    {"ProjectedToleranceZoneValue", zone_mod_projected_zone},
    {"ProjectedToleranceZone", zone_mod_projected_zone},
    {"OuterDisposition", zone_mod_unequally_disposed},
    {"UnequallyDisposedZone", zone_mod_unequally_disposed},
};

// All around is a flag, any other extent a text below the frame.
struct Extent {
  bool allAround = false;
  const wchar_t* text = L"";
};
constexpr Word<Extent> kExtents[] = {
    {"UNDEFINED", {}},
    {"ALL_AROUND", {true}},
    {"ALL_AROUND_THIS_SIDE", {true, L"ALL AROUND THIS SIDE"}},
    {"ALL_OVER", {false, L"ALL OVER"}},
    {"ALL_OVER_THIS_SIDE", {false, L"ALL OVER THIS SIDE"}},
};

// The parts of the names of fields that a row may have several of.
constexpr std::string_view kPerUnit = "ToleranceZonePerUnit";
constexpr std::string_view kSegment = "CompositeSegment";
constexpr std::size_t kMostRows = 4;

class ToleranceReader {
 public:
  ToleranceReader(Reading& reading, const Characteristic& characteristic)
      : reading_(reading),
        nominal_(characteristic.nominal),
        definition_(characteristic.definition) {}

  ENTITY* Read(tol_type type) {
    std::vector<KOVAPMI_GEOM_TOL_ROW*> rows = {&ReadRow(definition_, "")};
    for (const Element segment : definition_.AllWith(kSegment)) {
      if (rows.size() == kMostRows) {
        reading_.Skip(Severity::kLost, segment, "a composite tolerance has four segments at most");
        continue;
      }
      Fields fields(segment);
      rows.push_back(&ReadRow(fields, "rows[" + std::to_string(rows.size()) + "]."));
      fields.Pass({"Name", "CharacteristicDesignator"});
      reading_.SkipRest(fields);
    }
    const std::vector<ENTITY*> entities = reading_.AssociatedEntities(nominal_);
    auto& tolerance = reading_.part.Make<ATTRIB_KOVAPMI_GEOM_TOL>(&reading_.Carrier(entities));
    auto& fields = standin::Edit(tolerance);
    fields.type = type;
    fields.rows = std::move(rows);
    ReadExtent(fields);
    if (const Element angle = nominal_["Angle"]) {
      reading_.Skip(Severity::kReduced, angle,
                    "the model has no place for it: " + Quote(TextOf(angle)));
    }
    return &tolerance;
  }

 private:
  // One row, from a definition or from one of its further segments. The report has its values at
  // `at`.
  KOVAPMI_GEOM_TOL_ROW& ReadRow(Fields& source, const std::string& at) {
    auto& row = reading_.part.Make<KOVAPMI_GEOM_TOL_ROW>();
    auto& fields = standin::Edit(row);
    const Element value = source["ToleranceValue"];
    if (value) fields.magnitude = Length(value, at + "magnitude");
    bool hasPerUnit = false;
    for (const Element perUnit : source.AllWith(kPerUnit)) {
      if (hasPerUnit) {
        reading_.Skip(Severity::kLost, perUnit, "the model has one unit basis a row");
      } else {
        ReadPerUnit(perUnit, bool(value), fields, at);
      }
      hasPerUnit = true;
    }
    if (!value && !hasPerUnit) throw Unreadable(source.Record(), "it has no tolerance value");
    AddModifiers(source, row, at);
    ReadShape(source, row);
    if (source["DatumReferenceFrameId"]) {
      Document::Entry& frame = reading_.document.RequireChild(
          source.Record(), "DatumReferenceFrameId", "DatumReferenceFrame");
      fields.frame = &reading_.Frame(frame, at + "frame.");
    }
    return row;
  }

  double Length(Element element, const std::string& field) {
    if (element.attribute("decimalPlaces")) {
      reading_.Skip(Severity::kReduced, element, "its number of decimal places is left out");
    }
    return reading_.Value(field, reading_.units.Length(element));
  }

  void ReadShape(Fields& source, KOVAPMI_GEOM_TOL_ROW& row) {
    Fields shape(source["ZoneShape"]);
    auto& fields = standin::Edit(row);
    for (const auto& [name, type] :
         {std::pair("PlanarZone", mod_dia_none), std::pair("DiametricalZone", mod_dia_diametrical),
          std::pair("SphericalZone", mod_dia_spherical)}) {
      Fields zone(shape[name]);
      if (zone.Record()) fields.zone_shape = type;
      reading_.SkipRest(zone);
    }
    Fields other(shape["NonDiametricalZone"]);
    if (reading_.Flag(other["BoundaryZone"])) reading_.part.AddModifier(row, zone_mod_boundary);
    reading_.SkipRest(other);
    for (const Element unknown : shape.Rest()) {
      reading_.Skip(Severity::kLost, unknown, "the model has no such zone");
    }
    reading_.SkipDoubled(shape);
  }

  // A tolerance on a unit basis refines the one on the whole, or stands alone.
  void ReadPerUnit(Element element, bool refines, KOVAPMI_GEOM_TOL_ROW::fields& row,
                   const std::string& at) {
    Fields perUnit(element);
    const double value =
        Length(perUnit["ToleranceValuePerUnit"], at + (refines ? "refinement" : "magnitude"));
    (refines ? row.refinement : row.magnitude) = value;
    std::vector<Quantity> rates;
    if (const Element angle = perUnit["UnitAngle"]) rates = {reading_.units.Angle(angle)};
    Fields rectangle(perUnit["RectangularUnitArea"]);
    Fields circle(perUnit["CircularUnitArea"]);
    for (const Element length :
         {perUnit["UnitLength"], rectangle["RectangularUnitAreaLength"],
          rectangle["RectangularUnitAreaWidth"], circle["CircularUnitAreaDiameter"]}) {
      if (length) rates.push_back(reading_.units.Length(length));
    }
    if (!rates.empty()) row.rate_unit1 = reading_.Value(at + "rateUnit1", rates[0]);
    if (rates.size() > 1) row.rate_unit2 = reading_.Value(at + "rateUnit2", rates[1]);
    if (rates.size() > 2) reading_.Skip(Severity::kLost, element, "the model has two rates a row");
    for (const Fields* record : {&perUnit, &rectangle, &circle}) reading_.SkipRest(*record);
  }

  void AddModifiers(Fields& source, KOVAPMI_GEOM_TOL_ROW& row, const std::string& at) {
    const auto add = [&](zone_modifier_type type, Element length = Element()) {
      if (!length) return reading_.part.AddModifier(row, type), void();
      const std::size_t index = standin::Edit(row).modifiers.size();
      const std::string field = at + "modifiers[" + std::to_string(index) + "].magnitude";
      reading_.part.AddModifier(row, type, Length(length, field));
    };
    const zone_modifier_type material =
        reading_.MeaningOf(source["MaterialCondition"], kMaterialConditions, zone_mod_none);
    if (material != zone_mod_none) add(material);
    for (const auto& [field, type] : kFlags) {
      if (reading_.Flag(source[field])) add(type);
    }
    for (const auto& [field, type] : kLengths) {
      if (const Element length = source[field]) add(type, length);
    }
  }

  void ReadExtent(ATTRIB_KOVAPMI_GEOM_TOL::fields& tolerance) {
    Fields fields(definition_["Extent"]);
    const Extent extent = reading_.MeaningOf(fields["ExtentEnum"], kExtents, Extent());
    if (extent.allAround) tolerance.all_around = 1;
    std::wstring text = extent.text;
    if (text.empty()) text = reading_.ShortText(fields["OtherExtent"]);
    reading_.SkipRest(fields);
    if (text.empty()) return;
    tolerance.note = &reading_.part.Make<KOVAPMI_NOTE>();
    standin::Edit(*tolerance.note).lower = text;
  }

  Reading& reading_;
  Fields& nominal_;
  Fields& definition_;
};

}  // namespace

ENTITY* ReadTolerance(Reading& reading, const Characteristic& characteristic) {
  for (const auto& [name, type] : kKinds) {
    if (name == characteristic.kind) return ToleranceReader(reading, characteristic).Read(type);
  }
  return nullptr;
}

}  // namespace qif

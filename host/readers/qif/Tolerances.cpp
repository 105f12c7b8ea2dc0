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

zone_modifier_type MaterialModifier(std::string_view condition) {
  if (condition == "MAXIMUM") return zone_mod_maximum_material;
  if (condition == "LEAST") return zone_mod_least_material;
  if (condition == "REGARDLESS") return zone_mod_regardless_of_feature_size;
  if (condition == "MAXIMUM_RPR") return zone_mod_maximum_material_reciprocity;
  if (condition == "LEAST_RPR") return zone_mod_least_material_reciprocity;
  return zone_mod_none;
}

bool IsPerUnit(Element field) {
  constexpr std::string_view kStart = "ToleranceZonePerUnit";
  return NameOf(field).substr(0, kStart.size()) == kStart;
}

bool IsSegment(Element field) {
  return NameOf(field).find("CompositeSegment") != std::string_view::npos;
}

class ToleranceReader {
 public:
  ToleranceReader(Reading& reading, const Characteristic& characteristic)
      : reading_(reading),
        nominal_(characteristic.nominal),
        definition_(characteristic.definition),
        firstUse_(characteristic.firstUse) {}

  ENTITY* Read(tol_type type) {
    std::vector<KOVAPMI_GEOM_TOL_ROW*> rows = {&ReadRow(definition_)};
    for (const Element field : definition_.children()) {
      if (IsSegment(field)) rows.push_back(&ReadRow(field));
    }
    SkipUnknownOfNominal(reading_, nominal_, {});

    const std::vector<ENTITY*> entities = reading_.AssociatedEntities(nominal_);
    auto& tolerance = reading_.part.Make<ATTRIB_KOVAPMI_GEOM_TOL>(&reading_.Carrier(entities));
    auto& fields = standin::Edit(tolerance);
    fields.type = type;
    fields.rows = std::move(rows);
    ReadExtent(fields);
    return &tolerance;
  }

 private:
  // One row, from a definition or from one of its further segments.
  KOVAPMI_GEOM_TOL_ROW& ReadRow(Element source) {
    auto& row = reading_.part.Make<KOVAPMI_GEOM_TOL_ROW>();
    auto& fields = standin::Edit(row);
    const Element value = Child(source, "ToleranceValue");
    if (value) fields.magnitude = reading_.units.Length(value).value;
    bool hasPerUnit = false;
    for (const Element field : source.children()) {
      if (!IsPerUnit(field)) continue;
      if (!hasPerUnit) ReadPerUnit(field, bool(value), fields);
      hasPerUnit = true;
    }
    if (!value && !hasPerUnit) throw Unreadable(source, "it has no tolerance value");

    const Element shape = Child(source, "ZoneShape");
    if (Child(shape, "DiametricalZone")) fields.zone_shape = mod_dia_diametrical;
    if (Child(shape, "SphericalZone")) fields.zone_shape = mod_dia_spherical;
    AddModifiers(source, row);
    if (Child(source, "DatumReferenceFrameId")) {
      fields.frame = &reading_.Frame(
          reading_.document.RequireChild(source, "DatumReferenceFrameId", "DatumReferenceFrame"));
    }
    if (firstUse_) SkipRest(source);
    return row;
  }

  // A tolerance on a unit basis refines the one on the whole, or stands alone.
  void ReadPerUnit(Element perUnit, bool refines, KOVAPMI_GEOM_TOL_ROW::fields& row) {
    const Units& units = reading_.units;
    const double value = units.Length(Child(perUnit, "ToleranceValuePerUnit")).value;
    (refines ? row.refinement : row.magnitude) = value;
    std::vector<double> rates;
    if (const Element angle = Child(perUnit, "UnitAngle")) rates = {units.Angle(angle).value};
    const Element rectangle = Child(perUnit, "RectangularUnitArea");
    for (const Element length :
         {Child(perUnit, "UnitLength"), Child(rectangle, "RectangularUnitAreaLength"),
          Child(rectangle, "RectangularUnitAreaWidth"),
          Child(Child(perUnit, "CircularUnitArea"), "CircularUnitAreaDiameter")}) {
      if (length) rates.push_back(units.Length(length).value);
    }
    if (!rates.empty()) row.rate_unit1 = rates[0];
    if (rates.size() > 1) row.rate_unit2 = rates[1];
  }

  void AddModifiers(Element source, KOVAPMI_GEOM_TOL_ROW& row) {
    const zone_modifier_type material = MaterialModifier(WordOf(source, "MaterialCondition"));
    if (material != zone_mod_none) reading_.part.AddModifier(row, material);
    for (const auto& [field, type] : kFlags) {
      if (IsTrue(source, field)) reading_.part.AddModifier(row, type);
    }
    for (const auto& [field, type] : kLengths) {
      if (const Element length = Child(source, field)) {
        reading_.part.AddModifier(row, type, reading_.units.Length(length).value);
      }
    }
    if (IsTrue(Child(Child(source, "ZoneShape"), "NonDiametricalZone"), "BoundaryZone")) {
      reading_.part.AddModifier(row, zone_mod_boundary);
    }
  }

  void SkipRest(Element source) {
    bool hasPerUnit = false;
    for (const Element field : source.children()) {
      if (!IsPerUnit(field)) continue;
      if (hasPerUnit) Skip(NameOf(field), "the model has one unit basis a row");
      hasPerUnit = true;
    }
    SkipUnknown(reading_, source, definition_,
                {"Name",
                 "CharacteristicDesignator",
                 "ToleranceValue",
                 "DatumReferenceFrameId",
                 "MaterialCondition",
                 "SizeCharacteristicDefinitionId",
                 "ZoneShape",
                 "Extent",
                 "FreeState",
                 "TangentPlane",
                 "StatisticalCharacteristic",
                 "CommonZone",
                 "EachRadialElement",
                 "OrientationOnly",
                 "MaximumToleranceValue",
                 "ProjectedToleranceZoneValue",
                 "ProjectedToleranceZone",
                 "OuterDisposition",
                 "UnequallyDisposedZone",
                 "ToleranceZonePerUnitLength",
                 "ToleranceZonePerUnitArea",
                 "ToleranceZonePerUnitAngle",
                 "ToleranceZonePerUnitArcLength",
                 "ToleranceZonePerUnitPolarArea",
                 "SecondCompositeSegmentPositionDefinition",
                 "ThirdCompositeSegmentPositionDefinition",
                 "FourthCompositeSegmentPositionDefinition",
                 "SecondCompositeSegmentProfileDefinition",
                 "ThirdCompositeSegmentProfileDefinition",
                 "FourthCompositeSegmentProfileDefinition",
                 "SecondCompositeSegmentSymmetryDefinition",
                 "ThirdCompositeSegmentSymmetryDefinition"});
  }

  void Skip(std::string_view kind, const std::string& reason) {
    reading_.Skip(kind, definition_.attribute("id").value(), reason);
  }

  // All around is a flag; any other extent is a text below the frame.
  void ReadExtent(ATTRIB_KOVAPMI_GEOM_TOL::fields& tolerance) {
    const Element extent = Child(definition_, "Extent");
    std::string text(WordOf(extent, "ExtentEnum"));
    if (text == "ALL_AROUND" || text == "ALL_AROUND_THIS_SIDE") tolerance.all_around = 1;
    if (text == "ALL_AROUND" || text == "UNDEFINED") text.clear();
    for (char& c : text) c = c == '_' ? ' ' : c;
    if (text.empty()) text = WordOf(extent, "OtherExtent");
    if (text.empty()) return;
    tolerance.note = &reading_.part.Make<KOVAPMI_NOTE>();
    standin::Edit(*tolerance.note).lower = Wide(text);
  }

  Reading& reading_;
  Element nominal_;
  Element definition_;
  bool firstUse_;
};

}  // namespace

ENTITY* ReadTolerance(Reading& reading, const Characteristic& characteristic) {
  for (const auto& [name, type] : kKinds) {
    if (name == characteristic.kind) return ToleranceReader(reading, characteristic).Read(type);
  }
  return nullptr;
}

}  // namespace qif

// Datum definitions, datum targets and datum reference frames.

#include <algorithm>

#include "QifReading.h"

namespace qif {

namespace {

std::string_view LabelOf(Element element, std::string_view text) {
  const std::string_view label = element.attribute("label").value();
  return label.empty() ? text : label;
}

// --- Targets -------------------------------------------------------------------------------------

// Where a target lies: its zone, else the feature that it is on.
struct TargetPlace {
  datum_target_type type = datum_target_unknown;
  std::vector<QENposition> points;
  std::wstring note;  // the size of an area, as in the upper half of the symbol
};

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

std::wstring SizeOf(Element size) { return Wide(TextOf(size)); }

void PlaceOnZone(Reading& reading, Element zone, TargetPlace& place) {
  const std::string_view kind = NameOf(zone);
  const Units& units = reading.units;
  if (kind == "FeatureZonePoint") {
    place.type = datum_target_point;
    Element point = Child(zone, "Point");
    if (!point) {
      Element reference = Child(zone, "PointId");
      if (const Element id = Child(zone, "VertexId")) {
        const Document::Entry* const vertex = reading.document.Find(id);
        if (vertex != nullptr) reference = Child(Child(vertex->element, "Point"), "Id");
      }
      const Document::Entry* const entry = reading.document.Find(reference);
      if (entry != nullptr) point = Child(entry->element, "XYZ");
    }
    if (point) place.points = {units.Point(point)};
  } else if (StartsWith(kind, "FeatureZoneCurve")) {
    place.type = kind == "FeatureZoneCurveCircular" ? datum_target_circle : datum_target_line;
    if (const Element line = Child(zone, "Line")) {
      place.points = {units.Point(Child(line, "StartPoint")), units.Point(Child(line, "EndPoint"))};
    }
  } else {
    place.type = datum_target_area;
    if (kind == "FeatureZoneAreaCircular") place.type = datum_target_circle;
    if (kind == "FeatureZoneAreaRectangular") place.type = datum_target_rectangle;
  }
  for (const char* round : {"Circle", "Cylinder", "Sphere"}) {
    const Element shape = Child(zone, round);
    if (!shape) continue;
    place.points = {units.Point(Child(shape, "CenterPoint"))};
    place.note = L"\u2300" + SizeOf(Child(shape, "Diameter"));
  }
  if (const Element rectangle = Child(zone, "Rectangle")) {
    const Element length = Child(rectangle, "Length");
    const Element width = Child(rectangle, "Width");
    const QENposition corner = units.Point(Child(rectangle, "CornerPoint"));
    const QENvector along = units.Vector(Child(rectangle, "LengthDirection"));
    const QENvector across = units.Vector(Child(rectangle, "WidthDirection"));
    place.points = {
        corner, corner + (units.Length(length).value * along + units.Length(width).value * across)};
    place.note = SizeOf(length) + L"x" + SizeOf(width);
  }
}

// A target without a zone takes the whole of its feature.
void PlaceOnFeature(Reading& reading, Element feature, TargetPlace& place) {
  const std::string_view kind = NameOf(feature);
  place.type = datum_target_area;
  if (StartsWith(kind, "Line")) place.type = datum_target_line;
  if (StartsWith(kind, "Circle")) place.type = datum_target_circle;
  if (StartsWith(kind, "Point")) {
    place.type = datum_target_point;
    if (const Element location = Child(feature, "Location")) {
      place.points = {reading.units.Point(location)};
    }
  }
}

void ReadTarget(Reading& reading, Element element) {
  TargetPlace place;
  std::vector<ENTITY*> entities;
  if (const Element id = Child(element, "TargetZoneId")) {
    const Document::Entry* const zone = reading.document.Find(id);
    if (zone != nullptr) {
      PlaceOnZone(reading, zone->element, place);
      if (const Element vertex = Child(zone->element, "VertexId")) {
        if (ENTITY* entity = reading.EntityAt(vertex, element)) entities.push_back(entity);
      }
      for (const char* list : {"EdgeIds", "FaceIds"}) {
        for (ENTITY* entity : reading.EntitiesOf(Child(zone->element, list), element)) {
          entities.push_back(entity);
        }
      }
    } else {
      reading.Skip(element, "its zone " + std::string(TextOf(id)) + " does not exist");
    }
  }
  if (entities.empty()) entities = reading.AssociatedEntities(element);
  if (place.type == datum_target_unknown) {
    const std::vector<Document::Entry*> features = reading.FeaturesOf(element);
    if (!features.empty()) PlaceOnFeature(reading, features.front()->element, place);
  }
  SkipUnknown(reading, element, element, {"DatumTargetLabel", "FeatureNominalId", "TargetZoneId"});

  const std::string_view label = TextOf(element, "DatumTargetLabel");
  auto& attribute =
      reading.part.AddDatumTarget(reading.Carrier(entities), Wide(label).c_str(), nullptr);
  auto& target = standin::Edit(standin::TargetOf(attribute));
  target.type = place.type;
  if (entities.empty()) target.geometry = nullptr;
  if (!place.note.empty()) target.note = place.note;
  if (!place.points.empty()) target.position1 = &reading.part.Make<APOINT>(place.points[0]);
  if (place.points.size() > 1) target.position2 = &reading.part.Make<APOINT>(place.points[1]);
  reading.document.EntryOf(element).entity = &attribute;
  reading.Describe(attribute, element, "datum target", LabelOf(element, label));
}

// --- Datums --------------------------------------------------------------------------------------

void ReadDatum(Reading& reading, Element element) {
  std::vector<ATTRIB_KOVAPMI_DATUM_TARGET*> targets;
  for (const Element reference : Child(element, "DatumTargetIds").children()) {
    const Document::Entry* const entry = reading.document.Find(reference);
    ENTITY* const entity = entry == nullptr ? nullptr : entry->entity;
    if (is_ATTRIB_KOVAPMI_DATUM_TARGET(entity) == 1) {
      targets.push_back(static_cast<ATTRIB_KOVAPMI_DATUM_TARGET*>(entity));
    } else {
      reading.Skip(element, "its target " + std::string(TextOf(reference)) + " is not there");
    }
  }
  std::vector<ENTITY*> entities = reading.AssociatedEntities(element);
  // A datum that names no feature lies where its targets lie.
  if (entities.empty()) {
    for (const auto* target : targets) {
      if (reading.inBody.count(target->owner()) != 0) entities.push_back(target->owner());
    }
  }
  const std::string_view label = TextOf(element, "DatumLabel");
  auto& attribute = reading.part.AddDatum(reading.Carrier(entities), Wide(label).c_str());
  for (auto* target : targets) {
    standin::Edit(standin::DatumOf(attribute)).targets.push_back(&standin::TargetOf(*target));
  }
  reading.document.EntryOf(element).entity = &attribute;
  reading.Describe(attribute, element, "datum", LabelOf(element, label));
}

// --- Frames --------------------------------------------------------------------------------------

struct NamedModifier {
  std::string_view name;
  zone_modifier_type type;
};

constexpr NamedModifier kDatumModifiers[] = {
    {"MAXIMUM", zone_mod_maximum_material},
    {"LEAST", zone_mod_least_material},
    {"REGARDLESS", zone_mod_regardless_of_feature_size},
    {"MAXIMUM_RPR", zone_mod_maximum_material_reciprocity},
    {"LEAST_RPR", zone_mod_least_material_reciprocity},
    {"ACS", zone_mod_any_cross_section},
    {"ALS", zone_mod_any_longitudinal_section},
    {"SCS", zone_mod_specific_cross_section},
    {"PD", zone_mod_pitch_diameter},
    {"MD", zone_mod_major_diameter},
    {"LD", zone_mod_minor_diameter},
    {"PT", zone_mod_point},
    {"SL", zone_mod_straight_line},
    {"PL", zone_mod_plane},
};

constexpr NamedModifier kDatumFlags[] = {
    {"ContactingFeature", zone_mod_contacting_feature},
    {"DistanceVariable", zone_mod_distance_variable},
    {"ConstrainOrientation", zone_mod_orientation_only},
};

void AddDatumModifiers(Reading& reading, Element simple, Element frame,
                       KOVAPMI_MODIFIED_DATUM& modified) {
  for (const char* field :
       {"MaterialModifier", "DiameterModifier", "SectionModifier", "ReducedDatum"}) {
    const std::string_view text = TextOf(simple, field);
    for (const auto& [name, type] : kDatumModifiers) {
      if (text == name) reading.part.AddModifier(modified, type);
    }
  }
  for (const auto& [name, type] : kDatumFlags) {
    if (IsTrue(simple, name)) reading.part.AddModifier(modified, type);
  }
  if (IsTrue(Child(simple, "DatumTranslation"), "DatumTranslationAllowed")) {
    reading.part.AddModifier(modified, zone_mod_translation);
  }
  if (const Element length = Child(simple, "ProjectedDatum")) {
    reading.part.AddModifier(modified, zone_mod_projected_zone, reading.units.Length(length).value);
  }
  if (Child(Child(simple, "DatumFeatureSimulatorModifier"), "BasicSize")) {
    reading.part.AddModifier(modified, zone_mod_basic);
  }
  SkipUnknown(reading, simple, frame,
              {"DatumDefinitionId", "MaterialModifier", "SizeCharacteristicDefinitionId",
               "ReferencedComponent", "SubstituteFeatureAlgorithm", "DatumTranslation",
               "ProjectedDatum", "DiameterModifier", "SectionModifier", "ContactingFeature",
               "DistanceVariable", "ReducedDatum", "ConstrainOrientation"});
}

int PrecedenceOf(Element datum) {
  constexpr std::string_view kOrder[] = {"PRIMARY",    "SECONDARY", "TERTIARY",
                                         "QUATERNARY", "QUINARY",   "SENARY"};
  const std::string_view text = TextOf(Child(datum, "Precedence"), "PrecedenceEnum");
  return static_cast<int>(std::find(std::begin(kOrder), std::end(kOrder), text) -
                          std::begin(kOrder));
}

// One compartment: a datum, or the common datum of several.
KOVAPMI_DREF& ReadCompartment(Reading& reading, Element compartment, Element frame) {
  auto& reference = reading.part.Make<KOVAPMI_DREF>();
  auto& fields = standin::Edit(reference);
  std::wstring label;
  for (Element inner = compartment; inner; inner = Next(inner, compartment)) {
    if (NameOf(inner) != "SimpleDatum") continue;
    const Document::Entry& datum = reading.document.RequireChild(inner, "DatumDefinitionId");
    if (is_ATTRIB_KOVAPMI_DATUM(datum.entity) != 1) {
      reading.Skip(frame, "its datum " + std::to_string(datum.id) + " could not be read");
      continue;
    }
    auto& modified = reading.part.Make<KOVAPMI_MODIFIED_DATUM>();
    KOVAPMI_DATUM& kernelDatum =
        standin::DatumOf(static_cast<ATTRIB_KOVAPMI_DATUM&>(*datum.entity));
    standin::Edit(modified).datum = &kernelDatum;
    AddDatumModifiers(reading, inner, frame, modified);
    fields.datums.push_back(&modified);
    label += (label.empty() ? L"" : L"-") + std::wstring(kernelDatum.get_wlabel());
  }
  for (const char* measured : {"NominalDatumFeature", "MeasuredDatumFeature"}) {
    if (Child(compartment, measured)) {
      reading.Skip(frame, std::string(measured) + " is no datum of the model");
    }
  }
  fields.note = label;
  return reference;
}

}  // namespace

KOVAPMI_DRF& Reading::Frame(Document::Entry& entry) {
  const auto [known, isNew] = frames_.try_emplace(&entry, nullptr);
  if (known->second != nullptr) return *known->second;
  if (!isNew) throw Unreadable(entry.element, "its reference frame could not be read");
  auto& frame = part.Make<KOVAPMI_DRF>();
  std::vector<Element> compartments;
  for (const Element datum : Child(entry.element, "Datums").children()) {
    compartments.push_back(datum);
  }
  std::stable_sort(compartments.begin(), compartments.end(),
                   [](Element a, Element b) { return PrecedenceOf(a) < PrecedenceOf(b); });
  for (const Element compartment : compartments) {
    standin::Edit(frame).references.push_back(&ReadCompartment(*this, compartment, entry.element));
  }
  const std::string_view name = TextOf(entry.element, "Name");
  if (!name.empty()) standin::Edit(frame).note = Wide(name);
  part.Id(frame, entry.element.attribute("id").value());
  known->second = &frame;
  return frame;
}

void Reading::SkipUnusedFrames() {
  for (const Element element : document.At({"DatumReferenceFrames"}).children()) {
    Count("datumReferenceFrames");
    if (frames_.count(&document.EntryOf(element)) == 0) Skip(element, "no tolerance uses it");
  }
}

void ReadDatums(Reading& reading) {
  for (const Element element : reading.document.At({"DatumTargetDefinitions"}).children()) {
    reading.Count("datumTargets");
    reading.Try(element, [&] { ReadTarget(reading, element); });
  }
  for (const Element element : reading.document.At({"DatumDefinitions"}).children()) {
    reading.Count("datums");
    reading.Try(element, [&] { ReadDatum(reading, element); });
  }
}

}  // namespace qif

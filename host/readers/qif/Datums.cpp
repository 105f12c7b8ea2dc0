// Datum definitions and datum targets.

#include "readers/qif/Reading.h"

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
    const QENposition opposite =
        corner + (units.Length(length).value * along + units.Length(width).value * across);
    RequireFinite(rectangle, {opposite.x(), opposite.y(), opposite.z()});
    place.points = {corner, opposite};
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
    const std::vector<Document::Entry*> features = reading.FeaturesOf(element, false);
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

}  // namespace

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

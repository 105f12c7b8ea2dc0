// Datum definitions and datum targets.

#include "readers/qif/Reading.h"

namespace qif {

namespace {

std::string_view LabelOf(Element element, std::string_view text) {
  const std::string_view label = element.attribute("label").value();
  return label.empty() ? text : label;
}

// --- Targets -------------------------------------------------------------------------------------

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

class TargetReader {
 public:
  TargetReader(Reading& reading, Element element) : reading_(reading), target_(element) {}

  void Read() {
    std::vector<ENTITY*> entities;
    if (const Element id = target_["TargetZoneId"]) {
      const Document::Entry* const zone = reading_.document.Find(id);
      if (zone != nullptr && StartsWith(NameOf(zone->element), "FeatureZone")) {
        entities = ReadZone(zone->element);
      } else {
        reading_.Lose(id, "its zone " + Quote(TextOf(id)) + " does not exist");
      }
    }
    const std::vector<ENTITY*> associated = reading_.AssociatedEntities(target_);
    if (entities.empty()) entities = associated;
    if (place_.type == datum_target_unknown) {
      const std::vector<Document::Entry*> features = reading_.FeaturesOf(target_, false);
      if (!features.empty()) PlaceOnFeature(features.front()->element);
    }
    const std::string_view label = target_.Text("DatumTargetLabel");
    reading_.SkipRest(target_);
    auto& attribute =
        reading_.part.AddDatumTarget(reading_.Carrier(entities), Wide(label).c_str(), nullptr);
    auto& target = standin::Edit(standin::TargetOf(attribute));
    target.type = place_.type;
    if (entities.empty()) target.geometry = nullptr;
    if (!place_.note.empty()) target.note = place_.note;
    if (!place_.points.empty()) target.position1 = &reading_.part.Make<APOINT>(place_.points[0]);
    if (place_.points.size() > 1) target.position2 = &reading_.part.Make<APOINT>(place_.points[1]);
    const Element element = target_.Record();
    reading_.document.EntryOf(element).entity = &attribute;
    reading_.Describe(attribute, element, "datum target", LabelOf(element, label));
  }

 private:
  // Gives the topology that the zone lies on.
  std::vector<ENTITY*> ReadZone(Element element) {
    Fields zone(element);
    PlaceOnZone(zone);
    std::vector<ENTITY*> entities;
    if (const Element vertex = zone["VertexId"]) {
      if (ENTITY* entity = reading_.EntityAt(vertex)) entities.push_back(entity);
    }
    for (const char* list : {"EdgeIds", "FaceIds"}) {
      for (ENTITY* entity : reading_.EntitiesOf(zone[list])) entities.push_back(entity);
    }
    reading_.SkipRest(zone);
    return entities;
  }

  // The next point of the place.
  void AddPoint(Element point) {
    Quantity written;
    place_.points.push_back(reading_.units.Point(point, &written));
    reading_.Value("point" + std::to_string(place_.points.size()), written);
  }

  std::wstring SizeOf(Element size) { return Wide(reading_.units.Length(size).Written()); }

  void PlaceOnZone(Fields& zone) {
    const std::string_view kind = NameOf(zone.Record());
    if (kind == "FeatureZonePoint") {
      place_.type = datum_target_point;
      const Element point = PointOf(zone);
      if (point) AddPoint(point);
      if (!point) reading_.Lose(zone.Record(), "its point is not in the document");
    } else if (StartsWith(kind, "FeatureZoneCurve")) {
      place_.type = kind == "FeatureZoneCurveCircular" ? datum_target_circle : datum_target_line;
      if (const Element line = zone["Line"]) {
        Fields points(line);
        AddPoint(points["StartPoint"]);
        AddPoint(points["EndPoint"]);
        reading_.SkipRest(points);
      }
    } else {
      place_.type = datum_target_area;
      if (kind == "FeatureZoneAreaCircular") place_.type = datum_target_circle;
      if (kind == "FeatureZoneAreaRectangular") place_.type = datum_target_rectangle;
    }
    for (const char* round : {"Circle", "Cylinder", "Sphere"}) {
      Fields shape(zone[round]);
      if (!shape.Record()) continue;
      AddPoint(shape["CenterPoint"]);
      place_.note = L"\u2300" + SizeOf(shape["Diameter"]);
      reading_.SkipRest(shape);
    }
    if (const Element rectangle = zone["Rectangle"]) PlaceOnRectangle(rectangle);
  }

  Element PointOf(Fields& zone) const {
    if (const Element point = zone["Point"]) return point;
    Element reference = zone["PointId"];
    if (const Element id = zone["VertexId"]) {
      const Document::Entry* const vertex = reading_.document.Find(id);
      if (vertex != nullptr) reference = Child(Child(vertex->element, "Point"), "Id");
    }
    const Document::Entry* const entry = reading_.document.Find(reference);
    return entry == nullptr ? Element() : Child(entry->element, "XYZ");
  }

  void PlaceOnRectangle(Element element) {
    Fields rectangle(element);
    const Element length = rectangle["Length"];
    const Element width = rectangle["Width"];
    AddPoint(rectangle["CornerPoint"]);
    const Units& units = reading_.units;
    const auto direction = [&](const char* name) {
      const QENvector vector = units.Vector(rectangle[name]);
      return QENunit_vector(vector.x(), vector.y(), vector.z());
    };
    const QENvector along = direction("LengthDirection");
    const QENvector across = direction("WidthDirection");
    const QENposition opposite = place_.points.back() + (units.Length(length).value * along +
                                                         units.Length(width).value * across);
    RequireFinite(element, {opposite.x(), opposite.y(), opposite.z()});
    place_.points.push_back(opposite);
    place_.note = SizeOf(length) + L"x" + SizeOf(width);
    reading_.SkipRest(rectangle);
  }

  // A target without a zone takes the whole of its feature.
  void PlaceOnFeature(Element feature) {
    const std::string_view kind = NameOf(feature);
    place_.type = datum_target_area;
    if (StartsWith(kind, "Line")) place_.type = datum_target_line;
    if (StartsWith(kind, "Circle")) place_.type = datum_target_circle;
    if (StartsWith(kind, "Point")) {
      place_.type = datum_target_point;
      if (const Element location = Child(feature, "Location")) AddPoint(location);
    }
  }

  // Where the target lies: its zone, else the feature that it is on.
  struct Place {
    datum_target_type type = datum_target_unknown;
    std::vector<QENposition> points;
    std::wstring note;  // the size of an area, as in the upper half of the symbol
  };

  Reading& reading_;
  Fields target_;
  Place place_;
};

// --- Datums --------------------------------------------------------------------------------------

void ReadDatum(Reading& reading, Element element) {
  Fields datum(element);
  std::vector<ATTRIB_KOVAPMI_DATUM_TARGET*> targets;
  for (const Element reference : datum["DatumTargetIds"].children()) {
    const Document::Entry* const entry = reading.document.Find(reference);
    ENTITY* const entity = entry == nullptr ? nullptr : entry->entity;
    if (is_ATTRIB_KOVAPMI_DATUM_TARGET(entity) == 1) {
      targets.push_back(static_cast<ATTRIB_KOVAPMI_DATUM_TARGET*>(entity));
    } else {
      reading.Lose(reference, "its target " + Quote(TextOf(reference)) + " is not there");
    }
  }
  std::vector<ENTITY*> entities = reading.AssociatedEntities(datum);
  // A datum that names no feature lies where its targets lie.
  if (entities.empty()) entities = reading.EntitiesUnder({targets.begin(), targets.end()});
  const std::string_view label = datum.Text("DatumLabel");
  auto& attribute = reading.part.AddDatum(reading.Carrier(entities), Wide(label).c_str());
  for (auto* target : targets) {
    standin::Edit(standin::DatumOf(attribute)).targets.push_back(&standin::TargetOf(*target));
  }
  reading.SkipRest(datum);
  reading.document.EntryOf(element).entity = &attribute;
  reading.Describe(attribute, element, "datum", LabelOf(element, label));
}

}  // namespace

void ReadDatums(Reading& reading) {
  for (const Element element :
       reading.document.At({"DatumTargetDefinitions"}).children("DatumTarget")) {
    reading.Count("datumTargets");
    reading.Try(element, [&] { TargetReader(reading, element).Read(); });
  }
  for (const Element element :
       reading.document.At({"DatumDefinitions"}).children("DatumDefinition")) {
    reading.Count("datums");
    reading.Try(element, [&] { ReadDatum(reading, element); });
  }
}

}  // namespace qif

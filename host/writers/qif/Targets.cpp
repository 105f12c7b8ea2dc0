// Datum targets, and the zones in which they lie.

#include "writers/qif/Targets.h"

#include <cmath>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

constexpr std::string_view kDiameter = "\u2300";

// A size with its unit: "8" or "0.5 inch".
struct Size {
  std::string number, unit;
};

std::optional<Size> SizeIn(const std::string& text, const Units& units) {
  Size size{text.substr(0, text.find(' ')), UnitOf(text)};
  const bool isKnown = size.unit.empty() || units.Knows(Measure::kLength, size.unit);
  if (!IsDecimal(size.number) || !isKnown) return {};
  return size;
}

// The diameter of a note like "⌀8".
std::optional<Size> DiameterOf(const DatumTargetReport& target, const Units& units) {
  const std::string note = target.note.value_or("");
  if (note.compare(0, kDiameter.size(), kDiameter) != 0) return {};
  return SizeIn(note.substr(kDiameter.size()), units);
}

// A rectangle by its first corner.
struct Rectangle {
  Size length, width;
  Point3 along, across;
};

// The sides of a note like "20x10" in a plane of the diagonal: that of two axes where there is one.
std::optional<Rectangle> RectangleOf(const DatumTargetReport& target, const Units& units) {
  const std::string note = target.note.value_or("");
  const std::size_t by = note.find('x');
  if (by == std::string::npos || !target.point1 || !target.point2) return {};
  const std::optional<Size> length = SizeIn(note.substr(0, by), units);
  const std::optional<Size> width = SizeIn(note.substr(by + 1), units);
  if (!length || !width || !length->unit.empty() || !width->unit.empty()) return {};
  const double l = *NumberIn(length->number), w = *NumberIn(width->number);
  const Point3 diagonal = *target.point2 - *target.point1;
  const double size = std::sqrt(Dot(diagonal, diagonal));
  if (!(std::abs(size - std::hypot(l, w)) <= 1e-9 * size) || !std::isnormal(size)) return {};
  std::size_t least = 0;
  for (std::size_t i = 1; i < 3; ++i) {
    if (std::abs(diagonal[i]) < std::abs(diagonal[least])) least = i;
  }
  Point3 axis{};
  axis[least] = 1;
  const Point3 ahead = (1 / size) * diagonal;
  const Point3 normal = axis - Dot(axis, ahead) * ahead;
  const Point3 side = (1 / std::sqrt(Dot(normal, normal))) * Cross(normal, ahead);
  Rectangle best{*length, *width, {}, {}};
  double straightest = 0;
  for (const double sign : {1.0, -1.0}) {
    const double c = l / size, s = sign * w / size;
    const Point3 along = c * ahead - s * side;
    const Point3 across = sign * (s * ahead + c * side);
    const double straight = std::pow(along[0], 4) + std::pow(along[1], 4) + std::pow(along[2], 4);
    if (straight <= straightest + 1e-9) continue;
    straightest = straight;
    best.along = along;
    best.across = across;
  }
  return best;
}

class ZoneWriter {
 public:
  ZoneWriter(Xml& xml, Plan& plan, const Item& item)
      : xml_(xml), plan_(plan), item_(item), target_(*item.annotation->datumTarget) {}

  void Write() {
    const std::string type = target_.type.value_or("");
    if (type == "point") {
      xml_.OpenWithId("FeatureZonePoint", item_.zone);
      WritePoint("Point", "point1", *target_.point1);
    } else if (type == "line") {
      xml_.OpenWithId("FeatureZoneCurveLine", item_.zone);
      xml_.Open("Line");
      // The ends of a line have no unit of their own.
      WritePoint("StartPoint", "", *target_.point1);
      WritePoint("EndPoint", "", *target_.point2);
      xml_.Close();
    } else if (type == "circle") {
      WriteCircle();
    } else if (type == "area") {
      xml_.OpenWithId("FeatureZoneAreaIrregular", item_.zone);
    } else {
      WriteRectangle(*RectangleOf(target_, plan_.units));
    }
    xml_.Close();
  }

 private:
  void WriteCircle() {
    const auto view = plan_.views.find(item_.view);
    xml_.OpenWithId("FeatureZoneAreaCircular", item_.zone);
    xml_.Open("Circle");
    WritePoint("CenterPoint", "point1", *target_.point1);
    WriteSize("Diameter", *DiameterOf(target_, plan_.units));
    WriteDirection("Normal",
                   view == plan_.views.end() ? Point3{0, 0, 1} : view->second.axes.normal);
    xml_.Close();
  }

  void WriteRectangle(const Rectangle& rectangle) {
    xml_.OpenWithId("FeatureZoneAreaRectangular", item_.zone);
    xml_.Open("Rectangle");
    WriteSize("Length", rectangle.length);
    WritePoint("CornerPoint", "point1", *target_.point1);
    WriteSize("Width", rectangle.width);
    WriteDirection("WidthDirection", rectangle.across);
    WriteDirection("LengthDirection", rectangle.along);
    xml_.Close();
  }

  void WritePoint(const char* name, const std::string& field, const Point3& point) {
    xml_.Open(name);
    std::string text = Real(point[0]) + ' ' + Real(point[1]) + ' ' + Real(point[2]);
    for (const WrittenReport& written : item_.annotation->written) {
      if (written.field != field) continue;
      if (!plan_.units.Knows(Measure::kLength, written.unit)) {
        plan_.OmitUnit(item_, written.unit);
        continue;
      }
      xml_.Attribute("linearUnit", written.unit);
      text = written.text;
    }
    xml_.Content(text);
    xml_.Close();
  }

  void WriteSize(const char* name, const Size& size) {
    xml_.Open(name);
    if (!size.unit.empty()) xml_.Attribute("linearUnit", size.unit);
    xml_.Content(size.number);
    xml_.Close();
  }

  void WriteDirection(const char* name, const Point3& direction) {
    std::string text;
    for (const double value : direction) text += (text.empty() ? "" : " ") + Rounded(value, 13);
    xml_.Leaf(name, text);
  }

  Xml& xml_;
  Plan& plan_;
  const Item& item_;
  const DatumTargetReport& target_;
};

bool IsFinite(const std::optional<Point3>& point) {
  return point && std::isfinite((*point)[0] + (*point)[1] + (*point)[2]);
}

}  // namespace

bool HasZone(const DatumTargetReport& target, const Units& units, bool hasFeature) {
  const std::string type = target.type.value_or("");
  if (type == "area") return !hasFeature;
  if (!IsFinite(target.point1)) return false;
  if (type == "point") return true;
  if (type == "line") return IsFinite(target.point2);
  if (type == "circle") return DiameterOf(target, units).has_value();
  return type == "rectangle" && IsFinite(target.point2) && RectangleOf(target, units).has_value();
}

void WriteDatumTargets(Xml& xml, Plan& plan) {
  const std::vector<const Item*> targets = plan.OfKind("datumTarget");
  if (targets.empty()) return;
  xml.OpenList("DatumTargetDefinitions", targets.size());
  for (const Item* item : targets) {
    const DatumTargetReport& target = *item->annotation->datumTarget;
    xml.OpenWithId("DatumTarget", item->id);
    WriteHidden(xml, *item);
    xml.Leaf("DatumTargetLabel", Collapsed(target.label.value_or("")));
    if (item->feature != 0) xml.Reference("FeatureNominalId", item->feature);
    if (item->zone != 0) xml.Reference("TargetZoneId", item->zone);
    xml.Close();
    const bool hasSize = target.type == "circle" || target.type == "rectangle";
    if (!hasSize && target.note.value_or("") != "") {
      plan.omissions.Add("reduced", *item, "QIF has the sizes of circles and rectangles only");
    }
    // Without a zone a target is the area of its feature.
    const bool isArea = target.type == "area";
    const bool isUnknown = target.type.value_or("unknown") == "unknown" && item->feature == 0;
    if (isArea ? target.point1.has_value() : item->zone == 0 && !isUnknown) {
      plan.omissions.Add("lost", *item,
                         "QIF asks for more of where a target lies than the report tells");
    }
  }
  xml.Close();
}

void WriteZones(Xml& xml, Plan& plan) {
  std::size_t count = 0;
  for (const Item& item : plan.items) count += item.zone != 0 ? 1 : 0;
  if (count == 0) return;
  xml.OpenList("FeatureZones", count);
  for (const Item& item : plan.items) {
    if (item.zone != 0) ZoneWriter(xml, plan, item).Write();
  }
  xml.Close();
}

}  // namespace qif_writer

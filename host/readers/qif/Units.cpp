#include "readers/qif/Units.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "model/Account.h"
#include "readers/qif/Fields.h"

namespace qif {

namespace {

constexpr double kDegrees = 57.295779513082320877;

// A factor that is a short decimal but for the rounding of its parts, as that decimal: 25.4 and
// not 25.399999999999999.
double Shorten(double factor) {
  char text[32];
  const int length = std::snprintf(text, sizeof text, "%.6g", factor);
  double shorter = factor;
  std::from_chars(text, text + length, shorter);
  return std::abs(shorter - factor) <= 1e-11 * std::abs(factor) ? shorter : factor;
}

// Throws when a declaration says more than was read, for then its unit may be another one.
void RequireAllRead(const Fields& declaration) {
  for (const std::vector<Element>& more : {declaration.Rest(), declaration.Doubled()}) {
    if (more.empty()) continue;
    throw Unreadable(more.front(), "a unit with " + Quote(NameOf(more.front())) + " is not known");
  }
}

// SI units in one of the declared unit.
double FactorOf(Element element) {
  Fields unit(element);
  unit.Pass({"UnitName"});
  const Element si = unit["SIUnitName"];
  const std::string_view known = EndsWith(NameOf(element), "AngularUnit") ? "radian" : "meter";
  if (si && TextOf(si) != known) {
    throw Unreadable(si, "its SI unit is " + Quote(TextOf(si)) + ", not " + std::string(known));
  }
  Fields conversion(unit["UnitConversion"]);
  RequireAllRead(unit);
  if (!conversion.Record()) return 1;
  const Element factor = conversion["Factor"];
  const Element offset = conversion["Offset"];
  RequireAllRead(conversion);
  if (!factor || (offset && NumberOf(offset) != 0)) {
    throw Unreadable(conversion.Record(), "a unit's conversion is not by a factor");
  }
  const double value = NumberOf(factor);
  if (value <= 0) throw Unreadable(factor, "a unit's factor is not positive");
  return value;
}

// As many as are written.
int DecimalsOf(std::string_view text) {
  const std::size_t exponent = text.find_first_of("eE");
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos || exponent != std::string_view::npos) return 0;
  return static_cast<int>(std::min<std::size_t>(text.size() - point - 1, kMostDecimals));
}

bool IsIn(Element element, std::initializer_list<std::string_view> sections) {
  constexpr int kDeepest = 16;
  for (int depth = 0; element && depth < kDeepest; ++depth, element = element.parent()) {
    for (const std::string_view section : sections) {
      if (NameOf(element) == section) return true;
    }
  }
  return false;
}

// Whether the document's PMI units hold for an element.
bool IsInCharacteristics(Element element) { return IsIn(element, {"Characteristics"}); }

// Long enough for any number that a double tells apart from others.
constexpr std::size_t kLongestNumber = 40;

}  // namespace

Units::Units(const Document& document) : angle_{kDegrees, "radian"} {
  if (const Element scale = document.At({"Product", "Header", "ScaleCoefficient"})) {
    constexpr double kMost = 1e9;  // far from any that a part is drawn with
    scale_ = NumberOf(scale);
    if (!(scale_ >= 1 / kMost && scale_ <= kMost)) {
      throw Unreadable(scale, "its scale is not positive, or out of range");
    }
    Fields header(document.At({"Product", "Header"}));
    if (header.All("ScaleCoefficient").size() > 1) {
      throw Unreadable(scale, "the scale is stated twice");
    }
  }
  const Element units = document.At({"FileUnits"});
  const Element primary = Child(units, "PrimaryUnits");
  const Element linear = Child(primary, "LinearUnit");
  if (linear) metres_ = FactorOf(linear);
  const auto read = [this](Element unit, bool isAngle) {
    const double factor = Shorten(isAngle ? FactorOf(unit) * kDegrees : FactorOf(unit) / metres_);
    if (!std::isnormal(factor)) throw Unreadable(unit, "a unit's factor is out of range");
    return Unit{factor, std::string(TextOf(unit, "UnitName"))};
  };
  for (const Element set : {primary, Child(units, "OtherUnits")}) {
    for (const Element element : set.children()) {
      const std::string_view kind = NameOf(element);
      const bool isAngle = kind == "AngularUnit" || kind == "PMIAngularUnit";
      if (!isAngle && kind != "LinearUnit" && kind != "PMILinearUnit") continue;
      const Unit unit = read(element, isAngle);
      const auto known = (isAngle ? angles_ : lengths_).emplace(unit.name, unit.factor).first;
      if (std::abs(known->second - unit.factor) > 1e-9 * unit.factor) {
        throw Unreadable(element, "unit " + Quote(unit.name) + " is declared in two ways");
      }
    }
  }
  if (linear) length_ = read(linear, false);
  const Element angular = Child(primary, "AngularUnit");
  if (angular) angle_ = read(angular, true);
  const Element pmiLinear = Child(primary, "PMILinearUnit");
  pmiLength_ = pmiLinear ? read(pmiLinear, false) : length_;
  const Element pmiAngular = Child(primary, "PMIAngularUnit");
  pmiAngle_ = pmiAngular ? read(pmiAngular, true) : angle_;
}

Units::Unit Units::UnitOf(Element element, const char* attribute, const Unit& byDefault,
                          const UnitTable& units) {
  for (const char* other : {"linearUnit", "angularUnit"}) {
    if (other != std::string_view(attribute) && element.attribute(other)) {
      throw Unreadable(element, "it cannot have a unit called " + std::string(other));
    }
  }
  const Attribute stated = element.attribute(attribute);
  if (!stated) return byDefault;
  const auto found = units.find(std::string_view(stated.value()));
  if (found == units.end()) {
    throw Unreadable(element, "unit " + Quote(stated.value()) + " is not declared");
  }
  return {found->second, found->first};
}

Quantity Units::Convert(Element element, const Unit& unit) {
  Quantity quantity;
  const std::string_view text = WordOf(element);
  const double stated = NumberOf(element);
  quantity.value = stated * unit.factor;
  quantity.decimals = DecimalsOf(text);
  quantity.text = Cut(text, kLongestNumber);
  quantity.unit = Cut(unit.ForeignName(), kLongestNumber);
  RequireFinite(element, {quantity.value});
  if (quantity.value == 0 && stated != 0) throw Unreadable(element, Quote(text) + " is too small");
  return quantity;
}

double Units::ScaleOf(Element element) const {
  return scale_ != 1 && IsIn(element, {"Product", "Features"}) ? 1 / scale_ : 1;
}

Quantity Units::Length(Element element) const {
  const Unit& byDefault = IsInCharacteristics(element) ? pmiLength_ : length_;
  Quantity length = Convert(element, UnitOf(element, "linearUnit", byDefault, lengths_));
  length.value *= ScaleOf(element);
  RequireFinite(element, {length.value});
  return length;
}

Quantity Units::Angle(Element element) const {
  const Unit& byDefault = IsInCharacteristics(element) ? pmiAngle_ : angle_;
  return Convert(element, UnitOf(element, "angularUnit", byDefault, angles_));
}

Quantity Units::Plain(Element element) const {
  Quantity quantity = Convert(element, {});
  for (const char* attribute : {"areaUnit", "forceUnit", "massUnit", "pressureUnit", "speedUnit",
                                "temperatureUnit", "timeUnit", "unitName"}) {
    const Attribute unit = element.attribute(attribute);
    if (unit) quantity.unit = Cut(unit.value(), kLongestNumber);
  }
  return quantity;
}

QENposition Units::Point(Element element, Quantity* written) const {
  const std::vector<double> xyz = NumbersOf(element, 3);
  const Unit unit = UnitOf(element, "linearUnit", length_, lengths_);
  const double factor = unit.factor * ScaleOf(element);
  const QENposition point(xyz[0] * factor, xyz[1] * factor, xyz[2] * factor);
  RequireFinite(element, {point.x(), point.y(), point.z()});
  if (written != nullptr) {
    written->text = Cut(WordOf(element), 3 * kLongestNumber);
    written->unit = Cut(unit.ForeignName(), kLongestNumber);
  }
  return point;
}

QENvector Units::Vector(Element element) const {
  const std::vector<double> xyz = NumbersOf(element, 3);
  return {xyz[0], xyz[1], xyz[2]};
}

double Units::FromPoints(double points) const { return points / 72 * 0.0254 / metres_; }

}  // namespace qif

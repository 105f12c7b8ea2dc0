#include "readers/qif/Units.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

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

// SI units in one of the declared unit.
double FactorOf(Element unit) {
  const Element factor = Child(Child(unit, "UnitConversion"), "Factor");
  if (!factor) return 1;
  const double value = NumberOf(factor);
  if (value <= 0) throw Unreadable(factor, "a unit's factor is not positive");
  return value;
}

int DecimalsOf(Element element, std::string_view text) {
  const Attribute stated = element.attribute("decimalPlaces");
  constexpr int kMost = 15;
  if (stated) return std::clamp(stated.as_int(), 0, kMost);
  const std::size_t exponent = text.find_first_of("eE");
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos || exponent != std::string_view::npos) return 0;
  return static_cast<int>(std::min<std::size_t>(text.size() - point - 1, kMost));
}

}  // namespace

Units::Units(const Document& document) : angle_(kDegrees), pmiAngle_(kDegrees) {
  const Element units = document.At({"FileUnits"});
  const Element primary = Child(units, "PrimaryUnits");
  const Element linear = Child(primary, "LinearUnit");
  linearName_ = TextOf(linear, "UnitName");
  metres_ = FactorOf(linear);
  const auto length = [this](Element unit) { return Shorten(FactorOf(unit) / metres_); };
  const auto angle = [](Element unit) { return Shorten(FactorOf(unit) * kDegrees); };

  for (const Element set : {primary, Child(units, "OtherUnits")}) {
    for (const Element unit : set.children()) {
      const std::string_view kind = NameOf(unit);
      const std::string name(TextOf(unit, "UnitName"));
      if (kind == "LinearUnit" || kind == "PMILinearUnit") lengths_.emplace(name, length(unit));
      if (kind == "AngularUnit" || kind == "PMIAngularUnit") angles_.emplace(name, angle(unit));
    }
  }
  const Element pmiLinear = Child(primary, "PMILinearUnit");
  if (pmiLinear) pmiLength_ = length(pmiLinear);
  const Element angular = Child(primary, "AngularUnit");
  if (angular) angle_ = angle(angular);
  const Element pmiAngular = Child(primary, "PMIAngularUnit");
  pmiAngle_ = pmiAngular ? angle(pmiAngular) : angle_;
}

Quantity Units::Convert(Element element, const char* attribute, double defaultFactor,
                        const std::map<std::string, double, std::less<>>& factors) const {
  Quantity quantity;
  quantity.written = WordOf(element);
  quantity.decimals = DecimalsOf(element, quantity.written);
  double factor = defaultFactor;
  if (const Attribute unit = element.attribute(attribute)) {
    const auto found = factors.find(std::string_view(unit.value()));
    if (found == factors.end()) {
      throw Unreadable(element, std::string("unit '") + unit.value() + "' is not declared");
    }
    factor = found->second;
  }
  if (factor != defaultFactor)
    quantity.written += std::string(" ") + element.attribute(attribute).value();
  quantity.value = NumberOf(element) * factor;
  RequireFinite(element, {quantity.value});
  return quantity;
}

Quantity Units::Length(Element element, bool pmi) const {
  return Convert(element, "linearUnit", pmi ? pmiLength_ : 1, lengths_);
}

Quantity Units::Angle(Element element, bool pmi) const {
  return Convert(element, "angularUnit", pmi ? pmiAngle_ : angle_, angles_);
}

Quantity Units::Plain(Element element) const { return Convert(element, "", 1, {}); }

QENposition Units::Point(Element element) const {
  const std::vector<double> xyz = NumbersOf(element, 3);
  double factor = 1;
  if (const Attribute unit = element.attribute("linearUnit")) {
    const auto found = lengths_.find(std::string_view(unit.value()));
    if (found == lengths_.end()) {
      throw Unreadable(element, std::string("unit '") + unit.value() + "' is not declared");
    }
    factor = found->second;
  }
  const QENposition point(xyz[0] * factor, xyz[1] * factor, xyz[2] * factor);
  RequireFinite(element, {point.x(), point.y(), point.z()});
  return point;
}

QENvector Units::Vector(Element element) const {
  const std::vector<double> xyz = NumbersOf(element, 3);
  return {xyz[0], xyz[1], xyz[2]};
}

double Units::FromPoints(double points) const { return points / 72 * 0.0254 / metres_; }

}  // namespace qif

#pragma once

#include <map>

#include "readers/qif/Document.h"

namespace qif {

// The most decimal places that a value has.
constexpr int kMostDecimals = 15;

// A value of the document with what stands beside it.
struct Quantity {
  double value = 0;  // primary linear unit, or degrees
  int decimals = 0;  // as many as are written
  std::string text;  // the number as written; a long one is cut
  std::string unit;  // the unit that it is written in, where that is not the unit of `value`
  // The text, with its unit where that is not the unit of `value`.
  std::string Written() const { return unit.empty() ? text : text + " " + unit; }
};

// The document's units. What stands in its characteristics is in the PMI units where the document
// has such, unless it says otherwise; everything else is in the primary units. Distances in its
// product and features are written multiplied by its scale coefficient. Every operation throws
// Unreadable on a value that is no finite number or whose unit the document does not declare.
class Units {
 public:
  // Reads the declarations. Without any, lengths stay as they are and angles are radians.
  explicit Units(const Document& document);

  // The primary unit of length; empty when the document declares none.
  const std::string& LinearUnit() const { return length_.name; }
  // The units of the characteristics; empty where they are the primary one and the degree.
  std::string PmiLinearUnit() const { return pmiLength_.ForeignName(); }
  std::string PmiAngularUnit() const { return pmiAngle_.ForeignName(); }

  // A length, in the primary linear unit.
  Quantity Length(Element element) const;
  // An angle, in degrees.
  Quantity Angle(Element element) const;
  // A value of another kind, in the document's own unit.
  Quantity Plain(Element element) const;
  // A point, in the primary linear unit, and a vector, as it is. `written` gets the text of the
  // point and its unit.
  QENposition Point(Element element, Quantity* written = nullptr) const;
  QENvector Vector(Element element) const;
  // So many typographic points, in the primary linear unit.
  double FromPoints(double points) const;
  // The scale coefficient: how long the product draws a length of 1.
  double Scale() const { return scale_; }

 private:
  struct Unit {
    double factor = 1;  // to the unit of the model
    std::string name;
    std::string ForeignName() const { return factor == 1 ? "" : name; }
  };
  using UnitTable = std::map<std::string, double, std::less<>>;

  static Unit UnitOf(Element element, const char* attribute, const Unit& byDefault,
                     const UnitTable& units);
  static Quantity Convert(Element element, const Unit& unit);

  // What a distance that an element states is multiplied by, besides its unit.
  double ScaleOf(Element element) const;

  double metres_ = 1;  // in one primary linear unit
  double scale_ = 1;
  Unit length_, pmiLength_, angle_, pmiAngle_;
  UnitTable lengths_;  // to the primary linear unit
  UnitTable angles_;   // to degrees
};

}  // namespace qif

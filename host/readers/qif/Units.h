#pragma once

#include <map>

#include "readers/qif/Document.h"

namespace qif {

// A value of the document with what stands beside it.
struct Quantity {
  double value = 0;     // primary linear unit, or degrees
  int decimals = 0;     // as stated; else as many as are written
  std::string written;  // as written, with the unit's name when it is not the default one
};

// The document's units. Every operation throws Unreadable on a value that is no finite number or
// whose unit the document does not declare.
class Units {
 public:
  // Reads the declarations. Without any, lengths stay as they are and angles are radians.
  explicit Units(const Document& document);

  const std::string& LinearUnit() const { return linearName_; }

  // A length of the PMI (`pmi`) or of the geometry, in the primary linear unit.
  Quantity Length(Element element, bool pmi = true) const;
  // An angle of the PMI or of the geometry, in degrees.
  Quantity Angle(Element element, bool pmi = true) const;
  // A value of another kind, in the document's own unit.
  Quantity Plain(Element element) const;
  // A point, in the primary linear unit, and a vector, as it is.
  QENposition Point(Element element) const;
  QENvector Vector(Element element) const;
  // So many typographic points, in the primary linear unit.
  double FromPoints(double points) const;

 private:
  Quantity Convert(Element element, const char* attribute, double defaultFactor,
                   const std::map<std::string, double, std::less<>>& factors) const;

  std::string linearName_;
  double metres_ = 1;  // in one primary linear unit
  double pmiLength_ = 1;
  double angle_;
  double pmiAngle_;
  std::map<std::string, double, std::less<>> lengths_;  // to the primary linear unit
  std::map<std::string, double, std::less<>> angles_;   // to degrees
};

}  // namespace qif

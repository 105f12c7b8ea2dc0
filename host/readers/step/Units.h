#pragma once

#include "readers/step/Exchange.h"

namespace step {

// A measure of the file.
struct Quantity {
  double value = 0;  // in the model's unit of length, degrees for angles
  bool isAngle = false;
  int decimals = 0;     // as a format qualifier states, else as many as are written
  std::string written;  // the number as written, with the decimals that are stated
  std::string unit;     // "mm", "inch", "degree" ...
};

// The units of a file. Every measure has its own unit; the model has that of its geometry.
class Units {
 public:
  // Finds the unit of the geometry. Throws Unreadable when it is not one of length.
  explicit Units(Exchange& file);

  // The model's unit of length.
  const std::string& LinearUnit() const { return name_; }

  // A measure with its unit, in any of the forms that the schema has for them. Throws Unreadable
  // for what is none, for numbers that are not finite, and for units of other kinds.
  Quantity Measure(Id id) const;
  // The same, for a measure that has to be a length, or an angle.
  Quantity Measure(Id id, bool isAngle) const;
  // From a length in the unit of a representation's context to the model's.
  double ScaleOf(Id context) const;

 private:
  struct Unit {
    double factor = 0;  // to metres or radians
    bool isAngle = false;
    std::string name;
  };

  Unit UnitOf(Id id, int depth = 0) const;
  Id LengthUnitOf(Id context) const;

  Exchange& file_;
  double metres_ = 1;  // in one model unit
  std::string name_;
};

}  // namespace step

#pragma once

#include "readers/step/Exchange.h"

namespace step {

// A measure of the file.
struct Quantity {
  double value = 0;  // in the model's unit of length, degrees for angles
  bool isAngle = false;
  int decimals = 0;     // as a format qualifier states, else as many as are written
  std::string written;  // the number as written, with the decimals that are stated; cut when long
  std::string unit;     // "mm", "inch", "degree" ...
};

// The units of a file. Every measure has its own unit; the model has that of its geometry.
class Units {
 public:
  // Finds the unit of the geometry; metres when the file states none. Throws Unreadable when it is
  // not one of length.
  explicit Units(Exchange& file);

  // The model's unit of length; empty when the file has none at all.
  const std::string& LinearUnit() const { return name_; }
  // Whether the file states the unit of its geometry.
  bool IsStated() const { return isStated_; }

  // A measure with its unit, in any of the forms that the schema has for them. Throws Unreadable
  // when it is not a measure, not finite, or has a unit of another kind.
  const Quantity& Measure(Id id) const;
  // The same, for a measure that has to be a length, or an angle.
  const Quantity& Measure(Id id, bool isAngle) const;
  // What qualifies a measure: by itself, or by relations to it.
  std::vector<Id> QualifiersOf(const Instance& measure) const;
  // From a length in the unit of a representation's context to the model's.
  double ScaleOf(Id context) const;
  // From an angle in the unit of a representation's context to radians.
  double RadiansOf(Id context) const;

 private:
  struct Unit {
    double factor = 0;  // to metres or radians
    bool isAngle = false;
    std::string name;
  };

  // Takes the model's unit of length from a representation's context; false when it has none.
  bool TakeUnit(Id context);
  Quantity ReadMeasure(Id id) const;
  Unit UnitOf(Id id, int depth = 0) const;
  // The unit of a representation's context for LENGTH_UNIT or PLANE_ANGLE_UNIT; 0 for none.
  Id UnitOf(Id context, std::string_view kind) const;

  Exchange& file_;
  mutable std::unordered_map<Id, Quantity> measures_;  // many annotations may share one
  double metres_ = 1;                                  // in one model unit
  std::string name_;
  bool isStated_ = false;
};

}  // namespace step

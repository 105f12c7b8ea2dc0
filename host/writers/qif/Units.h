#pragma once

#include <map>

#include "report/Report.h"
#include "writers/qif/Numbers.h"
#include "writers/qif/Xml.h"

namespace qif_writer {

enum class Measure { kLength, kAngle };

// The units of a report: its own of length, the degree, and those that its values are written in.
class Units {
 public:
  explicit Units(const ModelReport& report);

  // Whether values may be stated in a unit of this name.
  bool Knows(Measure measure, const std::string& name) const;
  // Whether the size of the report's unit of length is known; without it none is declared.
  bool KnowsSize() const { return known_; }
  // The unit that a value in the characteristics has when it names none.
  const std::string& Default(Measure measure) const {
    return measure == Measure::kLength ? pmiLength_ : pmiAngle_;
  }
  // The report's own unit.
  const std::string& Own(Measure measure) const {
    return measure == Measure::kLength ? length_ : degree_;
  }
  void Write(Xml& xml) const;

 private:
  void Learn(const WrittenReport& value, double inReport);
  void LearnFrom(const AnnotationReport& annotation);
  void WriteUnit(Xml& xml, Measure measure, const char* element, const std::string& name) const;

  const std::string degree_ = "degree";
  std::string length_, pmiLength_, pmiAngle_;
  bool known_ = true;
  std::map<std::string, double> lengths_, angles_;  // in metres and radians
};

// The unit at the end of a text like "3.2 um"; empty when the number stands alone.
std::string UnitOf(const std::string& text);

}  // namespace qif_writer

#include "writers/qif/Units.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace qif_writer {

namespace {

struct Size {
  const char* name;
  double size;
};

// In metres.
constexpr Size kLengths[] = {
    {"mm", 0.001},    {"millimeter", 0.001}, {"millimetre", 0.001}, {"m", 1},
    {"meter", 1},     {"metre", 1},          {"cm", 0.01},          {"centimeter", 0.01},
    {"um", 0.000001}, {"micrometer", 1e-6},  {"micrometre", 1e-6},  {"km", 1000},
    {"inch", 0.0254}, {"in", 0.0254},        {"inches", 0.0254},    {"INCH", 0.0254},
    {"ft", 0.3048},   {"foot", 0.3048},      {"FOOT", 0.3048},      {"mil", 0.0000254},
    {"uin", 2.54e-8}, {"microinch", 2.54e-8}};

constexpr double kDegree = 0.017453292519943295;  // in radians
constexpr Size kAngles[] = {{"degree", kDegree}, {"deg", kDegree}, {"DEGREE", kDegree},
                            {"radian", 1},       {"rad", 1},       {"RADIAN", 1}};

template <std::size_t kCount>
double SizeOf(const Size (&sizes)[kCount], const std::string& name) {
  for (const Size& size : sizes) {
    if (name == size.name) return size.size;
  }
  return 0;
}

// A factor that is a short decimal but for rounding, as that decimal.
double Shorten(double factor) {
  char text[32];
  std::snprintf(text, sizeof text, "%.9g", factor);
  const double shorter = NumberIn(text).value_or(factor);
  return std::abs(shorter - factor) <= 1e-12 * std::abs(factor) ? shorter : factor;
}

}  // namespace

std::string UnitOf(const std::string& text) {
  const std::size_t space = text.find(' ');
  return space == std::string::npos ? "" : text.substr(space + 1);
}

Units::Units(const ModelReport& report)
    : length_(Collapsed(report.source.linearUnit)),
      pmiLength_(Collapsed(report.source.pmiLinearUnit)),
      pmiAngle_(Collapsed(report.source.pmiAngularUnit)) {
  angles_[degree_] = kDegree;
  if (!length_.empty()) {
    const double size = SizeOf(kLengths, length_);
    known_ = size > 0;
    lengths_[length_] = known_ ? size : 1;
  }
  for (const std::string* name : {&pmiLength_, &pmiAngle_}) {
    const bool isAngle = name == &pmiAngle_;
    const double size = isAngle ? SizeOf(kAngles, *name) : SizeOf(kLengths, *name);
    if (size > 0) (isAngle ? angles_ : lengths_).emplace(*name, size);
  }
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) LearnFrom(annotation);
  }
  if (length_.empty() || !Knows(Measure::kLength, pmiLength_)) pmiLength_ = length_;
  if (!Knows(Measure::kAngle, pmiAngle_)) pmiAngle_ = degree_;
}

// Units that are known by their names, and those that a value in them tells the size of.
void Units::LearnFrom(const AnnotationReport& annotation) {
  for (const WrittenReport& value : annotation.written) {
    if (value.unit.empty() || lengths_.count(value.unit) + angles_.count(value.unit) > 0) continue;
    if (const double length = SizeOf(kLengths, value.unit); length > 0 && known_) {
      lengths_[value.unit] = length;
    } else if (const double angle = SizeOf(kAngles, value.unit); angle > 0) {
      angles_[value.unit] = angle;
    } else if (annotation.dimension && value.field == "value") {
      Learn(value, annotation.dimension->value.value_or(0));
    } else if (annotation.tolerance && value.field == "magnitude") {
      Learn(value, annotation.tolerance->rows.front().magnitude.value_or(0));
    }
  }
  if (!annotation.roughness) return;
  for (const Text& field : annotation.roughness->fields) {
    const std::string unit = UnitOf(field.value_or(""));
    const double size = SizeOf(kLengths, unit);
    if (size > 0 && known_) lengths_.emplace(unit, size);
  }
}

void Units::Learn(const WrittenReport& value, double inReport) {
  const double written = NumberIn(value.text).value_or(0);
  const double size = written == 0 || length_.empty() ? 0 : inReport / written * lengths_[length_];
  if (std::isnormal(size) && size > 0) lengths_[value.unit] = Shorten(size);
}

bool Units::Knows(Measure measure, const std::string& name) const {
  return (measure == Measure::kLength ? lengths_ : angles_).count(name) != 0;
}

void Units::WriteUnit(Xml& xml, Measure measure, const char* element,
                      const std::string& name) const {
  const bool isLength = measure == Measure::kLength;
  const double size = (isLength ? lengths_ : angles_).at(name);
  xml.Open(element);
  if (!isLength || known_) xml.Leaf("SIUnitName", isLength ? "meter" : "radian");
  xml.Leaf("UnitName", name);
  if (size != 1) {
    xml.Open("UnitConversion");
    xml.Leaf("Factor", Decimal(size));
    xml.Close();
  }
  xml.Close();
}

void Units::Write(Xml& xml) const {
  xml.Open("FileUnits");
  xml.Open("PrimaryUnits");
  WriteUnit(xml, Measure::kAngle, "AngularUnit", degree_);
  if (pmiAngle_ != degree_) WriteUnit(xml, Measure::kAngle, "PMIAngularUnit", pmiAngle_);
  if (!length_.empty()) WriteUnit(xml, Measure::kLength, "LinearUnit", length_);
  if (pmiLength_ != length_) WriteUnit(xml, Measure::kLength, "PMILinearUnit", pmiLength_);
  xml.Close();
  std::vector<std::pair<Measure, std::string>> others;
  for (const auto& [name, size] : angles_) {
    if (name != degree_ && name != pmiAngle_) others.emplace_back(Measure::kAngle, name);
  }
  for (const auto& [name, size] : lengths_) {
    if (name != length_ && name != pmiLength_) others.emplace_back(Measure::kLength, name);
  }
  if (!others.empty()) {
    xml.OpenList("OtherUnits", others.size());
    for (const auto& [measure, name] : others) {
      WriteUnit(xml, measure, measure == Measure::kAngle ? "AngularUnit" : "LinearUnit", name);
    }
    xml.Close();
  }
  xml.Close();
}

}  // namespace qif_writer

#include "readers/step/Units.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "model/Account.h"

namespace step {

namespace {

// Longer than any number that a double tells apart from others.
constexpr std::size_t kLongest = 40;
constexpr double kPi = 3.14159265358979323846;

struct Named {
  std::string_view name;
  double factor;
  const char* symbol;
};

constexpr Named kPrefixes[] = {
    {"", 1, ""},          {"EXA", 1e18, "E"},  {"PETA", 1e15, "P"},  {"TERA", 1e12, "T"},
    {"GIGA", 1e9, "G"},   {"MEGA", 1e6, "M"},  {"KILO", 1e3, "k"},   {"HECTO", 1e2, "h"},
    {"DECA", 1e1, "da"},  {"DECI", 1e-1, "d"}, {"CENTI", 1e-2, "c"}, {"MILLI", 1e-3, "m"},
    {"MICRO", 1e-6, "µ"}, {"NANO", 1e-9, "n"}, {"PICO", 1e-12, "p"}, {"FEMTO", 1e-15, "f"},
    {"ATTO", 1e-18, "a"},
};

// Angles that files write rounded.
constexpr Named kAngles[] = {{"degree", kPi / 180, ""}, {"gradian", kPi / 200, ""}};

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return text;
}

const Instance& Get(Exchange& file, Id id) {
  const Instance* const instance = file.Find(id);
  if (instance == nullptr) {
    throw Unreadable(
        id, id == 0 ? "a reference is missing" : "#" + std::to_string(id) + " does not exist");
  }
  return *instance;
}

// The record with a measure's value and unit, and the place of the value in it.
struct MeasureAt {
  const Record* record;
  std::uint32_t value;
};

MeasureAt FindMeasure(const Instance& instance) {
  if (const Record* own = instance.Find("MEASURE_WITH_UNIT")) return {own, 0};
  const Record& only = instance.records.front();
  // A simple instance has the parameters of its supertypes first.
  const bool isItem =
      only.name == "MEASURE_REPRESENTATION_ITEM" || only.name == "QUALIFIED_REPRESENTATION_ITEM";
  const bool isMeasure =
      only.name.size() > 17 && only.name.substr(only.name.size() - 17) == "MEASURE_WITH_UNIT";
  if (instance.records.size() != 1 || (!isItem && !isMeasure)) {
    throw Unreadable(instance.id, "it is no measure");
  }
  return {&only, isItem ? 1U : 0U};
}

constexpr int kMostDecimals = 15;

// How many decimals a number is written with; the zeros at its end do not count.
int DecimalsOf(std::string_view written) {
  const std::size_t exponent = written.find_first_of("eE");
  const std::size_t point = written.find('.');
  const std::size_t end = std::min(exponent, written.size());
  const std::size_t last = written.substr(0, end).find_last_not_of('0');
  auto decimals = point >= end ? 0 : static_cast<int>(last - point);
  if (end < written.size()) {
    const std::string_view text = written.substr(end + (written[end + 1] == '+' ? 2 : 1));
    int power = 0;
    std::from_chars(text.data(), text.data() + text.size(), power);
    decimals -= std::clamp(power, -kMostDecimals, kMostDecimals);
  }
  return std::clamp(decimals, 0, kMostDecimals);
}

std::string Shown(std::string_view written, int decimals) {
  std::string text(written);
  const std::size_t point = text.find('.');
  if (point == std::string::npos || text.find_first_of("eE") != std::string::npos) return text;
  const auto wanted = point + (decimals > 0 ? 1 + static_cast<std::size_t>(decimals) : 0);
  const std::size_t needed = text.find_last_not_of("0") + 1;
  text.resize(std::max(wanted, needed), '0');
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace

Units::Units(Exchange& file) : file_(file) {
  constexpr std::string_view kShapes[] = {"ADVANCED_BREP_SHAPE_REPRESENTATION",
                                          "FACETED_BREP_SHAPE_REPRESENTATION",
                                          "MANIFOLD_SURFACE_SHAPE_REPRESENTATION",
                                          "TESSELLATED_SHAPE_REPRESENTATION",
                                          "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION",
                                          "GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION",
                                          "EDGE_BASED_WIREFRAME_SHAPE_REPRESENTATION",
                                          "SHAPE_REPRESENTATION"};
  for (const std::string_view shape : kShapes) {
    for (const Id id : file.Of(shape)) {
      if (TakeUnit(Get(file, id).As("REPRESENTATION").Reference(2))) return;
    }
  }
  // A shape of another kind, or none.
  for (const Id context : file.Of("GLOBAL_UNIT_ASSIGNED_CONTEXT")) {
    if (TakeUnit(context)) return;
  }
  if (!file.Of("LENGTH_UNIT").empty()) name_ = "m";
}

bool Units::TakeUnit(Id context) {
  const Id unit = UnitOf(context, "LENGTH_UNIT");
  if (unit == 0) return false;
  const Unit length = UnitOf(unit);
  metres_ = length.factor;
  name_ = length.name;
  isStated_ = true;
  return true;
}

Id Units::UnitOf(Id context, std::string_view kind) const {
  const Instance* const instance = context == 0 ? nullptr : file_.Find(context);
  const Record* const units =
      instance == nullptr ? nullptr : instance->Find("GLOBAL_UNIT_ASSIGNED_CONTEXT");
  if (units == nullptr) return 0;
  for (const Value& unit : units->List(units->count - 1)) {
    const Instance* const named = file_.Find(unit.Reference());
    if (named != nullptr && named->Find(kind) != nullptr) return named->id;
  }
  return 0;
}

double Units::ScaleOf(Id context) const {
  const Id unit = UnitOf(context, "LENGTH_UNIT");
  return unit == 0 ? 1 : UnitOf(unit).factor / metres_;
}

double Units::RadiansOf(Id context) const {
  const Id unit = UnitOf(context, "PLANE_ANGLE_UNIT");
  return unit == 0 ? 1 : UnitOf(unit).factor;
}

Units::Unit Units::UnitOf(Id id, int depth) const {
  constexpr int kDeepest = 10;
  const Instance& instance = Get(file_, id);
  Unit unit;
  unit.isAngle = instance.Find("PLANE_ANGLE_UNIT") != nullptr;
  if (!unit.isAngle && instance.Find("LENGTH_UNIT") == nullptr) {
    throw Unreadable(id, "its unit is neither of length nor of angle");
  }
  if (const Record* si = instance.Find("SI_UNIT")) {
    const std::string_view prefix = si->Enumeration(si->count - 2);
    const auto* const known = std::find_if(std::begin(kPrefixes), std::end(kPrefixes),
                                           [&](const Named& each) { return each.name == prefix; });
    if (known == std::end(kPrefixes)) throw Unreadable(id, "its unit has an unknown prefix");
    if (si->Enumeration(si->count - 1) != (unit.isAngle ? "RADIAN" : "METRE")) {
      throw Unreadable(id, "its SI unit is of another quantity");
    }
    unit.factor = known->factor;
    unit.name = unit.isAngle ? "radian" : std::string(known->symbol) + "m";
    return unit;
  }
  const Record* const converted = instance.Find("CONVERSION_BASED_UNIT");
  if (converted == nullptr || depth > kDeepest) throw Unreadable(id, "its unit can't be read");
  const Instance& factor = Get(file_, converted->Reference(converted->count - 1));
  const MeasureAt at = FindMeasure(factor);
  const Unit base = UnitOf(at.record->Reference(at.value + 1), depth + 1);
  if (base.isAngle != unit.isAngle) throw Unreadable(id, "its unit is of two kinds");
  unit.factor = at.record->Number(at.value) * base.factor;
  if (!(unit.factor > 0) || !std::isfinite(unit.factor)) {
    throw Unreadable(id, "its unit has no size");
  }
  unit.name = Lower(converted->Text(converted->count - 2));
  if (!unit.isAngle && unit.factor == 0.001) unit.name = "mm";
  for (const Named& known : kAngles) {
    if (!unit.isAngle || std::abs(unit.factor / known.factor - 1) > 1e-5) continue;
    unit.factor = known.factor;
    unit.name = known.name;
  }
  return unit;
}

const Quantity& Units::Measure(Id id, bool isAngle) const {
  const Quantity& quantity = Measure(id);
  if (quantity.isAngle != isAngle) {
    throw Unreadable(id, isAngle ? "it is no angle" : "it is no length");
  }
  return quantity;
}

const Quantity& Units::Measure(Id id) const {
  const auto known = measures_.find(id);
  return known != measures_.end() ? known->second
                                  : measures_.emplace(id, ReadMeasure(id)).first->second;
}

std::vector<Id> Units::QualifiersOf(const Instance& measure) const {
  std::vector<Id> qualifiers;
  const auto add = [&](const Record& record) {
    for (const Value& item : record.List(record.count - 1)) qualifiers.push_back(item.Reference());
  };
  if (const Record* own = measure.Find("QUALIFIED_REPRESENTATION_ITEM")) add(*own);
  if (file_.Of("MEASURE_QUALIFICATION").empty()) return qualifiers;
  for (const Id user : file_.ReferrersOf(measure.id)) {
    const Instance* const relation = file_.Find(user);
    const Record* const record = relation->Find("MEASURE_QUALIFICATION");
    if (record != nullptr && record->Reference(2) == measure.id) add(*record);
  }
  return qualifiers;
}

Quantity Units::ReadMeasure(Id id) const {
  const Instance& instance = Get(file_, id);
  const MeasureAt at = FindMeasure(instance);
  const Unit unit = UnitOf(at.record->Reference(at.value + 1));
  const double number = at.record->Number(at.value);
  const std::string_view written = at.record->At(at.value).Untyped().Text();
  Quantity quantity;
  quantity.isAngle = unit.isAngle;
  quantity.unit = Cut(unit.name, kLongest);
  // One factor, and none where the units are the same: 0.1 stays 0.1.
  const double to = unit.isAngle ? kPi / 180 : metres_;
  quantity.value = unit.factor == to ? number : number * (unit.factor / to);
  if (!std::isfinite(quantity.value)) throw Unreadable(id, "its value is too large");
  quantity.decimals = DecimalsOf(written);
  for (const Id id : QualifiersOf(instance)) {
    const Instance* const format = file_.Find(id);
    const Record* const record =
        format == nullptr ? nullptr : format->Find("VALUE_FORMAT_TYPE_QUALIFIER");
    if (record == nullptr) continue;
    // "NR2 2.3": a number of two digits before the point and three behind it.
    const std::string text = record->Text(0);
    const std::size_t point = text.rfind('.');
    if (text.substr(0, 3) != "NR2" || point == std::string::npos) continue;
    quantity.decimals = std::atoi(text.c_str() + point + 1);
  }
  quantity.decimals = std::clamp(quantity.decimals, 0, 20);
  quantity.written = Cut(Shown(written, quantity.decimals), kLongest);
  return quantity;
}

}  // namespace step

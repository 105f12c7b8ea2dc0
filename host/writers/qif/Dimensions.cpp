// Dimensions.

#include <algorithm>
#include <cctype>
#include <cmath>

#include "writers/qif/Kinds.h"
#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

struct SizeModifier {
  const char* field;
  const char* drawn;
};
// In the order in which a definition has them (ASME Y14.5, ISO 14405-1).
constexpr SizeModifier kModifiers[] = {{"FreeState", "\u24BB"},
                                       {"StatisticalCharacteristic", "\u27E8ST\u27E9"},
                                       {"CommonTolerance", "CT"},
                                       {"EnvelopeRequirement", "\u24BA"},
                                       {"Independency", "\u24BE"}};

bool EndsWith(const std::string& text, std::string_view end) {
  return text.size() >= end.size() &&
         text.compare(text.size() - end.size(), std::string::npos, end) == 0;
}

bool TakeEnd(std::string& text, std::string_view end) {
  if (end.empty() || !EndsWith(text, end)) return false;
  text.resize(text.size() - end.size());
  return true;
}

// What stands right around a value, by its meaning.
struct Around {
  const char* type = nullptr;  // basic or reference
  std::vector<const char*> modifiers;
  std::string form, grade;  // of a fit
  bool hasMore = false;     // than QIF has
};

Around AroundOf(const DimensionTextsReport& texts) {
  Around around;
  std::string prefix = texts.prefix.value_or("");
  std::string suffix = texts.suffix.value_or("");
  const auto take = [&](char open, const char* close, const char* type) {
    if (prefix.empty() || prefix.front() != open || !TakeEnd(suffix, close)) return;
    prefix.erase(0, 1);
    around.type = type;
  };
  take('[', "]", "BASIC_OR_TED");
  if (around.type == nullptr) take('(', ")", "REFERENCE_OR_AUXILIARY");
  for (auto modifier = std::rbegin(kModifiers); modifier != std::rend(kModifiers); ++modifier) {
    if (TakeEnd(suffix, modifier->drawn)) around.modifiers.push_back(modifier->field);
  }
  std::reverse(around.modifiers.begin(), around.modifiers.end());
  const std::size_t digits = suffix.find_first_of("0123456789");
  const bool isFit = digits != std::string::npos && digits > 0 &&
                     suffix.find_first_not_of("0123456789", digits) == std::string::npos &&
                     std::all_of(suffix.begin(), suffix.begin() + static_cast<long>(digits),
                                 [](unsigned char c) { return std::isalpha(c) != 0; });
  if (isFit) {
    around.form = suffix.substr(0, digits);
    around.grade = suffix.substr(digits);
  }
  around.hasMore = !prefix.empty() || (!isFit && !suffix.empty());
  return around;
}

class DefinitionWriter {
 public:
  DefinitionWriter(Xml& xml, Plan& plan, const Item& item)
      : xml_(xml),
        plan_(plan),
        item_(item),
        dimension_(*item.annotation->dimension),
        kind_(*KindOf(kDimensionKinds, dimension_.type)) {}

  void Write() {
    const Around around = AroundOf(dimension_.texts);
    const bool isThread = item_.thread != 0;
    xml_.OpenWithId((std::string(kind_.name) + "CharacteristicDefinition").c_str(),
                    item_.definition);
    for (const char* modifier : around.modifiers) xml_.Leaf(modifier, "true");
    if (isThread) {
      xml_.Reference("ThreadSpecificationId", item_.thread);
    } else {
      if (around.type != nullptr) xml_.Leaf("DimensionType", around.type);
      WriteTolerance(around);
      if (kind_.whatToMeasure != nullptr) WriteWhatToMeasure();
    }
    xml_.Close();
    if (around.hasMore) Reduce("QIF has no place for what is written right around its value");
  }

 private:
  void Reduce(const std::string& reason) { plan_.omissions.Add("reduced", item_, reason); }

  void WriteWhatToMeasure() {
    xml_.Leaf("WhatToMeasure", kind_.whatToMeasure);
    if (kind_.report == "userDefined") {
      Reduce("whether it is a length or an angle is not told: it stands as a length");
    } else {
      Reduce("QIF asks for more of a coordinate or taper than the report tells");
    }
  }

  void WriteTolerance(const Around& around) {
    const bool isFit = !around.form.empty();
    if (HasLimits(dimension_)) {
      WriteLimits();
    } else if (HasDeviations()) {
      xml_.Open("Tolerance");
      Deviation("MaxValue", "upper", dimension_.upper);
      Deviation("MinValue", "lower", dimension_.lower);
      xml_.Leaf("DefinedAsLimit", "false");
      xml_.Close();
    } else if (isFit && kind_.report == "diameter") {
      const bool isHole = std::isupper(static_cast<unsigned char>(around.form.front())) != 0;
      xml_.Open("LimitsAndFitsSpecification");
      xml_.Attribute("zoneVariance", isHole ? "HOLE" : "SHAFT");
      xml_.Leaf("FormVariance", around.form);
      xml_.Leaf("Grade", around.grade);
      xml_.Close();
      return;
    } else {
      xml_.Leaf("NonTolerance", "MEASURED");
    }
    if (isFit) Reduce("QIF has no place for the name of its fit");
  }

  bool HasDeviations() {
    if (!dimension_.tolerancePrecision) return false;
    const bool are = std::isfinite(dimension_.upper.value_or(0) + dimension_.lower.value_or(0));
    if (!are) plan_.omissions.Add("lost", item_, "a limit of it is no number");
    return are;
  }

  void Deviation(const char* name, const char* field, const Number& deviation) {
    WriteValue(xml_, plan_, item_, name,
               {field, deviation.value_or(0), kind_.measure, dimension_.tolerancePrecision});
  }

  void WriteLimits() {
    const bool upper = IsLimit(dimension_.upperText), lower = IsLimit(dimension_.lowerText);
    const auto isOdd = [](const Text& text, bool is) { return !is && text.value_or("") != ""; };
    if (isOdd(dimension_.upperText, upper) || isOdd(dimension_.lowerText, lower)) {
      Reduce("a limit is a text that is no number");
    }
    if (!upper && !lower) {
      return xml_.Leaf("NonTolerance", "MEASURED");
    }
    xml_.Open("Tolerance");
    if (upper) Limit("MaxValue", *dimension_.upperText);
    if (lower) Limit("MinValue", *dimension_.lowerText);
    xml_.Leaf("DefinedAsLimit", "true");
    xml_.Close();
  }

  bool IsLimit(const Text& text) const {
    const std::string unit = UnitOf(text.value_or(""));
    return IsDecimal(text.value_or("").substr(0, text.value_or("").find(' '))) &&
           (unit.empty() || plan_.units.Knows(kind_.measure, unit));
  }

  // As drawn: the number, and its unit when it is not the report's.
  void Limit(const char* name, const std::string& text) {
    const std::string written = UnitOf(text);
    const std::string& unit = written.empty() ? plan_.units.Own(kind_.measure) : written;
    xml_.Open(name);
    if (unit != plan_.units.Default(kind_.measure)) {
      xml_.Attribute(kind_.measure == Measure::kLength ? "linearUnit" : "angularUnit", unit);
    }
    xml_.Content(text.substr(0, text.find(' ')));
    xml_.Close();
  }

  Xml& xml_;
  Plan& plan_;
  const Item& item_;
  const DimensionReport& dimension_;
  const DimensionKind& kind_;
};

}  // namespace

void WriteDimensionDefinition(Xml& xml, Plan& plan, const Item& item) {
  DefinitionWriter(xml, plan, item).Write();
}

void WriteDimensionNominal(Xml& xml, Plan& plan, const Item& item) {
  const DimensionReport& dimension = *item.annotation->dimension;
  const DimensionKind& kind = *KindOf(kDimensionKinds, dimension.type);
  xml.OpenWithId((std::string(kind.name) + "CharacteristicNominal").c_str(), item.id);
  WriteNominalStart(xml, plan, item);
  const bool hasValue = dimension.value && std::isfinite(*dimension.value);
  if (hasValue && item.thread == 0) {
    WriteValue(xml, plan, item, "TargetValue",
               {"value", *dimension.value, kind.measure, dimension.precision});
  } else if (dimension.value && !hasValue) {
    plan.omissions.Add("lost", item, "its value is no number");
  }
  if (const std::string reason = WhyNotTold(item); !reason.empty()) {
    plan.omissions.Add("reduced", item, reason);
  }
  if (kind.field != nullptr) xml.Leaf(kind.field, kind.value);
  xml.Close();
}

}  // namespace qif_writer

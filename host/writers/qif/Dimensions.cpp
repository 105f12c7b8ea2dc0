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

bool HasLimits(const DimensionReport& dimension) {
  return dimension.upperText.value_or("") != "" || dimension.lowerText.value_or("") != "";
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
      if (kind_.report == "userDefined") xml_.Leaf("WhatToMeasure", "not stated");
    }
    xml_.Close();
    if (around.hasMore) Reduce("QIF has no place for what is written right around its value");
  }

 private:
  void Reduce(const std::string& reason) { plan_.omissions.Add("reduced", item_, reason); }

  void WriteTolerance(const Around& around) {
    const bool isFit = !around.form.empty();
    if (HasLimits(dimension_)) {
      WriteLimits();
    } else if (dimension_.tolerancePrecision && std::isfinite(dimension_.upper.value_or(0)) &&
               std::isfinite(dimension_.lower.value_or(0))) {
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

  void Deviation(const char* name, const char* field, const Number& deviation) {
    if (!deviation) return;
    WriteValue(xml_, plan_, item_, name,
               {field, *deviation, kind_.measure, dimension_.tolerancePrecision});
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

// The value as it is drawn; empty where there is none.
std::string DrawnValue(const Item& item, const DimensionReport& dimension) {
  for (const WrittenReport& written : item.annotation->written) {
    if (written.field == "value") return written.text;
  }
  if (!dimension.value || !std::isfinite(*dimension.value)) return "";
  const std::string text = Decimal(*dimension.value);
  const int places = static_cast<int>(std::clamp(dimension.precision.value_or(0), 0.0, 15.0));
  if (PlacesOf(text) >= places) return text;
  return text + (PlacesOf(text) == 0 ? "." : "") +
         std::string(static_cast<std::size_t>(places - PlacesOf(text)), '0');
}

std::string DrawnTolerance(const DimensionReport& dimension) {
  if (HasLimits(dimension) || !dimension.tolerancePrecision) return "";
  const double upper = dimension.upper.value_or(0), lower = dimension.lower.value_or(0);
  if (!std::isfinite(upper) || !std::isfinite(lower)) return "";
  if (upper == -lower) return " \u00B1" + Rounded(upper, 6);
  return (upper < 0 ? " " : " +") + Rounded(upper, 6) + (lower < 0 ? "/" : "/+") +
         Rounded(lower, 6);
}

}  // namespace

void WriteDimensionDefinition(Xml& xml, Plan& plan, const Item& item) {
  DefinitionWriter(xml, plan, item).Write();
}

// Whether a hole callout, which is drawn as it stands, starts with what stands before its value.
static bool StartsWithBefore(const DimensionTextsReport& texts) {
  const std::string callout = texts.holeCallout.value_or("");
  const std::string before = texts.before.value_or("");
  if (callout.empty()) return true;
  if (callout.compare(0, before.size(), before) != 0) return false;
  std::string rest = callout.substr(before.size());
  for (const std::string mark : {" ", "\u2300", " "}) {
    if (rest.compare(0, mark.size(), mark) == 0) rest.erase(0, mark.size());
  }
  return rest.find_first_of(".0123456789") == 0;
}

void WriteDimensionNominal(Xml& xml, Plan& plan, const Item& item) {
  const DimensionReport& dimension = *item.annotation->dimension;
  const DimensionKind& kind = *KindOf(kDimensionKinds, dimension.type);
  xml.OpenWithId((std::string(kind.name) + "CharacteristicNominal").c_str(), item.id);
  WriteNominalStart(xml, plan, item);
  const bool hasValue = dimension.value && std::isfinite(*dimension.value);
  if (item.thread != 0) {
    if (hasValue) plan.omissions.Add("reduced", item, "QIF has a thread's text, not its diameter");
  } else if (hasValue) {
    WriteValue(xml, plan, item, "TargetValue",
               {"value", *dimension.value, kind.measure, dimension.precision});
  } else if (dimension.value) {
    plan.omissions.Add("lost", item, "its value is no number");
  }
  if (!StartsWithBefore(dimension.texts)) {
    plan.omissions.Add("reduced", item, "QIF has its hole callout, not what stands before it");
  }
  if (kind.field != nullptr) xml.Leaf(kind.field, kind.value);
  xml.Close();
}

void WriteThreads(Xml& xml, Plan& plan) {
  std::vector<const Item*> threads;
  for (const Item& item : plan.items) {
    if (item.thread != 0) threads.push_back(&item);
  }
  if (threads.empty()) return;
  xml.OpenList("ThreadSpecifications", threads.size());
  for (const Item* item : threads) {
    xml.Open("ThreadSpecification");
    xml.OpenWithId("TextThreadSpecification", item->thread);
    xml.Leaf("TextSpecification",
             Collapsed(item->annotation->dimension->texts.holeCallout.value_or("")));
    xml.Close();
    xml.Close();
  }
  xml.Close();
}

std::string DrawnDimension(const Item& item) {
  const DimensionReport& dimension = *item.annotation->dimension;
  const DimensionTextsReport& texts = dimension.texts;
  if (texts.holeCallout.value_or("") != "") return *texts.holeCallout;
  std::string value = DrawnValue(item, dimension);
  if (HasLimits(dimension)) {
    value = dimension.upperText.value_or("");
    if (!value.empty() && !dimension.lowerText.value_or("").empty()) value += "/";
    value += dimension.lowerText.value_or("");
  }
  const DimensionKind& kind = *KindOf(kDimensionKinds, dimension.type);
  std::string drawn = texts.before.value_or("");
  if (!drawn.empty()) drawn += ' ';
  drawn += texts.prefix.value_or("") + kind.mark + value;
  if (kind.measure == Measure::kAngle && !value.empty()) drawn += "\u00B0";
  drawn += DrawnTolerance(dimension) + texts.suffix.value_or("");
  if (texts.after.value_or("") != "") drawn += ' ' + *texts.after;
  return drawn;
}

}  // namespace qif_writer

#include "report/Notation.h"

#include <cmath>
#include <cstdio>
#include <map>

namespace text {

namespace {

std::string Symbol(const std::map<std::string, const char*>& symbols, const Text& name) {
  if (!name.has_value()) return "";
  const auto found = symbols.find(*name);
  return found == symbols.end() ? *name : found->second;
}

const std::map<std::string, const char*>& CharacteristicSymbols() {
  static const std::map<std::string, const char*> symbols{
      {"straightness", "⏤"}, {"flatness", "⏥"},         {"circularity", "○"},
      {"cylindricity", "⌭"}, {"lineProfile", "⌒"},      {"surfaceProfile", "⌓"},
      {"angularity", "∠"},   {"perpendicularity", "⟂"}, {"parallelism", "∥"},
      {"position", "⌖"},     {"concentricity", "◎"},    {"coaxiality", "◎"},
      {"symmetry", "⌯"},     {"circularRunout", "↗"},   {"totalRunout", "⌰"}};
  return symbols;
}

const std::map<std::string, const char*>& ModifierSymbols() {
  static const std::map<std::string, const char*> symbols{{"maximumMaterial", "Ⓜ"},
                                                          {"leastMaterial", "Ⓛ"},
                                                          {"regardlessOfFeatureSize", "Ⓢ"},
                                                          {"maximumMaterialReciprocity", "ⓂⓇ"},
                                                          {"leastMaterialReciprocity", "ⓁⓇ"},
                                                          {"projectedZone", "Ⓟ"},
                                                          {"freeState", "Ⓕ"},
                                                          {"tangentPlane", "Ⓣ"},
                                                          {"statisticalTolerance", "ST"},
                                                          {"unequallyDisposed", "Ⓤ"},
                                                          {"translation", "▷"},
                                                          {"maximumTolerance", "MAX "},
                                                          {"commonZone", "CZ"}};
  return symbols;
}

const std::map<std::string, const char*>& ValueTypeSymbols() {
  static const std::map<std::string, const char*> symbols{
      {"none", ""}, {"diametrical", "⌀"}, {"spherical", "S⌀"}, {"square", "□"}, {"radial", "R"}};
  return symbols;
}

const std::map<std::string, const char*>& DimensionSymbols() {
  static const std::map<std::string, const char*> symbols{{"diameter", "⌀"},
                                                          {"sphericalDiameter", "S⌀"},
                                                          {"radius", "R"},
                                                          {"sphericalRadius", "SR"},
                                                          {"square", "□"}};
  return symbols;
}

std::string Modifiers(const std::vector<ModifierReport>& modifiers) {
  std::string text;
  for (const ModifierReport& modifier : modifiers) {
    text += " " + Symbol(ModifierSymbols(), modifier.type);
    if (modifier.magnitude) text += DrawNumber(*modifier.magnitude);
  }
  return text;
}

// A deviation with its sign.
std::string Deviation(double value) {
  const std::string text = DrawNumber(value);
  return value > 0 ? "+" + text : text;
}

std::string Limits(const DimensionReport& dimension, const char* unit) {
  if (!dimension.upper || !dimension.lower) {
    const Number& only = dimension.upper ? dimension.upper : dimension.lower;
    return only ? " " + Deviation(*only) + unit : "";
  }
  const std::string upper = Deviation(*dimension.upper);
  const std::string lower = Deviation(*dimension.lower);
  if (upper == "0" && lower == "0" && dimension.tolerance != "plusMinus") return "";
  if (upper == Deviation(-*dimension.lower)) return " ±" + DrawNumber(*dimension.upper) + unit;
  return " " + upper + unit + "/" + lower + unit;
}

}  // namespace

std::string DrawNumber(double value) {
  if (!std::isfinite(value)) return value > 0 ? "∞" : value < 0 ? "-∞" : "?";
  // Small numbers get more decimals; those below 1e-12 are rounding errors.
  const double size = std::abs(value);
  if (size < 1e-12) return "0";
  const int decimals = size < 0.1 ? 5 - static_cast<int>(std::floor(std::log10(size))) : 6;
  char text[400];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  std::string digits(text);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  return digits == "-0" ? "0" : digits;
}

std::string DrawDimension(const DimensionReport& dimension) {
  const char* unit = dimension.mainType == "angular" ? "°" : "";
  const std::string before = dimension.texts.before.value_or("");
  const std::string after = dimension.texts.after.value_or("");
  std::string text = before.empty() ? "" : before + " ";
  text += dimension.texts.prefix.value_or("");
  const auto symbol = DimensionSymbols().find(dimension.type.value_or(""));
  if (symbol != DimensionSymbols().end()) text += symbol->second;
  const std::string upper = dimension.upperText.value_or("");
  const std::string lower = dimension.lowerText.value_or("");
  if (!upper.empty() || !lower.empty()) {
    text += upper + (upper.empty() || lower.empty() ? "" : "/") + lower + unit;
  } else if (dimension.value) {
    text += DrawNumber(*dimension.value) + unit + Limits(dimension, unit);
  } else if (dimension.texts.prefix.value_or("").empty() &&
             dimension.texts.suffix.value_or("").empty()) {
    text += text.empty() || text.back() == ' ' ? "(no value)" : " (no value)";
  }
  text += dimension.texts.suffix.value_or("");
  if (!after.empty()) text += " " + after;
  return text;
}

std::string CharacteristicSymbol(const ToleranceReport& tolerance) {
  return Symbol(CharacteristicSymbols(), tolerance.type);
}

std::vector<std::string> Compartments(const RowReport& row) {
  std::string text = Symbol(ValueTypeSymbols(), row.valueType);
  text += row.magnitude ? DrawNumber(*row.magnitude) : "?";
  text += Modifiers(row.modifiers);
  if (row.refinement.value_or(0) != 0) text += " / " + DrawNumber(*row.refinement);
  if (row.rateUnit1.value_or(0) != 0) text += "/" + DrawNumber(*row.rateUnit1);
  if (row.rateUnit2.value_or(0) != 0) text += "×" + DrawNumber(*row.rateUnit2);
  std::vector<std::string> compartments{text};
  if (!row.frame) return compartments;
  for (const ReferenceReport& reference : row.frame->references) {
    std::string datums;
    for (const FrameDatumReport& datum : reference.datums) {
      if (!datums.empty()) datums += "-";
      datums += datum.label.value_or("?") + Modifiers(datum.modifiers);
    }
    compartments.push_back(datums.empty() ? reference.label.value_or("?") : datums);
  }
  return compartments;
}

std::string DrawTolerance(const ToleranceReport& tolerance) {
  std::string text = CharacteristicSymbol(tolerance);
  for (std::size_t i = 0; i < tolerance.rows.size(); ++i) {
    const char* separator = i == 0 ? " | " : " / ";
    for (const std::string& compartment : Compartments(tolerance.rows[i])) {
      text += separator + compartment;
      separator = " | ";
    }
  }
  if (tolerance.allAround.value_or(false)) text += " (all around)";
  return text;
}

std::string DrawRoughness(const RoughnessReport& roughness) {
  std::string text = "√";
  for (const Text& field : roughness.fields) {
    if (!field.value_or("").empty()) text += " " + *field;
  }
  return text;
}

}  // namespace text

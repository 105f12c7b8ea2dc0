// Dimensions and surface texture.

#include <algorithm>
#include <set>

#include "checks/Rule.h"

namespace checks {

namespace {

// Calls work with each annotation that is a dimension, and its dimension.
template <typename Work>
void ForDimensions(const Index& index, Work work) {
  for (const AnnotationReport* annotation : index.OfKind("dimension")) {
    work(*annotation, *annotation->dimension);
  }
}

std::string KindOf(const DimensionReport& dimension) {
  return dimension.type.value_or("dimension");
}

void OnNothing(const Index& index, Findings& findings) {
  ForDimensions(index, [&](const AnnotationReport& annotation, const DimensionReport& dimension) {
    if (!annotation.entities.empty() || !index.IsWhole(annotation.id)) return;
    findings.Add(annotation, KindOf(dimension) + " on no geometry");
  });
}

void CrossedLimits(const Index& index, Findings& findings) {
  ForDimensions(index, [&](const AnnotationReport& annotation, const DimensionReport& dimension) {
    if (!dimension.lower || !dimension.upper || !(*dimension.upper < *dimension.lower)) return;
    if (index.IsReduced(annotation.id, "is not stated") || !index.IsWhole(annotation.id)) return;
    // Of limits, a report has what they deviate from the value.
    const bool isLimits = dimension.tolerance == "limits" && dimension.value.has_value();
    const double from = isLimits ? *dimension.value : 0;
    findings.Add(annotation, "upper " + Drawn(from + *dimension.upper) + " is below lower " +
                                 Drawn(from + *dimension.lower));
  });
}

void NoSize(const Index& index, Findings& findings) {
  // Distances, coordinates and angles may be zero or negative.
  static const std::set<std::string> sizes{"length",
                                           "width",
                                           "height",
                                           "depth",
                                           "thickness",
                                           "diameter",
                                           "sphericalDiameter",
                                           "radius",
                                           "sphericalRadius",
                                           "chord",
                                           "curveLength",
                                           "square",
                                           "thread"};
  ForDimensions(index, [&](const AnnotationReport& annotation, const DimensionReport& dimension) {
    if (sizes.count(KindOf(dimension)) == 0 || !dimension.value || *dimension.value > 0) return;
    if (!index.IsWhole(annotation.id)) return;
    // An edge may be broken by a radius of 0 to 0.5.
    const bool isRange = dimension.lower == 0.0 && dimension.upper.value_or(0) > 0;
    if (*dimension.value == 0 && isRange) return;
    findings.Add(annotation, KindOf(dimension) + " of " + Drawn(*dimension.value));
  });
}

// Such as "4X": how many features there are.
bool IsCount(const std::string& text) {
  return text.find_first_not_of("0123456789 xX×") == std::string::npos;
}

void NoTolerance(const Index& index, Findings& findings) {
  ForDimensions(index, [&](const AnnotationReport& annotation, const DimensionReport& dimension) {
    // A thread has its class. Of any other size a text may say more: "MAX", or a class of fit.
    if (dimension.tolerance != "none" || !dimension.value || dimension.type == "thread") return;
    const DimensionTextsReport& texts = dimension.texts;
    for (const Text* text : {&texts.prefix, &texts.suffix, &texts.before, &texts.after,
                             &texts.upper, &texts.lower, &texts.holeCallout, &texts.below}) {
      if (!IsCount(text->value_or(""))) return;
    }
    if (!index.IsWhole(annotation.id) || index.IsReduced(annotation.id, "Tolerance")) return;
    findings.Add(annotation, KindOf(dimension) + " " + Drawn(*dimension.value) +
                                 " has no tolerance of its own");
  });
}

void NoTexture(const Index& index, Findings& findings) {
  for (const AnnotationReport* annotation : index.OfKind("roughness")) {
    const RoughnessReport& roughness = *annotation->roughness;
    // Where machining is forbidden the symbol alone says that the surface stays as it is.
    if (roughness.obtention == "machiningForbidden" || !index.IsWhole(annotation->id)) continue;
    // A small letter stands for a requirement that is explained elsewhere.
    const auto hasValue = [](const Text& field) {
      const std::string text = field.value_or("");
      return text.find_first_of("0123456789") != std::string::npos ||
             (text.size() == 1 && text[0] >= 'a' && text[0] <= 'z');
    };
    if (std::any_of(roughness.fields.begin(), roughness.fields.end(), hasValue)) continue;
    findings.Add(*annotation, "surface texture without a value");
  }
}

}  // namespace

std::vector<Rule> ValueRules() {
  return {
      {"S1", "warning", "a dimension on no geometry", "ASME Y14.5-2018, section 4; ISO 14405-1",
       "attach the dimension to what it measures", "length 10 on nothing", "length 10 on two faces",
       OnNothing},
      {"S2", "error", "an upper limit below the lower one",
       "ASME Y14.5-2018, section 5; ISO 14405-1", "exchange or mend the limits",
       "diameter 10 with deviations +0.1 below and -0.1 above",
       "diameter 10 with deviations -0.2 and -0.1", CrossedLimits},
      {"S3", "error", "a size of zero or less", "ASME Y14.5-2018, section 5; ISO 14405-1",
       "state the size", "diameter 0", "diameter 0.5; distance 0; radius 0 +0.5/0", NoSize},
      {"S4", "note", "no tolerance, and neither basic nor reference",
       "ASME Y14.5-2018, section 4; ISO 14405-1",
       "see that a general tolerance covers the dimension, or give it one", "diameter 10",
       "diameter 10 ±0.1; diameter 10 H7; basic diameter 10", NoTolerance},
      {"R1", "warning", "surface texture without a value", "ISO 21920-1",
       "state the parameter and its limit", "a symbol with the lay alone",
       "Ra 1.6; a symbol that forbids machining", NoTexture},
  };
}

}  // namespace checks

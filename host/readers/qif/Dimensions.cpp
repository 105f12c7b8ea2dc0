// Dimensions: every characteristic that has a size.

#include <algorithm>
#include <cmath>

#include "model/Decimals.h"
#include "readers/qif/DimensionKinds.h"
#include "readers/qif/Reading.h"
#include "readers/qif/Text.h"

namespace qif {

namespace {

// What a user-defined dimension is, where it says that with one of these words.
struct Meant {
  std::string_view word;
  dimension_type type;
  dimension_subtype subtype;
};
constexpr Meant kMeant[] = {
    {"linear coordinate", dim_coordinate, dim_sub_linear_coordinate},
    {"angular coordinate", dim_coordinate, dim_sub_angular_coordinate},
    {"conical taper", dim_taper, dim_sub_conical_taper},
    {"flat taper", dim_taper, dim_sub_flat_taper},
};

// Elements of threads and fits.
constexpr const char* kThreadId = "ThreadSpecificationId";
constexpr const char* kThreadText = "TextSpecification";
constexpr const char* kFit = "LimitsAndFitsSpecification";

// What is written around a value for the type of its dimension (ASME Y14.5, ISO 129-1).
struct Marks {
  const wchar_t* before = L"";
  const wchar_t* after = L"";
  bool unknown = false;  // to the model
};
constexpr Word<Marks> kDimensionTypes[] = {{"UNDEFINED", {}},
                                           {"BASIC_OR_TED", {L"[", L"]"}},
                                           {"REFERENCE_OR_AUXILIARY", {L"(", L")"}},
                                           {"SET", {L"", L"", true}}};

// A written number with the decimal places that are stated for it: 35.2 with two is 35.20.
std::string WithDecimals(std::string written, int decimals) {
  if (written.find_first_of("eE") != std::string::npos) return written;
  const std::size_t point = std::min(written.find('.'), written.size());
  const std::size_t have = point < written.size() ? written.size() - point - 1 : 0;
  if (decimals <= 0 || have >= static_cast<std::size_t>(decimals)) return written;
  if (point == written.size()) written += '.';
  return written.append(static_cast<std::size_t>(decimals) - have, '0');
}

class DimensionReader {
 public:
  DimensionReader(Reading& reading, const Characteristic& characteristic, const DimensionKind& kind)
      : reading_(reading),
        nominal_(characteristic.nominal),
        definition_(characteristic.definition),
        kind_(kind) {}

  // Null for what is not a dimension after all: a quantity without a value and limits.
  ENTITY* Read() {
    features_ = reading_.FeaturesOf(nominal_, false);
    const bool hasValue = ReadValue();
    const bool hasLimits = ReadLimits();
    const Element element = nominal_.Record();
    RequireFinite(element, {fields_.value, fields_.upper_limit, fields_.lower_limit});
    if (kind_.measure == Measure::kPlain && !(hasValue && hasLimits)) return nullptr;
    ReadTexts();
    fields_.type = kind_.type;
    fields_.subtype = kind_.subtype;
    if (kind_.type == dim_user_defined) ReadMeant();
    if (!hasValue) {
      reading_.Skip(Severity::kReduced, element, "it states no target value");
    }
    auto& dimension = reading_.part.AddDimension(Members(), fields_.type, fields_.subtype, 0);
    auto& fields = standin::Edit(dimension);
    fields = fields_;
    // A thread that is given as a text has no diameter.
    const bool isText = kind_.type == dim_thread && fields.value == 0;
    if (!hasValue || isText) fields.value_precision = kNotStated;
    if (!hasLimits) fields.tolerance_precision = kNotStated;
    for (const Document::Entry* feature : features_) {
      if (IsHole(feature->element)) reading_.holeDimensions.insert(&dimension);
    }
    return &dimension;
  }

 private:
  Quantity Measured(Element element) const {
    if (kind_.measure == Measure::kAngle) return reading_.units.Angle(element);
    if (kind_.measure == Measure::kPlain) return reading_.units.Plain(element);
    return reading_.units.Length(element);
  }

  // The decimals of a value: as stated, or as many as are written.
  int DecimalsOf(Element element, const Quantity& value) {
    const Attribute stated = element.attribute("decimalPlaces");
    if (!stated) return value.decimals;
    const std::optional<std::uint32_t> decimals = WholeNumber(stated.value());
    if (decimals.has_value() && *decimals <= kMostDecimals) return static_cast<int>(*decimals);
    const bool isMany = decimals.has_value();
    reading_.Skip(isMany ? Severity::kReduced : Severity::kLost, element,
                  Quote(stated.value()) + (isMany ? " decimal places are more than the model has"
                                                  : " is no number of decimal places"));
    return isMany ? kMostDecimals : value.decimals;
  }

  // Other words stay in the account: the model has no place for them.
  void ReadMeant() {
    const std::string_view text = TextOf(definition_.Record(), "WhatToMeasure");
    for (const Meant& meant : kMeant) {
      if (meant.word != text) continue;
      definition_.Pass({"WhatToMeasure"});
      fields_.type = meant.type;
      fields_.subtype = meant.subtype;
    }
  }

  Element DefinitionOf(const Document::Entry& feature) const {
    const Document::Entry* const definition =
        reading_.document.Find(Child(feature.element, "FeatureDefinitionId"));
    return definition == nullptr ? Element() : definition->element;
  }

  bool ReadValue() {
    if (const Element target = nominal_["TargetValue"]) {
      const Quantity value = Measured(target);
      fields_.value = reading_.Value("value", value);
      fields_.value_precision = DecimalsOf(target, value);
      return true;
    }
    if (kind_.type == dim_thread) return ReadThread();
    for (const Document::Entry* feature : features_) {
      const Element definition = DefinitionOf(*feature);
      for (const auto& [field, factor] :
           {std::pair(kind_.field, 1.0), std::pair(kind_.otherField, kind_.otherFactor)}) {
        const Element size = field == nullptr ? Element() : Child(definition, field);
        if (!size) continue;
        const Quantity value = Measured(size);
        // Of a diameter for a radius, nothing is written of the value itself.
        fields_.value = factor == 1 ? reading_.Value("value", value) : factor * value.value;
        return true;
      }
    }
    return false;
  }

  bool ReadThread() {
    const Document::Entry* const entry = reading_.document.Find(definition_[kThreadId]);
    if (entry == nullptr) throw Unreadable(definition_.Record(), "its thread does not exist");
    Fields thread(entry->element);
    thread.Pass({"Name"});
    if (const Element text = thread[kThreadText]) {
      fields_.hole_callout = reading_.ShortText(text);
    } else {
      const Quantity diameter = reading_.units.Length(thread["Diameter"]);
      fields_.value = reading_.Value("value", diameter);
      fields_.value_precision = DecimalsOf(thread["Diameter"], diameter);
      std::wstring callout = Wide(diameter.Written());
      for (const char* field : {"ThreadDensity", "ThreadSeries", "ThreadToleranceClass"}) {
        const Element part = thread[field];
        const bool isNested = TextOf(part).empty() && part.first_child();
        const std::wstring text = reading_.ShortText(isNested ? part.first_child() : part);
        if (!text.empty()) callout += L"-" + text;
      }
      fields_.hole_callout = callout;
    }
    reading_.SkipRest(thread);
    return true;
  }

  // Limits are deviations from the value. Where the document states the limits themselves, they
  // stay as texts.
  bool ReadLimits() {
    const bool ownLimits = kind_.name == "UserDefinedUnit";
    Fields inDefinition(ownLimits ? Element() : definition_["Tolerance"]);
    Fields& tolerance = ownLimits ? nominal_ : inDefinition;
    if (!tolerance.Record()) return false;
    Fields elsewhere(
        tolerance["DefinitionId"]
            ? reading_.document.RequireChild(tolerance.Record(), "DefinitionId").element
            : Element());
    Fields& limits = elsewhere.Record() ? elsewhere : tolerance;
    const bool asLimits = reading_.Flag(tolerance["DefinedAsLimit"]);
    bool found = false;
    const auto read = [&](const char* name, const char* field, double& deviation, pmi_text& text) {
      const Element element = limits[name];
      if (!element) {
        const std::string reason = std::string(name) + " is not stated";
        return reading_.Skip(Severity::kReduced, tolerance.Record(), reason);
      }
      const Quantity limit = Measured(element);
      reading_.Value(std::string(field) + (asLimits ? "Text" : ""), limit);
      const int decimals = DecimalsOf(element, limit);
      deviation = asLimits ? Difference(limit.value, fields_.value) : limit.value;
      if (asLimits) {
        Quantity drawn = limit;
        drawn.text = WithDecimals(limit.text, decimals);
        text = Wide(drawn.Written());
      }
      fields_.tolerance_precision = std::max<double>(fields_.tolerance_precision, decimals);
      found = true;
    };
    read("MaxValue", "upper", fields_.upper_limit, fields_.upper_text);
    read("MinValue", "lower", fields_.lower_limit, fields_.lower_text);
    reading_.SkipRest(inDefinition);
    elsewhere.Pass({"Name"});
    reading_.SkipRest(elsewhere);
    return found;
  }

  // What is written right around the value: the parentheses of a reference dimension, the box of a
  // basic one as brackets, the tolerance class of a fit, and modifiers.
  void ReadTexts() {
    std::wstring prefix;
    std::wstring suffix;
    if (const Element element = definition_[kFit]) {
      Fields fit(element);
      suffix = reading_.ShortText(fit["FormVariance"]) + reading_.ShortText(fit["Grade"]);
      reading_.Skip(Severity::kReduced, element,
                    "the model has the name of the fit, not its limits");
      reading_.SkipRest(fit);
    }
    for (const SizeModifier& modifier : kSizeModifiers) {
      if (reading_.Flag(definition_[modifier.field])) suffix += modifier.drawn;
    }
    const Element type = definition_["DimensionType"];
    const Marks marks = reading_.MeaningOf(type, kDimensionTypes, Marks());
    if (marks.unknown) reading_.Skip(Severity::kReduced, type, "the model has no place for it");
    prefix += marks.before;
    suffix += marks.after;
    if (prefix.empty() && suffix.empty()) return;
    fields_.note = &reading_.part.Make<KOVAPMI_NOTE>();
    auto& note = standin::Edit(*fields_.note);
    if (!prefix.empty()) note.prefix = prefix;
    if (!suffix.empty()) note.suffix = suffix;
  }

  std::vector<ENTITY*> Members() {
    std::vector<ENTITY*> members = reading_.AssociatedEntities(nominal_);
    Fields origin(nominal_["OriginReference"]);
    std::vector<ENTITY*> others = reading_.AssociatedEntities(origin);
    if (const Element reference = origin["DatumDefinitionId"]) {
      const Document::Entry* const entry = reading_.document.Find(reference);
      ENTITY* const datum = entry == nullptr ? nullptr : entry->entity;
      if (is_ATTRIB_KOVAPMI_DATUM(datum) == 1) {
        others = reading_.EntitiesUnder({static_cast<const ATTRIB*>(datum)});
      } else {
        reading_.Lose(reference, "the datum of its origin is not there");
      }
    }
    reading_.SkipRest(origin);
    std::unordered_set<const ENTITY*> seen(members.begin(), members.end());
    for (ENTITY* entity : others) {
      if (seen.insert(entity).second) members.push_back(entity);
    }
    return members;
  }

  bool IsHole(Element feature) const {
    if (NameOf(feature) == "ThreadedFeatureNominal") return true;
    if (NameOf(feature) != "GroupFeatureNominal") return false;
    const Document::Entry* const entry =
        reading_.document.Find(Child(feature, "FeatureDefinitionId"));
    if (entry == nullptr) return false;
    for (const char* field : {"IsCountersunkHole", "IsCounterboredHole", "IsSpotface"}) {
      if (reading_.Flag(Child(entry->element, field))) return true;
    }
    return false;
  }

  Reading& reading_;
  Fields& nominal_;
  Fields& definition_;
  const DimensionKind& kind_;
  std::vector<Document::Entry*> features_;
  KOVAPMI_DIMENSION::fields fields_;
};

}  // namespace

ENTITY* ReadDimension(Reading& reading, const Characteristic& characteristic) {
  for (const DimensionKind& kind : kDimensionKinds) {
    if (kind.name != characteristic.kind) continue;
    return DimensionReader(reading, characteristic, kind).Read();
  }
  return nullptr;
}

}  // namespace qif

// Dimensions: sizes and locations with their values and deviations (ISO 129-1, ASME Y14.5).

#include <algorithm>

#include "model/Decimals.h"
#include "readers/step/DimensionKinds.h"
#include "readers/step/Reading.h"

namespace step {

namespace {

constexpr const char* kSizes[] = {"DIMENSIONAL_SIZE", "ANGULAR_SIZE", "DIMENSIONAL_SIZE_WITH_PATH",
                                  "DIMENSIONAL_SIZE_WITH_DATUM_FEATURE"};
constexpr const char* kLocations[] = {
    "DIMENSIONAL_LOCATION", "ANGULAR_LOCATION", "DIRECTED_DIMENSIONAL_LOCATION",
    "DIMENSIONAL_LOCATION_WITH_PATH", "DIMENSIONAL_LOCATION_WITH_DATUM_FEATURE"};

// The record of a size or location, and the place of its first parameter. A simple instance that is
// a datum feature too has the parameters of both, in either order: those of the size or location
// begin where a reference stands, or behind the four of a shape aspect.
std::pair<const Record*, std::uint32_t> OwnOf(const Instance& instance, bool isSize) {
  const Record& record = instance.As(isSize ? kSizes[0] : "SHAPE_ASPECT_RELATIONSHIP");
  const bool isBoth = record.name == (isSize ? kSizes[3] : kLocations[4]);
  return {&record, isBoth && record.At(isSize ? 0 : 3).kind != Value::kReference ? 4 : 0};
}

// The aspects that a size or a location is on.
std::vector<Id> AspectsOf(const Instance& instance, bool isSize) {
  const auto [own, first] = OwnOf(instance, isSize);
  if (isSize) return {own->Reference(first)};
  return {own->Reference(first + 2), own->Reference(first + 3)};
}

class DimensionReader {
 public:
  DimensionReader(Reading& reading, const Instance& instance, bool isSize)
      : reading_(reading),
        instance_(instance),
        isSize_(isSize),
        isAngular_(instance.Find("ANGULAR_SIZE") != nullptr ||
                   instance.Find("ANGULAR_LOCATION") != nullptr) {}

  void Read() {
    auto& dimension = MakeDimension();
    dimension_ = &dimension;
    auto& fields = standin::Edit(dimension);
    for (const Id use :
         reading_.ReferrersOf(instance_.id, "DIMENSIONAL_CHARACTERISTIC_REPRESENTATION")) {
      const Record& record = reading_.Get(use).records.front();
      if (record.Reference(0) != instance_.id) continue;
      const Instance& representation = reading_.Get(record.Reference(1));
      const Record* items = representation.Find("REPRESENTATION");
      if (items == nullptr) items = &representation.records.front();
      for (const Value& item : items->List(1)) {
        reading_.Try(instance_.id, [&] { ReadItem(item.Reference(), 0); });
      }
    }
    for (const Id id : reading_.ReferrersOf(instance_.id, "PLUS_MINUS_TOLERANCE")) {
      reading_.Try(instance_.id, [&] { ReadTolerance(reading_.Get(id)); });
    }
    Take(fields);
    reading_.annotations[instance_.id] = &dimension;
  }

 private:
  KOVAPMI_DIMENSION& MakeDimension() {
    std::vector<ENTITY*> members;
    const auto [own, first] = OwnOf(instance_, isSize_);
    const std::string name = own->Text(isSize_ ? first + 1 : first);
    for (const Id aspect : AspectsOf(instance_, isSize_)) {
      for (ENTITY* entity : reading_.EntitiesOf(aspect)) members.push_back(entity);
    }
    const DimensionKind kind = KindOf(name, isSize_, isAngular_);
    auto& dimension = reading_.part.AddDimension(members, kind.type, kind.subtype, 0);
    reading_.Describe(dimension, instance_.id, "dimension",
                      kind.name.empty() && !isAngular_ && !name.empty() ? name : LabelOr(name));
    for (const char* more : {"DIMENSIONAL_SIZE_WITH_PATH", "DIMENSIONAL_LOCATION_WITH_PATH",
                             "DIRECTED_DIMENSIONAL_LOCATION"}) {
      if (instance_.Find(more) == nullptr) continue;
      reading_.Skip(Severity::kReduced, instance_.id,
                    std::string_view(more) == "DIRECTED_DIMENSIONAL_LOCATION"
                        ? "its direction is left out"
                        : "its path is left out",
                    &dimension);
    }
    if (kind.name.empty() && !isAngular_) {
      reading_.Skip(Severity::kReduced, instance_.id, "its kind '" + name + "' is unknown",
                    &dimension);
    }
    return dimension;
  }

  // The name of what presents it, or, where that has none, the kind that it is called by.
  std::string LabelOr(const std::string& kind) {
    for (const Id id : reading_.file.ReferrersOf(instance_.id)) {
      if (!reading_.Is(id, "DRAUGHTING_MODEL_ITEM_ASSOCIATION") &&
          !reading_.Is(id, "DRAUGHTING_MODEL_ITEM_ASSOCIATION_WITH_PLACEHOLDER")) {
        continue;
      }
      const Value& element = reading_.Get(id).records.front().At(4);
      std::string name = reading_.NameOf(element.Reference());
      if (!name.empty()) return name;
    }
    return kind;
  }

  // An item of the representation: a value, a limit or a note.
  void ReadItem(Id id, int depth) {
    reading_.Spend(1);
    const Instance& item = reading_.Get(id);
    const std::string name = reading_.NameOf(id);
    if (const Record* note = item.Find("DESCRIPTIVE_REPRESENTATION_ITEM")) {
      return ReadNote(reading_.Spend(note->Text(note->count - 1)));
    }
    if (const Record* compound = item.Find("COMPOUND_REPRESENTATION_ITEM")) {
      return ReadItems(*compound, depth);
    }
    if (const Record* range = item.Find("VALUE_RANGE")) return ReadItems(*range, depth);
    const Quantity quantity = reading_.units.Measure(id, isAngular_);
    const bool isUpper = name == "upper limit" || name == "maximum";
    const bool isLower = name == "lower limit" || name == "minimum";
    bool& isKnown = isUpper ? hasLimit_[0] : isLower ? hasLimit_[1] : hasValue_;
    if (isKnown) {
      reading_.Skip(Severity::kLost, instance_.id, "its second value is left out", dimension_);
    } else {
      (isUpper ? limits_[0] : isLower ? limits_[1] : value_) = quantity;
    }
    isKnown = true;
    ReadQualifiers(item);
  }

  // The items of a set, each once: none holds itself.
  void ReadItems(const Record& set, int depth) {
    if (depth > 10) throw Unreadable(set.of, "its items are nested too deeply");
    if (!sets_.insert(set.of).second) return;
    for (const Value& inner : set.At(set.count - 1).Untyped()) {
      ReadItem(inner.Reference(), depth + 1);
    }
  }

  void ReadQualifiers(const Instance& item) {
    for (const Id id : reading_.units.QualifiersOf(item)) {
      reading_.Spend(1);
      const Instance& qualifier = reading_.Get(id);
      if (const Record* type = qualifier.Find("TYPE_QUALIFIER")) {
        const std::string text = reading_.Spend(type->Text(0));
        after_ += (after_.empty() ? "" : " ") + (text == "maximum"   ? "MAX"
                                                 : text == "minimum" ? "MIN"
                                                                     : text);
      } else if (qualifier.Find("VALUE_FORMAT_TYPE_QUALIFIER") == nullptr) {
        reading_.Skip(Severity::kReduced, instance_.id,
                      std::string(qualifier.records.front().name) + " is left out", dimension_);
      }
    }
  }

  // What is said of a dimension in words (ISO 10303-47): marks around the value, and texts.
  void ReadNote(const std::string& note) {
    if (note == "theoretical" || note == "theoretical exact" || note == "basic") {
      prefix_ = "[" + prefix_;
      suffix_ += "]";
    } else if (note == "auxiliary" || note == "reference") {
      prefix_ = "(" + prefix_;
      suffix_ += ")";
    } else if (note == "square") {
      prefix_ += "□";
    } else {
      after_ += (after_.empty() ? "" : " ") + note;
    }
  }

  void ReadTolerance(const Instance& tolerance) {
    const Instance& range = reading_.Get(tolerance.records.front().Reference(0));
    const Record& record = range.records.front();
    if (record.name == "LIMITS_AND_FITS") {
      suffix_ += reading_.Spend(record.Text(0) + record.Text(2));
      reading_.Skip(Severity::kReduced, instance_.id,
                    "the model has the name of the fit, not its limits", dimension_);
      return;
    }
    if (record.name != "TOLERANCE_VALUE") throw Unreadable(range.id, "it is no tolerance value");
    if (hasDeviations_) throw Unreadable(range.id, "its second tolerance is left out");
    deviations_[0] = reading_.units.Measure(record.Reference(1), isAngular_);
    deviations_[1] = reading_.units.Measure(record.Reference(0), isAngular_);
    // In whichever order they stand.
    if (deviations_[0].value < deviations_[1].value) std::swap(deviations_[0], deviations_[1]);
    hasDeviations_ = true;
  }

  std::string Shown(const Quantity& quantity) const {
    const char* const own = quantity.isAngle ? "degree" : reading_.units.LinearUnit().c_str();
    return quantity.unit == own ? quantity.written : quantity.written + " " + quantity.unit;
  }

  void Take(KOVAPMI_DIMENSION::fields& fields) {
    if (hasLimit_[0] && hasLimit_[1] && limits_[0].value < limits_[1].value) {
      std::swap(limits_[0], limits_[1]);
    }
    if (hasValue_) {
      fields.value = value_.value;
      fields.value_precision = value_.decimals;
      reading_.Write(*dimension_, "value", value_);
    } else {
      fields.value_precision = kNotStated;
      reading_.Skip(Severity::kReduced, instance_.id, "it has no value", dimension_);
    }
    if (hasDeviations_ && (hasLimit_[0] || hasLimit_[1])) {
      reading_.Skip(Severity::kReduced, instance_.id, "its limits are left out beside deviations",
                    dimension_);
    }
    const char* const names[] = {"upper", "lower"};
    fields.tolerance_precision = kNotStated;
    for (int i = 0; i < 2; ++i) {
      double& deviation = i == 0 ? fields.upper_limit : fields.lower_limit;
      pmi_text& text = i == 0 ? fields.upper_text : fields.lower_text;
      const Quantity* used = nullptr;
      if (hasDeviations_) {
        used = &deviations_[i];
        deviation = used->value;
      } else if (hasLimit_[i]) {
        used = &limits_[i];
        deviation = Difference(used->value, fields.value);
        text = Wide(Shown(*used));
      }
      if (used == nullptr) continue;
      fields.tolerance_precision = std::max<double>(fields.tolerance_precision, used->decimals);
      reading_.Write(*dimension_, names[i], *used);
    }
    if (prefix_.empty() && suffix_.empty() && after_.empty()) return;
    fields.note = &reading_.part.Make<KOVAPMI_NOTE>();
    auto& note = standin::Edit(*fields.note);
    if (!prefix_.empty()) note.prefix = Wide(prefix_);
    if (!suffix_.empty()) note.suffix = Wide(suffix_);
    if (!after_.empty()) note.after = Wide(after_);
  }

  Reading& reading_;
  const Instance& instance_;
  bool isSize_;
  bool isAngular_;
  KOVAPMI_DIMENSION* dimension_ = nullptr;
  Quantity value_;
  Quantity limits_[2];      // upper, lower
  Quantity deviations_[2];  // upper, lower
  bool hasValue_ = false;
  bool hasLimit_[2] = {};
  bool hasDeviations_ = false;
  std::string prefix_, suffix_, after_;
  std::unordered_set<Id> sets_;
};

}  // namespace

void ReadDimensions(Reading& reading) {
  std::vector<std::pair<Id, bool>> all;
  std::unordered_set<Id> seen;
  const auto add = [&](const auto& entities, bool isSize) {
    for (const char* entity : entities) {
      for (const Id id : reading.file.Of(entity)) {
        if (seen.insert(id).second) all.emplace_back(id, isSize);
      }
    }
  };
  add(kSizes, true);
  add(kLocations, false);
  std::sort(all.begin(), all.end(), [&](const auto& a, const auto& b) {
    return reading.file.OffsetOf(a.first) < reading.file.OffsetOf(b.first);
  });
  for (const auto& [id, isSize] : all) {
    reading.Try(id, [&, id = id, isSize = isSize] {
      const Instance& instance = reading.Get(id);
      if (!reading.IsOfProduct(AspectsOf(instance, isSize).front(), id)) return;
      reading.Count("dimensions");
      DimensionReader(reading, instance, isSize).Read();
    });
  }
}

std::vector<Id> MeasuredBy(const Instance& instance) {
  const auto isOneOf = [&](const auto& entities) {
    return std::any_of(std::begin(entities), std::end(entities),
                       [&](const char* entity) { return instance.Find(entity) != nullptr; });
  };
  // One that is a datum feature besides identifies its own topology.
  if (instance.Find(kSizes[3]) != nullptr || instance.Find(kLocations[4]) != nullptr) return {};
  const bool isSize = isOneOf(kSizes);
  return isSize || isOneOf(kLocations) ? AspectsOf(instance, isSize) : std::vector<Id>();
}

}  // namespace step

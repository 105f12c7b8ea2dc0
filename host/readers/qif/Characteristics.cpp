// The list of characteristics: each nominal becomes one annotation, described by its definition.

#include <algorithm>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

constexpr std::string_view kNominal = "CharacteristicNominal";

bool Contains(std::initializer_list<std::string_view> names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsOff(std::string_view text) {
  return text == "false" || text == "0" || text == "NONE" || text == "UNDEFINED";
}

// The name of a characteristic: its own, its designator or its label.
std::string_view NameOfCharacteristic(Element nominal) {
  std::string_view name = TextOf(nominal, "Name");
  if (name.empty()) name = TextOf(Child(nominal, "CharacteristicDesignator"), "Designator");
  return name.empty() ? nominal.attribute("label").value() : name;
}

class CharacteristicsReader {
 public:
  explicit CharacteristicsReader(Reading& reading)
      : reading_(reading), characteristics_(reading.document.At({"Characteristics"})) {}

  void Read() {
    for (const Element nominal : Child(characteristics_, "CharacteristicNominals").children()) {
      const Document::Entry& definition =
          reading_.document.RequireChild(nominal, "CharacteristicDefinitionId");
      const bool firstUse = used_.insert(definition.id).second;
      reading_.Try(nominal, [&] { ReadNominal(nominal, definition.element, firstUse); });
    }
    for (const Element item : Child(characteristics_, "CharacteristicItems").children()) {
      reading_.Count("characteristicItems");
      reading_.Try(item, [&] {
        const Element nominal = Child(item, "CharacteristicNominalId");
        if (reading_.document.Find(nominal) == nullptr) reading_.Skip(item, "it has no nominal");
      });
    }
    for (const Element definition :
         Child(characteristics_, "CharacteristicDefinitions").children()) {
      if (used_.count(reading_.document.EntryOf(definition).id) == 0) {
        reading_.Skip(definition, "no nominal uses it");
      }
    }
    SkipUnknown(reading_, characteristics_, characteristics_,
                {"FormalStandardId", "CharacteristicDefinitions", "CharacteristicNominals",
                 "CharacteristicItems"});
  }

 private:
  void ReadNominal(Element nominal, Element definition, bool firstUse) {
    RequireRecord(nominal);
    RequireRecord(definition);
    std::string_view kind = NameOf(nominal);
    const bool isNominal =
        kind.size() > kNominal.size() && kind.substr(kind.size() - kNominal.size()) == kNominal;
    kind.remove_suffix(isNominal ? kNominal.size() : 0);
    if (NameOf(definition) != std::string(kind) + "CharacteristicDefinition") {
      reading_.Count("otherCharacteristics");
      reading_.Skip(nominal, "its definition is a " + std::string(NameOf(definition)));
      return;
    }
    const Characteristic characteristic = {kind, nominal, definition, firstUse};
    struct Kind {
      ENTITY* (*read)(Reading&, const Characteristic&);
      const char* count;
      const char* label;
    };
    constexpr Kind kKinds[] = {{ReadDimension, "dimensions", "dimension"},
                               {ReadTolerance, "geometricTolerances", "geometric tolerance"},
                               {ReadTexture, "surfaceTextures", "surface texture"}};
    for (const Kind& made : kKinds) {
      ENTITY* const annotation =
          Counted(made.count, [&] { return made.read(reading_, characteristic); });
      if (annotation == nullptr) continue;
      reading_.document.EntryOf(nominal).entity = annotation;
      reading_.Describe(*annotation, nominal, made.label, NameOfCharacteristic(nominal));
      return;
    }
    reading_.Count("otherCharacteristics");
    reading_.Skip(nominal, "the model has no such characteristic");
  }

  // Counts what the work makes, or would have made of a readable element.
  template <typename Work>
  ENTITY* Counted(const char* count, Work work) {
    try {
      ENTITY* const annotation = work();
      if (annotation != nullptr) reading_.Count(count);
      return annotation;
    } catch (const Unreadable&) {
      reading_.Count(count);
      throw;
    }
  }

  Reading& reading_;
  Element characteristics_;
  std::unordered_set<std::uint32_t> used_;
};

}  // namespace

void SkipUnknown(Reading& reading, Element element, Element of,
                 std::initializer_list<std::string_view> known) {
  for (const Element field : element.children()) {
    const std::string_view name = NameOf(field);
    if (name.empty() || name == "Attributes" || Contains(known, name)) continue;
    if (IsOff(WordOf(field))) continue;
    reading.Skip(name, of.attribute("id").value(), "the model has no place for it");
  }
}

void SkipUnknownOfNominal(Reading& reading, Element nominal,
                          std::initializer_list<std::string_view> known) {
  for (const Element field : nominal.children()) {
    const std::string_view name = NameOf(field);
    if (name.empty() || Contains(known, name) ||
        Contains({"Attributes", "CharacteristicDefinitionId", "FeatureNominalIds",
                  "FeatureNominalPairs", "EntityInternalIds", "Name"},
                 name)) {
      continue;
    }
    reading.Skip(name, nominal.attribute("id").value(), "the model has no place for it");
  }
}

void ReadCharacteristics(Reading& reading) {
  CharacteristicsReader(reading).Read();
  reading.SkipUnusedFrames();
}

}  // namespace qif

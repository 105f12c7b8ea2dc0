// The list of characteristics: each nominal becomes one annotation, described by its definition.

#include "readers/qif/Reading.h"

namespace qif {

namespace {

constexpr std::string_view kNominal = "CharacteristicNominal";

// The name of a characteristic: its own, its designator or its label.
std::string_view NameOfCharacteristic(Fields& nominal) {
  std::string_view name = nominal.Text("Name");
  if (name.empty())
    name = TextOf(Child(nominal.Record(), "CharacteristicDesignator"), "Designator");
  return name.empty() ? nominal.Record().attribute("label").value() : name;
}

class CharacteristicsReader {
 public:
  explicit CharacteristicsReader(Reading& reading)
      : reading_(reading),
        characteristics_(reading.document.At({"Characteristics"}), Fields::kUnlimited) {}

  void Read() {
    for (const Element nominal : characteristics_["CharacteristicNominals"].children()) {
      const Document::Entry& definition =
          reading_.document.RequireChild(nominal, "CharacteristicDefinitionId");
      used_.insert(definition.id);
      reading_.Try(nominal, [&] { ReadNominal(nominal, definition.element); });
    }
    for (const Element item : characteristics_["CharacteristicItems"].children()) {
      reading_.Count("characteristicItems");
      reading_.Try(item, [&] {
        const Element nominal = Child(item, "CharacteristicNominalId");
        if (reading_.document.Find(nominal) != nullptr) return;
        reading_.Under({});  // an item is no annotation of the model
        reading_.Skip(Severity::kLost, item, "it has no nominal");
      });
    }
    for (const Element definition : characteristics_["CharacteristicDefinitions"].children()) {
      if (used_.count(reading_.document.EntryOf(definition).id) == 0) {
        reading_.Skip(Severity::kIgnored, definition, "no nominal uses it");
      }
    }
  }

 private:
  void ReadNominal(Element nominalElement, Element definitionElement) {
    Fields nominal(nominalElement);
    Fields definition(definitionElement);
    std::string_view kind = NameOf(nominalElement);
    const bool isNominal =
        kind.size() > kNominal.size() && kind.substr(kind.size() - kNominal.size()) == kNominal;
    kind.remove_suffix(isNominal ? kNominal.size() : 0);
    if (NameOf(definitionElement) != std::string(kind) + "CharacteristicDefinition") {
      reading_.Count("otherCharacteristics");
      throw Unreadable(nominalElement, "its definition is a " + Quote(NameOf(definitionElement)));
    }
    const Characteristic characteristic = {kind, nominal, definition};
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
      reading_.document.EntryOf(nominalElement).entity = annotation;
      reading_.Describe(*annotation, nominalElement, made.label, NameOfCharacteristic(nominal));
      nominal.Pass({"CharacteristicDefinitionId"});
      definition.Pass({"Name", "CharacteristicDesignator"});
      reading_.SkipRest(nominal);
      reading_.SkipRest(definition);
      return;
    }
    reading_.Count("otherCharacteristics");
    throw Unreadable(nominalElement, "the model has no such characteristic");
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
  Fields characteristics_;
  std::unordered_set<std::uint32_t> used_;
};

}  // namespace

void ReadCharacteristics(Reading& reading) {
  CharacteristicsReader(reading).Read();
  reading.SkipUnusedFrames();
}

}  // namespace qif

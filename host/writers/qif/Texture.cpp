// Surface texture.

#include "writers/qif/Texture.h"

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

// The fields of a symbol, in the report's order.
enum Field { kAverage, kRemoval, kMethod, kCutoff, kSecondary, kLay, kOther, kFields };

struct Word {
  const char* report;
  const char* qif;
};

// The symbol of a lay (ASME Y14.36, ISO 21920-1).
constexpr Word kLays[] = {{"=", "PARALLEL"},    {"\u22A5", "PERPENDICULAR"},
                          {"X", "CROSS_HATCH"}, {"M", "MULTI_DIRECTIONAL"},
                          {"C", "CIRCULAR"},    {"R", "RADIAL"},
                          {"P", "PARTICULATE"}};
constexpr Word kObtentions[] = {{"unknown", "UNSUPPORTED"},
                                {"unspecified", "UNDEFINED"},
                                {"machiningMandatory", "MACHINING_MANDATORY"},
                                {"machiningForbidden", "MACHINING_FORBIDDEN"}};
constexpr Word kApplicabilities[] = {{"unknown", "UNSUPPORTED"},
                                     {"specifiedSurfaceOnly", "SPECIFIED_SURFACE_ONLY"},
                                     {"allPartSurfaces", "ALL_PART_SURFACES"},
                                     {"basicSurface", "BASIC_SURFACE"}};

template <std::size_t kCount>
const char* WordFor(const Word (&words)[kCount], const std::string& text) {
  for (const Word& word : words) {
    if (text == word.report) return word.qif;
  }
  return nullptr;
}

std::string FieldOf(const RoughnessReport& roughness, std::size_t field) {
  return field < roughness.fields.size() ? roughness.fields[field].value_or("") : "";
}

// "3.2 um": the number, and its unit when it is not the report's.
void WriteLength(Xml& xml, Plan& plan, const char* name, const std::string& text) {
  const std::string unit = UnitOf(text);
  const std::string& stated = unit.empty() ? plan.units.Own(Measure::kLength) : unit;
  xml.Open(name);
  if (stated != plan.units.Default(Measure::kLength)) xml.Attribute("linearUnit", stated);
  xml.Content(text.substr(0, text.find(' ')));
  xml.Close();
}

class NominalWriter {
 public:
  NominalWriter(Xml& xml, Plan& plan, const Item& item)
      : xml_(xml), plan_(plan), item_(item), roughness_(*item.annotation->roughness) {}

  void Write() {
    xml_.OpenWithId("SurfaceTextureCharacteristicNominal", item_.id);
    WriteNominalStart(xml_, plan_, item_);
    Choice("Obtention", kObtentions, roughness_.obtention.value_or("unspecified"));
    Choice("Applicability", kApplicabilities, roughness_.applicability.value_or("unknown"));
    Token("MinimumMaterialRemoval", kRemoval);
    Token("ProductionMethod", kMethod);
    Length("Cutoff", kCutoff);
    Length("SecondaryRoughnessParameter", kSecondary);
    const std::string lay = FieldOf(roughness_, kLay);
    if (!lay.empty()) Choice("DirectionOfLay", kLays, lay);
    Token("OtherSurfaceParameter", kOther);
    xml_.Close();
    for (std::size_t i = kFields; i < roughness_.fields.size(); ++i) {
      if (!FieldOf(roughness_, i).empty()) Lose(FieldOf(roughness_, i));
    }
  }

 private:
  void Lose(const std::string& text) {
    plan_.omissions.Add("lost", item_, "QIF has no place for \"" + text + "\" in a texture");
  }

  template <std::size_t kCount>
  void Choice(const char* name, const Word (&words)[kCount], const std::string& text) {
    const char* const word = WordFor(words, text);
    word == nullptr ? Lose(text) : xml_.Leaf(name, word);
  }

  void Token(const char* name, std::size_t field) {
    const std::string text = FieldOf(roughness_, field);
    if (text.empty()) return;
    xml_.Leaf(name, Collapsed(text));
    if (Collapsed(text) != text) plan_.omissions.Add("reduced", item_, "spaces in its texts");
  }

  void Length(const char* name, std::size_t field) {
    const std::string text = FieldOf(roughness_, field);
    if (text.empty()) return;
    if (IsTextureLength(roughness_, field, plan_.units)) {
      WriteLength(xml_, plan_, name, text);
    } else {
      Lose(text);
    }
  }

  Xml& xml_;
  Plan& plan_;
  const Item& item_;
  const RoughnessReport& roughness_;
};

}  // namespace

bool IsTextureLength(const RoughnessReport& roughness, std::size_t field, const Units& units) {
  const std::string text = FieldOf(roughness, field);
  const std::string unit = UnitOf(text);
  return IsDecimal(text.substr(0, text.find(' '))) &&
         (unit.empty() || units.Knows(Measure::kLength, unit));
}

void WriteTextureDefinition(Xml& xml, Plan& plan, const Item& item) {
  xml.OpenWithId("SurfaceTextureCharacteristicDefinition", item.definition);
  WriteLength(xml, plan, "RoughnessAverage", FieldOf(*item.annotation->roughness, kAverage));
  xml.Close();
}

void WriteTextureNominal(Xml& xml, Plan& plan, const Item& item) {
  NominalWriter(xml, plan, item).Write();
}

}  // namespace qif_writer

// Features and characteristics.

#include "writers/qif/Kinds.h"
#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

std::vector<const Item*> Characteristics(const Plan& plan) {
  std::vector<const Item*> found;
  for (const Item& item : plan.items) {
    if (item.definition != 0) found.push_back(&item);
  }
  return found;
}

// A definition or a nominal, as the kind of the annotation has it.
struct Part {
  void (*dimension)(Xml&, Plan&, const Item&);
  void (*tolerance)(Xml&, Plan&, const Item&);
  void (*texture)(Xml&, Plan&, const Item&);
};

// What the names of its elements start with.
std::string KindNameOf(const AnnotationReport& annotation) {
  if (annotation.dimension) return KindOf(kDimensionKinds, annotation.dimension->type)->name;
  if (annotation.tolerance) return KindOf(kToleranceKinds, annotation.tolerance->type)->name;
  return "SurfaceTexture";
}

void WritePart(Xml& xml, Plan& plan, const Item& item, const Part& part) {
  const auto write = item.annotation->dimension   ? part.dimension
                     : item.annotation->tolerance ? part.tolerance
                                                  : part.texture;
  write(xml, plan, item);
}

}  // namespace

void WriteFeatures(Xml& xml, Plan& plan) {
  if (plan.features.empty()) return;
  xml.Open("Features");
  xml.OpenList("FeatureDefinitions", 1);
  xml.OpenWithId("OtherShapeFeatureDefinition", plan.featureDefinition);
  xml.Leaf("Description", "Entities of the part that annotations apply to");
  xml.Close();
  xml.Close();
  xml.OpenList("FeatureNominals", plan.features.size());
  for (const Feature& feature : plan.features) {
    xml.OpenWithId("OtherShapeFeatureNominal", feature.id);
    xml.Reference("FeatureDefinitionId", plan.featureDefinition);
    WriteEntityIds(xml, plan, feature.entities);
    xml.Close();
  }
  xml.Close();
  xml.Close();
}

void WriteCharacteristics(Xml& xml, Plan& plan) {
  const std::vector<const Item*> items = Characteristics(plan);
  if (items.empty()) return;
  constexpr Part kDefinition = {WriteDimensionDefinition, WriteToleranceDefinition,
                                WriteTextureDefinition};
  constexpr Part kNominal = {WriteDimensionNominal, WriteToleranceNominal, WriteTextureNominal};
  xml.Open("Characteristics");
  xml.Reference("FormalStandardId", plan.standard);
  xml.OpenList("CharacteristicDefinitions", items.size());
  for (const Item* item : items) WritePart(xml, plan, *item, kDefinition);
  xml.Close();
  xml.OpenList("CharacteristicNominals", items.size());
  for (const Item* item : items) WritePart(xml, plan, *item, kNominal);
  xml.Close();
  xml.OpenList("CharacteristicItems", items.size());
  for (const Item* item : items) {
    xml.OpenWithId((KindNameOf(*item->annotation) + "CharacteristicItem").c_str(), item->measured);
    xml.Reference("CharacteristicNominalId", item->id);
    xml.Close();
  }
  xml.Close();
  xml.Close();
}

}  // namespace qif_writer

// Datums, datum targets with their zones, and datum reference frames.

#include <cmath>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

struct Word {
  const char* report;
  const char* field;
  const char* value;
};

// The modifiers of a datum, in the order of its fields.
constexpr Word kBeforeProjected[] = {
    {"basic", "DatumFeatureSimulatorModifier", "BasicSize"},
    {"translation", "DatumTranslation", "DatumTranslationAllowed"},
};
constexpr Word kAfterProjected[] = {
    {"pitchDiameter", "DiameterModifier", "PD"},
    {"majorDiameter", "DiameterModifier", "MD"},
    {"minorDiameter", "DiameterModifier", "LD"},
    {"anyCrossSection", "SectionModifier", "ACS"},
    {"anyLongitudinalSection", "SectionModifier", "ALS"},
    {"specificCrossSection", "SectionModifier", "SCS"},
    {"contactingFeature", "ContactingFeature", "true"},
    {"distanceVariable", "DistanceVariable", "true"},
    {"point", "ReducedDatum", "PT"},
    {"straightLine", "ReducedDatum", "SL"},
    {"plane", "ReducedDatum", "PL"},
    {"orientationOnly", "ConstrainOrientation", "true"},
};
constexpr Word kMaterials[] = {{"maximumMaterial", "MaterialModifier", "MAXIMUM"},
                               {"leastMaterial", "MaterialModifier", "LEAST"},
                               {"regardlessOfFeatureSize", "MaterialModifier", "REGARDLESS"},
                               {"maximumMaterialReciprocity", "MaterialModifier", "MAXIMUM_RPR"},
                               {"leastMaterialReciprocity", "MaterialModifier", "LEAST_RPR"}};
constexpr const char* kPrecedences[] = {"PRIMARY", "SECONDARY", "TERTIARY", "QUATERNARY",
                                        "QUINARY"};

class FrameWriter {
 public:
  FrameWriter(Xml& xml, Plan& plan, const Frame& frame, const Item& user, std::size_t row)
      : xml_(xml), plan_(plan), frame_(frame), user_(user), row_(row) {}

  void Write() {
    xml_.OpenWithId("DatumReferenceFrame", frame_.id);
    struct Compartment {
      std::size_t index;
      std::vector<std::size_t> datums;
    };
    std::vector<Compartment> compartments;
    const std::vector<ReferenceReport>& references = frame_.frame->references;
    for (std::size_t i = 0; i < references.size(); ++i) {
      Compartment compartment{i, Known(references[i])};
      if (compartment.datums.empty()) {
        Lose("a datum reference has no datum that the document has");
      } else if (compartments.size() == std::size(kPrecedences)) {
        Lose("QIF has five datum references at most");
      } else {
        compartments.push_back(std::move(compartment));
      }
    }
    if (!compartments.empty()) xml_.OpenList("Datums", compartments.size());
    for (std::size_t i = 0; i < compartments.size(); ++i) {
      xml_.Open("Datum");
      at_ = "references[" + std::to_string(compartments[i].index) + "].datums[";
      WriteDatums(references[compartments[i].index], compartments[i].datums);
      xml_.Open("Precedence");
      xml_.Leaf("PrecedenceEnum", kPrecedences[i]);
      xml_.Close();
      xml_.Close();
    }
    if (!compartments.empty()) xml_.Close();
    const std::string name = Collapsed(frame_.frame->note.value_or(""));
    if (!name.empty()) xml_.Leaf("Name", name);
    if (name != frame_.frame->note.value_or("")) plan_.ReduceName(user_);
    xml_.Close();
  }

 private:
  void Lose(const std::string& reason) { plan_.omissions.Add("lost", user_, reason); }

  const Item* DatumOf(const FrameDatumReport& datum) const {
    const Item* const item = plan_.Find(datum.id);
    return item != nullptr && item->annotation->datum ? item : nullptr;
  }

  // The datums of a reference that the document has, by their places.
  std::vector<std::size_t> Known(const ReferenceReport& reference) {
    std::vector<std::size_t> known;
    for (std::size_t i = 0; i < reference.datums.size(); ++i) {
      if (DatumOf(reference.datums[i]) != nullptr) {
        known.push_back(i);
      } else if (reference.datums.size() > 1) {
        Lose("one of its common datums is not in the document");
      }
    }
    return known;
  }

  void WriteDatums(const ReferenceReport& reference, const std::vector<std::size_t>& places) {
    if (places.size() == 1) return WriteDatum(reference.datums[places[0]], places[0]);
    xml_.OpenList("CompoundDatum", places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
      xml_.Open("Datum");
      WriteDatum(reference.datums[places[i]], places[i]);
      xml_.Leaf("SequenceNumber", std::to_string(i + 1));
      xml_.Close();
    }
    xml_.Close();
  }

  const ModifierReport* Take(const std::string& type) {
    for (std::size_t i = 0; i < taken_.size(); ++i) {
      if (taken_[i] || datum_->modifiers[i].type != type) continue;
      taken_[i] = true;
      return &datum_->modifiers[i];
    }
    return nullptr;
  }

  void WriteDatum(const FrameDatumReport& datum, std::size_t place) {
    datum_ = &datum;
    taken_.assign(datum.modifiers.size(), false);
    xml_.Open("SimpleDatum");
    xml_.Reference("DatumDefinitionId", DatumOf(datum)->id);
    std::string material = "NONE";
    for (const Word& word : kMaterials) {
      if (material == "NONE" && Take(word.report) != nullptr) material = word.value;
    }
    xml_.Leaf("MaterialModifier", material);
    xml_.Leaf("ReferencedComponent", "NOMINAL");
    for (const Word& word : kBeforeProjected) {
      if (Take(word.report) == nullptr) continue;
      xml_.Open(word.field);
      xml_.Leaf(word.value, word.report == std::string("basic") ? "BASIC" : "true");
      xml_.Close();
    }
    WriteProjected(place);
    std::string last;
    for (const Word& word : kAfterProjected) {
      if (word.field == last || Take(word.report) == nullptr) continue;
      last = word.field;
      xml_.Leaf(word.field, word.value);
    }
    xml_.Close();
    for (std::size_t i = 0; i < taken_.size(); ++i) {
      if (!taken_[i]) {
        Lose("QIF has no place for " + datum.modifiers[i].type.value_or("an unknown modifier") +
             " of a datum");
      }
    }
  }

  void WriteProjected(std::size_t place) {
    for (std::size_t i = 0; i < taken_.size(); ++i) {
      const ModifierReport& modifier = datum_->modifiers[i];
      if (modifier.type != "projectedZone" || !modifier.magnitude) continue;
      taken_[i] = true;
      const std::string row = row_ == 0 ? "" : "rows[" + std::to_string(row_) + "].";
      WriteValue(xml_, plan_, user_, "ProjectedDatum",
                 {row + "frame." + at_ + std::to_string(place) + "].modifiers[" +
                      std::to_string(i) + "].magnitude",
                  *modifier.magnitude},
                 false);
      return;
    }
  }

  Xml& xml_;
  Plan& plan_;
  const Frame& frame_;
  const Item& user_;  // the first tolerance with the frame, in this row
  std::size_t row_;
  std::string at_;  // where the report has the datums
  const FrameDatumReport* datum_ = nullptr;
  std::vector<bool> taken_;  // the datum's modifiers
};

}  // namespace

void WriteDatums(Xml& xml, Plan& plan) {
  const std::vector<const Item*> datums = plan.OfKind("datum");
  if (datums.empty()) return;
  xml.OpenList("DatumDefinitions", datums.size());
  for (const Item* item : datums) {
    const DatumReport& datum = *item->annotation->datum;
    xml.OpenWithId("DatumDefinition", item->id);
    WriteHidden(xml, *item);
    xml.Leaf("DatumLabel", Collapsed(datum.label.value_or("")));
    std::vector<Id> targets;
    for (const Text& id : datum.targetIds) {
      const Item* const target = plan.Find(id);
      if (target != nullptr && target->annotation->datumTarget) {
        targets.push_back(target->id);
      } else {
        plan.omissions.Add("lost", *item, "one of its targets is not in the document");
      }
    }
    if (!targets.empty()) {
      xml.OpenList("DatumTargetIds", targets.size());
      for (const Id target : targets) xml.Reference("Id", target);
      xml.Close();
    }
    if (item->feature != 0) {
      xml.OpenList("FeatureNominalIds", 1);
      xml.Reference("Id", item->feature);
      xml.Close();
    }
    xml.Close();
  }
  xml.Close();
}

void WriteFrames(Xml& xml, Plan& plan) {
  if (plan.frames.empty()) return;
  xml.OpenList("DatumReferenceFrames", plan.frames.size());
  for (const Frame& frame : plan.frames) {
    FrameWriter(xml, plan, frame, plan.items[frame.item], frame.row).Write();
  }
  xml.Close();
}

}  // namespace qif_writer

// Geometric tolerances.

#include "writers/qif/Tolerances.h"

#include <algorithm>
#include <cmath>

#include "writers/qif/Kinds.h"
#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

struct Word {
  const char* report;
  const char* qif;
};

constexpr Word kMaterials[] = {{"maximumMaterial", "MAXIMUM"},
                               {"leastMaterial", "LEAST"},
                               {"regardlessOfFeatureSize", "REGARDLESS"},
                               {"maximumMaterialReciprocity", "MAXIMUM_RPR"},
                               {"leastMaterialReciprocity", "LEAST_RPR"}};
// Flags of every definition, in its order.
constexpr Word kFlags[] = {{"freeState", "FreeState"},
                           {"statisticalTolerance", "StatisticalCharacteristic"},
                           {"commonZone", "CommonZone"}};
constexpr Word kExtents[] = {{"ALL OVER", "ALL_OVER"},
                             {"ALL OVER THIS SIDE", "ALL_OVER_THIS_SIDE"}};
constexpr const char* kSegments[] = {"Second", "Third", "Fourth"};

class DefinitionWriter {
 public:
  DefinitionWriter(Xml& xml, Plan& plan, const Item& item)
      : xml_(xml),
        plan_(plan),
        item_(item),
        tolerance_(*item.annotation->tolerance),
        kind_(*KindOf(kToleranceKinds, tolerance_.type)) {}

  void Write() {
    xml_.OpenWithId((std::string(kind_.name) + "CharacteristicDefinition").c_str(),
                    item_.definition);
    Start(0);
    for (const Word& flag : kFlags) Flag(flag.report, flag.qif);
    const RowReport& row = *row_;
    WriteToleranceValue();
    if (Has(kDisposition)) {
      Length("unequallyDisposed", "OuterDisposition");
      const RowReport* const first = std::exchange(row_, nullptr);
      std::vector<bool> taken = std::move(taken_);
      WriteSegments();
      row_ = first;
      at_.clear();
      taken_ = std::move(taken);
      WriteFrame(0);
      if (Has(kOrientationOnly)) Flag("orientationOnly", "OrientationOnly");
      if (const char* word = ExtentOf(tolerance_).word; word != nullptr) {
        xml_.Open("Extent");
        xml_.Leaf("ExtentEnum", word);
        xml_.Close();
      }
      Finish(row);
    } else {
      WriteFrame(0);
      WriteConditions(Has(kTangent));
      // What follows the further segments in the definition belongs to the first.
      const bool onlyOrientation = Has(kOrientationOnly) && Take("orientationOnly") != nullptr;
      Finish(row);
      WriteSegments();
      if (onlyOrientation) xml_.Leaf("OrientationOnly", "true");
    }
    xml_.Close();
  }

 private:
  bool Has(unsigned what) const { return (kind_.has & what) != 0; }
  void Omit(const char* severity, const std::string& reason) {
    plan_.omissions.Add(severity, item_, reason);
  }

  void Start(std::size_t index) {
    row_ = &tolerance_.rows[index];
    at_ = index == 0 ? "" : "rows[" + std::to_string(index) + "].";
    taken_.assign(row_->modifiers.size(), false);
  }

  // A modifier of the row that was not taken yet, which then counts as taken; null for none.
  const ModifierReport* Take(const std::string& type, bool withMagnitude = false) {
    for (std::size_t i = 0; i < taken_.size(); ++i) {
      const ModifierReport& modifier = row_->modifiers[i];
      if (taken_[i] || modifier.type != type || bool(modifier.magnitude) != withMagnitude) continue;
      taken_[i] = true;
      return &modifier;
    }
    return nullptr;
  }

  void Flag(const char* type, const char* name) {
    if (Take(type) != nullptr) xml_.Leaf(name, "true");
  }

  void Length(const char* type, const char* name) {
    const ModifierReport* const modifier = Take(type, true);
    if (modifier == nullptr) return;
    const auto index = static_cast<std::size_t>(modifier - row_->modifiers.data());
    Quantity(name, "modifiers[" + std::to_string(index) + "].magnitude", *modifier->magnitude);
  }

  void Quantity(const char* name, const std::string& field, double value,
                Measure measure = Measure::kLength) {
    if (std::isfinite(value)) {
      WriteValue(xml_, plan_, item_, name, {at_ + field, value, measure});
    } else {
      Omit("lost", std::string(name) + " is no number");
    }
  }

  void WriteToleranceValue() {
    const double refinement = row_->refinement.value_or(0), rate1 = row_->rateUnit1.value_or(0);
    const double rate2 = row_->rateUnit2.value_or(0);
    const bool areNumbers = std::isfinite(refinement + rate1 + rate2);
    const bool hasUnit = areNumbers && rate1 != 0;
    const char* const perUnit = kind_.report == "straightness"   ? "ToleranceZonePerUnitLength"
                                : kind_.report == "flatness"     ? "ToleranceZonePerUnitArea"
                                : kind_.report == "circularity"  ? "ToleranceZonePerUnitArcLength"
                                : kind_.report != "cylindricity" ? nullptr
                                : rate2 != 0                     ? "ToleranceZonePerUnitArea"
                                                                 : "ToleranceZonePerUnitLength";
    const bool standsAlone = hasUnit && refinement == 0 && perUnit != nullptr;
    if (!standsAlone) Quantity("ToleranceValue", "magnitude", *row_->magnitude);
    if (!areNumbers) return Omit("lost", "its tolerance on a unit basis is no number");
    if (!hasUnit && refinement == 0) return;
    if (perUnit == nullptr || !hasUnit) {
      return Omit("lost", "QIF has no place for its tolerance on a unit basis");
    }
    xml_.Open(perUnit);
    Quantity("ToleranceValuePerUnit", standsAlone ? "magnitude" : "refinement",
             standsAlone ? *row_->magnitude : refinement);
    if (!std::string_view(perUnit).compare("ToleranceZonePerUnitArea")) {
      xml_.Open(rate2 != 0 ? "RectangularUnitArea" : "CircularUnitArea");
      if (rate2 != 0) {
        Quantity("RectangularUnitAreaLength", "rateUnit1", rate1);
        Quantity("RectangularUnitAreaWidth", "rateUnit2", rate2);
      } else {
        Quantity("CircularUnitAreaDiameter", "rateUnit1", rate1);
      }
      xml_.Close();
    } else {
      Quantity("UnitLength", "rateUnit1", rate1);
      if (rate2 != 0) Omit("lost", "QIF has one length for its tolerance on a unit basis");
    }
    xml_.Close();
  }

  void WriteFrame(std::size_t index) {
    const Id frame = item_.frames[index];
    if (frame == 0) return;
    if (Has(kFrame)) {
      xml_.Reference("DatumReferenceFrameId", frame);
    } else {
      Omit("lost", "QIF has no datum reference frame for this kind of tolerance");
    }
  }

  // Material condition, zone and what follows them.
  void WriteConditions(bool hasTangent, const char* projected = "ProjectedToleranceZoneValue") {
    if (Has(kMaterial | kMaterialRequired)) WriteMaterial();
    WriteZone();
    if (hasTangent) Flag("tangentPlane", "TangentPlane");
    if (Has(kMaximum)) Length("maximumTolerance", "MaximumToleranceValue");
    if (Has(kProjected)) Length("projectedZone", projected);
    if (Has(kEach)) Flag("eachRadialElement", "EachRadialElement");
  }

  void WriteMaterial() {
    for (const Word& material : kMaterials) {
      if (Take(material.report) == nullptr) continue;
      return xml_.Leaf("MaterialCondition", material.qif);
    }
    if (Has(kMaterialRequired)) xml_.Leaf("MaterialCondition", "NONE");
  }

  void WriteZone() {
    const std::string type = row_->valueType.value_or("none");
    const char letter = type == "diametrical" ? 'd'
                        : type == "spherical" ? 's'
                        : type == "none"      ? 'n'
                                              : '?';
    const bool isSaid = kind_.zones.find(letter) != std::string_view::npos;
    if (type != "none" && !isSaid) {
      Omit("lost", "QIF has no " + type + " zone for this kind of tolerance");
    }
    if (kind_.zones.empty()) return;
    const char zone = isSaid ? letter : kind_.zones.back();
    xml_.Open("ZoneShape");
    xml_.Open(zone == 'd'   ? "DiametricalZone"
              : zone == 's' ? "SphericalZone"
              : zone == 'p' ? "PlanarZone"
                            : "NonDiametricalZone");
    if (zone == 'n' && kind_.report == "position") Flag("boundary", "BoundaryZone");
    xml_.Close();
    xml_.Close();
  }

  void WriteSegments() {
    for (std::size_t i = 1; i < tolerance_.rows.size(); ++i) {
      Start(i);
      if (i >= kind_.rows || !std::isfinite(row_->magnitude.value_or(HUGE_VAL))) {
        Omit("lost", i < kind_.rows ? "a row of it has no value"
                                    : "QIF has no more rows for this kind of tolerance");
        continue;
      }
      xml_.Open(
          (kSegments[i - 1] + ("CompositeSegment" + std::string(kind_.segment)) + "Definition")
              .c_str());
      WriteFrame(i);
      Quantity("ToleranceValue", "magnitude", *row_->magnitude);
      if (row_->refinement.value_or(0) != 0 || row_->rateUnit1.value_or(0) != 0) {
        Omit("lost", "QIF has no place for a row's tolerance on a unit basis");
      }
      if (Has(kDisposition)) Length("unequallyDisposed", "OuterDisposition");
      if (!Has(kDisposition)) WriteConditions(false, "ProjectedToleranceZone");
      xml_.Close();
      Finish(*row_);
    }
  }

  // Lists what was not taken of a row.
  void Finish(const RowReport& row) {
    for (std::size_t i = 0; i < taken_.size(); ++i) {
      if (taken_[i]) continue;
      Omit("lost", "QIF has no place for " + row.modifiers[i].type.value_or("an unknown modifier") +
                       " in this row");
    }
    if (row.valueType.value_or("none") != "none" && Has(kDisposition)) {
      Omit("lost", "QIF has no zone shape for this kind of tolerance");
    }
  }

  Xml& xml_;
  Plan& plan_;
  const Item& item_;
  const ToleranceReport& tolerance_;
  const ToleranceKind& kind_;
  const RowReport* row_ = nullptr;
  std::string at_;           // where the report has the row's values
  std::vector<bool> taken_;  // the row's modifiers
};

}  // namespace

Extent ExtentOf(const ToleranceReport& tolerance) {
  Extent extent;
  extent.lower = tolerance.notes.lower.value_or("");
  extent.allAround = tolerance.allAround.value_or(false);
  const ToleranceKind* const kind = KindOf(kToleranceKinds, tolerance.type);
  if (kind == nullptr || (kind->has & kExtent) == 0) return extent;
  if (extent.allAround) {
    extent.allAround = false;
    extent.word = extent.lower == "ALL AROUND THIS SIDE" ? "ALL_AROUND_THIS_SIDE" : "ALL_AROUND";
    if (extent.lower == "ALL AROUND THIS SIDE") extent.lower.clear();
    return extent;
  }
  for (const Word& word : kExtents) {
    if (extent.lower != word.report) continue;
    extent.word = word.qif;
    extent.lower.clear();
  }
  return extent;
}

void WriteToleranceDefinition(Xml& xml, Plan& plan, const Item& item) {
  DefinitionWriter(xml, plan, item).Write();
}

void WriteToleranceNominal(Xml& xml, Plan& plan, const Item& item) {
  const ToleranceKind& kind = *KindOf(kToleranceKinds, item.annotation->tolerance->type);
  xml.OpenWithId((std::string(kind.name) + "CharacteristicNominal").c_str(), item.id);
  WriteNominalStart(xml, plan, item);
  if ((kind.has & kVector) != 0) {
    xml.Leaf("Vector", "0 0 1");
    plan.omissions.Add("ignored", item, "QIF asks for a direction, for which 0 0 1 stands there");
  }
  xml.Close();
}

}  // namespace qif_writer

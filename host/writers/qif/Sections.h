#pragma once

#include "writers/qif/Plan.h"
#include "writers/qif/Xml.h"

// The sections of a document, in its order. Each writes nothing when it would be empty, and lists
// what it cannot say.

namespace qif_writer {

void WriteDatums(Xml& xml, Plan& plan);
void WriteDatumTargets(Xml& xml, Plan& plan);
void WriteFrames(Xml& xml, Plan& plan);
void WriteThreads(Xml& xml, Plan& plan);
void WriteProduct(Xml& xml, Plan& plan);
void WriteFeatures(Xml& xml, Plan& plan);
void WriteZones(Xml& xml, Plan& plan);
void WriteCharacteristics(Xml& xml, Plan& plan);

// --- Parts of them -------------------------------------------------------------------------------

void WriteViews(Xml& xml, Plan& plan);
void WriteDisplays(Xml& xml, Plan& plan);
void WriteDimensionDefinition(Xml& xml, Plan& plan, const Item& item);
void WriteDimensionNominal(Xml& xml, Plan& plan, const Item& item);
void WriteToleranceDefinition(Xml& xml, Plan& plan, const Item& item);
void WriteToleranceNominal(Xml& xml, Plan& plan, const Item& item);
void WriteTextureDefinition(Xml& xml, Plan& plan, const Item& item);
void WriteTextureNominal(Xml& xml, Plan& plan, const Item& item);

// An attribute of this program's own, for what QIF has none of: whether the annotation is hidden.
// Stands first in an element.
void WriteHidden(Xml& xml, const Item& item);
// What every nominal has first: visibility, definition, feature and name.
void WriteNominalStart(Xml& xml, Plan& plan, const Item& item);
// References to entities, of the document's own and of the part's file.
void WriteEntityIds(Xml& xml, const Plan& plan, const std::vector<std::size_t>& entities);

// --- Values --------------------------------------------------------------------------------------

// The value of a field of the report, as it is written in its document where that is told.
struct Value {
  std::string field;
  double value;
  Measure measure = Measure::kLength;
  Number places = {};  // decimal places, where the report tells them
};
// `isPmi` for what stands in the characteristics, where other units may be the default.
void WriteValue(Xml& xml, Plan& plan, const Item& item, const char* name, const Value& value,
                bool isPmi = true);

// The text that is drawn for a dimension.
std::string DrawnDimension(const Item& item);
// Why a reader can't tell from it what stands before and after the value; empty when it can.
std::string WhyNotTold(const Item& item);
// Whether its limits are stated themselves, not as deviations.
bool HasLimits(const DimensionReport& dimension);

}  // namespace qif_writer

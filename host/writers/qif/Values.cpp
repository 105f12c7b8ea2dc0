// Values, names and associations, which annotations of several kinds have.

#include <algorithm>
#include <cmath>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

const WrittenReport* WrittenAs(const Item& item, const std::string& field) {
  for (const WrittenReport& written : item.annotation->written) {
    if (written.field == field) return &written;
  }
  return nullptr;
}

}  // namespace

void WriteValue(Xml& xml, Plan& plan, const Item& item, const char* name, const Value& value,
                bool isPmi) {
  const WrittenReport* written = WrittenAs(item, value.field);
  std::string text = Decimal(value.value);
  std::string unit = plan.units.Own(value.measure);
  if (written != nullptr) {
    const std::optional<double> number = NumberIn(written->text);
    if (number && plan.units.Knows(value.measure, written->unit)) {
      text = IsDecimal(written->text) ? written->text : Decimal(*number);
      unit = written->unit;
    } else {
      plan.OmitUnit(item, written->unit);
    }
  }
  const std::string& byDefault =
      isPmi ? plan.units.Default(value.measure) : plan.units.Own(value.measure);
  xml.Open(name);
  if (value.places && *value.places != PlacesOf(text)) {
    const bool isCount = *value.places >= 0 && *value.places == std::floor(*value.places);
    if (isCount) xml.Attribute("decimalPlaces", Decimal(*value.places));
    if (!isCount) plan.omissions.Add("reduced", item, "its number of decimal places is no number");
  }
  if (unit != byDefault) {
    xml.Attribute(value.measure == Measure::kLength ? "linearUnit" : "angularUnit", unit);
  }
  xml.Content(text);
  xml.Close();
}

void WriteEntityIds(Xml& xml, const Plan& plan, const std::vector<std::size_t>& entities) {
  for (const bool isBody : {true, false}) {
    const auto is = [&](std::size_t place) { return plan.entities[place].isBody == isBody; };
    const auto count = std::count_if(entities.begin(), entities.end(), is);
    if (count == 0) continue;
    xml.OpenList(isBody ? "EntityInternalIds" : "EntityExternalIds",
                 static_cast<std::size_t>(count));
    for (const std::size_t place : entities) {
      if (is(place)) xml.Reference("Id", plan.entities[place].id);
    }
    xml.Close();
  }
}

void WriteHidden(Xml& xml, const Item& item) {
  if (!item.annotation->hidden.value_or(false)) return;
  xml.OpenList("Attributes", 1);
  xml.Open("AttributeBool");
  xml.Attribute("name", "pmi_report.hidden");
  xml.Attribute("value", "true");
  xml.Close();
  xml.Close();
}

void WriteNominalStart(Xml& xml, Plan& plan, const Item& item) {
  const AnnotationReport& annotation = *item.annotation;
  WriteHidden(xml, item);
  xml.Reference("CharacteristicDefinitionId", item.definition);
  if (item.feature != 0) {
    xml.OpenList("FeatureNominalIds", 1);
    xml.Reference("Id", item.feature);
    xml.Close();
  }
  const std::string name = Collapsed(annotation.name.value_or(""));
  if (!name.empty()) xml.Leaf("Name", name);
  if (name != annotation.name.value_or("")) plan.ReduceName(item);
}

}  // namespace qif_writer

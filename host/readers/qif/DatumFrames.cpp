// Datum reference frames.

#include <algorithm>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

struct NamedModifier {
  std::string_view name;
  zone_modifier_type type;
};

constexpr NamedModifier kDatumModifiers[] = {
    {"MAXIMUM", zone_mod_maximum_material},
    {"LEAST", zone_mod_least_material},
    {"REGARDLESS", zone_mod_regardless_of_feature_size},
    {"MAXIMUM_RPR", zone_mod_maximum_material_reciprocity},
    {"LEAST_RPR", zone_mod_least_material_reciprocity},
    {"ACS", zone_mod_any_cross_section},
    {"ALS", zone_mod_any_longitudinal_section},
    {"SCS", zone_mod_specific_cross_section},
    {"PD", zone_mod_pitch_diameter},
    {"MD", zone_mod_major_diameter},
    {"LD", zone_mod_minor_diameter},
    {"PT", zone_mod_point},
    {"SL", zone_mod_straight_line},
    {"PL", zone_mod_plane},
};

constexpr NamedModifier kDatumFlags[] = {
    {"ContactingFeature", zone_mod_contacting_feature},
    {"DistanceVariable", zone_mod_distance_variable},
    {"ConstrainOrientation", zone_mod_orientation_only},
};

void AddDatumModifiers(Reading& reading, Element simple, Element frame,
                       KOVAPMI_MODIFIED_DATUM& modified) {
  for (const char* field :
       {"MaterialModifier", "DiameterModifier", "SectionModifier", "ReducedDatum"}) {
    const std::string_view text = TextOf(simple, field);
    for (const auto& [name, type] : kDatumModifiers) {
      if (text == name) reading.part.AddModifier(modified, type);
    }
  }
  for (const auto& [name, type] : kDatumFlags) {
    if (IsTrue(simple, name)) reading.part.AddModifier(modified, type);
  }
  if (IsTrue(Child(simple, "DatumTranslation"), "DatumTranslationAllowed")) {
    reading.part.AddModifier(modified, zone_mod_translation);
  }
  if (const Element length = Child(simple, "ProjectedDatum")) {
    reading.part.AddModifier(modified, zone_mod_projected_zone, reading.units.Length(length).value);
  }
  if (Child(Child(simple, "DatumFeatureSimulatorModifier"), "BasicSize")) {
    reading.part.AddModifier(modified, zone_mod_basic);
  }
  SkipUnknown(reading, simple, frame,
              {"DatumDefinitionId", "MaterialModifier", "SizeCharacteristicDefinitionId",
               "ReferencedComponent", "SubstituteFeatureAlgorithm", "DatumTranslation",
               "ProjectedDatum", "DiameterModifier", "SectionModifier", "ContactingFeature",
               "DistanceVariable", "ReducedDatum", "ConstrainOrientation"});
}

int PrecedenceOf(Element datum) {
  constexpr std::string_view kOrder[] = {"PRIMARY",    "SECONDARY", "TERTIARY",
                                         "QUATERNARY", "QUINARY",   "SENARY"};
  const std::string_view text = TextOf(Child(datum, "Precedence"), "PrecedenceEnum");
  return static_cast<int>(std::find(std::begin(kOrder), std::end(kOrder), text) -
                          std::begin(kOrder));
}

// One compartment: a datum, or the common datum of several.
KOVAPMI_DREF& ReadCompartment(Reading& reading, Element compartment, Element frame) {
  auto& reference = reading.part.Make<KOVAPMI_DREF>();
  auto& fields = standin::Edit(reference);
  std::wstring label;
  for (Element inner = compartment; inner; inner = Next(inner, compartment)) {
    if (NameOf(inner) != "SimpleDatum") continue;
    const Document::Entry& datum = reading.document.RequireChild(inner, "DatumDefinitionId");
    if (is_ATTRIB_KOVAPMI_DATUM(datum.entity) != 1) {
      reading.Skip(frame, "its datum " + std::to_string(datum.id) + " could not be read");
      continue;
    }
    auto& modified = reading.part.Make<KOVAPMI_MODIFIED_DATUM>();
    KOVAPMI_DATUM& kernelDatum =
        standin::DatumOf(static_cast<ATTRIB_KOVAPMI_DATUM&>(*datum.entity));
    standin::Edit(modified).datum = &kernelDatum;
    AddDatumModifiers(reading, inner, frame, modified);
    fields.datums.push_back(&modified);
    label += (label.empty() ? L"" : L"-") + std::wstring(kernelDatum.get_wlabel());
  }
  for (const char* measured : {"NominalDatumFeature", "MeasuredDatumFeature"}) {
    if (Child(compartment, measured)) {
      reading.Skip(frame, std::string(measured) + " is no datum of the model");
    }
  }
  fields.note = label;
  return reference;
}

}  // namespace

KOVAPMI_DRF& Reading::Frame(Document::Entry& entry) {
  const auto [known, isNew] = frames_.try_emplace(&entry, nullptr);
  if (known->second != nullptr) return *known->second;
  if (!isNew) throw Unreadable(entry.element, "its reference frame could not be read");
  auto& frame = part.Make<KOVAPMI_DRF>();
  std::vector<Element> compartments;
  for (const Element datum : Child(entry.element, "Datums").children()) {
    compartments.push_back(datum);
  }
  std::stable_sort(compartments.begin(), compartments.end(),
                   [](Element a, Element b) { return PrecedenceOf(a) < PrecedenceOf(b); });
  for (const Element compartment : compartments) {
    standin::Edit(frame).references.push_back(&ReadCompartment(*this, compartment, entry.element));
  }
  const std::string_view name = TextOf(entry.element, "Name");
  if (!name.empty()) standin::Edit(frame).note = Wide(name);
  part.Id(frame, entry.element.attribute("id").value());
  known->second = &frame;
  return frame;
}

void Reading::SkipUnusedFrames() {
  for (const Element element : document.At({"DatumReferenceFrames"}).children()) {
    Count("datumReferenceFrames");
    if (frames_.count(&document.EntryOf(element)) == 0) Skip(element, "no tolerance uses it");
  }
}

}  // namespace qif

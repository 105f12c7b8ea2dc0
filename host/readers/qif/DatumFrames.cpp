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

// The report has the modifiers at `at`.
void AddDatumModifiers(Reading& reading, Fields& simple, KOVAPMI_MODIFIED_DATUM& modified,
                       const std::string& at) {
  for (const char* field :
       {"MaterialModifier", "DiameterModifier", "SectionModifier", "ReducedDatum"}) {
    const std::string_view text = simple.Text(field);
    for (const auto& [name, type] : kDatumModifiers) {
      if (text == name) reading.part.AddModifier(modified, type);
    }
  }
  for (const auto& [name, type] : kDatumFlags) {
    if (simple.Flag(name)) reading.part.AddModifier(modified, type);
  }
  Fields translation(simple["DatumTranslation"]);
  if (translation.Flag("DatumTranslationAllowed")) {
    reading.part.AddModifier(modified, zone_mod_translation);
  }
  if (const Element length = simple["ProjectedDatum"]) {
    const std::size_t index = standin::Edit(modified).modifiers.size();
    const std::string field = at + "modifiers[" + std::to_string(index) + "].magnitude";
    const double value = reading.Value(field, reading.units.Length(length));
    reading.part.AddModifier(modified, zone_mod_projected_zone, value);
  }
  Fields simulator(simple["DatumFeatureSimulatorModifier"]);
  if (simulator["BasicSize"]) reading.part.AddModifier(modified, zone_mod_basic);
  for (const Fields* record : {&translation, &simulator, &simple}) reading.SkipRest(*record);
}

int PrecedenceOf(Element datum) {
  constexpr std::string_view kOrder[] = {"PRIMARY",    "SECONDARY", "TERTIARY",
                                         "QUATERNARY", "QUINARY",   "SENARY"};
  const std::string_view text = TextOf(Child(datum, "Precedence"), "PrecedenceEnum");
  return static_cast<int>(std::find(std::begin(kOrder), std::end(kOrder), text) -
                          std::begin(kOrder));
}

double SequenceOf(Element datum) {
  const Element number = Child(datum, "SequenceNumber");
  return number ? NumberOf(number) : 0;
}

// The datums of a compartment, those of a common datum by their sequence numbers.
std::vector<Element> SimpleDatums(Reading& reading, Element compartment) {
  std::vector<Element> found;
  std::vector<Element> pending = {compartment};
  while (!pending.empty()) {
    const Element next = pending.back();
    pending.pop_back();
    if (NameOf(next) == "SimpleDatum") {
      found.push_back(next);
      continue;
    }
    std::vector<Element> parts;
    for (const Element part : next.children()) {
      const std::string_view name = NameOf(part);
      if (name == "SimpleDatum" || name == "CompoundDatum" || name == "Datum") {
        parts.push_back(part);
      }
    }
    std::stable_sort(parts.begin(), parts.end(),
                     [](Element a, Element b) { return SequenceOf(a) < SequenceOf(b); });
    pending.insert(pending.end(), parts.rbegin(), parts.rend());
    const Element reduced = Child(next, "ReducedDatum");
    if (reduced && NameOf(next) == "CompoundDatum") {
      reading.Skip(Severity::kReduced, reduced, "the model has it for single datums only");
    }
  }
  return found;
}

// One compartment: a datum, or the common datum of several. The report has it at `at`.
KOVAPMI_DREF& ReadCompartment(Reading& reading, Element compartment, const std::string& at) {
  auto& reference = reading.part.Make<KOVAPMI_DREF>();
  auto& fields = standin::Edit(reference);
  std::wstring label;
  for (const Element inner : SimpleDatums(reading, compartment)) {
    const Document::Entry& datum = reading.document.RequireChild(inner, "DatumDefinitionId");
    if (is_ATTRIB_KOVAPMI_DATUM(datum.entity) != 1) {
      reading.Lose(inner, "its datum " + std::to_string(datum.id) + " could not be read");
      continue;
    }
    auto& modified = reading.part.Make<KOVAPMI_MODIFIED_DATUM>();
    KOVAPMI_DATUM& kernelDatum =
        standin::DatumOf(static_cast<ATTRIB_KOVAPMI_DATUM&>(*datum.entity));
    standin::Edit(modified).datum = &kernelDatum;
    Fields simple(inner);
    simple.Pass({"DatumDefinitionId"});
    const std::string place = at + "datums[" + std::to_string(fields.datums.size()) + "].";
    AddDatumModifiers(reading, simple, modified, place);
    fields.datums.push_back(&modified);
    label += (label.empty() ? L"" : L"-") + std::wstring(kernelDatum.get_wlabel());
  }
  for (const char* feature : {"NominalDatumFeature", "MeasuredDatumFeature"}) {
    if (const Element element = Child(compartment, feature)) {
      reading.Lose(element, std::string(feature) + " is no datum of the model");
    }
  }
  fields.note = label;
  return reference;
}

}  // namespace

KOVAPMI_DRF& Reading::Frame(Document::Entry& entry, const std::string& field) {
  const auto [known, isNew] = frames_.try_emplace(&entry);
  Shared& shared = known->second;
  if (isNew) Share(shared, entry.element, [&] { shared.frame = &ReadFrame(entry); });
  if (shared.frame == nullptr) {
    throw Unreadable(entry.element, "its reference frame could not be read: " +
                                        shared.account.Items().back().reason);
  }
  Spend(standin::Edit(*shared.frame).references.size());
  ListAgain(shared, field);
  return *shared.frame;
}

KOVAPMI_DRF& Reading::ReadFrame(Document::Entry& entry) {
  auto& frame = part.Make<KOVAPMI_DRF>();
  Fields fields(entry.element);
  std::vector<Element> compartments;
  for (const Element datum : fields["Datums"].children()) compartments.push_back(datum);
  std::stable_sort(compartments.begin(), compartments.end(),
                   [](Element a, Element b) { return PrecedenceOf(a) < PrecedenceOf(b); });
  auto& references = standin::Edit(frame).references;
  for (const Element compartment : compartments) {
    const std::string at = "references[" + std::to_string(references.size()) + "].";
    references.push_back(&ReadCompartment(*this, compartment, at));
  }
  const std::string_view name = fields.Text("Name");
  if (!name.empty()) standin::Edit(frame).note = Wide(name);
  part.Id(frame, entry.element.attribute("id").value());
  SkipRest(fields);
  return frame;
}

void Reading::SkipUnusedFrames() {
  for (const Element element : document.At({"DatumReferenceFrames"}).children()) {
    Count("datumReferenceFrames");
    if (frames_.count(&document.EntryOf(element)) == 0) {
      Skip(Severity::kIgnored, element, "no tolerance uses it");
    };
  }
}

}  // namespace qif

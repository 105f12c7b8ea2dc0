// Datum reference frames.

#include <algorithm>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

constexpr Word<zone_modifier_type> kSections[] = {{"ACS", zone_mod_any_cross_section},
                                                  {"ALS", zone_mod_any_longitudinal_section},
                                                  {"SCS", zone_mod_specific_cross_section}};
constexpr Word<zone_modifier_type> kDiameters[] = {{"PD", zone_mod_pitch_diameter},
                                                   {"MD", zone_mod_major_diameter},
                                                   {"LD", zone_mod_minor_diameter}};
constexpr Word<zone_modifier_type> kReductions[] = {
    {"PT", zone_mod_point}, {"SL", zone_mod_straight_line}, {"PL", zone_mod_plane}};

struct FieldModifier {
  const char* field;
  zone_modifier_type type;
};
constexpr FieldModifier kDatumFlags[] = {
    {"ContactingFeature", zone_mod_contacting_feature},
    {"DistanceVariable", zone_mod_distance_variable},
    {"ConstrainOrientation", zone_mod_orientation_only},
};

constexpr Word<int> kPrecedences[] = {{"PRIMARY", 0},    {"SECONDARY", 1}, {"TERTIARY", 2},
                                      {"QUATERNARY", 3}, {"QUINARY", 4},   {"SENARY", 5}};
constexpr int kLast = 6;

// The report has the modifiers at `at`.
void AddDatumModifiers(Reading& reading, Fields& simple, KOVAPMI_MODIFIED_DATUM& modified,
                       const std::string& at) {
  const zone_modifier_type none = zone_mod_none;
  for (const zone_modifier_type type :
       {reading.MeaningOf(simple["MaterialModifier"], kMaterialConditions, none),
        reading.MeaningOf(simple["DiameterModifier"], kDiameters, none),
        reading.MeaningOf(simple["SectionModifier"], kSections, none),
        reading.MeaningOf(simple["ReducedDatum"], kReductions, none)}) {
    if (type != none) reading.part.AddModifier(modified, type);
  }
  for (const auto& [name, type] : kDatumFlags) {
    if (reading.Flag(simple[name])) reading.part.AddModifier(modified, type);
  }
  Fields translation(simple["DatumTranslation"]);
  if (reading.Flag(translation["DatumTranslationAllowed"])) {
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

int PrecedenceOf(Reading& reading, Fields& compartment) {
  Fields precedence(compartment["Precedence"]);
  const int order = reading.MeaningOf(precedence["PrecedenceEnum"], kPrecedences, kLast);
  reading.SkipRest(precedence);
  return order;
}

// Throws Unreadable when there is one that is no number.
std::uint32_t SequenceOf(Element datum) {
  const Element number = Child(datum, "SequenceNumber");
  const std::optional<std::uint32_t> sequence = WholeNumber(WordOf(number));
  if (number && !sequence.has_value()) {
    throw Unreadable(number, Quote(TextOf(number)) + " is no sequence number");
  }
  return sequence.value_or(0);
}

constexpr auto kIsBefore = [](const auto& a, const auto& b) { return a.first < b.first; };

// What stands beside the datums of a compartment.
constexpr std::string_view kBesideDatums[] = {"Precedence",           "SequenceNumber",
                                              "ReducedDatum",         "NominalDatumFeature",
                                              "MeasuredDatumFeature", "Attributes"};

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
    std::vector<std::pair<std::uint32_t, Element>> parts;
    for (const Element part : next.children()) {
      const std::string_view name = NameOf(part);
      if (name == "SimpleDatum" || name == "CompoundDatum" || name == "Datum") {
        parts.emplace_back(SequenceOf(part), part);
      } else if (std::find(std::begin(kBesideDatums), std::end(kBesideDatums), name) ==
                 std::end(kBesideDatums)) {
        reading.Skip(Severity::kLost, part, "it is not known in a datum reference");
      }
    }
    std::stable_sort(parts.begin(), parts.end(), kIsBefore);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) pending.push_back(part->second);
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
  const std::vector<Element> datums = SimpleDatums(reading, compartment);
  for (const Element inner : datums) {
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
  bool hasOther = false;
  for (const char* feature : {"NominalDatumFeature", "MeasuredDatumFeature"}) {
    if (const Element element = Child(compartment, feature)) {
      reading.Lose(element, std::string(feature) + " is no datum of the model");
      hasOther = true;
    }
  }
  if (datums.empty() && !hasOther) {
    reading.Skip(Severity::kLost, compartment, "it names no datum");
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
  std::vector<std::pair<int, Element>> compartments;
  Fields datums(fields["Datums"]);
  for (const Element datum : datums.All("Datum")) {
    Fields compartment(datum);
    compartments.emplace_back(PrecedenceOf(*this, compartment), datum);
    SkipDoubled(compartment);
  }
  SkipRest(datums);
  std::stable_sort(compartments.begin(), compartments.end(), kIsBefore);
  auto& references = standin::Edit(frame).references;
  for (const auto& [precedence, compartment] : compartments) {
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
  for (const Element element :
       document.At({"DatumReferenceFrames"}).children("DatumReferenceFrame")) {
    Count("datumReferenceFrames");
    if (frames_.count(&document.EntryOf(element)) == 0) {
      Skip(Severity::kIgnored, element, "no tolerance uses it");
    }
  }
}

}  // namespace qif

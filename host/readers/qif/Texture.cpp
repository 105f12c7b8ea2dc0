// Surface texture.

#include "readers/qif/Reading.h"

namespace qif {

namespace {

// The symbol of a lay (ASME Y14.36, ISO 21920-1).
std::wstring LayOf(std::string_view lay) {
  if (lay == "PARALLEL") return L"=";
  if (lay == "PERPENDICULAR") return L"\u22A5";
  if (lay == "CROSS_HATCH") return L"X";
  if (lay == "MULTI_DIRECTIONAL") return L"M";
  if (lay == "CIRCULAR") return L"C";
  if (lay == "RADIAL") return L"R";
  if (lay == "PARTICULATE") return L"P";
  return Wide(lay);
}

constexpr Word<roughness_obtention_type> kObtentions[] = {
    {"UNDEFINED", roughness_obtention_unspecified},
    {"UNSUPPORTED", roughness_obtention_unknown},
    {"MACHINING_MANDATORY", roughness_obtention_machining_mandatory},
    {"MACHINING_FORBIDDEN", roughness_obtention_machining_forbidden},
};

constexpr Word<roughness_applicability_type> kApplicabilities[] = {
    {"UNSUPPORTED", roughness_applicability_unknown},
    {"SPECIFIED_SURFACE_ONLY", roughness_applicability_specified_surface_only},
    {"ALL_PART_SURFACES", roughness_applicability_all_part_surfaces},
    {"BASIC_SURFACE", roughness_applicability_basic_surface},
};

}  // namespace

// The symbol's fields, in this order; a text that is not given is not there. Values keep the unit
// that they are written in, by its name where it is not the model's.
//   0 roughness average, 1 minimum material removal, 2 production method, 3 cutoff,
//   4 secondary roughness parameter, 5 direction of lay, 6 other surface parameter
ENTITY* ReadTexture(Reading& reading, const Characteristic& characteristic) {
  if (characteristic.kind != "SurfaceTexture") return nullptr;
  Fields& nominal = characteristic.nominal;
  std::vector<pmi_text> texts;
  const auto add = [&](Element field, bool isLength) {
    const std::string written =
        field && isLength ? reading.units.Length(field).Written() : std::string(TextOf(field));
    texts.push_back(written.empty() ? std::nullopt : pmi_text(Wide(written)));
  };
  add(characteristic.definition["RoughnessAverage"], true);
  add(nominal["MinimumMaterialRemoval"], false);
  add(nominal["ProductionMethod"], false);
  add(nominal["Cutoff"], true);
  add(nominal["SecondaryRoughnessParameter"], true);
  const std::string_view lay = nominal.Text("DirectionOfLay");
  texts.push_back(lay.empty() ? std::nullopt : pmi_text(LayOf(lay)));
  add(nominal["OtherSurfaceParameter"], false);

  ENTITY& carrier = reading.Carrier(reading.AssociatedEntities(nominal));
  auto& texture = reading.part.Make<ATTRIB_KOVAPMI_ROUGHNESS>(&carrier);
  auto& fields = standin::Edit(texture);
  fields.obtention =
      reading.MeaningOf(nominal["Obtention"], kObtentions, roughness_obtention_unspecified);
  fields.applicability = reading.MeaningOf(nominal["Applicability"], kApplicabilities,
                                           roughness_applicability_unknown);
  fields.texts = std::move(texts);
  return &texture;
}

}  // namespace qif

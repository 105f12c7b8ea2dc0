#include "pmi_entities/pmi_semantics.h"

ORVO_ENTITY_FUNCTIONS(KOVAPMI_TEXT_PROPERTIES, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_LEADER_GEN, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_DISPLAY_PROPERTIES, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_NOTE, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_DIMENSION, QENCOLLECTION)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_DATUMTGT, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_DATUM, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_ZONE_MODIFIER, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_MODIFIED_DATUM, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_DREF, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_DRF, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_GEOM_TOL_ROW, ENTITY)
ORVO_ENTITY_FUNCTIONS(ATTRIB_KOVAPMI_TEXT, ATTRIB)
ORVO_ENTITY_FUNCTIONS(ATTRIB_KOVAPMI_FLAGNOTE, ATTRIB)
ORVO_ENTITY_FUNCTIONS(ATTRIB_KOVAPMI_ROUGHNESS, ATTRIB)
ORVO_ENTITY_FUNCTIONS(ATTRIB_KOVAPMI_DATUM, ATTRIB)
ORVO_ENTITY_FUNCTIONS(ATTRIB_KOVAPMI_DATUM_TARGET, ATTRIB)
ORVO_ENTITY_FUNCTIONS(ATTRIB_KOVAPMI_GEOM_TOL, ATTRIB)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_CAMERA, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_CLIPPINGPLANE, ENTITY)
ORVO_ENTITY_FUNCTIONS(KOVAPMI_CAPTURE, ENTITY)

namespace {

template <typename Item>
bool Holds(const std::vector<Item>& items, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < items.size();
}

template <typename Item>
Item* ItemOrNull(const std::vector<Item*>& items, int index) {
  return Holds(items, index) ? items[static_cast<std::size_t>(index)] : nullptr;
}

template <typename Item>
int ItemInto(const std::vector<Item*>& items, int index, Item*& item) {
  if (!Holds(items, index)) return 0;
  item = items[static_cast<std::size_t>(index)];
  return 1;
}

}  // namespace

int KOVAPMI_DIMENSION::get_dimension_line_extremities(QENposition& first,
                                                      QENposition& second) const {
  if (fields_.line.size() != 2) return 0;
  first = fields_.line[0];
  second = fields_.line[1];
  return 1;
}

int KOVAPMI_DIMENSION::GetExtensionLines(QENposition& first, QENposition& second,
                                         QENposition& third) const {
  if (fields_.extension_lines.size() != 3) return 0;
  first = fields_.extension_lines[0];
  second = fields_.extension_lines[1];
  third = fields_.extension_lines[2];
  return 1;
}

KOVAPMI_DATUMTGT* KOVAPMI_DATUM::get_datumtgt_at(int index) const {
  return ItemOrNull(fields_.targets, index);
}

bool KOVAPMI_ZONE_MODIFIER::GetZoneModifierMagnitude(double& magnitude) const {
  if (fields_.magnitude.has_value()) magnitude = *fields_.magnitude;
  return fields_.magnitude.has_value();
}

KOVAPMI_ZONE_MODIFIER* KOVAPMI_MODIFIED_DATUM::GetZoneModifierAt(int index) const {
  return ItemOrNull(fields_.modifiers, index);
}

int KOVAPMI_DREF::GetDatumAt(int index, KOVAPMI_MODIFIED_DATUM*& datum) const {
  return ItemInto(fields_.datums, index, datum);
}

KOVAPMI_DREF* KOVAPMI_DRF::get_dref_at(int index) const {
  return ItemOrNull(fields_.references, index);
}

KOVAPMI_ZONE_MODIFIER* KOVAPMI_GEOM_TOL_ROW::GetZoneModifierAt(int index) const {
  return ItemOrNull(fields_.modifiers, index);
}

const wchar_t* ATTRIB_KOVAPMI_ROUGHNESS::get_wfield_at(int index) const {
  if (!Holds(fields_.texts, index)) return nullptr;
  return pmi_text_pointer(fields_.texts[static_cast<std::size_t>(index)]);
}

int ATTRIB_KOVAPMI_GEOM_TOL::get_geom_tol_row_at(int index, KOVAPMI_GEOM_TOL_ROW*& row) const {
  return ItemInto(fields_.rows, index, row);
}

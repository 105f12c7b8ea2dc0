#include "DisplayProperties.h"

#include "QueryShape.h"

// The first test that holds decides. A datum attribute whose datum is missing or of another class
// has no display properties; so too a target attribute.
KOVAPMI_DISPLAY_PROPERTIES* FindDisplayProperties(ENTITY* entity) {
  if (auto* text = As<ATTRIB_KOVAPMI_TEXT>(entity)) return text->get_display_properties();
  if (auto* texture = As<ATTRIB_KOVAPMI_ROUGHNESS>(entity))
    return texture->get_display_properties();
  if (auto* tolerance = As<ATTRIB_KOVAPMI_GEOM_TOL>(entity)) {
    return tolerance->get_display_properties();
  }
  if (auto* dimension = As<KOVAPMI_DIMENSION>(entity)) return dimension->get_display_properties();
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM>(entity)) {
    return FindDisplayProperties(As<KOVAPMI_DATUM>(attribute->get_datum()));
  }
  if (auto* datum = As<KOVAPMI_DATUM>(entity)) return datum->get_display_properties();
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity)) {
    return FindDisplayProperties(As<KOVAPMI_DATUMTGT>(attribute->get_datum_target()));
  }
  if (auto* target = As<KOVAPMI_DATUMTGT>(entity)) return target->get_display_properties();
  if (auto* note = As<ATTRIB_KOVAPMI_FLAGNOTE>(entity)) return note->get_display_properties();
  return nullptr;
}

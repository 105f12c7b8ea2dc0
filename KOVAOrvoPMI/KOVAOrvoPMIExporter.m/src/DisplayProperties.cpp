#include "DisplayProperties.h"

#include "QueryShape.h"

// The first test that holds decides.
void FindDisplayProperties(const ENTITY* entity, KOVAPMI_DISPLAY_PROPERTIES*& display) {
  if (const auto* text = As<ATTRIB_KOVAPMI_TEXT>(entity)) {
    display = text->get_display_properties();
  } else if (const auto* roughness = As<ATTRIB_KOVAPMI_ROUGHNESS>(entity)) {
    display = roughness->get_display_properties();
  } else if (const auto* tolerance = As<ATTRIB_KOVAPMI_GEOM_TOL>(entity)) {
    display = tolerance->get_display_properties();
  } else if (const auto* dimension = As<KOVAPMI_DIMENSION>(entity)) {
    display = dimension->get_display_properties();
  } else if (const auto* datumAttribute = As<ATTRIB_KOVAPMI_DATUM>(entity)) {
    // Without a datum of its class the attribute is as an object of no listed kind.
    if (const auto* datum = datumAttribute->get_datum(); IsKind<KOVAPMI_DATUM>(datum)) {
      display = datum->get_display_properties();
    }
  } else if (const auto* datum = As<KOVAPMI_DATUM>(entity)) {
    display = datum->get_display_properties();
  } else if (const auto* targetAttribute = As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity)) {
    if (const auto* target = targetAttribute->get_datum_target();
        IsKind<KOVAPMI_DATUMTGT>(target)) {
      display = target->get_display_properties();
    }
  } else if (const auto* target = As<KOVAPMI_DATUMTGT>(entity)) {
    display = target->get_display_properties();
  } else if (const auto* flagNote = As<ATTRIB_KOVAPMI_FLAGNOTE>(entity)) {
    display = flagNote->get_display_properties();
  }
}

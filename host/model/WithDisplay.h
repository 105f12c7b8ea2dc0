#pragma once

#include "standin/Part.h"

// Gives work the entity that keeps an annotation's display properties: the annotation itself, or
// its datum or target. Does nothing for an entity without them.
template <typename Work>
void WithDisplay(ENTITY& annotation, Work work) {
  if (is_KOVAPMI_DIMENSION(&annotation) == 1) {
    work(static_cast<KOVAPMI_DIMENSION&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_GEOM_TOL(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_GEOM_TOL&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_DATUM(&annotation) == 1) {
    work(standin::DatumOf(static_cast<ATTRIB_KOVAPMI_DATUM&>(annotation)));
  } else if (is_ATTRIB_KOVAPMI_DATUM_TARGET(&annotation) == 1) {
    work(standin::TargetOf(static_cast<ATTRIB_KOVAPMI_DATUM_TARGET&>(annotation)));
  } else if (is_ATTRIB_KOVAPMI_TEXT(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_TEXT&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_FLAGNOTE(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_FLAGNOTE&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_ROUGHNESS(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_ROUGHNESS&>(annotation));
  }
}

#pragma once

class ENTITY;
class KOVAPMI_DISPLAY_PROPERTIES;

// The display properties of an annotation, a datum or a datum target. Null when it has none, for an
// object of any other kind and for a null entity.
KOVAPMI_DISPLAY_PROPERTIES* FindDisplayProperties(ENTITY* entity);

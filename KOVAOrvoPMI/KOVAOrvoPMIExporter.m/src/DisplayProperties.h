#pragma once

class ENTITY;
class KOVAPMI_DISPLAY_PROPERTIES;

// The display properties of an annotation, a datum or a datum target, into `display`, null included
// when it carries none. For an absent object and one of any other kind `display` is untouched.
void FindDisplayProperties(const ENTITY* entity, KOVAPMI_DISPLAY_PROPERTIES*& display);

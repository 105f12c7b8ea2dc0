#pragma once

class ENTITY;

// The integer of a named attribute of `entity`, into `value`. False, and `value` untouched, when
// the kernel's lookup fails, finds nothing, or finds an attribute that is not an integer.
bool FindInteger(ENTITY* entity, const char* name, int& value);

// Returns true if the kernel finds a named attribute of any kind on `entity`.
bool HasNamedAttribute(ENTITY* entity, const char* name);

// On a dimension: that it is called out with another one, and as what.
extern const char* const kCalloutTypeAttribute;
// On a group: its kind.
extern const char* const kGroupTypeAttribute;

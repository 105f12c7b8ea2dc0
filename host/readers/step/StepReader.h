#pragma once

#include <string_view>

#include "model/Model.h"

// Reads a STEP AP242 file (ISO 10303-242 in the clear text encoding of ISO 10303-21) into a kernel
// model. Lengths are in the unit of the file's geometry, angles in degrees. Throws ModelError for
// what is no such file; what can't be read of one stands in Model::skipped.
Model ReadStepText(std::string_view text, const std::string& name);

// Whether the first bytes are those of an exchange structure, behind blanks and comments.
bool IsStep(std::string_view text);

#pragma once

#include <string_view>

#include "model/Drawing.h"
#include "model/Model.h"

// Reads a STEP AP242 file (ISO 10303-242 in the clear text encoding of ISO 10303-21) into a kernel
// model. Lengths are in the unit of the file's geometry, angles in degrees. Throws ModelError for
// any other file; parts that can't be read are listed in Model::skipped. The drawing is filled
// unless it is null; what it lacks is listed, too.
Model ReadStepText(std::string_view text, const std::string& name, Drawing* drawing = nullptr);

// Whether the first bytes are those of an exchange structure, behind blanks and comments.
bool IsStep(std::string_view text);

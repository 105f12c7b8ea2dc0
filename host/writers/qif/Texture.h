#pragma once

#include "report/Report.h"
#include "writers/qif/Units.h"

namespace qif_writer {

// Whether a field of a surface texture is a length in a unit that is known.
bool IsTextureLength(const RoughnessReport& roughness, std::size_t field, const Units& units);

}  // namespace qif_writer

#pragma once

#include "report/Report.h"
#include "writers/qif/Units.h"

namespace qif_writer {

// Whether a zone of QIF says where a datum target lies: the report tells as much as it asks for,
// and the target is not simply its feature.
bool HasZone(const DatumTargetReport& target, const Units& units, bool hasFeature);

}  // namespace qif_writer

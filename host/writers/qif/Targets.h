#pragma once

#include "report/Report.h"
#include "writers/qif/Units.h"

namespace qif_writer {

// Whether the report tells as much of where a datum target lies as a zone of QIF asks for.
bool HasZone(const DatumTargetReport& target, const Units& units);

}  // namespace qif_writer

#pragma once

#include <string>

#include "report/Report.h"

// Annotations as a drawing writes them (ASME Y14.5). UTF-8, with whatever the document's texts
// hold.

namespace text {

// Such as "⌀35 +0.2/0".
std::string DrawDimension(const DimensionReport& dimension);

// Such as "⌖ | ⌀0.25 Ⓜ | A | B Ⓜ | C"; rows are parted by " / ".
std::string DrawTolerance(const ToleranceReport& tolerance);

// Such as "√ Ra 1.6".
std::string DrawRoughness(const RoughnessReport& roughness);

// A number in as few digits as tell it: six decimals, or six digits of a small number.
std::string DrawNumber(double value);

}  // namespace text

#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

// Annotations as a drawing writes them (ASME Y14.5). UTF-8. Texts of the document are
// unchanged, control characters included.

namespace text {

// Such as "⌀35 +0.2/0", or "⌀ (no value)".
std::string DrawDimension(const DimensionReport& dimension);

// Such as "⌖ | ⌀0.25 Ⓜ | A | B Ⓜ | C"; rows are parted by " / ".
std::string DrawTolerance(const ToleranceReport& tolerance);

// The symbol of what is controlled, such as "⌖"; its name where there is no symbol for it.
std::string CharacteristicSymbol(const ToleranceReport& tolerance);

// A segment of a feature control frame without that symbol, such as "⌀0.25 Ⓜ", "A", "B Ⓜ".
std::vector<std::string> Compartments(const RowReport& row);

// Such as "√ Ra 1.6".
std::string DrawRoughness(const RoughnessReport& roughness);

// A number in as few digits as tell it: six decimals, or six digits of a small number.
std::string DrawNumber(double value);

}  // namespace text

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qif_writer {

// The shortest text that reads as the same double: without an exponent, for decimals, and as it
// comes, for coordinates.
std::string Decimal(double value);
std::string Real(double value);
// Rounded to so many places behind the point, without zeros at the end.
std::string Rounded(double value, int places);

// A text that is one decimal number without an exponent.
bool IsDecimal(std::string_view text);
// Its value; none for another text.
std::optional<double> NumberIn(const std::string& text);
// How many places it has behind its point.
int PlacesOf(std::string_view text);

// Without white space at its ends, and with single spaces inside.
std::string Collapsed(std::string_view text);

}  // namespace qif_writer

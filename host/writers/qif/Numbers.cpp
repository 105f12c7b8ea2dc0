#include "writers/qif/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace qif_writer {

namespace {

// The longest text: 309 digits before the point, or 340 places behind it with as many as a double
// has.
constexpr std::size_t kLongest = 800;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

template <typename... How>
std::string Print(double value, How... how) {
  char text[kLongest];
  const auto end = std::to_chars(text, text + kLongest, value == 0 ? 0 : value, how...);
  return {text, end.ptr};
}

}  // namespace

std::string Decimal(double value) { return Print(value, std::chars_format::fixed); }

std::string Real(double value) { return Print(value); }

std::string Rounded(double value, int places) {
  // Far from zero a double has fewer places than that.
  if (std::abs(value) >= 1e15) return Decimal(value);
  std::string text = Print(value, std::chars_format::fixed, std::max(places, 0));
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

bool IsDecimal(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
  const auto points = std::count(text.begin(), text.end(), '.');
  return digits > 0 && points <= 1 && static_cast<std::size_t>(digits + points) == text.size();
}

std::optional<double> NumberIn(const std::string& text) {
  const char* start = text.c_str() + (!text.empty() && text.front() == '+' ? 1 : 0);
  double value = 0;
  const auto end = std::from_chars(start, text.c_str() + text.size(), value);
  if (end.ec != std::errc() || end.ptr != text.c_str() + text.size()) return {};
  return value;
}

int PlacesOf(std::string_view text) {
  const std::size_t point = text.find('.');
  return point == std::string_view::npos ? 0 : static_cast<int>(text.size() - point - 1);
}

std::string Collapsed(std::string_view text) {
  constexpr std::string_view kSpaces = " \t\r\n";
  std::string result;
  for (const char c : text) {
    if (kSpaces.find(c) == std::string_view::npos) {
      result += c;
    } else if (!result.empty() && result.back() != ' ') {
      result += ' ';
    }
  }
  if (!result.empty() && result.back() == ' ') result.pop_back();
  return result;
}

}  // namespace qif_writer

#include "report/Clean.h"

#include <algorithm>
#include <cstdio>

namespace text {

namespace {

bool Continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

bool IsControl(unsigned code) {
  return code < 0x20 || (code >= 0x7F && code <= 0x9F) || TurnsDirection(code);
}

}  // namespace

std::size_t Character(std::string_view rest, unsigned& code) {
  const auto first = static_cast<unsigned char>(rest[0]);
  if (first < 0x80) {
    code = first;
    return 1;
  }
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || rest.size() < length) return 0;
  code = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!Continues(rest[i])) return 0;
    code = code << 6 | (static_cast<unsigned char>(rest[i]) & 0x3FU);
  }
  const unsigned least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  return code < least || surrogate || code > 0x10FFFF ? 0 : length;
}

bool TurnsDirection(unsigned code) {
  return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) ||
         code == 0x200E || code == 0x200F || code == 0x061C;
}

std::string OneLine(const std::string& raw) {
  std::string line;
  for (std::size_t at = 0; at < raw.size();) {
    unsigned code = 0;
    const std::size_t length = Character(std::string_view(raw).substr(at), code);
    if (length != 0 && (code == '\n' || code == 0x2028 || code == 0x2029)) {
      line += "⏎";
    } else if (length != 0 && code == '\t') {
      line += ' ';
    } else if (length == 0 || (IsControl(code) && code != '\r')) {
      line += "\uFFFD";
    } else if (code != '\r') {
      line.append(raw, at, length);
    }
    at += std::max<std::size_t>(length, 1);
  }
  return line;
}

std::string EscapeControls(const std::string& json) {
  std::string escaped;
  for (std::size_t at = 0; at < json.size();) {
    unsigned code = 0;
    const std::size_t length =
        std::max<std::size_t>(Character(std::string_view(json).substr(at), code), 1);
    if (code >= 0x7F && IsControl(code)) {
      char text[16];
      std::snprintf(text, sizeof text, "\\u%04x", code);
      escaped += text;
    } else {
      escaped.append(json, at, length);
    }
    at += length;
  }
  return escaped;
}

std::string Cut(const std::string& clean, std::size_t length) {
  std::size_t characters = 0;
  for (std::size_t at = 0; at < clean.size(); ++at) {
    if (!Continues(clean[at]) && ++characters > length) return clean.substr(0, at) + "…";
  }
  return clean;
}

std::size_t Width(const std::string& clean) {
  return clean.size() -
         static_cast<std::size_t>(std::count_if(clean.begin(), clean.end(), Continues));
}

std::string Count(long number, const std::string& one, const std::string& many) {
  return std::to_string(number) + " " + (number == 1 ? one : many);
}

}  // namespace text

#include "report/Wide.h"

#include <cstdint>

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool IsScalar(std::uint32_t c) { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

void Append(std::string& text, std::uint32_t c) {
  const auto tail = [&](int shift) { text += static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0U | (c >> 6));
    tail(0);
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0U | (c >> 12));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0U | (c >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

}  // namespace

std::string ToUtf8(std::wstring_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (const wchar_t character : wide) {
    const auto c = static_cast<std::uint32_t>(character);
    Append(text, IsScalar(c) ? c : kReplacement);
  }
  return text;
}

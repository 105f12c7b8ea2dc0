#include "Wide.h"

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

std::wstring FromUtf8(std::string_view narrow) {
  std::wstring wide;
  wide.reserve(narrow.size());
  for (std::size_t i = 0; i < narrow.size();) {
    const auto lead = static_cast<unsigned char>(narrow[i++]);
    int tails = 0;
    std::uint32_t c = lead;
    std::uint32_t least = 0;
    if (lead >= 0xF0 && lead < 0xF8) {
      tails = 3, c = lead & 0x07U, least = 0x10000;
    } else if (lead >= 0xE0) {
      tails = 2, c = lead & 0x0FU, least = 0x800;
    } else if (lead >= 0xC0) {
      tails = 1, c = lead & 0x1FU, least = 0x80;
    } else if (lead >= 0x80) {
      c = kReplacement;
    }
    if (lead >= 0xF8) tails = 0, c = kReplacement;
    for (; tails > 0; --tails) {
      if (i == narrow.size() || (static_cast<unsigned char>(narrow[i]) & 0xC0U) != 0x80) break;
      c = (c << 6) | (static_cast<unsigned char>(narrow[i++]) & 0x3FU);
    }
    wide += static_cast<wchar_t>(tails > 0 || c < least || !IsScalar(c) ? kReplacement : c);
  }
  return wide;
}

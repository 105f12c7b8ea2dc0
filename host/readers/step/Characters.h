#pragma once

#include <string_view>

// The characters of the clear text encoding.
namespace step {

inline bool IsBlank(char c) {
  return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\v';
}
inline bool IsPrintControl(std::string_view text) { return text == "\\N\\" || text == "\\F\\"; }
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }
inline bool IsNameStart(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '!';
}
inline bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c) || c == '_'; }

}  // namespace step

#include "model/AroundValue.h"

#include <cwctype>

namespace {

constexpr wchar_t kHoleSymbols[] = L"\u2334\u2335\u21A7";
constexpr wchar_t kSpaces[] = L" \t\r\n\u00A0";
// Marks of the value itself, on either side.
constexpr wchar_t kMarksBefore[] = L"\u2300\u25A1([";
constexpr wchar_t kMarksAfter[] = L"\u00B0\"')]";

bool IsOneOf(wchar_t c, std::wstring_view set) { return set.find(c) != std::wstring_view::npos; }

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

bool IsWordCharacter(wchar_t c) { return std::iswalnum(static_cast<wint_t>(c)) != 0; }

void Trim(std::wstring_view& text) {
  while (!text.empty() && IsOneOf(text.front(), kSpaces)) text.remove_prefix(1);
  while (!text.empty() && IsOneOf(text.back(), kSpaces)) text.remove_suffix(1);
}

// Takes a word off the end of a text, when it stands there alone.
bool TakeLastWord(std::wstring_view& text, std::wstring_view word) {
  if (text.size() < word.size() || text.substr(text.size() - word.size()) != word) return false;
  const std::wstring_view rest = text.substr(0, text.size() - word.size());
  if (!rest.empty() && IsWordCharacter(rest.back())) return false;
  text = rest;
  return true;
}

// Where the value starts: the first number that is not a count such as "4X".
std::size_t StartOfValue(const std::wstring& text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const bool starts =
        IsDigit(text[i]) || (text[i] == L'.' && i + 1 < text.size() && IsDigit(text[i + 1]));
    if (!starts) {
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < text.size() && (IsDigit(text[end]) || text[end] == L'.' || text[end] == L','))
      ++end;
    std::size_t mark = text.find_first_not_of(kSpaces, end);
    const bool isCount = mark != std::wstring::npos && IsOneOf(text[mark], L"xX\u00D7") &&
                         (mark + 1 == text.size() || !IsWordCharacter(text[mark + 1]));
    if (!isCount) return i;
    i = mark + 1;
  }
  return std::wstring::npos;
}

}  // namespace

bool TakeFirstWord(std::wstring_view& text, std::wstring_view word) {
  Trim(text);
  if (text.substr(0, word.size()) != word) return false;
  const std::wstring_view rest = text.substr(word.size());
  if (!rest.empty() && IsWordCharacter(rest.front())) return false;
  text = rest;
  Trim(text);
  return true;
}

AroundValue TextsAroundValue(const std::wstring& drawn) {
  const std::size_t start = StartOfValue(drawn);
  if (start == std::wstring::npos) return {};
  std::wstring_view before = std::wstring_view(drawn).substr(0, start);
  for (bool changed = true; changed;) {
    Trim(before);
    changed = !before.empty() && IsOneOf(before.back(), kMarksBefore);
    if (changed) before.remove_suffix(1);
    for (const wchar_t* word : {L"R", L"S", L"SR", L"CR"}) {
      changed = TakeLastWord(before, word) || changed;
    }
  }
  std::wstring_view after = std::wstring_view(drawn).substr(drawn.find_last_of(L"0123456789") + 1);
  for (bool changed = true; changed;) {
    Trim(after);
    changed = !after.empty() && IsOneOf(after.front(), kMarksAfter);
    if (changed) after.remove_prefix(1);
    for (const wchar_t* word : {L"IN", L"in", L"MM", L"mm"}) {
      changed = TakeFirstWord(after, word) || changed;
    }
  }
  return {std::wstring(before), std::wstring(after)};
}

bool HasHoleSymbol(const std::wstring& drawn) {
  return drawn.find_first_of(kHoleSymbols) != std::wstring::npos;
}

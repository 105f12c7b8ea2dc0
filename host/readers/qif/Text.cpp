#include "readers/qif/Text.h"

#include <cwctype>

namespace qif {

namespace {

struct Symbol {
  std::string_view name;
  const wchar_t* text;
};

constexpr Symbol kSymbols[] = {
    {"BR", L"\n"},
    {"DIAMETER", L"\u2300"},
    {"DIAMETER_SPHERICAL", L"S\u2300"},
    {"SPHERICAL_DIAMETER", L"S\u2300"},
    {"ST", L"\u27E8ST\u27E9"},
    {"DEGREE", L"\u00B0"},
    {"PLUS_MINUS", L"\u00B1"},
    {"SQUARE", L"\u25A1"},
    {"COUNTERBORE", L"\u2334"},
    {"COUNTERSINK", L"\u2335"},
    {"DEPTH", L"\u21A7"},
    {"STRAIGHTNESS", L"\u23E4"},
    {"FLATNESS", L"\u23E5"},
    {"CIRCULARITY", L"\u25CB"},
    {"CYLINDRICITY", L"\u232D"},
    {"PROFILE_LINE", L"\u2312"},
    {"PROFILE_SURFACE", L"\u2313"},
    {"ANGULARITY", L"\u2220"},
    {"PERPENDICULARITY", L"\u27C2"},
    {"PARALLELISM", L"\u2225"},
    {"POSITION", L"\u2316"},
    {"CONCENTRICITY", L"\u25CE"},
    {"SYMMETRY", L"\u232F"},
    {"CIRCULAR_RUNOUT", L"\u2197"},
    {"TOTAL_RUNOUT", L"\u2330"},
};

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

// The same at the start.
bool TakeFirstWord(std::wstring_view& text, std::wstring_view word) {
  if (text.substr(0, word.size()) != word) return false;
  const std::wstring_view rest = text.substr(word.size());
  if (!rest.empty() && IsWordCharacter(rest.front())) return false;
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

std::wstring Symbols(std::string_view data) {
  std::wstring result;
  while (!data.empty()) {
    const std::size_t open = data.find('{');
    const std::size_t close =
        open == std::string_view::npos ? open : data.find_first_of("{}", open + 1);
    if (close == std::string_view::npos) break;
    const std::string_view name = data.substr(open + 1, close - open - 1);
    std::wstring symbol;
    for (const auto& [known, character] : kSymbols) {
      if (known == name) symbol = character;
    }
    // A letter alone is the modifier in a circle.
    if (name.size() == 1 && name[0] >= 'A' && name[0] <= 'Z') {
      symbol = static_cast<wchar_t>(L'\u24B6' + (name[0] - 'A'));
    }
    if (data[close] == '}' && !symbol.empty()) {
      result += Wide(data.substr(0, open)) + symbol;
      data.remove_prefix(close + 1);
    } else {
      result += Wide(data.substr(0, close));
      data.remove_prefix(close);
      if (data.front() == '}') {
        result += L'}';
        data.remove_prefix(1);
      }
    }
  }
  return result + Wide(data);
}

std::wstring DrawnText(Element texts) {
  std::wstring drawn;
  double lastX = 0;
  for (const Element text : texts.children()) {
    if (NameOf(text) != "Text") continue;
    const std::wstring piece = Symbols(RawTextOf(Child(text, "Data")));
    const double x = NumbersOf(Child(text, "XY"), 2)[0];
    if (piece.empty()) continue;
    // What starts further right goes on in the line; anything else is a new line.
    const bool touches =
        drawn.empty() || IsOneOf(drawn.back(), kMarksBefore) || IsOneOf(piece.front(), kSpaces);
    if (!drawn.empty()) drawn += x > lastX ? (touches ? L"" : L" ") : L"\n";
    drawn += piece;
    lastX = x;
  }
  return drawn;
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

std::wstring WithoutSizeModifiers(std::wstring_view after, const std::wstring& suffix) {
  for (bool changed = true; changed;) {
    changed = false;
    Trim(after);
    for (const SizeModifier& modifier : kSizeModifiers) {
      if (suffix.find(modifier.drawn) == std::wstring::npos) continue;
      changed = TakeFirstWord(after, modifier.drawn) || changed;
    }
  }
  return std::wstring(after);
}

bool HasHoleSymbol(const std::wstring& drawn) {
  return drawn.find_first_of(kHoleSymbols) != std::wstring::npos;
}

}  // namespace qif

#include "readers/qif/Text.h"

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

constexpr wchar_t kSpaces[] = L" \t\r\n\u00A0";
// Marks of the value itself, before it.
constexpr wchar_t kMarksBefore[] = L"\u2300\u25A1([";

bool IsOneOf(wchar_t c, std::wstring_view set) { return set.find(c) != std::wstring_view::npos; }

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
  for (const Element text : texts.children("Text")) {
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

std::wstring WithoutSizeModifiers(std::wstring_view after, const std::wstring& suffix) {
  for (bool changed = true; changed;) {
    changed = false;
    for (const SizeModifier& modifier : kSizeModifiers) {
      if (suffix.find(modifier.drawn) == std::wstring::npos) continue;
      changed = TakeFirstWord(after, modifier.drawn) || changed;
    }
  }
  return std::wstring(after);
}

}  // namespace qif

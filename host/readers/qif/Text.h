#pragma once

#include <string>

#include "readers/qif/Document.h"

namespace qif {

// The text of a display, as it reads: its lines one after another, symbols as characters.
std::wstring DrawnText(Element texts);
// One piece of it: {DIAMETER}, {BR} and the like as the characters that they stand for.
std::wstring Symbols(std::string_view data);

// What is written around the value of a dimension: "4X" and "DEEP" of "4X \u23008 \u00B10.1 DEEP".
struct AroundValue {
  std::wstring before;
  std::wstring after;
};
AroundValue TextsAroundValue(const std::wstring& drawn);

// Modifiers of a size (ASME Y14.5, ISO 14405-1): fields of definitions, and what is drawn after the
// value for them.
struct SizeModifier {
  const char* field;
  const wchar_t* drawn;
};
constexpr SizeModifier kSizeModifiers[] = {{"FreeState", L"\u24BB"},
                                           {"StatisticalCharacteristic", L"\u27E8ST\u27E9"},
                                           {"CommonTolerance", L"CT"},
                                           {"EnvelopeRequirement", L"\u24BA"},
                                           {"Independency", L"\u24BE"}};
// What is drawn after a value, without the modifiers at its start that its suffix has already.
std::wstring WithoutSizeModifiers(std::wstring_view after, const std::wstring& suffix);

// Whether a text has a symbol of a hole callout: counterbore, countersink, depth.
bool HasHoleSymbol(const std::wstring& drawn);

}  // namespace qif

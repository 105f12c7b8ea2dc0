#pragma once

#include <string>

#include "model/AroundValue.h"
#include "readers/qif/Document.h"

namespace qif {

// The text of a display, as it reads: its lines one after another, symbols as characters.
std::wstring DrawnText(Element texts);
// One piece of it: {DIAMETER}, {BR} and the like as the characters that they stand for.
std::wstring Symbols(std::string_view data);

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

}  // namespace qif

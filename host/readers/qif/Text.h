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

// Whether a text has a symbol of a hole callout: counterbore, countersink, depth.
bool HasHoleSymbol(const std::wstring& drawn);

}  // namespace qif

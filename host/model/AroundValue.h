#pragma once

#include <string>
#include <string_view>

// What is written around the value of a dimension: "4X" and "DEEP" of "4X \u23008 \u00B10.1 DEEP".
struct AroundValue {
  std::wstring before;
  std::wstring after;
};
AroundValue TextsAroundValue(const std::wstring& drawn);

// Takes a word off the start of a text, with the spaces around it; false, and no more than spaces
// taken, when the text begins with something else.
bool TakeFirstWord(std::wstring_view& text, std::wstring_view word);

// Whether a text has a symbol of a hole callout: counterbore, countersink, depth.
bool HasHoleSymbol(const std::wstring& drawn);

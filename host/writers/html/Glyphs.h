#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "writers/html/Html.h"

// The standard's symbols (ASME Y14.5, ISO 1101, ISO 7083) as strokes, since no font that everybody
// has holds them all. A page defines them once.

namespace html {

struct Glyph {
  unsigned code;       // the character in Unicode
  const char* name;    // in words
  double width;        // to the height of a capital
  const char* stroke;  // SVG path data; a capital is 100 high, the foot of the line at 0
  bool isFilled = false;
};

// A stretch of a text: a symbol, or characters of a font.
struct Run {
  const Glyph* glyph;  // null for characters
  std::string text;    // clean (text::OneLine)
  double width;        // to the height of a capital; of characters about what a sans serif needs
};

std::vector<Run> RunsOf(const std::string& text);
double WidthOf(const std::vector<Run>& runs);

// The definitions, for the page's body.
void PrintGlyphs(Html& page);

// The id of a glyph's definition.
std::string IdOf(const Glyph& glyph);

// A text of a document, its symbols as glyphs: in a line of HTML.
void PrintSigns(Html& page, const std::string& text);

}  // namespace html

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts of a document, made safe for where they are shown. UTF-8.

namespace text {

// The length of the character that `rest` begins with, its code in `code`; 0 when it begins with
// none, `code` is then undefined. REQUIRES: `rest` is not empty.
std::size_t Character(std::string_view rest, unsigned& code);

// A mark that turns the direction of writing and is not seen itself (Unicode bidi controls).
bool TurnsDirection(unsigned code);

// `raw` on one line: line breaks become "⏎", tabs blanks, carriage returns nothing; controls, marks
// that turn the direction of writing and bytes that are no UTF-8 become "�".
std::string OneLine(const std::string& raw);

// JSON in UTF-8 with the controls and marks beyond ASCII, which it may hold as they are, escaped;
// as JSON it says the same.
std::string EscapeControls(const std::string& json);

// The first `length` characters of a clean text, with "…" where something was cut.
std::string Cut(const std::string& clean, std::size_t length);

// How many characters a clean text has.
std::size_t Width(const std::string& clean);

// Such as "1 note" and "2 notes".
std::string Count(long number, const std::string& one, const std::string& many);

}  // namespace text

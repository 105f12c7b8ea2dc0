#pragma once

#include <cstddef>
#include <string>

// Texts of a document, made safe for a terminal and a line. UTF-8.

namespace text {

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

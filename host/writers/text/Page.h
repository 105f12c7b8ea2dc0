#pragma once

#include <string>
#include <vector>

// A page of text for people: lines of about a hundred characters. All text is made safe for a
// terminal first (OneLine).

namespace text {

enum class Ink { kPlain, kBold, kFaint, kRed, kYellow };

struct Piece {
  std::string text;
  Ink ink = Ink::kPlain;
};

class Page {
 public:
  explicit Page(bool colour) : colour_(colour) {}

  // A line, `depth` steps of two blanks in.
  void Line(int depth, const Piece& piece);
  // Pieces two blanks apart, as many on a line as it has room for; the rest goes on below, further
  // in.
  void Flow(int depth, const std::vector<Piece>& pieces);
  // An empty line and a heading.
  void Heading(const std::string& heading, Ink ink = Ink::kBold);

  std::string Take() { return std::move(text_); }

 private:
  void Put(const std::string& clean, Ink ink);

  bool colour_;
  std::string text_;
};

// The first `shown` of a list, parted by commas, and how many more there are.
std::string Some(const std::vector<std::string>& items, std::size_t shown);

// A name in quotation marks, cut when it is long.
std::string Quoted(const std::string& name, bool whole);

}  // namespace text

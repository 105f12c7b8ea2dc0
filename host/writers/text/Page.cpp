#include "writers/text/Page.h"

#include <algorithm>

#include "report/Clean.h"

namespace text {

namespace {

constexpr std::size_t kLineWidth = 100;
constexpr std::size_t kNameWidth = 60;

const char* Escape(Ink ink) {
  switch (ink) {
    case Ink::kBold:
      return "\x1b[1m";
    case Ink::kFaint:
      return "\x1b[2m";
    case Ink::kRed:
      return "\x1b[31m";
    case Ink::kYellow:
      return "\x1b[33m";
    case Ink::kPlain:
      break;
  }
  return "";
}

}  // namespace

void Page::Put(const std::string& clean, Ink ink) {
  if (!colour_ || ink == Ink::kPlain) {
    text_ += clean;
  } else {
    text_.append(Escape(ink)).append(clean).append("\x1b[0m");
  }
}

void Page::Line(int depth, const Piece& piece) {
  text_.append(static_cast<std::size_t>(2 * depth), ' ');
  Put(OneLine(piece.text), piece.ink);
  text_ += '\n';
}

void Page::Flow(int depth, const std::vector<Piece>& pieces) {
  const auto indent = static_cast<std::size_t>(2 * depth);
  std::size_t width = 0;
  for (const Piece& piece : pieces) {
    const std::string clean = OneLine(piece.text);
    const std::size_t needed = Width(clean);
    if (width == 0) {
      width = indent;
      text_.append(indent, ' ');
    } else if (width + 2 + needed > kLineWidth) {
      width = indent + 4;
      text_.append("\n").append(width, ' ');
    } else {
      width += 2;
      text_ += "  ";
    }
    Put(clean, piece.ink);
    width += needed;
  }
  text_ += '\n';
}

void Page::Heading(const std::string& heading, Ink ink) {
  text_ += '\n';
  Line(0, {heading, ink});
}

std::string Some(const std::vector<std::string>& items, std::size_t shown) {
  std::string list;
  for (std::size_t i = 0; i < std::min(items.size(), shown); ++i) {
    list += (i == 0 ? "" : ", ") + items[i];
  }
  if (items.size() > shown) list += " and " + std::to_string(items.size() - shown) + " more";
  return list;
}

std::string Quoted(const std::string& name, bool whole) {
  return '"' + (whole ? name : Cut(OneLine(name), kNameWidth)) + '"';
}

}  // namespace text

#include "writers/html/Html.h"

#include <algorithm>
#include <cstdio>

#include "report/Clean.h"

namespace html {

namespace {

// What stands for a character that cannot stand for itself; null for all others.
const char* Entity(unsigned code) {
  switch (code) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    case '\r':
      return "";
    case 0x2028:
    case 0x2029:
      return "\n";
    default:
      return nullptr;
  }
}

// A control in sight.
std::string Shown(unsigned code) {
  // Unicode has pictures of these from U+2400 on.
  if (code < 0x20) return std::string("\xE2\x90") + static_cast<char>(0x80 + code);
  char text[16];
  std::snprintf(text, sizeof text, "[U+%04X]", code);
  return text;
}

}  // namespace

std::string Escape(std::string_view raw) {
  std::string escaped;
  escaped.reserve(raw.size());
  while (!raw.empty()) {
    unsigned code = 0;
    const std::size_t length = text::Character(raw, code);
    if (length == 0) {
      escaped += "\uFFFD";
    } else if (const char* entity = Entity(code); entity != nullptr) {
      escaped += entity;
    } else if ((code < 0x20 && code != '\n' && code != '\t') || (code >= 0x7F && code <= 0x9F) ||
               text::TurnsDirection(code)) {
      escaped += Shown(code);
    } else {
      escaped += raw.substr(0, length);
    }
    raw.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return escaped;
}

Html& Html::Raw(std::string_view markup) {
  text_ += markup;
  HandOn();
  return *this;
}

Html& Html::Text(std::string_view raw) {
  const bool isPlain = std::all_of(raw.begin(), raw.end(), [](char c) { return c >= ' '; });
  if (isPlain) return Raw(Escape(raw));
  return Raw("<bdi>").Raw(Escape(raw)).Raw("</bdi>");
}

Html& Html::Attribute(const char* name, std::string_view raw) {
  return Raw(" ").Raw(name).Raw("=\"").Raw(Escape(raw)).Raw("\"");
}

void Html::HandOn() {
  constexpr std::size_t kPiece = 65536;
  if (text_.size() >= kPiece) Finish();
}

void Html::Finish() {
  sink_(text_);
  text_.clear();
}

}  // namespace html

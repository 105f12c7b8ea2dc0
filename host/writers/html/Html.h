#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace html {

// Takes a page in pieces of whole characters.
using Sink = std::function<void(const std::string&)>;

// A text of a document as HTML and SVG show it, also between quotes: it ends no element and no
// attribute. Line breaks stay; other controls become pictures of themselves, marks that turn the
// direction of writing their codes ("[U+202E]"), and bytes that are no UTF-8 "�".
std::string Escape(std::string_view raw);

// Puts markup together and hands it on, so that the whole is never held.
class Html {
 public:
  explicit Html(Sink sink) : sink_(std::move(sink)) {}

  // Markup as it is. REQUIRES: nothing of a document is in it.
  Html& Raw(std::string_view markup);
  // A text of a document, in an element of its own (bdi) where it could turn the direction of
  // writing around it or has several lines.
  Html& Text(std::string_view raw);
  // ` name="value"`, inside a start tag.
  Html& Attribute(const char* name, std::string_view raw);
  // Hands on what is left.
  void Finish();

 private:
  void HandOn();

  Sink sink_;
  std::string text_;
};

}  // namespace html

#include "writers/json/JsonText.h"

#include <algorithm>

namespace json {

void JsonText::NewLine() {
  if (indent_ < 0) return;
  text_ += '\n';
  text_.append(static_cast<std::size_t>(indent_ * depth_), ' ');
}

void JsonText::Begin() {
  if (afterKey_ || depth_ == 0) {
    afterKey_ = false;
    return;
  }
  if (!isFirst_) text_ += ',';
  isFirst_ = false;
  NewLine();
}

void JsonText::HandOn() {
  constexpr std::size_t kPiece = 65536;
  if (!sink_ || text_.size() < kPiece) return;
  sink_(text_);
  text_.clear();
}

JsonText& JsonText::Open(char bracket) {
  Begin();
  text_ += bracket;
  ++depth_;
  isFirst_ = true;
  return *this;
}

JsonText& JsonText::Close(char bracket) {
  --depth_;
  if (!isFirst_) NewLine();
  isFirst_ = false;
  text_ += bracket;
  return *this;
}

JsonText& JsonText::Key(const char* key) {
  Value(key);
  text_ += indent_ < 0 ? ":" : ": ";
  afterKey_ = true;
  return *this;
}

JsonText& JsonText::Value(const nlohmann::ordered_json& value) {
  Begin();
  const std::string text =
      value.dump(indent_, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  // Texts inside have no line breaks of their own: those are layout.
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    text_.append(text, start, end - start);
    if (end < text.size()) NewLine();
    start = end + 1;
  }
  HandOn();
  return *this;
}

}  // namespace json

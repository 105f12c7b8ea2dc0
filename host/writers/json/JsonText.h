#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace json {

// Writes a JSON document piece by piece, so that no tree of the whole has to be held: keys and
// values in their order, objects and arrays opened and closed around them. Laid out as
// nlohmann::json::dump does with the same indent; bytes that are no UTF-8 are replaced.
class JsonText {
 public:
  using Sink = std::function<void(const std::string&)>;

  // With a sink, the text is handed on in pieces of whole values.
  explicit JsonText(int indent, Sink sink = {}) : indent_(indent), sink_(std::move(sink)) {}

  // The bracket is '{' or '[', and the one that closes it.
  JsonText& Open(char bracket);
  JsonText& Close(char bracket);
  // REQUIRES: an object is open. A value, or an opening bracket, comes next.
  JsonText& Key(const char* key);
  JsonText& Value(const nlohmann::ordered_json& value);

  // An array of the items, each converted by itself.
  template <typename Items, typename Convert>
  JsonText& List(const Items& items, Convert convert) {
    Open('[');
    for (const auto& item : items) Value(convert(item));
    return Close(']');
  }

  // Returns and clears the text that was not yet handed on.
  std::string Take() { return std::move(text_); }

 private:
  // Begins a new item of the open object or array.
  void Begin();
  void HandOn();
  void NewLine();

  int indent_;
  Sink sink_;
  int depth_ = 0;
  bool isFirst_ = true;  // whether the next item is the first of the open object or array
  bool afterKey_ = false;
  std::string text_;
};

}  // namespace json

#pragma once

#include <string>

// The framework's wide string: a value that owns its text.
class KOVAString {
 public:
  KOVAString() = default;
  // A copy of the null-terminated `text`; a null pointer makes the empty string.
  explicit KOVAString(const wchar_t* text) {
    if (text != nullptr) text_ = text;
  }

  // True when both hold the same characters.
  bool equals(const KOVAString& other) const noexcept { return text_ == other.text_; }

  // The text, null-terminated; valid until this string changes.
  const wchar_t* GetText() const noexcept { return text_.c_str(); }

 private:
  std::wstring text_;
};

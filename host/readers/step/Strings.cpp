#include <iconv.h>

#include "readers/step/Exchange.h"

namespace step {

namespace {

void AppendUtf8(std::uint32_t code, std::string& out) {
  const auto put = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
  if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) code = 0xFFFD;
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

// A byte of one of the pages A to I, which are the parts of ISO 8859 from the first to the ninth.
void AppendOfPage(char page, unsigned char byte, std::string& out) {
  if (page == 'A') return AppendUtf8(byte, out);
  const std::string name = std::string("ISO-8859-") + static_cast<char>('1' + (page - 'A'));
  const iconv_t converter = iconv_open("UTF-8", name.c_str());
  char in[] = {static_cast<char>(byte)};
  char converted[8];
  char* from = in;
  char* to = converted;
  std::size_t fromSize = 1;
  std::size_t toSize = sizeof converted;
  if (converter == reinterpret_cast<iconv_t>(-1)) return AppendUtf8(0xFFFD, out);
  const bool done =
      iconv(converter, &from, &fromSize, &to, &toSize) != static_cast<std::size_t>(-1);
  iconv_close(converter);
  if (!done) return AppendUtf8(0xFFFD, out);
  out.append(converted, to);
}

// Reads `digits` hexadecimal digits; false when there are not so many.
bool Hex(std::string_view text, std::size_t at, std::size_t digits, std::uint32_t& value) {
  if (at + digits > text.size()) return false;
  value = 0;
  for (const char c : text.substr(at, digits)) {
    const std::string_view all = "0123456789ABCDEFabcdef";
    const std::size_t digit = all.find(c);
    if (digit == std::string_view::npos) return false;
    value = 16 * value + static_cast<std::uint32_t>(digit < 16 ? digit : digit - 6);
  }
  return true;
}

// The length of the UTF-8 sequence at a place; 0 when there is none.
std::size_t Utf8Length(std::string_view text, std::size_t at) {
  const auto first = static_cast<unsigned char>(text[at]);
  const std::size_t length = first < 0xC2   ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
  if (length == 0 || at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) return 0;
  }
  // Neither longer than needed, nor a surrogate, nor beyond the last character.
  const auto second = static_cast<unsigned char>(text[at + 1]);
  if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
      (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90)) {
    return 0;
  }
  return length;
}

class Decoder {
 public:
  explicit Decoder(std::string_view text) : text_(text) {}

  std::string Decode() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '\\') {
        if (!Directive()) Copy(1);
      } else if (c == '\'') {
        Copy(1);
        if (at_ < text_.size() && text_[at_] == '\'') ++at_;
      } else if (c == '\n' || c == '\r') {
        ++at_;
      } else if (static_cast<unsigned char>(c) < 0x80) {
        Copy(1);
      } else if (const std::size_t length = Utf8Length(text_, at_)) {
        Copy(length);
      } else {
        AppendUtf8(static_cast<unsigned char>(c), out_);
        ++at_;
      }
    }
    return std::move(out_);
  }

 private:
  void Copy(std::size_t length) {
    out_ += text_.substr(at_, length);
    at_ += length;
  }

  bool Starts(std::string_view with) const { return text_.compare(at_, with.size(), with) == 0; }

  // Takes a directive; false, and nothing taken, when it is none.
  bool Directive() {
    std::uint32_t code = 0;
    if (Starts("\\\\")) {
      out_ += '\\';
      at_ += 2;
    } else if (Starts("\\S\\") && at_ + 3 < text_.size()) {
      AppendOfPage(page_, static_cast<unsigned char>(text_[at_ + 3] | 0x80), out_);
      at_ += 4;
    } else if (Starts("\\P") && at_ + 3 < text_.size() && text_[at_ + 3] == '\\' &&
               text_[at_ + 2] >= 'A' && text_[at_ + 2] <= 'I') {
      page_ = text_[at_ + 2];
      at_ += 4;
    } else if (Starts("\\X\\") && Hex(text_, at_ + 3, 2, code)) {
      AppendUtf8(code, out_);
      at_ += 5;
    } else if (Starts("\\X2\\") || Starts("\\X4\\")) {
      return Wide(text_[at_ + 2] == '2' ? 4 : 8);
    } else if (Starts("\\N\\") || Starts("\\F\\")) {
      at_ += 3;
    } else {
      return false;
    }
    return true;
  }

  // Characters of so many digits each, up to \X0\.
  bool Wide(std::size_t digits) {
    std::string wide;
    std::size_t at = at_ + 4;
    std::uint32_t code = 0;
    while (Hex(text_, at, digits, code)) {
      at += digits;
      std::uint32_t low = 0;
      if (code >= 0xD800 && code < 0xDC00 && Hex(text_, at, digits, low) && low >= 0xDC00 &&
          low < 0xE000) {
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        at += digits;
      }
      AppendUtf8(code, wide);
    }
    if (text_.compare(at, 4, "\\X0\\") != 0) return false;
    out_ += wide;
    at_ = at + 4;
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  char page_ = 'A';
  std::string out_;
};

}  // namespace

std::string Decode(std::string_view text) { return Decoder(text).Decode(); }

}  // namespace step

#include "readers/qif/Element.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

namespace qif {

namespace {

constexpr int kMaxFields = 128;

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

// Reads the number that `text` starts with and takes it off. One that is too large is infinite.
struct Number {
  double value;
  bool isTooSmall;  // 0, but not written so
};
std::optional<Number> TakeNumber(std::string_view& text) {
  text = Trim(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const auto used = static_cast<std::size_t>(end - text.data());
  if (error == std::errc::invalid_argument || std::isnan(value)) return std::nullopt;
  if (used < text.size() && !IsSpace(text[used])) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    std::istringstream again{std::string(text.substr(0, used))};
    again.imbue(std::locale::classic());
    if (!(again >> value)) value = HUGE_VAL;
  }
  const std::string_view digits = text.substr(0, std::min(used, text.find_first_of("eE")));
  text.remove_prefix(used);
  return Number{value, value == 0 && digits.find_first_of("123456789") != std::string_view::npos};
}

[[noreturn]] void ThrowTooManyFields(Element element) {
  throw Unreadable(element, std::string(NameOf(element)) + " has too many fields");
}

}  // namespace

// --- Elements ------------------------------------------------------------------------------------

Attribute Element::attribute(std::string_view name) const {
  const std::uint32_t count = node_ == nullptr ? 0 : node_->fieldCount;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (node_->fields[i].name == name) return Attribute(node_->fields[i].value);
  }
  return Attribute();
}

std::string_view NameOf(Element element) { return element.name(); }

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

long LineOf(Element element) { return element ? static_cast<long>(element.node()->line) : 0; }

Element Child(Element parent, std::string_view name) {
  int fields = 0;
  for (Element child = parent.first_child(); child; child = child.next_sibling()) {
    if (NameOf(child) == name) return child;
    if (++fields > kMaxFields) ThrowTooManyFields(parent);
  }
  return Element();
}

std::string_view RawTextOf(Element element) {
  return element ? std::string_view(element.node()->text, element.node()->textLength)
                 : std::string_view("");
}

std::string_view TextOf(Element element) { return Trim(RawTextOf(element)); }

std::string_view TextOf(Element parent, std::string_view name) {
  return TextOf(Child(parent, name));
}

std::string_view WordOf(Element element) {
  constexpr std::size_t kLongest = 1000;
  const std::string_view text = RawTextOf(element);
  return text.size() > kLongest ? std::string_view() : Trim(text);
}

std::string_view WordOf(Element parent, std::string_view name) {
  return WordOf(Child(parent, name));
}

Element Next(Element element, Element root, bool descend) {
  if (descend && element.first_child()) return element.first_child();
  while (element && element != root) {
    if (element.next_sibling()) return element.next_sibling();
    element = element.parent();
  }
  return Element();
}

// --- Numbers -------------------------------------------------------------------------------------

std::optional<double> NumberIn(std::string_view text) {
  const std::optional<Number> number = TakeNumber(text);
  const bool isOne = number.has_value() && Trim(text).empty();
  if (!isOne || number->isTooSmall || std::isinf(number->value)) return std::nullopt;
  return number->value;
}

std::optional<std::uint32_t> WholeNumber(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  std::uint32_t number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  if (error != std::errc() || end != last) return std::nullopt;
  return number;
}

double NumberOf(Element element) { return NumbersOf(element, 1).front(); }

std::vector<double> NumbersOf(Element element, std::size_t count) {
  std::vector<double> numbers;
  std::string_view text = WordOf(element);
  const auto fail = [element](const std::string& what) {
    throw Unreadable(element,
                     std::string(NameOf(element)) + " " + Quote(TextOf(element)) + " is " + what);
  };
  while (numbers.size() < count) {
    const std::optional<Number> number = TakeNumber(text);
    if (!number.has_value()) break;
    if (std::isinf(number->value)) fail("larger than any number that is read");
    if (number->isTooSmall) fail("smaller than any number that is read");
    numbers.push_back(number->value);
  }
  if (numbers.size() < count || !Trim(text).empty() || element.first_child()) {
    fail(count == 1 ? "not a number" : "not " + std::to_string(count) + " numbers");
  }
  return numbers;
}

std::vector<double> NumberListOf(Element element, std::string_view text) {
  std::vector<double> numbers;
  while (!Trim(text).empty()) {
    const std::optional<Number> number = TakeNumber(text);
    if (!number.has_value() || std::isinf(number->value)) {
      throw Unreadable(element, std::string(NameOf(element)) + " holds what is no number");
    }
    numbers.push_back(number->value);
  }
  return numbers;
}

void RequireFinite(Element element, std::initializer_list<double> values) {
  for (const double value : values) {
    if (!std::isfinite(value)) {
      throw Unreadable(element, std::string(NameOf(element)) + " has values that are too large");
    }
  }
}

std::wstring Wide(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    const int more = lead < 0xC0 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    std::uint32_t code = more == 0 ? lead : lead & (0x3Fu >> more);
    for (int left = more; left > 0 && i < text.size(); --left) {
      code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3Fu);
    }
    wide += static_cast<wchar_t>(code);
  }
  return wide;
}

std::string Quote(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  const bool isLong = text.size() > kLongest;
  text = text.substr(0, kLongest);
  // Not in the middle of a character.
  while (isLong && !text.empty() && (text.back() & 0x80) != 0) text.remove_suffix(1);
  std::string quoted = "'";
  for (const char c : text) quoted += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  return quoted + (isLong ? "...'" : "'");
}

}  // namespace qif

#include "readers/qif/Element.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>

namespace qif {

namespace {

constexpr int kMaxFields = 128;

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

// Reads the number that `text` starts with and takes it off.
std::optional<double> TakeNumber(std::string_view& text) {
  text = Trim(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const auto used = static_cast<std::size_t>(end - text.data());
  if (error != std::errc() || !std::isfinite(value)) return std::nullopt;
  if (used < text.size() && !IsSpace(text[used])) return std::nullopt;
  text.remove_prefix(used);
  return value;
}

[[noreturn]] void ThrowTooManyFields(Element element) {
  throw Unreadable(element, std::string(NameOf(element)) + " has too many fields");
}

}  // namespace

// --- Elements ------------------------------------------------------------------------------------

std::string_view NameOf(Element element) {
  const char* const name = element.name();
  const char* const colon = std::strchr(name, ':');
  return colon == nullptr ? name : colon + 1;
}

Element Child(Element parent, std::string_view name) {
  int fields = 0;
  for (Element child = parent.first_child(); child; child = child.next_sibling()) {
    if (NameOf(child) == name) return child;
    if (++fields > kMaxFields) ThrowTooManyFields(parent);
  }
  return Element();
}

void RequireRecord(Element element) {
  int fields = 0;
  for (Element child = element.first_child(); child; child = child.next_sibling()) {
    if (++fields > kMaxFields) ThrowTooManyFields(element);
  }
}

// The first child is the text or there is none; a search could be long.
std::string_view TextOf(Element element) { return Trim(element.first_child().value()); }

std::string_view TextOf(Element parent, std::string_view name) {
  return TextOf(Child(parent, name));
}

std::string_view WordOf(Element element) {
  constexpr std::size_t kLongest = 1000;
  const char* const text = element.first_child().value();
  const std::size_t length = strnlen(text, kLongest + 1);
  return length > kLongest ? std::string_view() : Trim({text, length});
}

std::string_view WordOf(Element parent, std::string_view name) {
  return WordOf(Child(parent, name));
}

bool IsTrue(std::string_view text) { return text == "true" || text == "1"; }

bool IsTrue(Element parent, std::string_view name) { return IsTrue(WordOf(parent, name)); }

Element Next(Element element, Element root, bool descend) {
  if (descend && element.first_child()) return element.first_child();
  while (element && element != root) {
    if (element.next_sibling()) return element.next_sibling();
    element = element.parent();
  }
  return Element();
}

// --- Numbers -------------------------------------------------------------------------------------

double NumberOf(Element element) { return NumbersOf(element, 1).front(); }

std::vector<double> NumbersOf(Element element, std::size_t count) {
  std::vector<double> numbers;
  std::string_view text = WordOf(element);
  while (numbers.size() < count) {
    const std::optional<double> number = TakeNumber(text);
    if (!number.has_value()) break;
    numbers.push_back(*number);
  }
  if (numbers.size() < count || !Trim(text).empty()) {
    throw Unreadable(element, std::string(NameOf(element)) + " " + Quote(WordOf(element)) +
                                  " is not " +
                                  (count == 1 ? "a number" : std::to_string(count) + " numbers"));
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

std::wstring Wide(std::string_view text) { return pugi::as_wide(std::string(text)); }

std::string Quote(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  std::string quoted = "'";
  for (const char c : text.substr(0, kLongest)) {
    quoted += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  }
  return quoted + (text.size() > kLongest ? "...'" : "'");
}

}  // namespace qif

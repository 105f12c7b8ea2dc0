#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qif {

// What the parser keeps of an element; it belongs to the Xml. Texts end in a null.
struct Node {
  struct Field {
    const char* name;
    const char* value;
  };
  const char* name;  // without the namespace's prefix
  const char* text = "";
  const Field* fields = nullptr;  // the attributes
  Node* parent;
  Node* firstChild = nullptr;
  Node* nextSibling = nullptr;
  std::uint32_t textLength = 0;
  std::uint32_t fieldCount = 0;
  std::uint32_t line;
  std::uint32_t offset;  // of its bracket in the document, in bytes of UTF-8
};

// An attribute's value, or none. White space is collapsed, but in labels.
class Attribute {
 public:
  Attribute() = default;
  explicit Attribute(const char* value) : value_(value) {}
  explicit operator bool() const { return value_ != nullptr; }
  bool empty() const { return value_ == nullptr; }
  const char* value() const { return value_ == nullptr ? "" : value_; }

 private:
  const char* value_ = nullptr;
};

// An element of a document, or none. It lives as long as its Xml.
class Element {
 public:
  class Children;

  Element() = default;
  explicit Element(const Node* node) : node_(node) {}
  explicit operator bool() const { return node_ != nullptr; }
  bool operator==(Element other) const { return node_ == other.node_; }
  bool operator!=(Element other) const { return node_ != other.node_; }

  const char* name() const { return node_ == nullptr ? "" : node_->name; }
  Attribute attribute(std::string_view name) const;
  Element parent() const { return Element(node_ == nullptr ? nullptr : node_->parent); }
  Element first_child() const { return Element(node_ == nullptr ? nullptr : node_->firstChild); }
  Element next_sibling() const { return Element(node_ == nullptr ? nullptr : node_->nextSibling); }
  Children children() const;
  // The children of a name.
  Children children(std::string_view name) const;
  const Node* node() const { return node_; }

 private:
  const Node* node_ = nullptr;
};

// The elements in an element, all or those of a name, for a range-based loop.
class Element::Children {
 public:
  class Iterator {
   public:
    Iterator(Element at, std::string_view name) : at_(at), name_(name) { Pass(); }
    Element operator*() const { return at_; }
    Iterator& operator++() {
      at_ = at_.next_sibling();
      Pass();
      return *this;
    }
    bool operator!=(Iterator other) const { return at_ != other.at_; }

   private:
    void Pass() {
      while (!name_.empty() && at_ && at_.name() != name_) at_ = at_.next_sibling();
    }

    Element at_;
    std::string_view name_;
  };
  Children(Element parent, std::string_view name) : parent_(parent), name_(name) {}
  Iterator begin() const { return Iterator(parent_.first_child(), name_); }
  Iterator end() const { return Iterator(Element(), {}); }

 private:
  Element parent_;
  std::string_view name_;
};

inline Element::Children Element::children() const { return Children(*this, {}); }
inline Element::Children Element::children(std::string_view name) const {
  return Children(*this, name);
}

// An invalid value. The annotation that it belongs to is lost; in the structure of the model the
// whole document is refused.
class Unreadable : public std::runtime_error {
 public:
  Unreadable(Element at, const std::string& what) : std::runtime_error(what), at_(at) {}
  Element At() const { return at_; }

 private:
  Element at_;
};

// --- Elements. Names are local names: a namespace prefix does not count. ---

std::string_view NameOf(Element element);
bool EndsWith(std::string_view text, std::string_view end);
// The line that an element starts on, from 1; 0 for none.
long LineOf(Element element);
// The first child of a name, or none. Throws Unreadable when the parent has more children than a
// record has fields, which keeps the search short in any document.
Element Child(Element parent, std::string_view name);
// An element's text without the white space around it. White space inside is collapsed, but in
// elements called Text or Data.
std::string_view TextOf(Element element);
// The text of the first child of a name.
std::string_view TextOf(Element parent, std::string_view name);
// An element's text as it stands, when it is called Text or Data; white space alone is no text.
std::string_view RawTextOf(Element element);
// As TextOf, for numbers and ids: a text of unreasonable length counts as empty, so that a
// value which many others refer to is read in no time.
std::string_view WordOf(Element element);
std::string_view WordOf(Element parent, std::string_view name);
// The element that follows in document order inside `root`, or none. With `descend` false, what
// lies inside `element` is passed over.
Element Next(Element element, Element root, bool descend = true);

// A text that is one number which a double can hold, as NumberOf has it; none otherwise.
std::optional<double> NumberIn(std::string_view text);
// A text that is one whole number from 0; none when it is anything else or does not fit.
std::optional<std::uint32_t> WholeNumber(std::string_view text);

// --- Numbers. Throw Unreadable unless the text is that many numbers which a double can hold: none
// --- is infinite, and none is 0 because it is too small.

double NumberOf(Element element);
std::vector<double> NumbersOf(Element element, std::size_t count);

// The numbers in a text of an element, however many.
std::vector<double> NumberListOf(Element element, std::string_view text);

// Throws Unreadable when arithmetic on the values of an element left the range of numbers.
void RequireFinite(Element element, std::initializer_list<double> values);

// UTF-8 as wide text.
std::wstring Wide(std::string_view text);

// A text of the document as messages quote it: on one line, and not long.
std::string Quote(std::string_view text);

}  // namespace qif

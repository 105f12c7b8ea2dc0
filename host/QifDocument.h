#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "QifReader.h"

namespace qif {

using Element = pugi::xml_node;

// A value that is not what it should be. It costs the annotation that it belongs to; in the
// structure of the model it costs the document.
class Unreadable : public std::runtime_error {
 public:
  Unreadable(Element at, const std::string& what) : std::runtime_error(what), at_(at) {}
  Element At() const { return at_; }

 private:
  Element at_;
};

// --- Elements. Names are local names: a namespace prefix does not count. ---

std::string_view NameOf(Element element);
// The first child of a name, or none. Throws Unreadable when the parent has more children than a
// record has fields, which keeps the search short in any document.
Element Child(Element parent, std::string_view name);
// Throws Unreadable when the element has more children than a record has fields.
void RequireRecord(Element element);
// The text that an element starts with, without the white space around it.
std::string_view TextOf(Element element);
// The text of the first child of a name.
std::string_view TextOf(Element parent, std::string_view name);
// As TextOf, for numbers and enumerations: a text of unreasonable length counts as empty, so that a
// value which many others refer to is read in no time.
std::string_view WordOf(Element element);
std::string_view WordOf(Element parent, std::string_view name);
// "true" or "1".
bool IsTrue(std::string_view text);
bool IsTrue(Element parent, std::string_view name);
// The element that follows in document order inside `root`, or none. With `descend` false, what
// lies inside `element` is passed over.
Element Next(Element element, Element root, bool descend = true);

// --- Numbers. Throw Unreadable unless the text is that many finite numbers. ---

double NumberOf(Element element);
std::vector<double> NumbersOf(Element element, std::size_t count);

// UTF-8 as wide text.
std::wstring Wide(std::string_view text);

// --- The document ---

class Document {
 public:
  struct Entry {
    std::uint32_t id;
    Element element;
    ENTITY* entity;  // what the reader made of it; null so far
  };

  // Parses and indexes. Throws QifError. `name` stands before every message.
  Document(std::string_view text, std::string name);

  Element Root() const { return root_; }
  // The list of a path below the root, for example {"Product", "TopologySet"}; may be none.
  Element At(std::initializer_list<const char*> path) const;

  // What a reference names. Null when there is no such id or it is another document's.
  Entry* Find(Element reference);
  // The entry of an element that has an id.
  Entry& EntryOf(Element element);
  // What a reference names. Throws QifError when there is none, or its element is not called `kind`
  // (any kind when empty).
  Entry& Require(Element reference, std::string_view kind = {});
  // A child that holds a reference; throws QifError when it is missing.
  Entry& RequireChild(Element parent, std::string_view name, std::string_view kind = {});

  const std::vector<Entry>& Entries() const { return entries_; }

  [[noreturn]] void Fail(Element at, const std::string& what) const;

 private:
  [[noreturn]] void FailAt(std::ptrdiff_t offset, const std::string& what) const;
  static bool MayHoldIds(std::string_view name);
  void Index();

  std::string_view text_;
  std::string name_;
  pugi::xml_document xml_;
  bool hasPlaces_ = true;
  Element root_;
  std::vector<Entry> entries_;  // by id
};

}  // namespace qif

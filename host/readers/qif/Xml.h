#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <stdexcept>
#include <string>
#include <string_view>

#include "readers/qif/Element.h"

struct _xmlDict;

namespace qif {

// Where something stands in a text: lines and columns from 1, columns in characters.
struct Place {
  std::size_t line;
  std::size_t column;
};
// The place of a byte of UTF-8; of the end for an offset that lies behind it.
Place PlaceAt(std::string_view text, std::size_t offset);

// A text that is not well-formed XML. The line is 0 when the place is not known.
class Malformed : public std::runtime_error {
 public:
  explicit Malformed(const std::string& what, Place at = {0, 0})
      : std::runtime_error(what), at_(at) {}
  Place At() const { return at_; }

 private:
  Place at_;
};

// The elements of a well-formed XML 1.0 document with namespaces:
//
//   const Xml xml("<a><b/></a>");
//   for (Element child : xml.Root().children()) Use(child);
//
// Everything is kept but comments, instructions, attributes with a prefix and white space that
// counts for nothing. Entities that the document declares are put in; nothing is ever loaded.
class Xml {
 public:
  // `text` is UTF-8, also when its declaration names another encoding, without byte-order mark.
  // Throws Malformed; so for more than 250 levels or namespaces in scope, 1000 attributes of one
  // element, 50,000 names, a document type declaration of more than 65,536 bytes, one with defaults
  // of attributes, and entities out of proportion.
  explicit Xml(std::string_view text);

  Element Root() const { return Element(root_); }
  // The root's; empty when it has none.
  const std::string& Namespace() const { return namespace_; }

 private:
  std::pmr::monotonic_buffer_resource memory_;            // nodes and texts
  std::unique_ptr<_xmlDict, void (*)(_xmlDict*)> names_;  // of elements and attributes
  Node* root_ = nullptr;
  std::string namespace_;
};

}  // namespace qif

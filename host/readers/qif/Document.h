#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "readers/qif/Element.h"
#include "readers/qif/QifReader.h"
#include "readers/qif/Xml.h"

namespace qif {

// A parsed document and the index of its ids.
class Document {
 public:
  struct Entry {
    std::uint32_t id;
    Element element;
    ENTITY* entity;  // what the reader made of it; null so far
  };

  // Parses and indexes the bytes of a file, which must outlive it. Throws ModelError. `name` stands
  // before every message.
  Document(std::string_view bytes, std::string name);

  Element Root() const { return root_; }
  // The list of a path below the root, for example {"Product", "TopologySet"}; may be none.
  Element At(std::initializer_list<const char*> path) const;

  // What a reference names. Null when there is no such id or it is another document's.
  Entry* Find(Element reference);
  // The entry of an element that has an id.
  Entry& EntryOf(Element element);
  // What a reference names. Throws ModelError when there is none, or its element is not called
  // `kind` (any kind when empty).
  Entry& Require(Element reference, std::string_view kind = {});
  // A child that holds a reference; throws ModelError when it is missing.
  Entry& RequireChild(Element parent, std::string_view name, std::string_view kind = {});

  const std::vector<Entry>& Entries() const { return entries_; }

  [[noreturn]] void Fail(Element at, const std::string& what) const;

 private:
  [[noreturn]] void FailAt(Place place, const std::string& what) const;
  Entry* At(std::uint32_t id);
  static bool MayHoldIds(std::string_view name);
  void Index();

  std::string name_;
  std::string storage_;
  std::string_view text_;  // in UTF-8
  std::optional<Xml> xml_;
  Element root_;
  std::vector<Entry> entries_;  // by id
};

}  // namespace qif

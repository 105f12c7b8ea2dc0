#pragma once

#include <limits>
#include <unordered_set>

#include "readers/qif/Element.h"

namespace qif {

// The fields of a record by name. It knows which of them were read, so that the rest can be listed
// as left out:
//
//   Fields datum(element);
//   Use(datum.Text("DatumLabel"));
//   reading.SkipRest(datum);
class Fields {
 public:
  // More than any record of fields has. What is longer holds lists, where a search could be long.
  static constexpr std::size_t kMost = 128;
  static constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

  // An empty element has no fields. Throws Unreadable when there are more than `most`.
  explicit Fields(Element record, std::size_t most = kMost);

  Element Record() const { return record_; }

  // The first field of a name, or none. It counts as read.
  Element operator[](std::string_view name);
  // What Element.h reads of such a field.
  std::string_view Text(std::string_view name) { return TextOf((*this)[name]); }
  std::string_view Word(std::string_view name) { return WordOf((*this)[name]); }
  // The fields of a name.
  std::vector<Element> All(std::string_view name);
  // The fields whose name has a certain part.
  std::vector<Element> AllWith(std::string_view part);
  // Counts fields as read that tie elements together or say nothing of PMI.
  void Pass(std::initializer_list<std::string_view> names);

  // The fields that were not read, without Doubled, those that are plainly off and applications'
  // own data.
  std::vector<Element> Rest() const;
  // The fields that were not read because one of their name was read before.
  std::vector<Element> Doubled() const;

 private:
  struct Field {
    Element element;
    bool isRead = false;
  };

  std::unordered_set<std::string_view> NamesRead() const;

  Element record_;
  std::vector<Field> fields_;
};

}  // namespace qif

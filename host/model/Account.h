#pragma once

#include <string_view>
#include <unordered_map>

#include "model/Model.h"

// A text of the document as the account and the report's short texts give it: `most` bytes, and
// dots for what is cut.
std::string Cut(std::string_view text, std::size_t most);

// What a model lacks of its document, in the order in which the reader met it. Entries that differ
// only in line are counted as one. Its size is bounded for any document: long texts are cut, and
// after `most` entries further ones are only counted, by severity.
class Account {
 public:
  explicit Account(std::size_t most) : most_(most) {}

  void Add(SkippedItem item);
  const std::vector<SkippedItem>& Items() const { return items_; }
  // Gives the entries away.
  std::vector<SkippedItem> Take() { return std::move(items_); }

 private:
  void AddCut(SkippedItem item);

  std::size_t most_;
  std::vector<SkippedItem> items_;
  std::unordered_multimap<std::size_t, std::size_t> places_;  // in items_, by hash
};

#pragma once

#include <memory_resource>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "readers/qif/Element.h"

namespace qif {

// Makes a tree of nodes from what a parser meets, in document order. Throws LimitExceeded when a
// document goes beyond what any QIF document needs, so that time and memory stay in proportion.
class TreeBuilder {
 public:
  class LimitExceeded : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
  };

  // Nodes and texts come from `memory`; a document of `documentBytes` without entities takes at
  // most sixteen times as much of it, for `<a/>` and nothing else.
  TreeBuilder(std::pmr::memory_resource& memory, std::size_t documentBytes);

  // An element with that many attributes, which follow; `name` must outlive the tree.
  // `namespaces` is how many it declares.
  void Start(const char* name, std::size_t line, std::size_t offset, int namespaces,
             std::size_t attributes);
  void AddAttribute(const char* name, std::string_view value);
  void Text(std::string_view text);
  void End();

  Node* Root() const { return root_; }

 private:
  struct Open {
    Node* node = nullptr;
    Node* lastChild = nullptr;
    std::string text;
    int namespaces = 0;  // in scope
  };

  const char* Keep(std::string_view text, bool withSpace, std::uint32_t& length);
  void Spend(std::size_t bytes);
  template <typename Thing>
  Thing* New(std::size_t count);

  std::pmr::memory_resource& memory_;
  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
  std::vector<Open> open_;  // by level; the first is around the root
  std::size_t level_ = 0;
  Node* root_ = nullptr;
  Node::Field* nextAttribute_ = nullptr;
};

}  // namespace qif

#include "readers/qif/TreeBuilder.h"

#include <algorithm>
#include <memory>

namespace qif {

namespace {

constexpr std::size_t kMostLevels = 250;
constexpr int kMostNamespaces = 250;  // in scope; the parser searches them one by one

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool IsBlank(std::string_view text) { return std::all_of(text.begin(), text.end(), IsSpace); }

// Elements whose text is kept as it stands; that of all others is numbers, words and names.
bool KeepsSpace(std::string_view element) { return element == "Text" || element == "Data"; }

}  // namespace

TreeBuilder::TreeBuilder(std::pmr::memory_resource& memory, std::size_t documentBytes)
    : memory_(memory), mostBytes_(20 * documentBytes + 1'000'000), open_(1) {}

void TreeBuilder::Start(const char* name, std::size_t line, std::size_t offset, int namespaces,
                        std::size_t attributes) {
  Open& parent = open_[level_];
  const int inScope = parent.namespaces + namespaces;
  if (level_ >= kMostLevels) {
    throw LimitExceeded("elements lie more than " + std::to_string(kMostLevels) + " levels deep");
  }
  if (inScope > kMostNamespaces) throw LimitExceeded("too many namespaces are declared");
  if (IsBlank(parent.text)) {
    parent.text.clear();
  } else if (!IsSpace(parent.text.back())) {
    parent.text += ' ';
  }
  Node& node = *New<Node>(1);
  node.name = name;
  node.parent = parent.node;
  node.line = static_cast<std::uint32_t>(line);
  node.offset = static_cast<std::uint32_t>(offset);
  nextAttribute_ = attributes == 0 ? nullptr : New<Node::Field>(attributes);
  node.fields = nextAttribute_;
  if (parent.lastChild != nullptr) {
    parent.lastChild->nextSibling = &node;
  } else if (parent.node != nullptr) {
    parent.node->firstChild = &node;
  } else {
    root_ = &node;
  }
  parent.lastChild = &node;
  if (++level_ == open_.size()) open_.emplace_back();
  Open& opened = open_[level_];
  opened.node = &node;
  opened.lastChild = nullptr;
  opened.text.clear();
  opened.namespaces = inScope;
}

void TreeBuilder::AddAttribute(const char* name, std::string_view value) {
  std::uint32_t length = 0;
  const char* const kept = Keep(value, std::string_view(name) == "label", length);
  *nextAttribute_++ = {name, kept};
  ++open_[level_].node->fieldCount;
}

void TreeBuilder::Text(std::string_view text) {
  Open& parent = open_[level_];
  if (parent.lastChild != nullptr && parent.text.empty() && IsBlank(text)) return;
  Spend(text.size());
  parent.text += text;
}

void TreeBuilder::End() {
  const Open& ended = open_[level_--];
  if (IsBlank(ended.text)) return;
  ended.node->text = Keep(ended.text, KeepsSpace(ended.node->name), ended.node->textLength);
}

// A text that ends in a null, with its white space or without what is too much of it.
const char* TreeBuilder::Keep(std::string_view text, bool withSpace, std::uint32_t& length) {
  char* const kept = New<char>(text.size() + 1);
  char* end = kept;
  if (withSpace) {
    end = std::copy(text.begin(), text.end(), kept);
  } else {
    for (const char c : text) {
      if (!IsSpace(c)) {
        *end++ = c;
      } else if (end != kept && end[-1] != ' ') {
        *end++ = ' ';
      }
    }
    if (end != kept && end[-1] == ' ') --end;
  }
  *end = '\0';
  length = static_cast<std::uint32_t>(end - kept);
  return kept;
}

void TreeBuilder::Spend(std::size_t bytes) {
  bytes_ += bytes;
  if (bytes_ > mostBytes_) {
    throw LimitExceeded("its entities make it many times larger than it is");
  }
}

template <typename Thing>
Thing* TreeBuilder::New(std::size_t count) {
  Spend(count * sizeof(Thing));
  auto* const made = static_cast<Thing*>(memory_.allocate(count * sizeof(Thing), alignof(Thing)));
  std::uninitialized_default_construct_n(made, count);
  return made;
}

}  // namespace qif

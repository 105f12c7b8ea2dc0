#include "readers/qif/Document.h"

#include <algorithm>

#include "readers/qif/Encoding.h"

namespace qif {

namespace {

constexpr const char* kNamespace = "http://qifstandards.org/xsd/qif3";

}  // namespace

Document::Document(std::string_view bytes, std::string name) : name_(std::move(name)) {
  try {
    text_ = ToUtf8(bytes, storage_);
    xml_.emplace(text_);
  } catch (const Malformed& problem) {
    FailAt(problem.At(), problem.what());
  }
  root_ = xml_->Root();
  if (NameOf(root_) != "QIFDocument") {
    Fail(root_, "the root element is " + Quote(NameOf(root_)) + ", not QIFDocument");
  }
  if (!xml_->Namespace().empty() && xml_->Namespace() != kNamespace) {
    Fail(root_, "the namespace is " + Quote(xml_->Namespace()) + ", not that of QIF 3");
  }
  const std::string_view version = root_.attribute("versionQIF").value();
  if (version != "3.0" && version.substr(0, 4) != "3.0.") {
    Fail(root_, "the version is " + Quote(version) + ", not 3.0");
  }
  Index();
}

// Whether ids may stand somewhere inside an element. Displays have none, and what users add follows
// rules of its own.
bool Document::MayHoldIds(std::string_view name) {
  return name != "Attributes" && name != "UserDataXML" && name != "PMIDisplaySet";
}

void Document::Index() {
  entries_.reserve(text_.size() / 256);
  bool sorted = true;
  const auto add = [&](Element element) {
    const Attribute attribute = element.attribute("id");
    if (!attribute) return;
    const std::optional<std::uint32_t> id = WholeNumber(attribute.value());
    if (!id.has_value()) Fail(element, Quote(attribute.value()) + " is not an id");
    sorted = sorted && (entries_.empty() || entries_.back().id < *id);
    entries_.push_back({*id, element, nullptr});
  };
  bool descend = true;
  for (Element element = root_; element; element = Next(element, root_, descend)) {
    const std::string_view name = NameOf(element);
    descend = MayHoldIds(name);
    if (!descend) continue;
    add(element);
    // Most of a document is here, all of it sets of elements with ids and none further in.
    if (name != "GeometrySet" && name != "TopologySet") continue;
    descend = false;
    for (const Element set : element.children()) {
      for (Element item = set.first_child(); item; item = item.next_sibling()) add(item);
    }
  }
  if (sorted) return;
  std::stable_sort(entries_.begin(), entries_.end(),
                   [](const Entry& a, const Entry& b) { return a.id < b.id; });
  const auto twice =
      std::adjacent_find(entries_.begin(), entries_.end(),
                         [](const Entry& a, const Entry& b) { return a.id == b.id; });
  if (twice != entries_.end()) {
    Fail((twice + 1)->element, "id " + std::to_string(twice->id) + " is used twice");
  }
}

Element Document::At(std::initializer_list<const char*> path) const {
  Element element = root_;
  for (const char* name : path) element = Child(element, name);
  return element;
}

Document::Entry* Document::Find(Element reference) {
  if (reference.attribute("xId")) return nullptr;
  const std::string_view text = WordOf(reference);
  const std::optional<std::uint32_t> id = WholeNumber(text);
  return id.has_value() ? At(*id) : nullptr;
}

Document::Entry* Document::At(std::uint32_t id) {
  const auto found =
      std::lower_bound(entries_.begin(), entries_.end(), id,
                       [](const Entry& entry, std::uint32_t wanted) { return entry.id < wanted; });
  return found == entries_.end() || found->id != id ? nullptr : &*found;
}

Document::Entry& Document::EntryOf(Element element) {
  const std::optional<std::uint32_t> id = WholeNumber(element.attribute("id").value());
  Entry* const entry = id.has_value() ? At(*id) : nullptr;
  if (entry == nullptr) Fail(element, std::string(NameOf(element)) + " has no id");
  return *entry;
}

Document::Entry& Document::Require(Element reference, std::string_view kind) {
  Entry* const entry = Find(reference);
  if (entry == nullptr) Fail(reference, "there is no id " + Quote(WordOf(reference)));
  if (!kind.empty() && NameOf(entry->element) != kind) {
    Fail(reference, "id " + std::to_string(entry->id) + " is a " +
                        std::string(NameOf(entry->element)) + ", not a " + std::string(kind));
  }
  return *entry;
}

Document::Entry& Document::RequireChild(Element parent, std::string_view name,
                                        std::string_view kind) {
  Element reference = Child(parent, name);
  if (!reference) {
    Fail(parent, std::string(NameOf(parent)) + " has no " + std::string(name));
  }
  if (Element inner = Child(reference, "Id")) reference = inner;
  return Require(reference, kind);
}

void Document::Fail(Element at, const std::string& what) const {
  FailAt(at ? PlaceAt(text_, at.node()->offset) : Place{0, 0}, what);
}

void Document::FailAt(Place place, const std::string& what) const {
  const std::string at =
      place.line == 0 ? "" : ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
  throw ModelError(name_ + at + ": " + what);
}

}  // namespace qif

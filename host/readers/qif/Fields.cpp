#include "readers/qif/Fields.h"

namespace qif {

namespace {

// The values that fields have by default, as far as documents state them all the same.
bool IsOff(std::string_view text) {
  return text == "false" || text == "0" || text == "NONE" || text == "UNDEFINED" ||
         text == "NOMINAL";
}

}  // namespace

Fields::Fields(Element record, std::size_t most) : record_(record) {
  for (const Element field : record.children()) {
    if (NameOf(field).empty()) continue;
    if (fields_.size() == most) {
      throw Unreadable(record, Quote(NameOf(record)) + " has too many fields");
    }
    fields_.push_back({field});
  }
}

Element Fields::operator[](std::string_view name) {
  for (Field& field : fields_) {
    if (NameOf(field.element) != name) continue;
    field.isRead = true;
    return field.element;
  }
  return Element();
}

std::vector<Element> Fields::All(std::string_view name) {
  std::vector<Element> found;
  for (Field& field : fields_) {
    if (NameOf(field.element) != name) continue;
    field.isRead = true;
    found.push_back(field.element);
  }
  return found;
}

std::vector<Element> Fields::AllWith(std::string_view part) {
  std::vector<Element> found;
  for (Field& field : fields_) {
    if (NameOf(field.element).find(part) == std::string_view::npos) continue;
    field.isRead = true;
    found.push_back(field.element);
  }
  return found;
}

void Fields::Pass(std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names) (*this)[name];
}

std::unordered_set<std::string_view> Fields::NamesRead() const {
  std::unordered_set<std::string_view> names;
  for (const Field& field : fields_) {
    if (field.isRead) names.insert(NameOf(field.element));
  }
  return names;
}

std::vector<Element> Fields::Rest() const {
  const std::unordered_set<std::string_view> read = NamesRead();
  std::vector<Element> rest;
  for (const Field& field : fields_) {
    const std::string_view name = NameOf(field.element);
    if (read.count(name) != 0 || name == "Attributes") continue;
    if (!IsOff(WordOf(field.element))) rest.push_back(field.element);
  }
  return rest;
}

std::vector<Element> Fields::Doubled() const {
  const std::unordered_set<std::string_view> read = NamesRead();
  std::vector<Element> doubled;
  for (const Field& field : fields_) {
    if (!field.isRead && read.count(NameOf(field.element)) != 0) doubled.push_back(field.element);
  }
  return doubled;
}

}  // namespace qif

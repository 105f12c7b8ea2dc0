#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// Reads the clear text encoding of an exchange structure (ISO 10303-21, editions 1 to 3).
namespace step {

using Id = std::uint32_t;  // an instance's number; 0 is none

// An invalid instance. The object that it describes is lost.
class Unreadable : public std::runtime_error {
 public:
  Unreadable(Id of, const std::string& what) : std::runtime_error(what), of_(of) {}
  Id Of() const { return of_; }

 private:
  Id of_;
};

// A parameter. Texts point into the document, items into the instance.
struct Value {
  enum Kind : std::uint8_t {
    kOmitted,      // $
    kDerived,      // *
    kNumber,       // an integer or a real; text as written
    kString,       // text as it stands between the apostrophes
    kEnumeration,  // text without the dots
    kBinary,       // text without the quotes
    kReference,    // text is the number
    kList,         // items
    kTyped,        // two items: the type's name, as a text, and its parameter
  };
  Kind kind = kOmitted;
  std::uint32_t size = 0;  // of the text, or how many items
  union {
    const char* text = nullptr;
    const Value* items;
  };

  bool IsList() const { return kind == kList; }
  // The items of a list; none for anything else.
  const Value* begin() const { return kind == kList ? items : nullptr; }
  const Value* end() const { return kind == kList ? items + size : nullptr; }
  // What is written, without the signs around it; empty for lists and typed parameters.
  std::string_view Text() const;
  // The name of a typed parameter's type; empty for other kinds.
  std::string_view TypeName() const;
  // The parameter behind the type's name; for other kinds this one.
  const Value& Untyped() const { return kind == kTyped ? items[1] : *this; }
  // The instance that is referred to; 0 for other kinds.
  Id Reference() const;
};

// A value as a finite number, of a thousand characters at most. Throws Unreadable, naming the
// instance, when it is not one.
double NumberOf(Id of, const Value& value);

// One record of an instance: an entity's name and its own parameters. Parameters count from 0. The
// getters throw Unreadable when there is no such parameter or it is of another kind.
struct Record {
  Id of = 0;  // the instance
  std::string_view name;
  const Value* values = nullptr;
  std::uint32_t count = 0;

  const Value& At(std::uint32_t index) const;
  // A finite number, also behind a type's name.
  double Number(std::uint32_t index) const;
  // A decoded string; empty when it is omitted.
  std::string Text(std::uint32_t index) const;
  // An instance's number; 0 when it is omitted.
  Id Reference(std::uint32_t index) const;
  const Value& List(std::uint32_t index) const;
  // An enumeration's text; empty when it is omitted.
  std::string_view Enumeration(std::uint32_t index) const;
};

// A simple instance has one record, which begins with the parameters of all supertypes; a complex
// one has a record for each entity.
struct Instance {
  Id id = 0;
  std::vector<Record> records;
  std::unique_ptr<Value[]> values;  // what the records point to

  // The record of an entity, or null.
  const Record* Find(std::string_view name) const;
  // The record that holds an entity's parameters: its own, or that of a simple instance, whose
  // first parameters are those of the supertype. Throws Unreadable when there is no such record.
  const Record& As(std::string_view name) const;
};

// A string of the encoding in UTF-8: '' is one apostrophe, line ends are left out, and the
// directives \S\, \P?\, \X\, \X2\, \X4\, \N\ and \F\ are resolved. Bytes that are not UTF-8 are
// read as latin-1. An incomplete directive is kept as it is.
std::string Decode(std::string_view text);

// The data sections of an exchange structure, indexed by instance, by entity and by who refers to
// whom. An instance's parameters are read when it is first asked for.
class Exchange {
 public:
  // Splits the text into instances. Throws ModelError, with file, line and column, when it is
  // not an exchange structure, is cut off, or two instances have the same number. REQUIRES: `text`
  // outlives it.
  Exchange(std::string_view text, std::string name);
  ~Exchange();

  // The schemas that the header names.
  const std::vector<std::string>& Schemas() const { return schemas_; }
  // Of the text, in bytes.
  std::size_t Size() const { return text_.size(); }
  std::size_t Count() const { return places_.size(); }

  // The instances with a record of that name, in the order of the text.
  const std::vector<Id>& Of(std::string_view entity) const;
  // The instances that refer to one, each once, in the order of the text.
  std::vector<Id> ReferrersOf(Id id) const;
  // The references to instances that do not exist, by their number, each with who refers.
  std::vector<std::pair<Id, Id>> Dangling() const;
  // The instance of that number, or null. Throws Unreadable, each time, when its text is
  // invalid. The pointer stays valid until instances are forgotten.
  const Instance* Find(Id id);
  // The text of an instance, behind the equals sign; empty when there is none of that number.
  std::string_view TextOf(Id id) const;
  // Gives back the storage of all instances that were read. They are read again when asked for.
  void Forget() { read_.clear(); }

  // The offset of an instance in the text; the end of the text for a number that does not exist.
  std::size_t OffsetOf(Id id) const;
  // The line of an instance, from 1; 0 for a number that does not exist.
  long LineOf(Id id) const;
  [[noreturn]] void Fail(std::size_t offset, const std::string& what) const;
  [[noreturn]] void FailAt(Id id, const std::string& what) const;

 private:
  struct Place {
    Id id;
    std::uint32_t size;  // of the text behind the equals sign, without the semicolon
    std::size_t begin;
  };
  friend class Splitter;

  const Place* PlaceOf(Id id) const;
  void SortPlaces();
  void SortReferences();

  std::string_view text_;
  std::string name_;
  std::vector<std::string> schemas_;
  std::vector<Place> places_;        // in the order of the text
  std::vector<std::uint32_t> byId_;  // indexes of places_ by number; empty when in order anyway
  std::unordered_map<std::string_view, std::vector<Id>> byEntity_;
  std::vector<std::pair<Id, std::uint32_t>> references_;  // to whom, from which place; sorted
  std::unordered_map<Id, Instance> read_;
  std::unordered_map<Id, Unreadable> broken_;
  mutable std::vector<std::size_t> lineEnds_;  // found when a line is first asked for
};

}  // namespace step

#pragma once

#include <initializer_list>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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
// The line that an element stands on, from 1; 0 when it is not known.
inline long LineOf(Element /*element*/) { return 0; }
// The element that follows in document order inside `root`, or none. With `descend` false, what
// lies inside `element` is passed over.
Element Next(Element element, Element root, bool descend = true);

// --- Numbers. Throw Unreadable unless the text is that many finite numbers. ---

double NumberOf(Element element);
std::vector<double> NumbersOf(Element element, std::size_t count);

// Throws Unreadable when arithmetic on the values of an element left the range of numbers.
void RequireFinite(Element element, std::initializer_list<double> values);

// UTF-8 as wide text.
std::wstring Wide(std::string_view text);

// A text of the document as messages quote it: on one line, and not long.
std::string Quote(std::string_view text);

}  // namespace qif

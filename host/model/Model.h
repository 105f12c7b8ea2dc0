#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "standin/Part.h"

// What every reader gives: a kernel model, with what the document says about it and what of it is
// missing.

// Something that the document holds and the model does not, or not wholly.
struct SkippedItem {
  std::string kind;    // the document's element name
  std::string id;      // of the element, or of what it belongs to; empty when there is none
  std::string reason;  // what is missing and why
};

// What the document calls an entity of the model.
struct SourceLabel {
  std::string kind;   // "face", "edge", "dimension", "note" ...
  std::string label;  // the document's label, or its id when it gives none
};

// A model, with what the document says about it and what of it is missing.
struct Model {
  std::unique_ptr<standin::Part> part;                  // owns every entity of the model
  std::vector<SkippedItem> skipped;                     // in the order in which the reader met them
  std::map<std::string, long> counts;                   // what the document holds, by kind
  std::unordered_map<const void*, SourceLabel> labels;  // by ENTITY*
  std::string linearUnit;  // name of the primary linear unit; empty when the document has none
};

// A document that no model can be made of. The message is one line, "file:line:column: what", or
// "file: what" where there is no place.
class ModelError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

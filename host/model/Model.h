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

// How much is missing because an element was skipped.
enum class Severity {
  kLost,     // an annotation, a value or an association that the document states
  kReduced,  // a part of an annotation that is there otherwise
  kIgnored,  // nothing of PMI
};

// Something that the document holds and the model does not, or not wholly. Long texts are cut.
struct SkippedItem {
  Severity severity;       // how much is missing because of it
  std::string kind;        // the document's element name
  std::string id;          // of the element, or of the element around it; empty when there is none
  std::string annotation;  // id of the annotation or capture that it belongs to; empty for none
  std::string reason;      // what is missing and why
  long line = 0;           // of the first in the document, from 1; 0 when it is not known
  long count = 1;          // how many entries this one stands for; they differ in nothing but line
};

// A value of an annotation as the document writes it, where its unit is not the model's.
struct WrittenValue {
  // Where the report has the value: "value", "upper", "upperText" (of a limit), "magnitude" of a
  // tolerance's first row, "rows[1].magnitude" of its second, "modifiers[0].magnitude", "point1"
  // ...
  std::string field;
  std::string text;  // as written
  std::string unit;  // the unit's name in the document
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
  std::unordered_map<const void*, std::vector<WrittenValue>> written;  // by ENTITY*
  std::string format;          // of the document, with its version: "QIF 3.0"
  std::string linearUnit;      // the model's unit of length; empty when the document has none
  std::string pmiLinearUnit;   // the one in which the document writes PMI, where it is another
  std::string pmiAngularUnit;  // the one in which it writes angles, where it is not the degree
  std::string partFile;        // that the entities are in, where the document names another
  std::string partFormat;      // of that file; both are empty where there is none
};

// A document that no model can be made of. The message is one line, "file:line:column: what", or
// "file: what" where there is no place.
class ModelError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "standin/Part.h"

// Reads a QIF 3.0 document (ISO 23952) into a kernel model:
//
//   QifModel model = ReadQif("bracket.qif");
//   KOVACreateOrvoPMIExporter(&model.part->GetDocument(), &exporter);
//   for (const SkippedItem& item : model.skipped) Print(item.kind, item.id, item.reason);
//
// Lengths come in the document's primary linear unit and angles in degrees, whatever unit a value
// is stated in.

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
struct QifModel {
  std::unique_ptr<standin::Part> part;                  // owns every entity of the model
  std::vector<SkippedItem> skipped;                     // in the order in which the reader met them
  std::map<std::string, long> counts;                   // what the document holds, by kind
  std::unordered_map<const void*, SourceLabel> labels;  // by ENTITY*
  std::string linearUnit;  // name of the primary linear unit; empty when the document has none
};

// A document that no model can be made of. The message is one line, "file:line:column: what", or
// "file: what" where there is no place.
class QifError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws QifError when the file cannot be read, is not well-formed, is not QIF 3.0, uses an id
// twice, or lacks what its structure refers to. What only one annotation loses is skipped.
QifModel ReadQif(const std::string& path);
// As ReadQif, from the document's text; messages call it `name`.
QifModel ReadQifText(std::string_view text, const std::string& name);

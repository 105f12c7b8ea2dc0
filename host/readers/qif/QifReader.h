#pragma once

#include <string>
#include <string_view>

#include "model/Drawing.h"
#include "model/Model.h"

// Reads a QIF 3.0 document (ISO 23952) into a kernel model:
//
//   Model model = ReadQif("bracket.qif");
//   KOVACreateOrvoPMIExporter(&model.part->GetDocument(), &exporter);
//   for (const SkippedItem& item : model.skipped) Print(item.kind, item.id, item.reason);
//
// Lengths come in the document's primary linear unit and angles in degrees, converted from the
// unit that a value is stated in.

// Throws ModelError when the file cannot be read, is not well-formed, is not QIF 3.0, uses an id
// twice, or lacks what its structure refers to. An invalid value of one annotation is skipped and
// listed. The drawing is filled unless it is null; what it lacks is listed, too.
Model ReadQif(const std::string& path, Drawing* drawing = nullptr);
// As ReadQif, from the document's text; messages call it `name`.
Model ReadQifText(std::string_view text, const std::string& name, Drawing* drawing = nullptr);

#pragma once

#include "report/Report.h"
#include "writers/text/Page.h"

namespace text {

// An annotation in a line or two: name, drawing, texts, id, entities. `sayKind` puts its kind
// first. `verbose` cuts nothing and adds lines with everything else that the report holds of it.
void PrintAnnotation(Page& page, int depth, const AnnotationReport& annotation, bool sayKind,
                     bool verbose);

// The label of a datum or datum target.
Text LabelOf(const AnnotationReport& annotation);

// Such as `face "hole 1"`, with the id when `verbose` or when there is no label.
std::string EntityName(const EntityReport& entity, bool verbose);

}  // namespace text

#pragma once

#include "report/Report.h"
#include "writers/html/Html.h"
#include "writers/html/Names.h"

// The parts of a page.

namespace html {

// What the model is and holds, and how much of it was left out.
void PrintHeader(Html& page, const ModelReport& report);

// The captures: an element each, with the attribute data-capture.
void PrintCaptures(Html& page, const ModelReport& report, const Names& names);

// All annotations in tables by kind: a row each, with the attribute data-annotation, in it what it
// applies to with the attribute data-entity.
void PrintAnnotations(Html& page, const ModelReport& report, const Names& names);

// What was lost, reduced and ignored.
void PrintAccount(Html& page, const SourceReport& source);

}  // namespace html

#pragma once

#include "report/Report.h"
#include "writers/html/Findings.h"
#include "writers/html/Html.h"
#include "writers/html/Names.h"

// The parts of a page.

namespace html {

// The name of the model's file, without folders.
std::string FileName(const SourceReport& source);

// What the model is and holds, how much of it was left out, and how much the rules found.
void PrintHeader(Html& page, const ModelReport& report);

// The captures: an element each, with the attribute data-capture.
void PrintCaptures(Html& page, const ModelReport& report, const Names& names);

// All annotations in tables by kind: a row each, with the attribute data-annotation, in it what it
// applies to with the attribute data-entity, and what the rules found.
void PrintAnnotations(Html& page, const ModelReport& report, const Names& names);

// How many errors, warnings and notes the rules found, for the header.
void PrintFindingCounts(Html& page, const ChecksReport& checks);

// What the rules found, rule by rule, errors first, with links to the annotations' rows and the
// saved views' pictures. Nothing where no rules were applied.
void PrintFindings(Html& page, const ModelReport& report, const Names& names);

// What was lost, reduced and ignored.
void PrintAccount(Html& page, const SourceReport& source);

}  // namespace html

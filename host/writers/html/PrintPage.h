#pragma once

#include <functional>
#include <string>

#include "model/Drawing.h"
#include "report/Report.h"
#include "writers/html/Html.h"

namespace html {

// A page for a browser, in UTF-8: the part in three dimensions with its annotations, tables of all
// of them, a picture of each capture and the account of what was left out. It holds all that it
// needs and, by its content security policy, asks for nothing from elsewhere. Texts of the document
// are text on it, whatever they hold.
//
// `drawing` is of the report's model; without edges and faces the page has the annotations alone.
// `printReport` hands the report on as JSON (docs/report.schema.json), which the page's scripts
// read. The page comes in pieces.
void PrintPage(const ModelReport& report, const Drawing& drawing,
               const std::function<void(const Sink&)>& printReport, const Sink& sink);

}  // namespace html

#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

namespace qif_writer {

// A report as a QIF 3.0 document.
struct QifDocument {
  std::string text;  // UTF-8; the same for the same report and program
  // What the report has and QIF cannot say, with the severities of what readers skip; the comment
  // at the document's end lists it, too. The kind and id are the annotation's or capture's.
  std::vector<SkippedReport> omitted;
};

// Entities are named by their ids and labels as those of the part's own file, `report.source.file`:
// the document has no geometry. Ids that are numbers, at most with # before them, are kept.
// `program` is named in the header. Throws std::bad_alloc.
QifDocument PrintQif(const ModelReport& report, const std::string& program);

// An omission as it is listed: "lost: dimension 12: why".
std::string LineFor(const SkippedReport& omission);

}  // namespace qif_writer

#pragma once

#include <functional>
#include <vector>

#include "framework_pmi/KOVAPMIExporter.h"
#include "report/Report.h"

// What the document says of native objects, beside what the plug-in answers of them. Both are asked
// during the walk alone.
struct DocumentNames {
  // Kind and label of an entity, without its id; of any object.
  std::function<EntityReport(const void* nativeObject)> entity;
  // An annotation's values as they are written; empty for any other object.
  std::function<std::vector<WrittenReport>(const void* nativeObject)> written;
};

// Asks an exporter everything it answers: set, views, annotations, callouts, captures. Fills all of
// the report but its source. Throws what the exporter throws.
ModelReport WalkModel(KOVAPMIExporter& exporter, const DocumentNames& names);

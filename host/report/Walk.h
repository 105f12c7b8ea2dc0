#pragma once

#include <functional>
#include <vector>

#include "framework_pmi/KOVAPMIExporter.h"
#include "report/Report.h"

// What the document says of native objects, in addition to the plug-in's answers. Called only
// during the walk.
struct DocumentNames {
  // Kind and label of an entity, without its id; of any object.
  std::function<EntityReport(const void* nativeObject)> entity;
  // An annotation's values as they are written; empty for any other object.
  std::function<std::vector<WrittenReport>(const void* nativeObject)> written;
  // The native objects of a capture's members, in the plug-in's order; empty for any other object.
  // The plug-in identifies only the members that are annotations.
  std::function<std::vector<void*>(const void* capture)> members;
};

// Asks an exporter everything it answers: set, views, annotations, callouts, captures. Fills all of
// the report but its source. Throws what the exporter throws.
ModelReport WalkModel(KOVAPMIExporter& exporter, const DocumentNames& names);

#pragma once

#include <functional>

#include "framework_pmi/KOVAPMIExporter.h"
#include "report/Report.h"

// The document's name for a native object, or null when it has none.
using EntityNamer = std::function<const EntityReport*(const void* nativeObject)>;

// Asks an exporter everything it answers: set, views, annotations, callouts, captures. Fills all of
// the report but its source.
ModelReport WalkModel(KOVAPMIExporter& exporter, const EntityNamer& namer);

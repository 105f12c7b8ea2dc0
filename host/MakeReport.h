#pragma once

#include <string>

#include "framework_pmi/KOVAPMIExporter.h"
#include "model/Model.h"
#include "report/Report.h"

// The whole report on a model: the exporter's answers, with labels, values as written and the
// account from the reader. `file` is the document's name in the report. REQUIRES: `exporter` was
// made for `model.part` and has not been asked for anything yet. Throws what the exporter throws.
ModelReport MakeReport(const Model& model, KOVAPMIExporter& exporter, const std::string& file);

#pragma once

#include <string>

#include "framework_pmi/KOVAPMIExporter.h"
#include "model/Model.h"
#include "report/Report.h"

// The whole report on a model: what an exporter of its document answers, put side by side with what
// the document says. `file` is what the report calls the document. REQUIRES: `exporter` was made
// for `model.part` and has not been asked for anything yet. Throws what the exporter throws.
ModelReport MakeReport(const Model& model, KOVAPMIExporter& exporter, const std::string& file);

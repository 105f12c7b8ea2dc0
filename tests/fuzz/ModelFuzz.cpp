// Any bytes as a document of the format that READER and READ name: the model reader, the plug-in's
// scan, the walk and both printers.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "KOVAOrvoPMIExporterFactory.h"
#include "MakeReport.h"
#include READER
#include "standin/Control.h"
#include "writers/json/PrintJson.h"
#include "writers/text/PrintText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const long alive = standin::Count().liveEntities;
  try {
    const Model model = READ({reinterpret_cast<const char*>(data), size}, "fuzz");
    KOVAPMIExporter* made = nullptr;
    if (KOVACreateOrvoPMIExporter(&model.part->GetDocument(), &made) != 0) std::abort();
    const std::unique_ptr<KOVAPMIExporter> exporter(made);
    const ModelReport report = MakeReport(model, *exporter, "fuzz");
    if (text::PrintText(report).empty() || PrintJson(report, "fuzz", -1).empty()) std::abort();
  } catch (const ModelError&) {
    // A document that no model can be made of.
  }
  const standin::Counters after = standin::Count();
  if (after.liveEntities != alive || after.openBoards != 0 || after.errorDepth != 0) std::abort();
  return 0;
}

// Any bytes as a document of the format that READER and READ name: the model reader, the plug-in's
// scan, the walk, the rules and all printers.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "KOVAOrvoPMIExporterFactory.h"
#include "MakeReport.h"
#include READER
#include "checks/Check.h"
#include "standin/Control.h"
#include "writers/html/PrintPage.h"
#include "writers/json/PrintJson.h"
#include "writers/text/PrintText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const long alive = standin::Count().liveEntities;
  try {
    // Every other document with its drawing.
    Drawing drawing;
    const Model model =
        READ({reinterpret_cast<const char*>(data), size}, "fuzz", size % 2 ? &drawing : nullptr);
    for (const DrawnFace& face : drawing.faces) {
      for (const auto& triangle : face.triangles) {
        for (const std::uint32_t point : triangle) {
          if (point >= face.points.size()) std::abort();
        }
      }
    }
    KOVAPMIExporter* made = nullptr;
    if (KOVACreateOrvoPMIExporter(&model.part->GetDocument(), &made) != 0) std::abort();
    const std::unique_ptr<KOVAPMIExporter> exporter(made);
    ModelReport report = MakeReport(model, *exporter, "fuzz");
    report.checks = checks::Check(report);
    // Every grouping, short and verbose.
    const text::Style style{static_cast<text::By>(size % 4), size / 4 % 2 != 0};
    if (text::PrintText(report, style).empty()) std::abort();
    if (json::PrintJson(report, "fuzz", -1).empty()) std::abort();
    html::PrintPage(
        report, drawing, [](const html::Sink&) {}, [](const std::string&) {});
  } catch (const ModelError&) {
    // A document that no model can be made of.
  }
  const standin::Counters after = standin::Count();
  if (after.liveEntities != alive || after.openBoards != 0 || after.errorDepth != 0) std::abort();
  return 0;
}

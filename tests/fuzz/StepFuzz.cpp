// Any bytes as a STEP file: the model reader, the plug-in's scan, the walk and both printers.
#include <sanitizer/allocator_interface.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "KOVAOrvoPMIExporterFactory.h"
#include "readers/step/StepReader.h"
#include "report/Walk.h"
#include "standin/Control.h"
#include "writers/json/PrintJson.h"
#include "writers/text/PrintText.h"

namespace {

// A model holds no more than sixty times its file's size, and 100 MB.
constexpr std::size_t kTimes = 60;
constexpr std::size_t kMore = 100'000'000;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const long alive = standin::Count().liveEntities;
  const std::size_t before = __sanitizer_get_current_allocated_bytes();
  try {
    const Model model = ReadStepText({reinterpret_cast<const char*>(data), size}, "fuzz");
    if (__sanitizer_get_current_allocated_bytes() > before + kTimes * size + kMore) std::abort();
    KOVAPMIExporter* made = nullptr;
    if (KOVACreateOrvoPMIExporter(&model.part->GetDocument(), &made) != 0) std::abort();
    const std::unique_ptr<KOVAPMIExporter> exporter(made);
    exporter->PreProcess();
    const ModelReport report =
        WalkModel(*exporter, [](const void*) -> const EntityReport* { return nullptr; });
    if (PrintText(report).empty() || PrintJson(report, -1).empty()) std::abort();
  } catch (const ModelError&) {
    // A file that no model can be made of.
  }
  const standin::Counters after = standin::Count();
  if (after.liveEntities != alive || after.openBoards != 0 || after.errorDepth != 0) std::abort();
  return 0;
}

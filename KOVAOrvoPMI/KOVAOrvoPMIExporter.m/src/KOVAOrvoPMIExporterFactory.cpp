#include "KOVAOrvoPMIExporterFactory.h"

#include <new>

#include "KOVAOrvoPMIExporter.h"
#include "KernelMemoryManager.h"
#include "ResultCodes.h"

int KOVACreateOrvoPMIExporter(KOVADocument* document, KOVAPMIExporter** exporter) {
  if (document == nullptr) {
    *exporter = nullptr;
    return static_cast<int>(kFailure);
  }
  auto* made = new (std::nothrow) KOVAOrvoPMIExporter(*document);
  *exporter = made;
  return static_cast<int>(made != nullptr ? kSuccess : kFailure);
}

int MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter() { return 1; }

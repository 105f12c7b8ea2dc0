// Lifecycle and the annotation set.
#include "KOVAOrvoPMIExporter.h"

#include "QueryShape.h"
#include "orvo_kernel/api.h"

namespace {

constexpr int kExpectedSize = 12;

}  // namespace

KOVAOrvoPMIExporter::KOVAOrvoPMIExporter(KOVADocument& document)
    : KOVADefaultPMIExporter(document),
      viewAnnotationMap(kExpectedSize, true),
      calloutAnnotationMap(kExpectedSize, true) {
  // Nobody else deletes what a scan that throws has made.
  struct ReleaseOnThrow {
    KOVAOrvoPMIExporter* exporter;
    ~ReleaseOnThrow() {
      if (exporter != nullptr) exporter->Release();
    }
  } guard{this};
  Initialize();
  attributeExporter = new KOVAOrvoPMIAttributeExporter;
  guard.exporter = nullptr;
}

KOVAOrvoPMIExporter::~KOVAOrvoPMIExporter() { Release(); }

void KOVAOrvoPMIExporter::Release() {
  initialized = false;
  delete attributeExporter;
  attributeExporter = nullptr;
  captures.clear();
  calloutAnnotationMap.Clear();
  annotationOwnerMap.clear();
  viewAnnotationMap.Clear();
  annotationViews.clear();
  if (viewPlanes.count() > 0) api_del_entity_list(viewPlanes);
  datumTargetDatumMap.clear();
  datumAnnotationMap.clear();
  datumTargetAnnotationMap.clear();
  delete annotationSet;
  annotationSet = nullptr;
}

KOVAResult KOVAOrvoPMIExporter::DoPreProcess() {
  if (!initialized) Initialize();
  if (IsPreProcessed()) return Success;
  SetPreProcessed();
  int count = 0;
  GetAnnotationSetCount(count);
  return count == 0 ? NoAnnotationSet : Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationSetCount(int& count) {
  if (!initialized) return NotInitialised;
  count = annotationSet != nullptr ? 1 : 0;
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationSet(int /*index*/, KOVAIdentifier& set) {
  if (!initialized) return NotInitialised;
  if (annotationSet != nullptr) set = *annotationSet;
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAttributeExporter(KOVAAttributeExporter*& exporter) {
  if (!initialized) return NotInitialised;
  exporter = attributeExporter;
  return Success;
}

// Lifecycle and the annotation set.
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
  viewAnnotationMap.Clear(annotationViews);
  annotationViews.clear();
  DeleteViewPlanes();
  datumTargetDatumMap.clear();
  datumAnnotationMap.clear();
  datumTargetAnnotationMap.clear();
  delete annotationSet;
  annotationSet = nullptr;
}

// One call deletes all planes. When the list runs out of memory, those listed so far go first; when
// twice in a row not one can be listed, the rest stays in the model, since an exception that leaves
// a destructor would end the process.
void KOVAOrvoPMIExporter::DeleteViewPlanes() {
  auto next = viewPlanes_.begin();
  for (int failures = 0; next != viewPlanes_.end() && failures < 2;) {
    ENTITY_LIST planes;
    try {
      for (; next != viewPlanes_.end(); ++next) {
        if (*next != nullptr) planes.add(*next);
      }
    } catch (...) {
    }
    failures = planes.iteration_count() == 0 ? failures + 1 : 0;
    if (failures == 0) api_del_entity_list(planes);
  }
  viewPlanes_.clear();
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

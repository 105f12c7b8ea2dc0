// From the set to views, from views to annotations, from dimensions to callouts.
#include "QueryShape.h"

namespace {

// The entry of a list, or null outside it.
const KOVAIdentifier* EntryOf(const IdentifierHashMap::List* list, int index) {
  if (list == nullptr || index < 0 || static_cast<std::size_t>(index) >= list->size()) {
    return nullptr;
  }
  return &(*list)[static_cast<std::size_t>(index)];
}

KOVAResult HandOut(const KOVAIdentifier* entry, KOVAIdentifier& output) {
  if (entry == nullptr) return Failure;
  output = *entry;
  return Success;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetAnnotationViewCount(const KOVAIdentifier& /*set*/, int& count) {
  if (!initialized) return NotInitialised;
  count = static_cast<int>(annotationViews.size());
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationView(const KOVAIdentifier& /*set*/, int index,
                                                  KOVAIdentifier& view) {
  if (!initialized) return NotInitialised;
  return HandOut(EntryOf(&annotationViews, index), view);
}

KOVAResult KOVAOrvoPMIExporter::GetViewAnnotationCount(const KOVAIdentifier& view, int& count) {
  if (!initialized) return NotInitialised;
  count = 0;
  const auto* annotations = viewAnnotationMap.Find(view);
  if (annotations == nullptr) return Failure;
  count = static_cast<int>(annotations->size());
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetViewAnnotation(const KOVAIdentifier& view, int index,
                                                  KOVAIdentifier& annotation) {
  if (!initialized) return NotInitialised;
  return HandOut(EntryOf(viewAnnotationMap.Find(view), index), annotation);
}

KOVAResult KOVAOrvoPMIExporter::GetCalloutAnnotationCount(KOVAIdentifier annotation, int& count) {
  if (!initialized) return NotInitialised;
  const auto* callouts = calloutAnnotationMap.Find(annotation);
  count = callouts == nullptr ? 0 : static_cast<int>(callouts->size());
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetCalloutAnnotationAt(const KOVAIdentifier& annotation, int index,
                                                       KOVAIdentifier& callout) {
  if (!initialized) return NotInitialised;
  return HandOut(EntryOf(calloutAnnotationMap.Find(annotation), index), callout);
}

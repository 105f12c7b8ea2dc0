// Leaders and their points.
#include "Coordinates.h"
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"

KOVAResult KOVAOrvoPMIExporter::GetAnnotationLeaderCount(const KOVAIdentifier& annotation,
                                                         int& count) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    const KOVAResult result = GetDisplayInformation(&entity, display);
    if (result.IsSuccess()) count = display->get_leaders().count();
    return result;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationLeader(const KOVAIdentifier& annotation, int index,
                                                    KOVAIdentifier& leader) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    const KOVAResult result = GetDisplayInformation(&entity, display);
    if (!result.IsSuccess()) return result;
    VOID_LIST leaders = display->get_leaders();
    if (index < 0 || index >= leaders.count()) return Failure;
    if (void* found = leaders[index]) BecomeLeader(found, leader);
    return result;
  });
}

// The two point queries work from the leader only, whatever the exporter's state.
KOVAResult KOVAOrvoPMIExporter::GetLeaderPointCount(const KOVAIdentifier& leader, int& count) {
  if (!leader.IsValid()) return Failure;
  count = 2;
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetLeader3DPoint(const KOVAIdentifier& leader, int index,
                                                 double* point) {
  if (!leader.IsValid() || leader.GetNativeObject() == nullptr || !IsLeader(leader)) {
    return Failure;
  }
  auto* found = static_cast<KOVAPMI_LEADER_GEN*>(leader.GetNativeObject());
  CopyCoordinates(index == 0 ? found->get_tail_pt() : found->get_head_pt(), point);
  return Success;
}

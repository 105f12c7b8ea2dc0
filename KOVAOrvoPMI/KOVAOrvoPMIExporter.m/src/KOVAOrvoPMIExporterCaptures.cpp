// Captures: members, camera, hidden text, clipping plane.
#include "Coordinates.h"
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

KOVAResult KOVAOrvoPMIExporter::InitializeCapture(ENTITY*& capture) {
  captures.push_back(BareIdentifier(capture));
  return Failure;  // captures only do not make a scan a success
}

KOVAResult KOVAOrvoPMIExporter::GetCaptureCount(const KOVAIdentifier& set, unsigned int& count) {
  if (!initialized) return NotInitialised;
  if (annotationSet != nullptr && set == *annotationSet) {
    count = static_cast<unsigned int>(captures.size());
  }
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetCapture(const KOVAIdentifier& set, unsigned int& index,
                                           KOVAIdentifier& capture) {
  if (!initialized) return NotInitialised;
  if (annotationSet == nullptr || !(set == *annotationSet) || index >= captures.size()) {
    return Failure;
  }
  capture = captures[index];
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetCaptureEntityCount(const KOVAIdentifier& capture,
                                                      unsigned int& count) {
  return AnswerFrom<KOVAPMI_CAPTURE>(capture, [&](KOVAPMI_CAPTURE& found) {
    count = static_cast<unsigned int>(found.GetMembers().iteration_count());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetCaptureEntity(const KOVAIdentifier& capture, unsigned int& index,
                                                 KOVAIdentifier& entity) {
  return AnswerFrom<KOVAPMI_CAPTURE>(capture, [&](KOVAPMI_CAPTURE& found) {
    auto&& members = found.GetMembers();
    members.init();
    ENTITY* member = members.next();
    for (unsigned int step = 0; step < index && member != nullptr; ++step) member = members.next();
    if (member == nullptr) return Failure;
    if (annotationOwnerMap.count(member) != 0) entity.SetNativeObject(member);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetCaptureCameraData(const KOVAIdentifier& capture,
                                                     KOVAString& name, KOVAPMICameraType& type,
                                                     double* origin, double* target,
                                                     double* viewDirection,
                                                     double* viewDirectionNormal, double& viewAngle,
                                                     double& zoom) {
  return AnswerFrom<KOVAPMI_CAPTURE>(capture, [&](KOVAPMI_CAPTURE& found) {
    KOVAPMI_CAMERA* camera = found.GetCamera();
    if (camera == nullptr) return Failure;
    const wchar_t* cameraName = nullptr;
    camera->GetName(cameraName);
    KOVAString nameCopy(cameraName);
    const camera_type cameraType = camera->GetType();
    camera->GetViewAngle(viewAngle);
    camera->GetZoom(zoom);
    QENposition cameraOrigin;
    QENposition cameraTarget;
    QENvector direction;
    QENvector normal;
    camera->GetOrigin(cameraOrigin);
    camera->GetTargetPosition(cameraTarget);
    camera->GetViewDirection(direction);
    camera->GetViewDirectionNormal(normal);
    name = std::move(nameCopy);
    type = KOVAOrvoPMIEnumUtils::ToEnum(cameraType);
    CopyCoordinates(cameraOrigin, origin);
    CopyCoordinates(cameraTarget, target);
    CopyCoordinates(direction, viewDirection);
    CopyCoordinates(normal, viewDirectionNormal);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetCaptureHiddenText(const KOVAIdentifier& capture,
                                                     KOVAString& text) {
  return AnswerFrom<KOVAPMI_CAPTURE>(capture, [&](KOVAPMI_CAPTURE& found) {
    const wchar_t* hidden = found.GetHiddenText();
    if (hidden == nullptr) return Failure;
    text = KOVAString(hidden);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::HasClippingPlane(const KOVAIdentifier& capture, bool& has) {
  return AnswerFrom<KOVAPMI_CAPTURE>(capture, [&](KOVAPMI_CAPTURE& found) {
    if (found.GetClippingPlane() == nullptr) return Failure;
    has = true;
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetActiveView(const KOVAIdentifier& capture, float* plane) {
  return AnswerFrom<KOVAPMI_CAPTURE>(capture, [&](KOVAPMI_CAPTURE& found) {
    KOVAPMI_CLIPPINGPLANE* clipping = found.GetClippingPlane();
    if (clipping == nullptr) return Failure;
    QENposition point;
    QENvector normal;
    clipping->GetClippingPlaneData(point, normal);
    CopyCoordinates(point, plane);
    CopyCoordinates(normal, plane + 3);
    return Success;
  });
}

// View planes, the projection of model points into them, and where annotations stand in them.
#include <cmath>

#include "NamedAttributes.h"
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"

namespace {

// A view plane's frame, as the plane stores it.
struct Frame {
  QENposition origin;
  QENvector normal;
  QENvector xAxis;
  QENvector yAxis;
};

template <typename Triple>
void Narrow(const Triple& from, float* to) {
  to[0] = static_cast<float>(from.x());
  to[1] = static_cast<float>(from.y());
  to[2] = static_cast<float>(from.z());
}

// Whether a view's list holds the annotation; the operands of the comparison stand in this order.
bool Holds(const IdentifierHashMap::List& annotations, const KOVAIdentifier& annotation) {
  // The same identifiers have the same native object, which is quickly told and rarely true.
  const void* const object = annotation.GetNativeObject();
  const KOVAIdentifier* const end = annotations.data() + annotations.size();
  for (const KOVAIdentifier* candidate = annotations.data(); candidate != end; ++candidate) {
    const bool rare = candidate->GetNativeObject() == object;
    if (__builtin_expect(rare, 0) && *candidate == annotation) return true;
  }
  return false;
}

// A walk by definition: the plane of the first view, in the map's own order, that holds the
// annotation and has one; or null.
[[gnu::noinline]] const PLANE* PlaneOfViewThatHolds(const IdentifierHashMap& views,
                                                    const KOVAIdentifier& annotation) {
  const PLANE* viewPlane = nullptr;
  views.Walk([&](const KOVAIdentifier& view, const IdentifierHashMap::List& annotations) {
    if (Holds(annotations, annotation)) viewPlane = static_cast<const PLANE*>(EntityOf(view));
    return viewPlane == nullptr;
  });
  return viewPlane;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetPlaneParameters(const PLANE& viewPlane, QENposition& origin,
                                                   QENvector& normal, QENvector& xAxis,
                                                   QENvector& yAxis) {
  const plane& definition = viewPlane.equation();
  origin = definition.root_point;
  normal = definition.normal;
  xAxis = definition.u_direction;
  yAxis = cross(definition.normal, definition.u_direction);
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotPlaneParameters(KOVAIdentifier annotation,
                                                        QENposition& origin, QENvector& normal,
                                                        QENvector& xAxis, QENvector& yAxis) {
  const PLANE* viewPlane = PlaneOfViewThatHolds(viewAnnotationMap, annotation);
  if (viewPlane == nullptr) return Failure;
  return GetPlaneParameters(*viewPlane, origin, normal, xAxis, yAxis);
}

// The least-squares solution of d = u X + v Y, in this order of operations.
KOVAResult KOVAOrvoPMIExporter::InvertPointOnPlane(const QENposition& origin,
                                                   const QENvector& xAxis, const QENvector& yAxis,
                                                   const QENposition& point, double* out) {
  const QENvector d = point - origin;
  const double a = dot(xAxis, d);
  const double b = dot(yAxis, d);
  const double xx = dot(xAxis, xAxis);
  const double yy = dot(yAxis, yAxis);
  const double xy = dot(xAxis, yAxis);
  const double det = yy * xx - xy * xy;
  const double u = (yy * a - xy * b) / det;
  const double v = (xx * b - xy * a) / det;
  out[0] = u;
  out[1] = v;
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetViewCoordinateSystem(const KOVAIdentifier& view, float* frame) {
  if (!initialized) return NotInitialised;
  // A plane is taken as one only when it is a view of this exporter.
  if (view.GetNativeObject() == nullptr || viewAnnotationMap.Find(view) == nullptr) return Failure;
  Frame of;
  GetPlaneParameters(*static_cast<const PLANE*>(EntityOf(view)), of.origin, of.normal, of.xAxis,
                     of.yAxis);
  Narrow(of.origin, frame);
  Narrow(of.xAxis, frame + 3);
  Narrow(of.yAxis, frame + 6);
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationPositionInView(const KOVAIdentifier& annotation,
                                                            float* position,
                                                            KOVAPMIOrientation& /*orientation*/,
                                                            float& /*angle*/) {
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    KOVAResult result = GetDisplayInformation(&entity, display);
    if (!result.IsSuccess()) return result;
    KOVAIdentifier placement = annotation;
    if (IsKind<KOVAPMI_DATUMTGT>(&entity)) {
      GetDatumFeatureAnnotFromDatumTarget(&entity, placement);
    } else if (IsKind<KOVAPMI_DIMENSION>(&entity) &&
               HasNamedAttribute(&entity, kCalloutTypeAttribute)) {
      GetDimensionAnnotFromCalloutAnnot(&entity, placement);
    }
    Frame view;
    result = GetAnnotPlaneParameters(placement, view.origin, view.normal, view.xAxis, view.yAxis);
    if (!result.IsSuccess()) return result;
    double uv[2];
    InvertPointOnPlane(view.origin, view.xAxis, view.yAxis, display->get_disp_pt(), uv);
    position[0] = static_cast<float>(uv[0]);
    position[1] = static_cast<float>(uv[1]);
    return Success;
  });
}

// CAVEAT: a callout's depth is measured in its own view, its position in that of its dimension.
KOVAResult KOVAOrvoPMIExporter::GetAnnotationZDepth(const KOVAIdentifier& annotation,
                                                    float& depth) {
  return AnswerFromUntested<ENTITY>(annotation, [&](ENTITY& entity) {
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    KOVAResult result = GetDisplayInformation(&entity, display);
    if (!result.IsSuccess()) return result;
    KOVAIdentifier placement = annotation;
    if (IsKind<KOVAPMI_DATUMTGT>(&entity)) GetDatumFeatureAnnotFromDatumTarget(&entity, placement);
    Frame view;
    result = GetAnnotPlaneParameters(placement, view.origin, view.normal, view.xAxis, view.yAxis);
    if (!result.IsSuccess()) return result;
    const QENposition point = display->get_disp_pt();
    double uv[2];
    InvertPointOnPlane(view.origin, view.xAxis, view.yAxis, point, uv);
    const QENposition foot = view.origin + uv[0] * view.xAxis + uv[1] * view.yAxis;
    const QENvector away = point - foot;
    depth = static_cast<float>(std::sqrt(dot(away, away)));
    return Success;
  });
}

// The last dimension of the walk that lists the callout.
KOVAResult KOVAOrvoPMIExporter::GetDimensionAnnotFromCalloutAnnot(ENTITY* callout,
                                                                  KOVAIdentifier& placement) {
  calloutAnnotationMap.Walk(
      [&](const KOVAIdentifier& dimension, const IdentifierHashMap::List& callouts) {
        for (const KOVAIdentifier& candidate : callouts) {
          if (EntityOf(candidate) == callout) placement = dimension;
        }
        return true;
      });
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetDatumFeatureAnnotFromDatumTarget(ENTITY* target,
                                                                    KOVAIdentifier& placement) {
  const auto found = datumTargetDatumMap.find(target);
  if (found != datumTargetDatumMap.end() && found->second != nullptr) {
    placement.SetNativeObject(found->second);
  }
  return Success;
}

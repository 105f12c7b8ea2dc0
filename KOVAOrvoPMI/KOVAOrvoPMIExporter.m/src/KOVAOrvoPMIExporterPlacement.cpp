// View planes, the projection of model points into them, and where annotations, dimension lines and
// extension lines stand in them.
#include <cmath>

#include "Coordinates.h"
#include "NamedAttributes.h"
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"

// A view plane's frame, as the plane stores it.
struct KOVAOrvoPMIExporter::Frame {
  QENposition origin;
  QENvector normal;
  QENvector xAxis;
  QENvector yAxis;
};

namespace {

void Narrow(const double* uv, float* output) {
  output[0] = static_cast<float>(uv[0]);
  output[1] = static_cast<float>(uv[1]);
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetPlaneParameters(const PLANE& viewPlane, QENposition& origin,
                                                   QENvector& normal, QENvector& xAxis,
                                                   QENvector& yAxis) {
  const plane definition = Changeable(viewPlane).equation();
  origin = definition.root_point;
  normal = definition.normal;
  xAxis = definition.u_direction;
  yAxis = cross(definition.normal, definition.u_direction);
  return Success;
}

// The plane of the first view of a walk over the map that holds the annotation and has one. All
// views hold an annotation under the same identifier, so one comparison decides for all.
KOVAResult KOVAOrvoPMIExporter::GetAnnotPlaneParameters(KOVAIdentifier annotation,
                                                        QENposition& origin, QENvector& normal,
                                                        QENvector& xAxis, QENvector& yAxis) {
  ENTITY* entity = EntityOf(annotation);
  auto* viewPlane = static_cast<ENTITY*>(planesOfAnnotations_.First(entity));
  if (viewPlane == nullptr || !(AnnotationIdentifier(entity, this) == annotation)) return Failure;
  return GetPlaneParameters(static_cast<PLANE&>(*viewPlane), origin, normal, xAxis, yAxis);
}

KOVAResult KOVAOrvoPMIExporter::GetFrame(const KOVAIdentifier& annotation, Frame& frame) {
  return GetAnnotPlaneParameters(annotation, frame.origin, frame.normal, frame.xAxis, frame.yAxis);
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
  return AnswerFromObject<PLANE>(view, [&](PLANE& viewPlane) {
    // An object is taken as a plane only when it is a view of this exporter.
    if (viewAnnotationMap.Find(view) == nullptr) return Failure;
    Frame of;
    GetPlaneParameters(viewPlane, of.origin, of.normal, of.xAxis, of.yAxis);
    CopyCoordinates(of.origin, frame);
    CopyCoordinates(of.xAxis, frame + 3);
    CopyCoordinates(of.yAxis, frame + 6);
    return Success;
  });
}

// An annotation's display point and the frame that it is placed in: that of its datum for a target,
// that of its dimension for a callout when callouts are redirected, else its own.
KOVAResult KOVAOrvoPMIExporter::GetPlace(const KOVAIdentifier& annotation, bool redirectsCallouts,
                                         QENposition& point, Frame& frame) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    const KOVAResult result = GetDisplayInformation(&entity, display);
    if (!result.IsSuccess()) return result;
    KOVAIdentifier placement = annotation;
    if (IsKind<KOVAPMI_DATUMTGT>(&entity)) {
      GetDatumFeatureAnnotFromDatumTarget(&entity, placement);
    } else if (redirectsCallouts && IsKind<KOVAPMI_DIMENSION>(&entity) &&
               HasNamedAttribute(&entity, kCalloutTypeAttribute)) {
      GetDimensionAnnotFromCalloutAnnot(&entity, placement);
    }
    const KOVAResult placed = GetFrame(placement, frame);
    if (placed.IsSuccess()) point = display->get_disp_pt();
    return placed;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationPositionInView(const KOVAIdentifier& annotation,
                                                            float* position,
                                                            KOVAPMIOrientation& /*orientation*/,
                                                            float& /*unanswered*/) {
  QENposition point;
  Frame view;
  const KOVAResult result = GetPlace(annotation, true, point, view);
  if (!result.IsSuccess()) return result;
  double uv[2];
  InvertPointOnPlane(view.origin, view.xAxis, view.yAxis, point, uv);
  Narrow(uv, position);
  return Success;
}

// CAVEAT: a callout's depth is measured in its own view, its position in that of its dimension.
KOVAResult KOVAOrvoPMIExporter::GetAnnotationZDepth(const KOVAIdentifier& annotation,
                                                    float& depth) {
  QENposition point;
  Frame view;
  const KOVAResult result = GetPlace(annotation, false, point, view);
  if (!result.IsSuccess()) return result;
  double uv[2];
  InvertPointOnPlane(view.origin, view.xAxis, view.yAxis, point, uv);
  const QENposition foot = view.origin + uv[0] * view.xAxis + uv[1] * view.yAxis;
  const QENvector away = point - foot;
  depth = static_cast<float>(std::sqrt(dot(away, away)));
  return Success;
}

// The last dimension of a walk over the map that lists the callout.
KOVAResult KOVAOrvoPMIExporter::GetDimensionAnnotFromCalloutAnnot(ENTITY* callout,
                                                                  KOVAIdentifier& placement) {
  if (auto* dimension = static_cast<ENTITY*>(dimensionsOfCallouts_.Last(callout))) {
    placement = AnnotationIdentifier(dimension, this);
  }
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::GetDatumFeatureAnnotFromDatumTarget(ENTITY* target,
                                                                    KOVAIdentifier& placement) {
  if (ENTITY* datum = LinkedTo(target, datumTargetDatumMap)) placement.SetNativeObject(datum);
  return Success;
}

// A point in the frame of a dimension's own view; its model x and y when that view has no plane.
void KOVAOrvoPMIExporter::WriteInView(const QENposition& point, const Frame* view, float* output) {
  double uv[2] = {point.x(), point.y()};
  if (view != nullptr) InvertPointOnPlane(view->origin, view->xAxis, view->yAxis, point, uv);
  Narrow(uv, output);
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionExtensionLines(const KOVAIdentifier& annotation,
                                                           float* first, float* second,
                                                           float* third) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    QENposition p1;
    QENposition p2;
    QENposition p3;
    if (dimension.GetExtensionLines(p1, p2, p3) != 1) return Failure;
    Frame frame;
    const Frame* view = GetFrame(annotation, frame).IsSuccess() ? &frame : nullptr;
    WriteInView(p1, view, first);
    WriteInView(p2, view, second);
    WriteInView(p3, view, third);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionLine(const KOVAIdentifier& annotation,
                                                 KOVAPMIArrowSymbol& /*firstArrow*/,
                                                 float* firstPoint,
                                                 KOVAPMIArrowSymbol& /*secondArrow*/,
                                                 float* secondPoint, bool& /*hasThirdPoint*/,
                                                 float* /*thirdPoint*/) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    QENposition e1;
    QENposition e2;
    if (dimension.get_dimension_line_extremities(e1, e2) != 1) return Failure;
    Frame frame;
    const Frame* view = GetFrame(annotation, frame).IsSuccess() ? &frame : nullptr;
    WriteInView(e1, view, firstPoint);
    WriteInView(e2, view, secondPoint);
    return Success;
  });
}

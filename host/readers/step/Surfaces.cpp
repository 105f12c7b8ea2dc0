// Surfaces.

#include <algorithm>

#include "readers/step/Geometry.h"

namespace step {

namespace {

// In a complex instance each entity has a record of its own.
geometry::SurfacePointer BSpline(Reading& reading, const Instance& instance, const Scale& scale) {
  const Record* const own = instance.Find("B_SPLINE_SURFACE");
  const Record& knots = *instance.Find("B_SPLINE_SURFACE_WITH_KNOTS");
  const Record& record = own != nullptr ? *own : knots;
  const std::uint32_t at = own != nullptr ? 0 : 1;
  const std::uint32_t atKnots = own != nullptr ? 0 : 8;
  const auto order = [&](std::uint32_t index) {
    return static_cast<std::size_t>(std::clamp(record.Number(index), 0.0, 100.0)) + 1;
  };
  geometry::NurbsSurface nurbs;
  nurbs.orderU = order(at);
  nurbs.orderV = order(at + 1);
  for (const Value& row : record.List(at + 2)) {
    const std::vector<QENposition> points = PointsOf(reading, row, scale);
    nurbs.points.insert(nurbs.points.end(), points.begin(), points.end());
  }
  const std::size_t count = nurbs.points.size();
  nurbs.knotsU = KnotsOf(instance.id, knots.List(atKnots), knots.List(atKnots + 2), count);
  nurbs.knotsV = KnotsOf(instance.id, knots.List(atKnots + 1), knots.List(atKnots + 3), count);
  if (const Record* rational = instance.Find("RATIONAL_B_SPLINE_SURFACE")) {
    for (const Value& row : rational->List(rational->count - 1)) {
      const std::vector<double> weights = NumbersOf(instance.id, row);
      nurbs.weights.insert(nurbs.weights.end(), weights.begin(), weights.end());
    }
  }
  return geometry::BSpline(std::move(nurbs));
}

// The curve that a surface is swept of.
geometry::Curve SweptCurve(Reading& reading, const Record& record, const Scale& scale) {
  std::vector<geometry::Curve> curves = CurveOf(reading, record.Reference(1), scale);
  if (curves.size() != 1) throw geometry::Undrawable("its curve has several pieces");
  return std::move(curves.front());
}

geometry::Frame AxisOf(Reading& reading, Id id, const Scale& scale) {
  const Record& axis = reading.Get(id).As("AXIS1_PLACEMENT");
  const Id direction = axis.Reference(2);
  const QENvector along = direction == 0 ? QENvector(0, 0, 1) : DirectionOf(reading, direction);
  const bool isAlongX = along.x() * along.x() > 0.5;
  return geometry::FrameOf(reading.PointOf(axis.Reference(1), scale.length), along,
                           isAlongX ? QENvector(0, 1, 0) : QENvector(1, 0, 0));
}

}  // namespace

geometry::SurfacePointer SurfaceOf(Reading& reading, Id id, const Scale& scale) {
  const Instance& instance = reading.Get(id);
  const Record& record = instance.records.front();
  const auto frame = [&] {
    const Placement at = reading.PlacementOf(record.Reference(1), scale.length);
    return geometry::FrameOf(at.origin, at.axis, at.x);
  };
  const auto length = [&](std::uint32_t index) { return scale.length * record.Number(index); };
  if (record.name == "PLANE") return geometry::Plane(frame());
  if (record.name == "CYLINDRICAL_SURFACE") return geometry::Cylinder(frame(), length(2));
  if (record.name == "CONICAL_SURFACE") {
    return geometry::Cone(frame(), length(2), scale.radians * record.Number(3));
  }
  if (record.name == "SPHERICAL_SURFACE") return geometry::Sphere(frame().origin, length(2));
  if (record.name == "TOROIDAL_SURFACE") return geometry::Torus(frame(), length(2), length(3));
  if (instance.Find("B_SPLINE_SURFACE_WITH_KNOTS") != nullptr) {
    return BSpline(reading, instance, scale);
  }
  if (record.name == "SURFACE_OF_LINEAR_EXTRUSION") {
    return geometry::Extrusion(SweptCurve(reading, record, scale),
                               VectorOf(reading, record.Reference(2), scale));
  }
  if (record.name == "SURFACE_OF_REVOLUTION") {
    return geometry::Revolution(SweptCurve(reading, record, scale),
                                AxisOf(reading, record.Reference(2), scale));
  }
  throw Unreadable(id, "a surface of its kind is not drawn");
}

}  // namespace step

// Surfaces.

#include <algorithm>
#include <cmath>

#include "readers/qif/Geometry.h"

namespace qif {

namespace {

class SurfaceReader {
 public:
  SurfaceReader(const Reading& reading, Element core, const Motion& motion)
      : reading_(reading), core_(core), motion_(motion) {}

  geometry::SurfacePointer Read() const {
    const std::string_view kind = NameOf(core_);
    if (kind == "Plane23Core") {
      const QENvector u = Vector(core_, "DirU");
      const QENvector v = Vector(core_, "DirV");
      return geometry::Plane(geometry::FrameOf(Point(core_, "Origin"), cross(u, v), u));
    }
    if (kind == "Cylinder23Core") {
      return geometry::Cylinder(FrameWith("Sweep", "DirBeg"), Number("Diameter") / 2);
    }
    if (kind == "Cone23Core") return Cone();
    if (kind == "Sphere23Core") {
      return geometry::Sphere(Point(core_, "Location"), Number("Diameter") / 2);
    }
    if (kind == "Torus23Core") {
      return geometry::Torus(FrameWith("LatitudeLongitudeSweep", "DirMeridianPrime"),
                             Number("DiameterMajor") / 2, Number("DiameterMinor") / 2);
    }
    if (kind == "Nurbs23Core") return BSpline();
    throw Unreadable(core_, "a surface of its kind is not drawn");
  }

 private:
  double Number(const char* name) const { return NumberOf(Child(core_, name)); }

  QENposition Point(Element parent, const char* name) const {
    return motion_(ShapePoint(reading_, Child(parent, name)));
  }

  QENvector Vector(Element parent, const char* name) const {
    return motion_(reading_.units.Vector(Child(parent, name)));
  }

  geometry::Frame FrameWith(const char* sweep, const char* direction) const {
    const Element axis = Child(core_, "Axis");
    return geometry::FrameOf(Point(axis, "AxisPoint"), Vector(axis, "Direction"),
                             Vector(Child(core_, sweep), direction));
  }

  // The bottom is at the axis's point, the top at the length.
  geometry::SurfacePointer Cone() const {
    const double bottom = Number("DiameterBottom") / 2;
    const double top = Number("DiameterTop") / 2;
    return geometry::Cone(FrameWith("Sweep", "DirBeg"), bottom,
                          std::atan2(top - bottom, Number("Length")));
  }

  geometry::SurfacePointer BSpline() const {
    const auto order = [&](const char* name) {
      return static_cast<std::size_t>(std::clamp(Number(name), 0.0, 100.0));
    };
    geometry::NurbsSurface nurbs;
    nurbs.orderU = order("OrderU");
    nurbs.orderV = order("OrderV");
    nurbs.knotsU = RealsOf(core_, "KnotsU");
    nurbs.knotsV = RealsOf(core_, "KnotsV");
    nurbs.points = PointsOf(core_, "CPs", motion_);
    nurbs.weights = RealsOf(core_, "Weights");
    return geometry::BSpline(std::move(nurbs));
  }

  const Reading& reading_;
  Element core_;
  const Motion& motion_;
};

}  // namespace

geometry::SurfacePointer SurfaceOf(Reading& reading, Element surface, const Motion& motion) {
  const Motion whole = motion * MotionOf(reading, surface);
  return SurfaceReader(reading, surface.first_child(), whole).Read();
}

}  // namespace qif

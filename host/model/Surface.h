#pragma once

#include <memory>
#include <optional>

#include "model/Curve.h"

// Surfaces of any format with a flat map of each, in which its faces are cut into triangles.
namespace geometry {

// A place of a map.
struct Flat {
  double x = 0;
  double y = 0;
};
inline Flat operator+(const Flat& a, const Flat& b) { return {a.x + b.x, a.y + b.y}; }
inline Flat operator-(const Flat& a, const Flat& b) { return {a.x - b.x, a.y - b.y}; }
inline Flat operator*(double factor, const Flat& a) { return {factor * a.x, factor * a.y}; }
// Twice the area of the triangle a b c, positive when they run counter-clockwise.
inline double Cross(const Flat& a, const Flat& b, const Flat& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// A right-handed frame of unit vectors.
struct Frame {
  QENposition origin;
  QENvector x{1, 0, 0}, y{0, 1, 0}, axis{0, 0, 1};
};
// A frame with that axis and x as near to `x` as it goes. Throws Undrawable when either has no
// direction or both have the same.
Frame FrameOf(const QENposition& origin, const QENvector& axis, const QENvector& x);

class Surface;
using SurfacePointer = std::shared_ptr<const Surface>;

// A surface. From outside, where its normal points to, its map is not mirrored.
class Surface {
 public:
  virtual ~Surface() = default;

  // The map's place of a point of the surface, or of the nearest to it; and back.
  virtual Flat Map(const QENposition& point) const = 0;
  virtual QENposition At(const Flat& place) const = 0;

  // After how much the map comes to the same point again in each direction; 0 for never.
  virtual Flat Periods() const { return {}; }
  // The y at which every x is the same point: where a cone ends.
  virtual std::optional<double> Pole() const { return std::nullopt; }
  // How much longer a unit of x is at a y, on the surface, than a unit of y.
  virtual double Stretch(double /*y*/) const { return 1; }
  // The same surface with a map for a face that lies around a direction from its middle, when its
  // own map is not for every face; else null.
  virtual SurfacePointer Around(const QENvector& /*direction*/) const { return nullptr; }
};

// The normals point along a plane's axis, away from the axis of a cylinder or a cone, out of a
// sphere and out of a torus's tube. Throw Undrawable for radii that make no surface.
SurfacePointer Plane(const Frame& frame);
SurfacePointer Cylinder(const Frame& frame, double radius);
// `radius` is at the frame's origin and grows along the axis by the angle's tangent.
SurfacePointer Cone(const Frame& frame, double radius, double halfAngle);
// A torus whose tube has the minor radius.
SurfacePointer Torus(const Frame& frame, double majorRadius, double minorRadius);
SurfacePointer Sphere(const QENposition& centre, double radius);

// A B-spline surface. Its normals are along the derivative by u times that by v. Without weights
// all are 1.
struct NurbsSurface {
  std::size_t orderU = 0, orderV = 0;  // degree + 1
  std::vector<double> knotsU, knotsV;
  std::vector<QENposition> points;  // those of the first u first
  std::vector<double> weights;
};
SurfacePointer BSpline(NurbsSurface nurbs);
// What a curve sweeps along a direction; the normals are along the curve's times that.
SurfacePointer Extrusion(const Curve& curve, const QENvector& direction);
// What a curve sweeps round the axis of a frame; the normals are along the way round times the
// curve's direction.
SurfacePointer Revolution(const Curve& curve, const Frame& frame);

}  // namespace geometry

#pragma once

#include <optional>
#include <vector>

#include "report/Points.h"

namespace html {

using namespace points;

// A picture's size, in its own units; y runs down.
inline constexpr double kPictureWidth = 1800;
inline constexpr double kPictureHeight = 1200;

// How a picture shows the model: the way from model coordinates to the picture's.
class Projection {
 public:
  // As the camera sees it: as high as the camera says, as wide as the picture. Absent where the
  // camera looks nowhere or says no height.
  static std::optional<Projection> Of(const CameraReport& camera);
  // All of these points, seen from the front, the right and above. Points with a coordinate that is
  // no finite number are left out.
  static Projection Isometric(const std::vector<Point3>& points);

  // Absent for what lies behind a perspective camera, or far outside of the picture.
  std::optional<Point2> Place(const Point3& point) const;
  // How long a unit of length is there, where it is seen from the side.
  double Scale(const Point3& point) const;
  const Point3& Direction() const { return forward_; }

 private:
  Projection(const Point3& eye, const Point3& forward, const Point3& up, double scale,
             bool isPerspective);
  double DepthOf(const Point3& point) const;

  Point3 eye_, forward_, right_, up_;
  double scale_;  // of a perspective one, at depth 1
  bool isPerspective_;
};

double Length(const Point3& a);

}  // namespace html

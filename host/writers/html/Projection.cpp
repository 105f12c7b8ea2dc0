#include "writers/html/Projection.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace html {

namespace {

bool IsDirection(const Point3& a) { return std::isfinite(Length(a)) && Length(a) > 1e-12; }

Point3 Unit(const Point3& a) { return 1 / Length(a) * a; }

}  // namespace

double Length(const Point3& a) { return std::hypot(a[0], a[1], a[2]); }

Projection::Projection(const Point3& eye, const Point3& forward, const Point3& up, double scale,
                       bool isPerspective)
    : eye_(eye), forward_(Unit(forward)), scale_(scale), isPerspective_(isPerspective) {
  // Where up says nothing, any axis across will do.
  Point3 right = IsDirection(up) ? Cross(forward_, Unit(up)) : Point3{};
  if (!IsDirection(right)) right = Cross(forward_, {0, 0, 1});
  if (!IsDirection(right)) right = {1, 0, 0};
  right_ = Unit(right);
  up_ = Cross(right_, forward_);
}

std::optional<Projection> Projection::Of(const CameraReport& camera) {
  if (!IsDirection(camera.viewDirection)) return {};
  double scale = camera.zoom * kPictureHeight / 2;
  bool isPerspective = false;
  if (camera.type == "perspective" && camera.viewAngle > 0 && camera.viewAngle < 180) {
    isPerspective = true;
    scale = kPictureHeight / 2 / std::tan(camera.viewAngle * std::acos(-1.0) / 360);
  }
  if (!std::isfinite(scale) || scale <= 0) return {};
  return Projection(camera.origin, camera.viewDirection, camera.viewDirectionNormal, scale,
                    isPerspective);
}

Projection Projection::Isometric(const std::vector<Point3>& points) {
  constexpr double kFilled = 0.8;
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  Projection projection({}, {-1, 1, -1}, {0, 0, 1}, 1, false);
  const std::array<Point3, 3> axes{projection.right_, projection.up_, projection.forward_};
  Point3 low{kInfinity, kInfinity, kInfinity};
  Point3 high{-kInfinity, -kInfinity, -kInfinity};
  for (const Point3& point : points) {
    if (!std::isfinite(point[0] + point[1] + point[2])) continue;
    for (std::size_t i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], Dot(point, axes[i]));
      high[i] = std::max(high[i], Dot(point, axes[i]));
    }
  }
  if (!(low[0] <= high[0])) return projection;
  for (std::size_t i = 0; i < 3; ++i) {
    projection.eye_ = projection.eye_ + 0.5 * (low[i] + high[i]) * axes[i];
  }
  const double scale =
      kFilled * std::min(kPictureWidth / (high[0] - low[0]), kPictureHeight / (high[1] - low[1]));
  if (std::isfinite(scale) && scale > 0) projection.scale_ = scale;
  return projection;
}

double Projection::DepthOf(const Point3& point) const {
  return isPerspective_ ? Dot(point - eye_, forward_) : 1;
}

double Projection::Scale(const Point3& point) const { return scale_ / DepthOf(point); }

std::optional<Point2> Projection::Place(const Point3& point) const {
  constexpr double kFar = 1e6;
  if (!(DepthOf(point) > 0)) return {};
  const Point3 away = point - eye_;
  const double scale = Scale(point);
  const Point2 place{kPictureWidth / 2 + scale * Dot(away, right_),
                     kPictureHeight / 2 - scale * Dot(away, up_)};
  if (!(std::abs(place[0]) < kFar && std::abs(place[1]) < kFar)) return {};
  return place;
}

}  // namespace html

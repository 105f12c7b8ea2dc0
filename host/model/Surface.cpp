#include "model/Surface.h"

#include <cmath>

namespace geometry {

namespace {

constexpr double kTurn = 6.283185307179586;

QENvector Unit(const QENvector& vector) {
  const double length = std::sqrt(vector.length_squared());
  if (!(length > 0) || !std::isfinite(length)) throw Undrawable("a direction of it is none");
  return 1 / length * vector;
}

void RequirePositive(double radius) {
  if (!(radius > 0) || !std::isfinite(radius)) throw Undrawable("a radius of it is not positive");
}

class PlaneSurface : public Surface {
 public:
  explicit PlaneSurface(const Frame& frame) : frame_(frame) {}
  Flat Map(const QENposition& point) const override {
    const QENvector way = point - frame_.origin;
    return {dot(way, frame_.x), dot(way, frame_.y)};
  }
  QENposition At(const Flat& place) const override {
    return frame_.origin + (place.x * frame_.x + place.y * frame_.y);
  }

 private:
  Frame frame_;
};

// A surface that turns round an axis: x of the map is the angle, y the length along its profile.
class Turned : public Surface {
 public:
  // A place of the profile: its distance from the axis and its height.
  struct Profile {
    double radius;
    double height;
  };
  explicit Turned(const Frame& frame) : frame_(frame) {}

  Flat Map(const QENposition& point) const override {
    const QENvector way = point - frame_.origin;
    const double x = dot(way, frame_.x);
    const double y = dot(way, frame_.y);
    return {std::atan2(y, x), LengthAt({std::hypot(x, y), dot(way, frame_.axis)})};
  }
  QENposition At(const Flat& place) const override {
    const Profile profile = ProfileAt(place.y);
    const double x = profile.radius * std::cos(place.x);
    const double y = profile.radius * std::sin(place.x);
    return frame_.origin + (x * frame_.x + y * frame_.y + profile.height * frame_.axis);
  }
  Flat Periods() const override { return {kTurn, 0}; }
  double Stretch(double y) const override { return ProfileAt(y).radius; }

 protected:
  virtual Profile ProfileAt(double length) const = 0;
  virtual double LengthAt(const Profile& place) const = 0;

 private:
  Frame frame_;
};

class ConeSurface : public Turned {
 public:
  ConeSurface(const Frame& frame, double radius, double halfAngle)
      : Turned(frame), radius_(radius), sine_(std::sin(halfAngle)), cosine_(std::cos(halfAngle)) {}
  std::optional<double> Pole() const override {
    return sine_ == 0 ? std::nullopt : std::optional<double>(-radius_ / sine_);
  }

 protected:
  Profile ProfileAt(double length) const override {
    return {radius_ + length * sine_, length * cosine_};
  }
  double LengthAt(const Profile& place) const override {
    return (place.radius - radius_) * sine_ + place.height * cosine_;
  }

 private:
  double radius_, sine_, cosine_;
};

class TorusSurface : public Turned {
 public:
  TorusSurface(const Frame& frame, double major, double minor)
      : Turned(frame), major_(major), minor_(minor) {}
  Flat Periods() const override { return {kTurn, kTurn * minor_}; }

 protected:
  Profile ProfileAt(double length) const override {
    return {major_ + minor_ * std::cos(length / minor_), minor_ * std::sin(length / minor_)};
  }
  double LengthAt(const Profile& place) const override {
    return minor_ * std::atan2(place.height, place.radius - major_);
  }

 private:
  double major_, minor_;
};

// Seen from where the axis's negative direction ends, which has no place itself, through the
// sphere, onto the plane through its centre.
class SphereSurface : public Surface {
 public:
  SphereSurface(const Frame& frame, double radius) : frame_(frame), radius_(radius) {}
  Flat Map(const QENposition& point) const override {
    const QENvector way = Unit(point - frame_.origin);
    const double factor = radius_ / (1 + dot(way, frame_.axis));
    return {factor * dot(way, frame_.x), factor * dot(way, frame_.y)};
  }
  QENposition At(const Flat& place) const override {
    const double x = place.x / radius_;
    const double y = place.y / radius_;
    const double factor = 2 * radius_ / (1 + x * x + y * y);
    return frame_.origin +
           (factor * x * frame_.x + factor * y * frame_.y + (factor - radius_) * frame_.axis);
  }
  SurfacePointer Around(const QENvector& direction) const override {
    const QENvector& d = direction;
    const bool isAlongX = d.x() * d.x() > 0.5 * d.length_squared();
    const QENvector x = isAlongX ? QENvector(0, 1, 0) : QENvector(1, 0, 0);
    return std::make_shared<SphereSurface>(FrameOf(frame_.origin, d, x), radius_);
  }

 private:
  Frame frame_;
  double radius_;
};

}  // namespace

Frame FrameOf(const QENposition& origin, const QENvector& axis, const QENvector& x) {
  Frame frame;
  frame.origin = origin;
  frame.axis = Unit(axis);
  frame.x = Unit(x + -dot(x, frame.axis) * frame.axis);
  frame.y = cross(frame.axis, frame.x);
  return frame;
}

SurfacePointer Plane(const Frame& frame) { return std::make_shared<PlaneSurface>(frame); }

SurfacePointer Cylinder(const Frame& frame, double radius) {
  RequirePositive(radius);
  return std::make_shared<ConeSurface>(frame, radius, 0);
}

SurfacePointer Cone(const Frame& frame, double radius, double halfAngle) {
  if (!(radius >= 0) || !std::isfinite(radius) || !(std::cos(halfAngle) > 1e-6)) {
    throw Undrawable("its radius and angle make no cone");
  }
  return std::make_shared<ConeSurface>(frame, radius, halfAngle);
}

SurfacePointer Torus(const Frame& frame, double majorRadius, double minorRadius) {
  RequirePositive(minorRadius);
  if (!(majorRadius > minorRadius)) throw Undrawable("its tube meets itself");
  return std::make_shared<TorusSurface>(frame, majorRadius, minorRadius);
}

SurfacePointer Sphere(const QENposition& centre, double radius) {
  RequirePositive(radius);
  Frame frame;
  frame.origin = centre;
  return std::make_shared<SphereSurface>(frame, radius);
}

}  // namespace geometry

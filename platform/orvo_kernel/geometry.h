#pragma once

#include <cmath>

#include "orvo_kernel/entity.h"

// A displacement in model space, model length units.
class QENvector {
 public:
  QENvector() = default;
  QENvector(double x, double y, double z) : x_(x), y_(y), z_(z) {}

  double x() const { return x_; }
  double y() const { return y_; }
  double z() const { return z_; }
  // The squared length.
  double length_squared() const { return x_ * x_ + y_ * y_ + z_ * z_; }

 private:
  double x_ = 0;
  double y_ = 0;
  double z_ = 0;
};

inline QENvector operator+(const QENvector& a, const QENvector& b) {
  return {a.x() + b.x(), a.y() + b.y(), a.z() + b.z()};
}
inline QENvector operator*(double factor, const QENvector& a) {
  return {factor * a.x(), factor * a.y(), factor * a.z()};
}
inline double dot(const QENvector& a, const QENvector& b) {
  return a.x() * b.x() + a.y() * b.y() + a.z() * b.z();
}
inline QENvector cross(const QENvector& a, const QENvector& b) {
  return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(),
          a.x() * b.y() - a.y() * b.x()};
}

// A vector of length 1; made from the zero vector it stays zero.
class QENunit_vector : public QENvector {
 public:
  QENunit_vector() : QENvector(0, 0, 1) {}
  QENunit_vector(double x, double y, double z) : QENvector(normalised(x, y, z)) {}

 private:
  static QENvector normalised(double x, double y, double z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    return length > 0 ? QENvector(x / length, y / length, z / length) : QENvector();
  }
};

// A point of model space, model length units.
class QENposition {
 public:
  QENposition() = default;
  QENposition(double x, double y, double z) : x_(x), y_(y), z_(z) {}

  double x() const { return x_; }
  double y() const { return y_; }
  double z() const { return z_; }

 private:
  double x_ = 0;
  double y_ = 0;
  double z_ = 0;
};

inline QENvector operator-(const QENposition& a, const QENposition& b) {
  return {a.x() - b.x(), a.y() - b.y(), a.z() - b.z()};
}
inline QENposition operator+(const QENposition& a, const QENvector& b) {
  return {a.x() + b.x(), a.y() + b.y(), a.z() + b.z()};
}

// A parametric plane. The u direction is kept as given: neither normalised nor made perpendicular.
struct plane {
  plane() = default;
  plane(const QENposition& root, const QENunit_vector& planeNormal, const QENvector& u)
      : root_point(root), normal(planeNormal), u_direction(u) {}

  QENposition root_point;
  QENunit_vector normal;
  QENvector u_direction{1, 0, 0};
  bool reverse_v = false;
};

// A plane as an entity.
class PLANE : public ENTITY {
  ORVO_ENTITY_IDENTITY(PLANE, ENTITY)

 public:
  // May raise a kernel exception.
  explicit PLANE(const plane& definition);

  virtual const plane& equation() const { return definition_; }

 private:
  plane definition_;
};
ORVO_ENTITY_TEST(PLANE);

// A point as an entity.
class APOINT : public ENTITY {
  ORVO_ENTITY_IDENTITY(APOINT, ENTITY)

 public:
  explicit APOINT(const QENposition& coordinates) : coordinates_(coordinates) {}

  const QENposition& coordinates() const { return coordinates_; }

 private:
  QENposition coordinates_;
};
ORVO_ENTITY_TEST(APOINT);

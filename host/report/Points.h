#pragma once

#include "report/Report.h"

// Arithmetic on points and directions of a report, for writers.

namespace points {

inline Point3 operator+(const Point3& a, const Point3& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Point3 operator-(const Point3& a, const Point3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Point3 operator*(double factor, const Point3& a) {
  return {factor * a[0], factor * a[1], factor * a[2]};
}
inline double Dot(const Point3& a, const Point3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Point3 Cross(const Point3& a, const Point3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace points

#include "writers/qif/Planes.h"

#include <algorithm>
#include <cmath>

namespace qif_writer {

namespace {

constexpr double kNearlyUnit = 1e-5;

// Half of the distance between neighbouring floats.
double HalfStep(double value) {
  const auto narrow = static_cast<float>(std::abs(value));
  return (static_cast<double>(std::nextafter(narrow, HUGE_VALF)) - narrow) / 2;
}

bool IsFinite(const Point3& a) { return std::isfinite(Dot(a, a)); }

Point3 Unit(const Point3& a) { return (1 / std::sqrt(Dot(a, a))) * a; }

// Solves a symmetric system of three equations; false when it has no single solution.
bool Solve(const Point3 (&rows)[3], const Point3& right, Point3& solution) {
  const double determinant = Dot(rows[0], Cross(rows[1], rows[2]));
  if (!std::isnormal(determinant)) return false;
  solution =
      (1 / determinant) * (right[0] * Cross(rows[1], rows[2]) + right[1] * Cross(rows[2], rows[0]) +
                           right[2] * Cross(rows[0], rows[1]));
  return IsFinite(solution);
}

// Moves axes, each coordinate by less than half a step between floats, to unit length and a right
// angle: Newton's method, with each coordinate moved in proportion to the square of its step. One
// that comes to an end of its step stays there while the others can do without it.
void Straighten(const Point3& x0, const Point3& y0, Point3& x, Point3& y) {
  Point3 steps[2];
  for (std::size_t i = 0; i < 3; ++i) {
    steps[0][i] = HalfStep(x0[i]);
    steps[1][i] = HalfStep(y0[i]);
  }
  bool stays[2][3] = {};
  bool isAnyStaying = false;
  double largest = 0;
  for (const Point3& step : steps) largest = std::max({largest, step[0], step[1], step[2]});
  const auto weighted = [&](std::size_t axis, const Point3& a) {
    Point3 result;
    for (std::size_t i = 0; i < 3; ++i) {
      const double step = stays[axis][i] ? 0 : steps[axis][i] / largest;
      result[i] = step * step * a[i];
    }
    return result;
  };
  for (int round = 0; round < 1000; ++round) {
    const Point3 off = {(Dot(x, x) - 1) / 2, (Dot(y, y) - 1) / 2, Dot(x, y)};
    if (std::max({std::abs(off[0]), std::abs(off[1]), std::abs(off[2])}) < 1e-16) return;
    const Point3 xx = weighted(0, x), xy = weighted(0, y), yy = weighted(1, y), yx = weighted(1, x);
    const Point3 rows[3] = {{Dot(x, xx), 0, Dot(x, xy)},
                            {0, Dot(y, yy), Dot(y, yx)},
                            {Dot(x, xy), Dot(y, yx), Dot(y, xy) + Dot(x, yx)}};
    Point3 by;
    if (!Solve(rows, off, by)) {
      if (!isAnyStaying) return;
      for (auto& axis : stays) std::fill(std::begin(axis), std::end(axis), false);
      isAnyStaying = false;
      continue;
    }
    x = x - (by[0] * xx + by[2] * xy);
    y = y - (by[1] * yy + by[2] * yx);
    const auto hold = [&](std::size_t axis, const Point3& at, Point3& moved) {
      constexpr double kInside = 0.999999;
      for (std::size_t i = 0; i < 3; ++i) {
        const double most = kInside * steps[axis][i];
        const double inside = std::clamp(moved[i], at[i] - most, at[i] + most);
        stays[axis][i] = stays[axis][i] || inside != moved[i];
        isAnyStaying = isAnyStaying || stays[axis][i];
        moved[i] = inside;
      }
    };
    hold(0, x0, x);
    hold(1, y0, y);
  }
}

bool IsUnit(const Point3& a) { return std::abs(Dot(a, a) - 1) < kNearlyUnit; }

}  // namespace

std::optional<Axes> AxesOf(const ViewFrameReport& frame) {
  Point3 x = frame.xAxis;
  Point3 y = frame.yAxis;
  if (!IsFinite(frame.origin) || !IsFinite(x) || !IsFinite(y)) return {};
  if (IsUnit(x) && IsUnit(y)) Straighten(frame.xAxis, frame.yAxis, x, y);
  const Point3 normal = Cross(x, y);
  if (!std::isnormal(Dot(x, x)) || !std::isnormal(Dot(normal, normal))) return {};
  Axes axes;
  axes.x = Unit(x);
  axes.normal = Unit(normal);
  axes.y = Unit(Cross(axes.normal, axes.x));
  return axes;
}

Point3 PointIn(const ViewFrameReport& frame, const Axes& axes, const Point2& place) {
  const bool isUnit = IsUnit(frame.xAxis) && IsUnit(frame.yAxis);
  const Point3& x = isUnit ? axes.x : frame.xAxis;
  const Point3& y = isUnit ? axes.y : frame.yAxis;
  return frame.origin + (place[0] * x + place[1] * y);
}

}  // namespace qif_writer

// Surfaces of curves and of control points.

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/Surface.h"

namespace geometry {

namespace {

double LengthOf(const Curve& curve) {
  double length = 0;
  for (std::size_t i = 1; i < curve.breaks.size(); ++i) {
    length +=
        std::sqrt((curve.at(curve.breaks[i]) - curve.at(curve.breaks[i - 1])).length_squared());
  }
  return length;
}

// How long a curve is for each unit of its parameter.
double SpeedOf(const Curve& curve) {
  const double speed = LengthOf(curve) / (curve.breaks.back() - curve.breaks.front());
  if (!(speed > 0) || !std::isfinite(speed)) throw Undrawable("its curve has no length");
  return speed;
}

double PeriodOf(const Curve& curve) {
  const QENvector gap = curve.at(curve.breaks.back()) - curve.at(curve.breaks.front());
  const bool isClosed = std::sqrt(gap.length_squared()) <= 1e-9 * LengthOf(curve);
  return isClosed ? curve.breaks.back() - curve.breaks.front() : 0;
}

// The curve's point at any parameter: a closed curve goes on, an open one stops.
QENposition PointOf(const Curve& curve, double period, double t) {
  const double begin = curve.breaks.front();
  if (period > 0) t -= period * std::floor((t - begin) / period);
  return curve.at(std::clamp(t, begin, curve.breaks.back()));
}

class ExtrudedSurface : public Surface {
 public:
  ExtrudedSurface(Curve curve, const QENvector& direction)
      : curve_(std::move(curve)), direction_(direction), profile_(curve_) {
    profile_.at = [at = curve_.at, direction](double t) {
      const QENposition point = at(t);
      return point + -dot(point - QENposition(), direction) * direction;
    };
    speed_ = SpeedOf(profile_);
    period_ = PeriodOf(profile_);
  }
  Flat Map(const QENposition& point) const override {
    const QENvector way = point - QENposition();
    const double t = Nearest(profile_, point + -dot(way, direction_) * direction_);
    return {speed_ * t, dot(point - curve_.at(t), direction_)};
  }
  QENposition At(const Flat& place) const override {
    return PointOf(curve_, period_, place.x / speed_) + place.y * direction_;
  }
  Flat Periods() const override { return {period_ * speed_, 0}; }

 private:
  Curve curve_;
  QENvector direction_;
  Curve profile_;  // seen along the direction
  double speed_ = 0, period_ = 0;
};

class RevolvedSurface : public Surface {
 public:
  RevolvedSurface(Curve curve, const Frame& frame)
      : curve_(std::move(curve)), frame_(frame), profile_(curve_) {
    profile_.at = [this](double t) { return Across(curve_.at(t)); };
    speed_ = SpeedOf(profile_);
    period_ = PeriodOf(profile_);
  }
  RevolvedSurface(const RevolvedSurface&) = delete;
  RevolvedSurface& operator=(const RevolvedSurface&) = delete;

  Flat Map(const QENposition& point) const override {
    const double t = Nearest(profile_, Across(point));
    return {AngleOf(point) - AngleOf(curve_.at(t)), speed_ * t};
  }
  QENposition At(const Flat& place) const override {
    const QENvector way = PointOf(curve_, period_, place.y / speed_) - frame_.origin;
    const double x = dot(way, frame_.x);
    const double y = dot(way, frame_.y);
    const double sine = std::sin(place.x);
    const double cosine = std::cos(place.x);
    return frame_.origin +
           ((cosine * x - sine * y) * frame_.x + (sine * x + cosine * y) * frame_.y +
            dot(way, frame_.axis) * frame_.axis);
  }
  Flat Periods() const override { return {6.283185307179586, period_ * speed_}; }
  double Stretch(double y) const override {
    return Across(PointOf(curve_, period_, y / speed_)).x();
  }

 private:
  double AngleOf(const QENposition& point) const {
    const QENvector way = point - frame_.origin;
    return std::atan2(dot(way, frame_.y), dot(way, frame_.x));
  }
  // Its distance from the axis, and its height.
  QENposition Across(const QENposition& point) const {
    const QENvector way = point - frame_.origin;
    return {std::hypot(dot(way, frame_.x), dot(way, frame_.y)), dot(way, frame_.axis), 0};
  }

  Curve curve_;
  Frame frame_;
  Curve profile_;  // in the plane of distance and height
  double speed_ = 0, period_ = 0;
};

class BSplineSurface : public Surface {
 public:
  explicit BSplineSurface(NurbsSurface nurbs) : nurbs_(std::move(nurbs)) {
    countV_ = nurbs_.knotsV.size() - nurbs_.orderV;
    countU_ = nurbs_.knotsU.size() - nurbs_.orderU;
    us_ = PiecesOf(nurbs_.knotsU, nurbs_.orderU, countU_, -kFar, kFar);
    vs_ = PiecesOf(nurbs_.knotsV, nurbs_.orderV, countV_, -kFar, kFar);
    // The time that a point takes.
    constexpr std::size_t kMostPlaces = 3000;
    if (us_.size() * vs_.size() > kMostPlaces) throw Undrawable("it has too many patches");
    for (const double u : us_) {
      for (const double v : vs_) grid_.push_back(PointAt(u, v));
    }
    Measure();
  }

  // From the nearest place of a grid on by Gauss and Newton's method.
  Flat Map(const QENposition& point) const override {
    std::size_t best = 0;
    double shortest = kFar;
    for (std::size_t i = 0; i < grid_.size(); ++i) {
      const double length = (grid_[i] - point).length_squared();
      if (length < shortest) {
        shortest = length;
        best = i;
      }
    }
    double u = us_[best / vs_.size()];
    double v = vs_[best % vs_.size()];
    constexpr int kMostSteps = 30;
    for (int step = 0; step < kMostSteps; ++step) {
      const QENvector byU = Derivative(u, v, true);
      const QENvector byV = Derivative(u, v, false);
      const QENvector off = point - PointAt(u, v);
      const double uu = byU.length_squared(), uv = dot(byU, byV), vv = byV.length_squared();
      const double least = 1e-12 * (uu + vv);
      const double determinant = uu * vv - uv * uv + least * (uu + vv);
      if (!(determinant > 0)) break;
      const double a = dot(off, byU), b = dot(off, byV);
      const double nextU = Inside(u + (vv * a - uv * b) / determinant, us_, periodU_);
      const double nextV = Inside(v + (uu * b - uv * a) / determinant, vs_, periodV_);
      const bool isDone =
          std::abs(nextU - u) * speedU_ + std::abs(nextV - v) * speedV_ < 1e-9 * size_;
      u = nextU;
      v = nextV;
      if (isDone) break;
    }
    return {speedU_ * u, speedV_ * v};
  }
  QENposition At(const Flat& place) const override {
    return PointAt(Inside(place.x / speedU_, us_, periodU_),
                   Inside(place.y / speedV_, vs_, periodV_));
  }
  Flat Periods() const override { return {periodU_ * speedU_, periodV_ * speedV_}; }

 private:
  static constexpr double kFar = std::numeric_limits<double>::max();

  static double Inside(double t, const std::vector<double>& pieces, double period) {
    if (period > 0) t -= period * std::floor((t - pieces.front()) / period);
    return std::clamp(t, pieces.front(), pieces.back());
  }

  QENposition PointAt(double u, double v) const {
    const Basis byU(nurbs_.knotsU, nurbs_.orderU, countU_, u);
    const Basis byV(nurbs_.knotsV, nurbs_.orderV, countV_, v);
    QENvector sum;
    double weights = 0;
    for (std::size_t i = 0; i < nurbs_.orderU; ++i) {
      for (std::size_t k = 0; k < nurbs_.orderV; ++k) {
        const std::size_t at = (byU.first + i) * countV_ + byV.first + k;
        const double own = nurbs_.weights.empty() ? 1 : nurbs_.weights[at];
        const double weight = byU.values[i] * byV.values[k] * own;
        weights += weight;
        sum = sum + weight * (nurbs_.points[at] - QENposition());
      }
    }
    return QENposition() + 1 / weights * sum;
  }

  QENvector Derivative(double u, double v, bool isByU) const {
    const std::vector<double>& pieces = isByU ? us_ : vs_;
    const double way = 1e-6 * (pieces.back() - pieces.front());
    const double at = isByU ? u : v;
    const double low = std::max(at - way, pieces.front());
    const double high = std::min(at + way, pieces.back());
    const QENvector off =
        isByU ? PointAt(high, v) - PointAt(low, v) : PointAt(u, high) - PointAt(u, low);
    return 1 / (high - low) * off;
  }

  // Speeds and whether it closes, by the grid.
  void Measure() {
    const auto length = [&](std::size_t a, std::size_t b) {
      return std::sqrt((grid_[a] - grid_[b]).length_squared());
    };
    double alongU = 0, alongV = 0, gapU = 0, gapV = 0;
    const std::size_t nu = us_.size(), nv = vs_.size();
    for (std::size_t i = 0; i < nu; ++i) {
      for (std::size_t k = 0; k < nv; ++k) {
        if (i > 0) alongU += length(i * nv + k, (i - 1) * nv + k);
        if (k > 0) alongV += length(i * nv + k, i * nv + k - 1);
        gapU = std::max(gapU, length(k, (nu - 1) * nv + k));
      }
      gapV = std::max(gapV, length(i * nv, i * nv + nv - 1));
    }
    alongU /= static_cast<double>(nv);
    alongV /= static_cast<double>(nu);
    size_ = alongU + alongV;
    const double rangeU = us_.back() - us_.front();
    const double rangeV = vs_.back() - vs_.front();
    speedU_ = alongU / rangeU;
    speedV_ = alongV / rangeV;
    periodU_ = gapU <= 1e-9 * size_ ? rangeU : 0;
    periodV_ = gapV <= 1e-9 * size_ ? rangeV : 0;
    if (!(alongU > 0) || !(alongV > 0) || !std::isfinite(size_)) throw Undrawable("it has no area");
  }

  NurbsSurface nurbs_;
  std::size_t countU_, countV_;  // of control points
  std::vector<double> us_, vs_;  // of the grid
  std::vector<QENposition> grid_;
  double speedU_ = 1, speedV_ = 1;  // length for each unit of the parameters
  double periodU_ = 0, periodV_ = 0;
  double size_ = 0;
};

}  // namespace

SurfacePointer BSpline(NurbsSurface nurbs) {
  const std::size_t most = nurbs.points.size() + kHighestOrder;
  if (nurbs.orderU > kHighestOrder || nurbs.orderV > kHighestOrder ||
      nurbs.knotsU.size() <= nurbs.orderU || nurbs.knotsV.size() <= nurbs.orderV ||
      nurbs.knotsU.size() > most || nurbs.knotsV.size() > most) {
    throw Undrawable("its knots and control points do not match");
  }
  const std::size_t countU = nurbs.knotsU.size() - nurbs.orderU;
  const std::size_t countV = nurbs.knotsV.size() - nurbs.orderV;
  if (countU * countV != nurbs.points.size()) {
    throw Undrawable("its knots and control points do not match");
  }
  CheckKnots(nurbs.knotsU, nurbs.orderU, countU);
  CheckKnots(nurbs.knotsV, nurbs.orderV, countV);
  CheckWeights(nurbs.weights, nurbs.points.size());
  return std::make_shared<BSplineSurface>(std::move(nurbs));
}

SurfacePointer Extrusion(const Curve& curve, const QENvector& direction) {
  const double length = std::sqrt(direction.length_squared());
  if (!(length > 0) || !std::isfinite(length)) throw Undrawable("a direction of it is none");
  return std::make_shared<ExtrudedSurface>(curve, 1 / length * direction);
}

SurfacePointer Revolution(const Curve& curve, const Frame& frame) {
  return std::make_shared<RevolvedSurface>(curve, frame);
}

}  // namespace geometry

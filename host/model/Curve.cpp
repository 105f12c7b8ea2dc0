#include "model/Curve.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace geometry {

namespace {

constexpr double kTurn = 6.283185307179586;

bool IsFinite(const QENposition& point) {
  return std::isfinite(point.x()) && std::isfinite(point.y()) && std::isfinite(point.z());
}

// Adds the end of a span with what is needed between; `from` was added before.
class Sampler {
 public:
  Sampler(const Curve& curve, double tolerance, Budget& work)
      : curve_(curve), tolerance_(tolerance), work_(work) {}

  std::vector<QENposition> Run() {
    points_.push_back(At(curve_.breaks.front()));
    for (std::size_t i = 1; i < curve_.breaks.size(); ++i) {
      const QENposition begin = points_.back();
      AddSpan(curve_.breaks[i - 1], begin, curve_.breaks[i], At(curve_.breaks[i]), 0);
    }
    return std::move(points_);
  }

 private:
  QENposition At(double t) const {
    const QENposition point = curve_.at(t);
    if (!IsFinite(point)) throw Undrawable("its points are too far away");
    return point;
  }

  bool IsNear(const QENposition& point, const QENposition& begin, const QENposition& end) const {
    const QENvector chord = end - begin;
    const QENvector way = point - begin;
    const double length = chord.length_squared();
    const double along = length > 0 ? std::clamp(dot(way, chord) / length, 0.0, 1.0) : 0;
    return (way + -along * chord).length_squared() <= tolerance_ * tolerance_;
  }

  void AddSpan(double from, const QENposition& begin, double to, const QENposition& end,
               int depth) {
    constexpr int kDeepest = 14;
    const double middle = from + (to - from) / 2;
    if (curve_.isStraight || depth >= kDeepest || !(from < middle && middle < to)) {
      return points_.push_back(end);
    }
    constexpr std::size_t kEvaluations = 4;
    work_.Spend(kEvaluations * curve_.cost);
    const QENposition half = At(middle);
    const auto isNear = [&](double part) {
      return IsNear(At(from + part * (to - from)), begin, end);
    };
    if (IsNear(half, begin, end) && isNear(0.23) && isNear(0.77)) return points_.push_back(end);
    if (points_.size() > 500 + 64 * curve_.breaks.size()) {
      throw Undrawable("it takes too many points");
    }
    AddSpan(from, begin, middle, half, depth + 1);
    AddSpan(middle, half, to, end, depth + 1);
  }

  const Curve& curve_;
  double tolerance_;
  Budget& work_;
  std::vector<QENposition> points_;
};

}  // namespace

Curve Polyline(std::vector<QENposition> points) {
  if (points.size() < 2) throw Undrawable("it has fewer than two points");
  Curve curve;
  curve.isStraight = true;
  for (std::size_t i = 0; i < points.size(); ++i) curve.breaks.push_back(static_cast<double>(i));
  curve.at = [points =
                  std::make_shared<const std::vector<QENposition>>(std::move(points))](double t) {
    const auto i = std::min(static_cast<std::size_t>(t), points->size() - 2);
    const QENposition& begin = (*points)[i];
    return begin + (t - static_cast<double>(i)) * ((*points)[i + 1] - begin);
  };
  return curve;
}

Curve Arc(const QENposition& centre, const QENvector& x, const QENvector& y, double from,
          double to) {
  constexpr double kRounding = 1e-6;
  if (to - from > kTurn + kRounding) throw Undrawable("it is longer than a full turn");
  return Conic(
      centre, x, y, from, to, [](double t) { return std::cos(t); },
      [](double t) { return std::sin(t); });
}

Curve Conic(const QENposition& centre, const QENvector& x, const QENvector& y, double from,
            double to, std::function<double(double)> alongX, std::function<double(double)> alongY) {
  if (!std::isfinite(from) || !std::isfinite(to) || !(from < to)) {
    throw Undrawable("its parameters do not ascend");
  }
  // No chord of an arc spans more than a sixteenth of a turn.
  constexpr double kMostPieces = 1000;
  const auto pieces = static_cast<int>(std::ceil(std::min((to - from) / kTurn * 16, kMostPieces)));
  Curve curve;
  for (int i = 0; i < pieces; ++i) curve.breaks.push_back(from + i * (to - from) / pieces);
  curve.breaks.push_back(to);
  curve.at = [centre, x, y, alongX = std::move(alongX), alongY = std::move(alongY)](double t) {
    return centre + (alongX(t) * x + alongY(t) * y);
  };
  return curve;
}
Curve Reversed(Curve curve) {
  std::reverse(curve.breaks.begin(), curve.breaks.end());
  for (double& t : curve.breaks) t = -t;
  curve.at = [at = std::move(curve.at)](double t) { return at(-t); };
  return curve;
}

Curve Between(Curve curve, double from, double to) {
  if (!(from < to)) throw Undrawable("its parameters do not ascend");
  std::vector<double> breaks{from};
  for (const double t : curve.breaks) {
    if (from < t && t < to) breaks.push_back(t);
  }
  breaks.push_back(to);
  curve.breaks = std::move(breaks);
  return curve;
}

double Nearest(const Curve& curve, const QENposition& point) {
  const auto distance = [&](double t) { return (curve.at(t) - point).length_squared(); };
  std::size_t best = 0;
  double shortest = std::numeric_limits<double>::max();
  for (std::size_t i = 0; i < curve.breaks.size(); ++i) {
    const double length = distance(curve.breaks[i]);
    if (length < shortest) {
      shortest = length;
      best = i;
    }
  }
  double low = curve.breaks[best > 0 ? best - 1 : 0];
  double high = curve.breaks[std::min(best + 1, curve.breaks.size() - 1)];
  constexpr int kRounds = 60;
  for (int round = 0; round < kRounds; ++round) {
    const double first = low + (high - low) / 3;
    const double second = high - (high - low) / 3;
    if (distance(first) < distance(second)) {
      high = second;
    } else {
      low = first;
    }
  }
  const double found = low + (high - low) / 2;
  return distance(found) < shortest ? found : curve.breaks[best];
}

std::vector<QENposition> Sample(const Curve& curve, double tolerance, Budget& work) {
  return Sampler(curve, tolerance, work).Run();
}

}  // namespace geometry

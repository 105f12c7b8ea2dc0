// B-splines and polynomial splines.

#include <algorithm>
#include <cmath>
#include <memory>

#include "model/Curve.h"

namespace geometry {

namespace {

constexpr std::size_t kMostBreaks = 20'000;

void RequireAscending(const std::vector<double>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!std::isfinite(values[i]) || (i > 0 && values[i] < values[i - 1])) {
      throw Undrawable("its knots do not ascend");
    }
  }
}

QENposition PointOn(const Nurbs& nurbs, double t) {
  const Basis basis(nurbs.knots, nurbs.order, nurbs.points.size(), t);
  QENvector sum;
  double weights = 0;
  for (std::size_t i = 0; i < nurbs.order; ++i) {
    const std::size_t k = basis.first + i;
    const double weight = basis.values[i] * (nurbs.weights.empty() ? 1 : nurbs.weights[k]);
    weights += weight;
    sum = sum + weight * (nurbs.points[k] - QENposition());
  }
  return QENposition() + 1 / weights * sum;
}

void Check(const Nurbs& nurbs) {
  CheckKnots(nurbs.knots, nurbs.order, nurbs.points.size());
  CheckWeights(nurbs.weights, nurbs.points.size());
}
}  // namespace

void CheckKnots(const std::vector<double>& knots, std::size_t order, std::size_t points) {
  if (order < 2 || order > kHighestOrder) throw Undrawable("its order is out of range");
  if (points < order || knots.size() != points + order) {
    throw Undrawable("its knots and control points do not match");
  }
  RequireAscending(knots);
}

void CheckWeights(const std::vector<double>& weights, std::size_t points) {
  if (!weights.empty() && weights.size() != points) {
    throw Undrawable("its weights and control points do not match");
  }
  for (const double weight : weights) {
    if (!std::isfinite(weight) || !(weight > 0)) throw Undrawable("its weights are not positive");
  }
}

// By the recurrence of Cox and de Boor.
Basis::Basis(const std::vector<double>& knots, std::size_t order, std::size_t points, double t) {
  const auto from = knots.begin() + static_cast<std::ptrdiff_t>(order);
  const auto to = knots.begin() + static_cast<std::ptrdiff_t>(points);
  const auto span = static_cast<std::size_t>(std::upper_bound(from, to, t) - knots.begin()) - 1;
  first = span + 1 - order;
  values[0] = 1;
  for (std::size_t degree = 1; degree < order; ++degree) {
    double saved = 0;
    for (std::size_t i = 0; i < degree; ++i) {
      const double high = knots[span + 1 + i];
      const double low = knots[span + 1 + i - degree];
      const double part = high > low ? values[i] / (high - low) : 0;
      values[i] = saved + (high - t) * part;
      saved = (t - low) * part;
    }
    values[degree] = saved;
  }
}

std::vector<double> PiecesOf(const std::vector<double>& knots, std::size_t order,
                             std::size_t points, double from, double to) {
  from = std::max(from, knots[order - 1]);
  to = std::min(to, knots[points]);
  if (!(from < to)) throw Undrawable("its parameters do not ascend");
  std::vector<double> breaks{from};
  for (auto knot = std::upper_bound(knots.begin(), knots.end(), from); breaks.back() < to; ++knot) {
    const double begin = breaks.back();
    const double next = knot == knots.end() ? to : std::min(*knot, to);
    const auto pieces = static_cast<double>(order - 1);
    for (double i = 1; next > begin && i < pieces; ++i) {
      breaks.push_back(begin + i * (next - begin) / pieces);
    }
    if (next > begin) breaks.push_back(next);
    if (breaks.size() > kMostBreaks) throw Undrawable("it takes too many points");
  }
  return breaks;
}

Curve BSpline(Nurbs nurbs) {
  Check(nurbs);
  const double from = nurbs.knots[nurbs.order - 1];
  const double to = nurbs.knots[nurbs.points.size()];
  return BSpline(std::move(nurbs), from, to);
}

Curve BSpline(Nurbs nurbs, double from, double to) {
  Check(nurbs);
  Curve curve;
  curve.breaks = PiecesOf(nurbs.knots, nurbs.order, nurbs.points.size(), from, to);
  curve.isStraight = nurbs.order == 2;
  curve.cost = nurbs.order * nurbs.order;
  curve.at = [nurbs = std::make_shared<const Nurbs>(std::move(nurbs))](double t) {
    return PointOn(*nurbs, t);
  };
  return curve;
}

Curve Polynomials(std::vector<double> knots, std::vector<std::size_t> orders,
                  std::vector<QENposition> coefficients, bool normalized) {
  RequireAscending(knots);
  std::vector<std::size_t> begins;
  std::size_t total = 0;
  Curve curve;
  for (std::size_t i = 0; i < orders.size() && i + 1 < knots.size(); ++i) {
    if (orders[i] == 0 || orders[i] > kHighestOrder) throw Undrawable("its order is out of range");
    begins.push_back(total);
    total += orders[i];
    const auto pieces = static_cast<double>(std::max<std::size_t>(orders[i] - 1, 1));
    for (double k = 0; knots[i] < knots[i + 1] && k < pieces; ++k) {
      curve.breaks.push_back(knots[i] + k * (knots[i + 1] - knots[i]) / pieces);
    }
    if (curve.breaks.size() > kMostBreaks) throw Undrawable("it takes too many points");
  }
  if (orders.empty() || knots.size() != orders.size() + 1 || total != coefficients.size()) {
    throw Undrawable("its knots, orders and coefficients do not match");
  }
  curve.breaks.push_back(knots.back());
  if (curve.breaks.size() < 2) throw Undrawable("its parameters do not ascend");
  begins.push_back(total);
  struct Spline {
    std::vector<double> knots;
    std::vector<std::size_t> begins;
    std::vector<QENposition> coefficients;
  };
  curve.at = [normalized,
              spline = std::make_shared<const Spline>(
                  Spline{std::move(knots), std::move(begins), std::move(coefficients)})](double t) {
    const auto last = spline->knots.end() - 1;
    const auto knot = std::upper_bound(spline->knots.begin() + 1, last, t) - 1;
    const auto piece = static_cast<std::size_t>(knot - spline->knots.begin());
    const double distance = normalized ? (t - *knot) / (*(knot + 1) - *knot) : t - *knot;
    QENvector sum;
    for (std::size_t i = spline->begins[piece + 1]; i-- > spline->begins[piece];) {
      sum = (spline->coefficients[i] - QENposition()) + distance * sum;
    }
    return QENposition() + sum;
  };
  return curve;
}

}  // namespace geometry

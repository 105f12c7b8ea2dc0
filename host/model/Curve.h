#pragma once

#include <functional>
#include <stdexcept>
#include <vector>

#include "orvo_kernel/geometry.h"

// Curves of any format as polylines, in the model's unit of length.
namespace geometry {

// A shape that can't be drawn; the message says why.
class Undrawable : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What may still be spent on shapes, so that none takes without end, whatever a document says.
class Budget {
 public:
  explicit Budget(std::size_t left) : left_(left) {}
  // Throws Undrawable when there is not so much left.
  void Spend(std::size_t cost) {
    if (cost > left_) throw Undrawable("the picture would be too large");
    left_ -= cost;
  }

 private:
  std::size_t left_;
};

// A piece of a curve, smooth between neighbouring breaks.
struct Curve {
  std::vector<double> breaks;  // parameters from begin to end, ascending; two or more
  std::function<QENposition(double)> at;
  bool isStraight = false;  // between neighbouring breaks
  std::size_t cost = 10;    // of a point, about in comparisons of two
};

// Each throws Undrawable for what is no curve, holds numbers that are not finite or is too costly.

// A polyline of two or more points.
Curve Polyline(std::vector<QENposition> points);
// An arc of an ellipse, centre + cos(t) x + sin(t) y for t between two angles in radians, the first
// below the second by a full turn at most.
Curve Arc(const QENposition& centre, const QENvector& x, const QENvector& y, double from,
          double to);
// The same with other functions than sine and cosine, for parabolas and hyperbolas.
Curve Conic(const QENposition& centre, const QENvector& x, const QENvector& y, double from,
            double to, std::function<double(double)> alongX, std::function<double(double)> alongY);

// A B-spline curve by its full knot vector; without weights all are 1.
struct Nurbs {
  std::size_t order = 0;  // degree + 1
  std::vector<double> knots;
  std::vector<QENposition> points;
  std::vector<double> weights;
};
Curve BSpline(Nurbs nurbs);
// Only what lies between two parameters.
Curve BSpline(Nurbs nurbs, double from, double to);

// The B-spline functions that are not zero at a parameter: those from `first` on, one for each of
// the order.
constexpr std::size_t kHighestOrder = 30;
struct Basis {
  // REQUIRES: CheckKnots.
  Basis(const std::vector<double>& knots, std::size_t order, std::size_t points, double t);
  std::size_t first;
  double values[kHighestOrder];
};
// Throw Undrawable where a B-spline of so many control points is none.
void CheckKnots(const std::vector<double>& knots, std::size_t order, std::size_t points);
void CheckWeights(const std::vector<double>& weights, std::size_t points);
// Parameters between two, with all knots, so close that a polynomial has no more than one bend
// between them. REQUIRES: CheckKnots.
std::vector<double> PiecesOf(const std::vector<double>& knots, std::size_t order,
                             std::size_t points, double from, double to);

// Polynomials: between knots i and i + 1 one of orders[i] coefficients, which follow each other in
// ascending powers of the distance from knot i; `normalized` measures that distance from 0 to 1.
Curve Polynomials(std::vector<double> knots, std::vector<std::size_t> orders,
                  std::vector<QENposition> coefficients, bool normalized);

// The curve from end to begin.
Curve Reversed(Curve curve);
// The curve between two parameters. Throws Undrawable when the first is not below the second.
Curve Between(Curve curve, double from, double to);
// The parameter at which a curve comes nearest to a point.
double Nearest(const Curve& curve, const QENposition& point);

// Points on a curve, from begin to end, whose chords deviate by the tolerance at most. Throws
// Undrawable when that takes too many points or too much work, or a point is not finite.
std::vector<QENposition> Sample(const Curve& curve, double tolerance, Budget& work);

}  // namespace geometry

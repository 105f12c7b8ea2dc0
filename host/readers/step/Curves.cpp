// Curves in space.

#include <algorithm>
#include <cmath>
#include <iterator>

#include "readers/step/Geometry.h"

namespace step {

namespace {

using geometry::Curve;
using geometry::Undrawable;

class CurveReader {
 public:
  CurveReader(Reading& reading, const Scale& scale) : reading_(reading), scale_(scale) {}

  // Along the curve's own direction, from `ends`' first to its second.
  std::vector<Curve> Read(Id id, const std::optional<Ends>& ends, int depth = 0) {
    constexpr int kDeepest = 10;
    scale_.budget->Spend(1);
    if (depth > kDeepest) throw Unreadable(id, "its curves refer to each other without end");
    const Instance& instance = reading_.Get(id);
    const Record& first = instance.records.front();
    for (const char* onSurface : {"SURFACE_CURVE", "SEAM_CURVE", "INTERSECTION_CURVE"}) {
      if (instance.Find(onSurface) != nullptr) return Read(first.Reference(1), ends, depth + 1);
    }
    if (instance.Find("LINE") != nullptr) return {Line(ends)};
    if (instance.Find("CIRCLE") != nullptr || instance.Find("ELLIPSE") != nullptr ||
        instance.Find("HYPERBOLA") != nullptr || instance.Find("PARABOLA") != nullptr) {
      return {Conic(first, ends)};
    }
    if (instance.Find("POLYLINE") != nullptr) {
      return Part(geometry::Polyline(PointsOf(reading_, first.List(1), scale_)), ends);
    }
    if (instance.Find("TRIMMED_CURVE") != nullptr) return Trimmed(first, depth);
    if (instance.Find("COMPOSITE_CURVE") != nullptr) return Composite(first, depth);
    if (instance.Find("B_SPLINE_CURVE_WITH_KNOTS") != nullptr) return Part(BSpline(instance), ends);
    throw Unreadable(id, "a curve of its kind is not drawn");
  }

 private:
  static Curve Line(const std::optional<Ends>& ends) {
    if (!ends.has_value()) throw Undrawable("it has no ends");
    return geometry::Polyline({ends->first, ends->second});
  }

  // Parameters as the forms have them: x = a cos t and so on.
  Curve Conic(const Record& record, const std::optional<Ends>& ends) const {
    const Placement at = reading_.PlacementOf(record.Reference(1), scale_.length);
    const QENvector y = cross(at.axis, at.x);
    const double a = scale_.length * record.Number(2);
    const bool isOpen = record.name == "HYPERBOLA" || record.name == "PARABOLA";
    const double b = record.name == "PARABOLA" ? 2 * a
                     : record.name == "CIRCLE" ? a
                                               : scale_.length * record.Number(3);
    if (!(a > 0) || !(b > 0)) throw Undrawable("a radius of it is not positive");
    const auto parameter = [&](const QENposition& point) {
      const QENvector way = point - at.origin;
      const double alongY = dot(way, y) / b;
      if (record.name == "HYPERBOLA") return std::asinh(alongY);
      return record.name == "PARABOLA" ? alongY : std::atan2(alongY, dot(way, at.x) / a);
    };
    constexpr double kTurn = 6.283185307179586;
    double from = 0;
    double to = kTurn;
    if (ends.has_value()) {
      from = parameter(ends->first);
      to = parameter(ends->second);
      if (!isOpen && to <= from + 1e-9) to += kTurn;
    } else if (isOpen) {
      throw Undrawable("it has no ends");
    }
    if (!isOpen) return geometry::Arc(at.origin, a * at.x, b * y, from, to);
    if (record.name == "PARABOLA") {
      return geometry::Conic(
          at.origin, a * at.x, b * y, from, to, [](double t) { return t * t; },
          [](double t) { return t; });
    }
    return geometry::Conic(
        at.origin, a * at.x, b * y, from, to, [](double t) { return std::cosh(t); },
        [](double t) { return std::sinh(t); });
  }

  // What lies between the ends, over the start of a closed curve if need be.
  static std::vector<Curve> Part(const Curve& curve, const std::optional<Ends>& ends) {
    constexpr double kRounding = 1e-6;
    if (!ends.has_value()) return {curve};
    const double begin = curve.breaks.front();
    const double end = curve.breaks.back();
    const double near = kRounding * (end - begin);
    const double reach = (curve.at(end) - curve.at(begin)).length_squared();
    const bool isClosed =
        reach <= 1e-12 * (curve.at((begin + end) / 2) - curve.at(begin)).length_squared();
    double from = geometry::Nearest(curve, ends->first);
    double to = geometry::Nearest(curve, ends->second);
    if (from < begin + near || (isClosed && from > end - near)) from = begin;
    if (to > end - near || (isClosed && to < begin + near)) to = end;
    if (from < to) return {geometry::Between(curve, from, to)};
    if (!isClosed) throw Undrawable("its curve does not end at its vertices");
    return {geometry::Between(curve, from, end), geometry::Between(curve, begin, to)};
  }

  // Trimmed by points or, where there are none, by parameters.
  std::vector<Curve> Trimmed(const Record& record, int depth) {
    const bool isSame = record.Enumeration(4) != "F";
    Ends ends{Trim(record, 2), Trim(record, 3)};
    if (!isSame) std::swap(ends.first, ends.second);
    std::vector<Curve> curves = Read(record.Reference(1), ends, depth + 1);
    return isSame ? curves : Turned(std::move(curves));
  }

  QENposition Trim(const Record& record, std::uint32_t index) {
    for (const Value& value : record.List(index)) {
      if (value.Reference() != 0) return reading_.PointOf(value.Reference(), scale_.length);
    }
    const Value& list = record.List(index);
    if (list.size == 0) throw Undrawable("it has no ends");
    const double t = NumberOf(record.of, list.items[0].Untyped());
    const Record& basis = reading_.Get(record.Reference(1)).records.front();
    if (basis.name == "LINE") {
      const QENposition origin = reading_.PointOf(basis.Reference(1), scale_.length);
      return origin + t * VectorOf(reading_, basis.Reference(2), scale_);
    }
    if (basis.name == "CIRCLE" || basis.name == "ELLIPSE") {
      const Placement at = reading_.PlacementOf(basis.Reference(1), scale_.length);
      const double a = scale_.length * basis.Number(2);
      const double b = basis.name == "CIRCLE" ? a : scale_.length * basis.Number(3);
      const double angle = scale_.radians * t;
      return at.origin + (a * std::cos(angle) * at.x + b * std::sin(angle) * cross(at.axis, at.x));
    }
    const std::vector<Curve> whole = Read(record.Reference(1), std::nullopt, 1);
    if (whole.size() != 1) throw Undrawable("its ends are not points");
    return whole.front().at(
        std::clamp(t, whole.front().breaks.front(), whole.front().breaks.back()));
  }

  std::vector<Curve> Composite(const Record& record, int depth) {
    std::vector<Curve> curves;
    for (const Value& value : record.List(1)) {
      const Record& segment = reading_.Get(value.Reference()).As("COMPOSITE_CURVE_SEGMENT");
      std::vector<Curve> more = Read(segment.Reference(2), std::nullopt, depth + 1);
      if (segment.Enumeration(1) == "F") more = Turned(std::move(more));
      std::move(more.begin(), more.end(), std::back_inserter(curves));
    }
    return curves;
  }

  // In a complex instance each entity has a record of its own.
  Curve BSpline(const Instance& instance) {
    const Record* const own = instance.Find("B_SPLINE_CURVE");
    const Record& knots = *instance.Find("B_SPLINE_CURVE_WITH_KNOTS");
    const Record& record = own != nullptr ? *own : knots;
    const std::uint32_t at = own != nullptr ? 0 : 1;
    const std::uint32_t atKnots = own != nullptr ? 0 : 6;
    geometry::Nurbs nurbs;
    nurbs.order = static_cast<std::size_t>(std::clamp(record.Number(at), 0.0, 100.0)) + 1;
    nurbs.points = PointsOf(reading_, record.List(at + 1), scale_);
    nurbs.knots =
        KnotsOf(instance.id, knots.List(atKnots), knots.List(atKnots + 1), nurbs.points.size());
    if (const Record* rational = instance.Find("RATIONAL_B_SPLINE_CURVE")) {
      nurbs.weights = NumbersOf(instance.id, rational->List(rational->count - 1));
    }
    return geometry::BSpline(std::move(nurbs));
  }

 public:
  static std::vector<Curve> Turned(std::vector<Curve> curves) {
    std::reverse(curves.begin(), curves.end());
    for (Curve& curve : curves) curve = geometry::Reversed(std::move(curve));
    return curves;
  }

 private:
  Reading& reading_;
  const Scale& scale_;
};

}  // namespace

std::vector<Curve> CurveOf(Reading& reading, Id curve, const Scale& scale,
                           const std::optional<Ends>& ends, bool isSame) {
  CurveReader reader(reading, scale);
  if (isSame || !ends.has_value()) return reader.Read(curve, ends);
  return CurveReader::Turned(reader.Read(curve, Ends{ends->second, ends->first}));
}

std::vector<QENposition> PointsOf(Reading& reading, const Value& list, const Scale& scale) {
  scale.budget->Spend(list.size);
  std::vector<QENposition> points;
  for (const Value& point : list)
    points.push_back(reading.PointOf(point.Reference(), scale.length));
  return points;
}

QENvector VectorOf(Reading& reading, Id id, const Scale& scale) {
  const Record& vector = reading.Get(id).As("VECTOR");
  const double length = scale.length * vector.Number(vector.count - 1);
  return length * DirectionOf(reading, vector.Reference(vector.count - 2));
}

QENvector DirectionOf(Reading& reading, Id id) {
  const Record& direction = reading.Get(id).As("DIRECTION");
  const std::vector<double> way = NumbersOf(id, direction.List(direction.count - 1));
  if (way.size() != 3) throw Unreadable(id, "a direction has three components");
  const QENunit_vector unit(way[0], way[1], way[2]);
  return reading.Placed(QENposition(unit.x(), unit.y(), unit.z())) - reading.Placed(QENposition());
}

std::vector<double> NumbersOf(Id of, const Value& list) {
  std::vector<double> numbers;
  for (const Value& number : list) numbers.push_back(NumberOf(of, number.Untyped()));
  return numbers;
}

std::vector<double> KnotsOf(Id of, const Value& multiplicities, const Value& knots,
                            std::size_t points) {
  const std::vector<double> times = NumbersOf(of, multiplicities);
  const std::vector<double> values = NumbersOf(of, knots);
  std::vector<double> all;
  for (std::size_t i = 0; i < std::min(times.size(), values.size()); ++i) {
    for (double k = 0; k < times[i]; ++k) {
      if (all.size() > 2 * points + 100) throw Unreadable(of, "it has too many knots");
      all.push_back(values[i]);
    }
  }
  return all;
}

}  // namespace step

// Curves in space and transforms.

#include "readers/qif/Geometry.h"

#include <algorithm>
#include <iterator>

namespace qif {

namespace {

class CurveReader {
 public:
  CurveReader(const Reading& reading, const Motion& motion) : reading_(reading), motion_(motion) {}

  // `core` is Segment13Core, Nurbs13Core ...
  std::vector<geometry::Curve> Read(Element core, int depth = 0) {
    constexpr int kDeepest = 10;
    const std::string_view kind = NameOf(core);
    if (kind == "Segment13Core") {
      return {Segment(core)};
    }
    if (kind == "ArcCircular13Core") return {Arc(core, "Radius", "Radius", 1)};
    if (kind == "ArcConic13Core") return {Ellipse(core)};
    if (kind == "Nurbs13Core") return {BSpline(core)};
    if (kind == "Spline13Core") return {Polynomials(core)};
    if (kind == "Polyline13Core") return {geometry::Polyline(PointsOf(core, "Points", motion_))};
    if (kind != "Aggregate13Core" || depth > kDeepest) {
      throw Unreadable(core, "a curve of its kind is not drawn");
    }
    std::vector<geometry::Curve> curves;
    for (const Element part : Child(core, "SubCurves").children()) {
      std::vector<geometry::Curve> more = Read(part.first_child(), depth + 1);
      if (IsSet(part, "turned")) {
        std::reverse(more.begin(), more.end());
        for (geometry::Curve& curve : more) curve = geometry::Reversed(std::move(curve));
      }
      std::move(more.begin(), more.end(), std::back_inserter(curves));
    }
    return curves;
  }

 private:
  QENposition Point(Element parent, const char* name) const {
    return motion_(ShapePoint(reading_, Child(parent, name)));
  }

  QENvector Vector(Element parent, const char* name) const {
    return motion_(reading_.units.Vector(Child(parent, name)));
  }

  static std::pair<double, double> Domain(Element core) {
    const std::vector<double> domain = NumberListOf(core, core.attribute("domain").value());
    if (domain.size() != 2) throw Unreadable(core, "its domain is not two numbers");
    return {domain[0], domain[1]};
  }

  // Its domain is a part of the way from one point to the other.
  geometry::Curve Segment(Element core) const {
    const QENposition start = Point(core, "StartPoint");
    const QENvector way = Point(core, "EndPoint") - start;
    const auto [from, to] = Domain(core);
    return geometry::Polyline({start + from * way, start + to * way});
  }

  geometry::Curve Arc(Element core, const char* a, const char* b, double factor) const {
    const QENvector x = Vector(core, "DirBeg");
    const QENvector y = cross(Vector(core, "Normal"), x);
    const auto [from, to] = Domain(core);
    return geometry::Arc(Point(core, "Center"), factor * NumberOf(Child(core, a)) * x,
                         factor * NumberOf(Child(core, b)) * y, from, to);
  }

  // A and B are its diameters.
  geometry::Curve Ellipse(Element core) const {
    if (std::string_view(core.attribute("form").value()) != "ELLIPSE") {
      throw Unreadable(core, "a conic arc of its form is not drawn");
    }
    return Arc(core, "A", "B", 0.5);
  }

  geometry::Curve BSpline(Element core) const {
    geometry::Nurbs nurbs;
    nurbs.order = static_cast<std::size_t>(std::clamp(NumberOf(Child(core, "Order")), 0.0, 100.0));
    nurbs.knots = RealsOf(core, "Knots");
    nurbs.points = PointsOf(core, "CPs", motion_);
    nurbs.weights = RealsOf(core, "Weights");
    const auto [from, to] = Domain(core);
    return geometry::BSpline(std::move(nurbs), from, to);
  }

  // The constant coefficients are points, all others vectors.
  geometry::Curve Polynomials(Element core) const {
    std::vector<std::size_t> orders;
    for (const double order : RealsOf(core, "Orders")) {
      orders.push_back(static_cast<std::size_t>(std::clamp(order, 0.0, 100.0)));
    }
    std::vector<QENposition> coefficients = PointsOf(core, "Coefficients", motion_);
    const QENvector way = QENposition() - motion_.origin;
    std::size_t next = 0;
    std::size_t piece = 0;
    for (std::size_t i = 0; i < coefficients.size(); ++i) {
      if (i != next) {
        coefficients[i] = coefficients[i] + way;
      } else if (piece < orders.size()) {
        next += orders[piece++];
      }
    }
    return geometry::Polynomials(RealsOf(core, "Knots"), std::move(orders), std::move(coefficients),
                                 IsSet(core, "normalized"));
  }

  const Reading& reading_;
  const Motion& motion_;
};

}  // namespace

bool IsSet(Element element, const char* name) {
  const std::string_view text = element.attribute(name).value();
  const bool isSet = text == "true" || text == "1";
  if (!isSet && !text.empty() && text != "false" && text != "0") {
    throw Unreadable(element, std::string(name) + " " + Quote(text) + " is neither true nor false");
  }
  return isSet;
}

Motion Motion::operator*(const Motion& inner) const {
  return {(*this)(inner.x), (*this)(inner.y), (*this)(inner.z), (*this)(inner.origin)};
}

QENposition ShapePoint(const Reading& reading, Element element) {
  const QENposition point = reading.units.Point(element);
  return QENposition() + reading.units.Scale() * (point - QENposition());
}

Motion MotionOf(Reading& reading, Element element) {
  const Element reference = Child(element, "Transform");
  if (!reference) return {};
  const Element id = Child(reference, "Id");
  const Document::Entry* const entry = reading.document.Find(id ? id : reference);
  if (entry == nullptr) throw Unreadable(element, "its transform does not exist");
  Motion motion;
  if (const Element rotation = Child(entry->element, "Rotation")) {
    motion.x = reading.units.Vector(Child(rotation, "XDirection"));
    motion.y = reading.units.Vector(Child(rotation, "YDirection"));
    motion.z = reading.units.Vector(Child(rotation, "ZDirection"));
  }
  if (const Element origin = Child(entry->element, "Origin")) {
    motion.origin = ShapePoint(reading, origin);
  }
  return motion;
}

std::vector<geometry::Curve> CurveOf(Reading& reading, Element curve, const Motion& motion) {
  const Motion whole = motion * MotionOf(reading, curve);
  return CurveReader(reading, whole).Read(curve.first_child());
}

}  // namespace qif

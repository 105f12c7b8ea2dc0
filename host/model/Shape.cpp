#include "model/Shape.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace geometry {

namespace {

// The smallest box around points, along the axes.
class Box {
 public:
  void Add(const QENposition& point) {
    const double xyz[] = {point.x(), point.y(), point.z()};
    for (int i = 0; i < 3; ++i) {
      if (!std::isfinite(xyz[i])) return;
      low_[i] = std::min(low_[i], xyz[i]);
      high_[i] = std::max(high_[i], xyz[i]);
    }
  }
  double Diagonal() const {
    if (low_[0] > high_[0]) return 0;
    return std::hypot(high_[0] - low_[0], high_[1] - low_[1], high_[2] - low_[2]);
  }

 private:
  static constexpr double kFar = std::numeric_limits<double>::max();
  double low_[3] = {kFar, kFar, kFar};
  double high_[3] = {-kFar, -kFar, -kFar};
};

class Drawer {
 public:
  Drawer(Shape shape, std::size_t mostPoints)
      : shape_(std::move(shape)),
        points_(mostPoints),
        work_(1000 * mostPoints),
        size_(SizeOf(shape_)),
        tolerance_(size_ / 2500) {}

  std::vector<Undrawn> Draw(Drawing& drawing) {
    edges_.resize(shape_.edges.size());
    for (std::size_t i = 0; i < shape_.edges.size(); ++i) {
      Try(false, i, [&] {
        edges_[i] = PointsOf(shape_.edges[i]);
        drawing.edges.push_back({shape_.edges[i].id, Drawn(edges_[i]), shape_.edges[i].isHidden});
      });
      shape_.edges[i].curves.clear();
    }
    for (std::size_t i = 0; i < shape_.faces.size(); ++i) {
      FaceShape& face = shape_.faces[i];
      Try(true, i, [&] {
        Mesh mesh = MeshOf(face);
        if (face.isTurned) {
          for (auto& triangle : mesh.triangles) std::swap(triangle[1], triangle[2]);
        }
        drawing.faces.push_back({face.id, Drawn(mesh.points), std::move(mesh.triangles),
                                 std::move(face.edges), face.isHidden});
      });
    }
    return std::move(undrawn_);
  }

 private:
  template <typename Work>
  void Try(bool isFace, std::size_t index, Work work) {
    try {
      work();
    } catch (const Undrawable& problem) {
      undrawn_.push_back({isFace, index, problem.what()});
    }
  }

  static std::vector<DrawnPoint> Drawn(const std::vector<QENposition>& points) {
    std::vector<DrawnPoint> drawn;
    drawn.reserve(points.size());
    for (const QENposition& point : points) drawn.push_back({point.x(), point.y(), point.z()});
    return drawn;
  }

  Mesh MeshOf(FaceShape& face) {
    if (!face.mesh.triangles.empty()) {
      points_.Spend(face.mesh.points.size());
      return std::move(face.mesh);
    }
    std::vector<std::vector<QENposition>> loops = std::move(face.polygons);
    for (const std::vector<EdgeUse>& uses : face.loops) {
      if (!IsSeam(uses)) loops.push_back(PointsOf(uses));
    }
    if (face.surface == nullptr) throw Undrawable("it has no surface");
    Mesh mesh = geometry::MeshOf(face.surface, loops, tolerance_, work_);
    points_.Spend(mesh.points.size());
    return mesh;
  }

  // A loop along an edge and back bounds nothing: so a whole sphere has one.
  static bool IsSeam(const std::vector<EdgeUse>& loop) {
    return loop.size() == 2 && loop[0].edge == loop[1].edge && loop[0].isTurned != loop[1].isTurned;
  }

  std::vector<QENposition> PointsOf(const std::vector<EdgeUse>& loop) {
    std::vector<QENposition> points;
    for (const EdgeUse& use : loop) {
      std::vector<QENposition> more = edges_[use.edge];
      if (more.empty()) throw Undrawable("an edge of it is not");
      points_.Spend(more.size());
      if (use.isTurned) std::reverse(more.begin(), more.end());
      if (!points.empty()) {
        if (!IsNear(points.back(), more.front())) throw Undrawable("its edges do not join");
        points.pop_back();
      }
      points.insert(points.end(), more.begin(), more.end());
    }
    if (points.empty() || !IsNear(points.back(), points.front())) {
      throw Undrawable("its edges do not join");
    }
    points.pop_back();
    return points;
  }

  // Hidden geometry may be much larger than the part.
  static double SizeOf(const Shape& shape) {
    Box visible, all;
    for (const EdgeShape& edge : shape.edges) {
      for (const Curve& curve : edge.curves) {
        for (const double t : curve.breaks) (edge.isHidden ? all : visible).Add(curve.at(t));
      }
    }
    for (const FaceShape& face : shape.faces) {
      for (const QENposition& point : face.mesh.points) (face.isHidden ? all : visible).Add(point);
    }
    return visible.Diagonal() > 0 ? visible.Diagonal() : all.Diagonal();
  }

  // The points of an edge, of which the first and the last lie at its vertices. What is further
  // away from them than rounding explains is read wrongly, or wrong.
  std::vector<QENposition> PointsOf(const EdgeShape& edge) {
    std::vector<QENposition> points;
    for (const Curve& curve : edge.curves) {
      std::vector<QENposition> more = Sample(curve, tolerance_, work_);
      points_.Spend(more.size());
      if (!points.empty()) {
        if (!IsNear(points.back(), more.front())) throw Undrawable("its curves do not join");
        points.pop_back();
      }
      points.insert(points.end(), more.begin(), more.end());
    }
    if (points.size() < 2) throw Undrawable("it has no curve");
    if (edge.ends.has_value()) {
      if (!IsNear(points.front(), edge.ends->first) || !IsNear(points.back(), edge.ends->second)) {
        throw Undrawable("its curve does not end at its vertices");
      }
      points.front() = edge.ends->first;
      points.back() = edge.ends->second;
    }
    return points;
  }

  bool IsNear(const QENposition& a, const QENposition& b) const {
    const double most = size_ / 1000;
    return (a - b).length_squared() <= most * most;
  }

  Shape shape_;
  std::vector<std::vector<QENposition>> edges_;  // points; none where it is not drawn
  Budget points_, work_;
  double size_;
  double tolerance_;
  std::vector<Undrawn> undrawn_;
};

}  // namespace

std::vector<Undrawn> Draw(Shape shape, std::size_t mostPoints, Drawing& drawing) {
  return Drawer(std::move(shape), mostPoints).Draw(drawing);
}

}  // namespace geometry

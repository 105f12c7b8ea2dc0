// Loops in space as polygons in the map of a surface.

#include <algorithm>
#include <cmath>
#include <map>

#include "model/Curve.h"
#include "model/Sewing.h"
#include "model/Triangles.h"

namespace geometry {

namespace {

constexpr std::size_t kMostCorners = 6000;  // of a face: the time grows with their square

// A loop in the map. Round a periodic surface it ends some periods away from where it began.
struct Chain {
  Polygon corners;
  int turnsX = 0;
  int turnsY = 0;
};

bool IsInside(const Polygon& polygon, const Flat& place) {
  bool isInside = false;
  for (std::size_t i = 0, k = polygon.size() - 1; i < polygon.size(); k = i++) {
    const Flat& a = polygon[i].place;
    const Flat& b = polygon[k].place;
    if ((a.y > place.y) == (b.y > place.y)) continue;
    if (place.x < a.x + (place.y - a.y) / (b.y - a.y) * (b.x - a.x)) isInside = !isInside;
  }
  return isInside;
}

class Flattener {
 public:
  Flattener(const Surface& surface, double tolerance, Mesh& mesh, Budget& work)
      : surface_(surface),
        periods_(surface.Periods()),
        pole_(surface.Pole()),
        tolerance_(tolerance),
        mesh_(mesh),
        work_(work) {}

  // On a surface that closes a loop the other way round bounds all the rest: there, `isStrict`.
  Polygon Flatten(const std::vector<std::vector<QENposition>>& loops, bool isStrict) {
    std::vector<Polygon> closed;
    std::vector<Chain> round;
    for (const std::vector<QENposition>& loop : loops) {
      Chain chain = ChainOf(loop);
      if (chain.turnsX != 0 || chain.turnsY != 0) {
        round.push_back(std::move(chain));
      } else {
        closed.push_back(std::move(chain.corners));
      }
    }
    Polygon outer = round.empty() ? TakeOuter(closed) : CloseRound(round, closed);
    if (AreaOf(outer) < 0) {
      if (isStrict) throw Undrawable("its loops do not bound it");
      std::reverse(outer.begin(), outer.end());
      for (Polygon& hole : closed) std::reverse(hole.begin(), hole.end());
    }
    for (Polygon& hole : closed) {
      if (AreaOf(hole) > 0) std::reverse(hole.begin(), hole.end());
      MoveInto(outer, hole);
    }
    return CutOpen(std::move(outer), std::move(closed), work_);
  }

 private:
  std::uint32_t PointFor(const QENposition& point) {
    const auto next = static_cast<std::uint32_t>(mesh_.points.size());
    const auto [known, isNew] =
        points_.emplace(std::array<double, 3>{point.x(), point.y(), point.z()}, next);
    if (isNew) mesh_.points.push_back(point);
    return known->second;
  }

  bool IsPole(const Flat& place) const {
    return pole_.has_value() && std::abs(place.y - *pole_) <= tolerance_ / 100;
  }

  // At a pole the map has no x: there a loop is cut, and goes along the pole.
  Chain ChainOf(const std::vector<QENposition>& loop) {
    std::vector<Corner> corners;
    std::size_t pole = loop.size();
    constexpr std::size_t kCost = 1000;  // of finding a place in a map, at worst
    work_.Spend(kCost * loop.size());
    for (const QENposition& point : loop) {
      Corner corner{PointFor(point), surface_.Map(point)};
      const QENvector off = surface_.At(corner.place) - point;
      constexpr double kMost = 10;
      if (!(off.length_squared() <= kMost * kMost * tolerance_ * tolerance_)) {
        throw Undrawable("its outline leaves its surface");
      }
      if (IsPole(corner.place)) {
        if (pole != loop.size()) throw Undrawable("its outline meets the pole twice");
        pole = corners.size();
        corner.place.y = *pole_;
      }
      corners.push_back(corner);
    }
    Chain chain;
    Corner atPole{};
    if (pole != loop.size()) {
      atPole = corners[pole];
      std::rotate(corners.begin(), corners.begin() + static_cast<std::ptrdiff_t>(pole),
                  corners.end());
      corners.erase(corners.begin());
    }
    if (corners.empty()) throw Undrawable("its outline has no area");
    for (std::size_t i = 1; i < corners.size(); ++i) Follow(corners[i - 1].place, corners[i].place);
    chain.corners = corners;
    if (pole != loop.size()) {
      AddPole(chain.corners, atPole.point);
      return chain;
    }
    Flat end = corners.front().place;
    Follow(corners.back().place, end);
    chain.turnsX = Turns(end.x - corners.front().place.x, periods_.x);
    chain.turnsY = Turns(end.y - corners.front().place.y, periods_.y);
    return chain;
  }

  void Follow(const Flat& before, Flat& place) const {
    place.x = Near(place.x, before.x, periods_.x);
    place.y = Near(place.y, before.y, periods_.y);
  }

  static int Turns(double way, double period) {
    return period > 0 ? static_cast<int>(std::lround(way / period)) : 0;
  }

  // From the end of a chain along the pole to its begin.
  void AddPole(Polygon& corners, std::uint32_t point) const {
    const double begin = corners.front().place.x;
    corners.push_back({point, {corners.back().place.x, *pole_}});
    corners.push_back({point, {begin, *pole_}});
  }

  // The largest of the loops is the outer one.
  static Polygon TakeOuter(std::vector<Polygon>& closed) {
    if (closed.empty()) throw Undrawable("it has no outline");
    const auto isLess = [](const Polygon& a, const Polygon& b) {
      return std::abs(AreaOf(a)) < std::abs(AreaOf(b));
    };
    const auto largest = std::max_element(closed.begin(), closed.end(), isLess);
    Polygon outer = std::move(*largest);
    closed.erase(largest);
    return outer;
  }

  // The outline of a face that goes round the surface: from one end to the other and back.
  Polygon CloseRound(std::vector<Chain>& round, const std::vector<Polygon>& closed) {
    const bool isY = round.front().turnsY != 0;
    for (const Chain& chain : round) {
      if (std::abs(isY ? chain.turnsY : chain.turnsX) != 1 ||
          (isY ? chain.turnsX : chain.turnsY) != 0) {
        throw Undrawable("its outline winds round its surface");
      }
    }
    if (round.size() == 1 && pole_.has_value()) return CloseAtPole(round.front());
    if (round.size() != 2) throw Undrawable("it goes round its surface without an end");
    const int turns = isY ? round[0].turnsY : round[0].turnsX;
    if (turns != -(isY ? round[1].turnsY : round[1].turnsX)) {
      throw Undrawable("its ends run in the same direction");
    }
    if (turns < 0) std::swap(round[0], round[1]);
    // Round a torus there are two ways from one end to the other: the face is on the left.
    Polygon& first = round[0].corners;
    Polygon& second = round[1].corners;
    const double across = isY ? periods_.x : periods_.y;
    if (across > 0) {
      const double way = Of(second.front().place, !isY) - Of(first.front().place, !isY);
      const double turnsAcross = std::floor((isY ? -way : way) / across);
      Flat by{};
      Of(by, !isY) = (isY ? turnsAcross : -turnsAcross) * across;
      Shift(second, by);
    }
    return Sewn(surface_, first, second, isY, closed, work_);
  }

  // A cone up to its tip.
  Polygon CloseAtPole(const Chain& chain) {
    Polygon corners = chain.corners;
    Corner again = corners.front();
    again.place.x += chain.turnsX * periods_.x;
    corners.push_back(again);
    const auto tip = static_cast<std::uint32_t>(mesh_.points.size());
    mesh_.points.push_back(surface_.At({0, *pole_}));
    AddPole(corners, tip);
    return corners;
  }

  // A hole lies some periods away from where it was mapped.
  void MoveInto(const Polygon& outer, Polygon& hole) const {
    const Flat place = hole.front().place;
    for (const double y : {0, -1, 1, -2, 2}) {
      for (const double x : {0, -1, 1, -2, 2}) {
        const Flat by{x * periods_.x, y * periods_.y};
        if (!IsInside(outer, place + by)) continue;
        Shift(hole, by);
        return;
      }
      if (!(periods_.y > 0)) break;
    }
    throw Undrawable("a hole of it lies outside");
  }

  const Surface& surface_;
  Flat periods_;
  std::optional<double> pole_;
  double tolerance_;
  Mesh& mesh_;
  Budget& work_;
  std::map<std::array<double, 3>, std::uint32_t> points_;
};

Mesh MeshIn(const Surface& surface, const std::vector<std::vector<QENposition>>& loops,
            double tolerance, bool isStrict, Budget& work) {
  Mesh mesh;
  const Polygon polygon = Flattener(surface, tolerance, mesh, work).Flatten(loops, isStrict);
  Fill(polygon, surface, tolerance, mesh, work);
  return mesh;
}

// What a loop encloses, as a vector to its left.
QENvector DirectionOf(const std::vector<QENposition>& loop) {
  QENvector sum;
  for (std::size_t i = 2; i < loop.size(); ++i) {
    sum = sum + cross(loop[i - 1] - loop[0], loop[i] - loop[0]);
  }
  return sum;
}

}  // namespace

Mesh MeshOf(const SurfacePointer& surface, const std::vector<std::vector<QENposition>>& loops,
            double tolerance, Budget& work) {
  std::size_t corners = 0;
  for (const std::vector<QENposition>& loop : loops) corners += loop.size();
  if (corners > kMostCorners) throw Undrawable("its outline has too many points");
  if (loops.empty()) return WholeMesh(*surface, tolerance, work);
  if (surface->Around({0, 0, 1}) == nullptr) return MeshIn(*surface, loops, tolerance, false, work);
  // The face lies around what its loops enclose together or, where that is nothing, the first.
  QENvector together;
  for (const std::vector<QENposition>& loop : loops) together = together + DirectionOf(loop);
  const QENvector first = DirectionOf(loops.front());
  const bool isNothing = together.length_squared() < 1e-6 * first.length_squared();
  const SurfacePointer fit = surface->Around(isNothing ? first : together);
  return MeshIn(*fit, loops, tolerance, true, work);
}

}  // namespace geometry

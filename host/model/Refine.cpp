// Triangles in the map of a surface, made round and fine enough.

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "model/Curve.h"
#include "model/Triangles.h"

namespace geometry {

namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

// Each triangle has its own places in the map, so that neighbours across a cut are neighbours like
// any others.
struct Triangle {
  std::uint32_t points[3];
  Flat places[3];
  std::uint32_t neighbours[3] = {kNone, kNone, kNone};  // across the edge from i to i + 1
};

int After(int i) { return i < 2 ? i + 1 : 0; }

class Refiner {
 public:
  Refiner(const Surface& surface, double tolerance, Mesh& mesh, Budget& work)
      : surface_(surface), tolerance_(tolerance), mesh_(mesh), work_(work) {}

  void Run(const Polygon& polygon) {
    double low = std::numeric_limits<double>::max();
    double high = -low;
    for (const Corner& corner : polygon) {
      low = std::min(low, corner.place.y);
      high = std::max(high, corner.place.y);
    }
    pole_ = surface_.Pole();
    pointsOfOutline_ = mesh_.points.size();
    stretch_ = std::abs(surface_.Stretch((low + high) / 2));
    Add(polygon, Fill(polygon, work_));
    constexpr int kMostRounds = 20;
    Flip();
    for (int round = 0; round < kMostRounds && Split(); ++round) Flip();
    for (const Triangle& t : triangles_) {
      mesh_.triangles.push_back({t.points[0], t.points[1], t.points[2]});
    }
  }

 private:
  // Triangles are neighbours at a diagonal of the polygon, and where the outline comes back along
  // itself. What is at a pole is one point; a triangle with two corners there is none.
  void Add(const Polygon& polygon, const std::vector<std::array<std::uint32_t, 3>>& all) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, Side> diagonals, outline;
    for (const std::array<std::uint32_t, 3>& corners : all) {
      Triangle triangle;
      for (int i = 0; i < 3; ++i) {
        const Corner& corner = polygon[corners[static_cast<std::size_t>(i)]];
        triangle.points[i] = corner.point;
        triangle.places[i] = corner.place;
      }
      const auto* const points = triangle.points;
      if (points[0] == points[1] || points[1] == points[2] || points[2] == points[0]) continue;
      const auto t = static_cast<std::uint32_t>(triangles_.size());
      triangles_.push_back(triangle);
      for (int i = 0; i < 3; ++i) {
        const std::uint32_t from = corners[static_cast<std::size_t>(i)];
        const std::uint32_t to = corners[static_cast<std::size_t>(After(i))];
        if ((from + 1) % polygon.size() == to) {
          Link(outline, points[i], points[After(i)], {t, i});
        } else {
          Link(diagonals, from, to, {t, i});
        }
      }
    }
  }

  // A side of a triangle.
  struct Side {
    std::uint32_t triangle;
    int edge;
  };

  // Makes neighbours of a side and the one in the opposite direction, when that was there before.
  void Link(std::map<std::pair<std::uint32_t, std::uint32_t>, Side>& sides, std::uint32_t from,
            std::uint32_t to, const Side& side) {
    const auto other = sides.find({to, from});
    if (other == sides.end()) {
      sides.insert_or_assign({from, to}, side);
      return;
    }
    triangles_[side.triangle].neighbours[side.edge] = other->second.triangle;
    triangles_[other->second.triangle].neighbours[other->second.edge] = side.triangle;
    sides.erase(other);
  }

  // Which edge of a neighbour lies at an edge.
  int EdgeOf(std::uint32_t neighbour, std::uint32_t from) const {
    const Triangle& triangle = triangles_[neighbour];
    for (int i = 0; i < 3; ++i) {
      if (triangle.points[i] == from) return i;
    }
    return 0;
  }

  bool IsPole(const Flat& place) const { return pole_.has_value() && place.y == *pole_; }

  // A corner as the other two see it: a pole is at any x, so it is between them.
  Flat Seen(Flat place, const Flat& a, const Flat& b) const {
    if (IsPole(place)) place.x = (a.x + b.x) / 2;
    return Stretched(place);
  }
  double AreaOf(const Flat& a, const Flat& b, const Flat& c) const {
    return Cross(Seen(a, b, c), Seen(b, c, a), Seen(c, a, b));
  }

  Flat Stretched(const Flat& place) const { return {stretch_ * place.x, place.y}; }

  // Across the edge that begins, in that triangle, at a point.
  void SetNeighbour(std::uint32_t of, std::uint32_t point, std::uint32_t to) {
    if (of != kNone) triangles_[of].neighbours[EdgeOf(of, point)] = to;
  }

  // --- Round: the other diagonal where the circle through a triangle holds its neighbour's corner
  // -

  void Flip() {
    std::vector<std::uint32_t> pending(triangles_.size());
    for (std::uint32_t t = 0; t < pending.size(); ++t) pending[t] = t;
    // Each flip improves the whole, but rounding could turn two back and forth.
    std::size_t left = 50 * triangles_.size();
    constexpr std::size_t kCost = 30;  // of a flip
    while (!pending.empty() && left > 0) {
      work_.Spend(kCost);
      const std::uint32_t t = pending.back();
      pending.pop_back();
      for (int i = 0; i < 3; ++i) {
        const std::uint32_t other = triangles_[t].neighbours[i];
        if (!FlipAt(t, i)) continue;
        pending.push_back(t);
        pending.push_back(other);
        --left;
        break;
      }
    }
  }

  bool FlipAt(std::uint32_t t, int i) {
    const std::uint32_t u = triangles_[t].neighbours[i];
    if (u == kNone || u == t) return false;
    const Triangle one = triangles_[t];
    const Triangle two = triangles_[u];
    const int a = i, b = After(a), c = After(b);
    const int j = EdgeOf(u, one.points[b]);
    const int d = After(After(j));
    const Flat &pa = one.places[a], &pb = one.places[b], &pc = one.places[c];
    if (one.points[c] == two.points[d] || IsPole(pa) || IsPole(pb)) return false;
    // The neighbour's places as this one's map has them.
    const Flat fourth = two.places[d] + (pb - two.places[j]);
    const double area = AreaOf(pa, pb, pc);
    const double ofOther = AreaOf(pb, pa, fourth);
    const double ofFirst = AreaOf(pa, fourth, pc);
    const double ofSecond = AreaOf(fourth, pb, pc);
    const double least = 1e-9 * (std::abs(area) + std::abs(ofFirst) + std::abs(ofSecond));
    if (!(ofFirst > least) || !(ofSecond > least)) return false;
    const bool isFlat = area <= least || ofOther <= least;
    if (!isFlat &&
        !IsInCircle(Stretched(pa), Stretched(pb), Seen(pc, pa, pb), Seen(fourth, pa, pb))) {
      return false;
    }
    triangles_[t] = {{one.points[a], two.points[d], one.points[c]},
                     {one.places[a], fourth, one.places[c]},
                     {two.neighbours[After(j)], u, one.neighbours[c]}};
    triangles_[u] = {{two.points[d], one.points[b], one.points[c]},
                     {fourth, one.places[b], one.places[c]},
                     {two.neighbours[d], one.neighbours[b], t}};
    SetNeighbour(two.neighbours[After(j)], two.points[d], t);
    SetNeighbour(one.neighbours[b], one.points[c], u);
    return true;
  }

  static bool IsInCircle(const Flat& a, const Flat& b, const Flat& c, const Flat& d) {
    // The angles opposite the edge are together more than half a turn.
    const Flat ca = a - c, cb = b - c, da = a - d, db = b - d;
    const double cosineC = ca.x * cb.x + ca.y * cb.y;
    const double cosineD = da.x * db.x + da.y * db.y;
    const double sineC = ca.x * cb.y - ca.y * cb.x;
    const double sineD = db.x * da.y - db.y * da.x;
    const double sum = sineC * cosineD + cosineC * sineD;
    return sum < -1e-9 * (std::abs(sineC * cosineD) + std::abs(cosineC * sineD));
  }

  // --- Fine: a point of the surface in the middle of an edge that is too far from it
  // --------------

  // Splits what is to be split, each triangle once at most; false when there was nothing.
  bool Split() {
    const std::size_t most = 30'000 + 20 * pointsOfOutline_;
    work_.Spend(triangles_.size());
    std::vector<std::pair<double, std::pair<std::uint32_t, int>>> edges;
    for (std::uint32_t t = 0; t < triangles_.size(); ++t) {
      for (int i = 0; i < 3; ++i) {
        if (triangles_[t].neighbours[i] == kNone || triangles_[t].neighbours[i] < t) continue;
        const double excess = ExcessAt(t, i);
        if (excess > 1) edges.push_back({excess, {t, i}});
      }
    }
    std::sort(edges.begin(), edges.end(),
              [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<bool> isTouched(triangles_.size());
    for (const auto& [excess, edge] : edges) {
      const auto [t, i] = edge;
      const std::uint32_t u = triangles_[t].neighbours[i];
      if (isTouched[t] || u >= isTouched.size() || isTouched[u]) continue;
      isTouched[t] = isTouched[u] = true;
      if (triangles_.size() > most) throw Undrawable("it takes too many triangles");
      SplitAt(t, i);
    }
    return !edges.empty();
  }

  QENposition PointAt(const Flat& place) const { return surface_.At(place); }

  // How many times further an inner edge is from the surface than it may be.
  double ExcessAt(std::uint32_t t, int i) const {
    const Triangle& one = triangles_[t];
    if (IsPole(one.places[i]) || IsPole(one.places[After(i)])) return 0;
    const QENposition& a = mesh_.points[one.points[i]];
    const QENposition& b = mesh_.points[one.points[After(i)]];
    const QENvector chord = b - a;
    const QENposition middle = PointAt(0.5 * (one.places[i] + one.places[After(i)]));
    const double off = std::sqrt((middle - (a + 0.5 * chord)).length_squared());
    // An arc of a sixteenth of a turn is off by a twentieth of its chord.
    constexpr double kMostOfChord = 0.06;
    const double ofChord = kMostOfChord * std::sqrt(chord.length_squared());
    return off / std::clamp(ofChord, tolerance_ / 20, tolerance_);
  }

  void SplitAt(std::uint32_t t, int i) {
    const std::uint32_t u = triangles_[t].neighbours[i];
    const Triangle one = triangles_[t];
    const Triangle two = triangles_[u];
    const int a = i, b = After(a), c = After(b);
    const int j = EdgeOf(u, one.points[b]);
    const int k = After(j), d = After(k);
    const Flat inOne = 0.5 * (one.places[a] + one.places[b]);
    const Flat inTwo = 0.5 * (two.places[j] + two.places[k]);
    const auto m = static_cast<std::uint32_t>(mesh_.points.size());
    mesh_.points.push_back(PointAt(inOne));
    const auto t2 = static_cast<std::uint32_t>(triangles_.size());
    const std::uint32_t u2 = t2 + 1;
    triangles_[t] = {{one.points[a], m, one.points[c]},
                     {one.places[a], inOne, one.places[c]},
                     {u2, t2, one.neighbours[c]}};
    triangles_.push_back({{m, one.points[b], one.points[c]},
                          {inOne, one.places[b], one.places[c]},
                          {u, one.neighbours[b], t}});
    triangles_[u] = {{two.points[j], m, two.points[d]},
                     {two.places[j], inTwo, two.places[d]},
                     {t2, u2, two.neighbours[d]}};
    triangles_.push_back({{m, two.points[k], two.points[d]},
                          {inTwo, two.places[k], two.places[d]},
                          {t, two.neighbours[k], u}});
    SetNeighbour(one.neighbours[b], one.points[c], t2);
    SetNeighbour(two.neighbours[k], two.points[d], u2);
  }

  const Surface& surface_;
  double tolerance_;
  Mesh& mesh_;
  Budget& work_;
  std::optional<double> pole_;
  double stretch_ = 1;
  std::size_t pointsOfOutline_ = 0;
  std::vector<Triangle> triangles_;
};

}  // namespace

void Fill(const Polygon& polygon, const Surface& surface, double tolerance, Mesh& mesh,
          Budget& work) {
  Refiner(surface, tolerance, mesh, work).Run(polygon);
}

}  // namespace geometry

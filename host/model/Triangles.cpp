// Polygons with holes, and triangles that fill them.

#include "model/Triangles.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/Curve.h"

namespace geometry {

namespace {

bool IsSame(const Flat& a, const Flat& b) { return a.x == b.x && a.y == b.y; }

double SquaredLength(const Flat& a) { return a.x * a.x + a.y * a.y; }

// Whether two lines have a point in common, other than an end of both.
bool Meet(const Flat& a, const Flat& b, const Flat& c, const Flat& d) {
  if (std::max(a.x, b.x) < std::min(c.x, d.x) || std::max(c.x, d.x) < std::min(a.x, b.x) ||
      std::max(a.y, b.y) < std::min(c.y, d.y) || std::max(c.y, d.y) < std::min(a.y, b.y)) {
    return false;
  }
  const double c1 = Cross(a, b, c);
  const double d1 = Cross(a, b, d);
  const double a2 = Cross(c, d, a);
  const double b2 = Cross(c, d, b);
  const bool sharesEnd = IsSame(a, c) || IsSame(a, d) || IsSame(b, c) || IsSame(b, d);
  if (sharesEnd) {
    // Along each other they meet when one lies on the other.
    if (c1 != 0 || d1 != 0) return false;
    const Flat& end = IsSame(a, c) || IsSame(a, d) ? a : b;
    const Flat one = (IsSame(end, a) ? b : a) - end;
    const Flat two = (IsSame(end, c) ? d : c) - end;
    return one.x * two.x + one.y * two.y > 0;
  }
  return ((c1 >= 0 && d1 <= 0) || (c1 <= 0 && d1 >= 0)) &&
         ((a2 >= 0 && b2 <= 0) || (a2 <= 0 && b2 >= 0));
}

// Whether a way from a corner leads into the inside, which lies to the left of its edges.
bool LeadsInside(const Flat& before, const Flat& at, const Flat& after, const Flat& to) {
  const bool isLeftOfFirst = Cross(before, at, to) > 0;
  const bool isLeftOfSecond = Cross(at, after, to) > 0;
  return Cross(before, at, after) > 0 ? isLeftOfFirst && isLeftOfSecond
                                      : isLeftOfFirst || isLeftOfSecond;
}

// Cuts ears off a polygon until nothing is left.
class EarClipper {
 public:
  EarClipper(const Polygon& polygon, Budget& work) : polygon_(polygon), work_(work) {
    const std::size_t count = polygon.size();
    double extent = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
      next_.push_back(i + 1 < count ? i + 1 : 0);
      previous_.push_back(i > 0 ? i - 1 : static_cast<std::uint32_t>(count) - 1);
      extent = std::max(extent, SquaredLength(polygon[i].place - polygon[0].place));
    }
    flat_ = extent * 1e-14;
    left_ = count;
  }

  std::vector<std::array<std::uint32_t, 3>> Run() {
    for (std::uint32_t i = 0; i < polygon_.size(); ++i) FindReflex(i);
    std::uint32_t at = 0;
    std::size_t sinceLast = 0;
    while (left_ > 3) {
      if (IsEar(at)) {
        triangles_.push_back({previous_[at], at, next_[at]});
        at = Remove(at);
        sinceLast = 0;
      } else if (IsSpike(at)) {
        at = Remove(at);
        sinceLast = 0;
      } else {
        at = next_[at];
        if (++sinceLast > left_) throw Undrawable("its outline crosses itself");
      }
    }
    if (Area(at) < -flat_) throw Undrawable("its outline crosses itself");
    triangles_.push_back({previous_[at], at, next_[at]});
    return std::move(triangles_);
  }

 private:
  const Flat& At(std::uint32_t i) const { return polygon_[i].place; }
  double Area(std::uint32_t i) const { return Cross(At(previous_[i]), At(i), At(next_[i])); }

  // A corner where the polygon turns back on itself, or where two corners lie at one place.
  bool IsSpike(std::uint32_t i) const {
    const Flat back = At(previous_[i]) - At(i);
    const Flat on = At(next_[i]) - At(i);
    return std::abs(Area(i)) <= flat_ && back.x * on.x + back.y * on.y >= 0;
  }

  bool IsEar(std::uint32_t i) {
    if (!(Area(i) > flat_)) return false;
    const Flat& a = At(previous_[i]);
    const Flat& b = At(i);
    const Flat& c = At(next_[i]);
    work_.Spend(reflex_.size());
    for (const std::uint32_t k : reflex_) {
      const Flat& p = At(k);
      if (k == i || k == previous_[i] || k == next_[i]) continue;
      if (Cross(a, b, p) < 0 || Cross(b, c, p) < 0 || Cross(c, a, p) < 0) continue;
      if (!IsSame(p, a) && !IsSame(p, b) && !IsSame(p, c)) return false;
      // At the same place the outline may run through the ear.
      if (Enters(k, a, b, c)) return false;
    }
    return true;
  }

  // Whether one of the edges at a corner that lies on a corner of a triangle runs into it.
  bool Enters(std::uint32_t k, const Flat& a, const Flat& b, const Flat& c) const {
    for (const Flat& to : {At(previous_[k]), At(next_[k])}) {
      if (IsSame(At(k), a) && Cross(a, b, to) > 0 && Cross(c, a, to) > 0) return true;
      if (IsSame(At(k), b) && Cross(b, c, to) > 0 && Cross(a, b, to) > 0) return true;
      if (IsSame(At(k), c) && Cross(c, a, to) > 0 && Cross(b, c, to) > 0) return true;
    }
    return false;
  }

  void FindReflex(std::uint32_t i) {
    if (!(Area(i) > flat_)) reflex_.push_back(i);
  }

  // A corner never becomes reflex when an ear is cut, but may stop being so.
  std::uint32_t Remove(std::uint32_t i) {
    const std::uint32_t before = previous_[i];
    const std::uint32_t after = next_[i];
    next_[before] = after;
    previous_[after] = before;
    --left_;
    const auto isDone = [&](std::uint32_t k) {
      return k == i || ((k == before || k == after) && Area(k) > flat_);
    };
    work_.Spend(reflex_.size());
    reflex_.erase(std::remove_if(reflex_.begin(), reflex_.end(), isDone), reflex_.end());
    return next_[after];
  }

  const Polygon& polygon_;
  Budget& work_;
  std::vector<std::uint32_t> next_, previous_, reflex_;
  std::vector<std::array<std::uint32_t, 3>> triangles_;
  double flat_;  // an area that is none
  std::size_t left_;
};

// The corner of a polygon from which there is the shortest free way to a corner of a hole, with
// that one.
struct Way {
  std::size_t from = 0;
  std::size_t to = 0;
  double length = std::numeric_limits<double>::max();
};

// Finds the first of the shortest ways that is free.
bool FindFree(const Polygon& outer, const Polygon& hole, const std::vector<const Polygon*>& all,
              std::vector<Way> ways, Way& found, Budget& work) {
  constexpr std::size_t kMostTries = 400;
  std::sort(ways.begin(), ways.end(),
            [](const Way& a, const Way& b) { return a.length < b.length; });
  ways.resize(std::min(ways.size(), kMostTries));
  for (const Way& way : ways) {
    if (!IsFree(outer, way.from, hole[way.to].place, all, work)) continue;
    found = way;
    return true;
  }
  return false;
}

bool FindWay(const Polygon& outer, const Polygon& hole, const std::vector<const Polygon*>& all,
             Way& found, Budget& work) {
  const auto lengthOf = [&](std::size_t from, std::size_t to) {
    return SquaredLength(outer[from].place - hole[to].place);
  };
  work.Spend(hole.size() * outer.size());
  // Nearly always the shortest way from some corner is free.
  std::vector<Way> ways;
  std::size_t last = 0;  // the hole's corner furthest along x
  for (std::size_t to = 0; to < hole.size(); ++to) {
    if (hole[to].place.x > hole[last].place.x) last = to;
    Way way;
    for (std::size_t from = 0; from < outer.size(); ++from) {
      const double length = lengthOf(from, to);
      if (length < way.length) way = {from, to, length};
    }
    ways.push_back(way);
  }
  std::sort(ways.begin(), ways.end(),
            [](const Way& a, const Way& b) { return a.length < b.length; });
  ways.resize(std::min<std::size_t>(ways.size(), 20));
  if (FindFree(outer, hole, all, std::move(ways), found, work)) return true;
  // From the last corner there is one, when no other hole reaches further.
  ways.clear();
  for (std::size_t from = 0; from < outer.size(); ++from) {
    ways.push_back({from, last, lengthOf(from, last)});
  }
  return FindFree(outer, hole, all, std::move(ways), found, work);
}

Polygon Joined(const Polygon& outer, const Polygon& hole, const Way& way) {
  Polygon joined(outer.begin(), outer.begin() + static_cast<std::ptrdiff_t>(way.from) + 1);
  for (std::size_t i = 0; i <= hole.size(); ++i) {
    joined.push_back(hole[(way.to + i) % hole.size()]);
  }
  joined.insert(joined.end(), outer.begin() + static_cast<std::ptrdiff_t>(way.from), outer.end());
  return joined;
}

}  // namespace

double AreaOf(const Polygon& polygon) {
  double twice = 0;
  for (std::size_t i = 2; i < polygon.size(); ++i) {
    twice += Cross(polygon[0].place, polygon[i - 1].place, polygon[i].place);
  }
  return twice / 2;
}

bool IsFree(const Polygon& polygon, std::size_t from, const Flat& to,
            const std::vector<const Polygon*>& all, Budget& work) {
  const std::size_t count = polygon.size();
  const Flat& begin = polygon[from].place;
  if (!LeadsInside(polygon[(from + count - 1) % count].place, begin,
                   polygon[(from + 1) % count].place, to)) {
    return false;
  }
  for (const Polygon* other : all) {
    work.Spend(other->size());
    for (std::size_t i = 0; i < other->size(); ++i) {
      const Flat& next = (*other)[i + 1 < other->size() ? i + 1 : 0].place;
      if (Meet(begin, to, (*other)[i].place, next)) return false;
    }
  }
  return true;
}

Polygon CutOpen(Polygon outer, std::vector<Polygon> holes, Budget& work) {
  for (std::size_t passed = 0; !holes.empty();) {
    std::vector<const Polygon*> all{&outer};
    for (const Polygon& hole : holes) all.push_back(&hole);
    Way way;
    if (FindWay(outer, holes.back(), all, way, work)) {
      outer = Joined(outer, holes.back(), way);
      holes.pop_back();
      passed = 0;
    } else {
      // Another hole may lie before it.
      std::rotate(holes.begin(), holes.end() - 1, holes.end());
      if (++passed >= holes.size()) throw Undrawable("there is no way to a hole of it");
    }
  }
  return outer;
}

std::vector<std::array<std::uint32_t, 3>> Fill(const Polygon& polygon, Budget& work) {
  if (polygon.size() < 3) throw Undrawable("its outline has no area");
  return EarClipper(polygon, work).Run();
}

}  // namespace geometry

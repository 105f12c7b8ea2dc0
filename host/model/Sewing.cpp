#include "model/Sewing.h"

#include <algorithm>
#include <cmath>

namespace geometry {

namespace {

// What is in the way, two turns on either side too. A chain comes there and back.
std::vector<Polygon> Obstacles(const Polygon& first, const Polygon& second, const Flat& turn,
                               const std::vector<Polygon>& holes) {
  std::vector<Polygon> obstacles = holes;
  for (const Polygon* chain : {&first, &second}) {
    Polygon thereAndBack = *chain;
    thereAndBack.push_back(chain->front());
    Flat& end = thereAndBack.back().place;
    end = chain == &first ? end + turn : end - turn;
    thereAndBack.insert(thereAndBack.end(), chain->rbegin(), chain->rend());
    obstacles.push_back(std::move(thereAndBack));
  }
  const std::size_t count = obstacles.size();
  for (const double turns : {-2, -1, 1, 2}) {
    for (std::size_t i = 0; i < count; ++i) {
      obstacles.push_back(obstacles[i]);
      Shift(obstacles.back(), turns * turn);
    }
  }
  return obstacles;
}

// Adds one turn of a chain from one of its corners, which comes to lie at a place, to the same
// corner again.
void AddTurn(Polygon& polygon, const Polygon& chain, std::size_t from, const Flat& turn,
             const Flat& begin) {
  const Flat by = begin - chain[from].place;
  for (std::size_t i = 0; i <= chain.size(); ++i) {
    Corner corner = chain[(from + i) % chain.size()];
    corner.place = corner.place + by;
    if (from + i >= chain.size()) corner.place = corner.place + turn;
    polygon.push_back(corner);
  }
}

struct Way {
  std::size_t from = 0;
  std::size_t to = 0;
  double length = -1;
};

}  // namespace

double Near(double value, double to, double period) {
  return period > 0 ? value - period * std::round((value - to) / period) : value;
}

Polygon Sewn(const Surface& surface, const Polygon& first, const Polygon& second, bool isY,
             const std::vector<Polygon>& holes, Budget& work) {
  Flat turn{};
  const Flat periods = surface.Periods();
  Of(turn, isY) = isY ? periods.y : periods.x;
  const std::vector<Polygon> obstacles = Obstacles(first, second, turn, holes);
  std::vector<const Polygon*> all;
  for (const Polygon& obstacle : obstacles) all.push_back(&obstacle);
  const double stretch = std::abs(surface.Stretch(first.front().place.y));
  const auto placeNear = [&](std::size_t to, const Flat& near) {
    Flat place = second[to].place;
    Of(place, isY) = isY ? Near(place.y, near.y, periods.y) : Near(place.x, near.x, periods.x);
    return place;
  };
  work.Spend(first.size() * second.size());
  std::vector<Way> ways;
  for (std::size_t i = 0; i < first.size(); ++i) {
    Way way;
    for (std::size_t k = 0; k < second.size(); ++k) {
      const Flat off = placeNear(k, first[i].place) - first[i].place;
      const double length = std::hypot(stretch * off.x, off.y);
      if (way.length < 0 || length < way.length) way = {i, k, length};
    }
    ways.push_back(way);
  }
  std::sort(ways.begin(), ways.end(),
            [](const Way& a, const Way& b) { return a.length < b.length; });
  constexpr std::size_t kMostTries = 200;
  ways.resize(std::min(ways.size(), kMostTries));
  for (const Way& way : ways) {
    const std::size_t from = way.from;
    const Flat target = placeNear(way.to, first[from].place);
    Polygon neighbours{first[(from + first.size() - 1) % first.size()], first[from],
                       first[(from + 1) % first.size()]};
    if (from == 0) neighbours[0].place = neighbours[0].place - turn;
    if (from + 1 == first.size()) neighbours[2].place = neighbours[2].place + turn;
    // Inside is to the left of a chain that goes up, but a map may have it on the right.
    const auto isFree = [&] { return IsFree(neighbours, 1, target, all, work); };
    if (!isFree()) {
      std::swap(neighbours[0], neighbours[2]);
      if (!isFree()) continue;
    }
    Polygon polygon;
    AddTurn(polygon, first, from, turn, first[from].place);
    AddTurn(polygon, second, way.to, -1.0 * turn, target + turn);
    return polygon;
  }
  throw Undrawable("there is no way between its ends");
}

}  // namespace geometry

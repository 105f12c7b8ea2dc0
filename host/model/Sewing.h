#pragma once

#include "model/Triangles.h"

// Faces that go round a periodic surface, such as a whole cylinder's.
namespace geometry {

inline double& Of(Flat& place, bool isY) { return isY ? place.y : place.x; }

inline void Shift(Polygon& polygon, const Flat& by) {
  for (Corner& corner : polygon) corner.place = corner.place + by;
}

// The nearest to another of the values that are the same in a map of that period; 0 is none.
double Near(double value, double to, double period);

// The outline of a face between two ends, cut open along the shortest free line between them. Round
// x, or y, of the map `first` goes up and `second` down by one turn; `holes` are in the face.
// Throws Undrawable when there is no such line.
Polygon Sewn(const Surface& surface, const Polygon& first, const Polygon& second, bool isY,
             const std::vector<Polygon>& holes, Budget& work);

}  // namespace geometry

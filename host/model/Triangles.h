#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/Surface.h"

// Faces cut into triangles, in the map of their surface. `work` counts comparisons of a place with
// others.
namespace geometry {

// A corner of a polygon: which of the face's points it is, and where it lies in the map. A point
// has several places where the map is cut open.
struct Corner {
  std::uint32_t point;
  Flat place;
};
using Polygon = std::vector<Corner>;

// The polygon's area, positive when its corners run counter-clockwise.
double AreaOf(const Polygon& polygon);

// Makes one polygon of an outer one, which runs counter-clockwise, and those of holes in it, which
// run clockwise, by cuts between them. Throws Undrawable where there is no way for a cut.
Polygon CutOpen(Polygon outer, std::vector<Polygon> holes, Budget& work);

// Whether a line from a corner to a place runs into the polygon's inside, to its left, and meets no
// edge of the polygons but at its own ends.
bool IsFree(const Polygon& polygon, std::size_t from, const Flat& to,
            const std::vector<const Polygon*>& all, Budget& work);

// The indices into a polygon's corners of triangles that fill it, all counter-clockwise. Throws
// Undrawable when the polygon crosses itself.
std::vector<std::array<std::uint32_t, 3>> Fill(const Polygon& polygon, Budget& work);

struct Mesh {
  std::vector<QENposition> points;
  std::vector<std::array<std::uint32_t, 3>> triangles;
};

// Fills a polygon whose corners' points the mesh has, and refines it: its inner edges deviate from
// the surface by the tolerance at most, and turn by little more than a sixteenth of a turn. Its
// outline stays as it is. Throws Undrawable.
void Fill(const Polygon& polygon, const Surface& surface, double tolerance, Mesh& mesh,
          Budget& work);

// Fills a face of a surface. Its loops are closed without naming a point twice, and have the face
// on their left where seen from outside the surface. The points of the loops are the mesh's first,
// each once. A whole sphere or torus has no loops. Throws Undrawable.
Mesh MeshOf(const SurfacePointer& surface, const std::vector<std::vector<QENposition>>& loops,
            double tolerance, Budget& work);

// The same for a face that is a whole sphere or torus.
Mesh WholeMesh(const Surface& surface, double tolerance, Budget& work);

}  // namespace geometry

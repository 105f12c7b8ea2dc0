// Faces without loops, on surfaces without an end.

#include <algorithm>
#include <cmath>

#include "model/Triangles.h"

namespace geometry {

namespace {

constexpr double kTurn = 6.283185307179586;

// A whole torus is one square of its map.
Mesh WholeTorus(const Surface& surface, double tolerance, Budget& work) {
  constexpr std::uint32_t kPieces = 16;
  const QENvector across = surface.At({surface.Periods().x / 2, 0}) - surface.At({});
  tolerance = std::max(tolerance, std::sqrt(across.length_squared()) / 2500);
  const Flat step{surface.Periods().x / kPieces, surface.Periods().y / kPieces};
  Mesh mesh;
  for (std::uint32_t i = 0; i < kPieces; ++i) mesh.points.push_back(surface.At({i * step.x, 0}));
  for (std::uint32_t i = 1; i < kPieces; ++i) mesh.points.push_back(surface.At({0, i * step.y}));
  const auto corner = [&](std::uint32_t x, std::uint32_t y) -> Corner {
    const std::uint32_t point = y % kPieces == 0 ? x % kPieces : kPieces - 1 + y;
    return {point, {x * step.x, y * step.y}};
  };
  Polygon square;
  for (std::uint32_t i = 0; i < kPieces; ++i) square.push_back(corner(i, 0));
  for (std::uint32_t i = 0; i < kPieces; ++i) square.push_back(corner(kPieces, i));
  for (std::uint32_t i = kPieces; i > 0; --i) square.push_back(corner(i, kPieces));
  for (std::uint32_t i = kPieces; i > 0; --i) square.push_back(corner(0, i));
  Fill(square, surface, tolerance, mesh, work);
  return mesh;
}

// A whole sphere is two halves, each filled in a map of its own.
Mesh WholeSphere(const Surface& surface, double tolerance, Budget& work) {
  const SurfacePointer upper = surface.Around({0, 0, 1});
  const SurfacePointer lower = surface.Around({0, 0, -1});
  const QENposition pole = upper->At({0, 0});
  const QENvector axis = 0.5 * (pole - lower->At({0, 0}));
  const double radius = std::sqrt(axis.length_squared());
  const Curve equator = Arc(pole + -1.0 * axis, {radius, 0, 0}, {0, radius, 0}, 0, kTurn);
  tolerance = std::max(tolerance, radius / 1250);  // it may be all that there is
  Mesh mesh;
  mesh.points = Sample(equator, tolerance, work);
  mesh.points.pop_back();
  Polygon halves[2];
  for (std::uint32_t i = 0; i < mesh.points.size(); ++i) {
    halves[0].push_back({i, upper->Map(mesh.points[i])});
    halves[1].push_back({i, lower->Map(mesh.points[i])});
  }
  std::reverse(halves[1].begin(), halves[1].end());
  Fill(halves[0], *upper, tolerance, mesh, work);
  Fill(halves[1], *lower, tolerance, mesh, work);
  return mesh;
}

}  // namespace

Mesh WholeMesh(const Surface& surface, double tolerance, Budget& work) {
  const Flat periods = surface.Periods();
  const bool isTorus = periods.x > 0 && periods.y > 0;
  if (!isTorus && surface.Around({0, 0, 1}) == nullptr) throw Undrawable("it has no outline");
  return isTorus ? WholeTorus(surface, tolerance, work) : WholeSphere(surface, tolerance, work);
}

}  // namespace geometry

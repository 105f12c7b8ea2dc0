#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/Curve.h"
#include "model/Drawing.h"
#include "model/Triangles.h"

// The shape of a part as a document has it, in any format, and how it is drawn:
//
//   Shape shape;
//   shape.edges.push_back({"12", {Arc(...)}, {}});
//   for (const Undrawn& missing : Draw(shape, most, drawing)) List(missing.index, missing.reason);
namespace geometry {

struct EdgeShape {
  std::string id;                                           // for the drawing
  std::vector<Curve> curves;                                // from its start to its end
  std::optional<std::pair<QENposition, QENposition>> ends;  // where its vertices lie
  bool isHidden = false;
};

struct EdgeUse {
  std::size_t edge;  // in the shape's edges
  bool isTurned;     // from its end to its start
};

// A face with a mesh, or else a surface and loops. A loop has the face on its left where seen from
// outside the surface.
struct FaceShape {
  std::string id;
  Mesh mesh;
  SurfacePointer surface;
  std::vector<std::vector<EdgeUse>> loops;
  std::vector<std::vector<QENposition>> polygons;  // loops without edges
  bool isHidden = false;
  bool isTurned = false;           // outside the part is inside the surface
  std::vector<std::string> edges;  // ids of those that bound it, each once
};

struct Shape {
  std::vector<EdgeShape> edges;
  std::vector<FaceShape> faces;
};

// What the drawing lacks.
struct Undrawn {
  bool isFace;
  std::size_t index;  // in the shape's faces or edges
  std::string reason;
};

// Draws a shape: chords deviate from curves and surfaces by 1/2000 of its size at most. Faces have
// the very points of their edges. `mostPoints` bounds what is drawn, and the time for it. Adds to
// the drawing and says what could not be drawn.
std::vector<Undrawn> Draw(Shape shape, std::size_t mostPoints, Drawing& drawing);

}  // namespace geometry

#pragma once

#include "model/Curve.h"
#include "model/Drawing.h"
#include "model/Triangles.h"
#include "readers/qif/Reading.h"

namespace qif {

// Shapes are made as large as the document draws them, which is the size of the part times its
// scale coefficient, and rescaled last.

// A point of the product or of a transform.
QENposition ShapePoint(const Reading& reading, Element element);

// A flag of the geometry; an unknown word is as good as none.
inline bool IsTrue(std::string_view text) { return text == "true" || text == "1"; }

// A rotation and a translation.
struct Motion {
  QENvector x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};  // where the axes come to lie
  QENposition origin;

  QENvector operator()(const QENvector& v) const { return v.x() * x + v.y() * y + v.z() * z; }
  QENposition operator()(const QENposition& p) const { return origin + (*this)(p - QENposition()); }
  Motion operator*(const Motion& inner) const;
};

// Whether an attribute is true; one that is not there is false. Throws Unreadable for other texts.
bool IsSet(Element element, const char* name);

// What an element's reference to a transform names, or no motion. Throws Unreadable.
Motion MotionOf(Reading& reading, Element element);

// The pieces of a curve in space, Segment13, Nurbs13 ..., from its start to its end. Throws
// Unreadable or geometry::Undrawable.
std::vector<geometry::Curve> CurveOf(Reading& reading, Element curve, const Motion& motion);

// A surface, Plane23, Cylinder23 ... Throws Unreadable or geometry::Undrawable.
geometry::SurfacePointer SurfaceOf(Reading& reading, Element surface, const Motion& motion);

// The numbers of an array, CPs, Triangles ..., also where its binary form stands instead: of reals,
// or of integers of four bytes. None where there is neither. Throw Unreadable.
std::vector<double> RealsOf(Element parent, const std::string& name);
std::vector<double> IntegersOf(Element parent, const std::string& name);
// The same as points, moved.
std::vector<QENposition> PointsOf(Element parent, const std::string& name, const Motion& motion);

// The meshes of a document, each read once.
class Meshes {
 public:
  explicit Meshes(Reading& reading) : reading_(reading) {}

  // The part of a mesh that is a face. Throws Unreadable.
  geometry::Mesh MeshOf(Element face, Element mesh, const Motion& motion);

 private:
  struct Known {
    std::vector<QENposition> points;
    std::vector<std::array<std::uint32_t, 3>> triangles;
    int wholeUses = 0;
  };
  Known& Read(Element mesh);

  Reading& reading_;
  std::unordered_map<const Node*, Known> known_;
};

// Adds the shape of what hangs together with a body. What can't be drawn is listed.
void ReadGeometry(Reading& reading, ::Drawing& drawing);

}  // namespace qif

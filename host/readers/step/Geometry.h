#pragma once

#include <optional>
#include <utility>

#include "model/Shape.h"
#include "readers/step/Reading.h"

// The shape of faces, edges and vertices, for a drawing.
namespace step {

// The units that an item's geometry is in, and how much more may be read.
struct Scale {
  double length = 1;   // to the model's unit
  double radians = 1;  // to radians
  geometry::Budget* budget = nullptr;
};

using Ends = std::pair<QENposition, QENposition>;

// The pieces of a curve from its start to its end, or between the vertices of an edge on it, from
// the first to the second. With `isSame` false the curve leads from the second to the first.
// Throws Unreadable or geometry::Undrawable.
std::vector<geometry::Curve> CurveOf(Reading& reading, Id curve, const Scale& scale,
                                     const std::optional<Ends>& ends = std::nullopt,
                                     bool isSame = true);

// A surface. Throws Unreadable or geometry::Undrawable.
geometry::SurfacePointer SurfaceOf(Reading& reading, Id surface, const Scale& scale);

// A unit vector and one with its length, placed. Throw Unreadable.
QENvector DirectionOf(Reading& reading, Id direction);
QENvector VectorOf(Reading& reading, Id vector, const Scale& scale);
// A list of points, placed; and one of numbers. Throw Unreadable.
std::vector<QENposition> PointsOf(Reading& reading, const Value& list, const Scale& scale);
std::vector<double> NumbersOf(Id of, const Value& list);
// A knot vector from its knots and how often each comes. Throws Unreadable for what is longer than
// that of so many control points may be.
std::vector<double> KnotsOf(Id of, const Value& multiplicities, const Value& knots,
                            std::size_t points);

// Collects the shape of one occurrence after the other, and draws it.
class GeometryReader {
 public:
  explicit GeometryReader(Reading& reading)
      : reading_(reading), most_(400'000 + reading.file.Size() / 10), budget_(2 * most_) {}

  // Reads the shape of the topology that was read last.
  void Read(const Occurrence& occurrence);
  // Fills the drawing. What can't be drawn is listed.
  void Draw(Drawing& drawing);

 private:
  struct Item {
    Id id;
    const ENTITY* entity;
    Scale scale;
    bool isInside;  // of a shell that is turned round
    bool isHidden;
  };

  std::vector<Item> Items();
  void AddBody(const BODY& body, std::vector<Item>& items);
  Scale ScaleOf(Id body);
  void FindHidden();
  std::unordered_set<Id> TurnedFaces(const Instance& solid);
  void ReadVertex(const Item& item);
  void ReadEdge(const Item& item);
  void ReadFace(const Item& item);
  QENposition PointOf(Id vertex, const Scale& scale);
  void AddLoop(Id bound, bool isTurned, const Scale& scale, geometry::FaceShape& face,
               std::unordered_set<Id>& boundary);
  geometry::Mesh MeshOf(const Instance& face, const Scale& scale);
  void List(Id id, const std::string& reason);
  template <typename Work>
  void Try(Id id, Work work);

  // The points of a list of coordinates, which many faces share.
  const std::vector<QENposition>& Coordinates(Id list, const Scale& scale);

  Reading& reading_;
  std::size_t most_;  // points of the drawing
  geometry::Budget budget_;
  geometry::Shape shape_;
  std::vector<DrawnVertex> vertices_;
  std::unordered_map<Id, std::vector<QENposition>> coordinates_;  // of this occurrence
  std::vector<Id> edges_, faces_;  // as in the shape; 0 for what is listed elsewhere
  bool isFirst_ = true;
  std::unordered_set<Id> hidden_;
  std::unordered_map<const ENTITY*, Id> ids_;        // of the topology of this occurrence
  std::unordered_map<Id, std::size_t> edgeIndices_;  // of this occurrence, in the shape
};

}  // namespace step

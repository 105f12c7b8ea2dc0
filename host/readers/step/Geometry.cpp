#include "readers/step/Geometry.h"

#include <algorithm>

namespace step {

template <typename Work>
void GeometryReader::Try(Id id, Work work) {
  try {
    work();
  } catch (const Unreadable& problem) {
    List(id, problem.what());
  } catch (const geometry::Undrawable& problem) {
    List(id, problem.what());
  }
}

void GeometryReader::List(Id id, const std::string& reason) {
  if (id != 0) reading_.Skip(Severity::kIgnored, id, "not in the picture: " + reason);
}

void GeometryReader::Read(const Occurrence& occurrence) {
  if (edges_.empty() && faces_.empty()) FindHidden();
  isFirst_ = occurrence.isFirst;
  ids_.clear();
  edgeIndices_.clear();
  coordinates_.clear();
  for (const auto& [id, entity] : reading_.topology) ids_[entity] = id;
  const std::vector<Item> items = Items();
  for (const Item& item : items) {
    if (is_VERTEX(item.entity) == 1) Try(item.id, [&] { ReadVertex(item); });
  }
  for (const Item& item : items) {
    if (is_EDGE(item.entity) == 1) Try(item.id, [&] { ReadEdge(item); });
  }
  for (const Item& item : items) {
    if (is_FACE(item.entity) == 1) Try(item.id, [&] { ReadFace(item); });
  }
}

void GeometryReader::Draw(Drawing& drawing) {
  for (const geometry::Undrawn& missing : geometry::Draw(std::move(shape_), most_, drawing)) {
    List((missing.isFace ? faces_ : edges_)[missing.index], missing.reason);
  }
  drawing.vertices = std::move(vertices_);
}

// The faces, edges and vertices of all bodies, in the order of the file.
std::vector<GeometryReader::Item> GeometryReader::Items() {
  std::vector<Item> items;
  for (const auto& [id, entity] : reading_.topology) {
    if (is_BODY(entity) == 1) AddBody(static_cast<const BODY&>(*entity), items);
  }
  std::sort(items.begin(), items.end(), [&](const Item& a, const Item& b) {
    return reading_.file.OffsetOf(a.id) < reading_.file.OffsetOf(b.id);
  });
  const auto isSame = [](const Item& a, const Item& b) { return a.id == b.id; };
  items.erase(std::unique(items.begin(), items.end(), isSame), items.end());
  return items;
}

void GeometryReader::AddBody(const BODY& body, std::vector<Item>& items) {
  const Id id = ids_.at(&body);
  const Scale scale = ScaleOf(id);
  std::unordered_set<Id> turned;
  Try(id, [&] { turned = TurnedFaces(reading_.Get(id)); });
  const bool isHidden = hidden_.count(id) != 0;
  const auto add = [&](const ENTITY* entity) {
    const Id own = ids_.at(entity);
    items.push_back(
        {own, entity, scale, turned.count(own) != 0, isHidden || hidden_.count(own) != 0});
  };
  const auto addEdge = [&](const EDGE* edge) {
    add(edge);
    // Curves without vertices have ends that nothing names.
    for (const ENTITY* end : {edge->start(), edge->end()}) {
      if (ids_.count(end) != 0) add(end);
    }
  };
  for (const VERTEX* vertex : body.points()) add(vertex);
  for (const EDGE* edge : body.wires()) addEdge(edge);
  for (const FACE* face : body.faces()) {
    add(face);
    for (const EDGE* edge : face->edges()) addEdge(edge);
  }
}

// What is invisible is a style of an item, or a layer of items.
void GeometryReader::FindHidden() {
  for (const Id id : reading_.file.Of("INVISIBILITY")) {
    Try(id, [&] {
      for (const Value& item : reading_.Get(id).records.front().List(0)) {
        const Record& record = reading_.Get(item.Reference()).records.front();
        if (record.name == "STYLED_ITEM") {
          hidden_.insert(record.Reference(2));
        } else if (record.name == "PRESENTATION_LAYER_ASSIGNMENT") {
          for (const Value& assigned : record.List(2)) hidden_.insert(assigned.Reference());
        }
      }
    });
  }
}

// That of the representation whose item it is.
Scale GeometryReader::ScaleOf(Id body) {
  Scale scale;
  scale.budget = &budget_;
  for (const Id user : reading_.file.ReferrersOf(body)) {
    try {
      const Record& record = reading_.Get(user).records.front();
      if (record.name.find("REPRESENTATION") == std::string_view::npos || record.count != 3)
        continue;
      scale.length = reading_.units.ScaleOf(record.Reference(2));
      scale.radians = reading_.units.RadiansOf(record.Reference(2));
      break;
    } catch (const Unreadable&) {
      // Another may tell.
    }
  }
  return scale;
}

// The faces of shells that a solid has turned round.
std::unordered_set<Id> GeometryReader::TurnedFaces(const Instance& solid) {
  std::unordered_set<Id> faces;
  const Record* const hollow = solid.Find("BREP_WITH_VOIDS");
  if (hollow == nullptr) return faces;
  for (const Value& value : hollow->List(hollow->count - 1)) {
    const Record& shell = reading_.Get(value.Reference()).records.front();
    if (shell.name != "ORIENTED_CLOSED_SHELL" || shell.Enumeration(3) != "F") continue;
    for (const Value& face : reading_.Get(shell.Reference(2)).records.front().List(1)) {
      faces.insert(face.Reference());
    }
  }
  return faces;
}

// A vertex of an edge names its point, one of a set of points is the point.
void GeometryReader::ReadVertex(const Item& item) {
  budget_.Spend(1);
  const QENposition point = PointOf(item.id, item.scale);
  vertices_.push_back({reading_.Path() + "#" + std::to_string(item.id),
                       {point.x(), point.y(), point.z()},
                       item.isHidden});
}

QENposition GeometryReader::PointOf(Id vertex, const Scale& scale) {
  const Instance& instance = reading_.Get(vertex);
  if (instance.Find("CARTESIAN_POINT") != nullptr) return reading_.PointOf(vertex, scale.length);
  const Record& record = instance.As("VERTEX_POINT");
  return reading_.PointOf(record.Reference(record.count - 1), scale.length);
}

// An edge of a shell has a curve and vertices, one of a set of curves is the curve.
void GeometryReader::ReadEdge(const Item& item) {
  const Instance& instance = reading_.Get(item.id);
  geometry::EdgeShape edge;
  edge.id = reading_.Path() + "#" + std::to_string(item.id);
  edge.isHidden = item.isHidden;
  if (instance.Find("EDGE_CURVE") == nullptr) {
    edge.curves = CurveOf(reading_, item.id, item.scale);
  } else {
    const Record& record = instance.records.front();
    edge.ends =
        Ends{PointOf(record.Reference(1), item.scale), PointOf(record.Reference(2), item.scale)};
    edge.curves =
        CurveOf(reading_, record.Reference(3), item.scale, edge.ends, record.Enumeration(4) != "F");
  }
  edgeIndices_[item.id] = shape_.edges.size();
  shape_.edges.push_back(std::move(edge));
  edges_.push_back(isFirst_ ? item.id : 0);
}

void GeometryReader::ReadFace(const Item& item) {
  const Instance& instance = reading_.Get(item.id);
  const Record& record = instance.records.front();
  geometry::FaceShape face;
  face.id = reading_.Path() + "#" + std::to_string(item.id);
  face.isHidden = item.isHidden;
  if (record.name.find("TRIANGULATED") != std::string_view::npos) {
    face.mesh = MeshOf(instance, item.scale);
  } else {
    const bool isTurned = record.Enumeration(3) == "F";
    face.surface = SurfaceOf(reading_, record.Reference(2), item.scale);
    std::unordered_set<Id> boundary;
    for (const Value& bound : record.List(1)) {
      AddLoop(bound.Reference(), isTurned, item.scale, face, boundary);
    }
    face.isTurned = isTurned;
  }
  face.isTurned = face.isTurned != item.isInside;
  shape_.faces.push_back(std::move(face));
  faces_.push_back(isFirst_ ? item.id : 0);
}

// A loop has the face on its left where seen from outside the part.
void GeometryReader::AddLoop(Id boundId, bool isTurned, const Scale& scale,
                             geometry::FaceShape& face, std::unordered_set<Id>& boundary) {
  const Record& bound = reading_.Get(boundId).records.front();
  const Record& loop = reading_.Get(bound.Reference(1)).records.front();
  const bool isBackwards = (bound.Enumeration(2) == "F") != isTurned;
  if (loop.name == "POLY_LOOP") {
    face.polygons.push_back(PointsOf(reading_, loop.List(1), scale));
    if (isBackwards) std::reverse(face.polygons.back().begin(), face.polygons.back().end());
    return;
  }
  if (loop.name != "EDGE_LOOP") return;  // the tip of a cone
  std::vector<geometry::EdgeUse> uses;
  for (const Value& value : loop.List(1)) {
    budget_.Spend(1);
    const Record& use = reading_.Get(value.Reference()).records.front();
    const Id edge = use.Reference(3);
    const auto index = edgeIndices_.find(edge);
    if (index == edgeIndices_.end()) throw Unreadable(edge, "an edge of it is not");
    uses.push_back({index->second, (use.Enumeration(4) == "F") != isBackwards});
    if (boundary.insert(edge).second) face.edges.push_back(shape_.edges[index->second].id);
  }
  if (isBackwards) std::reverse(uses.begin(), uses.end());
  face.loops.push_back(std::move(uses));
}

const std::vector<QENposition>& GeometryReader::Coordinates(Id list, const Scale& scale) {
  const auto [known, isNew] = coordinates_.try_emplace(list);
  if (!isNew) return known->second;
  const Record& record = reading_.Get(list).As("COORDINATES_LIST");
  for (const Value& point : record.List(record.count - 1)) {
    budget_.Spend(1);
    const std::vector<double> xyz = NumbersOf(list, point);
    if (xyz.size() != 3) throw Unreadable(list, "a point has three coordinates");
    const double factor = scale.length;
    known->second.push_back(
        reading_.Placed(QENposition(factor * xyz[0], factor * xyz[1], factor * xyz[2])));
  }
  return known->second;
}

// Triangles, or strips and fans of them, over the points of a list, or over those that are named.
geometry::Mesh GeometryReader::MeshOf(const Instance& face, const Scale& scale) {
  const Record& record = face.records.front();
  const std::vector<QENposition>& coordinates = Coordinates(record.Reference(1), scale);
  const std::vector<double> named = NumbersOf(face.id, record.List(5));
  geometry::Mesh mesh;
  std::unordered_map<std::size_t, std::uint32_t> points;
  // The mesh's point for an index, which counts from 1.
  const auto pointFor = [&](const Value& value) {
    double index = NumberOf(face.id, value);
    const auto most = static_cast<double>(named.empty() ? coordinates.size() : named.size());
    if (!named.empty() && index >= 1 && index <= most) {
      index = named[static_cast<std::size_t>(index) - 1];
    }
    if (!(index >= 1 && index <= static_cast<double>(coordinates.size()))) {
      throw Unreadable(face.id, "it names points that do not exist");
    }
    const auto at = static_cast<std::size_t>(index) - 1;
    const auto [known, isNew] =
        points.try_emplace(at, static_cast<std::uint32_t>(mesh.points.size()));
    if (isNew) mesh.points.push_back(coordinates[at]);
    return known->second;
  };
  const bool isComplex = record.name.find("COMPLEX") != std::string_view::npos;
  for (std::uint32_t list = 6; list < (isComplex ? 8U : 7U); ++list) {
    const bool isFan = list == 7;
    for (const Value& run : record.List(list)) {
      for (std::uint32_t i = 2; run.IsList() && i < run.size; ++i) {
        budget_.Spend(1);
        // Every other triangle of a strip runs the other way round.
        const bool isOdd = !isFan && i % 2 == 1;
        const std::uint32_t a = pointFor(run.items[isFan ? 0 : isOdd ? i - 1 : i - 2]);
        const std::uint32_t b = pointFor(run.items[isFan || !isOdd ? i - 1 : i - 2]);
        mesh.triangles.push_back({a, b, pointFor(run.items[i])});
      }
    }
  }
  if (mesh.triangles.empty()) throw Unreadable(face.id, "it has no triangles");
  return mesh;
}

}  // namespace step

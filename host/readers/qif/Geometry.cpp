// The shape of faces, edges and vertices, for a drawing.

#include "readers/qif/Geometry.h"

#include <algorithm>

#include "model/Shape.h"

namespace qif {

namespace {

class GeometryReader {
 public:
  explicit GeometryReader(Reading& reading) : reading_(reading), meshes_(reading) {}

  void Read(::Drawing& drawing) {
    ReadBodies();
    for (const Element vertex : Set("VertexSet")) {
      if (NameOf(vertex) == "Vertex" && IsInBody(vertex))
        Try(vertex, [&] { ReadVertex(vertex, drawing); });
    }
    for (const Element edge : Set("EdgeSet")) {
      if (NameOf(edge) == "Edge" && IsInBody(edge)) Try(edge, [&] { ReadEdge(edge); });
    }
    for (const Element face : Set("FaceSet")) {
      const bool isMesh = NameOf(face) == "FaceMesh";
      if ((!isMesh && NameOf(face) != "Face") || !IsInBody(face)) continue;
      Try(face, [&] { ReadFace(face, isMesh); });
    }
    const std::size_t mostPoints = 400'000 + 10 * reading_.document.Entries().size();
    for (const geometry::Undrawn& missing :
         geometry::Draw(std::move(shape_), mostPoints, drawing)) {
      List((missing.isFace ? faces_ : edges_)[missing.index], missing.reason);
    }
  }

 private:
  template <typename Work>
  void Try(Element element, Work work) {
    try {
      work();
    } catch (const Unreadable& problem) {
      List(element, problem.what());
    } catch (const geometry::Undrawable& problem) {
      List(element, problem.what());
    }
  }

  void List(Element element, const std::string& reason) {
    reading_.Skip(Severity::kIgnored, element, "not in the picture: " + reason);
  }

  Element::Children Set(const char* name) const {
    return reading_.document.At({"Product", "TopologySet", name}).children();
  }

  const ENTITY* EntityOf(Element element) { return reading_.document.EntryOf(element).entity; }

  bool IsInBody(Element element) { return reading_.inBody.count(EntityOf(element)) != 0; }

  // Where bodies are moved to, and which are hidden; what they consist of goes with them.
  void ReadBodies() {
    for (const Element body : Set("BodySet")) {
      if (NameOf(body) == "Body") Try(body, [&] { ReadBody(body); });
    }
  }

  void ReadBody(Element element) {
    const Motion motion = MotionOf(reading_, element);
    const bool isMoved = static_cast<bool>(Child(element, "Transform"));
    const bool isHidden = IsSet(element, "hidden");
    const auto add = [&](const ENTITY* entity) {
      if (isMoved) motions_.emplace(entity, motion);
      if (isHidden) hidden_.insert(entity);
    };
    const auto& body = static_cast<const BODY&>(*EntityOf(element));
    const auto addEdge = [&](const EDGE* edge) {
      add(edge);
      add(edge->start());
      add(edge->end());
    };
    for (const VERTEX* vertex : body.points()) add(vertex);
    for (const EDGE* edge : body.wires()) addEdge(edge);
    for (const FACE* face : body.faces()) {
      add(face);
      for (const EDGE* edge : face->edges()) addEdge(edge);
    }
  }

  const Motion& MotionWith(Element element) {
    static const Motion none;
    const auto found = motions_.find(EntityOf(element));
    return found == motions_.end() ? none : found->second;
  }

  bool IsHidden(Element element) {
    return IsSet(element, "hidden") || hidden_.count(EntityOf(element)) != 0;
  }

  void ReadVertex(Element element, ::Drawing& drawing) {
    const QENposition point = PointOf(element, MotionWith(element));
    drawing.vertices.push_back(
        {element.attribute("id").value(), {point.x(), point.y(), point.z()}, IsHidden(element)});
  }

  void ReadEdge(Element element) {
    const Document::Entry& curve = Referred(element, "Curve");
    // Many edges of one long curve would take more than a document of that size may.
    constexpr int kMostUses = 4;
    if (++uses_[curve.id] > kMostUses) throw Unreadable(element, "too many edges have its curve");
    const Motion& motion = MotionWith(element);
    geometry::EdgeShape edge;
    edge.id = element.attribute("id").value();
    edge.curves = CurveOf(reading_, curve.element, motion);
    edge.ends = {PointOf(Referred(element, "VertexBeg").element, motion),
                 PointOf(Referred(element, "VertexEnd").element, motion)};
    edge.isHidden = IsHidden(element);
    edgeIndices_[element.node()] = shape_.edges.size();
    shape_.edges.push_back(std::move(edge));
    edges_.push_back(element);
  }

  void ReadFace(Element element, bool isMesh) {
    geometry::FaceShape face;
    face.id = element.attribute("id").value();
    face.isHidden = IsHidden(element);
    face.isTurned = IsSet(element, "turned");
    std::unordered_set<const Node*> seen;
    for (const Element reference : Child(element, "LoopIds").children()) {
      const Element loop = reading_.document.Require(reference).element;
      if (!claimed_.insert(loop.node()).second) {
        throw Unreadable(element, "another face has its loop");
      }
      std::vector<geometry::EdgeUse> uses;
      for (const Element coEdge : Child(loop, isMesh ? "CoEdgesMesh" : "CoEdges").children()) {
        const Element edge = Referred(coEdge, "EdgeOriented").element;
        if (seen.insert(edge.node()).second) face.edges.emplace_back(edge.attribute("id").value());
        if (!isMesh) uses.push_back(UseOf(coEdge, edge));
      }
      if (!uses.empty()) face.loops.push_back(std::move(uses));
    }
    const Motion& motion = MotionWith(element);
    if (isMesh) {
      face.mesh = meshes_.MeshOf(element, Referred(element, "Mesh").element, motion);
    } else {
      face.surface = SurfaceOf(reading_, Referred(element, "Surface").element, motion);
    }
    shape_.faces.push_back(std::move(face));
    faces_.push_back(element);
  }

  geometry::EdgeUse UseOf(Element coEdge, Element edge) {
    const auto index = edgeIndices_.find(edge.node());
    if (index == edgeIndices_.end()) throw Unreadable(coEdge, "an edge of it is not");
    return {index->second, IsSet(Child(coEdge, "EdgeOriented"), "turned")};
  }

  QENposition PointOf(Element vertex, const Motion& motion) {
    const Element point = Referred(vertex, "Point").element;
    return motion(ShapePoint(reading_, Child(point, "XYZ")));
  }

  const Document::Entry& Referred(Element element, const char* name) {
    const Element reference = Child(element, name);
    const Element id = Child(reference, "Id");
    const Document::Entry* const entry = reading_.document.Find(id ? id : reference);
    if (entry == nullptr) throw Unreadable(element, "its " + std::string(name) + " does not exist");
    return *entry;
  }

  Reading& reading_;
  Meshes meshes_;
  geometry::Shape shape_;
  std::vector<Element> edges_, faces_;  // as in the shape
  std::unordered_map<const Node*, std::size_t> edgeIndices_;
  std::unordered_set<const Node*> claimed_;  // loops
  std::unordered_map<const ENTITY*, Motion> motions_;
  std::unordered_set<const ENTITY*> hidden_;
  std::unordered_map<std::uint32_t, int> uses_;  // of curves
};

}  // namespace

void ReadGeometry(Reading& reading, ::Drawing& drawing) {
  GeometryReader(reading).Read(drawing);
  const double scale = reading.units.Scale();
  if (scale == 1) return;
  const auto rescale = [scale](DrawnPoint& point) {
    for (double& coordinate : point) coordinate /= scale;
  };
  for (DrawnVertex& vertex : drawing.vertices) rescale(vertex.point);
  for (DrawnEdge& edge : drawing.edges) {
    std::for_each(edge.points.begin(), edge.points.end(), rescale);
  }
  for (DrawnFace& face : drawing.faces) {
    std::for_each(face.points.begin(), face.points.end(), rescale);
  }
}

}  // namespace qif

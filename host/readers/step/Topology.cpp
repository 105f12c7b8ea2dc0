// Bodies, faces, edges and vertices.

#include "readers/step/Reading.h"

namespace step {

namespace {

class TopologyReader {
 public:
  explicit TopologyReader(Reading& reading)
      : reading_(reading), left_(100'000 + reading.file.Size() / 4) {}

  void Read() {
    const struct {
      std::vector<const char*> entities;
      void (TopologyReader::*read)(const Instance&);
    } kinds[] = {
        {{"MANIFOLD_SOLID_BREP", "FACETED_BREP", "BREP_WITH_VOIDS"}, &TopologyReader::ReadSolid},
        {{"SHELL_BASED_SURFACE_MODEL", "FACE_BASED_SURFACE_MODEL"},
         &TopologyReader::ReadSurfaceModel},
        {{"EDGE_BASED_WIREFRAME_MODEL"}, &TopologyReader::ReadWireframe},
        {{"GEOMETRIC_CURVE_SET", "GEOMETRIC_SET"}, &TopologyReader::ReadCurveSet},
        {{"TESSELLATED_SOLID", "TESSELLATED_SHELL"}, &TopologyReader::ReadTessellated}};
    for (const auto& kind : kinds) {
      // Bodies of another kind beside these are auxiliary, or the same shape once more.
      isWhole_ = reading_.wholeShape.empty();
      for (const char* entity : kind.entities) Each(entity, kind.read);
    }
  }

 private:
  void Each(const char* entity, void (TopologyReader::*read)(const Instance&)) {
    for (const Id id : reading_.file.Of(entity)) {
      if (reading_.topology.count(id) != 0 || !reading_.HasItem(id)) continue;
      try {
        (this->*read)(reading_.Get(id));
      } catch (const Unreadable& problem) {
        reading_.file.FailAt(problem.Of(), problem.what());
      }
    }
  }

  BODY& Body(const Instance& instance) {
    BODY& body = reading_.part.Body();
    if (isWhole_) reading_.wholeShape.push_back(&body);
    Add(instance.id, body, "body");
    reading_.inBody.insert(&body);
    reading_.Count("bodies");
    return body;
  }

  void Add(Id id, ENTITY& entity, const char* kind) {
    reading_.topology[id] = &entity;
    reading_.Describe(entity, id, kind, reading_.NameOf(id));
  }

  void ReadSolid(const Instance& solid) {
    BODY& body = Body(solid);
    // In a complex instance the name and the voids stand elsewhere.
    const Record& record = solid.As("MANIFOLD_SOLID_BREP");
    AddShell(record.Reference(record.count == 1 ? 0 : 1), body);
    const Record* const hollow = solid.Find("BREP_WITH_VOIDS");
    if (hollow == nullptr) return;
    for (const Value& shell : hollow->List(hollow->count - 1)) AddShell(shell.Reference(), body);
  }

  void ReadSurfaceModel(const Instance& model) {
    BODY& body = Body(model);
    for (const Value& shell : model.records.front().List(1)) AddShell(shell.Reference(), body);
  }

  // An oriented shell names the one it turns round.
  void AddShell(Id id, BODY& body) {
    const Instance* shell = &reading_.Get(id);
    if (shell->Find("ORIENTED_CLOSED_SHELL") != nullptr) {
      shell = &reading_.Get(shell->records.front().Reference(2));
    }
    for (const Value& face : shell->records.front().List(1)) AddFace(face.Reference(), body);
  }

  // Faces may share their bounds, and bodies their shells.
  void Spend(Id of) {
    if (left_-- == 0) throw Unreadable(of, "its shells or loops are shared too often");
  }

  void AddFace(Id id, BODY& body) {
    Spend(id);
    const Instance& instance = reading_.Get(id);
    const auto known = reading_.topology.find(id);
    if (known != reading_.topology.end()) {
      return reading_.Skip(Severity::kIgnored, id, "it is in another body already");
    }
    std::vector<EDGE*> edges;
    for (const Value& bound : instance.records.front().List(1)) {
      const Instance& loop =
          reading_.Get(reading_.Get(bound.Reference()).records.front().Reference(1));
      if (loop.Find("EDGE_LOOP") == nullptr) continue;  // a vertex or a polygon bounds the face
      for (const Value& oriented : loop.records.front().List(1)) {
        Spend(id);
        const Instance& use = reading_.Get(oriented.Reference());
        edges.push_back(&Edge(use.records.front().Reference(3)));
      }
    }
    auto& face = reading_.part.Make<FACE>(std::move(edges));
    entity_fields::faces(body).push_back(&face);
    for (const EDGE* edge : face.edges()) Reach(*edge);
    reading_.inBody.insert(&face);
    Add(id, face, "face");
    reading_.Count("faces");
  }

  void Reach(const EDGE& edge) {
    reading_.inBody.insert(&edge);
    reading_.inBody.insert(edge.start());
    reading_.inBody.insert(edge.end());
  }

  EDGE& Edge(Id id) {
    const auto known = reading_.topology.find(id);
    if (known != reading_.topology.end()) {
      if (is_EDGE(known->second) == 1) return static_cast<EDGE&>(*known->second);
      throw Unreadable(id, "it is used as an edge and as something else");
    }
    const Instance& instance = reading_.Get(id);
    const Record& record = instance.records.front();
    auto& edge =
        reading_.part.Make<EDGE>(&Vertex(record.Reference(1)), &Vertex(record.Reference(2)));
    Add(id, edge, "edge");
    reading_.Count("edges");
    return edge;
  }

  VERTEX& Vertex(Id id) {
    const auto known = reading_.topology.find(id);
    if (known != reading_.topology.end()) {
      if (is_VERTEX(known->second) == 1) return static_cast<VERTEX&>(*known->second);
      throw Unreadable(id, "it is used as a vertex and as something else");
    }
    reading_.Get(id);
    auto& vertex = reading_.part.Make<VERTEX>();
    Add(id, vertex, "vertex");
    reading_.Count("vertices");
    return vertex;
  }

  void ReadWireframe(const Instance& model) {
    BODY& body = Body(model);
    for (const Value& set : model.records.front().List(1)) {
      for (const Value& edge : reading_.Get(set.Reference()).records.front().List(1)) {
        Spend(edge.Reference());
        AddWire(Edge(edge.Reference()), body);
      }
    }
  }

  void AddWire(EDGE& edge, BODY& body) {
    if (reading_.inBody.count(&edge) != 0) return;
    entity_fields::wires(body).push_back(&edge);
    Reach(edge);
  }

  // A set of curves of the part's shape is a wire body with an edge for each curve, and a free
  // vertex for each point. Sets that draw annotations are not reached from a shape.
  void ReadCurveSet(const Instance& set) {
    const bool isShape = [&] {
      for (const Id user : reading_.file.ReferrersOf(set.id)) {
        for (const char* shape : {"GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION",
                                  "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION",
                                  "CONSTRUCTIVE_GEOMETRY_REPRESENTATION", "SHAPE_REPRESENTATION"}) {
          if (reading_.Is(user, shape)) return true;
        }
      }
      return false;
    }();
    if (!isShape) return;
    BODY& body = Body(set);
    reading_.Count("wireBodies");
    for (const Value& item : set.records.front().List(1)) {
      const Id id = item.Reference();
      if (reading_.topology.count(id) != 0) continue;
      const Instance& instance = reading_.Get(id);
      if (instance.Find("CARTESIAN_POINT") != nullptr) {
        auto& vertex = reading_.part.Make<VERTEX>();
        entity_fields::points(body).push_back(&vertex);
        reading_.inBody.insert(&vertex);
        Add(id, vertex, "vertex");
        reading_.Count("vertices");
        continue;
      }
      auto& begin = reading_.part.Make<VERTEX>();
      auto& end = reading_.part.Make<VERTEX>();
      auto& edge = reading_.part.Make<EDGE>(&begin, &end);
      Add(id, edge, "edge");
      reading_.Count("edges");
      AddWire(edge, body);
    }
  }

  void ReadTessellated(const Instance& solid) {
    BODY& body = Body(solid);
    for (const Value& item : solid.records.front().List(1)) {
      const Id id = item.Reference();
      const Instance& instance = reading_.Get(id);
      if (reading_.topology.count(id) != 0) continue;
      if (instance.records.front().name.find("FACE") == std::string_view::npos) continue;
      auto& face = reading_.part.Make<FACE>(std::vector<EDGE*>());
      entity_fields::faces(body).push_back(&face);
      reading_.inBody.insert(&face);
      Add(id, face, "face");
      reading_.Count("faces");
    }
  }

  Reading& reading_;
  bool isWhole_ = true;  // of the kind that is being read, that it is the part's shape
  std::size_t left_;     // faces and edges that may still be gone through
};

}  // namespace

void ReadTopology(Reading& reading) { TopologyReader(reading).Read(); }

}  // namespace step

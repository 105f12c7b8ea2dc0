// Vertices, edges, faces and bodies.

#include "readers/qif/Reading.h"

namespace qif {

namespace {

class TopologyReader {
 public:
  explicit TopologyReader(Reading& reading)
      : reading_(reading),
        document_(reading.document),
        set_(document_.At({"Product", "TopologySet"})) {}

  void Read() {
    reading_.model.labels.reserve(document_.Entries().size());
    for (const Element vertex : List("VertexSet", "Vertex", "vertices")) {
      Add(vertex, reading_.part.Make<VERTEX>(), "vertex");
    }
    for (const Element edge : List("EdgeSet", "Edge", "edges")) {
      auto* const begin = static_cast<VERTEX*>(Made(edge, "VertexBeg", "Vertex"));
      auto* const end = static_cast<VERTEX*>(Made(edge, "VertexEnd", "Vertex"));
      Add(edge, reading_.part.Make<EDGE>(begin, end), "edge");
    }
    for (const Element face : List("FaceSet", "Face", "faces")) ReadFace(face);
    for (const Element face : List("FaceSet", "FaceMesh", "faces")) ReadFace(face);
    for (const Element body : List("BodySet", "Body", "bodies")) ReadBody(body);
    SkipLoose();
    for (const char* definition : {"PartSet", "AssemblySet"}) {
      for (const Element part : document_.At({"Product", definition}).children()) {
        for (const Element model : Child(part, "DefinitionExternal").children()) {
          ReadFile(Child(model, "File"));
          for (const Element entity : Child(model, "Entities").children()) ReadExternal(entity);
        }
      }
    }
  }

 private:
  std::vector<Element> List(const char* set, std::string_view kind, const char* count) {
    std::vector<Element> elements;
    for (const Element element : Child(set_, set).children()) {
      if (NameOf(element) == kind) elements.push_back(element);
    }
    if (!elements.empty()) reading_.Count(count, static_cast<long>(elements.size()));
    return elements;
  }

  void Add(Element element, ENTITY& entity, const char* kind) {
    document_.EntryOf(element).entity = &entity;
    reading_.Describe(entity, element, kind, element.attribute("label").value());
  }

  // What was made of the element that a child refers to.
  ENTITY* Made(Element parent, const char* name, std::string_view kind) {
    const Document::Entry& entry = document_.RequireChild(parent, name, kind);
    if (entry.entity == nullptr)
      document_.Fail(parent, "its " + std::string(name) + " is misplaced");
    return entry.entity;
  }

  // A boundary belongs to one element: a second claim is dropped, or a small document could
  // describe a model without end.
  bool Claim(const Document::Entry& entry, Element by) {
    if (claimed_.insert(entry.id).second) return true;
    reading_.Skip(Severity::kIgnored, by,
                  std::string(NameOf(entry.element)) + " " + std::to_string(entry.id) +
                      " belongs to another element already");
    return false;
  }

  void ReadFace(Element face) {
    std::vector<EDGE*> edges;
    for (const Element reference : Child(face, "LoopIds").children()) {
      const Document::Entry& loop = document_.Require(reference);
      if (!Claim(loop, face)) continue;
      for (const Element coEdges : loop.element.children()) {
        const std::string_view name = NameOf(coEdges);
        if (name != "CoEdges" && name != "CoEdgesMesh") continue;
        for (const Element coEdge : coEdges.children()) {
          edges.push_back(static_cast<EDGE*>(Made(coEdge, "EdgeOriented", "Edge")));
        }
      }
    }
    Add(face, reading_.part.Make<FACE>(std::move(edges)), "face");
  }

  void ReadBody(Element element) {
    BODY& body = reading_.part.Body();
    Add(element, body, "body");
    AddFaces(element, Child(element, "FaceIds"), body);
    for (const Element reference : Child(element, "ShellIds").children()) {
      const Document::Entry& shell = document_.Require(reference, "Shell");
      if (Claim(shell, element)) AddFaces(element, Child(shell.element, "FaceIds"), body);
    }
    for (const FACE* face : body.faces()) {
      for (const EDGE* edge : face->edges()) AddToBody(edge);
    }
    // The lists also name what bounds the faces; what is left stands for itself.
    for (const Element reference : Child(element, "EdgeIds").children()) {
      auto* const edge = static_cast<EDGE*>(Listed(reference, "Edge"));
      if (!AddToBody(edge)) continue;
      entity_fields::wires(body).push_back(edge);
    }
    for (const Element reference : Child(element, "VertexIds").children()) {
      auto* const vertex = static_cast<VERTEX*>(Listed(reference, "Vertex"));
      if (reading_.inBody.insert(vertex).second) entity_fields::points(body).push_back(vertex);
    }
    reading_.inBody.insert(&body);
    if (body.faces().empty() && !body.wires().empty()) reading_.Count("wireBodies");
  }

  // False when the edge is in a body already.
  bool AddToBody(const EDGE* edge) {
    if (!reading_.inBody.insert(edge).second) return false;
    reading_.inBody.insert(edge->start());
    reading_.inBody.insert(edge->end());
    return true;
  }

  void AddFaces(Element of, Element ids, BODY& body) {
    for (const Element reference : ids.children()) {
      const Document::Entry& entry = document_.Require(reference);
      if (is_FACE(entry.entity) != 1) {
        document_.Fail(reference, "id " + std::to_string(entry.id) + " is a " +
                                      std::string(NameOf(entry.element)) + ", not a Face");
      }
      auto* const face = static_cast<FACE*>(entry.entity);
      const auto [owner, isNew] = bodyOfFace_.try_emplace(face, &body);
      if (isNew) {
        entity_fields::faces(body).push_back(face);
        reading_.inBody.insert(face);
      } else if (owner->second != &body) {
        reading_.Skip(Severity::kIgnored, of,
                      "face " + std::to_string(entry.id) + " is in another body already");
      }
    }
  }

  ENTITY* Listed(Element reference, std::string_view kind) {
    const Document::Entry& entry = document_.Require(reference, kind);
    if (entry.entity == nullptr) document_.Fail(reference, "this entity is misplaced");
    return entry.entity;
  }

  // The file of entities that are not in the document: the first that it names.
  void ReadFile(Element file) {
    std::string& name = reading_.model.partFile;
    if (!name.empty() || Child(set_, "FaceSet")) return;
    name = Cut(TextOf(file, "Name"), 400);
    const std::string_view format = TextOf(Child(file, "Format"), "DigitalModelFormatEnum");
    const std::string_view other = TextOf(Child(file, "Format"), "OtherDigitalModelFormat");
    reading_.model.partFormat =
        format == "STEPAP242" ? "STEP AP242" : Cut(format.empty() ? other : format, 40);
  }

  // An entity of the part's own file, of which nothing is known but its name. What it is stands in
  // its description; one that is not described is taken as a face.
  void ReadExternal(Element element) {
    const std::string_view kind = TextOf(element, "Description");
    const std::string_view name = TextOf(element, "Name");
    const std::string id(TextOf(element, "EntityId"));
    ENTITY* entity = nullptr;
    if (kind == "body") {
      entity = &reading_.part.Body();
      reading_.inBody.insert(entity);
    } else if (kind == "edge") {
      entity = &reading_.part.Make<EDGE>(nullptr, nullptr);
    } else if (kind == "vertex") {
      entity = &reading_.part.Make<VERTEX>();
    } else {
      entity = &reading_.part.Make<FACE>(std::vector<EDGE*>());
    }
    document_.EntryOf(element).entity = entity;
    if (!id.empty()) reading_.part.Id(*entity, id.c_str());
    const std::string label(name.empty() ? std::string_view(id) : name);
    if (kind.empty() && label.empty()) return;
    reading_.model.labels[entity] = {Cut(kind.empty() ? "entity" : kind, 40), label};
  }

  // The kernel reaches topology through bodies only.
  void SkipLoose() {
    for (const Document::Entry& entry : document_.Entries()) {
      if (entry.entity != nullptr && reading_.inBody.count(entry.entity) == 0) {
        reading_.Skip(Severity::kIgnored, entry.element, "it belongs to no body");
      }
    }
    for (const Element cloud : List("PointCloudSet", "PointCloud", "pointClouds")) {
      reading_.Skip(Severity::kIgnored, cloud, "the model has no point clouds");
    }
    for (const char* set : {"AssemblySet", "ComponentSet"}) {
      for (const Element element : document_.At({"Product", set}).children()) {
        reading_.Skip(Severity::kIgnored, element, "the model is one part");
      }
    }
  }

  Reading& reading_;
  Document& document_;
  Element set_;
  std::unordered_set<std::uint32_t> claimed_;
  std::unordered_map<const FACE*, const BODY*> bodyOfFace_;
};

}  // namespace

void ReadTopology(Reading& reading) { TopologyReader(reading).Read(); }

}  // namespace qif

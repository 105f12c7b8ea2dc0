#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework_orvo/KOVAOrvoDocument.h"
#include "orvo_kernel/geometry.h"
#include "orvo_kernel/model.h"
#include "pmi_entities/pmi_semantics.h"

// What the closed libraries keep behind their getters.
struct entity_fields {
  template <typename Entity>
  static typename Entity::fields& of(Entity& entity) {
    return entity.fields_;
  }
  static ENTITY_LIST& members(QENGROUP& group) { return group.members_; }
  static ENTITY_LIST& members(QENCOLLECTION& collection) { return collection.members_; }
  static std::vector<FACE*>& faces(BODY& body) { return body.faces_; }
  static std::vector<EDGE*>& wires(BODY& body) { return body.wires_; }
  static std::vector<VERTEX*>& points(BODY& body) { return body.points_; }
  static std::vector<EDGE*>& edges(FACE& face) { return face.edges_; }
};

namespace standin {

// What a PMI entity answers; change it to change the answers.
template <typename Entity>
typename Entity::fields& Edit(Entity& entity) {
  return entity_fields::of(entity);
}

// A kernel-backed document of one model. It owns nothing of the model.
class Document : public KOVAOrvoDocument {
 public:
  Document();
  ~Document() override;

  bool IsAvailable() const override { return available_; }
  KOVAResult GetExportRep(const KOVARepType& type,
                          KOVAExportRepresentation*& representation) override;
  void GetNativeEntityList(ENTITY_LIST& entities) override;

  void SetAvailable(bool available) { available_ = available; }
  // Appends a top-level entity.
  void Add(ENTITY& entity) { topLevel_.add(&entity); }
  // The B-rep export representation that GetExportRep answers with, or null after DropBRep.
  KOVAExportRepresentation* GetBRep() const { return brep_.get(); }
  void DropBRep() { brep_.reset(); }

 private:
  bool available_ = true;
  ENTITY_LIST topLevel_;
  std::unique_ptr<KOVAExportRepresentation> brep_;
};

// A model under construction, reading like a drawing:
//
//   standin::Part part;
//   FACE& top = part.Face(L"top");
//   auto& flatness = part.AddGeometricTolerance(top, tol_flatness, 0.2);
//   part.Place(flatness, {0, 0, 10}, {1, 0, 0}, {0, 0, 1});
//   auto& width = part.AddDimension({&left, &right}, dim_linear, dim_sub_width, 40);
//   KOVACreateOrvoPMIExporter(&part.GetDocument(), &exporter);
//
// The part owns every entity that it makes and deletes it with itself. Names are optional; a null
// name gives none.
class Part {
 public:
  Part() = default;
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;
  ~Part();

  Document& GetDocument() { return document_; }

  // Makes an entity of any class; only listed entities are top-level.
  template <typename Entity, typename... Arguments>
  Entity& Make(Arguments&&... arguments) {
    if (entities_.size() == entities_.capacity()) entities_.reserve(2 * entities_.size() + 8);
    auto* entity = new (1, __FILE__, __LINE__) Entity(std::forward<Arguments>(arguments)...);
    entities_.push_back(entity);
    return *entity;
  }
  // Every entity made so far, in order.
  const std::vector<ENTITY*>& GetEntities() const { return entities_; }

  // --- Topology ---

  // A new top-level body. Without faces it is a wire body.
  BODY& Body(const wchar_t* name = nullptr);
  // A face of `body`, by default of a body that the part keeps for such faces.
  FACE& Face(const wchar_t* name = nullptr, BODY* body = nullptr);
  // An edge of `face` with two new vertices, by default of a face of its own.
  EDGE& Edge(const wchar_t* name = nullptr, FACE* face = nullptr);
  // A free vertex of the part's body.
  VERTEX& Vertex(const wchar_t* name = nullptr);
  // A top-level body of `edges` edges and no face.
  BODY& WireBody(const wchar_t* name = nullptr, int edges = 1);

  // --- Groups and collections, top-level ---

  // `type` is the group's kind ("ATTRIB_XORVO_GROUP_TYPE"); 0 marks none.
  QENGROUP& Group(int type, std::initializer_list<ENTITY*> members);
  QENCOLLECTION& Collection(const std::vector<ENTITY*>& members);

  // --- Named attributes, each added to the end of the entity's chain ---

  // The entity's name ("ATTRIB_XORVO_NAME") as a wide string; null adds none.
  void Name(ENTITY& entity, const wchar_t* name);
  // The entity's name as a narrow string in the process's multibyte encoding; null is kept as null.
  void NarrowName(ENTITY& entity, const char* name);
  // The entity's identifier ("ATTRIB_XORVO_ID"); null is kept as null.
  void Id(ENTITY& entity, const char* id);
  // An integer of any name.
  void Integer(ENTITY& entity, const char* attribute, int value);
  // Marks the entity as hidden, for Ov_AttribTransfer::getShow.
  void Hide(ENTITY& entity);

  // --- PMI ---

  ATTRIB_KOVAPMI_TEXT& AddText(ENTITY& on, const wchar_t* text);
  ATTRIB_KOVAPMI_FLAGNOTE& AddFlagNote(ENTITY& on, const wchar_t* text);
  ATTRIB_KOVAPMI_ROUGHNESS& AddRoughness(ENTITY& on, const std::vector<std::wstring>& texts);
  // A datum with its attribute; the datum is Edit(attribute).datum.
  ATTRIB_KOVAPMI_DATUM& AddDatum(ENTITY& on, const wchar_t* label);
  // A datum target with its attribute, joining the targets of `datum` when one is given.
  ATTRIB_KOVAPMI_DATUM_TARGET& AddDatumTarget(ENTITY& on, const wchar_t* name,
                                              ATTRIB_KOVAPMI_DATUM* datum = nullptr);
  // A tolerance of one row.
  ATTRIB_KOVAPMI_GEOM_TOL& AddGeometricTolerance(ENTITY& on, tol_type type, double magnitude);
  KOVAPMI_GEOM_TOL_ROW& AddRow(ATTRIB_KOVAPMI_GEOM_TOL& tolerance, double magnitude);
  KOVAPMI_ZONE_MODIFIER& AddModifier(KOVAPMI_GEOM_TOL_ROW& row, zone_modifier_type type,
                                     std::optional<double> magnitude = std::nullopt);
  KOVAPMI_ZONE_MODIFIER& AddModifier(KOVAPMI_MODIFIED_DATUM& datum, zone_modifier_type type,
                                     std::optional<double> magnitude = std::nullopt);
  // A datum reference of a row's frame, which is made when there is none.
  KOVAPMI_DREF& AddReference(KOVAPMI_GEOM_TOL_ROW& row, const wchar_t* label,
                             const std::vector<KOVAPMI_DATUM*>& datums);
  // A top-level dimension measuring `members`.
  KOVAPMI_DIMENSION& AddDimension(const std::vector<ENTITY*>& members, dimension_type type,
                                  dimension_subtype subtype, double value);
  // A dimension that is not top-level but called out with another.
  KOVAPMI_DIMENSION& MakeCallout(callout_feature_annotation_type type, double value);
  // A top-level capture.
  KOVAPMI_CAPTURE& AddCapture(const std::vector<ENTITY*>& members);

  // Gives a PMI entity its display properties.
  template <typename Annotation>
  KOVAPMI_DISPLAY_PROPERTIES& Place(Annotation& annotation, const QENposition& point,
                                    const QENvector& direction, const QENvector& normal) {
    auto& display = Make<KOVAPMI_DISPLAY_PROPERTIES>();
    Edit(display).point = point;
    Edit(display).primary_direction = direction;
    Edit(display).normal = normal;
    Edit(annotation).display = &display;
    return display;
  }
  // Appends a leader to the display properties; model coordinates.
  KOVAPMI_LEADER_GEN& AddLeader(KOVAPMI_DISPLAY_PROPERTIES& display, const QENposition& tail,
                                const QENposition& head);

 private:
  std::vector<ENTITY*> entities_;
  Document document_;
  BODY* mainBody_ = nullptr;
};

// The datum or target of an attribute. REQUIRES: it is there and of that class.
inline KOVAPMI_DATUM& DatumOf(ATTRIB_KOVAPMI_DATUM& attribute) { return *attribute.get_datum(); }
inline KOVAPMI_DATUMTGT& TargetOf(ATTRIB_KOVAPMI_DATUM_TARGET& attribute) {
  return *attribute.get_datum_target();
}

}  // namespace standin

#include "standin/Part.h"

#include <cstring>

#include "orvo_kernel/internals.h"

namespace standin {

namespace {

class BRepRepresentation : public KOVAExportRepresentation {
 public:
  using KOVAExportRepresentation::KOVAExportRepresentation;
};

}  // namespace

Document::Document() : brep_(std::make_unique<BRepRepresentation>(*this)) {}
Document::~Document() = default;

KOVAResult Document::GetExportRep(const KOVARepType& type,
                                  KOVAExportRepresentation*& representation) {
  if (std::strcmp(type.GetName(), "BRep") != 0 || brep_ == nullptr) return KOVAResult(0x1000001);
  representation = brep_.get();
  return KOVAResult(0);
}

void Document::GetNativeEntityList(ENTITY_LIST& entities) {
  for (int i = 0; i < topLevel_.count(); ++i) entities.add(topLevel_[i]);
}

Part::~Part() {
  for (ENTITY* entity : entities_) {
    if (kernel_state::is_live(entity)) delete entity;
  }
}

// --- Topology ------------------------------------------------------------------------------------

BODY& Part::Body(const wchar_t* name) {
  auto& body = Make<BODY>(std::vector<FACE*>(), std::vector<EDGE*>(), std::vector<VERTEX*>());
  document_.Add(body);
  Name(body, name);
  return body;
}

FACE& Part::Face(const wchar_t* name, BODY* body) {
  if (body == nullptr) {
    if (mainBody_ == nullptr) mainBody_ = &Body();
    body = mainBody_;
  }
  auto& face = Make<FACE>(std::vector<EDGE*>());
  entity_fields::faces(*body).push_back(&face);
  Name(face, name);
  return face;
}

EDGE& Part::Edge(const wchar_t* name, FACE* face) {
  if (face == nullptr) face = &Face();
  auto& start = Make<VERTEX>();
  auto& end = Make<VERTEX>();
  auto& edge = Make<EDGE>(&start, &end);
  entity_fields::edges(*face).push_back(&edge);
  Name(edge, name);
  return edge;
}

VERTEX& Part::Vertex(const wchar_t* name) {
  if (mainBody_ == nullptr) mainBody_ = &Body();
  auto& vertex = Make<VERTEX>();
  entity_fields::points(*mainBody_).push_back(&vertex);
  Name(vertex, name);
  return vertex;
}

BODY& Part::WireBody(const wchar_t* name, int edges) {
  auto& body = Body(name);
  for (int i = 0; i < edges; ++i) {
    auto& start = Make<VERTEX>();
    auto& end = Make<VERTEX>();
    entity_fields::wires(body).push_back(&Make<EDGE>(&start, &end));
  }
  return body;
}

// --- Groups and collections ----------------------------------------------------------------------

QENGROUP& Part::Group(int type, std::initializer_list<ENTITY*> members) {
  auto& group = Make<QENGROUP>();
  for (ENTITY* member : members) entity_fields::members(group).add(member);
  if (type != 0) Integer(group, "ATTRIB_XORVO_GROUP_TYPE", type);
  document_.Add(group);
  return group;
}

QENCOLLECTION& Part::Collection(const std::vector<ENTITY*>& members) {
  auto& collection = Make<QENCOLLECTION>();
  for (ENTITY* member : members) entity_fields::members(collection).add(member);
  document_.Add(collection);
  return collection;
}

// --- Named attributes ----------------------------------------------------------------------------

void Part::Name(ENTITY& entity, const wchar_t* name) {
  if (name != nullptr) Make<ATTRIB_GEN_WSTRING>(&entity, "ATTRIB_XORVO_NAME", name);
}

void Part::NarrowName(ENTITY& entity, const char* name) {
  Make<ATTRIB_GEN_STRING>(&entity, "ATTRIB_XORVO_NAME", name);
}

void Part::Id(ENTITY& entity, const char* id) {
  Make<ATTRIB_GEN_STRING>(&entity, "ATTRIB_XORVO_ID", id);
}

void Part::Integer(ENTITY& entity, const char* attribute, int value) {
  Make<ATTRIB_GEN_INTEGER>(&entity, attribute, value);
}

void Part::Hide(ENTITY& entity) { Integer(entity, "show", 0); }

// --- PMI -----------------------------------------------------------------------------------------

ATTRIB_KOVAPMI_TEXT& Part::AddText(ENTITY& on, const wchar_t* text) {
  auto& attribute = Make<ATTRIB_KOVAPMI_TEXT>(&on);
  if (text != nullptr) Edit(attribute).text = text;
  return attribute;
}

ATTRIB_KOVAPMI_FLAGNOTE& Part::AddFlagNote(ENTITY& on, const wchar_t* text) {
  auto& attribute = Make<ATTRIB_KOVAPMI_FLAGNOTE>(&on);
  if (text != nullptr) Edit(attribute).text = text;
  return attribute;
}

ATTRIB_KOVAPMI_ROUGHNESS& Part::AddRoughness(ENTITY& on, const std::vector<std::wstring>& texts) {
  auto& attribute = Make<ATTRIB_KOVAPMI_ROUGHNESS>(&on);
  Edit(attribute).texts.assign(texts.begin(), texts.end());
  return attribute;
}

ATTRIB_KOVAPMI_DATUM& Part::AddDatum(ENTITY& on, const wchar_t* label) {
  auto& datum = Make<KOVAPMI_DATUM>();
  Edit(datum).label = label;
  auto& attribute = Make<ATTRIB_KOVAPMI_DATUM>(&on);
  Edit(attribute).datum = &datum;
  return attribute;
}

ATTRIB_KOVAPMI_DATUM_TARGET& Part::AddDatumTarget(ENTITY& on, const wchar_t* name,
                                                  ATTRIB_KOVAPMI_DATUM* datum) {
  auto& target = Make<KOVAPMI_DATUMTGT>();
  Edit(target).name = name;
  Edit(target).geometry = &on;
  auto& attribute = Make<ATTRIB_KOVAPMI_DATUM_TARGET>(&on);
  Edit(attribute).target = &target;
  if (datum != nullptr) Edit(DatumOf(*datum)).targets.push_back(&target);
  return attribute;
}

ATTRIB_KOVAPMI_GEOM_TOL& Part::AddGeometricTolerance(ENTITY& on, tol_type type, double magnitude) {
  auto& attribute = Make<ATTRIB_KOVAPMI_GEOM_TOL>(&on);
  Edit(attribute).type = type;
  AddRow(attribute, magnitude);
  return attribute;
}

KOVAPMI_GEOM_TOL_ROW& Part::AddRow(ATTRIB_KOVAPMI_GEOM_TOL& tolerance, double magnitude) {
  auto& row = Make<KOVAPMI_GEOM_TOL_ROW>();
  Edit(row).magnitude = magnitude;
  Edit(tolerance).rows.push_back(&row);
  return row;
}

KOVAPMI_ZONE_MODIFIER& Part::AddModifier(KOVAPMI_GEOM_TOL_ROW& row, zone_modifier_type type,
                                         std::optional<double> magnitude) {
  auto& modifier = Make<KOVAPMI_ZONE_MODIFIER>();
  Edit(modifier) = {type, magnitude};
  Edit(row).modifiers.push_back(&modifier);
  return modifier;
}

KOVAPMI_ZONE_MODIFIER& Part::AddModifier(KOVAPMI_MODIFIED_DATUM& datum, zone_modifier_type type,
                                         std::optional<double> magnitude) {
  auto& modifier = Make<KOVAPMI_ZONE_MODIFIER>();
  Edit(modifier) = {type, magnitude};
  Edit(datum).modifiers.push_back(&modifier);
  return modifier;
}

KOVAPMI_DREF& Part::AddReference(KOVAPMI_GEOM_TOL_ROW& row, const wchar_t* label,
                                 const std::vector<KOVAPMI_DATUM*>& datums) {
  auto*& frame = Edit(row).frame;
  if (frame == nullptr) frame = &Make<KOVAPMI_DRF>();
  auto& reference = Make<KOVAPMI_DREF>();
  Edit(reference).note = label;
  for (KOVAPMI_DATUM* datum : datums) {
    auto& modified = Make<KOVAPMI_MODIFIED_DATUM>();
    Edit(modified).datum = datum;
    Edit(reference).datums.push_back(&modified);
  }
  Edit(*frame).references.push_back(&reference);
  return reference;
}

KOVAPMI_DIMENSION& Part::AddDimension(const std::vector<ENTITY*>& members, dimension_type type,
                                      dimension_subtype subtype, double value) {
  auto& dimension = Make<KOVAPMI_DIMENSION>();
  for (ENTITY* member : members) entity_fields::members(dimension).add(member);
  Edit(dimension).type = type;
  Edit(dimension).subtype = subtype;
  Edit(dimension).value = value;
  document_.Add(dimension);
  return dimension;
}

KOVAPMI_DIMENSION& Part::MakeCallout(callout_feature_annotation_type type, double value) {
  auto& dimension = Make<KOVAPMI_DIMENSION>();
  Edit(dimension).value = value;
  Integer(dimension, "QENATTRIB_COANNOT_TYPE", type);
  return dimension;
}

KOVAPMI_CAPTURE& Part::AddCapture(const std::vector<ENTITY*>& members) {
  auto& capture = Make<KOVAPMI_CAPTURE>();
  for (ENTITY* member : members) Edit(capture).members.add(member);
  document_.Add(capture);
  return capture;
}

KOVAPMI_LEADER_GEN& Part::AddLeader(KOVAPMI_DISPLAY_PROPERTIES& display, const QENposition& tail,
                                    const QENposition& head) {
  auto& leader = Make<KOVAPMI_LEADER_GEN>();
  Edit(leader) = {head, tail};
  Edit(display).leaders.add(&leader);
  return leader;
}

}  // namespace standin

#include "orvo_kernel/model.h"

#include <cstring>

#include "orvo_kernel/api.h"
#include "orvo_kernel/geometry.h"
#include "orvo_kernel/internals.h"

ORVO_ENTITY_FUNCTIONS(ATTRIB, ENTITY)
ORVO_ENTITY_FUNCTIONS(ATTRIB_GEN_NAME, ATTRIB)
ORVO_ENTITY_FUNCTIONS(ATTRIB_GEN_INTEGER, ATTRIB_GEN_NAME)
ORVO_ENTITY_FUNCTIONS(ATTRIB_GEN_STRING, ATTRIB_GEN_NAME)
ORVO_ENTITY_FUNCTIONS(ATTRIB_GEN_WSTRING, ATTRIB_GEN_NAME)
ORVO_ENTITY_FUNCTIONS(BODY, ENTITY)
ORVO_ENTITY_FUNCTIONS(FACE, ENTITY)
ORVO_ENTITY_FUNCTIONS(EDGE, ENTITY)
ORVO_ENTITY_FUNCTIONS(VERTEX, ENTITY)
ORVO_ENTITY_FUNCTIONS(APOINT, ENTITY)
ORVO_ENTITY_FUNCTIONS(PLANE, ENTITY)
ORVO_ENTITY_FUNCTIONS(QENGROUP, ENTITY)
ORVO_ENTITY_FUNCTIONS(QENCOLLECTION, ENTITY)

int is_wire_body(const ENTITY* entity) {
  return is_BODY(entity) == 1 && static_cast<const BODY*>(entity)->faces().empty() ? 1 : 0;
}

namespace {

// The error number of a call on an entity of the wrong kind.
constexpr int kWrongEntity = 1;

// Does the work of a fallible call, or reports the fault that is set on it.
template <typename Work>
outcome Fallible(Work work) {
  auto& state = kernel_state::faults();
  if (++state.calls != state.failCall) return work();
  state.fired = true;
  if (state.failAfterWork) work();
  return outcome(state.callError);
}

enum Level { kFaces, kEdges, kVertices };

void AddEdge(EDGE* edge, Level level, ENTITY_LIST& list) {
  if (level == kEdges) {
    list.add(edge);
  } else {
    list.add(edge->start());
    list.add(edge->end());
  }
}

void AddFace(FACE* face, Level level, ENTITY_LIST& list) {
  if (level == kFaces) {
    list.add(face);
  } else {
    for (EDGE* edge : face->edges()) AddEdge(edge, level, list);
  }
}

outcome Traverse(ENTITY* entity, Level level, ENTITY_LIST& list) {
  return Fallible([&] {
    if (is_BODY(entity) == 1) {
      const auto& body = static_cast<const BODY&>(*entity);
      for (FACE* face : body.faces()) AddFace(face, level, list);
      if (level == kFaces) return outcome();
      for (EDGE* edge : body.wires()) AddEdge(edge, level, list);
      if (level == kEdges) return outcome();
      for (VERTEX* point : body.points()) list.add(point);
    } else if (is_FACE(entity) == 1) {
      AddFace(static_cast<FACE*>(entity), level, list);
    } else if (is_EDGE(entity) == 1) {
      if (level != kFaces) AddEdge(static_cast<EDGE*>(entity), level, list);
    } else if (is_VERTEX(entity) == 1) {
      if (level == kVertices) list.add(entity);
    } else {
      return outcome(kWrongEntity);
    }
    return outcome();
  });
}

}  // namespace

outcome api_get_faces(ENTITY* entity, ENTITY_LIST& list, int /*traversal*/, api_options*) {
  return Traverse(entity, kFaces, list);
}
outcome api_get_edges(ENTITY* entity, ENTITY_LIST& list, int /*traversal*/, api_options*) {
  return Traverse(entity, kEdges, list);
}
outcome api_get_vertices(ENTITY* entity, ENTITY_LIST& list, int /*traversal*/, api_options*) {
  return Traverse(entity, kVertices, list);
}

outcome api_find_named_attribute(ENTITY* entity, const char* name, ATTRIB_GEN_NAME*& attribute,
                                 api_options* /*options*/) {
  return Fallible([&] {
    attribute = nullptr;
    if (entity == nullptr) return outcome(kWrongEntity);
    for (ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) {
      if (is_ATTRIB_GEN_NAME(a) != 1) continue;
      auto* named = static_cast<ATTRIB_GEN_NAME*>(a);
      if (std::strcmp(named->name(), name) != 0) continue;
      attribute = named;
      break;
    }
    return outcome();
  });
}

outcome api_ct_return_ents(QENGROUP* group, ENTITY_LIST& members) {
  return Fallible([&] {
    if (group == nullptr) return outcome(kWrongEntity);
    const ENTITY_LIST& own = group->members();
    for (int i = 0; i < own.count(); ++i) members.add(own[i]);
    return outcome();
  });
}

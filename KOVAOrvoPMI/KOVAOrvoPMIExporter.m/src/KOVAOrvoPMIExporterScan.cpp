// The scan: which entities PMI is looked for on, what hangs on them, and what that is attached to.
#include <memory>

#include "NamedAttributes.h"
#include "Prefetch.h"
#include "QueryShape.h"
#include "framework_orvo/KOVAOrvoDocument.h"
#include "orvo_kernel/api.h"

namespace {

constexpr int kManufacturingGroup = 3;
constexpr int kDrivingDimensionGroup = 6;
constexpr const wchar_t* kDummyPointName = L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI";

bool GroupTypeIs(QENGROUP* group, int type) {
  int value = 0;
  return FindInteger(group, kGroupTypeAttribute, value) && value == type;
}

// Appends the entity's faces, edges and vertices; returns true if at least one call succeeded.
bool GetTopology(ENTITY* entity, ENTITY_LIST& topology) {
  const bool faces = api_get_faces(entity, topology).error_number() == 0;
  const bool edges = api_get_edges(entity, topology).error_number() == 0;
  const bool vertices = api_get_vertices(entity, topology).error_number() == 0;
  return faces || edges || vertices;
}

// Calls visit(entity) for the entities of a list in order. The next ones are on their way from
// memory meanwhile: scanning a sparse model takes 1.2 times as long as the kernel's own calls, and
// 1.28 times without that.
template <typename Visit>
void VisitEach(ENTITY_LIST& entities, Visit visit) {
  constexpr int kAhead = 64;
  ENTITY* ahead[kAhead];
  int count = 0;
  entities.init();
  do {
    for (count = 0; count < kAhead; ++count) {
      ahead[count] = entities.next();
      if (ahead[count] == nullptr) break;
      Prefetch(ahead[count]);
    }
    for (int i = 0; i < count; ++i) visit(ahead[i]);
  } while (count == kAhead);
}

// Appends the members of a group's or collection's own list.
void AppendMembers(const ENTITY_LIST& list, std::vector<ENTITY*>& entities) {
  ENTITY_LIST& members = Changeable(list);
  members.init();
  while (ENTITY* member = members.next()) entities.push_back(member);
}

}  // namespace

// The steps for an entity are not alternatives: one that is of several kinds goes through each.
KOVAResult KOVAOrvoPMIExporter::Initialize() {
  if (initialized) return Failure;
  auto* document = dynamic_cast<KOVAOrvoDocument*>(GetDocument());
  if (document == nullptr) return Failure;
  initialized = true;
  KOVAResult result = Success;
  // A scan that throws leaves an index that can be asked, too.
  const struct SortAtEnd {
    KOVAOrvoPMIExporter* exporter;
    ~SortAtEnd() { exporter->SortReverseIndexes(); }
  } sortAtEnd{this};
  ENTITY_LIST entities;
  document->GetNativeEntityList(entities);
  annotationSet = new KOVAIdentifier(EmptyIdentifier());
  entities.init();
  while (ENTITY* entity = entities.next()) {
    if (IsKind<BODY>(entity)) result |= InitializeAnnotationSetFromEntities(entity);
    ENTITY_LIST topology;
    if (GetTopology(entity, topology)) {
      VisitEach(topology,
                [&](ENTITY*& part) { result |= InitializeAnnotationSetFromEntities(part); });
    }
    auto* group = As<QENGROUP>(entity);
    if (group != nullptr && IsManufacturing(group)) result |= InitializeManufacturingGroup(group);
    if (group != nullptr && IsDrivingDimensionGroup(group)) {
      ENTITY_LIST members;
      api_ct_return_ents(group, members);
      members.init();
      while (ENTITY* member = members.next()) result |= InitializeDimension(member);
    }
    const bool isDimension = IsKind<KOVAPMI_DIMENSION>(entity);
    if (!isDimension && IsKind<QENCOLLECTION>(entity)) {
      result |= InitializeAnnotationSetFromEntities(entity);
    }
    if (isDimension) result |= InitializeDimension(entity);
    if (IsKind<KOVAPMI_CAPTURE>(entity)) result |= InitializeCapture(entity);
  }
  if (annotationViews.empty() && captures.empty()) {
    delete annotationSet;
    annotationSet = nullptr;
  }
  return result;
}

bool KOVAOrvoPMIExporter::IsManufacturing(QENGROUP* group) {
  return GroupTypeIs(group, kManufacturingGroup);
}

bool KOVAOrvoPMIExporter::IsDrivingDimensionGroup(QENGROUP* group) {
  return GroupTypeIs(group, kDrivingDimensionGroup);
}

bool KOVAOrvoPMIExporter::IsDimensionCalloutAnnotation(ENTITY* entity, int& calloutType) {
  return FindInteger(entity, kCalloutTypeAttribute, calloutType);
}

KOVAResult KOVAOrvoPMIExporter::InitializeManufacturingGroup(const QENGROUP* group) {
  KOVAResult result = Failure;
  if (group == nullptr) return result;
  Owners members;
  AppendMembers(Changeable(*group).members(), members);
  for (ENTITY* member : members) {
    if (is_wire_body(member) != 1) continue;
    ENTITY_LIST edges;
    if (api_get_edges(member, edges).error_number() != 0) continue;
    edges.init();
    while (ENTITY* edge = edges.next()) result |= InitializeAnnotationSetFromEntities(edge);
  }
  return result;
}

// The order of the collectors is the order of the annotations.
KOVAResult KOVAOrvoPMIExporter::InitializeAnnotationSetFromEntities(ENTITY*& entity) {
  KOVAResult result = Success;
  if (entity == nullptr || entity->first_attribute() == nullptr) return result;  // most of them
  ENTITY_LIST found;
  GetTextAttribute(entity, found);
  GetFlagNoteAttribute(entity, found);
  GetRoughnessAttribute(entity, found);
  GetDatumAttribute(entity, found);
  GetDatumTargetAttribute(entity, found);
  GetGeomtolAttribute(entity, found);
  if (found.iteration_count() == 0) return result;
  Owners owners;
  result &= GetOwnerList(entity, owners);
  result &= InitializeAnnotationFromAttributes(found, std::move(owners));
  return result;
}

KOVAResult KOVAOrvoPMIExporter::GetOwnerList(ENTITY*& entity, Owners& owners) {
  if (IsKind<BODY>(entity) || IsKind<FACE>(entity) || IsKind<EDGE>(entity) ||
      IsKind<VERTEX>(entity)) {
    if (is_wire_body(entity) == 1) {
      wchar_t* name = nullptr;
      const bool named = GetEntityNameW(entity, name);
      const std::unique_ptr<wchar_t[]> nameOwner(name);
      if (named && KOVAString(name).equals(KOVAString(kDummyPointName))) return Success;
    }
    owners.push_back(entity);
  } else if (auto* collection = As<QENCOLLECTION>(entity)) {
    AppendMembers(collection->members(), owners);
  }
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::InitializeDimension(ENTITY*& dimension) {
  // A driving-dimension group may hold what has no members to measure; that is passed over.
  if (!IsKind<KOVAPMI_DIMENSION>(dimension) && !IsKind<QENCOLLECTION>(dimension)) return Failure;
  auto* collection = static_cast<QENCOLLECTION*>(dimension);
  ENTITY_LIST found;
  found.add(dimension);
  Owners owners;
  AppendMembers(collection->members(), owners);
  return InitializeAnnotationFromAttributes(found, std::move(owners));
}

// The scan: which entities PMI is looked for on, what hangs on them, and what that is attached to.
#include <memory>

#include "NamedAttributes.h"
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

// The collectors that would find something, a bit each.
enum PmiKinds : unsigned {
  kTexts = 1,
  kFlagNotes = 2,
  kRoughnesses = 4,
  kDatums = 8,
  kDatumTargets = 16,
  kTolerances = 32
};

unsigned KindOf(const ATTRIB& attribute) {
  switch (attribute.identity(0)) {
    case ATTRIB_KOVAPMI_TEXT_TYPE:
      return kTexts;
    case ATTRIB_KOVAPMI_FLAGNOTE_TYPE:
      return kFlagNotes;
    case ATTRIB_KOVAPMI_ROUGHNESS_TYPE:
      return kRoughnesses;
    case ATTRIB_KOVAPMI_DATUM_TYPE:
      return kDatums;
    case ATTRIB_KOVAPMI_DATUM_TARGET_TYPE:
      return kDatumTargets;
    case ATTRIB_KOVAPMI_GEOM_TOL_TYPE:
      return kTolerances;
    default:
      return 0;
  }
}

// Told by one walk over the chain; most chains carry none.
unsigned KindsOn(const ENTITY& entity) {
  unsigned kinds = 0;
  for (const ATTRIB* a = entity.first_attribute(); a != nullptr; a = a->next_attribute()) {
    kinds |= KindOf(*a);
  }
  return kinds;
}

// Calls visit(entity) for the entities of a list in order; the next ones are on their way from
// memory meanwhile.
template <typename Visit>
void VisitEach(const ENTITY_LIST& entities, Visit visit) {
  constexpr int kAhead = 64;
  ENTITY* ahead[kAhead];
  int count = 0;
  entities.init();
  do {
    for (count = 0; count < kAhead; ++count) {
      ahead[count] = entities.next();
      if (ahead[count] == nullptr) break;
      __builtin_prefetch(ahead[count]);
    }
    for (int i = 0; i < count; ++i) visit(ahead[i]);
  } while (count == kAhead);
}

// Appends the members of a group's or collection's own list.
void AppendMembers(const ENTITY_LIST& members, std::vector<ENTITY*>& entities) {
  entities.reserve(entities.size() + static_cast<std::size_t>(members.iteration_count()));
  for (int i = 0; i < members.count(); ++i) {
    if (members[i] != nullptr) entities.push_back(members[i]);
  }
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::Initialize() {
  if (initialized) return Failure;
  auto* document = dynamic_cast<KOVAOrvoDocument*>(GetDocument());
  if (document == nullptr) return Failure;
  initialized = true;
  KOVAResult result = Success;
  ENTITY_LIST entities;
  document->GetNativeEntityList(entities);
  annotationSet = new KOVAIdentifier(EmptyIdentifier());
  entities.init();
  while (ENTITY* entity = entities.next()) ScanEntity(entity, result);
  if (annotationViews.empty() && captures.empty()) {
    delete annotationSet;
    annotationSet = nullptr;
  }
  return result;
}

// The steps are no alternatives: an entity that is of several kinds goes through each.
void KOVAOrvoPMIExporter::ScanEntity(ENTITY* entity, KOVAResult& result) {
  if (IsKind<BODY>(entity)) result |= InitializeAnnotationSetFromEntities(entity);
  ScanTopology(entity, result);
  if (auto* group = As<QENGROUP>(entity)) ScanGroup(group, result);
  const bool isDimension = IsKind<KOVAPMI_DIMENSION>(entity);
  if (!isDimension && IsKind<QENCOLLECTION>(entity)) {
    result |= InitializeAnnotationSetFromEntities(entity);
  }
  if (isDimension) result |= InitializeDimension(entity);
  if (IsKind<KOVAPMI_CAPTURE>(entity)) result |= InitializeCapture(entity);
}

void KOVAOrvoPMIExporter::ScanTopology(ENTITY* entity, KOVAResult& result) {
  ENTITY_LIST topology;
  const bool faces = api_get_faces(entity, topology).error_number() == 0;
  const bool edges = api_get_edges(entity, topology).error_number() == 0;
  const bool vertices = api_get_vertices(entity, topology).error_number() == 0;
  if (!faces && !edges && !vertices) return;
  // Most parts carry nothing, which is a success.
  VisitEach(topology, [&](ENTITY*& part) {
    result |=
        part->first_attribute() == nullptr ? Success : InitializeAnnotationSetFromEntities(part);
  });
}

void KOVAOrvoPMIExporter::ScanGroup(QENGROUP* group, KOVAResult& result) {
  if (IsManufacturing(group)) result |= InitializeManufacturingGroup(group);
  if (IsDrivingDimensionGroup(group)) {
    ENTITY_LIST members;
    api_ct_return_ents(group, members);
    members.init();
    while (ENTITY* member = members.next()) result |= InitializeDimension(member);
  }
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
  const ENTITY_LIST& members = group->members();
  for (int i = 0; i < members.count(); ++i) {
    if (is_wire_body(members[i]) != 1) continue;
    ENTITY_LIST edges;
    if (api_get_edges(members[i], edges).error_number() != 0) continue;
    edges.init();
    while (ENTITY* edge = edges.next()) result |= InitializeAnnotationSetFromEntities(edge);
  }
  return result;
}

// The order of the collectors is the order of the annotations.
KOVAResult KOVAOrvoPMIExporter::InitializeAnnotationSetFromEntities(ENTITY*& entity) {
  KOVAResult result = Success;
  const unsigned kinds = entity == nullptr ? 0 : KindsOn(*entity);
  if (kinds == 0) return result;
  ENTITY_LIST found;
  if (kinds & kTexts) GetTextAttribute(entity, found);
  if (kinds & kFlagNotes) GetFlagNoteAttribute(entity, found);
  if (kinds & kRoughnesses) GetRoughnessAttribute(entity, found);
  if (kinds & kDatums) GetDatumAttribute(entity, found);
  if (kinds & kDatumTargets) GetDatumTargetAttribute(entity, found);
  if (kinds & kTolerances) GetGeomtolAttribute(entity, found);
  if (found.count() == 0) return result;
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
  } else if (const auto* collection = As<QENCOLLECTION>(entity)) {
    AppendMembers(collection->members(), owners);
  }
  return Success;
}

KOVAResult KOVAOrvoPMIExporter::InitializeDimension(ENTITY*& dimension) {
  // A driving-dimension group may hold what has no members to measure; that is passed over.
  const auto* collection = As<QENCOLLECTION>(dimension);
  if (collection == nullptr) return Failure;
  ENTITY_LIST found;
  found.add(dimension);
  Owners owners;
  AppendMembers(collection->members(), owners);
  return InitializeAnnotationFromAttributes(found, std::move(owners));
}

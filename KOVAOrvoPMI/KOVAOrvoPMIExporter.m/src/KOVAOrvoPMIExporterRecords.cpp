// The scan: an annotation's identifier, owners, callouts, datum links and view.
#include <algorithm>
#include <new>

#include "DisplayProperties.h"
#include "KernelApiFrame.h"
#include "NamedAttributes.h"
#include "Prefetch.h"
#include "QueryShape.h"
#include "orvo_kernel/geometry.h"

namespace {

// Appends every attribute of the entity's chain that is exactly of the class.
template <typename Attribute>
bool Collect(const ENTITY* entity, int type, ENTITY_LIST& found) {
  if (entity == nullptr) return false;
  for (ATTRIB* a = Changeable(*entity).first_attribute(); a != nullptr; a = a->next_attribute()) {
    if (a->identity(0) == type && IsKind<Attribute>(a)) found.add(a);
  }
  return found.iteration_count() > 0;
}

}  // namespace

bool KOVAOrvoPMIExporter::GetTextAttribute(ENTITY const* entity, ENTITY_LIST& found) {
  return Collect<ATTRIB_KOVAPMI_TEXT>(entity, ATTRIB_KOVAPMI_TEXT_TYPE, found);
}
bool KOVAOrvoPMIExporter::GetFlagNoteAttribute(ENTITY const* entity, ENTITY_LIST& found) {
  return Collect<ATTRIB_KOVAPMI_FLAGNOTE>(entity, ATTRIB_KOVAPMI_FLAGNOTE_TYPE, found);
}
bool KOVAOrvoPMIExporter::GetRoughnessAttribute(ENTITY const* entity, ENTITY_LIST& found) {
  return Collect<ATTRIB_KOVAPMI_ROUGHNESS>(entity, ATTRIB_KOVAPMI_ROUGHNESS_TYPE, found);
}
bool KOVAOrvoPMIExporter::GetDatumAttribute(ENTITY const* entity, ENTITY_LIST& found) {
  return Collect<ATTRIB_KOVAPMI_DATUM>(entity, ATTRIB_KOVAPMI_DATUM_TYPE, found);
}
bool KOVAOrvoPMIExporter::GetDatumTargetAttribute(ENTITY const* entity, ENTITY_LIST& found) {
  return Collect<ATTRIB_KOVAPMI_DATUM_TARGET>(entity, ATTRIB_KOVAPMI_DATUM_TARGET_TYPE, found);
}
bool KOVAOrvoPMIExporter::GetGeomtolAttribute(ENTITY const* entity, ENTITY_LIST& found) {
  return Collect<ATTRIB_KOVAPMI_GEOM_TOL>(entity, ATTRIB_KOVAPMI_GEOM_TOL_TYPE, found);
}

// A tolerance that hangs on a tolerance comes right after it, to any depth. What is still to come
// stands on a list and not on the call stack.
KOVAResult KOVAOrvoPMIExporter::InitializeAnnotationFromAttributes(ENTITY_LIST const& entities,
                                                                   Owners owners) {
  struct Pending {
    ENTITY* entity;
    ENTITY* parent;                       // null for an entity of the list
    KOVAPMI_DISPLAY_PROPERTIES* display;  // null without any
  };
  std::vector<Pending> pending;  // the next one stands last
  // Growing, it would leave blocks of many sizes among those of the index: a dense model's index
  // takes 1.06 times as long to build and 1.15 times as long to destroy.
  pending.reserve(static_cast<std::size_t>(Changeable(entities).iteration_count()));
  const auto add = [&](ENTITY_LIST& list, ENTITY* parent) {
    const auto before = static_cast<std::ptrdiff_t>(pending.size());
    list.init();
    while (ENTITY* entity = list.next()) {
      pending.push_back({entity, parent, initialized ? FindDisplayProperties(entity) : nullptr});
      Prefetch(pending.back().display);  // indexing a dense model takes 1.03 times as long without
    }
    std::reverse(pending.begin() + before, pending.end());
  };
  add(Changeable(entities), nullptr);
  const KOVAResult result = pending.empty() ? Failure : Success;
  while (!pending.empty()) {
    const auto [entity, parent, display] = pending.back();
    pending.pop_back();
    if (parent == nullptr) {
      InitializeAnnotation(entity, owners, display);
    } else {
      InitializeAnnotation(entity, {parent}, display);
    }
    if (!IsKind<ATTRIB_KOVAPMI_GEOM_TOL>(entity)) continue;
    ENTITY_LIST nested;
    if (GetGeomtolAttribute(entity, nested)) add(nested, entity);
  }
  return result;
}

void KOVAOrvoPMIExporter::InitializeAnnotation(ENTITY* entity, const Owners& owners,
                                               KOVAPMI_DISPLAY_PROPERTIES* display) {
  const KOVAIdentifier annotation = AnnotationIdentifier(entity, this);
  // Entities mostly come in the order of their addresses: then the place is known.
  annotationOwnerMap.insert_or_assign(annotationOwnerMap.end(), entity, owners);

  if (IsKind<KOVAPMI_DIMENSION>(entity)) {
    IdentifierHashMap::List callouts;
    for (ENTITY* owner : owners) {
      if (IsKind<KOVAPMI_DIMENSION>(owner) && HasNamedAttribute(owner, kCalloutTypeAttribute)) {
        callouts.push_back(BareIdentifier(owner));
      }
    }
    dimensionsOfCallouts_.Reserve(callouts.size());
    if (!callouts.empty() && calloutAnnotationMap.Add(annotation, callouts)) {
      for (const KOVAIdentifier& callout : callouts) {
        dimensionsOfCallouts_.Add(callout.GetNativeObject(), annotation.GetNativeObject());
      }
    }
  }
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM>(entity)) {
    if (ENTITY* datum = attribute->get_datum()) datumAnnotationMap[datum] = entity;
  }
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity)) {
    if (ENTITY* target = attribute->get_datum_target()) datumTargetAnnotationMap[target] = entity;
  }

  ENTITY* plane = display != nullptr ? MakeViewPlane(*display) : nullptr;
  InitialiseViewVsAnnotationMap(ViewIdentifier(plane, this), annotation);
}

ENTITY* KOVAOrvoPMIExporter::MakeViewPlane(KOVAPMI_DISPLAY_PROPERTIES& display) {
  const QENposition point = display.get_disp_pt();
  const QENvector direction = display.get_primary_direction();
  const QENvector normal = display.get_disp_plane_normal();
  const QENunit_vector unitNormal(normal.x(), normal.y(), normal.z());
  const QENvector across = cross(unitNormal, direction);
  if (!(dot(direction, direction) > 0) || dot(across, across) == 0) return nullptr;
  const plane definition(point, unitNormal, direction);
  // The plane has an owner from the moment it exists, however the frame ends.
  viewPlanes_.push_back(nullptr);
  RunInKernelApiFrame(
      [&] {
        ENTITY* made = new (1, __FILE__, __LINE__) PLANE(definition);
        if (made == nullptr) throw std::bad_alloc();
        return made;
      },
      viewPlanes_.back());
  return viewPlanes_.back();
}

// On an exception neither the views nor the maps have changed.
KOVAResult KOVAOrvoPMIExporter::InitialiseViewVsAnnotationMap(KOVAIdentifier const& view,
                                                              KOVAIdentifier const& annotation) {
  if (annotationViews.size() == annotationViews.capacity()) {
    annotationViews.reserve(2 * annotationViews.size() + 1);
  }
  planesOfAnnotations_.Reserve(1);
  if (viewAnnotationMap.AddOrAppend(view, annotation)) annotationViews.push_back(view);
  if (view.GetNativeObject() != nullptr) {
    planesOfAnnotations_.Add(annotation.GetNativeObject(), view.GetNativeObject());
  }
  return Success;
}

void KOVAOrvoPMIExporter::SortReverseIndexes() {
  planesOfAnnotations_.Sort(viewAnnotationMap);
  dimensionsOfCallouts_.Sort(calloutAnnotationMap);
}

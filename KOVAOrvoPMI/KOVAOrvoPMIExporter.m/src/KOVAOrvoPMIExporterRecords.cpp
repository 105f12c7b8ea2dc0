// The scan: an annotation's identifier, owners, callouts, datum links and view.
#include <new>
#include <utility>

#include "DisplayProperties.h"
#include "KernelApiFrame.h"
#include "NamedAttributes.h"
#include "QueryShape.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/geometry.h"

namespace {

// Appends every attribute of the entity's chain that is exactly of the class.
template <typename Attribute>
bool Collect(const ENTITY* entity, int type, ENTITY_LIST& found) {
  if (entity == nullptr) return false;
  for (ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) {
    if (a->identity(0) == type && IsKind<Attribute>(a)) found.add(a);
  }
  return found.count() > 0;
}

// A view plane on its way into the list of planes, which takes it over whatever happens. The room
// for it is made first, so that no plane is ever without an owner.
class NewPlane {
 public:
  explicit NewPlane(ENTITY_LIST& planes) : planes_(planes) { planes_.make_room(); }
  NewPlane(const NewPlane&) = delete;
  NewPlane& operator=(const NewPlane&) = delete;
  ~NewPlane() { planes_.add(plane_, false); }

  // The plane that display properties describe, or null when they describe none.
  ENTITY* Make(const KOVAPMI_DISPLAY_PROPERTIES& display) {
    const QENposition point = display.get_disp_pt();
    const QENvector direction = display.get_primary_direction();
    const QENvector normal = display.get_disp_plane_normal();
    const QENunit_vector unitNormal(normal.x(), normal.y(), normal.z());
    const QENvector across = cross(unitNormal, direction);
    if (!(direction.length_squared() > 0) || across.length_squared() == 0) return nullptr;
    const plane definition(point, unitNormal, direction);
    RunInKernelApiFrame(
        [&] {
          ENTITY* made = new (1, __FILE__, __LINE__) PLANE(definition);
          if (made == nullptr) throw std::bad_alloc();
          return made;
        },
        plane_);
    return plane_;
  }

 private:
  ENTITY_LIST& planes_;
  ENTITY* plane_ = nullptr;
};

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

// A tolerance that hangs on a tolerance comes right after it, to any depth; the levels still to be
// gone through stand on a list and not on the stack.
KOVAResult KOVAOrvoPMIExporter::InitializeAnnotationFromAttributes(ENTITY_LIST const& entities,
                                                                   Owners owners) {
  struct Level {
    ENTITY_LIST tolerances;
    Owners parent;
  };
  std::vector<Level> nested;
  KOVAResult result = Failure;
  const auto annotate = [&](ENTITY* entity, Owners entityOwners) {
    InitializeAnnotation(entity, std::move(entityOwners));
    if (!IsKind<ATTRIB_KOVAPMI_GEOM_TOL>(entity)) return;
    ENTITY_LIST tolerances;
    if (GetGeomtolAttribute(entity, tolerances)) nested.push_back({tolerances, {entity}});
  };
  // What the later planes will be made from is on its way from memory before the first one is made.
  for (int i = 1; i < entities.count(); ++i) {
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    FindDisplayProperties(entities[i], display);
    __builtin_prefetch(display);
  }
  int left = entities.iteration_count();
  entities.init();
  while (ENTITY* entity = entities.next()) {
    Owners own;
    if (--left > 0) {
      own = owners;
    } else {
      own.swap(owners);
    }
    annotate(entity, std::move(own));
    while (!nested.empty()) {
      ENTITY* tolerance = nested.back().tolerances.next();
      if (tolerance == nullptr) {
        nested.pop_back();
      } else {
        annotate(tolerance, nested.back().parent);
      }
    }
    result = Success;
  }
  return result;
}

void KOVAOrvoPMIExporter::InitializeAnnotation(ENTITY* entity, Owners entityOwners) {
  const KOVAIdentifier annotation = AnnotationIdentifier(entity, this);
  // Entities mostly come in the order of their addresses: then the place is known.
  const Owners& owners =
      annotationOwnerMap
          .insert_or_assign(annotationOwnerMap.end(), entity, std::move(entityOwners))
          ->second;

  if (IsKind<KOVAPMI_DIMENSION>(entity)) {
    IdentifierHashMap::List callouts;
    for (ENTITY* owner : owners) {
      if (IsKind<KOVAPMI_DIMENSION>(owner) && HasNamedAttribute(owner, kCalloutTypeAttribute)) {
        callouts.push_back(BareIdentifier(owner));
      }
    }
    if (!callouts.empty()) calloutAnnotationMap.Add(annotation, std::move(callouts));
  }
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM>(entity)) {
    if (ENTITY* datum = attribute->get_datum()) datumAnnotationMap[datum] = entity;
  }
  if (auto* attribute = As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity)) {
    if (ENTITY* target = attribute->get_datum_target()) datumTargetAnnotationMap[target] = entity;
  }

  KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  if (initialized) FindDisplayProperties(entity, display);
  ENTITY* plane = nullptr;
  if (display != nullptr) plane = NewPlane(viewPlanes).Make(*display);
  InitialiseViewVsAnnotationMap(ViewIdentifier(plane, this), annotation);
}

// On an exception neither the views nor the map have changed.
KOVAResult KOVAOrvoPMIExporter::InitialiseViewVsAnnotationMap(KOVAIdentifier const& view,
                                                              KOVAIdentifier const& annotation) {
  if (annotationViews.size() == annotationViews.capacity()) {
    annotationViews.reserve(2 * annotationViews.size() + 1);
  }
  if (viewAnnotationMap.AddOrAppend(view, annotation)) annotationViews.push_back(view);
  return Success;
}

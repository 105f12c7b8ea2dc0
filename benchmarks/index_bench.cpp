// Building the index and destroying it, beside the same work done plainly.
#include <algorithm>
#include <map>

#include "Measure.h"
#include "Models.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/geometry.h"

namespace {

using measure::Compare;
using measure::Time;

models::Held held;

double BuildSeconds(standin::Part& part) {
  models::Exporter exporter;
  return Time([&] { exporter = models::Index(part); });
}

// The kernel calls that finding annotations takes, storing nothing.
double TraversalSeconds(standin::Part& part) {
  return Time([&] {
    ENTITY_LIST entities;
    part.GetDocument().GetNativeEntityList(entities);
    entities.init();
    while (ENTITY* entity = entities.next()) {
      if (is_BODY(entity) == 1) benchmark::DoNotOptimize(entity->first_attribute());
      ENTITY_LIST topology;
      api_get_faces(entity, topology);
      api_get_edges(entity, topology);
      api_get_vertices(entity, topology);
      topology.init();
      while (ENTITY* each = topology.next()) benchmark::DoNotOptimize(each->first_attribute());
    }
  });
}

void Sparse(benchmark::State& state) {
  auto& part = held.Part("sparse", [] { return models::Sparse(500); });
  Compare(
      state, 1e6, [&] { return BuildSeconds(part); }, [&] { return TraversalSeconds(part); });
}

// --- A dense model, beside plain records of what the index holds for an annotation ---------------

using Placed = std::pair<ENTITY*, KOVAPMI_DISPLAY_PROPERTIES*>;

PLANE* PlaneInBareBracket(KOVAPMI_DISPLAY_PROPERTIES& display) {
  const QENvector normal = display.get_disp_plane_normal();
  outcome result;
  api_bb_begin(1);
  auto* made = new (1, __FILE__, __LINE__)
      PLANE(plane(display.get_disp_pt(), QENunit_vector(normal.x(), normal.y(), normal.z()),
                  display.get_primary_direction()));
  api_bb_end(result, 1, 0);
  return made;
}

KOVAIdentifier Naming(void* object) {
  return KOVAIdentifier(object, "annotation", nullptr, "ENTITY", KOVAIdentifierCastHandle(nullptr));
}

void Delete(const std::vector<PLANE*>& planes) {
  ENTITY_LIST list;
  for (PLANE* each : planes) list.add(each);
  api_del_entity_list(list);
}

// One entry of an ordered map with a one-element list, one plane, two lists of one identifier.
double RecordsSeconds(const std::vector<Placed>& annotations) {
  std::map<ENTITY*, std::vector<ENTITY*>> owners;
  std::vector<std::vector<KOVAIdentifier>> lists;
  std::vector<PLANE*> planes;
  lists.reserve(2 * annotations.size());
  planes.reserve(annotations.size());
  const double seconds = Time([&] {
    for (const auto& [annotation, display] : annotations) {
      const KOVAIdentifier identifier = Naming(annotation);
      owners[annotation] = {annotation};
      planes.push_back(PlaneInBareBracket(*display));
      lists.push_back({identifier});
      lists.push_back({identifier});
    }
  });
  Delete(planes);
  return seconds;
}

// Records as the exporter's own, made and freed in its order: an entry of an ordered map with a
// one-element list, a plane, a list of one identifier for the plane's view, the view's identifier.
class Records {
 public:
  explicit Records(const std::vector<Placed>& annotations) {
    for (const auto& [annotation, display] : annotations) {
      owners_[annotation] = {annotation};
      views_.push_back(Naming(PlaneInBareBracket(*display)));
      lists_.push_back({Naming(annotation)});
    }
  }
  double SecondsToFree() {
    return Time([&] {
      owners_.clear();
      std::vector<std::vector<KOVAIdentifier>>().swap(lists_);
      ENTITY_LIST planes;
      for (const KOVAIdentifier& view : views_) {
        planes.add(static_cast<ENTITY*>(view.GetNativeObject()));
      }
      std::vector<KOVAIdentifier>().swap(views_);
      api_del_entity_list(planes);
    });
  }

 private:
  std::map<ENTITY*, std::vector<ENTITY*>> owners_;
  std::vector<std::vector<KOVAIdentifier>> lists_;
  std::vector<KOVAIdentifier> views_;
};

constexpr int kDense = 100000;
standin::Part& DensePart() {
  return held.Part("dense",
                   [] { return models::Dense(kDense, models::kPlainKinds, models::InPlanes); });
}

int KindOf(const Placed& annotation) {
  ENTITY* const entity = annotation.first;
  if (is_ATTRIB_KOVAPMI_TEXT(entity) == 1) return 0;
  if (is_ATTRIB_KOVAPMI_FLAGNOTE(entity) == 1) return 1;
  return is_ATTRIB_KOVAPMI_ROUGHNESS(entity) == 1 ? 2 : 3;
}

// The annotations of the dense model with their display properties, in the exporter's order: face
// by face, and kind by kind of a face.
std::vector<Placed> Annotations(standin::Part& part) {
  std::vector<ENTITY*> faces;
  std::vector<KOVAPMI_DISPLAY_PROPERTIES*> displays;  // in the order of the attributes
  for (ENTITY* entity : part.GetEntities()) {
    if (is_FACE(entity) == 1) faces.push_back(entity);
    if (is_KOVAPMI_DISPLAY_PROPERTIES(entity) == 1) {
      displays.push_back(static_cast<KOVAPMI_DISPLAY_PROPERTIES*>(entity));
    }
  }
  std::vector<Placed> annotations;
  auto display = displays.begin();
  for (ENTITY* face : faces) {
    const auto first = static_cast<std::ptrdiff_t>(annotations.size());
    for (ATTRIB* a = face->first_attribute(); a != nullptr; a = a->next_attribute()) {
      annotations.emplace_back(a, *display++);
    }
    std::stable_sort(annotations.begin() + first, annotations.end(),
                     [](const Placed& a, const Placed& b) { return KindOf(a) < KindOf(b); });
  }
  return annotations;
}

void Dense(benchmark::State& state) {
  auto& part = DensePart();
  const std::vector<Placed> annotations = Annotations(part);
  Compare(
      state, kDense, [&] { return BuildSeconds(part) - TraversalSeconds(part); },
      [&] { return RecordsSeconds(annotations); });
}

void Destroy(benchmark::State& state) {
  auto& part = DensePart();
  const std::vector<Placed> annotations = Annotations(part);
  Compare(
      state, kDense,
      [&] {
        models::Exporter exporter = models::Index(part);
        return Time([&] { exporter.reset(); });
      },
      [&] { return Records(annotations).SecondsToFree(); });
}

}  // namespace

int main(int argc, char** argv) {
  measure::Register("sparse:1000000", 9, Sparse);
  measure::Register("dense:100000", 9, Dense);
  measure::Register("destroy:100000", 9, Destroy);
  return measure::Run(argc, argv);
}

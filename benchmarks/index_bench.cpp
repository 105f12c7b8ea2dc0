// Building the index, walking it, destroying it.
#include <algorithm>
#include <map>

#include "DisplayProperties.h"
#include "Measure.h"
#include "Models.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/geometry.h"

namespace {

using measure::Compare;
using measure::Time;
using models::Placement;

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

PLANE* PlaneInBareBracket(const QENposition& point, const QENvector& normal,
                          const QENvector& direction) {
  outcome result;
  api_bb_begin(1);
  auto* made = new (1, __FILE__, __LINE__)
      PLANE(plane(point, QENunit_vector(normal.x(), normal.y(), normal.z()), direction));
  api_bb_end(result, 1, 0);
  return made;
}

void Delete(const std::vector<PLANE*>& planes) {
  ENTITY_LIST list;
  for (PLANE* each : planes) list.add(each);
  api_del_entity_list(list);
}

using Placed = std::pair<ENTITY*, KOVAPMI_DISPLAY_PROPERTIES*>;

PLANE* PlaneWhereDisplaySays(const KOVAPMI_DISPLAY_PROPERTIES& display) {
  return PlaneInBareBracket(display.get_disp_pt(), display.get_disp_plane_normal(),
                            display.get_primary_direction());
}
PLANE* PlaneSomewhere() { return PlaneInBareBracket({1, 2, 3}, {0, 0, 1}, {1, 0, 0}); }

// One entry of an ordered map with a one-element list, one plane, two lists of one identifier.
double RecordsSeconds(const std::vector<Placed>& annotations, bool placed) {
  std::map<ENTITY*, std::vector<ENTITY*>> owners;
  std::vector<std::vector<KOVAIdentifier>> lists;
  std::vector<PLANE*> planes;
  lists.reserve(2 * annotations.size());
  planes.reserve(annotations.size());
  const double seconds = Time([&] {
    for (const auto& [annotation, display] : annotations) {
      const KOVAIdentifier identifier(annotation, "annotation", nullptr, "ENTITY",
                                      KOVAIdentifierCastHandle(nullptr));
      owners[annotation] = {annotation};
      planes.push_back(placed ? PlaneWhereDisplaySays(*display) : PlaneSomewhere());
      lists.push_back({identifier});
      lists.push_back({identifier});
    }
  });
  Delete(planes);
  return seconds;
}

constexpr int kDense = 100000;
standin::Part& DensePart() {
  return held.Part("dense",
                   [] { return models::Dense(kDense, models::kPlainKinds, models::InPlanes); });
}

void Dense(benchmark::State& state, bool placed) {
  auto& part = DensePart();
  std::vector<Placed> annotations;
  for (ENTITY* entity : part.GetEntities()) {
    if (is_FACE(entity) != 1) continue;
    for (ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) {
      annotations.emplace_back(a, FindDisplayProperties(a));
    }
  }
  Compare(
      state, kDense, [&] { return BuildSeconds(part) - TraversalSeconds(part); },
      [&] { return RecordsSeconds(annotations, placed); });
}

void Destroy(benchmark::State& state) {
  auto& part = DensePart();
  Compare(
      state, kDense,
      [&] {
        models::Exporter exporter = models::Index(part);
        return Time([&] { exporter.reset(); });
      },
      [] {
        ENTITY_LIST planes;
        for (int i = 0; i < kDense; ++i) planes.add(PlaneSomewhere());
        return Time([&] { api_del_entity_list(planes); });
      });
}

// --- Growth: a size and its half stand side by side ----------------------------------------------

models::Held half;
int heldSize = 0;

// Both models of a step; the half is what the step before measured as a whole.
template <typename Seconds>
void Step(benchmark::State& state, Placement placement, int annotations, Seconds seconds) {
  const auto hold = [placement](models::Held& in, int n) {
    in.Part(std::to_string(placement) + ':' + std::to_string(n),
            [&] { return models::Dense(n, models::kAllKinds, placement); });
  };
  if (annotations != heldSize) std::swap(half, held);
  heldSize = annotations;
  hold(half, annotations / 2);
  hold(held, annotations);
  for (auto _ : state) {
    const double halved = seconds(half);
    measure::Report(state, seconds(held), halved, annotations, annotations / 2.0);
  }
}

double WalkSeconds(KOVAPMIExporter& exporter) {
  return Time([&] {
    KOVAIdentifier set, view, annotation, text;
    KOVAString name, string;
    KOVAPMIAnnotationType type{};
    int views = 0, annotations = 0, texts = 0, owners = 0;
    exporter.GetAnnotationSet(0, set);
    exporter.GetAnnotationViewCount(set, views);
    for (int v = 0; v < views; ++v) {
      exporter.GetAnnotationView(set, v, view);
      exporter.GetViewAnnotationCount(view, annotations);
      for (int a = 0; a < annotations; ++a) {
        exporter.GetViewAnnotation(view, a, annotation);
        exporter.GetAnnotationType(annotation, type);
        exporter.GetAnnotationName(annotation, name);
        if (exporter.GetAnnotationTextCount(annotation, texts).IsSuccess()) {
          exporter.GetAnnotationText(annotation, 0, text);
          exporter.GetTextString(text, string);
        }
        KOVAIdentifiers entities;
        exporter.GetNumberOfEntitiesFromAnnotation(annotation, owners);
        for (int o = 0; o < owners; ++o) {
          exporter.GetEntityFromAnnotationAt(annotation, o, entities);
        }
        benchmark::DoNotOptimize(entities);
      }
    }
  });
}

}  // namespace

int main(int argc, char** argv) {
  measure::Register("sparse:1000000", 9, Sparse);
  measure::Register("dense:100000", 9, [](auto& state) { Dense(state, true); });
  measure::Register("dense_unread:100000", 9, [](auto& state) { Dense(state, false); });
  measure::Register("destroy:100000", 9, Destroy);
  for (const Placement placement : {models::InPlanes, models::InNullView}) {
    const std::string shape = placement == models::InPlanes ? "planes" : "null";
    for (int n = 20000; n <= 1280000; n *= 2) {
      const int repetitions = std::clamp(960000 / n, 3, 11);
      const std::string size = std::to_string(n);
      measure::Register("growth_" + shape + ":" + size, repetitions, [=](auto& state) {
        Step(state, placement, n, [](models::Held& model) { return BuildSeconds(model.Part()); });
      });
      measure::Register("walk:" + shape + ", " + size, repetitions, [=](auto& state) {
        Step(state, placement, n,
             [](models::Held& model) { return WalkSeconds(model.Exporter()); });
      });
    }
  }
  return measure::Run(argc, argv);
}

#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <string>
#include <typeinfo>
#include <vector>

#include "Matchers.h"
#include "orvo_kernel/api.h"

// What the exporter's index must hold for a model, worked out the plain way: by the C++ types of
// the entities, over lists that are searched from the front.
struct ReferenceIndex {
  using Entities = std::vector<ENTITY*>;
  using Display = KOVAPMI_DISPLAY_PROPERTIES;
  struct View {
    Display* display;  // what its plane is made of; null for the null view
    Entities annotations;
  };
  std::vector<View> views;
  std::map<ENTITY*, Entities> owners;                        // its keys are the annotations
  std::map<ENTITY*, Entities> callouts;                      // of dimensions that have some
  std::map<ENTITY*, ENTITY*> datumCarriers, targetCarriers;  // object -> attribute
  Entities captures;

  explicit ReferenceIndex(standin::Part& part) {
    ENTITY_LIST listed;
    part.GetDocument().GetNativeEntityList(listed);
    for (ENTITY* entity : Listed(listed)) Scan(entity);
  }

  // The object as one of a class or of a class derived from it, else null.
  template <typename Class>
  static Class* As(ENTITY* entity) {
    return dynamic_cast<Class*>(entity);
  }
  template <typename Class>
  static bool IsExactly(const ENTITY* entity) {
    return entity != nullptr && typeid(*entity) == typeid(Class);
  }
  static bool IsTopology(ENTITY* entity) {
    return As<BODY>(entity) || As<FACE>(entity) || As<EDGE>(entity) || As<VERTEX>(entity);
  }
  static bool IsWire(ENTITY* entity) {
    return As<BODY>(entity) && As<BODY>(entity)->faces().empty();
  }

  static Entities Listed(const ENTITY_LIST& list) {
    Entities all;
    for (int i = 0; i < list.count(); ++i) {
      if (list[i] != nullptr) all.push_back(list[i]);
    }
    return all;
  }

  template <typename Class = ATTRIB_GEN_NAME>
  static Class* Named(ENTITY* entity, const char* name) {
    for (ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) {
      auto* named = As<ATTRIB_GEN_NAME>(a);
      if (named != nullptr && std::strcmp(named->name(), name) == 0) return As<Class>(named);
    }
    return nullptr;
  }

  static bool IsDummyPoint(ENTITY* body) {
    const std::string dummy = "ATTRIB_XORVO_DUMMY_POINT_FOR_PMI";
    auto* wide = Named<ATTRIB_GEN_WSTRING>(body, "ATTRIB_XORVO_NAME");
    auto* narrow = Named<ATTRIB_GEN_STRING>(body, "ATTRIB_XORVO_NAME");
    if (wide != nullptr) return std::wstring(dummy.begin(), dummy.end()) == wide->value();
    return narrow != nullptr && narrow->value() != nullptr && dummy == narrow->value();
  }

  // What PMI that hangs on an entity is attached to.
  static Entities OwnersOf(ENTITY* entity) {
    if (IsWire(entity) && IsDummyPoint(entity)) return {};
    if (IsTopology(entity)) return {entity};
    auto* collection = As<QENCOLLECTION>(entity);
    return collection != nullptr ? Listed(collection->members()) : Entities();
  }

  template <typename... Classes>
  static Display* FirstDisplay(ENTITY* entity) {
    Display* display = nullptr;
    const auto take = [&](auto* drawn) {
      display = drawn ? drawn->get_display_properties() : display;
    };
    (take(As<Classes>(entity)), ...);
    return display;
  }
  static Display* DisplayOf(ENTITY* entity) {
    if (auto* a = As<ATTRIB_KOVAPMI_DATUM>(entity)) {
      entity = As<KOVAPMI_DATUM>(standin::Edit(*a).datum);
    } else if (auto* t = As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity)) {
      entity = As<KOVAPMI_DATUMTGT>(standin::Edit(*t).target);
    }
    return FirstDisplay<ATTRIB_KOVAPMI_TEXT, ATTRIB_KOVAPMI_FLAGNOTE, ATTRIB_KOVAPMI_ROUGHNESS,
                        ATTRIB_KOVAPMI_GEOM_TOL, KOVAPMI_DIMENSION, KOVAPMI_DATUM,
                        KOVAPMI_DATUMTGT>(entity);
  }
  // The entity's display properties when they span a plane, else null.
  static Display* PlaneOf(ENTITY* entity) {
    Display* display = DisplayOf(entity);
    if (display == nullptr) return nullptr;
    const QENvector along = display->get_primary_direction(), n = display->get_disp_plane_normal();
    const QENvector across = cross(QENunit_vector(n.x(), n.y(), n.z()), along);
    return along.length_squared() > 0 && across.length_squared() != 0 ? display : nullptr;
  }

  static int TypeOf(ENTITY* entity) {
    if (As<ATTRIB_KOVAPMI_TEXT>(entity)) return 4;
    if (As<ATTRIB_KOVAPMI_ROUGHNESS>(entity)) return 6;
    if (As<ATTRIB_KOVAPMI_GEOM_TOL>(entity)) return 7;
    if (As<KOVAPMI_DIMENSION>(entity)) return 9;
    if (As<ATTRIB_KOVAPMI_DATUM>(entity) || As<KOVAPMI_DATUM>(entity)) return 2;
    if (As<ATTRIB_KOVAPMI_DATUM_TARGET>(entity) || As<KOVAPMI_DATUMTGT>(entity)) return 3;
    return As<ATTRIB_KOVAPMI_FLAGNOTE>(entity) ? 11 : 0;
  }

 private:
  void Scan(ENTITY* entity) {
    ENTITY_LIST topology;
    if (As<BODY>(entity)) Gather(entity);
    api_get_faces(entity, topology);
    api_get_edges(entity, topology);
    api_get_vertices(entity, topology);
    for (ENTITY* part : Listed(topology)) Gather(part);
    if (auto* group = As<QENGROUP>(entity)) {
      auto* marker = Named<ATTRIB_GEN_INTEGER>(entity, "ATTRIB_XORVO_GROUP_TYPE");
      const int kind = marker == nullptr ? 0 : marker->value();
      ENTITY_LIST once, edges;
      for (ENTITY* member : Listed(group->members())) {
        once.add(member);
        if (kind != 3 || !IsWire(member)) continue;
        edges.clear();
        for (EDGE* edge : As<BODY>(member)->wires()) edges.add(edge);
        for (ENTITY* edge : Listed(edges)) Gather(edge);
      }
      for (ENTITY* member : Listed(once)) {
        if (kind == 6 && As<QENCOLLECTION>(member)) Record(member, OwnersOf(member));
      }
    }
    if (As<KOVAPMI_DIMENSION>(entity)) {
      Record(entity, OwnersOf(entity));
    } else if (As<QENCOLLECTION>(entity)) {
      Gather(entity);
    }
    if (As<KOVAPMI_CAPTURE>(entity)) captures.push_back(entity);
  }

  // One class after the other, each along the chain.
  template <typename... Classes>
  void GatherClasses(ENTITY* entity, const Entities& attachedTo) {
    const auto gather = [&](auto exactly) {
      for (ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) {
        if (exactly(a)) Record(a, attachedTo);
      }
    };
    (gather(&IsExactly<Classes>), ...);
  }
  void Gather(ENTITY* entity) {
    GatherClasses<ATTRIB_KOVAPMI_TEXT, ATTRIB_KOVAPMI_FLAGNOTE, ATTRIB_KOVAPMI_ROUGHNESS,
                  ATTRIB_KOVAPMI_DATUM, ATTRIB_KOVAPMI_DATUM_TARGET, ATTRIB_KOVAPMI_GEOM_TOL>(
        entity, OwnersOf(entity));
  }

  void Record(ENTITY* annotation, const Entities& attachedTo) {
    owners[annotation] = attachedTo;
    Entities called;
    for (ENTITY* owner : attachedTo) {
      const bool marked = Named(owner, "QENATTRIB_COANNOT_TYPE") != nullptr;
      if (As<KOVAPMI_DIMENSION>(owner) && marked) called.push_back(owner);
    }
    if (As<KOVAPMI_DIMENSION>(annotation) && !called.empty()) callouts.emplace(annotation, called);
    auto* datum = As<ATTRIB_KOVAPMI_DATUM>(annotation);
    auto* target = As<ATTRIB_KOVAPMI_DATUM_TARGET>(annotation);
    if (datum != nullptr) datumCarriers[standin::Edit(*datum).datum] = annotation;
    if (target != nullptr) targetCarriers[standin::Edit(*target).target] = annotation;
    Register(annotation, PlaneOf(annotation));
    if (!As<ATTRIB_KOVAPMI_GEOM_TOL>(annotation)) return;
    GatherClasses<ATTRIB_KOVAPMI_GEOM_TOL>(annotation, {annotation});
  }

  void Register(ENTITY* annotation, Display* display) {
    for (View& view : views) {
      if (display == nullptr && view.display == nullptr) {
        return view.annotations.push_back(annotation);
      }
    }
    views.push_back({display, {annotation}});
  }
};

// Where an entity stands and what is drawn of it, answered and by plain walks over the exporter's
// maps.
class Placement {
 public:
  struct Answers {
    bool operator==(const Answers& other) const {
      return codes == other.codes && leaders == other.leaders && points == other.points;
    }
    std::vector<long> codes;  // of position, depth, dimension line, extension lines, leader count
    int leaders = kUntouched;
    Untouched<float, 13> points;  // two for the position, one for the depth, four, six
  };
  friend void PrintTo(const Answers& answers, std::ostream* out) {
    *out << ::testing::PrintToString(answers.codes) << ' ' << answers.leaders << ' '
         << ::testing::PrintToString(answers.points);
  }
  explicit Placement(KOVAOrvoPMIExporter& exporter) : exporter_(exporter) {}

  Answers Answered(const KOVAIdentifier& id) const {
    Answers answers;
    float* const f = answers.points;
    KOVAPMIOrientation orientation{};
    KOVAPMIArrowSymbol arrow{};
    bool hasThird = false;
    for (const KOVAResult& result :
         {exporter_.GetAnnotationPositionInView(id, f, orientation, f[2]),
          exporter_.GetAnnotationZDepth(id, f[2]),
          exporter_.GetDimensionLine(id, arrow, f + 3, arrow, f + 5, hasThird, f),
          exporter_.GetDimensionExtensionLines(id, f + 7, f + 9, f + 11),
          exporter_.GetAnnotationLeaderCount(id, answers.leaders)}) {
      answers.codes.push_back(result.GetCode());
    }
    return answers;
  }

  // `placedAs`: the datum that a target was reached from.
  Answers Walked(ENTITY* entity, ENTITY* placedAs = nullptr) const {
    auto* dimension = ReferenceIndex::As<KOVAPMI_DIMENSION>(entity);
    auto* display = ReferenceIndex::DisplayOf(entity);
    const auto fields = dimension ? standin::Edit(*dimension) : KOVAPMI_DIMENSION::fields();
    const bool marked = dimension && ReferenceIndex::Named(entity, "QENATTRIB_COANNOT_TYPE");
    const KOVAIdentifier id = Naming(placedAs ? placedAs : entity);
    const plane* const own = display || dimension ? ViewPlaneOf(id) : nullptr;
    const plane* const place = marked ? ViewPlaneOf(CallingOut(id)) : own;
    Answers answers;
    for (const bool found : {display && place, display && own, !fields.line.empty(),
                             !fields.extension_lines.empty(), display != nullptr}) {
      answers.codes.push_back(found ? 0 : kFailure);
    }
    const auto write = [&](std::size_t at, const plane* in,
                           const std::vector<QENposition>& points) {
      for (const QENposition& p : points) {
        const auto [u, v] = in ? InView(*in, p) : std::array<double, 2>{p.x(), p.y()};
        answers.points[at++] = static_cast<float>(u);
        answers.points[at++] = static_cast<float>(v);
      }
    };
    if (display && place) write(0, place, {display->get_disp_pt()});
    if (display && own) answers.points[2] = static_cast<float>(Depth(*own, display->get_disp_pt()));
    write(3, own, fields.line);
    write(7, own, fields.extension_lines);
    if (display) answers.leaders = display->get_leaders().count();
    return answers;
  }

 private:
  // The plane of the walk's first view that has one and lists the annotation.
  const plane* ViewPlaneOf(const KOVAIdentifier& annotation) const {
    const plane* found = nullptr;
    ExporterInsides::Views(exporter_).Walk([&](const KOVAIdentifier& view, const auto& listed) {
      const auto at = std::find(listed.begin(), listed.end(), annotation);
      if (at == listed.end() || view.GetNativeObject() == nullptr) return true;
      found = &static_cast<PLANE*>(view.GetNativeObject())->equation();
      return false;
    });
    return found;
  }
  // The last dimension of the walk that calls an entity out, else the entity.
  KOVAIdentifier CallingOut(const KOVAIdentifier& called) const {
    KOVAIdentifier last = called;
    ExporterInsides::Callouts(exporter_).Walk([&](const KOVAIdentifier& key, const auto& callouts) {
      for (const KOVAIdentifier& callout : callouts) {
        if (EntityOf(callout) == EntityOf(called)) last = key;
      }
      return true;
    });
    return last;
  }

  static QENvector YAxisOf(const plane& view) { return cross(view.normal, view.u_direction); }
  static std::array<double, 2> InView(const plane& view, const QENposition& point) {
    return Projected(view.root_point, view.u_direction, YAxisOf(view), point);
  }
  static double Depth(const plane& view, const QENposition& point) {
    const auto [u, v] = InView(view, point);
    const QENvector away = point - (view.root_point + u * view.u_direction + v * YAxisOf(view));
    return std::sqrt(dot(away, away));
  }

  KOVAOrvoPMIExporter& exporter_;
};

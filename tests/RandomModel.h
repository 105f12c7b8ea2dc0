#pragma once

#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include "Matchers.h"

// A model drawn by lot, the same for a seed wherever it is drawn: everything that the scan meets,
// in any order, in fitting and in odd places.
class RandomModel {
 public:
  explicit RandomModel(unsigned seed) : engine_(seed) {
    const int size = Below(100);
    int steps = Below(size < 70 ? 15 : size < 92 ? 60 : size < 98 ? 250 : 1000);
    for (; steps >= 0; --steps) Step();
    datums_.push_back(nullptr);
    reference = &part.AddReference(part.Make<KOVAPMI_GEOM_TOL_ROW>(), L"A", datums_);
  }

  standin::Part part;
  KOVAPMI_DREF* reference;  // names every datum, and none at the end

 private:
  using Entities = std::vector<ENTITY*>;

  int Below(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  bool OneIn(int count) { return Below(count) == 0; }
  template <typename Item>
  Item Pick(const std::vector<Item>& items) {
    return items.empty() ? nullptr : items[engine_() % items.size()];
  }
  // Any entity of the model, more often one of `preferred`.
  ENTITY* Any(const Entities& preferred) { return Pick(OneIn(4) ? part.GetEntities() : preferred); }

  // Of the class or of one derived from it.
  template <typename Class, typename... Arguments>
  Class& New(Arguments... arguments) {
    if (OneIn(6)) return part.Make<Derived<Class>>(std::move(arguments)...);
    return part.Make<Class>(std::move(arguments)...);
  }

  void Step() {
    const int kind = Below(13), attributes = Below(6);
    if (kind == 0 || hosts_.empty()) return AddBody();
    if (kind == 1 || kind == 12) return AddGroup();
    if (kind == 2) return List(collections_.emplace_back(&Filled(New<QENCOLLECTION>(), hosts_)));
    if (kind == 3 || kind == 4) return AddDimension();
    if (kind > 6) return AddAttributes(OneIn(2) ? hosts_.back() : Pick(hosts_), attributes, 0);
    if (kind == 6)
      return part.GetDocument().Add(OneIn(5) ? New<APOINT>(QENposition()) : *Pick(hosts_));
    auto& capture = New<KOVAPMI_CAPTURE>();
    Fill(standin::Edit(capture).members, annotations_);
    List(&capture);
  }

  // Top-level, mostly, and a place for PMI.
  void List(ENTITY* entity) {
    if (!OneIn(5)) part.GetDocument().Add(*entity);
    hosts_.push_back(entity);
    AddAttributes(entity, Below(3), 0);
  }

  // Up to seven members; at times an empty place in front or one of them again at the end.
  void Fill(ENTITY_LIST& list, const Entities& preferred) {
    for (int i = Below(8); i > 0; --i) list.add(Any(preferred));
    if (OneIn(4)) list.remove(list[0]);
    if (OneIn(6)) list.add(list[1], false);
  }
  template <typename Holder>
  Holder& Filled(Holder& holder, const Entities& preferred) {
    Fill(entity_fields::members(holder), preferred);
    return holder;
  }

  EDGE* AddEdge() {
    VERTEX* start = &New<VERTEX>();
    VERTEX* end = OneIn(4) ? start : OneIn(4) ? nullptr : &New<VERTEX>();
    auto* edge = &New<EDGE>(start, end);
    hosts_.insert(hosts_.end(), {start, edge});
    return edge;
  }

  void AddBody() {
    auto& body = New<BODY>(std::vector<FACE*>(), std::vector<EDGE*>(), std::vector<VERTEX*>());
    std::vector<EDGE*> edges{AddEdge(), AddEdge(), AddEdge()};  // which faces share
    for (int faces = OneIn(2) ? 0 : Below(4); faces > 0; --faces) {
      auto* face = &New<FACE>(std::vector<EDGE*>{Pick(edges), Pick(edges)});
      entity_fields::faces(body).push_back(face);
      if (OneIn(4)) part.Integer(*face, "QENATTRIB_COANNOT_TYPE", 1);
      hosts_.push_back(face);
    }
    for (int i = Below(4); i > 0; --i) entity_fields::wires(body).push_back(AddEdge());
    if (OneIn(3)) entity_fields::points(body).push_back(&New<VERTEX>());
    if (OneIn(2)) AddName(body);
    bodies_.push_back(&body);
    List(&body);
  }

  void AddName(ENTITY& entity) {
    const char* const narrow[] = {"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI", "wire", "", nullptr};
    const wchar_t* const wide[] = {L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI", L"wire", L"",
                                   L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI2"};
    const int name = OneIn(2) ? 0 : Below(4);
    OneIn(2) ? part.Name(entity, wide[name]) : part.NarrowName(entity, narrow[name]);
  }

  void AddGroup() {
    const char* const marker = "ATTRIB_XORVO_GROUP_TYPE";
    const int type = Below(8);
    auto& group = Filled(New<QENGROUP>(), type < 5   ? bodies_
                                          : OneIn(2) ? dimensions_
                                                     : collections_);
    if (type == 0) part.Make<ATTRIB_GEN_STRING>(&group, marker, "3");  // hides the integer
    if (type != 1) part.Integer(group, marker, type == 2 ? 5 : type < 5 ? 3 : 6);
    List(&group);
  }

  void AddDimension() {
    const Entities& measured = OneIn(2) ? dimensions_ : OneIn(2) ? hosts_ : collections_;
    auto& dimension = Filled(New<KOVAPMI_DIMENSION>(), measured);
    if (OneIn(2)) part.Integer(dimension, "QENATTRIB_COANNOT_TYPE", Below(3));
    const auto point = [&] { return QENposition() + Vector(); };
    if (OneIn(2)) standin::Edit(dimension).line = {point(), point()};
    if (OneIn(2)) standin::Edit(dimension).extension_lines = {point(), point(), point()};
    collections_.push_back(&dimension);
    dimensions_.push_back(&dimension);
    List(&Drawn(dimension));
  }

  double Coordinate() { return static_cast<double>(engine_() % 20001) / 1000 - 10; }
  QENvector Vector() {
    const double x = Coordinate(), y = Coordinate();
    return {x, y, Coordinate()};
  }
  // With display properties; at times with none or with such as span no plane.
  template <typename Annotation>
  Annotation& Drawn(Annotation& annotation) {
    annotations_.push_back(&annotation);
    if (OneIn(3)) return annotation;
    QENvector along = Vector(), normal = Vector();
    const int flaw = Below(10);
    if (flaw == 0) along = {};
    if (flaw == 1) along = {OneIn(2) ? 0 : std::nan(""), 1e-200, 0};  // the square of 1e-200 is 0
    if (flaw == 2) normal = {};
    if (flaw == 3) along = {0, 0, -3}, normal = {0, 0, 4};
    part.Place(annotation, QENposition() + Vector(), along, normal);
    return annotation;
  }

  void AddAttributes(ENTITY* on, int count, int depth) {
    for (; count > 0; --count) {
      const int kind = Below(10);
      if (kind == 0) Drawn(New<ATTRIB_KOVAPMI_TEXT>(on));
      if (kind == 1) Drawn(New<ATTRIB_KOVAPMI_FLAGNOTE>(on));
      if (kind == 2) Drawn(New<ATTRIB_KOVAPMI_ROUGHNESS>(on));
      if (kind == 3) OneIn(2) ? AddName(*on) : part.Hide(*on);
      if (kind == 4 || kind == 5)
        standin::Edit(New<ATTRIB_KOVAPMI_DATUM>(on)).datum = Carried(datums_);
      if (kind == 6 || kind == 7)
        standin::Edit(New<ATTRIB_KOVAPMI_DATUM_TARGET>(on)).target = Carried(targets_);
      if (kind < 8) continue;
      auto& tolerance = Drawn(New<ATTRIB_KOVAPMI_GEOM_TOL>(on));
      AddAttributes(&tolerance, depth < 4 ? Below(6 - depth) : 0, depth + 1);
    }
  }

  // What a datum or target attribute carries: none, something else, an old one or a new one.
  template <typename Object>
  ENTITY* Carried(std::vector<Object*>& objects) {
    const int kind = Below(8);
    if (kind < 2) return kind == 0 ? nullptr : Any(annotations_);
    if (kind < 5 && !objects.empty()) return Pick(objects);
    objects.push_back(&Drawn(New<Object>()));
    Link(*objects.back());
    return objects.back();
  }
  void Link(KOVAPMI_DATUM& datum) {
    for (int i = Below(4); i > 0; --i) {
      standin::Edit(datum).targets.push_back(OneIn(5) ? nullptr : Pick(targets_));
    }
  }
  void Link(KOVAPMI_DATUMTGT& target) {
    if (!OneIn(4)) standin::Edit(target).geometry = Any(OneIn(3) ? collections_ : hosts_);
  }

  std::mt19937 engine_;
  Entities hosts_, annotations_, bodies_, collections_, dimensions_;
  std::vector<KOVAPMI_DATUM*> datums_;
  std::vector<KOVAPMI_DATUMTGT*> targets_;
};

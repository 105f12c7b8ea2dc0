#pragma once

#include <string>

#include "Matchers.h"

// A model that holds every kind of annotation, placed and unplaced.
class EveryKind {
 public:
  EveryKind() {
    FACE& top = part.Face();
    FACE& side = part.Face();
    EDGE& edge = part.Edge(nullptr, &top);
    auto& text = part.AddText(top, L"");
    part.Place(text, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    part.AddFlagNote(side, L"");
    part.Place(part.AddRoughness(side, {}), {4, 4, 4}, {0, 1, 0}, {1, 0, 0});
    auto& datum = part.AddDatum(top, L"A");
    part.Place(standin::DatumOf(datum), {7, 0, 0}, {0, 0, 1}, {0, 1, 0});
    part.AddDatumTarget(edge, L"A1", &datum);
    auto& collection = part.Collection({&top, &side});
    auto& tolerance = part.AddGeometricTolerance(collection, tol_position, 0.2);
    part.Place(tolerance, {0, 9, 0}, {1, 1, 0}, {0, 0, 1});
    auto& nested = part.AddGeometricTolerance(tolerance, tol_flatness, 0.05);
    part.Place(part.AddGeometricTolerance(nested, tol_parallelism, 0.01), {0, 0, 5}, {1, 0, 0},
               {0, 1, 0});
    part.AddText(part.WireBody(L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI"), L"");
    part.NarrowName(part.WireBody(), "a wire");
    BODY& wires = part.WireBody(nullptr, 3);
    part.AddText(*wires.wires()[1], L"");
    part.Group(3, {&wires, &top});
    auto& callout = part.MakeCallout(callout_feature_counterbore, 12);
    part.Place(callout, {0, 0, 7}, {1, 0, 0}, {0, 1, 0});
    for (int i = 0; i < 25; ++i) {  // enough for every list and map to grow
      auto& dimension = part.AddDimension({&callout, &side}, dim_linear, dim_sub_width, 1);
      part.Place(dimension, {1.0 * i, 0, 0}, {1, 0, 0}, {0, 1, 0});
    }
    part.Group(6, {&part.MakeCallout(callout_feature_unknown, 1), &side});
    part.AddCapture({&top, &text});
  }

  standin::Part part;
};

// What must be the same before and after whatever an exporter does: every entity's class, chain and
// members.
inline std::string FingerprintOf(const standin::Part& part) {
  std::string print;
  const auto add = [&](const void* pointer) {
    print.append(reinterpret_cast<const char*>(&pointer), sizeof pointer);
  };
  const auto addList = [&](const ENTITY_LIST& list) {
    for (int i = 0; i < list.count(); ++i) add(list[i]);
  };
  for (const ENTITY* entity : part.GetEntities()) {
    print += std::to_string(entity->identity(0)) + ":";
    for (const ATTRIB* a = entity->first_attribute(); a != nullptr; a = a->next_attribute()) add(a);
    if (is_QENCOLLECTION(entity)) addList(static_cast<const QENCOLLECTION*>(entity)->members());
    if (is_QENGROUP(entity)) addList(static_cast<const QENGROUP*>(entity)->members());
    if (is_KOVAPMI_CAPTURE(entity))
      addList(static_cast<const KOVAPMI_CAPTURE*>(entity)->GetMembers());
  }
  return print;
}

#pragma once

#include <string>

#include "Matchers.h"

// A model that holds every kind of PMI, placed and unplaced, with every structure behind it.
class EveryKind {
 public:
  EveryKind() {
    FACE& top = part.Face(L"top");
    FACE& side = part.Face(L"side");
    EDGE& edge = part.Edge(L"edge", &top);
    auto& text = part.AddText(top, L"deburr all edges");
    part.Name(text, L"note 1, with a name too long for any small buffer of a string");
    auto& display = part.Place(text, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    standin::Edit(display).text_properties = &part.Make<KOVAPMI_TEXT_PROPERTIES>();
    part.AddLeader(display, {1, 2, 3}, {0, 0, 0});
    part.NarrowName(part.AddFlagNote(side, L"see sheet 2"), "flag \xc2\xb5");
    part.Place(part.AddRoughness(side, {L"Ra 1.6", L"turned"}), {4, 4, 4}, {0, 1, 0}, {1, 0, 0});
    auto& datum = part.AddDatum(top, L"A");
    part.Place(standin::DatumOf(datum), {7, 0, 0}, {0, 0, 1}, {0, 1, 0});
    auto& target = part.AddDatumTarget(edge, L"A1", &datum);
    standin::Edit(standin::TargetOf(target)).position1 = &part.Make<APOINT>(QENposition(1, 1, 1));
    standin::Edit(standin::TargetOf(target)).note = L"movable";
    auto& collection = part.Collection({&top, &side});
    auto& tolerance = part.AddGeometricTolerance(collection, tol_position, 0.2);
    auto& row = *standin::Edit(tolerance).rows[0];
    part.AddModifier(row, zone_mod_projected_zone, 12.5);
    auto& reference = part.AddReference(row, L"A", {&standin::DatumOf(datum)});
    part.AddModifier(*standin::Edit(reference).datums[0], zone_mod_maximum_material);
    standin::Edit(tolerance).note = &part.Make<KOVAPMI_NOTE>();
    standin::Edit(*standin::Edit(tolerance).note).before = L"4X, all of them and each one alike";
    part.Place(tolerance, {0, 9, 0}, {1, 1, 0}, {0, 0, 1});
    auto& nested = part.AddGeometricTolerance(tolerance, tol_flatness, 0.05);
    part.Place(part.AddGeometricTolerance(nested, tol_parallelism, 0.01), {0, 0, 5}, {1, 0, 0},
               {0, 1, 0});
    BODY& dummy = part.WireBody(L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI");
    part.AddText(dummy, L"general note");
    BODY& wires = part.WireBody(L"wires", 3);
    part.AddText(*wires.wires()[1], L"on a wire");
    part.Group(3, {&wires, &top});
    auto& callout = part.MakeCallout(callout_feature_counterbore, 12);
    auto& dimension = part.AddDimension({&top, &side, &callout}, dim_linear, dim_sub_distance, 40);
    part.Place(dimension, {3, 3, 3}, {1, 0, 0}, {0, 0, 1});
    standin::Edit(dimension).upper_text = L"40.2, in words that need storage of their own";
    standin::Edit(dimension).line = {{0, 0, 0}, {1, 0, 0}};
    standin::Edit(dimension).extension_lines = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    auto& driven = part.MakeCallout(callout_feature_unknown, 1);
    part.Group(6, {&driven, &side});
    auto& capture = part.AddCapture({&top, &dimension, &text});
    standin::Edit(capture).camera = &part.Make<KOVAPMI_CAMERA>();
    standin::Edit(*standin::Edit(capture).camera).name = L"front, as the drawing's first sheet";
    standin::Edit(capture).clipping_plane = &part.Make<KOVAPMI_CLIPPINGPLANE>();
    standin::Edit(capture).hidden_text = L"hidden, and long enough to need storage of its own";
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

// Geometric tolerances.

#include <algorithm>
#include <set>

#include "checks/Rule.h"

namespace checks {

namespace {

using Kinds = std::set<std::string>;

bool IsAnyOf(const Kinds& kinds, const ToleranceReport& tolerance) {
  return tolerance.type && kinds.count(*tolerance.type) != 0;
}

// Calls work with each annotation that is a tolerance, and its tolerance.
template <typename Work>
void ForTolerances(const Index& index, Work work) {
  for (const AnnotationReport* annotation : index.OfKind("geometricTolerance")) {
    work(*annotation, *annotation->tolerance);
  }
}

// Such as " in row 2"; nothing where there is one row.
std::string InRow(const ToleranceReport& tolerance, std::size_t row) {
  return tolerance.rows.size() < 2 ? "" : " in row " + std::to_string(row + 1);
}

bool HasNoDatums(const ToleranceReport& tolerance) {
  return !tolerance.rows.empty() &&
         std::none_of(tolerance.rows.begin(), tolerance.rows.end(), HasDatums);
}

bool HasMaterialCondition(const RowReport& row) {
  return std::any_of(row.modifiers.begin(), row.modifiers.end(), IsMaterialCondition);
}

void OnNothing(const Index& index, Findings& findings) {
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    if (!annotation.entities.empty() || !index.IsWhole(annotation.id)) return;
    // It is on the whole part.
    if (tolerance.notes.lower.value_or("").find("ALL OVER") != std::string::npos) return;
    findings.Add(annotation, tolerance.type.value_or("tolerance") + " on no geometry");
  });
}

void NoMagnitude(const Index& index, Findings& findings) {
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    for (std::size_t i = 0; i < tolerance.rows.size(); ++i) {
      const RowReport& row = tolerance.rows[i];
      const double magnitude = row.magnitude.value_or(1);
      if (magnitude < 0) {
        findings.Add(annotation, "a tolerance of " + Drawn(magnitude) + InRow(tolerance, i));
      } else if (magnitude == 0 && !HasMaterialCondition(row) && index.IsWhole(annotation.id) &&
                 !index.IsReduced(annotation.id, "not uniform")) {
        findings.Add(annotation,
                     "a tolerance of 0 without material condition" + InRow(tolerance, i));
      }
    }
  });
}

void FormWithDatums(const Index& index, Findings& findings) {
  static const Kinds form{"straightness", "flatness", "circularity", "cylindricity"};
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    if (!IsAnyOf(form, tolerance)) return;
    for (std::size_t i = 0; i < tolerance.rows.size(); ++i) {
      if (!HasDatums(tolerance.rows[i])) continue;
      findings.Add(annotation, *tolerance.type + " with datums" + InRow(tolerance, i));
    }
  });
}

void OrientationWithoutDatum(const Index& index, Findings& findings) {
  static const Kinds related{"angularity", "perpendicularity", "parallelism", "circularRunout",
                             "totalRunout"};
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    if (!IsAnyOf(related, tolerance) || !HasNoDatums(tolerance)) return;
    if (!index.IsWhole(annotation.id)) return;
    findings.Add(annotation, *tolerance.type + " without a datum");
  });
}

// A pattern may be located to itself. One face can't be one; two may be the halves of a hole or two
// holes, and a text may say how many there are.
bool MayBePattern(const AnnotationReport& annotation, const ToleranceReport& tolerance) {
  if (annotation.entities.size() != 1 || annotation.entities[0].kind == "body") return true;
  const ToleranceNotesReport& notes = tolerance.notes;
  for (const Text* text :
       {&notes.before, &notes.after, &notes.upper, &notes.lower, &notes.prefix, &notes.suffix}) {
    if (!text->value_or("").empty()) return true;
  }
  return std::any_of(tolerance.rows.begin(), tolerance.rows.end(),
                     [](const RowReport& row) { return HasModifier(row.modifiers, "commonZone"); });
}

void PositionWithoutDatum(const Index& index, Findings& findings) {
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    if (tolerance.type != "position" || !HasNoDatums(tolerance)) return;
    if (MayBePattern(annotation, tolerance) || !index.IsWhole(annotation.id)) return;
    findings.Add(annotation, "position of one feature without a datum");
  });
}

void MaterialCondition(const Index& index, Findings& findings) {
  static const Kinds without{"circularity",  "cylindricity",   "lineProfile", "surfaceProfile",
                             "pointProfile", "circularRunout", "totalRunout"};
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    if (!IsAnyOf(without, tolerance)) return;
    for (std::size_t i = 0; i < tolerance.rows.size(); ++i) {
      for (const ModifierReport& modifier : tolerance.rows[i].modifiers) {
        if (!IsMaterialCondition(modifier)) continue;
        findings.Add(annotation, *tolerance.type + " with " + *modifier.type + InRow(tolerance, i));
      }
    }
  });
}

// What the compartments of a row say, those of a common datum in any order.
std::vector<std::string> Compartments(const RowReport& row) {
  std::vector<std::string> compartments;
  if (!row.frame) return compartments;
  for (const ReferenceReport& reference : row.frame->references) {
    std::multiset<std::string> labels;
    for (const FrameDatumReport& datum : reference.datums) labels.insert(datum.label.value_or("?"));
    std::string& text = compartments.emplace_back();
    for (const std::string& label : labels) text += (text.empty() ? "" : "-") + label;
  }
  return compartments;
}

std::string Joined(const std::vector<std::string>& compartments) {
  std::string text;
  for (const std::string& each : compartments) text += (text.empty() ? "" : " | ") + each;
  return text.empty() ? "none" : text;
}

// Whether the segments may be of one size: one is on a unit basis, or zero grows with the feature.
bool CanCompare(const RowReport& upper, const RowReport& lower) {
  return upper.magnitude && lower.magnitude && *upper.magnitude > 0 &&
         upper.rateUnit1.value_or(0) == 0 && lower.rateUnit1.value_or(0) == 0;
}

void CompositeSegments(const Index& index, Findings& findings) {
  static const Kinds composite{"position", "lineProfile", "surfaceProfile"};
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    if (!IsAnyOf(composite, tolerance) || !index.IsWhole(annotation.id)) return;
    for (std::size_t i = 1; i < tolerance.rows.size(); ++i) {
      const RowReport& upper = tolerance.rows[i - 1];
      const RowReport& lower = tolerance.rows[i];
      // Of equal values the one without a material condition is the tighter one.
      const bool isEqual = upper.magnitude == lower.magnitude &&
                           (!HasMaterialCondition(upper) || HasMaterialCondition(lower));
      if (CanCompare(upper, lower) && (*lower.magnitude > *upper.magnitude || isEqual)) {
        findings.Add(annotation, "row " + std::to_string(i + 1) + " has " +
                                     Drawn(*lower.magnitude) + " below " + Drawn(*upper.magnitude));
      }
      const std::vector<std::string> above = Compartments(upper);
      const std::vector<std::string> below = Compartments(lower);
      const bool follows =
          below.size() <= above.size() && std::equal(below.begin(), below.end(), above.begin());
      if (follows) continue;
      findings.Add(annotation, "row " + std::to_string(i + 1) + " has datums " + Joined(below) +
                                   " below " + Joined(above));
    }
  });
}

void ZoneShape(const Index& index, Findings& findings) {
  static const Kinds notRound{"flatness", "circularity",    "cylindricity", "surfaceProfile",
                              "symmetry", "circularRunout", "totalRunout"};
  static const Kinds notSpherical{"straightness",     "flatness",       "circularity",
                                  "cylindricity",     "lineProfile",    "surfaceProfile",
                                  "angularity",       "symmetry",       "parallelism",
                                  "perpendicularity", "circularRunout", "totalRunout"};
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    for (std::size_t i = 0; i < tolerance.rows.size(); ++i) {
      const Text& shape = tolerance.rows[i].valueType;
      if ((shape == "diametrical" && IsAnyOf(notRound, tolerance)) ||
          (shape == "spherical" && IsAnyOf(notSpherical, tolerance))) {
        findings.Add(annotation,
                     *tolerance.type + " with a " + *shape + " zone" + InRow(tolerance, i));
      }
    }
  });
}

void Refinement(const Index& index, Findings& findings) {
  ForTolerances(index, [&](const AnnotationReport& annotation, const ToleranceReport& tolerance) {
    for (std::size_t i = 0; i < tolerance.rows.size(); ++i) {
      const double whole = tolerance.rows[i].magnitude.value_or(0);
      const double refined = tolerance.rows[i].refinement.value_or(0);
      if (!(whole > 0) || !(refined >= whole)) continue;
      findings.Add(annotation, Drawn(refined) + " refines " + Drawn(whole) + InRow(tolerance, i));
    }
  });
}

}  // namespace

std::vector<Rule> ToleranceRules() {
  return {
      {"T1", "error", "a tolerance on no geometry", "ASME Y14.5-2018, section 6; ISO 1101",
       "attach the tolerance to the features that it controls", "flatness 0.1 on nothing",
       "flatness 0.1 on a face; surface profile 1 ALL OVER", OnNothing},
      {"T2", "error",
       "a magnitude of zero without maximum or least material condition, or a negative one",
       "ASME Y14.5-2018, section 10; ISO 2692",
       "state the tolerance, or the material condition that a zero needs",
       "flatness 0; position -0.1", "perpendicularity ⌀0 Ⓜ", NoMagnitude},
      {"T3", "error", "a form tolerance with datums", "ASME Y14.5-2018, section 8; ISO 1101",
       "remove the datums, or use an orientation or profile tolerance",
       "flatness, straightness, circularity or cylindricity to A", "parallelism to A",
       FormWithDatums},
      {"T4", "error", "an orientation or runout tolerance without a datum",
       "ASME Y14.5-2018, sections 9 and 12; ISO 1101", "state the datum that it relates to",
       "perpendicularity 0.1; circular runout 0.1", "perpendicularity 0.1 to A",
       OrientationWithoutDatum},
      {"T5", "warning", "a position without a datum, where it is not of one pattern to itself",
       "ASME Y14.5-2018, section 10; ISO 1101; ISO 5458",
       "state the datums that locate the feature", "position 0.2 of one face",
       "position 0.2 of the four faces of a pattern; position 0.2 of one face to A",
       PositionWithoutDatum},
      {"T6", "error", "a material condition where the kind allows none",
       "ASME Y14.5-2018, sections 8, 11 and 12; ISO 2692",
       "remove the material condition from the value", "circularity 0.1 Ⓜ; surface profile 0.1 Ⓛ",
       "position 0.1 Ⓜ; surface profile 0.1 to A Ⓜ", MaterialCondition},
      {"T7", "error",
       "a lower segment of a composite frame that is not tighter than the one above, or whose "
       "datums do not follow its",
       "ASME Y14.5-2018, sections 10 and 11",
       "tighten the lower segment, and repeat the upper one's datums in its order from the first "
       "on",
       "position 0.2 to A, B, C above 0.4 to A; 0.4 to A, B, C above 0.2 to B",
       "position 0.4 to A, B, C above 0.2 to A, B", CompositeSegments},
      {"T8", "error", "a zone shape that the kind can't have",
       "ASME Y14.5-2018, sections 8 to 12; ISO 1101",
       "remove the diameter sign, or use a kind whose zone is round",
       "flatness ⌀0.1; perpendicularity S⌀0.1", "position ⌀0.1; position S⌀0.1; straightness ⌀0.1",
       ZoneShape},
      {"T9", "error", "a refinement not smaller than what it refines",
       "ASME Y14.5-2018, section 8; ISO 1101",
       "make the tolerance per unit smaller than the one on the whole",
       "flatness 0.1 with 0.1/25×25", "flatness 0.1 with 0.05/25×25", Refinement},
  };
}

}  // namespace checks

#pragma once

#include <optional>

#include "readers/step/Reading.h"

namespace step {

// The entities of callouts.
inline constexpr std::string_view kCallouts[] = {"DRAUGHTING_CALLOUT",
                                                 "LEADER_DIRECTED_CALLOUT",
                                                 "PROJECTION_DIRECTED_CALLOUT",
                                                 "DATUM_FEATURE_CALLOUT",
                                                 "DATUM_TARGET_CALLOUT",
                                                 "DIMENSION_CALLOUT",
                                                 "GEOMETRICAL_TOLERANCE_CALLOUT",
                                                 "STRUCTURED_DIMENSION_CALLOUT",
                                                 "SURFACE_CONDITION_CALLOUT",
                                                 "DIMENSION_CURVE_DIRECTED_CALLOUT"};

// Whether an instance is a callout; false when it does not exist.
bool IsCallout(Reading& reading, Id id);
// Whether an occurrence only keeps a place for what is drawn elsewhere.
bool IsPlaceholder(const Instance& occurrence);

// What a callout consists of.
const Value& ContentsOf(const Instance& callout);
// The item that an annotation occurrence shows.
Id ItemOf(const Instance& occurrence);

// The text of a note: the text that the file states as its meaning, else that of its text
// occurrences, else the characters stated for the drawing. Empty when the file states none.
std::string NoteTextOf(Reading& reading, const Instance& element);

// A part of what a file states for what is drawn of an element.
struct DrawnPart {
  std::string kind;  // "TXT", "DIM" of a dimension, "FCF" of a feature control frame ...; or empty
  std::string text;  // its lines
};
// The parts, in their order; none where the file states nothing.
std::vector<DrawnPart> DrawnPartsOf(Reading& reading, Id element);

// Gives a dimension or a tolerance the texts that its drawing has around it; lists those of others.
void AddAroundText(Reading& reading, Id element, ENTITY& annotation);

// Where an annotation is drawn: the median of the points of its curves and triangles along each
// axis of its plane, which lies among its characters however far its lines reach, or the place of
// its text. `scale` is from the presentation's unit of length. None when nothing is drawn. Throws
// Unreadable when it can't be read.
std::optional<QENposition> DrawnMiddle(Reading& reading, Id element, const Placement& plane,
                                       double scale);

}  // namespace step

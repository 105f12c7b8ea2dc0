#pragma once

#include <optional>

#include "readers/step/Reading.h"

namespace step {

// The entities of callouts.
inline constexpr std::string_view kCallouts[] = {
    "DRAUGHTING_CALLOUT",           "LEADER_DIRECTED_CALLOUT", "PROJECTION_DIRECTED_CALLOUT",
    "DATUM_FEATURE_CALLOUT",        "DATUM_TARGET_CALLOUT",    "DIMENSION_CALLOUT",
    "GEOMETRICAL_TOLERANCE_CALLOUT"};

// Whether an instance is a callout; false when it does not exist.
bool IsCallout(Reading& reading, Id id);
// Whether an occurrence only keeps a place for what is drawn elsewhere.
bool IsPlaceholder(const Instance& occurrence);

// What a callout consists of.
const Value& ContentsOf(const Instance& callout);
// The item that an annotation occurrence shows.
Id ItemOf(const Instance& occurrence);

// The text of a note: what the file says that it means, else of its text occurrences, else the
// characters that it states for what is drawn. Empty when it states none.
std::string NoteTextOf(Reading& reading, const Instance& element);

// Where an annotation is drawn: the median of the points of its curves and triangles along each
// axis of its plane, which lies among its characters however far its lines reach, or the place of
// its text. `scale` is from the presentation's unit of length. None when nothing is drawn or it
// can't be read.
std::optional<QENposition> DrawnMiddle(Reading& reading, Id element, const Placement& plane,
                                       double scale);

}  // namespace step

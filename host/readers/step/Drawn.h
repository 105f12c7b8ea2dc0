#pragma once

#include <optional>

#include "readers/step/Reading.h"

namespace step {

// Whether an occurrence only keeps a place for what is drawn elsewhere.
bool IsPlaceholder(const Instance& occurrence);

// What a callout consists of.
const Value& ContentsOf(const Instance& callout);
// The item that an annotation occurrence shows.
Id ItemOf(const Instance& occurrence);

// Where an annotation is drawn: the median of the points of its curves and triangles in each
// coordinate, which lies among its characters however far its lines reach, or the place of its
// text. None when nothing is drawn or it can't be read.
std::optional<QENposition> DrawnMiddle(Reading& reading, Id element);

}  // namespace step

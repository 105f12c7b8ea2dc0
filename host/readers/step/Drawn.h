#pragma once

#include <optional>

#include "readers/step/Reading.h"

namespace step {

// Where an annotation is drawn: the median of the points of its curves and triangles in each
// coordinate, which lies among its characters however far its lines reach. None when nothing is
// drawn or it can't be read.
std::optional<QENposition> DrawnMiddle(Reading& reading, Id element);

}  // namespace step

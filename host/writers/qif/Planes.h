#pragma once

#include <optional>

#include "report/Points.h"

namespace qif_writer {

using namespace points;

// Axes of unit length at right angles.
struct Axes {
  Point3 x, y, normal;
};

// The axes of a view plane. Those of a report are in single precision; these read as the same when
// they are narrowed to it again, wherever there are such. None for axes that span no plane.
std::optional<Axes> AxesOf(const ViewFrameReport& frame);

// The point of a plane's coordinates.
Point3 PointIn(const ViewFrameReport& frame, const Axes& axes, const Point2& place);

}  // namespace qif_writer

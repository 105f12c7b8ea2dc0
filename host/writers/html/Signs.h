#pragma once

#include <string>

#include "report/Report.h"
#include "writers/html/Projection.h"

namespace html {

// An annotation's plane, model coordinates.
Point3 ToModel(const ViewFrameReport& frame, const Point2& point);

// A dimension's value with its limits; a basic one is boxed.
struct DimensionSign {
  std::string text;
  bool isBoxed;
};
DimensionSign SignOf(const DimensionReport& dimension);

// An annotation as SVG: its lines where they are, its texts upright at its place, `height` (model
// units) high as far as that can be read. Empty where it has no place in the picture.
// REQUIRES: the annotation has a position.
std::string DrawSign(const Projection& projection, const ViewFrameReport& frame,
                     const AnnotationReport& annotation, double height);

}  // namespace html

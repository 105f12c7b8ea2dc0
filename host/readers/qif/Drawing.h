#pragma once

#include "readers/qif/Reading.h"

namespace qif {

// A display's plane and lines, in model coordinates.
struct Drawing {
  struct Leader {
    QENposition tail;
    QENposition head;
  };

  bool hasPlane = false;
  QENposition origin;
  QENvector direction{0, 0, 0};  // of the text; zero without a plane
  QENvector normal{0, 0, 1};
  std::vector<Leader> leaders;
  std::vector<QENposition> dimensionLine;   // none or two
  std::vector<QENposition> extensionLines;  // none or three
  bool isAllAround = false;
};

// Reads the plane and the lines. Only a dimension has a dimension line and extension lines. Throws
// Unreadable.
Drawing ReadDrawing(Reading& reading, Fields& display, bool isDimension);

}  // namespace qif

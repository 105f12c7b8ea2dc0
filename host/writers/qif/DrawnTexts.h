#pragma once

#include "writers/qif/Plan.h"

namespace qif_writer {

// A text at a place of the plane, from the display's origin.
struct Piece {
  std::string text;
  Point2 place{};
};

// What is drawn of an annotation as text. A tolerance's frame is drawn as the box that the texts
// around it stand around.
struct DrawnTexts {
  std::vector<Piece> pieces;  // one at least
  bool areNeeded = false;     // for what the annotation does not say elsewhere
  bool hasFrame = false;
  bool needAllAround = false;  // what a leader has to say
};
DrawnTexts TextsOf(const Item& item);

// Of the box, which starts at the origin.
constexpr double kFrameWidth = 8, kFrameHeight = 2;

}  // namespace qif_writer

#pragma once

#include "writers/qif/Plan.h"

namespace qif_writer {

// How a tolerance says how far it extends: in its definition, where its kind has a place for that,
// else in its display.
struct Extent {
  const char* word = nullptr;  // of the definition
  bool allAround = false;      // at a leader of the display
  std::string lower;           // below the frame of the display
};
Extent ExtentOf(const ToleranceReport& tolerance);

}  // namespace qif_writer

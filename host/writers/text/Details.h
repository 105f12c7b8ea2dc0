#pragma once

#include <string>

#include "report/Notation.h"
#include "report/Report.h"
#include "writers/text/Page.h"

namespace text {

// Everything of an annotation that PrintAnnotation's first lines do not say: fonts, values one by
// one, lines, position, leaders.
void PrintDetails(Page& page, int depth, const AnnotationReport& annotation);

// Camera, hidden text and clipping plane of a capture.
void PrintDetails(Page& page, int depth, const CaptureReport& capture);

// Such as "(60, 40, 35)".
template <typename Numbers>
std::string Tuple(const Numbers& numbers) {
  std::string text;
  for (const double number : numbers) text += (text.empty() ? "(" : ", ") + DrawNumber(number);
  return text + ")";
}

}  // namespace text

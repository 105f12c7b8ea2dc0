// The texts of displays.

#include "writers/qif/DrawnTexts.h"

#include "writers/qif/Sections.h"
#include "writers/qif/Tolerances.h"

namespace qif_writer {

namespace {

void AddTextsAroundFrame(const ToleranceReport& tolerance, DrawnTexts& texts) {
  const Extent extent = ExtentOf(tolerance);
  texts.needAllAround = extent.allAround;
  texts.pieces.emplace_back();
  const double middle = kFrameHeight / 2;
  const auto add = [&](const std::string& text, const Point2& place) {
    if (!text.empty()) texts.pieces.push_back({text, place});
  };
  add(tolerance.notes.before.value_or(""), {-1, middle});
  add(tolerance.notes.after.value_or(""), {kFrameWidth + 1, middle});
  add(tolerance.notes.upper.value_or(""), {0, kFrameHeight + 1});
  add(extent.lower, {0, -1});
  texts.hasFrame = texts.pieces.size() > 1;
  texts.areNeeded = texts.hasFrame;
}

}  // namespace

DrawnTexts TextsOf(const Item& item) {
  const AnnotationReport& annotation = *item.annotation;
  DrawnTexts texts;
  if (annotation.dimension) {
    const DimensionTextsReport& around = annotation.dimension->texts;
    for (const Text* text : {&around.before, &around.after, &around.holeCallout}) {
      texts.areNeeded = texts.areNeeded || text->value_or("") != "";
    }
    texts.pieces.push_back({DrawnDimension(item)});
  } else if (annotation.tolerance) {
    AddTextsAroundFrame(*annotation.tolerance, texts);
  } else if (annotation.datum) {
    texts.pieces.push_back({annotation.datum->label.value_or("")});
  } else if (annotation.datumTarget) {
    texts.pieces.push_back({annotation.datumTarget->label.value_or("")});
  } else if (!annotation.texts.empty()) {
    texts.pieces.push_back({annotation.texts.front().string.value_or("")});
  } else {
    texts.pieces.emplace_back();
  }
  return texts;
}

}  // namespace qif_writer

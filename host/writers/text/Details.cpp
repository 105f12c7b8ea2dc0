#include "writers/text/Details.h"

namespace text {

namespace {

void PrintFont(Page& page, int depth, const FontReport& font) {
  std::string line = "font height " + DrawNumber(font.height) + " ratio " + DrawNumber(font.ratio) +
                     " slant " + DrawNumber(font.slant);
  if (font.fixedPitch) line += " fixed";
  if (font.bold) line += " bold";
  if (font.italic) line += " italic";
  if (font.underline) line += " underline";
  if (font.strikeThrough) line += " strike-through";
  if (font.overline) line += " overline";
  page.Line(depth, {line});
}

void PrintDimension(Page& page, int depth, const DimensionReport& dimension) {
  std::string line = dimension.type.value_or("?") + ", " + dimension.mainType.value_or("?");
  if (!dimension.tolerance.empty()) line += ", tolerance " + dimension.tolerance;
  for (const auto& [name, number] : {std::pair(", value ", dimension.value),
                                     {", lower ", dimension.lower},
                                     {", upper ", dimension.upper},
                                     {", precision ", dimension.precision},
                                     {", tolerance precision ", dimension.tolerancePrecision}}) {
    if (number) line += name + DrawNumber(*number);
  }
  if (dimension.calloutType) line += ", callout of " + *dimension.calloutType;
  page.Line(depth, {line});
  std::string texts;
  for (const auto& [name, text] : {std::pair("prefix", dimension.texts.prefix),
                                   {"suffix", dimension.texts.suffix},
                                   {"before", dimension.texts.before},
                                   {"after", dimension.texts.after},
                                   {"lower limit", dimension.lowerText},
                                   {"upper limit", dimension.upperText}}) {
    if (text.value_or("").empty()) continue;
    texts += (texts.empty() ? "" : ", ") + std::string(name) + " \"" + *text + "\"";
  }
  if (!texts.empty()) page.Line(depth, {texts});
  if (dimension.line) {
    page.Line(depth,
              {"line " + Tuple((*dimension.line)[0]) + " to " + Tuple((*dimension.line)[1])});
  }
  if (dimension.extensionLines) {
    std::string points = "extension lines";
    for (const Point2& point : *dimension.extensionLines) points += " " + Tuple(point);
    page.Line(depth, {points});
  }
  for (const CalloutReport& callout : dimension.callouts) {
    std::string text = "callout " + callout.calloutType.value_or("?");
    if (callout.name) text += " \"" + *callout.name + "\"";
    if (callout.value) text += " " + DrawNumber(*callout.value);
    page.Line(depth, {text});
  }
}

}  // namespace

void PrintDetails(Page& page, int depth, const AnnotationReport& annotation) {
  for (const TextReport& text : annotation.texts) {
    if (text.font) PrintFont(page, depth, *text.font);
  }
  if (annotation.dimension) PrintDimension(page, depth, *annotation.dimension);
  if (annotation.roughness) {
    page.Line(depth, {"obtention " + annotation.roughness->obtention.value_or("?") +
                      ", applicability " + annotation.roughness->applicability.value_or("?")});
  }
  std::string place;
  if (annotation.position) place = "at " + Tuple(*annotation.position);
  if (annotation.depth) {
    place += (place.empty() ? "depth " : " depth ") + DrawNumber(*annotation.depth);
  }
  if (!place.empty()) page.Line(depth, {place});
  for (const auto& leader : annotation.leaders) {
    page.Line(depth, {"leader " + Tuple(leader[0]) + " to " + Tuple(leader[1])});
  }
}

void PrintDetails(Page& page, int depth, const CaptureReport& capture) {
  if (capture.camera) {
    const CameraReport& camera = *capture.camera;
    page.Line(depth,
              {"camera \"" + camera.name.value_or("") + "\" " + camera.type + " at " +
               Tuple(camera.origin) + " to " + Tuple(camera.target) + " along " +
               Tuple(camera.viewDirection) + " up " + Tuple(camera.viewDirectionNormal) +
               " angle " + DrawNumber(camera.viewAngle) + " zoom " + DrawNumber(camera.zoom)});
  }
  if (capture.hiddenText) page.Line(depth, {"hidden text \"" + *capture.hiddenText + "\""});
  if (capture.clippingPlane) {
    page.Line(depth, {"clipping plane through " + Tuple((*capture.clippingPlane)[0]) + " normal " +
                      Tuple((*capture.clippingPlane)[1])});
  }
}

}  // namespace text

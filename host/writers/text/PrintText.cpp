#include <algorithm>

#include "writers/text/Drawing.h"
#include "writers/text/PrintText.h"

namespace {

template <typename Numbers>
std::string Tuple(const Numbers& numbers) {
  std::string text;
  for (const double number : numbers) text += (text.empty() ? "(" : ", ") + DrawNumber(number);
  return text + ")";
}

// A text on one line, whatever it holds.
std::string OneLine(const std::string& text) {
  std::string line;
  for (const char c : text) {
    if (c == '\n') {
      line += "⏎";
    } else if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F) {
      line += c;
    }
  }
  return line;
}

std::string Count(long number, const char* one, const char* many) {
  return std::to_string(number) + " " + (number == 1 ? one : many);
}

class Printer {
 public:
  std::string Print(const ModelReport& report) {
    Line(0, OneLine(report.source.file) + " (" + report.source.linearUnit + ")");
    for (std::size_t i = 0; i < report.views.size(); ++i) PrintView(i + 1, report.views[i]);
    for (const CaptureReport& capture : report.captures) PrintCapture(capture);
    PrintTotals(report.totals);
    PrintSource(report.source);
    return std::move(text_);
  }

 private:
  void Line(int depth, const std::string& text) {
    text_.append(static_cast<std::size_t>(2 * depth), ' ').append(text).append("\n");
  }

  void PrintView(std::size_t number, const ViewReport& view) {
    std::string head = "view " + std::to_string(number);
    if (view.frame) {
      head += " at " + Tuple(view.frame->origin) + " x " + Tuple(view.frame->xAxis) + " y " +
              Tuple(view.frame->yAxis);
    } else {
      head += " without a plane";
    }
    Line(1, head);
    for (const AnnotationReport& annotation : view.annotations) PrintAnnotation(annotation);
  }

  void PrintAnnotation(const AnnotationReport& annotation) {
    std::string head = annotation.kind;
    if (annotation.name) head += " \"" + OneLine(*annotation.name) + "\"";
    if (annotation.dimension) head += "  " + OneLine(DrawDimension(*annotation.dimension));
    if (annotation.tolerance) head += "  " + OneLine(DrawTolerance(*annotation.tolerance));
    if (annotation.datum) head += "  [" + OneLine(annotation.datum->label.value_or("?")) + "]";
    if (annotation.roughness) head += "  " + OneLine(DrawRoughness(*annotation.roughness));
    if (annotation.datumTarget) {
      head += "  (" + OneLine(annotation.datumTarget->label.value_or("?")) + ")";
    }
    for (const TextReport& text : annotation.texts) {
      if (text.string) head += "  \"" + OneLine(*text.string) + "\"";
    }
    if (annotation.hidden.value_or(false)) head += "  hidden";
    Line(2, head);
    PrintDetails(annotation);
    PrintPlace(annotation);
  }

  void PrintDetails(const AnnotationReport& annotation) {
    for (const TextReport& text : annotation.texts) {
      if (text.font) PrintFont(*text.font);
    }
    if (annotation.dimension) PrintDimension(*annotation.dimension);
    if (annotation.tolerance) {
      const ToleranceNotesReport& notes = annotation.tolerance->notes;
      PrintTexts({{"before", notes.before},
                  {"after", notes.after},
                  {"above", notes.upper},
                  {"below", notes.lower},
                  {"prefix", notes.prefix},
                  {"suffix", notes.suffix}});
    }
    if (annotation.datum && !annotation.datum->targets.empty()) {
      std::string targets = "targets";
      for (const Text& target : annotation.datum->targets) targets += " " + target.value_or("?");
      Line(3, OneLine(targets));
    }
    if (annotation.datumTarget) {
      const DatumTargetReport& target = *annotation.datumTarget;
      std::string line = "form " + target.type.value_or("?");
      if (target.point1) line += " at " + Tuple(*target.point1);
      if (target.point2) line += " to " + Tuple(*target.point2);
      if (!target.note.value_or("").empty()) line += " note \"" + *target.note + "\"";
      Line(3, OneLine(line));
    }
    if (annotation.roughness) {
      Line(3, "obtention " + annotation.roughness->obtention.value_or("?") + ", applicability " +
                  annotation.roughness->applicability.value_or("?"));
    }
  }

  void PrintFont(const FontReport& font) {
    std::string line = "font height " + DrawNumber(font.height) + " ratio " +
                       DrawNumber(font.ratio) + " slant " + DrawNumber(font.slant);
    if (font.fixedPitch) line += " fixed";
    if (font.bold) line += " bold";
    if (font.italic) line += " italic";
    if (font.underline) line += " underline";
    if (font.strikeThrough) line += " strike-through";
    if (font.overline) line += " overline";
    Line(3, line);
  }

  void PrintTexts(std::initializer_list<std::pair<const char*, Text>> texts) {
    std::string line;
    for (const auto& [name, text] : texts) {
      if (text.value_or("").empty()) continue;
      line += (line.empty() ? "" : ", ") + std::string(name) + " \"" + *text + "\"";
    }
    if (!line.empty()) Line(3, OneLine(line));
  }

  void PrintDimension(const DimensionReport& dimension) {
    std::string line = dimension.type.value_or("?") + ", " + dimension.mainType.value_or("?");
    if (dimension.value) line += ", value " + DrawNumber(*dimension.value);
    if (dimension.lower) line += ", lower " + DrawNumber(*dimension.lower);
    if (dimension.upper) line += ", upper " + DrawNumber(*dimension.upper);
    if (dimension.precision) line += ", precision " + DrawNumber(*dimension.precision);
    if (dimension.tolerancePrecision) {
      line += ", tolerance precision " + DrawNumber(*dimension.tolerancePrecision);
    }
    if (dimension.calloutType) line += ", callout of " + *dimension.calloutType;
    Line(3, line);
    const DimensionTextsReport& texts = dimension.texts;
    PrintTexts({{"prefix", texts.prefix},
                {"suffix", texts.suffix},
                {"before", texts.before},
                {"after", texts.after},
                {"above", texts.upper},
                {"below", texts.lower},
                {"hole callout", texts.holeCallout},
                {"underneath", texts.below}});
    if (dimension.line) {
      Line(3, "line " + Tuple((*dimension.line)[0]) + " to " + Tuple((*dimension.line)[1]));
    }
    if (dimension.extensionLines) {
      std::string points = "extension lines";
      for (const Point2& point : *dimension.extensionLines) points += " " + Tuple(point);
      Line(3, points);
    }
    for (const CalloutReport& callout : dimension.callouts) {
      std::string text = "callout " + callout.calloutType.value_or("?");
      if (callout.name) text += " \"" + *callout.name + "\"";
      if (callout.value) text += " " + DrawNumber(*callout.value);
      Line(3, OneLine(text));
    }
  }

  void PrintPlace(const AnnotationReport& annotation) {
    if (!annotation.entities.empty()) {
      std::string line = "on";
      for (const EntityReport& entity : annotation.entities) {
        line += (line == "on" ? " " : ", ") + entity.kind;
        if (entity.label) line += " \"" + *entity.label + "\"";
      }
      Line(3, OneLine(line));
    }
    if (annotation.position) {
      Line(3, "at " + Tuple(*annotation.position) +
                  (annotation.depth ? " depth " + DrawNumber(*annotation.depth) : ""));
    } else if (annotation.depth) {
      Line(3, "depth " + DrawNumber(*annotation.depth));
    }
    for (const auto& leader : annotation.leaders) {
      Line(3, "leader " + Tuple(leader[0]) + " to " + Tuple(leader[1]));
    }
  }

  void PrintCapture(const CaptureReport& capture) {
    Line(1, OneLine("capture \"" + capture.name.value_or("") + "\"  " +
                    Count(capture.memberCount, "member", "members")));
    if (capture.camera) {
      const CameraReport& camera = *capture.camera;
      Line(2,
           OneLine("camera \"" + camera.name.value_or("") + "\" " + camera.type + " at " +
                   Tuple(camera.origin) + " to " + Tuple(camera.target) + " along " +
                   Tuple(camera.viewDirection) + " up " + Tuple(camera.viewDirectionNormal) +
                   " angle " + DrawNumber(camera.viewAngle) + " zoom " + DrawNumber(camera.zoom)));
    }
    if (capture.hiddenText) Line(2, OneLine("hidden text \"" + *capture.hiddenText + "\""));
    if (capture.clippingPlane) {
      Line(2, "clipping plane through " + Tuple((*capture.clippingPlane)[0]) + " normal " +
                  Tuple((*capture.clippingPlane)[1]));
    }
    if (capture.members.empty()) return;
    std::string names = "annotations";
    for (const MemberReport& member : capture.members) {
      names += (names == "annotations" ? " " : ", ") + member.name.value_or("unnamed");
    }
    Line(2, OneLine(names));
  }

  void PrintTotals(const std::map<std::string, long>& totals) {
    std::string line = "totals:";
    for (const auto& [kind, number] : totals) line += " " + kind + " " + std::to_string(number);
    Line(1, line);
  }

  // Items of one kind and reason stand on one line.
  void PrintSource(const SourceReport& source) {
    if (source.skipped.empty()) return;
    Line(1, "skipped: " + std::to_string(source.skipped.size()));
    std::vector<std::string> heads;
    std::map<std::string, std::string> ids;
    for (const SkippedReport& skipped : source.skipped) {
      const std::string head = skipped.kind + ", " + skipped.reason + ":";
      if (ids.count(head) == 0) heads.push_back(head);
      ids[head] += " " + skipped.id;
    }
    for (const std::string& head : heads) Line(2, OneLine(head + ids[head]));
  }

  std::string text_;
};

}  // namespace

std::string PrintText(const ModelReport& report) { return Printer().Print(report); }

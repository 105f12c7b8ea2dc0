#include "writers/html/Signs.h"

#include <algorithm>
#include <cmath>

#include "report/Clean.h"
#include "report/Notation.h"
#include "writers/html/Glyphs.h"
#include "writers/html/Html.h"

namespace html {

namespace {

constexpr double kArrow = 14;  // length of an arrow's head
constexpr double kRow = 1.9;   // height of a feature control frame's row to that of its text

std::string Numbers(std::initializer_list<double> numbers) {
  std::string text;
  for (const double number : numbers) {
    text += (text.empty() ? "" : " ") + std::to_string(std::lround(number));
  }
  return text;
}

// Puts the shapes of one annotation together. A point that has no place in the picture takes the
// shape that needs it away.
class Sign {
 public:
  Sign(const Projection& projection, const ViewFrameReport& frame, const Point2& position,
       double height)
      : projection_(projection), frame_(frame) {
    const Point3 place = ToModel(frame, position);
    const std::optional<Point2> corner = projection.Place(place);
    if (!corner) return;
    at_ = *corner;
    isPlaced_ = true;
    // Texts have to be read, and to leave room for others.
    height_ = std::clamp(height * projection.Scale(place), 12.0, 30.0);
  }

  bool IsPlaced() const { return isPlaced_; }
  std::string Take() { return std::move(svg_); }

  void Leaders(const std::vector<std::array<Point3, 2>>& leaders, bool ofDatum) {
    for (const auto& [tail, head] : leaders) {
      const std::optional<Point2> from = projection_.Place(tail);
      const std::optional<Point2> to = projection_.Place(head);
      if (!from || !to) continue;
      Line({*from, *to});
      ofDatum ? Triangle(*to, *from, 0.7) : Triangle(*from, *to, 0.3);
    }
  }

  void DimensionLines(const DimensionReport& dimension) {
    if (dimension.line) {
      const std::array<Point2, 2>& line = *dimension.line;
      const std::vector<Point2> ends = Placed({line[0], line[1]});
      if (ends.size() == 2) {
        Line(ends);
        Triangle(ends[1], ends[0], 0.3);
        Triangle(ends[0], ends[1], 0.3);
      }
      if (dimension.extensionLines) ExtensionLines(dimension);
    } else if (dimension.extensionLines) {
      Line(Placed(Arc(*dimension.extensionLines)));
    }
  }

  // A row of boxes, its lower left corner `row` rows above the sign's place.
  void Boxes(const std::vector<std::string>& texts, std::size_t row) {
    const double high = kRow * height_;
    const double top = at_[1] - high * static_cast<double>(row + 1);
    double left = at_[0];
    for (const std::string& text : texts) {
      const std::vector<Run> runs = RunsOf(text);
      const double wide = (WidthOf(runs) + 0.9) * height_;
      svg_ += "<rect class=\"paper\" x=\"" + Numbers({left}) + "\" y=\"" + Numbers({top}) +
              "\" width=\"" + Numbers({wide}) + "\" height=\"" + Numbers({high}) +
              "\" fill=\"Canvas\" stroke=\"currentColor\"/>";
      Words(runs, left + 0.45 * height_, top + high / 2 + 0.5 * height_);
      left += wide;
    }
  }

  // A balloon on the sign's place.
  void Balloon(const std::string& text) {
    const std::vector<Run> runs = RunsOf(text);
    const double half = WidthOf(runs) * height_ / 2;
    const double radius = std::max(1.3 * height_, 1.2 * half);
    svg_ += "<circle cx=\"" + Numbers({at_[0]}) + "\" cy=\"" + Numbers({at_[1]}) + "\" r=\"" +
            Numbers({radius}) + "\" fill=\"Canvas\" stroke=\"currentColor\"/>";
    Words(runs, at_[0] - half, at_[1] + height_ / 2);
  }

  // A mark of a point of the model.
  void Cross(const Point3& point) {
    const std::optional<Point2> place = projection_.Place(point);
    if (!place) return;
    const auto& [x, y] = *place;
    Line({{x - 8, y - 8}, {x + 8, y + 8}});
    Line({{x - 8, y + 8}, {x + 8, y - 8}});
  }

  // Lines of text, the last one `rows` rows above the sign's place.
  void Lines(const std::string& text, double rows = 0) {
    const double bottom = at_[1] - kRow * height_ * rows;
    if (text.empty()) return;
    constexpr std::size_t kMostLines = 20;
    constexpr std::size_t kMostCharacters = 120;
    std::vector<std::string> lines;
    for (std::size_t start = 0; start <= text.size() && lines.size() < kMostLines;) {
      const std::size_t end = std::min(text.find('\n', start), text.size());
      lines.push_back(text.substr(start, end - start));
      start = end + 1;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const double up = 1.5 * height_ * static_cast<double>(lines.size() - 1 - i);
      Words(RunsOf(text::Cut(text::OneLine(lines[i]), kMostCharacters)), at_[0], bottom - up);
    }
  }

 private:
  // From `left` on, on the line at `y`.
  void Words(const std::vector<Run>& runs, double left, double y) {
    for (const Run& run : runs) {
      if (run.glyph != nullptr) {
        svg_ += "<use href=\"#" + IdOf(*run.glyph) + "\" x=\"" + Numbers({left}) + "\" y=\"" +
                Numbers({y - 1.25 * height_}) + "\" width=\"" +
                Numbers({(run.glyph->width + 0.1) * height_}) + "\" height=\"" +
                Numbers({1.5 * height_}) + "\"/>";
      } else {
        svg_ += "<text x=\"" + Numbers({left}) + "\" y=\"" + Numbers({y}) + "\" font-size=\"" +
                Numbers({1.4 * height_}) +
                "\" fill=\"currentColor\" stroke=\"none\" font-family=\"Arial, sans-serif\">" +
                Escape(run.text) + "</text>";
      }
      left += run.width * height_;
    }
  }

  std::vector<Point2> Placed(const std::vector<Point2>& points) const {
    std::vector<Point2> placed;
    for (const Point2& point : points) {
      const std::optional<Point2> place = projection_.Place(ToModel(frame_, point));
      if (!place) return {};
      placed.push_back(*place);
    }
    return placed;
  }

  void Line(const std::vector<Point2>& points) {
    if (points.empty()) return;
    svg_ += "<path d=\"M";
    for (const Point2& point : points) svg_ += Numbers({point[0], point[1]}) + " ";
    svg_.back() = '"';
    svg_ += "/>";
  }

  // A filled head that points from `from` to `to`; `slim` is its width to its length.
  void Triangle(const Point2& from, const Point2& to, double slim) {
    const double length = std::hypot(to[0] - from[0], to[1] - from[1]);
    if (!(length > 1)) return;
    const bool isBase = slim > 0.5;  // of a datum: its base is at its start
    const double x = (to[0] - from[0]) / length;
    const double y = (to[1] - from[1]) / length;
    const Point2 tip = isBase ? Point2{from[0] + kArrow * x, from[1] + kArrow * y} : to;
    const Point2 base{tip[0] - kArrow * x, tip[1] - kArrow * y};
    const double half = slim * kArrow;
    svg_ += "<path fill=\"currentColor\" d=\"M" +
            Numbers({tip[0], tip[1], base[0] - half * y, base[1] + half * x, base[0] + half * y,
                     base[1] - half * x}) +
            "z\"/>";
  }

  // The first one is stated; the second goes as far beyond the dimension line as the first.
  void ExtensionLines(const DimensionReport& dimension) {
    const auto& [start1, start2, end1] = *dimension.extensionLines;
    const std::array<Point2, 2>& line = *dimension.line;
    const auto distance = [&end1 = end1](const Point2& point) {
      return std::hypot(point[0] - end1[0], point[1] - end1[1]);
    };
    const std::size_t near = distance(line[1]) < distance(line[0]) ? 1 : 0;
    Point2 end2 = line[1 - near];
    if (dimension.mainType != "angular") {
      end2[0] += end1[0] - line[near][0];
      end2[1] += end1[1] - line[near][1];
    }
    Line(Placed({start1, end1}));
    Line(Placed({start2, end2}));
  }

  // From the first point to the second around the third, the short way.
  static std::vector<Point2> Arc(const std::array<Point2, 3>& points) {
    const auto& [start, end, centre] = points;
    const double pi = std::acos(-1.0);
    const double from = std::atan2(start[1] - centre[1], start[0] - centre[0]);
    const double turn =
        std::remainder(std::atan2(end[1] - centre[1], end[0] - centre[0]) - from, 2 * pi);
    const double radius = std::hypot(start[0] - centre[0], start[1] - centre[1]);
    std::vector<Point2> arc;
    constexpr int kSteps = 16;
    for (int i = 0; i <= kSteps; ++i) {
      const double angle = from + turn * i / kSteps;
      arc.push_back({centre[0] + radius * std::cos(angle), centre[1] + radius * std::sin(angle)});
    }
    return arc;
  }

  const Projection& projection_;
  const ViewFrameReport& frame_;
  Point2 at_{};
  bool isPlaced_ = false;
  double height_ = 0;
  std::string svg_;
};

// The texts that there are, a line each.
std::string Joined(const std::vector<Text>& texts) {
  std::string joined;
  for (const Text& text : texts) {
    if (text.value_or("").empty()) continue;
    joined += (joined.empty() ? "" : "\n") + *text;
  }
  return joined;
}

void DrawTolerance(Sign& sign, const ToleranceReport& tolerance) {
  const std::string symbol = text::CharacteristicSymbol(tolerance);
  const std::size_t rows = tolerance.rows.size();
  if (rows == 0) sign.Boxes({symbol}, 0);
  for (std::size_t i = 0; i < rows; ++i) {
    std::vector<std::string> compartments = text::Compartments(tolerance.rows[i]);
    compartments.insert(compartments.begin(), symbol);
    sign.Boxes(compartments, rows - 1 - i);
  }
  const ToleranceNotesReport& notes = tolerance.notes;
  sign.Lines(Joined({notes.upper, notes.before}),
             static_cast<double>(std::max<std::size_t>(rows, 1)) + 0.2);
  sign.Lines(Joined({notes.lower, notes.after}), -0.8);
}

void DrawDimension(Sign& sign, const DimensionReport& dimension) {
  sign.DimensionLines(dimension);
  const DimensionSign shown = SignOf(dimension);
  shown.isBoxed ? sign.Boxes({shown.text}, 0) : sign.Lines(shown.text);
  sign.Lines(Joined({dimension.texts.upper}), shown.isBoxed ? 1.2 : 0.8);
  sign.Lines(Joined({dimension.texts.lower, dimension.texts.below}), -0.8);
}

}  // namespace

Point3 ToModel(const ViewFrameReport& frame, const Point2& point) {
  return frame.origin + point[0] * frame.xAxis + point[1] * frame.yAxis;
}

DimensionSign SignOf(const DimensionReport& dimension) {
  DimensionSign sign{text::DrawDimension(dimension), false};
  // The document's own brackets and parentheses say so already.
  if (dimension.tolerance == "basic") sign.isBoxed = sign.text.find('[') == std::string::npos;
  if (dimension.tolerance == "reference" && sign.text.find('(') == std::string::npos) {
    sign.text = "(" + sign.text + ")";
  }
  return sign;
}

std::string DrawSign(const Projection& projection, const ViewFrameReport& frame,
                     const AnnotationReport& annotation, double height) {
  Sign sign(projection, frame, *annotation.position, height);
  if (!sign.IsPlaced()) return "";
  sign.Leaders(annotation.leaders, static_cast<bool>(annotation.datum));
  if (annotation.tolerance) DrawTolerance(sign, *annotation.tolerance);
  if (annotation.dimension) DrawDimension(sign, *annotation.dimension);
  if (annotation.datum) sign.Boxes({annotation.datum->label.value_or("?")}, 0);
  if (annotation.datumTarget) {
    if (annotation.datumTarget->point1) sign.Cross(*annotation.datumTarget->point1);
    sign.Balloon(annotation.datumTarget->label.value_or("?"));
  }
  if (annotation.roughness) sign.Lines(text::DrawRoughness(*annotation.roughness));
  for (const TextReport& text : annotation.texts) {
    if (annotation.kind == "flagNote") {
      sign.Boxes({text.string.value_or("")}, 0);
    } else {
      sign.Lines(text.string.value_or(""));
    }
  }
  return "<g><title>" + Escape(annotation.name.value_or("")) + "</title>" + sign.Take() + "</g>\n";
}

}  // namespace html

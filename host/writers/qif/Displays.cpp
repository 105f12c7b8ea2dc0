// Displays: where annotations stand, their texts, leaders and lines.

#include <algorithm>
#include <cmath>

#include "writers/qif/DrawnTexts.h"
#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

// What fonts of QIF tell apart.
using FontKey = std::array<bool, 4>;  // fixed pitch, bold, italic, underline

FontKey KeyOf(const FontReport& font) {
  return {font.fixedPitch, font.bold, font.italic, font.underline};
}

const FontReport* FontOf(const Item& item) {
  const std::vector<TextReport>& texts = item.annotation->texts;
  return texts.empty() || !texts.front().font ? nullptr : &*texts.front().font;
}

class DisplayWriter {
 public:
  DisplayWriter(Xml& xml, Plan& plan, const std::map<FontKey, int>& fonts, const Item& item)
      : xml_(xml),
        plan_(plan),
        fonts_(fonts),
        item_(item),
        annotation_(*item.annotation),
        font_(FontOf(item)),
        texts_(TextsOf(item)) {
    const auto view = plan.views.find(item.view);
    if (view == plan.views.end() || !annotation_.position) return;
    view_ = &view->second;
    Place();
  }

  bool IsNeeded() const { return view_ != nullptr || font_ != nullptr || texts_.areNeeded; }

  void Write() {
    xml_.Open("PMIDisplay");
    if (view_ != nullptr) WritePlane();
    if (font_ != nullptr || texts_.areNeeded) WriteTexts();
    if (view_ != nullptr) WriteLeaders();
    if (view_ != nullptr && annotation_.dimension) WriteWitnessLines();
    if (texts_.hasFrame) WriteFrame();
    xml_.Open("Reference");
    xml_.Reference("Id", item_.id);
    xml_.Close();
    xml_.Close();
  }

  // Lists what has no place in the display.
  void ListRest() {
    if (annotation_.position &&
        !std::isfinite((*annotation_.position)[0] + (*annotation_.position)[1] +
                       annotation_.depth.value_or(0))) {
      Omit("lost", "its place is no number");
    } else if (view_ == nullptr && (annotation_.position || annotation_.depth)) {
      Omit("lost", "its view has no plane to stand in");
    }
    if (view_ == nullptr && !annotation_.leaders.empty()) {
      Omit("lost", "its leaders have no plane to lie in");
    }
    const Part<DimensionReport>& dimension = annotation_.dimension;
    if (view_ == nullptr && dimension && (dimension->line || dimension->extensionLines)) {
      Omit("lost", "its lines have no plane to lie in");
    }
    if (texts_.needAllAround && (view_ == nullptr || annotation_.leaders.empty()))
      Omit("lost", "it is all around, and has no leader to say so");
  }

 private:
  void Omit(const char* severity, const std::string& reason) {
    plan_.omissions.Add(severity, item_, reason);
  }

  // The report has the plane in single precision, and leaders, which lie in it, in double.
  void Place() {
    const double depth = annotation_.depth.value_or(0);
    origin_ = PointIn(view_->frame, view_->axes, *annotation_.position);
    if (std::isfinite(depth)) origin_ = origin_ + depth * view_->axes.normal;
    double off = 0;
    for (const auto& [tail, head] : annotation_.leaders) {
      const double count = 2 * static_cast<double>(annotation_.leaders.size());
      off += Dot((tail - origin_) + (head - origin_), view_->axes.normal) / count;
    }
    if (std::abs(off) <= Slack()) origin_ = origin_ + off * view_->axes.normal;
    if (!std::isfinite(Dot(origin_, origin_))) return void(view_ = nullptr);
    for (double& value : origin_) value = NumberIn(Rounded(value, plan_.Places())).value_or(value);
  }

  // How far single precision may put a point of the plane off it.
  double Slack() const { return 1e-6 * std::pow(10, 13 - plan_.Places()); }

  std::string Coordinates(const Point2& place) const {
    return Rounded(place[0], plan_.Places()) + ' ' + Rounded(place[1], plan_.Places());
  }

  // The coordinates of a point of the model, from the display's origin.
  Point2 InPlane(const Point3& point) const {
    const Point3 way = point - origin_;
    return {Dot(way, view_->axes.x), Dot(way, view_->axes.y)};
  }

  // Of a point of the view's coordinates.
  Point2 FromView(const Point2& point) const {
    return InPlane(PointIn(view_->frame, view_->axes, point));
  }

  void WritePlane() {
    std::string origin;
    for (const double value : origin_) {
      origin += (origin.empty() ? "" : " ") + Rounded(value, plan_.Places());
    }
    xml_.Open("Plane");
    xml_.Open("AnnotationViewId");
    xml_.Reference("Id", view_->id);
    xml_.Close();
    xml_.Leaf("Origin", origin);
    xml_.Close();
  }

  void WriteTexts() {
    xml_.OpenList("Texts", texts_.pieces.size());
    const auto font = font_ == nullptr ? fonts_.end() : fonts_.find(KeyOf(*font_));
    xml_.Attribute("fontIndex", std::to_string(font == fonts_.end() ? 0 : font->second));
    if (font_ != nullptr && font_->height > 0 && std::isfinite(font_->height)) {
      xml_.Attribute("lineHeight", Real(font_->height));
    }
    for (const Piece& piece : texts_.pieces) {
      xml_.Open("Text");
      xml_.Leaf("Data", piece.text);
      xml_.Leaf("XY", Coordinates(piece.place));
      xml_.Close();
    }
    xml_.Close();
  }

  void WriteLeaders() {
    if (annotation_.dimension && annotation_.dimension->line) {
      const auto& [start, end] = *annotation_.dimension->line;
      xml_.Open("LeaderDoubleHead");
      WriteEnds(FromView(start), FromView(end));
      xml_.Leaf("HeadForm2", "NONE");
      xml_.Leaf("PointConnection", Coordinates(FromView(end)));
      xml_.Close();
    }
    for (const auto& [tail, head] : annotation_.leaders) WriteLeader(tail, head);
  }

  void WriteLeader(const Point3& tail, const Point3& head) {
    if (!std::isfinite(Dot(tail, head))) return Omit("lost", "a leader has no ends");
    const double off = std::max(std::abs(Dot(tail - origin_, view_->axes.normal)),
                                std::abs(Dot(head - origin_, view_->axes.normal)));
    if (off > 10 * Slack()) {
      Omit("reduced", "a leader is drawn in the plane, which it is not in");
    }
    xml_.Open(texts_.needAllAround ? "LeaderExtend" : "Leader");
    WriteEnds(InPlane(head), InPlane(tail));
    if (texts_.needAllAround) {
      xml_.Leaf("PointExtension", Coordinates(InPlane(tail)));
      xml_.Leaf("Modifier", "ALL_AROUND");
    }
    texts_.needAllAround = false;
    xml_.Close();
  }

  // The report does not tell how heads are drawn.
  void WriteEnds(const Point2& start, const Point2& end) {
    xml_.Leaf("StartPoint", Coordinates(start));
    xml_.Leaf("EndPoint", Coordinates(end));
    xml_.Leaf("HeadForm", "NONE");
    xml_.Leaf("HeadHeight", "0");
  }

  void WriteWitnessLines() {
    if (!annotation_.dimension->extensionLines) return;
    const auto& [first, second, third] = *annotation_.dimension->extensionLines;
    const Point2 a = FromView(first), b = FromView(second), c = FromView(third);
    const std::string type = annotation_.dimension->type.value_or("");
    const double radius = std::hypot(a[0] - c[0], a[1] - c[1]);
    xml_.Open("WitnessLines");
    xml_.Attribute("width", "0");
    if ((type == "angle" || type == "angleBetween") && radius > 0) {
      xml_.Leaf("BeginPoint", Coordinates(a));
      xml_.Leaf("EndPoint", Coordinates(b));
      xml_.Leaf("CircleCenter", Coordinates(c));
      xml_.Leaf("CircleRadius", Decimal(radius));
    } else {
      // The report has no end of the second line: it is drawn along the first.
      WriteSegment("Segment1", a, c);
      WriteSegment("Segment2", b, {b[0] + c[0] - a[0], b[1] + c[1] - a[1]});
    }
    xml_.Close();
  }

  void WriteSegment(const char* name, const Point2& start, const Point2& end) {
    xml_.Open(name);
    xml_.Leaf("StartPoint", Coordinates(start));
    xml_.Leaf("EndPoint", Coordinates(end));
    xml_.Close();
  }

  void WriteFrame() {
    xml_.OpenList("Frames", 1);
    xml_.Open("FrameRectangular");
    xml_.Leaf("XY", "0 0");
    xml_.Leaf("Width", Real(kFrameWidth));
    xml_.Leaf("Height", Real(kFrameHeight));
    xml_.Close();
    xml_.Close();
  }

  Xml& xml_;
  Plan& plan_;
  const std::map<FontKey, int>& fonts_;
  const Item& item_;
  const AnnotationReport& annotation_;
  const FontReport* font_;
  const View* view_ = nullptr;  // null where it has no place
  Point3 origin_{};
  DrawnTexts texts_;
};

void WriteFonts(Xml& xml, const std::map<FontKey, int>& fonts) {
  xml.OpenList("Fonts", fonts.size());
  for (const auto& [key, index] : fonts) {
    constexpr const char* kStyles[] = {"", "bold", "italic", "underline"};
    xml.Open("Font");
    xml.Attribute("index", std::to_string(index));
    for (std::size_t i = 1; i < 4; ++i) {
      if (key[i]) xml.Attribute(kStyles[i], "true");
    }
    // The report has heights, which every text states, and no names.
    xml.Leaf("Name", key[0] ? "Sans Mono" : "Sans");
    xml.Leaf("Size", "12");
    xml.Close();
  }
  xml.Close();
}

}  // namespace

void WriteDisplays(Xml& xml, Plan& plan) {
  std::map<FontKey, int> fonts = {{FontKey{}, 0}};
  for (const Item& item : plan.items) {
    if (const FontReport* font = FontOf(item)) fonts.emplace(KeyOf(*font), 0);
  }
  int index = 0;
  for (auto& [key, number] : fonts) number = index++;
  std::vector<DisplayWriter> displays;
  for (const Item& item : plan.items) {
    DisplayWriter display(xml, plan, fonts, item);
    const bool isNeeded = display.IsNeeded();
    display.ListRest();
    if (isNeeded) displays.push_back(std::move(display));
  }
  if (displays.empty()) return;
  xml.Open("VisualizationSet");
  WriteFonts(xml, fonts);
  xml.OpenList("PMIDisplaySet", displays.size());
  for (DisplayWriter& display : displays) display.Write();
  xml.Close();
  xml.Close();
}

}  // namespace qif_writer

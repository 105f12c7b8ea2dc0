// Where displays stand and the lines that they are drawn with.

#include "readers/qif/Drawing.h"

namespace qif {

namespace {

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

QENvector Unit(const QENvector& vector) {
  return QENunit_vector(vector.x(), vector.y(), vector.z());
}

class DrawingReader {
 public:
  DrawingReader(Reading& reading, const DisplayElements& display, bool isDimension)
      : reading_(reading), display_(display), isDimension_(isDimension) {}

  Drawing Read() {
    ReadPlane();
    ReadLines();
    return std::move(drawing_);
  }

 private:
  void Skip(std::string_view kind, const std::string& reason) {
    reading_.Skip(kind, WordOf(display_.reference), reason);
  }

  // The model point of a point of the plane, whose coordinates count from its origin, x along the
  // text.
  QENposition At(Element point) const {
    const std::vector<double> uv = NumbersOf(point, 2);
    const QENposition model = drawing_.origin + (uv[0] * drawing_.direction + uv[1] * y_);
    RequireFinite(point, {model.x(), model.y(), model.z()});
    return model;
  }

  // Texts are placed in the plane's own coordinates, so the plane's origin is the display point.
  // Without a plane the text direction stays zero, which marks that there is none.
  void ReadPlane() {
    if (!display_.plane) return;
    const Document::Entry* const view =
        reading_.document.Find(Child(Child(display_.plane, "AnnotationViewId"), "Id"));
    if (view == nullptr) throw Unreadable(display_.plane, "its annotation view does not exist");
    const Units& units = reading_.units;
    drawing_.normal = Unit(units.Vector(Child(view->element, "Normal")));
    Element direction = Child(display_.plane, "Direction");
    if (!direction) direction = Child(view->element, "Direction");
    drawing_.direction = Unit(units.Vector(direction));
    y_ = Unit(cross(drawing_.normal, drawing_.direction));
    if (!(y_.length_squared() > 0)) {
      throw Unreadable(display_.plane, "its text does not run along its plane");
    }
    const Element origin = Child(display_.plane, "Origin");
    if (origin) drawing_.origin = units.Point(origin);
    drawing_.hasPlane = true;
  }

  void ReadLines() {
    if (!drawing_.hasPlane) return;
    for (const Element leader : display_.leaders) {
      if (!StartsWith(NameOf(leader), "LeaderDoubleHead")) {
        ReadLeader(leader);
      } else if (!isDimension_) {
        ReadDoubleLeader(leader);
      } else if (drawing_.dimensionLine.empty()) {
        drawing_.dimensionLine = {At(Child(leader, "StartPoint")),
                                  At(Child(leader, "PointConnection"))};
        SkipBreak(leader);
      } else {
        Skip(NameOf(leader), "the model has one dimension line");
      }
      if (Child(leader, "Center")) Skip(NameOf(leader), "its arc is taken as its chord");
      const std::string_view modifier = WordOf(leader, "Modifier");
      drawing_.isAllAround = drawing_.isAllAround || StartsWith(modifier, "ALL_AROUND");
    }
    if (!display_.witnessLines) return;
    if (isDimension_) {
      ReadWitnessLines();
    } else {
      Skip("WitnessLines", "the model has them on dimensions only");
    }
  }

  // A leader starts at its head and ends at the text, by way of a break point when it has one.
  // An arc is taken as its chord.
  void ReadLeader(Element leader) {
    const Element extension = Child(leader, "PointExtension");
    SkipBreak(leader);
    drawing_.leaders.push_back(
        {At(extension ? extension : Child(leader, "EndPoint")), At(Child(leader, "StartPoint"))});
  }

  // A line that goes on to the text bends at its end point.
  void SkipBreak(Element leader) {
    if (Child(leader, "PointExtension")) Skip(NameOf(leader), "its break point is left out");
  }

  // Only a dimension has a line between two heads; elsewhere each head has its leader.
  void ReadDoubleLeader(Element leader) {
    Element tail = Child(leader, "PointExtension");
    if (!tail) tail = Child(leader, "EndPoint");
    SkipBreak(leader);
    const QENposition tailPoint = At(tail);
    const bool none2 = WordOf(leader, "HeadForm2") == "NONE";
    const bool none1 = WordOf(leader, "HeadForm") == "NONE" && !none2;
    if (!none1) drawing_.leaders.push_back({tailPoint, At(Child(leader, "StartPoint"))});
    if (!none2) drawing_.leaders.push_back({tailPoint, At(Child(leader, "PointConnection"))});
  }

  // Three points: where the two extension lines start, at the feature, and where the first ends. Of
  // an arc: its ends and its centre.
  void ReadWitnessLines() {
    if (const Element first = Child(display_.witnessLines, "Segment1")) {
      const Element second = Child(display_.witnessLines, "Segment2");
      drawing_.extensionLines = {At(Child(first, "StartPoint")), At(Child(second, "StartPoint")),
                                 At(Child(first, "EndPoint"))};
      Skip("WitnessLines", "the end of its second line is left out");
    } else {
      drawing_.extensionLines = {At(Child(display_.witnessLines, "BeginPoint")),
                                 At(Child(display_.witnessLines, "EndPoint")),
                                 At(Child(display_.witnessLines, "CircleCenter"))};
    }
  }

  Reading& reading_;
  const DisplayElements& display_;
  bool isDimension_;
  QENvector y_;
  Drawing drawing_;
};

}  // namespace

DisplayElements::DisplayElements(Element display) {
  for (const Element child : display.children()) {
    const std::string_view name = NameOf(child);
    if (StartsWith(name, "Leader")) leaders.push_back(child);
    if (name == "Color") color = child;
    if (name == "Plane") plane = child;
    if (name == "Texts") texts = child;
    if (name == "WitnessLines") witnessLines = child;
    if (name == "Frames") frames = child;
    if (name == "Graphics") graphics = child;
    if (name == "Reference") reference = Child(child, "Id");
  }
}

Drawing ReadDrawing(Reading& reading, const DisplayElements& display, bool isDimension) {
  return DrawingReader(reading, display, isDimension).Read();
}

}  // namespace qif

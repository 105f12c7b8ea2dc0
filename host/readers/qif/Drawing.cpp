// Where displays stand and the lines that they are drawn with.

#include "readers/qif/Drawing.h"

#include <cmath>
#include <limits>

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
  DrawingReader(Reading& reading, Fields& display, bool isDimension)
      : reading_(reading), display_(display), isDimension_(isDimension) {}

  Drawing Read() {
    ReadPlane();
    if (drawing_.hasPlane) ReadLines();
    return std::move(drawing_);
  }

 private:
  void Reduce(Element element, const std::string& reason) {
    reading_.Skip(Severity::kReduced, element, reason);
  }

  // Throws unless places are numbers that a view can have, which are of single precision.
  void RequireInView(Element element, const QENposition& place) const {
    constexpr double kFurthest = std::numeric_limits<float>::max();
    for (const double value : {place.x(), place.y(), place.z()}) {
      if (!(std::abs(value) <= kFurthest)) {
        throw Unreadable(element, std::string(NameOf(element)) + " is too far away");
      }
    }
  }

  // The model point of a point of the plane, whose coordinates count from its origin, x along the
  // text.
  QENposition At(Element point) const {
    const std::vector<double> uv = NumbersOf(point, 2);
    const double scale = 1 / reading_.units.Scale();
    const QENposition model = drawing_.origin + scale * (uv[0] * drawing_.direction + uv[1] * y_);
    RequireInView(point, model);
    return model;
  }

  // Texts are placed in the plane's own coordinates, so the plane's origin is the display point.
  // Without a plane the text direction stays zero, which marks that there is none.
  void ReadPlane() {
    Fields plane(display_["Plane"]);
    if (!plane.Record()) return;
    const Document::Entry* const view =
        reading_.document.Find(Child(plane["AnnotationViewId"], "Id"));
    if (view == nullptr) throw Unreadable(plane.Record(), "its annotation view does not exist");
    const Units& units = reading_.units;
    Fields axes(view->element);
    drawing_.normal = Unit(units.Vector(axes["Normal"]));
    const Element byDefault = axes["Direction"];
    reading_.SkipRest(axes);
    const Element own = plane["Direction"];
    const Element direction = own ? own : byDefault;
    drawing_.direction = Unit(units.Vector(direction));
    y_ = Unit(cross(drawing_.normal, drawing_.direction));
    if (!(y_.length_squared() > 0)) {
      throw Unreadable(plane.Record(), "its text does not run along its plane");
    }
    if (const Element origin = plane["Origin"]) {
      drawing_.origin = units.Point(origin);
      RequireInView(origin, drawing_.origin);
    }
    drawing_.hasPlane = true;
    reading_.SkipRest(plane);
  }

  void ReadLines() {
    for (const Element element : display_.AllWith("Leader")) {
      Fields leader(element);
      if (!StartsWith(NameOf(element), "LeaderDoubleHead")) {
        ReadLeader(leader);
      } else if (!isDimension_) {
        ReadDoubleLeader(leader);
      } else if (drawing_.dimensionLine.empty()) {
        ReadDimensionLine(leader);
      } else {
        Reduce(element, "the model has one dimension line");
        continue;
      }
      if (leader["Center"]) Reduce(element, "its arc is taken as its chord");
      if (HasAny(leader, {"HeadForm", "HeadForm2", "HeadHeight"})) {
        Reduce(element, "the form and size of its heads are left out");
      }
      ReadModifier(leader["Modifier"]);
      reading_.SkipRest(leader);
    }
    Fields lines(display_["WitnessLines"]);
    if (!lines.Record()) return;
    if (isDimension_) {
      ReadWitnessLines(lines);
    } else {
      Reduce(lines.Record(), "the model has them on dimensions only");
    }
  }

  static bool HasAny(Fields& record, std::initializer_list<const char*> names) {
    bool has = false;
    for (const char* name : names) has = bool(record[name]) || has;
    return has;
  }

  void ReadModifier(Element modifier) {
    struct Meaning {
      bool isAllAround = false;
      bool isMore = false;  // than the model has
    };
    constexpr Word<Meaning> kModifiers[] = {{"ALL_AROUND", {true, false}},
                                            {"ALL_AROUND_FLAG", {true, true}},
                                            {"ALL_OVER", {false, true}},
                                            {"FLAG", {false, true}}};
    const Meaning meaning = reading_.MeaningOf(modifier, kModifiers, Meaning());
    drawing_.isAllAround = drawing_.isAllAround || meaning.isAllAround;
    if (meaning.isMore) Reduce(modifier, "the model has no such mark: " + Quote(TextOf(modifier)));
  }

  // Where a leader ends, at the text. A line that goes on to the text bends at its end point.
  Element EndOf(Fields& leader) {
    const Element end = leader["EndPoint"];
    const Element extension = leader["PointExtension"];
    if (extension) Reduce(leader.Record(), "its break point is left out");
    return extension ? extension : end;
  }

  // A leader starts at its head. An arc is taken as its chord.
  void ReadLeader(Fields& leader) {
    drawing_.leaders.push_back({At(EndOf(leader)), At(leader["StartPoint"])});
  }

  // From one head to the other; from there the line goes on to the text.
  void ReadDimensionLine(Fields& leader) {
    drawing_.dimensionLine = {At(leader["StartPoint"]), At(leader["PointConnection"])};
    if (NumbersOf(EndOf(leader), 2) != NumbersOf(leader["PointConnection"], 2)) {
      Reduce(leader.Record(), "its way from the second head to the text is left out");
    }
  }

  // Only a dimension has a line between two heads; elsewhere each head has its leader.
  void ReadDoubleLeader(Fields& leader) {
    const Element end = EndOf(leader);
    const Element head2 = leader["PointConnection"];
    const bool none2 = leader.Word("HeadForm2") == "NONE";
    const bool none1 = leader.Word("HeadForm") == "NONE" && !none2;
    if (!none1) drawing_.leaders.push_back({At(end), At(leader["StartPoint"])});
    if (none2) return;
    if (NumbersOf(end, 2) != NumbersOf(head2, 2)) {
      drawing_.leaders.push_back({At(end), At(head2)});
    } else {
      Reduce(leader.Record(), "its head at the text is left out");
    }
  }

  // Three points: where the two extension lines start, at the feature, and where the first ends. Of
  // an arc: its ends and its centre.
  void ReadWitnessLines(Fields& lines) {
    if (const Element first = lines["Segment1"]) {
      Fields one(first);
      Fields two(lines["Segment2"]);
      drawing_.extensionLines = {At(one["StartPoint"]), At(two["StartPoint"]), At(one["EndPoint"])};
      two.Pass({"EndPoint"});
      reading_.SkipRest(one);
      reading_.SkipRest(two);
      Reduce(lines.Record(), "the end of its second line is left out");
    } else {
      drawing_.extensionLines = {At(lines["BeginPoint"]), At(lines["EndPoint"]),
                                 At(lines["CircleCenter"])};
    }
    reading_.SkipRest(lines);
  }

  Reading& reading_;
  Fields& display_;
  bool isDimension_;
  QENvector y_;
  Drawing drawing_;
};

}  // namespace

Drawing ReadDrawing(Reading& reading, Fields& display, bool isDimension) {
  return DrawingReader(reading, display, isDimension).Read();
}

}  // namespace qif

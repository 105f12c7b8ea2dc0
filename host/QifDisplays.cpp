// How annotations are drawn: plane, text, leaders, dimension and extension lines.

#include <algorithm>
#include <cmath>

#include "QifReading.h"
#include "QifText.h"

namespace qif {

namespace {

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

QENvector Unit(const QENvector& vector) {
  return QENunit_vector(vector.x(), vector.y(), vector.z());
}

// The plane of a display. Coordinates in it count from its origin, x along the text.
struct DisplayPlane {
  QENposition origin;
  QENvector x{0, 0, 0};
  QENvector y{0, 0, 0};
  QENvector normal{0, 0, 1};

  QENposition At(Element point) const {
    const std::vector<double> uv = NumbersOf(point, 2);
    return origin + (uv[0] * x + uv[1] * y);
  }
};

struct Font {
  bool fixedPitch = false;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  double height = 0;
};
using Fonts = std::map<std::string, Font, std::less<>>;

Fonts ReadFonts(Reading& reading, Element list) {
  Fonts fonts;
  for (const Element element : list.children()) {
    reading.Try(element, [&] {
      Font font;
      font.fixedPitch = TextOf(element, "Name").find(" Mono") != std::string_view::npos;
      font.bold = IsTrue(element.attribute("bold").value());
      font.italic = IsTrue(element.attribute("italic").value());
      font.underline = IsTrue(element.attribute("underline").value());
      font.height = reading.units.FromPoints(NumberOf(Child(element, "Size")));
      fonts[element.attribute("index").value()] = font;
    });
  }
  return fonts;
}

// The display properties that an annotation has, wherever it keeps them.
template <typename Work>
void WithDisplay(ENTITY& annotation, Work work) {
  if (is_KOVAPMI_DIMENSION(&annotation) == 1) {
    work(static_cast<KOVAPMI_DIMENSION&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_GEOM_TOL(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_GEOM_TOL&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_DATUM(&annotation) == 1) {
    work(standin::DatumOf(static_cast<ATTRIB_KOVAPMI_DATUM&>(annotation)));
  } else if (is_ATTRIB_KOVAPMI_DATUM_TARGET(&annotation) == 1) {
    work(standin::TargetOf(static_cast<ATTRIB_KOVAPMI_DATUM_TARGET&>(annotation)));
  } else if (is_ATTRIB_KOVAPMI_TEXT(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_TEXT&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_FLAGNOTE(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_FLAGNOTE&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_ROUGHNESS(&annotation) == 1) {
    work(static_cast<ATTRIB_KOVAPMI_ROUGHNESS&>(annotation));
  }
}

class DisplayReader {
 public:
  DisplayReader(Reading& reading, const Fonts& fonts, Element element)
      : reading_(reading), fonts_(fonts) {
    for (const Element child : element.children()) {
      const std::string_view name = NameOf(child);
      if (StartsWith(name, "Leader")) leaderElements_.push_back(child);
      if (name == "Color") color_ = child;
      if (name == "Plane") planeElement_ = child;
      if (name == "Texts") texts_ = child;
      if (name == "WitnessLines") witness_ = child;
      if (name == "Frames") frames_ = child;
      if (name == "Graphics") graphics_ = child;
      if (name == "Reference") reference_ = Child(child, "Id");
    }
    reading_.Count("leaders", static_cast<long>(leaderElements_.size()));
  }

  // `drawn` has the annotations that have a display already.
  void Read(std::unordered_set<const ENTITY*>& drawn) {
    try {
      std::string reason;
      ENTITY* const annotation = reading_.AnnotationAt(reference_, reason);
      if (annotation == nullptr) return Skip("PMIDisplay", reason);
      isDimension_ = is_KOVAPMI_DIMENSION(annotation) == 1;
      if (drawn.count(annotation) != 0) {
        return Skip("PMIDisplay", "the annotation has a display already");
      }
      const std::wstring text = DrawnText(texts_);
      ReadPlane();
      ReadLines();
      bool holdsDisplay = false;
      WithDisplay(*annotation, [&](auto& holder) {
        holdsDisplay = true;
        Apply(reading_.part.Place(holder, plane_.origin, plane_.x, plane_.normal));
        UseText(holder, text);
      });
      if (!holdsDisplay) return Skip("PMIDisplay", "a saved view has no display");
      drawn.insert(annotation);
      if (!hasPlane_) Skip("PMIDisplay", "it has no plane; its place and lines are left out");
      if (graphics_) Skip("Graphics", "the model has no drawn lines and areas");
    } catch (const Unreadable& problem) {
      Skip("PMIDisplay", problem.what());
    }
  }

 private:
  void Skip(std::string_view kind, const std::string& reason) {
    reading_.Skip(kind, WordOf(reference_), reason);
  }

  // Texts are placed in the plane's own coordinates, so the plane's origin is the display point.
  // Without a plane the text direction stays zero, which marks that there is none.
  void ReadPlane() {
    if (!planeElement_) return;
    const Document::Entry* const view =
        reading_.document.Find(Child(Child(planeElement_, "AnnotationViewId"), "Id"));
    if (view == nullptr) throw Unreadable(planeElement_, "its annotation view does not exist");
    const Units& units = reading_.units;
    plane_.normal = Unit(units.Vector(Child(view->element, "Normal")));
    Element direction = Child(planeElement_, "Direction");
    if (!direction) direction = Child(view->element, "Direction");
    plane_.x = Unit(units.Vector(direction));
    plane_.y = Unit(cross(plane_.normal, plane_.x));
    if (!(plane_.y.length_squared() > 0)) {
      throw Unreadable(planeElement_, "its text does not run along its plane");
    }
    if (const Element origin = Child(planeElement_, "Origin")) plane_.origin = units.Point(origin);
    hasPlane_ = true;
  }

  void ReadLines() {
    if (!hasPlane_) return;
    for (const Element leader : leaderElements_) {
      if (!StartsWith(NameOf(leader), "LeaderDoubleHead")) {
        ReadLeader(leader);
      } else if (!isDimension_) {
        ReadDoubleLeader(leader);
      } else if (line_.empty()) {
        line_ = {plane_.At(Child(leader, "StartPoint")), plane_.At(Child(leader, "EndPoint"))};
      } else {
        Skip(NameOf(leader), "the model has one dimension line");
      }
      const std::string_view modifier = WordOf(leader, "Modifier");
      isAllAround_ = isAllAround_ || StartsWith(modifier, "ALL_AROUND");
    }
    if (witness_ && isDimension_) ReadWitnessLines();
    if (witness_ && !isDimension_) Skip("WitnessLines", "the model has them on dimensions only");
  }

  // A leader starts at its head and ends at the text, by way of a break point when it has one.
  // An arc is taken as its chord.
  void ReadLeader(Element leader) {
    const Element extension = Child(leader, "PointExtension");
    leaders_.push_back({plane_.At(extension ? extension : Child(leader, "EndPoint")),
                        plane_.At(Child(leader, "StartPoint"))});
  }

  // Only a dimension has a line between two heads; elsewhere each head has its leader.
  void ReadDoubleLeader(Element leader) {
    Element tail = Child(leader, "PointExtension");
    if (!tail) tail = Child(leader, "PointConnection");
    const QENposition tailPoint = plane_.At(tail);
    const bool none2 = WordOf(leader, "HeadForm2") == "NONE";
    const bool none1 = WordOf(leader, "HeadForm") == "NONE" && !none2;
    if (!none1) leaders_.push_back({tailPoint, plane_.At(Child(leader, "StartPoint"))});
    if (!none2) leaders_.push_back({tailPoint, plane_.At(Child(leader, "EndPoint"))});
  }

  // Three points: where the two extension lines start, at the feature, and where the first ends. Of
  // an arc: its ends and its centre.
  void ReadWitnessLines() {
    if (const Element first = Child(witness_, "Segment1")) {
      const Element second = Child(witness_, "Segment2");
      extensionLines_ = {plane_.At(Child(first, "StartPoint")),
                         plane_.At(Child(second, "StartPoint")),
                         plane_.At(Child(first, "EndPoint"))};
    } else {
      extensionLines_ = {plane_.At(Child(witness_, "BeginPoint")),
                         plane_.At(Child(witness_, "EndPoint")),
                         plane_.At(Child(witness_, "CircleCenter"))};
    }
  }

  void Apply(KOVAPMI_DISPLAY_PROPERTIES& display) {
    for (const Leader& leader : leaders_) {
      reading_.part.AddLeader(display, leader.tail, leader.head);
    }
    if (!texts_) return;
    auto& properties = reading_.part.Make<KOVAPMI_TEXT_PROPERTIES>();
    auto& fields = standin::Edit(properties);
    const auto font = fonts_.find(std::string_view(texts_.attribute("fontIndex").value()));
    if (font != fonts_.end()) {
      fields.fixed_pitch = font->second.fixedPitch ? 1 : 0;
      fields.bold = font->second.bold ? 1 : 0;
      fields.italic = font->second.italic ? 1 : 0;
      fields.underline = font->second.underline ? 1 : 0;
      fields.height = font->second.height;
    }
    if (const pugi::xml_attribute height = texts_.attribute("lineHeight")) {
      const double value = height.as_double();
      if (std::isfinite(value)) fields.height = value;
    }
    if (color_) {
      const std::vector<double> rgb = NumbersOf(color_, 3);
      for (std::size_t i = 0; i < 3; ++i) fields.color[i] = rgb[i] / 255;
    }
    standin::Edit(display).text_properties = &properties;
  }

  // --- What the text of a display adds to its annotation ---

  void UseText(KOVAPMI_DIMENSION& dimension, const std::wstring& text) {
    auto& fields = standin::Edit(dimension);
    fields.line = line_;
    fields.extension_lines = extensionLines_;
    const bool isCallout = HasHoleSymbol(text) || reading_.holeDimensions.count(&dimension) != 0;
    if (isCallout && !fields.hole_callout.has_value() && !text.empty()) fields.hole_callout = text;
    const AroundValue around = TextsAroundValue(text);
    if (!around.before.empty()) NoteOf(fields.note).before = around.before;
    if (!around.after.empty()) NoteOf(fields.note).after = around.after;
  }

  void UseText(ATTRIB_KOVAPMI_GEOM_TOL& tolerance, const std::wstring&) {
    auto& fields = standin::Edit(tolerance);
    if (isAllAround_) fields.all_around = 1;
    UseTextsAroundFrame(fields.note);
  }

  template <typename Note>
  void UseTextOfNote(Note& note, const std::wstring& text) {
    auto& own = standin::Edit(note).text;
    if (!own.has_value() || own->empty()) own = text;
  }
  void UseText(ATTRIB_KOVAPMI_TEXT& note, const std::wstring& text) { UseTextOfNote(note, text); }
  void UseText(ATTRIB_KOVAPMI_FLAGNOTE& note, const std::wstring& text) {
    UseTextOfNote(note, text);
  }

  template <typename Other>
  void UseText(Other&, const std::wstring&) {}

  KOVAPMI_NOTE::fields& NoteOf(KOVAPMI_NOTE*& note) {
    if (note == nullptr) note = &reading_.part.Make<KOVAPMI_NOTE>();
    return standin::Edit(*note);
  }

  // Texts outside the rectangle that all the compartments of a frame make.
  void UseTextsAroundFrame(KOVAPMI_NOTE*& note) {
    double left = HUGE_VAL, right = -HUGE_VAL, bottom = HUGE_VAL, top = -HUGE_VAL;
    for (const Element frame : frames_.children()) {
      if (NameOf(frame) != "FrameRectangular") continue;
      const std::vector<double> corner = NumbersOf(Child(frame, "XY"), 2);
      left = std::min(left, corner[0]);
      bottom = std::min(bottom, corner[1]);
      right = std::max(right, corner[0] + NumberOf(Child(frame, "Width")));
      top = std::max(top, corner[1] + NumberOf(Child(frame, "Height")));
    }
    if (!(left < right)) return;
    for (const Element text : texts_.children()) {
      const std::vector<double> place = NumbersOf(Child(text, "XY"), 2);
      pmi_text KOVAPMI_NOTE::fields::*side = nullptr;
      if (place[0] < left) side = &KOVAPMI_NOTE::fields::before;
      if (place[0] > right) side = &KOVAPMI_NOTE::fields::after;
      if (place[1] < bottom) side = &KOVAPMI_NOTE::fields::lower;
      if (place[1] > top) side = &KOVAPMI_NOTE::fields::upper;
      const std::wstring piece = Symbols(Child(text, "Data").first_child().value());
      if (side == nullptr || piece.empty()) continue;
      pmi_text& all = NoteOf(note).*side;
      all = all.has_value() ? *all + L"\n" + piece : piece;
    }
  }

  struct Leader {
    QENposition tail;
    QENposition head;
  };

  Reading& reading_;
  const Fonts& fonts_;
  Element color_, planeElement_, texts_, witness_, frames_, graphics_, reference_;
  std::vector<Element> leaderElements_;
  bool isDimension_ = false;
  bool hasPlane_ = false;
  bool isAllAround_ = false;
  DisplayPlane plane_;
  std::vector<Leader> leaders_;
  std::vector<QENposition> line_;
  std::vector<QENposition> extensionLines_;
};

}  // namespace

void ReadDisplays(Reading& reading) {
  const Element set = reading.document.At({"Product", "VisualizationSet"});
  const Fonts fonts = ReadFonts(reading, Child(set, "Fonts"));
  std::unordered_set<const ENTITY*> drawn;
  for (const Element display : Child(set, "PMIDisplaySet").children()) {
    reading.Count("displays");
    DisplayReader(reading, fonts, display).Read(drawn);
  }
}

}  // namespace qif

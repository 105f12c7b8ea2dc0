// Displays: gives annotations their display properties, and what their drawn text adds.

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/WithDisplay.h"
#include "readers/qif/Drawing.h"
#include "readers/qif/Text.h"

namespace qif {

namespace {

// The plug-in hands sizes out in single precision.
constexpr double kLargestFloat = std::numeric_limits<float>::max();

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
  for (const Element element : list.children("Font")) {
    try {
      Font font;
      Fields fields(element);
      font.fixedPitch = fields.Text("Name").find(" Mono") != std::string_view::npos;
      font.bold = reading.Flag(element, "bold", Severity::kReduced);
      font.italic = reading.Flag(element, "italic", Severity::kReduced);
      font.underline = reading.Flag(element, "underline", Severity::kReduced);
      font.height = reading.units.FromPoints(NumberOf(fields["Size"]));
      if (!(font.height <= kLargestFloat)) throw Unreadable(element, "its size is too large");
      const bool isNew = fonts.emplace(element.attribute("index").value(), font).second;
      if (!isNew) throw Unreadable(element, "its index is used twice");
      reading.SkipRest(fields);
    } catch (const Unreadable& problem) {
      reading.Skip(Severity::kReduced, element, problem.what());
    }
  }
  return fonts;
}

class DisplayReader {
 public:
  DisplayReader(Reading& reading, const Fonts& fonts, Element element)
      : reading_(reading),
        fonts_(fonts),
        display_(element, Fields::kUnlimited),
        texts_(display_["Texts"]) {
    reading_.Count("leaders", static_cast<long>(display_.AllWith("Leader").size()));
  }

  // `drawn` has the annotations that have a display already.
  void Read(std::unordered_set<const ENTITY*>& drawn) {
    const Element element = display_.Record();
    try {
      Fields references(display_["Reference"]);
      const Element reference = references["Id"];
      std::string reason;
      const Document::Entry* const entry = reading_.AnnotationAt(reference, reason);
      if (entry == nullptr) {
        return reading_.Skip(Severity::kLost, element, WordOf(reference), reason);
      }
      reading_.Under(std::to_string(entry->id));
      reading_.SkipRest(references);
      ENTITY& annotation = *entry->entity;
      if (drawn.count(&annotation) != 0) {
        return Reduce(element, "the annotation has a display already");
      }
      const std::wstring text = DrawnText(texts_);
      drawing_ = ReadDrawing(reading_, display_, is_KOVAPMI_DIMENSION(&annotation) == 1);
      bool holdsDisplay = false;
      WithDisplay(annotation, [&](auto& holder) {
        holdsDisplay = true;
        Apply(reading_.part.Place(holder, drawing_.origin, drawing_.direction, drawing_.normal));
        if (!UseText(holder, text) && !text.empty()) {
          Reduce(texts_, "the model has what its text says, not the text as drawn");
        }
      });
      if (!holdsDisplay) return Reduce(element, "a saved view has no display");
      drawn.insert(&annotation);
      SkipRest(annotation);
    } catch (const Unreadable& problem) {
      reading_.Lose(element, problem);
    }
  }

 private:
  void Reduce(Element element, const std::string& reason) {
    reading_.Skip(Severity::kReduced, element, reason);
  }

  void SkipRest(const ENTITY& annotation) {
    if (!drawing_.hasPlane) {
      Reduce(display_.Record(), "it has no plane; its place and lines are left out");
    }
    if (drawing_.isAllAround && is_ATTRIB_KOVAPMI_GEOM_TOL(&annotation) != 1) {
      Reduce(display_.Record(), "its leader's all-around mark is left out");
    }
    Fields texts(texts_, Fields::kUnlimited);
    for (const Element text : texts.All("Text")) {
      Fields fields(text);
      fields.Pass({"Data"});
      const std::vector<double> place = NumbersOf(fields["XY"], 2);
      reading_.SkipRest(fields);
      if (place[0] == 0 && place[1] == 0) continue;
      Reduce(texts_, "the place of its text in its plane is left out");
    }
    reading_.SkipRest(texts);
    if (const Element frames = display_["Frames"]) Reduce(frames, "the model has no drawn frames");
    if (const Element graphics = display_["Graphics"]) {
      Reduce(graphics, "the model has no drawn lines and areas");
    }
    reading_.SkipRest(display_);
  }

  void Apply(KOVAPMI_DISPLAY_PROPERTIES& display) {
    for (const Drawing::Leader& leader : drawing_.leaders) {
      reading_.part.AddLeader(display, leader.tail, leader.head);
    }
    if (!texts_) return;
    const Element color = display_["Color"];
    auto& properties = reading_.part.Make<KOVAPMI_TEXT_PROPERTIES>();
    auto& fields = standin::Edit(properties);
    const auto font = fonts_.find(std::string_view(texts_.attribute("fontIndex").value()));
    if (font != fonts_.end()) {
      fields.fixed_pitch = font->second.fixedPitch ? 1 : 0;
      fields.bold = font->second.bold ? 1 : 0;
      fields.italic = font->second.italic ? 1 : 0;
      fields.underline = font->second.underline ? 1 : 0;
      fields.height = font->second.height;
    } else {
      Reduce(texts_, "its font is not in the document, or could not be read");
    }
    if (const Attribute height = texts_.attribute("lineHeight")) {
      const std::optional<double> value = NumberIn(height.value());
      if (value.has_value() && *value > 0 && *value <= kLargestFloat) {
        fields.height = *value / reading_.units.Scale();
      } else {
        Reduce(texts_, "its height " + Quote(height.value()) + " is out of range");
      }
    }
    if (color) {
      const std::vector<double> rgb = NumbersOf(color, 3);
      for (std::size_t i = 0; i < 3; ++i) {
        if (rgb[i] < 0 || rgb[i] > 255) throw Unreadable(color, "its colour is out of range");
        fields.color[i] = rgb[i] / 255;
      }
    }
    standin::Edit(display).text_properties = &properties;
  }

  // --- What the text of a display adds to its annotation ---

  // Each says whether the model has the whole text now.
  bool UseText(KOVAPMI_DIMENSION& dimension, const std::wstring& text) {
    auto& fields = standin::Edit(dimension);
    fields.line = drawing_.dimensionLine;
    fields.extension_lines = drawing_.extensionLines;
    const bool isCallout = HasHoleSymbol(text) || reading_.holeDimensions.count(&dimension) != 0;
    if (isCallout && !fields.hole_callout.has_value() && !text.empty()) fields.hole_callout = text;
    // What a thread is has numbers of its own.
    if (fields.type == dim_thread && fields.hole_callout == text) return true;
    AroundValue around = TextsAroundValue(text);
    if (fields.note != nullptr) {
      const pmi_text& suffix = standin::Edit(*fields.note).suffix;
      around.after = WithoutSizeModifiers(around.after, suffix.value_or(L""));
    }
    if (!around.before.empty()) NoteOf(fields.note).before = around.before;
    if (!around.after.empty()) NoteOf(fields.note).after = around.after;
    return fields.hole_callout == text;
  }

  bool UseText(ATTRIB_KOVAPMI_GEOM_TOL& tolerance, const std::wstring&) {
    auto& fields = standin::Edit(tolerance);
    if (drawing_.isAllAround) fields.all_around = 1;
    UseTextsAroundFrame(fields.note);
    return false;
  }

  template <typename Note>
  bool UseTextOfNote(Note& note, const std::wstring& text) {
    auto& own = standin::Edit(note).text;
    if (!own.has_value() || own->empty()) own = text;
    return *own == text;
  }
  bool UseText(ATTRIB_KOVAPMI_TEXT& note, const std::wstring& text) {
    return UseTextOfNote(note, text);
  }
  bool UseText(ATTRIB_KOVAPMI_FLAGNOTE& note, const std::wstring& text) {
    return UseTextOfNote(note, text);
  }

  template <typename Other>
  bool UseText(Other&, const std::wstring&) {
    return false;
  }

  KOVAPMI_NOTE::fields& NoteOf(KOVAPMI_NOTE*& note) {
    if (note == nullptr) note = &reading_.part.Make<KOVAPMI_NOTE>();
    return standin::Edit(*note);
  }

  // Texts outside the rectangle that all the compartments of a frame make.
  void UseTextsAroundFrame(KOVAPMI_NOTE*& note) {
    double left = HUGE_VAL, right = -HUGE_VAL, bottom = HUGE_VAL, top = -HUGE_VAL;
    for (const Element frame : display_["Frames"].children("FrameRectangular")) {
      const std::vector<double> corner = NumbersOf(Child(frame, "XY"), 2);
      left = std::min(left, corner[0]);
      bottom = std::min(bottom, corner[1]);
      right = std::max(right, corner[0] + NumberOf(Child(frame, "Width")));
      top = std::max(top, corner[1] + NumberOf(Child(frame, "Height")));
    }
    if (!(left < right)) return;
    for (const Element text : texts_.children("Text")) {
      const std::vector<double> place = NumbersOf(Child(text, "XY"), 2);
      pmi_text KOVAPMI_NOTE::fields::*side = nullptr;
      if (place[0] < left) side = &KOVAPMI_NOTE::fields::before;
      if (place[0] > right) side = &KOVAPMI_NOTE::fields::after;
      if (place[1] < bottom) side = &KOVAPMI_NOTE::fields::lower;
      if (place[1] > top) side = &KOVAPMI_NOTE::fields::upper;
      const std::wstring piece = Symbols(RawTextOf(Child(text, "Data")));
      if (side == nullptr || piece.empty()) continue;
      pmi_text& all = NoteOf(note).*side;
      all = all.has_value() ? *all + L"\n" + piece : piece;
    }
  }

  Reading& reading_;
  const Fonts& fonts_;
  Fields display_;
  Element texts_;
  Drawing drawing_;
};

}  // namespace

void ReadDisplays(Reading& reading) {
  const Element set = reading.document.At({"Product", "VisualizationSet"});
  const Fonts fonts = ReadFonts(reading, Child(set, "Fonts"));
  std::unordered_set<const ENTITY*> drawn;
  for (const Element display : Child(set, "PMIDisplaySet").children("PMIDisplay")) {
    reading.Count("displays");
    reading.Under({});
    DisplayReader(reading, fonts, display).Read(drawn);
  }
}

}  // namespace qif

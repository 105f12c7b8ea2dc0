// The texts around a dimension's value and around a tolerance's frame, of what is stated for what
// is drawn of them.

#include <algorithm>

#include "model/AroundValue.h"
#include "readers/step/Drawn.h"

namespace step {

namespace {

constexpr wchar_t kMarks[] = L"\u2300\u25A1\u2334\u2335\u21A7";

class AroundText {
 public:
  AroundText(Reading& reading, Id element)
      : reading_(reading), element_(element), parts_(DrawnPartsOf(reading, element)) {}

  // What stands before the value and behind it. What a dimensional note says, too, is not said
  // twice. In the callout of a hole the lines may be in any order: it is given as a whole, too.
  void AddTo(KOVAPMI_DIMENSION& dimension) {
    auto& fields = standin::Edit(dimension);
    bool isBehind = false;
    for (const DrawnPart& part : parts_) {
      if (part.kind == "FCF") return;  // what follows is the tolerance's below it
      const std::wstring text = Wide(part.text);
      if (part.kind == "TXT") {
        KOVAPMI_NOTE::fields& note = NoteOf(fields.note);
        Add(isBehind ? note.after : note.before, text);
      }
      if (part.kind != "DIM") continue;
      isBehind = true;
      if (HasHoleSymbol(text)) fields.hole_callout = text;
      const AroundValue around = TextsAroundValue(text);
      const std::wstring before = WithoutMarks(around.before);
      if (!before.empty()) Add(NoteOf(fields.note).before, before);
      if (around.after.empty()) continue;
      pmi_text& after = NoteOf(fields.note).after;
      if (!after.has_value()) after = around.after;
    }
  }

  // The texts before the frame and behind it. In a frame of several rows the lines below a text
  // behind the first are the next row's.
  void AddTo(ATTRIB_KOVAPMI_GEOM_TOL& tolerance) {
    auto& fields = standin::Edit(tolerance);
    bool isBehind = false;
    for (auto part = FirstOfFrame(); part != parts_.end(); ++part) {
      isBehind = isBehind || part->kind == "FCF";
      if (part->kind != "TXT") continue;
      const bool isRow = isBehind && fields.rows.size() > 1;
      const std::string text = isRow ? part->text.substr(0, part->text.find('\n')) : part->text;
      KOVAPMI_NOTE::fields& note = NoteOf(fields.note);
      Add(isBehind ? note.after : note.before, Wide(text));
    }
  }

  // Others have no place for texts.
  void AddTo(const ENTITY& annotation) {
    for (const DrawnPart& part : parts_) {
      if (part.kind == "TXT") List(annotation, part.text);
    }
  }

 private:
  // What stands before a frame below a dimension is the dimension's.
  std::vector<DrawnPart>::const_iterator FirstOfFrame() const {
    const auto isDimension = [](const DrawnPart& part) { return part.kind == "DIM"; };
    const auto dimension = std::find_if(parts_.begin(), parts_.end(), isDimension);
    if (dimension == parts_.end()) return parts_.begin();
    return std::find_if(dimension, parts_.end(),
                        [](const DrawnPart& part) { return part.kind == "FCF"; });
  }

  // Without the letters of a radius at the start and what stands behind another mark.
  static std::wstring WithoutMarks(std::wstring_view before) {
    for (const wchar_t* radius : {L"SR", L"CR", L"R"}) TakeFirstWord(before, radius);
    before = before.substr(0, before.find_first_of(kMarks));
    while (!before.empty() && (before.back() == L' ' || before.back() == L'\n')) {
      before.remove_suffix(1);
    }
    return std::wstring(before);
  }

  void List(const ENTITY& annotation, const std::string& text) {
    reading_.Skip(Severity::kReduced, element_, "its text '" + text + "' is left out", &annotation);
  }

  KOVAPMI_NOTE::fields& NoteOf(KOVAPMI_NOTE*& note) {
    if (note == nullptr) note = &reading_.part.Make<KOVAPMI_NOTE>();
    return standin::Edit(*note);
  }

  static void Add(pmi_text& all, std::wstring_view text) {
    all = all.has_value() ? *all + L"\n" + std::wstring(text) : std::wstring(text);
  }

  Reading& reading_;
  Id element_;
  std::vector<DrawnPart> parts_;
};

}  // namespace

void AddAroundText(Reading& reading, Id element, ENTITY& annotation) {
  AroundText texts(reading, element);
  if (is_KOVAPMI_DIMENSION(&annotation) == 1) {
    texts.AddTo(static_cast<KOVAPMI_DIMENSION&>(annotation));
  } else if (is_ATTRIB_KOVAPMI_GEOM_TOL(&annotation) == 1) {
    texts.AddTo(static_cast<ATTRIB_KOVAPMI_GEOM_TOL&>(annotation));
  } else {
    texts.AddTo(annotation);
  }
}

}  // namespace step

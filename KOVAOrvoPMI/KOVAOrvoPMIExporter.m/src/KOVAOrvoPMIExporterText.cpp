// The texts of notes and flag notes, and their character format.
#include "QueryShape.h"

namespace {

// What a text or a flag note holds.
struct Note {
  const wchar_t* text;
  KOVAPMI_DISPLAY_PROPERTIES* display;
};

// Returns false, and leaves `note` as it was, for an object of any other kind.
bool ReadNote(ENTITY& entity, Note& note) {
  if (auto* text = As<ATTRIB_KOVAPMI_TEXT>(&entity)) {
    note = {text->get_wtext(), text->get_display_properties()};
  } else if (auto* flagNote = As<ATTRIB_KOVAPMI_FLAGNOTE>(&entity)) {
    note = {flagNote->get_wtext(), flagNote->get_display_properties()};
  } else {
    return false;
  }
  return true;
}

}  // namespace

KOVAResult KOVAOrvoPMIExporter::GetAnnotationTextCount(const KOVAIdentifier& annotation,
                                                       int& count) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    Note note{};
    if (!ReadNote(entity, note)) return Failure;
    count = 1;
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetAnnotationText(const KOVAIdentifier& annotation, int /*index*/,
                                                  KOVAIdentifier& text) {
  return AnswerFromObject<ENTITY>(annotation, [&](ENTITY& entity) {
    text = TextIdentifier(&entity);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetTextString(const KOVAIdentifier& text, KOVAString& string) {
  return AnswerFromObject<ENTITY>(text, [&](ENTITY& entity) {
    Note note{};
    if (!ReadNote(entity, note)) return Failure;
    string = KOVAString(note.text);
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetTextFont(const KOVAIdentifier& text, KOVAPMIFont& /*font*/,
                                            KOVAString& /*fontName*/, bool& fixedPitch,
                                            float& height, bool& bold, bool& italic,
                                            bool& underline, bool& strikeThrough, bool& overline,
                                            float& ratio, float& slant, double* const /*colour*/) {
  return AnswerFromObject<ENTITY>(text, [&](ENTITY& entity) {
    Note note{};
    if (!ReadNote(entity, note) || note.display == nullptr) return Failure;
    KOVAPMI_TEXT_PROPERTIES* format = note.display->get_text_properties();
    if (format == nullptr) return Failure;
    fixedPitch = format->is_fixed_pitch() != 0;
    height = static_cast<float>(format->get_height());
    bold = format->is_bold() != 0;
    italic = format->is_italic() != 0;
    underline = format->is_underline() != 0;
    strikeThrough = format->is_strike_through() != 0;
    overline = format->is_overline() != 0;
    ratio = static_cast<float>(format->get_ratio());
    slant = static_cast<float>(format->get_slant());
    return Success;
  });
}

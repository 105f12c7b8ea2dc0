// The string and the character format of a note or flag note.
#include "QueryShape.h"

KOVAResult KOVAOrvoPMIExporter::GetTextString(const KOVAIdentifier& text, KOVAString& string) {
  return AnswerFromUntested<ENTITY>(text, [&](ENTITY& entity) {
    if (const auto* note = As<ATTRIB_KOVAPMI_TEXT>(&entity)) {
      string = KOVAString(note->get_wtext());
    } else if (const auto* flagNote = As<ATTRIB_KOVAPMI_FLAGNOTE>(&entity)) {
      string = KOVAString(flagNote->get_wtext());
    } else {
      return Failure;
    }
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetTextFont(const KOVAIdentifier& text, KOVAPMIFont& /*font*/,
                                            KOVAString& /*fontName*/, bool& fixedPitch,
                                            float& height, bool& bold, bool& italic,
                                            bool& underline, bool& strikeThrough, bool& overline,
                                            float& ratio, float& slant, double* const /*colour*/) {
  return AnswerFromUntested<ENTITY>(text, [&](ENTITY& entity) {
    const KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    if (const auto* note = As<ATTRIB_KOVAPMI_TEXT>(&entity)) {
      display = note->get_display_properties();
    } else if (const auto* flagNote = As<ATTRIB_KOVAPMI_FLAGNOTE>(&entity)) {
      display = flagNote->get_display_properties();
    }
    if (display == nullptr) return Failure;
    const KOVAPMI_TEXT_PROPERTIES* format = display->get_text_properties();
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

// Notes and flag notes.

#include "readers/qif/Reading.h"

namespace qif {

namespace {

void ReadNote(Reading& reading, Element element, bool isFlag, const char* count) {
  reading.Count(count);
  Fields fields(element);
  ENTITY& carrier = reading.Carrier(reading.AssociatedEntities(fields));
  // An empty text is filled in from the display, which comes later.
  const std::wstring text = Wide(RawTextOf(fields["Text"]));
  ENTITY& note = isFlag ? static_cast<ENTITY&>(reading.part.AddFlagNote(carrier, text.c_str()))
                        : reading.part.AddText(carrier, text.c_str());
  reading.document.EntryOf(element).entity = &note;
  reading.Describe(note, element, isFlag ? "flag note" : "note",
                   element.attribute("label").value());
  constexpr Word<bool> kForms[] = {{"3D", false}, {"SCREEN", true}};
  if (reading.MeaningOf(element, "form", kForms, false)) {
    reading.Skip(Severity::kReduced, element, "the model has no places on the screen");
  }
  reading.SkipRest(fields);
}

}  // namespace

void ReadNotes(Reading& reading) {
  const Element product = reading.document.At({"Product"});
  for (const Element note : Child(product, "NoteSet").children("Note")) {
    reading.Try(note, [&] { ReadNote(reading, note, false, "notes"); });
  }
  for (const char* set : {"NoteSet", "NoteFlagSet"}) {
    for (const Element note : Child(product, set).children("NoteFlag")) {
      reading.Try(note, [&] { ReadNote(reading, note, true, "flagNotes"); });
    }
  }
  // A note on the part as a whole is on none of its entities.
  for (const Element note : Child(product, "PartNoteSet").children("PartNote")) {
    reading.Try(note, [&] { ReadNote(reading, note, false, "partNotes"); });
  }
}

}  // namespace qif

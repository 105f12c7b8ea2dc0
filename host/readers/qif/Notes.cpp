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
  reading.SkipRest(fields);
}

}  // namespace

void ReadNotes(Reading& reading) {
  const Element product = reading.document.At({"Product"});
  for (const Element note : Child(product, "NoteSet").children()) {
    const bool isFlag = NameOf(note) == "NoteFlag";
    reading.Try(note, [&] { ReadNote(reading, note, isFlag, isFlag ? "flagNotes" : "notes"); });
  }
  for (const Element note : Child(product, "NoteFlagSet").children()) {
    reading.Try(note, [&] { ReadNote(reading, note, true, "flagNotes"); });
  }
  // A note on the part as a whole is on none of its entities.
  for (const Element note : Child(product, "PartNoteSet").children()) {
    reading.Try(note, [&] { ReadNote(reading, note, false, "partNotes"); });
  }
}

}  // namespace qif

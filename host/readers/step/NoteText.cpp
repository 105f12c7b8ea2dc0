// The texts of notes.

#include "readers/step/Drawn.h"

namespace step {

namespace {

class NoteTextReader {
 public:
  explicit NoteTextReader(Reading& reading) : reading_(reading) {}

  std::string Read(const Instance& element) {
    std::string text;
    for (const Id link : reading_.ReferrersOf(element.id, "DRAUGHTING_MODEL_ITEM_ASSOCIATION")) {
      AddDescriptions(reading_.Get(link).records.front().Reference(2), "", text);
    }
    if (!text.empty()) return text;
    AddText(element, text);
    if (IsCallout(reading_, element.id)) {
      for (const Value& content : ContentsOf(element)) {
        AddText(reading_.Get(content.Reference()), text);
      }
    }
    return text.empty() ? StatedText(element.id) : text;
  }

 private:
  // Adds a line with the text of a text occurrence; nothing of others.
  void AddText(const Instance& occurrence, std::string& text) {
    if (occurrence.Find("ANNOTATION_TEXT_OCCURRENCE") == nullptr) return;
    const Instance& literal = reading_.Get(ItemOf(occurrence));
    const Record* const record = literal.Find("TEXT_LITERAL");
    if (record == nullptr) return;
    // A simple instance has its name first.
    AddLine(record->Text(record->count == 6 ? 1 : 0), text);
  }

  static void AddLine(const std::string& line, std::string& text) {
    text += (text.empty() ? "" : "\n") + line;
  }

  // Adds a line for each description of a property; with a name, of that name.
  void AddDescriptions(Id property, std::string_view name, std::string& text) {
    if (!reading_.Is(property, "PROPERTY_DEFINITION")) return;
    for (const Id use : reading_.ReferrersOf(property, "PROPERTY_DEFINITION_REPRESENTATION")) {
      const Instance& shown = reading_.Get(reading_.Get(use).records.front().Reference(1));
      for (const Value& item : shown.As("REPRESENTATION").List(1)) {
        const Instance& description = reading_.Get(item.Reference());
        const Record* const record = description.Find("DESCRIPTIVE_REPRESENTATION_ITEM");
        if (record == nullptr) continue;
        const Record* const named = description.Find("REPRESENTATION_ITEM");
        if (!name.empty() && (named != nullptr ? *named : *record).Text(0) != name) continue;
        AddLine(record->Text(record->count - 1), text);
      }
    }
  }

  std::string StatedText(Id element) {
    std::string text;
    for (const Id user :
         reading_.ReferrersOf(element, "CHARACTERIZED_ITEM_WITHIN_REPRESENTATION")) {
      for (const Id property : reading_.ReferrersOf(user, "PROPERTY_DEFINITION")) {
        AddDescriptions(property, "equivalent unicode string", text);
      }
    }
    return text;
  }

  Reading& reading_;
};

}  // namespace

std::string NoteTextOf(Reading& reading, const Instance& element) {
  return NoteTextReader(reading).Read(element);
}

}  // namespace step

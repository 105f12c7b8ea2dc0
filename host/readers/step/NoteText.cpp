// The texts of notes, and what a file states for what is drawn. Symbols are characters in STEP;
// what else an author's system writes for them in a text, such as #{diameter}, stands as it is.

#include <algorithm>

#include "readers/step/Drawn.h"

namespace step {

namespace {

// Adds a line. Texts may be shared.
void AddLine(Reading& reading, const std::string& line, std::string& text) {
  reading.Spend(1 + line.size() / 16);
  text += (text.empty() ? "" : "\n") + line;
}

// Adds a line for each description of a property; with a name, of that name.
void AddDescriptions(Reading& reading, Id property, std::string_view name, std::string& text) {
  if (!reading.Is(property, "PROPERTY_DEFINITION")) return;
  for (const Id use : reading.ReferrersOf(property, "PROPERTY_DEFINITION_REPRESENTATION")) {
    const Instance& shown = reading.Get(reading.Get(use).records.front().Reference(1));
    for (const Value& item : shown.As("REPRESENTATION").List(1)) {
      reading.Spend(1);
      const Instance& description = reading.Get(item.Reference());
      const Record* const record = description.Find("DESCRIPTIVE_REPRESENTATION_ITEM");
      if (record == nullptr) continue;
      const Record* const named = description.Find("REPRESENTATION_ITEM");
      if (!name.empty() && (named != nullptr ? *named : *record).Text(0) != name) continue;
      AddLine(reading, record->Text(record->count - 1), text);
    }
  }
}

std::string StatedText(Reading& reading, Id element) {
  std::string text;
  for (const Id user : reading.ReferrersOf(element, "CHARACTERIZED_ITEM_WITHIN_REPRESENTATION")) {
    for (const Id property : reading.ReferrersOf(user, "PROPERTY_DEFINITION")) {
      AddDescriptions(reading, property, "equivalent unicode string", text);
    }
  }
  return text;
}

// Whether three letters and a backslash stand there.
bool IsKind(std::string_view text) {
  return text.size() > 3 && text[3] == '\\' &&
         std::all_of(&text[0], &text[3], [](char c) { return c >= 'A' && c <= 'Z'; });
}

// A part's text: \n begins a line, \s is a blank and \w parts the compartments of a frame. Blanks
// around it are left out.
std::string PlainText(std::string_view part) {
  std::string text;
  for (std::size_t i = 0; i < part.size(); ++i) {
    const char next = part[i] == '\\' && i + 1 < part.size() ? part[i + 1] : '\0';
    const bool isMark = next == 'n' || next == 's' || next == 'w';
    const bool isDouble = isMark && next != 'n' && !text.empty() && text.back() == ' ';
    if (!isDouble) text += !isMark ? part[i] : next == 'n' ? '\n' : ' ';
    if (isMark) ++i;
  }
  const std::size_t begin = text.find_first_not_of(" \n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \n") + 1 - begin);
}

class NoteTextReader {
 public:
  explicit NoteTextReader(Reading& reading) : reading_(reading) {}

  std::string Read(const Instance& element) {
    std::string text;
    for (const Id link : reading_.ReferrersOf(element.id, "DRAUGHTING_MODEL_ITEM_ASSOCIATION")) {
      AddDescriptions(reading_, reading_.Get(link).records.front().Reference(2), "", text);
    }
    if (!text.empty()) return text;
    AddText(element, text);
    if (IsCallout(reading_, element.id)) {
      for (const Value& content : ContentsOf(element)) {
        AddText(reading_.Get(content.Reference()), text);
      }
    }
    if (!text.empty()) return text;
    for (const DrawnPart& part : DrawnPartsOf(reading_, element.id))
      AddLine(reading_, part.text, text);
    return text;
  }

 private:
  // Adds a line with the text of a text occurrence; nothing of others.
  void AddText(const Instance& occurrence, std::string& text) {
    if (occurrence.Find("ANNOTATION_TEXT_OCCURRENCE") == nullptr) return;
    AddLiteral(ItemOf(occurrence), text);
  }

  // A text, or several that stand side by side; none holds itself. A simple instance has its name
  // first.
  void AddLiteral(Id id, std::string& text) {
    const Instance& instance = reading_.Get(id);
    const std::uint32_t at = instance.records.size() == 1 ? 1 : 0;
    for (const Record& record : instance.records) {
      const std::string_view name = record.name;
      if (name.substr(0, 12) == "TEXT_LITERAL" && record.count > 4) {
        AddLine(reading_, record.Text(at), text);
      } else if (name.substr(0, 14) == "COMPOSITE_TEXT" && record.count > at &&
                 composites_.size() < kMostComposites && composites_.insert(id).second) {
        for (const Value& part : record.List(at)) AddLiteral(part.Reference(), text);
      }
    }
  }

  static constexpr std::size_t kMostComposites = 100;

  Reading& reading_;
  std::unordered_set<Id> composites_;
};

}  // namespace

std::vector<DrawnPart> DrawnPartsOf(Reading& reading, Id element) {
  const std::string stated = StatedText(reading, element);
  std::string_view rest = stated;
  if (rest.empty()) return {};
  if (!IsKind(rest)) return {{"", stated}};
  std::vector<DrawnPart> parts;
  while (!rest.empty()) {
    const std::string_view part = rest.substr(0, rest.find("\\x"));
    rest.remove_prefix(std::min(rest.size(), part.size() + 2));
    const std::size_t kind = IsKind(part) ? 3 : 0;
    std::string text = PlainText(part.substr(kind));
    if (!text.empty()) parts.push_back({std::string(part.substr(0, kind)), std::move(text)});
  }
  return parts;
}

std::string NoteTextOf(Reading& reading, const Instance& element) {
  return NoteTextReader(reading).Read(element);
}

}  // namespace step

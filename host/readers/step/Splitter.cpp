#include "readers/step/Splitter.h"

#include <limits>

#include "readers/step/Characters.h"
#include "readers/step/Parameters.h"

namespace step {

namespace {

// The characters at which the body of an instance has to be looked at.
struct Specials {
  bool is[256] = {};
  constexpr Specials() {
    for (const char c : {'\'', '"', ';', '#', '(', ')', '/'})
      is[static_cast<unsigned char>(c)] = true;
  }
};
constexpr Specials kSpecials;

}  // namespace

void Splitter::SkipBlanks() {
  while (at_ < text_.size()) {
    const char c = text_[at_];
    if (IsBlank(c)) {
      ++at_;
    } else if (c == '/' && text_.compare(at_, 2, "/*") == 0) {
      const std::size_t end = text_.find("*/", at_ + 2);
      if (end == std::string_view::npos) exchange_.Fail(at_, "a comment does not end");
      at_ = end + 2;
    } else if (c == '\\' && IsPrintControl(text_.substr(at_, 3))) {
      at_ += 3;
    } else {
      return;
    }
  }
}

bool Splitter::Take(std::string_view word) {
  SkipBlanks();
  if (text_.compare(at_, word.size(), word) != 0) return false;
  at_ += word.size();
  return true;
}

void Splitter::Require(std::string_view word) {
  if (Take(word)) return;
  if (at_ >= text_.size()) {
    exchange_.Fail(at_, "the file is cut off: " + std::string(word) + " is missing");
  }
  exchange_.Fail(at_, std::string(word) + " is missing");
}

void Splitter::SkipQuoted(char quote) {
  const std::size_t end = text_.find(quote, at_ + 1);
  if (end == std::string_view::npos) exchange_.Fail(at_, "a string does not end");
  at_ = end + 1;
}

std::string_view Splitter::Statement() {
  SkipBlanks();
  const std::size_t begin = at_;
  while (at_ < text_.size() && text_[at_] != ';') {
    const char c = text_[at_];
    if (c == '\'' || c == '"' || c == '<') {  // a string, a binary or the name of a resource
      SkipQuoted(c == '<' ? '>' : c);
    } else if (text_.compare(at_, 2, "/*") == 0) {
      SkipBlanks();
    } else {
      ++at_;
    }
  }
  if (at_ >= text_.size()) exchange_.Fail(begin, "the file is cut off inside a statement");
  std::size_t end = at_++;
  while (end > begin && IsBlank(text_[end - 1])) --end;
  return text_.substr(begin, end - begin);
}

void Splitter::Split() {
  Require("ISO-10303-21");
  Require(";");
  Require("HEADER");
  Require(";");
  ReadHeader();
  while (!Take("END-ISO-10303-21")) {
    if (Take("ANCHOR") || Take("REFERENCE")) {
      SkipSection();
    } else {
      if (at_ >= text_.size()) Require("END-ISO-10303-21");
      Require("DATA");
      Statement();
      ReadData();
    }
  }
  if (exchange_.places_.empty()) exchange_.Fail(at_, "there is no data");
  // What follows may be signatures; they do not count.
}

void Splitter::ReadHeader() {
  while (!Take("ENDSEC")) {
    const std::string_view statement = Statement();
    if (statement.substr(0, 11) != "FILE_SCHEMA") continue;
    const auto begin = static_cast<std::size_t>(statement.data() - text_.data());
    try {
      const Instance schemas = step::ReadInstance(0, statement);
      for (const Value& name : schemas.records.front().List(0)) {
        exchange_.schemas_.push_back(Decode(name.Text()));
      }
    } catch (const Unreadable& problem) {
      exchange_.Fail(begin, std::string("FILE_SCHEMA: ") + problem.what());
    }
  }
  Require(";");
}

void Splitter::SkipSection() {
  while (!Take("ENDSEC")) Statement();
  Require(";");
}

void Splitter::ReadData() {
  while (!Take("ENDSEC")) {
    if (at_ >= text_.size()) exchange_.Fail(at_, "the file is cut off: ENDSEC is missing");
    if (text_[at_] != '#') exchange_.Fail(at_, "an instance begins with #");
    ReadInstance();
  }
  Require(";");
}

Id Splitter::TakeNumber() {
  constexpr std::uint64_t kMost = std::numeric_limits<Id>::max();
  const std::size_t begin = at_++;
  std::uint64_t number = 0;
  while (at_ < text_.size() && IsDigit(text_[at_]) && number <= kMost) {
    number = 10 * number + static_cast<unsigned>(text_[at_++] - '0');
  }
  if (number == 0) exchange_.Fail(begin, "# without a number");
  if (number > kMost) exchange_.Fail(begin, "an instance's number is too large");
  return static_cast<Id>(number);
}

void Splitter::ReadInstance() {
  const Id id = TakeNumber();
  Require("=");
  SkipBlanks();
  const std::size_t begin = at_;
  const auto place = static_cast<std::uint32_t>(exchange_.places_.size());
  ReadBody(id, place);
  const std::size_t size = at_ - begin;
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    exchange_.Fail(begin, "#" + std::to_string(id) + " is too long");
  }
  exchange_.places_.push_back({id, static_cast<std::uint32_t>(size), begin});
  ++at_;
}

// A name stands before the bracket of a simple instance and, in a complex one, behind every bracket
// that is one deep.
void Splitter::ReadBody(Id id, std::uint32_t place) {
  const std::size_t begin = at_;
  const bool complex = at_ < text_.size() && text_[at_] == '(';
  int depth = 0;
  NoteEntity(id);
  while (true) {
    while (at_ < text_.size() && !kSpecials.is[static_cast<unsigned char>(text_[at_])]) ++at_;
    if (at_ >= text_.size()) {
      exchange_.Fail(begin, "the file is cut off inside #" + std::to_string(id));
    }
    switch (text_[at_]) {
      case ';':
        return;
      case '#':
        exchange_.references_.emplace_back(TakeNumber(), place);
        break;
      case '/':
        if (text_.compare(at_, 2, "/*") != 0) ++at_;
        SkipBlanks();
        break;
      case '(':
        ++at_;
        if (complex && ++depth == 1) NoteEntity(id);
        break;
      case ')':
        ++at_;
        if (complex && --depth == 1) NoteEntity(id);
        break;
      default:
        SkipQuoted(text_[at_]);
    }
  }
}

void Splitter::NoteEntity(Id id) {
  SkipBlanks();
  const std::size_t begin = at_;
  if (at_ >= text_.size()) return;
  if (text_[at_] >= 'a' && text_[at_] <= 'z') {
    exchange_.Fail(at_, "#" + std::to_string(id) + ": an entity's name is not in capital letters");
  }
  if (!IsNameStart(text_[at_])) return;
  while (at_ < text_.size() && IsNamePart(text_[at_])) ++at_;
  std::vector<Id>& ids = exchange_.byEntity_[text_.substr(begin, at_ - begin)];
  if (ids.empty() || ids.back() != id) ids.push_back(id);
}

}  // namespace step

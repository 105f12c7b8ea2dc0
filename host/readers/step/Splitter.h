#pragma once

#include "readers/step/Exchange.h"

namespace step {

// Goes through an exchange structure once and notes where its instances stand, what they are called
// and what they refer to.
class Splitter {
 public:
  explicit Splitter(Exchange& exchange) : exchange_(exchange), text_(exchange.text_) {}

  void Split();

 private:
  void SkipBlanks();
  // Takes `word` off; false, and nothing taken, when something else stands there.
  bool Take(std::string_view word);
  void Require(std::string_view word);
  // Moves behind the semicolon of a statement and gives the text before it.
  std::string_view Statement();
  void SkipQuoted(char quote);
  void ReadHeader();
  void SkipSection();
  void ReadData();
  void ReadInstance();
  void ReadBody(Id id, std::uint32_t place);
  void NoteEntity(Id id);
  Id TakeNumber();

  Exchange& exchange_;
  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace step

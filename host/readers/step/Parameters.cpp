#include "readers/step/Parameters.h"

#include <algorithm>

#include "readers/step/Characters.h"

namespace step {

namespace {

class Parser {
 public:
  Parser(Id id, std::string_view text) : text_(text) { instance_.id = id; }

  Instance Parse() {
    // Every value but the first of a list has a comma before it, and a typed one is two.
    const auto commas = std::count(text_.begin(), text_.end(), ',');
    const auto brackets = std::count(text_.begin(), text_.end(), '(');
    instance_.values = std::make_unique<Value[]>(static_cast<std::size_t>(commas + 2 * brackets));
    next_ = instance_.values.get();
    gathered_.reserve(16);  // more than most have
    if (Take('(')) {
      while (!Take(')')) ParseRecord();
    } else {
      ParseRecord();
    }
    SkipBlanks();
    if (at_ != text_.size()) Fail("there is more behind it");
    if (instance_.records.empty()) Fail("it has no entity");
    return std::move(instance_);
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const { throw Unreadable(instance_.id, what); }

  void SkipBlanks() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (IsBlank(c)) {
        ++at_;
      } else if (c == '/' && text_.compare(at_, 2, "/*") == 0) {
        at_ = std::min(text_.find("*/", at_ + 2), text_.size() - 2) + 2;
      } else if (c == '\\' && IsPrintControl(text_.substr(at_, 3))) {
        at_ += 3;
      } else {
        return;
      }
    }
  }

  bool Take(char c) {
    SkipBlanks();
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  std::string_view TakeName() {
    SkipBlanks();
    const std::size_t begin = at_;
    if (at_ < text_.size() && IsNameStart(text_[at_])) {
      while (at_ < text_.size() && IsNamePart(text_[at_])) ++at_;
    }
    return text_.substr(begin, at_ - begin);
  }

  void ParseRecord() {
    Record record;
    record.of = instance_.id;
    record.name = TakeName();
    if (record.name.empty()) Fail("an entity's name is missing");
    if (!Take('(')) Fail(std::string(record.name) + " has no parameters");
    const Value list = ParseList();
    record.values = list.items;
    record.count = list.size;
    instance_.records.push_back(record);
  }

  // What stands behind a bracket, with the closing one. Items are gathered and then stored side by
  // side, behind those of the lists inside.
  Value ParseList() {
    if (++depth_ > kDeepest) Fail("its lists are nested too deeply");
    const std::size_t first = gathered_.size();
    if (!Take(')')) {
      do gathered_.push_back(ParseValue());
      while (Take(','));
      if (!Take(')')) Fail("a bracket is not closed");
    }
    --depth_;
    return Store(Value::kList, first);
  }

  Value Store(Value::Kind kind, std::size_t first) {
    Value value;
    value.kind = kind;
    value.size = static_cast<std::uint32_t>(gathered_.size() - first);
    value.items = next_;
    const auto begin = gathered_.begin() + static_cast<std::ptrdiff_t>(first);
    next_ = std::copy(begin, gathered_.end(), next_);
    gathered_.resize(first);
    return value;
  }

  Value ParseValue() {
    SkipBlanks();
    if (at_ >= text_.size()) Fail("a parameter is missing");
    const char c = text_[at_];
    if (c == '(') {
      ++at_;
      return ParseList();
    }
    if (c == '$' || c == '*') {
      ++at_;
      Value value;
      value.kind = c == '$' ? Value::kOmitted : Value::kDerived;
      return value;
    }
    if (c == '\'') return ParseString();
    if (c == '"') return ParseUntil(Value::kBinary, '"');
    if (c == '.' && at_ + 1 < text_.size() && IsNameStart(text_[at_ + 1])) {
      return ParseUntil(Value::kEnumeration, '.');
    }
    if (c == '#') {
      ++at_;
      return ParseWhile(Value::kReference, IsDigit);
    }
    if (IsNameStart(c)) return ParseTyped();
    return ParseWhile(Value::kNumber, [](char part) {
      return IsDigit(part) || part == '.' || part == '+' || part == '-' || part == 'E' ||
             part == 'e';
    });
  }

  Value Text(Value::Kind kind, std::size_t begin, std::size_t end) const {
    Value value;
    value.kind = kind;
    value.size = static_cast<std::uint32_t>(end - begin);
    value.text = text_.data() + begin;
    return value;
  }

  Value ParseString() {
    const std::size_t begin = ++at_;
    while (true) {
      at_ = text_.find('\'', at_);
      if (at_ == std::string_view::npos) Fail("a string does not end");
      if (text_.compare(at_, 2, "''") != 0) break;
      at_ += 2;
    }
    return Text(Value::kString, begin, at_++);
  }

  Value ParseUntil(Value::Kind kind, char last) {
    const std::size_t begin = ++at_;
    at_ = text_.find(last, begin);
    if (at_ == std::string_view::npos) Fail("a parameter does not end");
    return Text(kind, begin, at_++);
  }

  template <typename IsPart>
  Value ParseWhile(Value::Kind kind, IsPart isPart) {
    const std::size_t begin = at_;
    while (at_ < text_.size() && isPart(text_[at_])) ++at_;
    if (at_ == begin) Fail("a parameter is not readable");
    return Text(kind, begin, at_);
  }

  Value ParseTyped() {
    const std::string_view name = TakeName();
    if (!Take('(')) Fail(std::string(name) + " has no parameter");
    if (++depth_ > kDeepest) Fail("its lists are nested too deeply");
    const std::size_t first = gathered_.size();
    const auto begin = static_cast<std::size_t>(name.data() - text_.data());
    gathered_.push_back(Text(Value::kEnumeration, begin, begin + name.size()));
    // A select type may have more than one parameter here, as a set typed in place has: the first.
    gathered_.push_back(ParseValue());
    if (!Take(')')) Fail(std::string(name) + " is not closed");
    --depth_;
    return Store(Value::kTyped, first);
  }

  static constexpr int kDeepest = 100;

  std::string_view text_;
  std::size_t at_ = 0;
  int depth_ = 0;
  Instance instance_;
  std::vector<Value> gathered_;
  Value* next_ = nullptr;
};

}  // namespace

Instance ReadInstance(Id id, std::string_view text) { return Parser(id, text).Parse(); }

}  // namespace step

#include "model/Account.h"

namespace {

// Longer than any text that is the reader's own.
constexpr std::size_t kLongestWord = 60;
constexpr std::size_t kLongestReason = 200;

bool IsSame(const SkippedItem& a, const SkippedItem& b) {
  return a.severity == b.severity && a.kind == b.kind && a.id == b.id &&
         a.annotation == b.annotation && a.reason == b.reason;
}

std::size_t HashOf(const SkippedItem& item) {
  auto hash = static_cast<std::size_t>(item.severity);
  for (const std::string* text : {&item.kind, &item.id, &item.annotation, &item.reason}) {
    hash = hash * 1000003 + std::hash<std::string>()(*text);
  }
  return hash;
}

}  // namespace

std::string Cut(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  // A character of several bytes is not cut in two.
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0) == 0x80) --most;
  return std::string(text.substr(0, most)) + "...";
}

void Account::Add(SkippedItem item) {
  item.kind = Cut(item.kind, kLongestWord);
  item.id = Cut(item.id, kLongestWord);
  item.annotation = Cut(item.annotation, kLongestWord);
  item.reason = Cut(item.reason, kLongestReason);
  AddCut(std::move(item));
}

void Account::AddCut(SkippedItem item) {
  const std::size_t hash = HashOf(item);
  const auto [first, last] = places_.equal_range(hash);
  for (auto place = first; place != last; ++place) {
    SkippedItem& known = items_[place->second];
    if (!IsSame(known, item)) continue;
    known.count += item.count;
    return;
  }
  const bool isRest = item.kind.empty();
  if (items_.size() >= most_ && !isRest) {
    return AddCut(
        {item.severity, "", "", "", "more of these than are listed", item.line, item.count});
  }
  places_.emplace(hash, items_.size());
  items_.push_back(std::move(item));
}

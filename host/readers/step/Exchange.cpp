#include "readers/step/Exchange.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "model/Model.h"
#include "readers/step/Parameters.h"
#include "readers/step/Splitter.h"

namespace step {

Exchange::Exchange(std::string_view text, std::string name) : text_(text), name_(std::move(name)) {
  Splitter(*this).Split();
  SortPlaces();
  SortReferences();
}

Exchange::~Exchange() = default;

// By who is referred to, sixteen bits at a time: who refers stands in order already, and stays so.
void Exchange::SortReferences() {
  constexpr std::size_t kValues = 1 << 16;
  decltype(references_) sorted(references_.size());
  std::vector<std::size_t> ends;
  for (const int shift : {0, 16}) {
    ends.assign(kValues + 1, 0);
    for (const auto& reference : references_) ++ends[1 + (reference.first >> shift) % kValues];
    if (ends[1] == references_.size()) continue;
    for (std::size_t i = 1; i <= kValues; ++i) ends[i] += ends[i - 1];
    for (const auto& reference : references_) {
      sorted[ends[(reference.first >> shift) % kValues]++] = reference;
    }
    references_.swap(sorted);
  }
  references_.erase(std::unique(references_.begin(), references_.end()), references_.end());
}

// Most files number their instances in order; then nothing has to be kept.
void Exchange::SortPlaces() {
  const auto less = [](const Place& a, const Place& b) { return a.id < b.id; };
  if (!std::is_sorted(places_.begin(), places_.end(), less)) {
    byId_.resize(places_.size());
    for (std::size_t i = 0; i < byId_.size(); ++i) byId_[i] = static_cast<std::uint32_t>(i);
    std::stable_sort(byId_.begin(), byId_.end(), [this](std::uint32_t a, std::uint32_t b) {
      return places_[a].id < places_[b].id;
    });
  }
  const auto at = [this](std::size_t i) -> const Place& {
    return places_[byId_.empty() ? i : byId_[i]];
  };
  for (std::size_t i = 1; i < places_.size(); ++i) {
    if (at(i).id == at(i - 1).id) {
      Fail(at(i).begin, "#" + std::to_string(at(i).id) + " is there twice");
    }
  }
}

const Exchange::Place* Exchange::PlaceOf(Id id) const {
  const auto find = [id](auto begin, auto end, auto idOf) {
    const auto found = std::lower_bound(
        begin, end, id, [&](const auto& item, Id wanted) { return idOf(item) < wanted; });
    return found == end || idOf(*found) != id ? end : found;
  };
  if (byId_.empty()) {
    const auto found =
        find(places_.begin(), places_.end(), [](const Place& place) { return place.id; });
    return found == places_.end() ? nullptr : &*found;
  }
  const auto found =
      find(byId_.begin(), byId_.end(), [this](std::uint32_t i) { return places_[i].id; });
  return found == byId_.end() ? nullptr : &places_[*found];
}

const std::vector<Id>& Exchange::Of(std::string_view entity) const {
  static const std::vector<Id> none;
  const auto found = byEntity_.find(entity);
  return found == byEntity_.end() ? none : found->second;
}

std::vector<Id> Exchange::ReferrersOf(Id id) const {
  std::vector<Id> ids;
  for (auto at = std::lower_bound(references_.begin(), references_.end(),
                                  std::pair<Id, std::uint32_t>{id, 0});
       at != references_.end() && at->first == id; ++at) {
    ids.push_back(places_[at->second].id);
  }
  return ids;
}

std::vector<std::pair<Id, Id>> Exchange::Dangling() const {
  std::vector<std::pair<Id, Id>> dangling;
  std::size_t next = 0;  // the first place whose number is not smaller
  const auto idAt = [this](std::size_t i) { return places_[byId_.empty() ? i : byId_[i]].id; };
  for (const auto& [to, from] : references_) {
    while (next < places_.size() && idAt(next) < to) ++next;
    if (next == places_.size() || idAt(next) != to) dangling.emplace_back(to, places_[from].id);
  }
  return dangling;
}

const Instance* Exchange::Find(Id id) {
  const auto known = read_.find(id);
  if (known != read_.end()) return &known->second;
  const std::string_view text = TextOf(id);
  if (text.data() == nullptr) return nullptr;
  const auto broken = broken_.find(id);
  if (broken != broken_.end()) throw broken->second;
  try {
    return &read_.emplace(id, ReadInstance(id, text)).first->second;
  } catch (const Unreadable& problem) {
    broken_.emplace(id, problem);
    throw;
  }
}

std::string_view Exchange::TextOf(Id id) const {
  const Place* const place = PlaceOf(id);
  return place == nullptr ? std::string_view() : text_.substr(place->begin, place->size);
}

std::size_t Exchange::OffsetOf(Id id) const {
  const Place* const place = PlaceOf(id);
  return place == nullptr ? text_.size() : place->begin;
}

long Exchange::LineOf(Id id) const {
  const Place* const place = PlaceOf(id);
  if (place == nullptr) return 0;
  if (lineEnds_.empty()) {
    for (std::size_t i = 0; (i = text_.find('\n', i)) != std::string_view::npos; ++i) {
      lineEnds_.push_back(i);
    }
  }
  return 1 +
         (std::lower_bound(lineEnds_.begin(), lineEnds_.end(), place->begin) - lineEnds_.begin());
}

void Exchange::Fail(std::size_t offset, const std::string& what) const {
  const std::string_view before = text_.substr(0, std::min(offset, text_.size()));
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
  throw ModelError(name_ + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + what);
}

void Exchange::FailAt(Id id, const std::string& what) const {
  const Place* const place = PlaceOf(id);
  Fail(place == nullptr ? 0 : place->begin, "#" + std::to_string(id) + ": " + what);
}

// --- Values --------------------------------------------------------------------------------------

std::string_view Value::Text() const {
  return kind == kList || kind == kTyped || text == nullptr ? std::string_view()
                                                            : std::string_view(text, size);
}

std::string_view Value::TypeName() const {
  return kind == kTyped ? items[0].Text() : std::string_view();
}

Id Value::Reference() const {
  Id id = 0;
  if (kind == kReference) std::from_chars(text, text + size, id);
  return id;
}

const Value& Record::At(std::uint32_t index) const {
  if (index < count) return values[index];
  throw Unreadable(of, std::string(name) + " has " + std::to_string(count) + " parameters");
}

namespace {

[[noreturn]] void ThrowWrong(const Record& record, std::uint32_t index, const char* wanted) {
  throw Unreadable(record.of, "parameter " + std::to_string(index + 1) + " of " +
                                  std::string(record.name) + " is not " + wanted);
}

bool IsOmitted(const Value& value) {
  return value.kind == Value::kOmitted || value.kind == Value::kDerived;
}

}  // namespace

double NumberOf(Id of, const Value& typed) {
  constexpr std::size_t kLongest = 1000;
  const Value& value = typed.Untyped();
  double number = 0;
  std::string_view text = value.Text();
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const std::size_t size = text.size() > kLongest ? 0 : text.size();
  const auto [end, error] = std::from_chars(text.data(), text.data() + size, number);
  if (value.kind != Value::kNumber || error != std::errc() || end != text.data() + text.size() ||
      !std::isfinite(number)) {
    throw Unreadable(of, "'" + std::string(text.substr(0, 40)) + "' is not a number");
  }
  return number;
}

double Record::Number(std::uint32_t index) const { return NumberOf(of, At(index)); }

std::string Record::Text(std::uint32_t index) const {
  const Value& value = At(index).Untyped();
  if (IsOmitted(value)) return {};
  if (value.kind != Value::kString) ThrowWrong(*this, index, "a string");
  return Decode(value.Text());
}

Id Record::Reference(std::uint32_t index) const {
  const Value& value = At(index);
  if (IsOmitted(value)) return 0;
  if (value.kind != Value::kReference) ThrowWrong(*this, index, "a reference");
  return value.Reference();
}

const Value& Record::List(std::uint32_t index) const {
  const Value& value = At(index).Untyped();
  if (!value.IsList()) ThrowWrong(*this, index, "a list");
  return value;
}

std::string_view Record::Enumeration(std::uint32_t index) const {
  const Value& value = At(index).Untyped();
  if (IsOmitted(value)) return {};
  if (value.kind != Value::kEnumeration) ThrowWrong(*this, index, "an enumeration");
  return value.Text();
}

const Record* Instance::Find(std::string_view name) const {
  for (const Record& record : records) {
    if (record.name == name) return &record;
  }
  return nullptr;
}

const Record& Instance::As(std::string_view name) const {
  if (const Record* record = Find(name)) return *record;
  if (records.size() == 1) return records.front();
  throw Unreadable(id, "it has no " + std::string(name));
}

}  // namespace step

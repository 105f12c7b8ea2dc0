// What is drawn for a dimension, and what a reader can tell from it.

#include <algorithm>
#include <cctype>
#include <cmath>

#include "writers/qif/Kinds.h"
#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

constexpr const char* kDigits = "0123456789";

// The value as it is drawn; empty where there is none.
std::string DrawnValue(const Item& item, const DimensionReport& dimension) {
  if (HasLimits(dimension)) {
    const std::string upper = dimension.upperText.value_or("");
    const std::string lower = dimension.lowerText.value_or("");
    return upper + (upper.empty() || lower.empty() ? "" : "/") + lower;
  }
  for (const WrittenReport& written : item.annotation->written) {
    if (written.field == "value") return written.text;
  }
  if (!dimension.value || !std::isfinite(*dimension.value)) return "";
  const std::string text = Decimal(*dimension.value);
  const int places = static_cast<int>(std::clamp(dimension.precision.value_or(0), 0.0, 15.0));
  if (PlacesOf(text) >= places) return text;
  return text + (PlacesOf(text) == 0 ? "." : "") +
         std::string(static_cast<std::size_t>(places - PlacesOf(text)), '0');
}

std::string DrawnTolerance(const DimensionReport& dimension) {
  if (HasLimits(dimension) || !dimension.tolerancePrecision) return "";
  const double upper = dimension.upper.value_or(0), lower = dimension.lower.value_or(0);
  if (!std::isfinite(upper) || !std::isfinite(lower)) return "";
  if (upper == -lower) return " \u00B1" + Rounded(upper, 6);
  return (upper < 0 ? " " : " +") + Rounded(upper, 6) + (lower < 0 ? "/" : "/+") +
         Rounded(lower, 6);
}

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool IsWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

// Whether text that stands before a value is no part of the value: it has no number but a count
// such as "4X", and at its end no mark that values have.
bool IsToldBefore(const std::string& text) {
  std::string rest = text;
  for (std::size_t at = 0; (at = rest.find_first_of(kDigits)) != std::string::npos;) {
    const std::size_t end = std::min(rest.find_first_not_of(kDigits, at), rest.size() - 1);
    const bool isCount = rest[end] == 'X' || rest[end] == 'x';
    if (!isCount || (end + 1 < rest.size() && IsWord(rest[end + 1]))) return false;
    rest.erase(at, end + 1 - at);
  }
  if (Collapsed(text) != text) return false;
  for (const std::string mark : {"\u2300", "\u25A1", "(", "["}) {
    if (EndsWith(rest, mark)) return false;
  }
  for (const std::string word : {"R", "S", "SR", "CR"}) {
    const bool ends = EndsWith(rest, word);
    if (ends && (rest.size() == word.size() || !IsWord(rest[rest.size() - word.size() - 1]))) {
      return false;
    }
  }
  return true;
}

bool IsToldAfter(const std::string& text) {
  if (text.find_first_of(kDigits) != std::string::npos || Collapsed(text) != text) return false;
  for (const std::string mark : {"\u00B0", "\"", "'", ")", "]"}) {
    if (StartsWith(text, mark)) return false;
  }
  for (const std::string word : {"IN", "in", "MM", "mm"}) {
    if (StartsWith(text, word) && (text.size() == word.size() || !IsWord(text[word.size()]))) {
      return false;
    }
  }
  return true;
}

bool HasHoleSymbol(const std::string& text) {
  for (const char* symbol : {"\u2334", "\u2335", "\u21A7"}) {
    if (text.find(symbol) != std::string::npos) return true;
  }
  return false;
}

// Whether a hole callout, which is drawn as it stands, has these texts around its value.
bool IsAround(const std::string& callout, const std::string& before, const std::string& after) {
  if (!StartsWith(callout, before)) return false;
  std::string rest = callout.substr(before.size());
  for (const std::string mark : {" ", "\u2300", " "}) {
    if (StartsWith(rest, mark)) rest.erase(0, mark.size());
  }
  return rest.find_first_of(".0123456789") == 0 &&
         (after.empty() ||
          Collapsed(callout.substr(callout.find_last_of(kDigits) + 1)) == Collapsed(after));
}

}  // namespace

bool HasLimits(const DimensionReport& dimension) {
  return dimension.upperText.value_or("") != "" || dimension.lowerText.value_or("") != "";
}

std::string DrawnDimension(const Item& item) {
  const DimensionReport& dimension = *item.annotation->dimension;
  const DimensionTextsReport& texts = dimension.texts;
  if (texts.holeCallout.value_or("") != "") return *texts.holeCallout;
  const std::string value = DrawnValue(item, dimension);
  const DimensionKind& kind = *KindOf(kDimensionKinds, dimension.type);
  std::string drawn = texts.before.value_or("");
  if (!drawn.empty()) drawn += ' ';
  drawn += texts.prefix.value_or("") + kind.mark + value;
  if (kind.measure == Measure::kAngle && !value.empty()) drawn += "\u00B0";
  drawn += DrawnTolerance(dimension) + texts.suffix.value_or("");
  if (texts.after.value_or("") != "") drawn += ' ' + *texts.after;
  return drawn;
}

std::string WhyNotTold(const Item& item) {
  const DimensionReport& dimension = *item.annotation->dimension;
  const DimensionTextsReport& texts = dimension.texts;
  const std::string before = texts.before.value_or(""), after = texts.after.value_or("");
  if (const std::string callout = texts.holeCallout.value_or(""); !callout.empty()) {
    // What a thread is is read whole.
    const bool isTold =
        item.thread != 0 ? before.empty() && after.empty() : IsAround(callout, before, after);
    return isTold ? "" : "QIF has its hole callout, not what stands around its value";
  }
  if (before.empty() && after.empty()) return "";
  const bool isTold = !DrawnValue(item, dimension).empty() && IsToldBefore(before) &&
                      IsToldAfter(after) && !HasHoleSymbol(before) && !HasHoleSymbol(after);
  return isTold ? "" : "QIF has what is drawn, which does not tell its value from the texts around";
}

}  // namespace qif_writer

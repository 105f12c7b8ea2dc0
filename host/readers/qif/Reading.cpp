#include "readers/qif/Reading.h"

#include <algorithm>

#include <utility>

namespace qif {

namespace {

// Entries enough for any drawing; a larger document may have more, but less than it has itself.
std::size_t MostEntries(std::size_t documentSize) { return 10'000 + documentSize / 200; }

// Many more than any drawing has, and few enough to hold. References multiply: a feature of many
// faces may be named by many annotations.
std::size_t MostAssociations(std::size_t documentSize) {
  constexpr std::size_t kMost = 4'000'000;
  return std::min(200'000 + documentSize / 8, kMost);
}

Model EmptyModel() {
  Model model;
  model.part = std::make_unique<standin::Part>();
  return model;
}

Units ReadUnits(const Document& document) {
  try {
    return Units(document);
  } catch (const Unreadable& problem) {
    document.Fail(problem.At(), problem.what());
  }
}

std::string_view IdOf(Element element) { return element.attribute("id").value(); }

// What an element stands in: itself or the next around it that has an id.
Element OwnerOf(Element element) {
  constexpr int kDeepest = 16;
  Element owner = element;
  for (int depth = 0; owner && depth < kDeepest; ++depth, owner = owner.parent()) {
    if (owner.attribute("id")) return owner;
  }
  return element;
}

}  // namespace

Reading::Reading(std::string_view text, const std::string& name)
    : document(text, name),
      units(ReadUnits(document)),
      model(EmptyModel()),
      part(*model.part),
      all_(MostEntries(text.size())),
      nowhere_(part.Collection({})),
      mostAssociations_(MostAssociations(text.size())) {
  model.format = "QIF 3.0";
  model.linearUnit = units.LinearUnit();
  model.pmiLinearUnit = units.PmiLinearUnit();
  model.pmiAngularUnit = units.PmiAngularUnit();
}

Model Reading::Finish() {
  model.skipped = all_.Take();
  for (SkippedItem& item : model.skipped) {
    if (lost_.count(item.annotation) != 0) item.annotation.clear();
  }
  return std::move(model);
}

// --- The account ---------------------------------------------------------------------------------

void Reading::Under(std::string_view annotation) {
  annotation_ = annotation;
  written_.clear();
}

void Reading::Add(Severity severity, Element element, std::string_view id,
                  const std::string& reason, Element place) {
  account_->Add({severity, std::string(NameOf(element)), id.empty() ? annotation_ : std::string(id),
                 annotation_, reason, LineOf(place ? place : element)});
}

void Reading::Skip(Severity severity, Element element, const std::string& reason) {
  Add(severity, element, IdOf(OwnerOf(element)), reason, element);
}

void Reading::Skip(Severity severity, Element element, std::string_view id,
                   const std::string& reason) {
  Add(severity, element, id, reason, element);
}

void Reading::Lose(Element reference, const std::string& reason) {
  const Element owner = OwnerOf(reference);
  Add(Severity::kLost, owner, IdOf(owner), reason, reference);
}

void Reading::Lose(Element element, const Unreadable& problem) {
  Add(Severity::kLost, element, IdOf(OwnerOf(element)), problem.what(), problem.At());
}

void Reading::SkipRest(const Fields& record) {
  for (const Element field : record.Rest()) {
    const std::string_view id = IdOf(OwnerOf(record.Record()));
    Skip(Severity::kReduced, field, id, "the model has no place for it");
  }
  SkipDoubled(record);
  for (const char* attribute : {"width", "zoneVariance", "hatching", "size", "transparency"}) {
    if (!record.Record().attribute(attribute)) continue;
    Skip(Severity::kReduced, record.Record(), "its " + std::string(attribute) + " is left out");
  }
  for (const Element field : record.Record().children()) {
    for (const char* attribute : {"significantFigures", "validity"}) {
      if (!field.attribute(attribute)) continue;
      Skip(Severity::kReduced, field, "its " + std::string(attribute) + " is left out");
    }
  }
}

void Reading::SkipDoubled(const Fields& record) {
  for (const Element field : record.Doubled()) {
    const std::string_view id = IdOf(OwnerOf(record.Record()));
    Skip(Severity::kLost, field, id, "it is stated already; the first is taken");
  }
}

std::wstring Reading::ShortText(Element field) {
  const std::string_view text = WordOf(field);
  if (text.empty() && !TextOf(field).empty()) {
    Skip(Severity::kLost, field, "its text is too long");
  }
  return Wide(text);
}

double Reading::Value(const std::string& field, const Quantity& quantity) {
  if (!quantity.unit.empty()) written_.push_back({field, quantity.text, quantity.unit});
  return quantity.value;
}

void Reading::Describe(ENTITY& entity, Element element, const char* kind, std::string_view name) {
  const std::string id(IdOf(element));
  part.Id(entity, id.c_str());
  if (!name.empty()) part.Name(entity, Wide(name).c_str());
  model.labels[&entity] = {kind, name.empty() ? id : std::string(name)};
  const bool isPmi = !annotation_.empty();
  bool isHidden = Flag(element, "hidden", isPmi ? Severity::kLost : Severity::kIgnored);
  // Of what has no place for that, as this program's own documents say it.
  const Element own = isPmi ? Child(element, "Attributes") : Element();
  for (const Element attribute : own.children("AttributeBool")) {
    if (attribute.attribute("name").value() != std::string_view("pmi_report.hidden")) continue;
    isHidden = Flag(attribute, "value") || isHidden;
  }
  if (isHidden) part.Hide(entity);
  if (!written_.empty()) model.written[&entity] = std::exchange(written_, {});
}

// --- What several annotations use ----------------------------------------------------------------

void Reading::Share(Shared& shared, Element element, const std::function<void()>& work) {
  Account* const account = std::exchange(account_, &shared.account);
  std::swap(written_, shared.written);
  try {
    work();
  } catch (const Unreadable& problem) {
    Lose(element, problem);
  }
  std::swap(written_, shared.written);
  account_ = account;
}

void Reading::ListAgain(const Shared& shared, const std::string& field) {
  Spend(shared.account.Items().size());
  for (SkippedItem item : shared.account.Items()) {
    item.annotation = annotation_;
    account_->Add(std::move(item));
  }
  for (const WrittenValue& value : shared.written) {
    written_.push_back({field + value.field, value.text, value.unit});
  }
}

}  // namespace qif

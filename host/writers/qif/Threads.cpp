// What threads are.

#include <algorithm>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

// The words of QIF for series and classes of threads, each between spaces.
constexpr std::string_view kSeries =
    " ACME ACME_C ACME_G AMO ANPT BUTT PUSH_BUTT F_PTF M MJ MJS NC5_HF NC5_CSF NC5_ONF NC5_IF "
    "NC5_INF NGO NGS NGT NH NHR NPSC NPSF NPSH NPSI NPSL NPSM NPT NPTF PTF_SAE_SHORT PTF_SPL_SHORT "
    "PTF_SPL_EXTRA_SHORT SGT SPL_PTF STUB_ACME UN UNC UNF UNEF UNJ UNJC UNJF UNJEF UNR UNRC UNRF "
    "UNREF UNM UNS G R RC RP S TR ";
constexpr std::string_view kClasses =
    " 1A 1B 2A 2AG 2B 3A 3B EXT_3E EXT_3F EXT_3G EXT_3H EXT_4E EXT_4F EXT_4G EXT_4H 4G 4H EXT_5E "
    "EXT_5F EXT_5G EXT_5H 5G 5H EXT_6E EXT_6F EXT_6G EXT_6H 6G 6H EXT_7E EXT_7F EXT_7G EXT_7H 7G "
    "7H EXT_8E EXT_8F EXT_8G EXT_8H 8G 8H EXT_9E EXT_9F EXT_9G EXT_9H INT EXT SE G ";

// Diameter, density, series and class of a callout like "0.250 inch-20-UNC-2A"; fewer where it has
// not all of them.
std::vector<std::string> PartsOf(const std::string& callout, const Units& units) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at <= callout.size();) {
    const std::size_t end = std::min(callout.find('-', at), callout.size());
    parts.push_back(Collapsed(callout.substr(at, end - at)));
    if (parts.back().empty() || parts.back() != callout.substr(at, end - at)) return {};
    at = end + 1;
  }
  if (parts.size() != 4 || !IsDecimal(parts[1])) return {};
  const std::string unit = UnitOf(parts[0]);
  const bool isKnown = unit.empty() || units.Knows(Measure::kLength, unit);
  if (!isKnown || !IsDecimal(parts[0].substr(0, parts[0].find(' ')))) return {};
  return parts;
}

// Whether a diameter is the value of the annotation.
bool IsValue(const AnnotationReport& annotation, const std::string& diameter) {
  for (const WrittenReport& written : annotation.written) {
    if (written.field == "value") return diameter == written.text + " " + written.unit;
  }
  return NumberIn(diameter) == annotation.dimension->value;
}

void WriteWord(Xml& xml, const char* name, std::string_view words, const std::string& word) {
  const bool isKnown = words.find(" " + word + " ") != std::string_view::npos;
  xml.Open(name);
  const std::string kind = std::string(name) == "ThreadSeries" ? "ThreadSeries" : "ThreadClass";
  xml.Leaf((isKnown ? kind + "Enum" : "Other" + kind).c_str(), word);
  xml.Close();
}

void WriteParts(Xml& xml, Plan& plan, const Item& item, const std::vector<std::string>& parts) {
  const std::string number = parts[0].substr(0, parts[0].find(' '));
  const std::string unit = UnitOf(parts[0]);
  const Number& places = item.annotation->dimension->precision;
  xml.OpenWithId("SingleLeadSpecification", item.thread);
  xml.Open("Diameter");
  if (places && *places != PlacesOf(number)) xml.Attribute("decimalPlaces", Decimal(*places));
  if (!unit.empty() && unit != plan.units.Own(Measure::kLength)) xml.Attribute("linearUnit", unit);
  xml.Content(number);
  xml.Close();
  WriteWord(xml, "ThreadSeries", kSeries, parts[2]);
  WriteWord(xml, "ThreadToleranceClass", kClasses, parts[3]);
  xml.Leaf("ThreadDensity", parts[1]);
}

}  // namespace

void WriteThreads(Xml& xml, Plan& plan) {
  std::vector<const Item*> threads;
  for (const Item& item : plan.items) {
    if (item.thread != 0) threads.push_back(&item);
  }
  if (threads.empty()) return;
  xml.OpenList("ThreadSpecifications", threads.size());
  for (const Item* item : threads) {
    const DimensionReport& dimension = *item->annotation->dimension;
    const std::string callout = dimension.texts.holeCallout.value_or("");
    const std::vector<std::string> parts = PartsOf(callout, plan.units);
    xml.Open("ThreadSpecification");
    if (!parts.empty() && IsValue(*item->annotation, parts[0])) {
      WriteParts(xml, plan, *item, parts);
    } else {
      xml.OpenWithId("TextThreadSpecification", item->thread);
      xml.Leaf("TextSpecification", Collapsed(callout));
      if (dimension.value) {
        plan.omissions.Add("reduced", *item, "QIF has a thread's text, not its diameter");
      }
    }
    xml.Close();
    xml.Close();
    if (dimension.tolerancePrecision) {
      plan.omissions.Add("lost", *item, "QIF has no limits of a thread");
    }
  }
  xml.Close();
}

}  // namespace qif_writer

#pragma once

#include <limits>

#include "framework_core/KOVAIdentifiers.h"
#include "framework_pmi/KOVAPMIExporter.h"
#include "report/Report.h"

// What a query answers, as the report keeps it: absent when the query fails.

// Stands in a coordinate until a query has written it.
constexpr double kNotAnswered = std::numeric_limits<double>::quiet_NaN();

Text TextOf(const KOVAString& string);

// An enumerator's name.
template <typename Enum, typename Query>
Text EnumText(Query query) {
  Enum value{};
  return query(value).IsSuccess() ? Text(NameOf(value)) : Text();
}

// A string.
template <typename Query>
Text StringText(Query query) {
  KOVAString value;
  return query(value).IsSuccess() ? TextOf(value) : Text();
}

// The name of an annotation or capture, absent when it has none.
Text NameOfObject(KOVAPMIExporter& exporter, const KOVAIdentifier& object);

// The persistent id of any object, absent when it has none or an empty one.
Text IdOfObject(KOVAPMIExporter& exporter, const KOVAIdentifier& object);

#pragma once

#include <nlohmann/json.hpp>

#include "report/Report.h"

namespace json {

// Parts of the report as JSON trees.

using Json = nlohmann::ordered_json;

Json AnnotationToJson(const AnnotationReport& annotation);
Json EntityToJson(const EntityReport& entity);

// Null for an absent value.
template <typename T>
Json OrNull(const std::optional<T>& value) {
  return value.has_value() ? Json(*value) : Json();
}

template <typename T, typename Convert>
Json OrNull(const std::optional<T>& value, Convert convert) {
  return value.has_value() ? convert(*value) : Json();
}

// Null for an empty text.
inline Json OrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

template <typename T, typename Convert>
Json List(const std::vector<T>& items, Convert convert) {
  Json list = Json::array();
  for (const T& item : items) list.push_back(convert(item));
  return list;
}

inline Json TextToJson(const Text& text) { return OrNull(text); }

}  // namespace json

#include "writers/html/Data.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "report/Clean.h"

namespace html {

namespace {

// How many decimals tell a point to a millionth of the drawing's size.
int DecimalsFor(const Drawing& drawing) {
  DrawnPoint low;
  DrawnPoint high;
  low.fill(std::numeric_limits<double>::infinity());
  high.fill(-std::numeric_limits<double>::infinity());
  const auto include = [&](const std::vector<DrawnPoint>& points) {
    for (const DrawnPoint& point : points) {
      for (std::size_t i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], point[i]);
        high[i] = std::max(high[i], point[i]);
      }
    }
  };
  for (const DrawnEdge& edge : drawing.edges) include(edge.points);
  for (const DrawnFace& face : drawing.faces) include(face.points);
  for (const DrawnVertex& vertex : drawing.vertices) include({vertex.point});
  const double size = std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
  if (!std::isfinite(size) || size <= 0) return 6;
  return static_cast<int>(std::clamp(std::ceil(6 - std::log10(size)), 0.0, 17.0));
}

void AppendNumber(double value, int decimals, std::string& json) {
  if (!std::isfinite(value)) {
    json += "null";
    return;
  }
  char text[64];
  const auto format =
      std::abs(value) < 1e15 ? std::chars_format::fixed : std::chars_format::general;
  std::to_chars_result end = std::to_chars(text, text + sizeof text, value, format, decimals);
  if (format == std::chars_format::fixed && decimals > 0) {
    while (end.ptr[-1] == '0') --end.ptr;
    if (end.ptr[-1] == '.') --end.ptr;
  }
  const std::string_view digits(text, static_cast<std::size_t>(end.ptr - text));
  json += digits == "-0" ? "0" : digits;
}

std::string Points(const std::vector<DrawnPoint>& points, int decimals) {
  std::string json = "\"points\":[";
  for (const DrawnPoint& point : points) {
    for (const double coordinate : point) {
      if (json.back() != '[') json += ',';
      AppendNumber(coordinate, decimals, json);
    }
  }
  return json + "]";
}

std::string Quoted(const std::string& text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    if (static_cast<unsigned char>(c) < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      json += escape;
    } else {
      json += c;
    }
  }
  return EscapeJson(json + "\"");
}

// An object with id and points, not yet closed.
template <typename Shape>
std::string Open(const Shape& shape, const std::vector<DrawnPoint>& points, int decimals) {
  return "{\"id\":" + Quoted(shape.id) + (shape.isHidden ? ",\"hidden\":true," : ",") +
         Points(points, decimals);
}

std::string FaceJson(const DrawnFace& face, int decimals) {
  std::string json = Open(face, face.points, decimals);
  json += ",\"triangles\":[";
  for (const auto& triangle : face.triangles) {
    for (const std::uint32_t index : triangle) {
      if (json.back() != '[') json += ',';
      json += std::to_string(index);
    }
  }
  json += "],\"edges\":[";
  for (const std::string& edge : face.edges) {
    if (json.back() != '[') json += ',';
    json += Quoted(edge);
  }
  return json + "]}";
}

}  // namespace

std::string EscapeJson(const std::string& json) {
  std::string escaped;
  escaped.reserve(json.size());
  std::string_view rest = json;
  while (!rest.empty()) {
    unsigned code = 0;
    const std::size_t length = text::Character(rest, code);
    const bool isSpecial = code == '<' || code == 0x2028 || code == 0x2029 ||
                           (code >= 0x7F && code <= 0x9F) || text::TurnsDirection(code);
    if (length == 0) {
      escaped += "\uFFFD";
    } else if (isSpecial) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", code);
      escaped += escape;
    } else {
      escaped += rest.substr(0, length);
    }
    rest.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return escaped;
}

void PrintDrawing(Html& page, const Drawing& drawing) {
  const int decimals = DecimalsFor(drawing);
  const char* separator = "";
  page.Raw("{\"edges\":[");
  for (const DrawnEdge& edge : drawing.edges) {
    page.Raw(separator).Raw(Open(edge, edge.points, decimals) + "}");
    separator = ",";
  }
  page.Raw("],\"faces\":[");
  separator = "";
  for (const DrawnFace& face : drawing.faces) {
    page.Raw(separator).Raw(FaceJson(face, decimals));
    separator = ",";
  }
  page.Raw("],\"vertices\":[");
  separator = "";
  for (const DrawnVertex& vertex : drawing.vertices) {
    page.Raw(separator).Raw(Open(vertex, {vertex.point}, decimals) + "}");
    separator = ",";
  }
  page.Raw("]}");
}

}  // namespace html

// Arrays, as text and binary, and meshes.

#include <cmath>
#include <cstring>

#include "readers/qif/Geometry.h"

namespace qif {

namespace {

// The bytes of base 64; what is none of its characters is left out.
std::string Decoded(std::string_view text) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char c : text) {
    const std::size_t digit = kDigits.find(c);
    if (digit == std::string_view::npos) continue;
    bits = bits << 6 | static_cast<std::uint32_t>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

// The numbers that lie behind each other, the lowest byte first.
template <typename Number>
std::vector<double> Unpacked(Element element, const std::string& bytes) {
  std::vector<double> numbers;
  for (std::size_t at = 0; at + sizeof(Number) <= bytes.size(); at += sizeof(Number)) {
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    if (!std::isfinite(static_cast<double>(number))) {
      throw Unreadable(element, std::string(NameOf(element)) + " holds what is no number");
    }
    numbers.push_back(static_cast<double>(number));
  }
  return numbers;
}

std::string BytesOf(Element array) {
  std::string bytes = Decoded(RawTextOf(array));
  const auto size =
      static_cast<std::size_t>(WholeNumber(array.attribute("count").value()).value_or(0)) *
      WholeNumber(array.attribute("sizeElement").value()).value_or(0);
  if (bytes.size() < size) throw Unreadable(array, "it is shorter than it says");
  bytes.resize(size);
  return bytes;
}

}  // namespace

std::vector<double> RealsOf(Element parent, const std::string& name) {
  const Element array = Child(parent, name + "Binary");
  if (!array) {
    const Element list = Child(parent, name);
    return NumberListOf(list, RawTextOf(list));
  }
  // An element is a point of three numbers, or one.
  const unsigned size = WholeNumber(array.attribute("sizeElement").value()).value_or(0);
  if (size == 24 || size == 8) return Unpacked<double>(array, BytesOf(array));
  if (size == 12 || size == 4) return Unpacked<float>(array, BytesOf(array));
  throw Unreadable(array, "its elements are of an unknown size");
}

std::vector<double> IntegersOf(Element parent, const std::string& name) {
  const Element array = Child(parent, name + "Binary");
  if (array) return Unpacked<std::int32_t>(array, BytesOf(array));
  const Element list = Child(parent, name);
  return NumberListOf(list, RawTextOf(list));
}

std::vector<QENposition> PointsOf(Element parent, const std::string& name, const Motion& motion) {
  const std::vector<double> numbers = RealsOf(parent, name);
  if (numbers.empty() || numbers.size() % 3 != 0) {
    throw Unreadable(parent, "its " + name + " are no points");
  }
  std::vector<QENposition> points;
  points.reserve(numbers.size() / 3);
  for (std::size_t i = 0; i < numbers.size(); i += 3) {
    points.push_back(motion(QENposition(numbers[i], numbers[i + 1], numbers[i + 2])));
  }
  return points;
}

Meshes::Known& Meshes::Read(Element mesh) {
  const auto [known, isNew] = known_.try_emplace(mesh.node());
  if (!isNew) return known->second;
  const Element core = Child(mesh, "MeshTriangleCore");
  std::vector<QENposition> points = PointsOf(core, "Vertices", MotionOf(reading_, mesh));
  const std::vector<double> indices = IntegersOf(core, "Triangles");
  const auto most = static_cast<double>(points.size()) - 1;
  for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
    std::array<std::uint32_t, 3> triangle{};
    for (std::size_t k = 0; k < 3; ++k) {
      if (!(indices[i + k] >= 0 && indices[i + k] <= most)) {
        throw Unreadable(mesh, "its triangles name vertices that do not exist");
      }
      triangle[k] = static_cast<std::uint32_t>(indices[i + k]);
    }
    known->second.triangles.push_back(triangle);
  }
  known->second.points = std::move(points);
  return known->second;
}

geometry::Mesh Meshes::MeshOf(Element face, Element element, const Motion& motion) {
  Known& whole = Read(element);
  std::vector<double> chosen = IntegersOf(face, "Triangles");
  if (chosen.empty()) {
    // Many faces of one long mesh would take more than a document of that size may.
    constexpr int kMostUses = 4;
    if (++whole.wholeUses > kMostUses) throw Unreadable(face, "too many faces have its mesh");
    for (std::size_t i = 0; i < whole.triangles.size(); ++i) {
      chosen.push_back(static_cast<double>(i));
    }
  }
  geometry::Mesh mesh;
  std::unordered_map<std::uint32_t, std::uint32_t> points;
  for (const double index : chosen) {
    if (!(index >= 0 && index < static_cast<double>(whole.triangles.size()))) {
      throw Unreadable(face, "it names triangles that do not exist");
    }
    std::array<std::uint32_t, 3> triangle = whole.triangles[static_cast<std::size_t>(index)];
    for (std::uint32_t& point : triangle) {
      if (point >= whole.points.size()) throw Unreadable(face, "its mesh is not");
      const auto next = static_cast<std::uint32_t>(mesh.points.size());
      const auto [known, isNew] = points.try_emplace(point, next);
      if (isNew) mesh.points.push_back(motion(whole.points[point]));
      point = known->second;
    }
    mesh.triangles.push_back(triangle);
  }
  if (mesh.triangles.empty()) throw Unreadable(face, "its mesh has no triangles");
  return mesh;
}

}  // namespace qif

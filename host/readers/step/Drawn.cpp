#include "readers/step/Drawn.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "readers/step/Characters.h"
#include "readers/step/Parameters.h"

namespace step {

namespace {

class Collector {
 public:
  Collector(Reading& reading, const Placement& plane, double scale)
      : reading_(reading), axes_{plane.x, cross(plane.axis, plane.x), plane.axis}, scale_(scale) {}

  std::optional<QENposition> Middle(Id element) {
    Add(element, 0);
    if (points_[0].empty()) return std::nullopt;
    QENposition middle;
    for (std::size_t i = 0; i < 3; ++i) {
      const auto half = points_[i].begin() + static_cast<std::ptrdiff_t>(points_[i].size() / 2);
      std::nth_element(points_[i].begin(), half, points_[i].end());
      middle = middle + *half * axes_[i];
    }
    return middle;
  }

 private:
  // A callout, an occurrence, a set or a curve; each holds the next. Placeholders draw nothing.
  void Add(Id id, int depth) {
    constexpr int kDeepest = 10;
    if (AddPoints(id)) return;
    const Instance instance = Read(id);
    const Record& first = instance.records.front();
    if (depth > kDeepest || !seen_.insert(id).second || IsPlaceholder(instance)) return;
    if (const Record* coordinates = instance.Find("COORDINATES_LIST")) {
      for (const Value& point : coordinates->List(coordinates->count - 1)) AddPoint(id, point);
    } else if (const Record* line = instance.Find("POLYLINE")) {
      for (const Value& point : line->List(line->count - 1)) {
        if (AddPoints(point.Reference())) continue;
        const Instance vertex = Read(point.Reference());
        const Record& record = vertex.As("CARTESIAN_POINT");
        AddPoint(point.Reference(), record.List(record.count - 1));
      }
    } else if (const Record* set = instance.Find("TESSELLATED_GEOMETRIC_SET")) {
      const Record* const moved = instance.Find("REPOSITIONED_TESSELLATED_ITEM");
      if (moved != nullptr) place_ = reading_.PlacementOf(moved->Reference(0), scale_);
      for (const Value& item : set->List(set->count - 1)) Add(item.Reference(), depth + 1);
      place_.reset();
    } else if (const Record* text = instance.Find("TEXT_LITERAL")) {
      AddPoint(reading_.PlacementOf(text->Reference(text->count == 6 ? 2 : 1), scale_).origin);
    } else if (instance.Find("TESSELLATED_CURVE_SET") != nullptr ||
               instance.Find("COMPLEX_TRIANGULATED_SURFACE_SET") != nullptr) {
      Add(first.Reference(1), depth + 1);
    } else if (instance.Find("GEOMETRIC_CURVE_SET") != nullptr) {
      for (const Value& item : first.List(1)) Add(item.Reference(), depth + 1);
    } else if (first.name.find("CALLOUT") != std::string_view::npos) {
      for (const Value& item : ContentsOf(instance)) Add(item.Reference(), depth + 1);
    } else if (first.name.find("ANNOTATION") != std::string_view::npos) {
      Add(ItemOf(instance), depth + 1);
    }
  }

  // Lines and areas are most of a file and looked at once: they are not kept.
  Instance Read(Id id) const {
    const std::string_view text = reading_.file.TextOf(id);
    if (text.empty()) throw Unreadable(id, "#" + std::to_string(id) + " does not exist");
    Spend(id, 1 + text.size() / 16);
    return ReadInstance(id, text);
  }

  // Adds what stands in the list of a point or a list of points, in its usual form. False, and
  // nothing added, for anything else.
  bool AddPoints(Id id) {
    Spend(id, 1);
    std::string_view text = reading_.file.TextOf(id);
    const bool isList = text.substr(0, 17) == "COORDINATES_LIST(";
    if (!isList && text.substr(0, 16) != "CARTESIAN_POINT(") return false;
    const std::size_t begin = text.find(isList ? "((" : "(", text.rfind('\''));
    if (begin == std::string_view::npos) return false;
    text.remove_prefix(begin + (isList ? 1 : 0));
    std::vector<double> all;
    do {
      for (const char before : {'(', ',', ','}) {
        double number = 0;
        if (!TakeSign(text, before) || !TakeNumber(text, number)) return false;
        all.push_back(number);
      }
      if (!TakeSign(text, ')')) return false;
    } while (isList && TakeSign(text, ','));
    const bool isEnd = (!isList || TakeSign(text, ')')) && TakeSign(text, ')') && text.empty();
    if (!isEnd) return false;
    for (std::size_t i = 0; i < all.size(); i += 3) AddPoint(id, {all[i], all[i + 1], all[i + 2]});
    return true;
  }

  void Spend(Id of, std::size_t more) const {
    if (more > reading_.pointsLeft) {
      reading_.pointsLeft = 0;
      throw Unreadable(of, "too many points are drawn");
    }
    reading_.pointsLeft -= more;
  }

  static bool TakeSign(std::string_view& text, char sign) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    if (text.empty() || text.front() != sign) return false;
    text.remove_prefix(1);
    return true;
  }

  static bool TakeNumber(std::string_view& text, double& number) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
  }

  void AddPoint(Id of, const Value& point) {
    if (!point.IsList() || point.size != 3) return;
    double xyz[3];
    for (std::uint32_t i = 0; i < 3; ++i) xyz[i] = NumberOf(of, point.items[i]);
    AddPoint(of, {xyz[0], xyz[1], xyz[2]});
  }

  // A point in the presentation's unit of length, in the placement of its set.
  void AddPoint(Id of, const QENvector& xyz) {
    Spend(of, 1);
    const QENvector scaled = scale_ * xyz;
    if (!place_.has_value()) return AddPoint(reading_.Placed(QENposition() + scaled));
    const QENvector y = cross(place_->axis, place_->x);
    AddPoint(place_->origin +
             (scaled.x() * place_->x + scaled.y() * y + scaled.z() * place_->axis));
  }

  void AddPoint(const QENposition& point) {
    for (std::size_t i = 0; i < 3; ++i) points_[i].push_back(dot(point - QENposition(), axes_[i]));
  }

  Reading& reading_;
  QENvector axes_[3];  // of the plane: x, y and its normal
  double scale_;
  std::unordered_set<Id> seen_;  // what refers to itself does not come twice
  std::optional<Placement> place_;
  std::vector<double> points_[3];  // along each axis
};

}  // namespace

bool IsCallout(Reading& reading, Id id) {
  return std::any_of(std::begin(kCallouts), std::end(kCallouts),
                     [&](std::string_view callout) { return reading.Is(id, callout); });
}

bool IsPlaceholder(const Instance& occurrence) {
  for (const Record& record : occurrence.records) {
    if (record.name.find("ANNOTATION_PLACEHOLDER_OCCURRENCE") == 0) return true;
  }
  return false;
}

// In a complex instance the name stands elsewhere.
const Value& ContentsOf(const Instance& callout) {
  const Record* const own = callout.Find("DRAUGHTING_CALLOUT");
  const Record& record = own != nullptr ? *own : callout.records.front();
  return record.List(record.count == 1 ? 0 : 1);
}

Id ItemOf(const Instance& occurrence) {
  const Record& record = occurrence.As("STYLED_ITEM");
  return record.Reference(record.count == 2 ? 1 : 2);
}

std::optional<QENposition> DrawnMiddle(Reading& reading, Id element, const Placement& plane,
                                       double scale) {
  return Collector(reading, plane, scale).Middle(element);
}

}  // namespace step

#include "readers/step/Drawn.h"

#include <algorithm>

namespace step {

namespace {

class Collector {
 public:
  Collector(Reading& reading, const Placement& plane, double scale)
      : reading_(reading), axes_{plane.x, cross(plane.axis, plane.x), plane.axis}, scale_(scale) {}

  std::optional<QENposition> Middle(Id element) {
    try {
      Add(element, 0);
    } catch (const Unreadable&) {
      return std::nullopt;
    }
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
    const Instance& instance = reading_.Get(id);
    const Record& first = instance.records.front();
    if (depth > kDeepest || !seen_.insert(id).second || IsPlaceholder(instance)) return;
    if (const Record* coordinates = instance.Find("COORDINATES_LIST")) {
      for (const Value& point : coordinates->List(coordinates->count - 1)) AddPoint(id, point);
    } else if (const Record* line = instance.Find("POLYLINE")) {
      for (const Value& point : line->List(line->count - 1)) {
        const Record& record = reading_.Get(point.Reference()).As("CARTESIAN_POINT");
        AddPoint(id, record.List(record.count - 1));
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

  void AddPoint(Id of, const Value& point) {
    if (!point.IsList() || point.size != 3) return;
    double xyz[3];
    for (std::uint32_t i = 0; i < 3; ++i) xyz[i] = scale_ * NumberOf(of, point.items[i]);
    if (!place_.has_value()) return AddPoint(reading_.Placed({xyz[0], xyz[1], xyz[2]}));
    const QENvector y = cross(place_->axis, place_->x);
    AddPoint(place_->origin + (xyz[0] * place_->x + xyz[1] * y + xyz[2] * place_->axis));
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

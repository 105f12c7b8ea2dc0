// Saved views: a draughting model with a camera, and the annotations among its items.

#include <algorithm>
#include <cmath>

#include "readers/step/Reading.h"

namespace step {

namespace {

constexpr double kDegrees = 180 / 3.14159265358979323846;

class ViewReader {
 public:
  ViewReader(Reading& reading, Id camera, Id model)
      : reading_(reading), camera_(camera), model_(model) {}

  void Read() {
    const Instance& model = reading_.Get(model_);
    const Record& record = model.As("REPRESENTATION");
    std::vector<ENTITY*> members;
    for (const Value& item : record.List(1)) AddMembers(item.Reference(), members);
    auto& capture = reading_.part.AddCapture(members);
    std::string name = reading_.Spend(reading_.Get(camera_).As("REPRESENTATION_ITEM").Text(0));
    if (name.empty()) name = record.Text(0);
    reading_.Describe(capture, model_, "capture", name);
    try {
      scale_ = reading_.units.ScaleOf(record.Reference(2));
      standin::Edit(capture).camera = &MakeCamera(name);
    } catch (const Unreadable& problem) {
      reading_.Skip(Severity::kReduced, camera_, problem.what(), &capture);
    }
    ReadClipping(capture);
  }

 private:
  // An annotation by its presentation, or by the plane that its presentation lies in.
  void AddMembers(Id item, std::vector<ENTITY*>& members) {
    const auto found = reading_.shown.find(item);
    if (found != reading_.shown.end()) {
      for (ENTITY* annotation : found->second) {
        reading_.Spend(1 + reading_.model.labels[annotation].label.size() / 16);
        if (seen_.insert(annotation).second) members.push_back(annotation);
      }
      return;
    }
    if (!reading_.Is(item, "ANNOTATION_PLANE")) return;
    const Record& plane = reading_.Get(item).As("ANNOTATION_PLANE");
    reading_.Spend(plane.List(plane.count - 1).size / 10);
    for (const Value& element : plane.List(plane.count - 1)) {
      if (!reading_.Is(element.Reference(), "ANNOTATION_PLANE")) {
        AddMembers(element.Reference(), members);
      }
    }
  }

  // One looks from the projection point through the window, which stands in the view plane, in the
  // view reference system (ISO 10303-46). Where the window does not stand at the plane's distance
  // the file gives both in the model's space, and the system's axis points to the viewer. The
  // window's height gives the zoom: one over half of it. The view so looks at the front of its
  // texts, also where the same part's QIF document has the system's axis for the one to the viewer.
  KOVAPMI_CAMERA& MakeCamera(const std::string& name) {
    const Record& record = reading_.Get(camera_).As("CAMERA_MODEL_D3");
    // In a complex instance the name stands elsewhere.
    const std::uint32_t first = record.count == 2 ? 0 : 1;
    const Placement view = reading_.PlacementOf(record.Reference(first), scale_);
    const Record& volume = reading_.Get(record.Reference(first + 1)).As("VIEW_VOLUME");
    const bool isPerspective = volume.Enumeration(0) == "CENTRAL";
    const double distance = scale_ * volume.Number(2);
    const Record& window = reading_.Get(volume.Reference(8)).As("PLANAR_BOX");
    const double height = scale_ * window.Number(2);
    const double plane = reading_.PlacementOf(window.Reference(3), scale_).origin.z();
    const QENposition point = reading_.PointOf(volume.Reference(1), scale_);
    const bool isInView = std::abs(plane - distance) <= 1e-6 * std::abs(distance);
    const bool looksAlong = isInView && distance > point.z();
    auto& camera = reading_.part.Make<KOVAPMI_CAMERA>();
    auto& fields = standin::Edit(camera);
    if (!name.empty()) fields.name = Wide(name);
    fields.type = isPerspective ? camera_perspective : camera_parallel;
    fields.direction = (looksAlong ? 1.0 : -1.0) * view.axis;
    fields.direction_normal = cross(view.axis, view.x);
    // The eye of a perspective is the projection point; parallel views have theirs at the origin.
    QENposition eye = view.origin;
    double depth = std::abs(distance);
    if (isPerspective) {
      const QENvector y = cross(view.axis, view.x);
      eye = eye + (point.x() * view.x + point.y() * y + point.z() * view.axis);
      depth = std::abs(distance - point.z());
    }
    fields.origin = eye;
    fields.target = eye + depth * fields.direction;
    if (height > 0) fields.zoom = 2 / height;
    if (isPerspective && depth > 0) {
      fields.view_angle = 2 * kDegrees * std::atan(0.5 * height / depth);
    }
    return camera;
  }

  // A clipping plane stands in the camera's list; of several the model has the first.
  void ReadClipping(KOVAPMI_CAPTURE& capture) {
    const Record* const clipped = reading_.Get(camera_).Find("CAMERA_MODEL_D3_MULTI_CLIPPING");
    if (clipped == nullptr) return;
    try {
      const Value& planes = clipped->List(clipped->count - 1);
      if (planes.size == 0) return;
      const Instance& plane = reading_.Get(planes.begin()->Reference());
      const bool isOne = planes.size == 1 && plane.Find("PLANE") != nullptr;
      if (!isOne) {
        reading_.Skip(Severity::kReduced, camera_, "the model has one clipping plane", &capture);
      }
      if (plane.Find("PLANE") == nullptr) return;  // a union or an intersection of planes
      const Placement placement = reading_.PlacementOf(plane.As("PLANE").Reference(1), scale_);
      auto& clipping = reading_.part.Make<KOVAPMI_CLIPPINGPLANE>();
      standin::Edit(clipping).point = placement.origin;
      standin::Edit(clipping).normal = placement.axis;
      standin::Edit(capture).clipping_plane = &clipping;
    } catch (const Unreadable& problem) {
      reading_.Skip(Severity::kReduced, camera_, problem.what(), &capture);
    }
  }

  Reading& reading_;
  Id camera_;
  Id model_;
  double scale_ = 1;  // from the draughting model's unit of length
  std::unordered_set<const ENTITY*> seen_;
};

}  // namespace

void ReadSavedViews(Reading& reading) {
  std::vector<Id> cameras;
  for (const char* entity :
       {"CAMERA_MODEL_D3", "CAMERA_MODEL_D3_MULTI_CLIPPING", "CAMERA_MODEL_D3_WITH_HLHSR"}) {
    const std::vector<Id>& all = reading.file.Of(entity);
    cameras.insert(cameras.end(), all.begin(), all.end());
  }
  std::stable_sort(cameras.begin(), cameras.end(),
                   [&](Id a, Id b) { return reading.file.OffsetOf(a) < reading.file.OffsetOf(b); });
  // A complex instance is in both lists.
  cameras.erase(std::unique(cameras.begin(), cameras.end()), cameras.end());
  for (const Id camera : cameras) {
    for (const Id model : reading.file.ReferrersOf(camera)) {
      if (!reading.Is(model, "DRAUGHTING_MODEL")) continue;
      reading.Count("savedViews");
      reading.Try(model, [&] { ViewReader(reading, camera, model).Read(); });
    }
  }
}

}  // namespace step

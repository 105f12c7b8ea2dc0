// Saved views: members, camera, section plane.

#include <cmath>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

constexpr double kDegrees = 57.295779513082320877;

// The orientation turns directions of the model into directions of the view, where x goes right, y
// up and z towards the viewer. The directions of the view in the model, then, are turned back.
struct Orientation {
  QENvector up;
  QENvector towardsViewer;
};

Orientation ReadOrientation(Element quaternion) {
  const std::vector<double> q = NumbersOf(Child(quaternion, "Value"), 4);
  const double length = q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3];
  if (!(length > 0) || !std::isfinite(length)) {
    throw Unreadable(quaternion, "the orientation is no rotation");
  }
  const double s = 2 / length;
  const double w = q[0], x = q[1], y = q[2], z = q[3];
  // The second and third rows of the rotation's matrix.
  return {{s * (x * y + w * z), 1 - s * (x * x + z * z), s * (y * z - w * x)},
          {s * (x * z - w * y), s * (y * z + w * x), 1 - s * (x * x + y * y)}};
}

class SavedViewReader {
 public:
  SavedViewReader(Reading& reading, Element view) : reading_(reading), view_(view) {}

  void Read() {
    RequireRecord(view_);
    std::vector<ENTITY*> members;
    for (const Element reference : Child(view_, "AnnotationVisibleIds").children()) {
      std::string reason;
      ENTITY* const annotation = reading_.AnnotationAt(reference, reason);
      if (annotation == nullptr) reading_.Skip(view_, "its " + reason);
      if (annotation != nullptr) members.push_back(annotation);
    }
    for (ENTITY* body : reading_.EntitiesOf(Child(view_, "BodyIds"), view_)) {
      members.push_back(body);
    }
    auto& capture = reading_.part.AddCapture(members);
    reading_.document.EntryOf(view_).entity = &capture;
    reading_.Describe(capture, view_, "saved view", view_.attribute("label").value());
    auto& fields = standin::Edit(capture);
    Part([&] { fields.camera = ReadCamera(); });
    Part([&] { fields.clipping_plane = ReadSection(); });
    SkipUnknown(reading_, view_, view_,
                {"AnnotationVisibleIds", "BodyIds", "ZoneSectionId", "CameraIds"});
  }

 private:
  // A part of the view that cannot be read leaves the rest of it as it is.
  template <typename Work>
  void Part(Work work) {
    try {
      work();
    } catch (const Unreadable& problem) {
      Skip(problem.what());
    }
  }
  void Skip(const std::string& reason) { reading_.Skip(view_, reason); }

  KOVAPMI_CAMERA* ReadCamera() {
    Element chosen;
    int cameras = 0;
    for (const Element reference : Child(view_, "CameraIds").children()) {
      const bool isActive = IsTrue(reference.attribute("active").value());
      if (!chosen || (isActive && !IsTrue(chosen.attribute("active").value()))) chosen = reference;
      ++cameras;
    }
    if (cameras > 1) Skip("it has " + std::to_string(cameras) + " cameras, the model has one");
    if (!chosen) return nullptr;
    const Document::Entry* const entry = reading_.document.Find(chosen);
    if (entry == nullptr) {
      Skip("its camera " + std::string(WordOf(chosen)) + " does not exist");
      return nullptr;
    }
    return &MakeCamera(entry->element);
  }

  // A parallel camera stands on the near plane and looks at the view plane's origin. A perspective
  // camera with the near plane before it stands in the origin and looks at the near plane.
  KOVAPMI_CAMERA& MakeCamera(Element element) {
    const Units& units = reading_.units;
    const Orientation orientation = ReadOrientation(Child(element, "Orientation"));
    const QENposition origin = units.Point(Child(element, "ViewPlaneOrigin"));
    const double near = units.Length(Child(element, "Near"), false).value;
    const double height = NumberOf(Child(element, "Height"));
    KOVAPMI_CAMERA::fields fields;
    fields.direction = -1.0 * orientation.towardsViewer;
    fields.direction_normal = orientation.up;
    const QENposition onNearPlane = origin + near * fields.direction;
    if (std::string_view(element.attribute("form").value()) == "PERSPECTIVE") {
      fields.type = camera_perspective;
      fields.origin = near > 0 ? origin : onNearPlane;
      fields.target = near > 0 ? onNearPlane : origin;
      fields.view_angle = near > 0 ? 2 * kDegrees * std::atan(height / near) : 0;
    } else {
      fields.type = camera_parallel;
      fields.origin = onNearPlane;
      fields.target = origin;
    }
    // The document gives half of the height that the view shows.
    if (!(height > 0)) throw Unreadable(element, "the height of its camera is not positive");
    fields.zoom = 1 / height;
    RequireFinite(element, {fields.zoom, onNearPlane.x(), onNearPlane.y(), onNearPlane.z()});
    std::string_view name = element.attribute("label").value();
    if (name.empty()) name = view_.attribute("label").value();
    if (!name.empty()) fields.name = Wide(name);
    auto& camera = reading_.part.Make<KOVAPMI_CAMERA>();
    standin::Edit(camera) = fields;
    return camera;
  }

  KOVAPMI_CLIPPINGPLANE* ReadSection() {
    const Element reference = Child(view_, "ZoneSectionId");
    if (!reference) return nullptr;
    const std::string id(WordOf(reference));
    const Document::Entry* const entry = reading_.document.Find(reference);
    if (entry == nullptr) {
      Skip("its section " + id + " does not exist");
      return nullptr;
    }
    if (!IsTrue(reference.attribute("active").value())) {
      Skip("its section " + id + " is not active");
      return nullptr;
    }
    const Element planes = Child(entry->element, "SectionPlanes");
    const Element first = Child(planes, "SectionPlane");
    if (!first) return nullptr;
    if (first.next_sibling()) Skip("its section " + id + " has several planes, the model has one");
    const Element plane = Child(first, "Plane");
    KOVAPMI_CLIPPINGPLANE::fields fields;
    fields.point = reading_.units.Point(Child(plane, "Point"));
    fields.normal = reading_.units.Vector(Child(plane, "Normal"));
    auto& clipping = reading_.part.Make<KOVAPMI_CLIPPINGPLANE>();
    standin::Edit(clipping) = fields;
    return &clipping;
  }

  Reading& reading_;
  Element view_;
};

}  // namespace

void ReadSavedViews(Reading& reading) {
  for (const Element view :
       reading.document.At({"Product", "ViewSet", "SavedViewSet"}).children()) {
    reading.Count("savedViews");
    reading.Try(view, [&] { SavedViewReader(reading, view).Read(); });
  }
}

}  // namespace qif

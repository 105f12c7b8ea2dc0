// Saved views: members, camera, section plane.

#include <cmath>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

constexpr double kDegrees = 57.295779513082320877;

// The orientation turns directions of the model into directions of the view, where x goes right, y
// up and z towards the viewer. The directions of the view in the model, then, are turned back. A
// document whose z points the other way looks at its texts from behind, and is read as it states.
struct Orientation {
  QENvector up;
  QENvector towardsViewer;
};

Orientation ReadOrientation(Reading& reading, Element element) {
  Fields quaternion(element);
  const std::vector<double> q = NumbersOf(quaternion["Value"], 4);
  reading.SkipRest(quaternion);
  const double length = q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3];
  if (!(length > 0) || !std::isfinite(length)) {
    throw Unreadable(element, "the orientation is no rotation");
  }
  const double s = 2 / length;
  const double w = q[0], x = q[1], y = q[2], z = q[3];
  // The second and third rows of the rotation's matrix.
  return {{s * (x * y + w * z), 1 - s * (x * x + z * z), s * (y * z - w * x)},
          {s * (x * z - w * y), s * (y * z + w * x), 1 - s * (x * x + y * y)}};
}

class SavedViewReader {
 public:
  SavedViewReader(Reading& reading, Element view) : reading_(reading), view_(view), fields_(view) {}

  void Read() {
    std::vector<ENTITY*> members;
    std::unordered_set<const ENTITY*> seen;
    const auto add = [&](ENTITY* member) {
      if (seen.insert(member).second) members.push_back(member);
    };
    for (const Element reference : fields_["AnnotationVisibleIds"].children()) {
      std::string reason;
      const Document::Entry* const annotation = reading_.AnnotationAt(reference, reason);
      if (annotation == nullptr) reading_.Lose(reference, "its " + reason);
      if (annotation != nullptr) add(annotation->entity);
    }
    for (ENTITY* body : reading_.EntitiesOf(fields_["BodyIds"])) add(body);
    auto& capture = reading_.part.AddCapture(members);
    reading_.document.EntryOf(view_).entity = &capture;
    reading_.Describe(capture, view_, "saved view", view_.attribute("label").value());
    auto& fields = standin::Edit(capture);
    Part([&] { fields.camera = ReadCamera(); });
    Part([&] { fields.clipping_plane = ReadSection(); });
    reading_.SkipRest(fields_);
  }

 private:
  // A part of the view that cannot be read leaves the rest of it as it is.
  template <typename Work>
  void Part(Work work) {
    try {
      work();
    } catch (const Unreadable& problem) {
      reading_.Lose(view_, problem);
    }
  }

  void Reduce(const std::string& reason) { reading_.Skip(Severity::kReduced, view_, reason); }

  KOVAPMI_CAMERA* ReadCamera() {
    Element chosen;
    bool chosenIsActive = false;
    int cameras = 0;
    for (const Element reference : fields_["CameraIds"].children()) {
      const bool isActive = reading_.Flag(reference, "active");
      if (!chosen || (isActive && !chosenIsActive)) {
        chosen = reference;
        chosenIsActive = isActive;
      }
      ++cameras;
    }
    if (cameras > 1) Reduce("it has " + std::to_string(cameras) + " cameras, the model has one");
    if (!chosen) return nullptr;
    const Document::Entry* const entry = reading_.document.Find(chosen);
    if (entry == nullptr) {
      reading_.Lose(chosen, "its camera " + Quote(WordOf(chosen)) + " does not exist");
      return nullptr;
    }
    return &MakeCamera(entry->element);
  }

  // A parallel camera stands on the near plane and looks at the view plane's origin. A perspective
  // camera with the near plane before it stands in the origin and looks at the near plane.
  KOVAPMI_CAMERA& MakeCamera(Element element) {
    const Units& units = reading_.units;
    Fields camera(element);
    const Orientation orientation = ReadOrientation(reading_, camera["Orientation"]);
    const QENposition origin = units.Point(camera["ViewPlaneOrigin"]);
    const double near = units.Length(camera["Near"]).value;
    const double height = NumberOf(camera["Height"]) / units.Scale();
    reading_.SkipRest(camera);
    KOVAPMI_CAMERA::fields fields;
    fields.direction = -1.0 * orientation.towardsViewer;
    fields.direction_normal = orientation.up;
    const QENposition onNearPlane = origin + near * fields.direction;
    constexpr Word<bool> kForms[] = {{"ORTHOGRAPHIC", false}, {"PERSPECTIVE", true}};
    if (reading_.MeaningOf(element, "form", kForms, false)) {
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
    auto& made = reading_.part.Make<KOVAPMI_CAMERA>();
    standin::Edit(made) = fields;
    return made;
  }

  KOVAPMI_CLIPPINGPLANE* ReadSection() {
    const Element reference = fields_["ZoneSectionId"];
    if (!reference) return nullptr;
    const std::string id = Quote(WordOf(reference));
    const Document::Entry* const entry = reading_.document.Find(reference);
    if (entry == nullptr) {
      reading_.Lose(reference, "its section " + id + " does not exist");
      return nullptr;
    }
    if (!reading_.Flag(reference, "active")) {
      Reduce("its section " + id + " is not active");
      return nullptr;
    }
    Fields section(entry->element);
    Fields planes(section["SectionPlanes"]);
    const std::vector<Element> all = planes.All("SectionPlane");
    Fields first(all.empty() ? Element() : all.front());
    Fields plane(first["Plane"]);
    for (const Fields* const record : {&section, &planes, &first}) reading_.SkipRest(*record);
    if (!plane.Record()) throw Unreadable(entry->element, "section " + id + " has no plane");
    if (all.size() > 1) {
      Reduce("its section " + id + " has several planes, the model has one");
    }
    KOVAPMI_CLIPPINGPLANE::fields fields;
    fields.point = reading_.units.Point(plane["Point"]);
    fields.normal = reading_.units.Vector(plane["Normal"]);
    reading_.SkipRest(plane);
    if (!(fields.normal.length_squared() > 0)) {
      throw Unreadable(plane.Record(), "the plane of section " + id + " has no direction");
    }
    auto& clipping = reading_.part.Make<KOVAPMI_CLIPPINGPLANE>();
    standin::Edit(clipping) = fields;
    return &clipping;
  }

  Reading& reading_;
  Element view_;
  Fields fields_;
};

}  // namespace

void ReadSavedViews(Reading& reading) {
  for (const Element view :
       reading.document.At({"Product", "ViewSet", "SavedViewSet"}).children("SavedView")) {
    reading.Count("savedViews");
    reading.Try(view, [&] { SavedViewReader(reading, view).Read(); });
  }
}

}  // namespace qif

// Saved views with their cameras and sections, and the planes of the annotations.

#include <algorithm>
#include <cmath>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

std::string Coordinates(const Point3& point) {
  return Real(point[0]) + ' ' + Real(point[1]) + ' ' + Real(point[2]);
}

// A camera as QIF has it.
struct Camera {
  Point3 origin;  // of the view plane
  std::array<double, 4> turn;
  double near, height;
  bool isPerspective;
};

// The rotation whose matrix has these rows, the real part first.
std::array<double, 4> Quaternion(const Point3& x, const Point3& y, const Point3& z) {
  std::array<double, 4> q{};
  const double squares[4] = {1 + x[0] + y[1] + z[2], 1 + x[0] - y[1] - z[2], 1 - x[0] + y[1] - z[2],
                             1 - x[0] - y[1] + z[2]};
  const auto largest = static_cast<std::size_t>(std::max_element(squares, squares + 4) - squares);
  const double root = 2 * std::sqrt(squares[largest]);
  const double sums[4][4] = {{squares[0], z[1] - y[2], x[2] - z[0], y[0] - x[1]},
                             {z[1] - y[2], squares[1], y[0] + x[1], x[2] + z[0]},
                             {x[2] - z[0], y[0] + x[1], squares[2], z[1] + y[2]},
                             {y[0] - x[1], x[2] + z[0], z[1] + y[2], squares[3]}};
  for (std::size_t i = 0; i < 4; ++i) q[i] = sums[largest][i] / root;
  return q;
}

// None where the camera is none of QIF; `off` tells what of it gets lost otherwise.
std::optional<Camera> CameraOf(const CameraReport& camera, std::string& off) {
  const Point3& ahead = camera.viewDirection;
  const Point3& up = camera.viewDirectionNormal;
  const Point3 right = Cross(ahead, up);
  const auto isUnit = [](const Point3& a) { return std::abs(Dot(a, a) - 1) < 1e-9; };
  if (!isUnit(ahead) || !isUnit(up) || !isUnit(right)) return {};
  if (!std::isnormal(camera.zoom) || camera.zoom < 0) return {};
  Camera made{};
  made.height = 1 / camera.zoom;
  made.isPerspective = camera.type == "perspective";
  if (!made.isPerspective && camera.type != "parallel") return {};
  const bool looksOut = made.isPerspective && camera.viewAngle > 0;
  const Point3 way = looksOut ? camera.target - camera.origin : camera.origin - camera.target;
  made.origin = looksOut ? camera.origin : camera.target;
  made.near = Dot(way, ahead);
  if (!std::isfinite(made.near) || !std::isfinite(Dot(made.origin, made.origin))) return {};
  const Point3 aside = way - made.near * ahead;
  const double size = 1 + std::sqrt(Dot(way, way)) + std::sqrt(Dot(made.origin, made.origin));
  if (std::sqrt(Dot(aside, aside)) > 1e-9 * size) off = "its target is not straight ahead";
  constexpr double kDegrees = 57.295779513082320877;
  const double angle = looksOut ? 2 * kDegrees * std::atan(made.height / made.near) : 0;
  if (std::abs(angle - camera.viewAngle) > 1e-9) off = "its angle does not fit its zoom";
  made.turn = Quaternion(right, up, -1.0 * ahead);
  return made;
}

class ViewsWriter {
 public:
  ViewsWriter(Xml& xml, Plan& plan) : xml_(xml), plan_(plan) {}

  void Write() {
    ReadCameras();
    WriteCameras();
    WriteSavedViews();
    WriteAnnotationViews();
    WriteSections();
  }

 private:
  void Omit(const char* severity, const CaptureReport& capture, const std::string& reason) {
    plan_.omissions.Add(severity, "capture", capture.id.value_or(""), reason);
  }

  void ReadCameras() {
    for (Capture& capture : plan_.captures) {
      if (!capture.capture->camera) continue;
      std::string off;
      const std::optional<Camera> camera = CameraOf(*capture.capture->camera, off);
      if (!off.empty()) Omit("reduced", *capture.capture, off);
      if (camera) cameras_.emplace_back(&capture, *camera);
      if (camera) continue;
      capture.camera = 0;
      Omit("lost", *capture.capture, "QIF has no such camera");
    }
  }

  void WriteCameras() {
    if (cameras_.empty()) return;
    xml_.OpenList("CameraSet", cameras_.size());
    for (const auto& [capture, camera] : cameras_) {
      const std::string name = capture->capture->camera->name.value_or("");
      xml_.Open("Camera");
      if (!name.empty()) xml_.Attribute("label", name);
      xml_.Attribute("id", std::to_string(capture->camera));
      xml_.Attribute("form", camera.isPerspective ? "PERSPECTIVE" : "ORTHOGRAPHIC");
      xml_.Leaf("ViewPlaneOrigin", Coordinates(camera.origin));
      std::string turn;
      for (const double part : camera.turn) turn += (turn.empty() ? "" : " ") + Rounded(part, 14);
      xml_.Open("Orientation");
      xml_.Leaf("Value", turn);
      xml_.Close();
      // The report tells neither the shape of the picture nor how far it reaches.
      xml_.Leaf("Ratio", "1");
      const std::string near = Rounded(camera.near, plan_.Places());
      xml_.Leaf("Near", near);
      xml_.Leaf("Far", near);
      // As many digits as come back from its reciprocal.
      const int digits = 14 - static_cast<int>(std::floor(std::log10(camera.height)));
      xml_.Leaf("Height", Rounded(camera.height, digits));
      xml_.Close();
    }
    xml_.Close();
  }

  void WriteIds(const char* name, const std::vector<Id>& ids) {
    if (ids.empty()) return;
    xml_.OpenList(name, ids.size());
    for (const Id id : ids) xml_.Reference("Id", id);
    xml_.Close();
  }

  void WriteActive(const char* name, Id id) {
    xml_.Open(name);
    xml_.Attribute("active", "true");
    xml_.Content(std::to_string(id));
    xml_.Close();
  }

  void WriteSavedViews() {
    if (plan_.captures.empty()) return;
    xml_.OpenList("SavedViewSet", plan_.captures.size());
    for (const Capture& item : plan_.captures) {
      const CaptureReport& capture = *item.capture;
      xml_.Open("SavedView");
      if (capture.name.value_or("") != "") xml_.Attribute("label", *capture.name);
      xml_.Attribute("id", std::to_string(item.id));
      WriteMembers(capture);
      if (HasSection(item)) WriteActive("ZoneSectionId", item.section);
      if (capture.clippingPlane && !HasSection(item))
        Omit("lost", capture, "it is cut by no plane");
      if (item.camera != 0) {
        xml_.OpenList("CameraIds", 1);
        WriteActive("Id", item.camera);
        xml_.Close();
      }
      xml_.Close();
      if (capture.hiddenText.value_or("") != "") {
        Omit("reduced", capture, "QIF has no hidden text of a saved view");
      }
    }
    xml_.Close();
  }

  void WriteMembers(const CaptureReport& capture) {
    std::vector<Id> members, bodies;
    for (const MemberReport& member : capture.members) {
      const Item* const item = plan_.Find(member.id);
      if (item != nullptr) members.push_back(item->id);
      if (item == nullptr) Omit("lost", capture, "it shows annotations that are not written");
    }
    for (const EntityReport& entity : capture.entities) {
      const Entity* const body = plan_.FindEntity(entity.id);
      if (body != nullptr && body->isBody) {
        bodies.push_back(body->id);
      } else {
        Omit("lost", capture, "a saved view of QIF shows annotations and bodies alone");
      }
    }
    WriteIds("AnnotationVisibleIds", members);
    WriteIds("BodyIds", bodies);
  }

  void WriteAnnotationViews() {
    if (plan_.views.empty()) return;
    std::vector<const View*> views;
    for (const auto& [report, view] : plan_.views) views.push_back(&view);
    std::sort(views.begin(), views.end(),
              [](const View* a, const View* b) { return a->id < b->id; });
    xml_.OpenList("AnnotationViewSet", views.size());
    for (const View* view : views) {
      xml_.OpenWithId("AnnotationView", view->id);
      xml_.Leaf("Normal", Coordinates(view->axes.normal));
      xml_.Leaf("Direction", Coordinates(view->axes.x));
      xml_.Close();
    }
    xml_.Close();
  }

  static bool HasSection(const Capture& capture) {
    if (!capture.capture->clippingPlane) return false;
    const auto& [point, normal] = *capture.capture->clippingPlane;
    return std::isfinite(Dot(point, point)) && std::isnormal(Dot(normal, normal));
  }

  void WriteSections() {
    std::vector<const Capture*> sections;
    for (const Capture& capture : plan_.captures) {
      if (HasSection(capture)) sections.push_back(&capture);
    }
    if (sections.empty()) return;
    xml_.OpenList("ZoneSectionSet", sections.size());
    for (const Capture* capture : sections) {
      const auto& [point, normal] = *capture->capture->clippingPlane;
      // Any direction in the plane: QIF asks for one.
      Point3 axis{};
      axis[std::abs(normal[0]) > std::abs(normal[1]) ? 1 : 0] = 1;
      const Point3 across = Cross(normal, axis);
      xml_.OpenWithId("ZoneSection", capture->section);
      xml_.OpenList("SectionPlanes", 1);
      xml_.Open("SectionPlane");
      xml_.Attribute("index", "1");
      xml_.Open("Plane");
      xml_.Leaf("Point", Coordinates(point));
      xml_.Leaf("Normal", Coordinates(normal));
      xml_.Leaf("Direction", Coordinates((1 / std::sqrt(Dot(across, across))) * across));
      xml_.Close();
      xml_.Close();
      xml_.Close();
      xml_.Close();
    }
    xml_.Close();
  }

  Xml& xml_;
  Plan& plan_;
  std::vector<std::pair<const Capture*, Camera>> cameras_;
};

}  // namespace

void WriteViews(Xml& xml, Plan& plan) {
  if (plan.captures.empty() && plan.views.empty()) return;
  xml.Open("ViewSet");
  ViewsWriter(xml, plan).Write();
  xml.Close();
}

}  // namespace qif_writer

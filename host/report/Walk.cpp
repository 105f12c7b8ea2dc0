#include "report/Walk.h"

#include <algorithm>

#include "report/Answers.h"
#include "report/EnumNames.h"
#include "report/WalkAnnotation.h"

namespace {

class Walker {
 public:
  Walker(KOVAPMIExporter& exporter, const DocumentNames& names)
      : exporter_(exporter), names_(names), entities_(exporter, names) {}

  ModelReport Walk() {
    for (const char* kind : {"text", "roughness", "geometricTolerance", "dimension", "datum",
                             "datumTarget", "flagNote", "unknown", "captures"}) {
      report_.totals[kind] = 0;
    }
    int sets = 0;
    exporter_.GetAnnotationSetCount(sets);
    if (sets == 0) return std::move(report_);
    KOVAIdentifier set;
    exporter_.GetAnnotationSet(0, set);
    int views = 0;
    exporter_.GetAnnotationViewCount(set, views);
    for (int i = 0; i < views; ++i) {
      KOVAIdentifier view;
      if (exporter_.GetAnnotationView(set, i, view).IsSuccess()) VisitView(view);
    }
    unsigned int captures = 0;
    exporter_.GetCaptureCount(set, captures);
    report_.totals["captures"] = static_cast<long>(captures);
    for (unsigned int i = 0; i < captures; ++i) {
      KOVAIdentifier capture;
      if (exporter_.GetCapture(set, i, capture).IsSuccess()) VisitCapture(capture);
    }
    report_.entities = entities_.Take();
    return std::move(report_);
  }

 private:
  void VisitView(const KOVAIdentifier& view) {
    ViewReport& report = report_.views.emplace_back();
    report.id = IdOfObject(exporter_, view);
    if (!report.id) report.id = "view " + std::to_string(report_.views.size());
    float f[9];
    if (exporter_.GetViewCoordinateSystem(view, f).IsSuccess()) {
      report.frame = {{f[0], f[1], f[2]}, {f[3], f[4], f[5]}, {f[6], f[7], f[8]}};
    }
    int count = 0;
    exporter_.GetViewAnnotationCount(view, count);
    // Growing takes half as much again; a count that is too large is no reason to take it at once.
    report.annotations.reserve(static_cast<std::size_t>(std::clamp(count, 0, 200'000)));
    for (int i = 0; i < count; ++i) {
      KOVAIdentifier annotation;
      if (!exporter_.GetViewAnnotation(view, i, annotation).IsSuccess()) continue;
      report.annotations.push_back(WalkAnnotation(exporter_, annotation, names_, entities_));
      ++report_.totals[report.annotations.back().kind];
    }
  }

  void VisitCapture(const KOVAIdentifier& capture) {
    CaptureReport& report = report_.captures.emplace_back();
    report.id = IdOfObject(exporter_, capture);
    report.name = NameOfObject(exporter_, capture);
    KOVAString name;
    KOVAPMICameraType type = CameraTypeUnknown;
    CameraReport camera{};
    if (exporter_
            .GetCaptureCameraData(capture, name, type, camera.origin.data(), camera.target.data(),
                                  camera.viewDirection.data(), camera.viewDirectionNormal.data(),
                                  camera.viewAngle, camera.zoom)
            .IsSuccess()) {
      camera.name = TextOf(name);
      camera.type = NameOf(type);
      report.camera = camera;
    }
    KOVAString hidden;
    if (exporter_.GetCaptureHiddenText(capture, hidden).IsSuccess()) {
      report.hiddenText = TextOf(hidden);
    }
    bool clipped = false;
    float p[6];
    if (exporter_.HasClippingPlane(capture, clipped).IsSuccess() && clipped &&
        exporter_.GetActiveView(capture, p).IsSuccess()) {
      report.clippingPlane = {{{p[0], p[1], p[2]}, {p[3], p[4], p[5]}}};
    }
    unsigned int members = 0;
    exporter_.GetCaptureEntityCount(capture, members);
    report.memberCount = static_cast<long>(members);
    const std::vector<void*> stated = names_.members(capture.GetNativeObject());
    for (unsigned int i = 0; i < members; ++i) {
      KOVAIdentifier member;
      exporter_.GetCaptureEntity(capture, i, member);
      if (member.GetNativeObject() != nullptr) {
        report.members.push_back({IdOfObject(exporter_, member), NameOfObject(exporter_, member)});
      } else if (i < stated.size()) {
        member.SetNativeObject(stated[i]);
        EntityReport& entity = report.entities.emplace_back(names_.entity(stated[i]));
        entity.id = IdOfObject(exporter_, member);
      }
    }
  }

  KOVAPMIExporter& exporter_;
  const DocumentNames& names_;
  EntityTable entities_;
  ModelReport report_;
};

}  // namespace

ModelReport WalkModel(KOVAPMIExporter& exporter, const DocumentNames& names) {
  return Walker(exporter, names).Walk();
}

// What the walk makes of an exporter's answers: ids, entities, tolerances of dimensions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "HostDocuments.h"
#include "SavedReports.h"
#include "framework_pmi/KOVADefaultPMIExporter.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HostWalk : public testing::Test {
 protected:
  HostWalk() { model_.part = std::make_unique<standin::Part>(); }

  ModelReport Report() {
    ModelReport report = ReportOn(model_);
    SaveReport(json::PrintJson(report, "pmi_report 0", -1));
    return report;
  }
  // Gives an entity an id, and what the document calls it.
  template <typename Entity>
  Entity& Known(Entity& entity, const char* id, const char* kind, const char* label) {
    model_.part->Id(entity, id);
    model_.labels[&entity] = {kind, label};
    return entity;
  }

  Model model_;
};

// "kind id label: annotation annotation".
std::vector<std::string> Lines(const std::vector<AppliedEntityReport>& entities) {
  std::vector<std::string> lines;
  for (const AppliedEntityReport& applied : entities) {
    const EntityReport& entity = applied.entity;
    std::string line =
        entity.kind + " " + entity.id.value_or("-") + " " + entity.label.value_or("-") + ":";
    for (const Text& id : applied.annotations) line += " " + id.value_or("-");
    lines.push_back(line);
  }
  return lines;
}

TEST_F(HostWalk, AnnotationsEntitiesAndCapturesAreJoinedById) {
  standin::Part& part = *model_.part;
  FACE& first = Known(part.Face(), "10", "face", "side");
  FACE& second = Known(part.Face(), "11", "face", "side");
  EDGE& edge = part.Edge();
  auto& datum = part.AddDatum(first, L"A");
  part.Id(datum, "20");
  auto& target = part.AddDatumTarget(edge, L"A1", &datum);
  part.Id(target, "21");
  auto& flatness =
      Known(part.AddGeometricTolerance(second, tol_flatness, 0.1), "22", "tolerance", "flat");
  KOVAPMI_GEOM_TOL_ROW* row = nullptr;
  flatness.get_geom_tol_row_at(0, row);
  part.AddReference(*row, L"A", {&standin::DatumOf(datum)});
  part.Id(part.AddGeometricTolerance(flatness, tol_parallelism, 0.05), "23");
  auto& depth = part.MakeCallout(callout_feature_depth, 7);
  auto& callout = part.AddDimension({&first}, dim_linear, dim_sub_width, 12);
  part.Integer(callout, "QENATTRIB_COANNOT_TYPE", callout_feature_counterbore);
  part.Place(callout, {3, 4, 5}, {1, 0, 0}, {0, 0, 1});
  part.Id(callout, "24");
  auto& width =
      part.AddDimension({&second, &first, &depth, &callout}, dim_linear, dim_sub_width, 40);
  part.Id(width, "25");
  part.Place(width, {0, 0, 0}, {1, 0, 0}, {0, 0, 1});
  part.Id(part.AddText(first, L"its id is empty"), "");
  auto& saved = part.AddCapture({&width, &first, &flatness});
  Known(saved, "30", "view", "saved");
  auto& clipping = part.Make<KOVAPMI_CLIPPINGPLANE>();
  standin::Edit(clipping).point = {1, 2, 3};
  standin::Edit(clipping).normal = {4, 5, 6};
  standin::Edit(saved).clipping_plane = &clipping;
  model_.written[&width] = {{"value", "1.575", "inch"}};

  const ModelReport report = Report();
  EXPECT_THAT(Lines(report.entities),
              ElementsAre("face 10 side: - 20 24 25", "face 11 side: 22 25", "entity - -: 21"));
  std::map<std::string, AnnotationReport> by;
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& each : view.annotations) by[each.id.value_or("-")] = each;
  }
  const EntityReport& parent = by["23"].entities.at(0);
  EXPECT_EQ(parent.kind + " " + *parent.id + " " + *parent.label, "tolerance 22 flat");
  EXPECT_EQ(by["25"].entities.at(0).id, "11");
  EXPECT_EQ(by["25"].entities.at(1).id, "10");
  const std::vector<CalloutReport>& callouts = by["25"].dimension->callouts;
  EXPECT_EQ(callouts.at(0).value, 7);
  EXPECT_EQ(callouts.at(1).value, 12);
  EXPECT_EQ(callouts.at(1).id, "24");
  EXPECT_EQ(callouts.at(1).calloutType, "counterbore");
  EXPECT_EQ(by["24"].position, (Point2{3, 4}));  // in the view of the dimension
  EXPECT_EQ(by["25"].written.at(0).text, "1.575");
  EXPECT_THAT(by["22"].written, IsEmpty());
  EXPECT_EQ(by["22"].tolerance->rows.at(0).frame->references.at(0).datums.at(0).id, "20");
  EXPECT_THAT(by["20"].datum->targets, ElementsAre("A1"));
  EXPECT_THAT(by["20"].datum->targetIds, ElementsAre("21"));
  EXPECT_EQ(report.views.at(0).id, "view 1");
  EXPECT_EQ(report.views.at(1).id, "view 2");
  const CaptureReport& capture = report.captures.at(0);
  EXPECT_EQ(capture.id, "30");
  EXPECT_EQ(capture.memberCount, 3);
  EXPECT_EQ(capture.clippingPlane, (std::array<Point3, 2>{{{1, 2, 3}, {4, 5, 6}}}));
  ASSERT_EQ(capture.members.size(), 2U);
  EXPECT_EQ(capture.members[0].id, "25");
  EXPECT_EQ(capture.members[1].id, "22");
  EXPECT_EQ(capture.entities.at(0).id, "10");
}

TEST_F(HostWalk, ToleranceOfADimensionIsToldWithItsLimitsAndNothingElse) {
  const struct {
    double lower, upper, places;
    const wchar_t *lowerText, *upperText, *prefix, *suffix;
    const char* tolerance;
    Number reportedLower, reportedUpper;
  } cases[] = {
      {0, 0, -1, L"", L"", L"", L"", "none", {}, {}},
      {0, 0, -1, L"", L"", L"", L"H7", "none", {}, {}},
      {0, 0, 0, L"", L"", L"", L"", "plusMinus", 0, 0},
      {-0.1, 0.2, 1, L"", L"", L"", L"", "plusMinus", -0.1, 0.2},
      {-0.1, 0.2, 1, L"9.9", L"10.2", L"", L"", "limits", -0.1, 0.2},
      {0, 0.2, 1, L"", L"10.2", L"", L"", "limits", {}, 0.2},
      {-0.1, 0, 1, L"9.9", L"", L"", L"", "limits", -0.1, {}},
      {0, 0, -1, L"", L"", L"[", L"]", "basic", {}, {}},
      {0, 0, -1, L"", L"", L"(", L"H7)", "reference", {}, {}},
      {0, 0, 0, L"", L"", L"[", L"", "plusMinus", 0, 0},
      {0, 0, 0, L"", L"", L"(", L"]", "plusMinus", 0, 0},
  };
  for (const auto& each : cases) {
    model_.part = std::make_unique<standin::Part>();
    auto& fields = standin::Edit(
        model_.part->AddDimension({&model_.part->Face()}, dim_linear, dim_sub_width, 10));
    fields.lower_limit = each.lower;
    fields.upper_limit = each.upper;
    fields.tolerance_precision = each.places;
    fields.lower_text = each.lowerText;
    fields.upper_text = each.upperText;
    fields.note = &model_.part->Make<KOVAPMI_NOTE>();
    standin::Edit(*fields.note).prefix = each.prefix;
    standin::Edit(*fields.note).suffix = each.suffix;
    const bool hasValue = each.places >= 0;
    fields.value_precision = each.places;
    const DimensionReport dimension = *Report().views.at(0).annotations.at(0).dimension;
    EXPECT_EQ(dimension.tolerance, each.tolerance);
    EXPECT_EQ(dimension.lower, each.reportedLower) << each.tolerance;
    EXPECT_EQ(dimension.upper, each.reportedUpper) << each.tolerance;
    EXPECT_EQ(dimension.value, hasValue ? Number(10) : Number()) << each.tolerance;
    EXPECT_EQ(dimension.precision, hasValue ? Number(each.places) : Number());
    EXPECT_EQ(dimension.tolerancePrecision, hasValue ? Number(each.places) : Number());
  }
}

// Has one dimension with a leader and an entity that is named twice, and a capture of a member that
// it does not name. Answers nothing else, or succeeds without an answer.
class Taciturn : public KOVADefaultPMIExporter {
 public:
  using KOVADefaultPMIExporter::KOVADefaultPMIExporter;
  using Id = KOVAIdentifier;

  KOVAResult GetAnnotationSetCount(int& count) override { return Answer(count, 1); }
  KOVAResult GetAnnotationViewCount(const Id&, int& count) override { return Answer(count, 1); }
  KOVAResult GetAnnotationView(const Id&, int, Id& view) override { return Answer(view, Id()); }
  KOVAResult GetViewAnnotationCount(const Id&, int& count) override { return Answer(count, 1); }
  KOVAResult GetViewAnnotation(const Id&, int, Id& object) override { return Answer(object, id_); }
  KOVAResult GetAnnotationType(const Id&, KOVAPMIAnnotationType& type) override {
    return Answer(type, AnnotationTypeDimension);
  }
  KOVAResult GetAnnotationLeaderCount(const Id&, int& count) override { return Answer(count, 1); }
  KOVAResult GetAnnotationLeader(const Id&, int, Id& leader) override {
    return Answer(leader, id_);
  }
  KOVAResult GetNumberOfEntitiesFromAnnotation(const Id&, int& count) override {
    return Answer(count, 2);
  }
  KOVAResult GetEntityFromAnnotationAt(const Id&, int, KOVAIdentifiers& list) override {
    list.add(id_);
    return KOVAResult();
  }
  KOVAResult GetCaptureCount(const Id&, unsigned& count) override { return Answer(count, 1U); }
  KOVAResult GetCapture(const Id&, unsigned&, Id& capture) override { return Answer(capture, id_); }
  KOVAResult GetCaptureEntityCount(const Id&, unsigned& n) override { return Answer(n, 1U); }
  KOVAResult HasClippingPlane(const Id&, bool&) override { return KOVAResult(); }
  KOVAResult GetActiveView(const Id&, float*) override { return KOVAResult(); }

 private:
  template <typename T>
  static KOVAResult Answer(T& output, const T& value) {
    output = value;
    return KOVAResult();
  }

  const Id id_{this, nullptr, nullptr, nullptr, KOVAIdentifierCastHandle(nullptr)};
};

TEST_F(HostWalk, WhatIsNotAnsweredIsNullAndWhatIsNamedTwiceIsJoinedOnce) {
  Taciturn exporter(model_.part->GetDocument());
  const ModelReport report = MakeReport(model_, exporter, "part");
  EXPECT_THAT(Lines(report.entities), ElementsAre("entity - -: -"));
  const std::string text = json::PrintJson(report, "pmi_report 0", -1);
  SaveReport(text);
  EXPECT_THAT(text, HasSubstr(R"("clippingPlane":null,"members":{"count":1,"annotations":[],)"
                              R"("ids":[],"entities":[]})"));
  const std::string entity = R"({"kind":"entity","id":null,"label":null})";
  EXPECT_THAT(
      text,
      HasSubstr(R"([{"id":"view 1","frame":null,"annotations":[{"kind":"dimension","id":null,)"
                R"("name":null,"hidden":null,"texts":[],"entities":[)" +
                entity + "," + entity +
                R"(],"position":null,"depth":null,"leaders":[{"tail":null,"head":null}],)"
                R"("dimension":{"type":null,"mainType":null,"tolerance":null,"value":null,)"
                R"("precision":null,"lower":null,"upper":null,"tolerancePrecision":null,)"
                R"("lowerText":null,"upperText":null,"texts":{"prefix":null,)"));
}

}  // namespace

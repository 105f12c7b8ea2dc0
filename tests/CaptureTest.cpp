// What captures answer beyond one full capture: the list, members, missing parts.

#include "Matchers.h"

namespace {

using standin::Edit;
using standin::Part;

TEST(Captures, AreListedInTheModelsOrderForTheSetAlone) {
  Part part;
  ENTITY* captures[] = {&part.AddCapture({}), &part.AddCapture({}), &part.Face(), nullptr};
  const auto exporter = Export(part);
  ExporterInsides::InitializeCapture(*exporter, captures[2]);
  KOVAIdentifier other;  // no native object either, yet not the set
  other.SetTypeName("not the set");
  Part none;
  const auto withoutSet = Export(none);
  ExporterInsides::InitializeCapture(*withoutSet, captures[2]);
  const struct {
    KOVAOrvoPMIExporter& exporter;
    KOVAIdentifier set;
    unsigned count;
  } cases[] = {
      {*exporter, KOVAIdentifier(), 3}, {*exporter, other, 0}, {*withoutSet, KOVAIdentifier(), 0}};
  for (const auto& each : cases) {
    unsigned count = kUntouched;
    EXPECT_THAT(each.exporter.GetCaptureCount(each.set, count), IsSuccess());
    EXPECT_EQ(count, each.count != 0 ? each.count : kUntouched);
    for (unsigned index : {0u, 1u, 2u, 3u, ~0u}) {
      const bool there = index < each.count;
      KOVAIdentifier capture = SentinelIdentifier();
      EXPECT_THAT(each.exporter.GetCapture(each.set, index, capture),
                  HasCode(there ? 0 : kFailure));
      EXPECT_THAT(capture, Became(there ? captures[index] : nullptr));
    }
  }
}

TEST(Captures, FailForEachPartThatIsMissingAndTouchNothing) {
  Part part;
  auto& capture = part.AddCapture({});
  auto& camera = part.Make<KOVAPMI_CAMERA>();
  const auto exporter = Export(part);
  const KOVAIdentifier named = Naming(&capture);
  for (const bool preset : {false, true}) {
    KOVAString name = SentinelString(), hidden = SentinelString();
    auto type = CameraTypePerspective;
    Untouched<double, 14> d;
    Untouched<float, 6> plane;
    bool has = preset;
    const auto lookThrough = [&] {
      return exporter->GetCaptureCameraData(named, name, type, d, d + 3, d + 6, d + 9, d[12],
                                            d[13]);
    };
    Edit(capture).camera = nullptr;
    EXPECT_THAT(lookThrough(), FailsWith(kFailure));
    EXPECT_THAT(name, Reads(L"untouched"));
    EXPECT_EQ(type, CameraTypePerspective);
    EXPECT_THAT(d, ::testing::Each(kUntouched));
    EXPECT_THAT(exporter->GetCaptureHiddenText(named, hidden), FailsWith(kFailure));
    EXPECT_THAT(hidden, Reads(L"untouched"));
    EXPECT_THAT(exporter->HasClippingPlane(named, has), FailsWith(kFailure));
    EXPECT_EQ(has, preset);
    EXPECT_THAT(exporter->GetActiveView(named, plane), FailsWith(kFailure));
    EXPECT_THAT(plane, ::testing::Each(kUntouched));
    // A camera without a name has an empty one.
    Edit(capture).camera = &camera;
    EXPECT_THAT(lookThrough(), IsSuccess());
    EXPECT_THAT(name, Reads(L""));
  }
}

}  // namespace

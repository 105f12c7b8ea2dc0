// Projection, the frames of views, and leaders. Where annotations stand in their views is told for
// models drawn by lot.

#include <cmath>
#include <random>

#include "Matchers.h"
#include "orvo_kernel/geometry.h"

namespace {

using standin::Edit;
using standin::Part;
using ::testing::Each;
using ::testing::ElementsAre;

// Of points off the plane of two oblique axes of any length, in the given order of operations.
TEST(Projection, FindsWhatAPointWasBuiltFrom) {
  Part part;
  const auto exporter = Export(part);
  std::mt19937_64 engine{20240917};
  std::uniform_real_distribution<double> number(-1, 1);
  const auto vector = [&] {
    const double x = number(engine), y = number(engine);
    return QENvector(x, y, number(engine));
  };
  for (int i = 0; i < 4000; ++i) {
    const QENposition origin = QENposition() + 500 * vector();
    const QENvector x = std::pow(10, 3 * number(engine)) * vector();
    const QENvector y = std::sqrt(dot(x, x)) * vector(), off = cross(x, y);
    if (dot(off, off) < 0.01 * dot(x, x) * dot(y, y)) continue;  // nearly parallel
    const double built[] = {4 * number(engine), 4 * number(engine)};
    const double height = number(engine) / std::sqrt(dot(off, off));
    const QENposition point = origin + built[0] * x + built[1] * y + height * off;
    std::array<double, 2> found{};
    ASSERT_THAT(ExporterInsides::InvertPointOnPlane(*exporter, origin, x, y, point, found.data()),
                IsSuccess());
    ASSERT_EQ(found, Projected(origin, x, y, point));
    for (const std::size_t k : {0u, 1u}) ASSERT_NEAR(found[k], built[k], 1e-6) << i;
  }
}

TEST(ViewFrame, IsThatOfThisExportersPlanesAlone) {
  Part part;
  part.Place(part.AddText(part.Face(), L"note"), {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
  const auto exporter = Export(part), other = Export(part);
  KOVAIdentifier foreign, renamed;
  exporter->GetAnnotationView(KOVAIdentifier(), 0, renamed);
  other->GetAnnotationView(KOVAIdentifier(), 0, foreign);
  renamed.SetNativeObject(foreign.GetNativeObject());
  for (const KOVAIdentifier& view : {foreign, renamed}) {
    Untouched<float, 9> frame;
    EXPECT_THAT(exporter->GetViewCoordinateSystem(view, frame), FailsWith(kFailure));
    EXPECT_THAT(frame, Each(kUntouched));
  }
}

// A failed look at the mark makes a callout any other dimension, whatever it found.
TEST(Callouts, AreNoneWhenTheKernelFails) {
  Part part;
  auto& callout = part.MakeCallout(callout_feature_depth, 1);
  part.GetDocument().Add(callout);
  part.Place(callout, {10, 20, 5}, {0, 1, 0}, {1, 0, 0});
  part.Place(part.AddDimension({&callout}, dim_linear, dim_sub_width, 1), {0, 0, 1}, {2, 0, 0},
             {0, 0, 1});
  const auto exporter = Export(part);
  const auto expectPosition = [&](float x, float y) {
    Untouched<float, 2> position;
    KOVAPMIOrientation orientation = OrientationVertical;
    float angle = 0;
    EXPECT_THAT(
        exporter->GetAnnotationPositionInView(Naming(&callout), position, orientation, angle),
        IsSuccess());
    EXPECT_THAT(position, ElementsAre(x, y));
  };
  expectPosition(5, 10);
  const auto fault = standin::Fault::KernelCall(1, 42, true);
  expectPosition(0, 0);
  EXPECT_TRUE(fault.HasFired());
}

TEST(Leaders, AreNamedInOrderAndGiveTailThenHeadInModelCoordinates) {
  Part part;
  auto& text = part.AddText(part.Face(), L"text");
  auto& display = part.Place(text, {7, 8, 9}, {0, 2, 0}, {1, 1, 0});
  ENTITY* leaders[] = {nullptr, &part.AddLeader(display, {1, 2, 3}, {4, 5, 6}),
                       &part.AddLeader(display, {1, 2, 3}, {4, 5, 6}), nullptr};
  const auto exporter = Export(part);
  int count = kUntouched;
  EXPECT_THAT(exporter->GetAnnotationLeaderCount(Naming(&text), count), IsSuccess());
  EXPECT_EQ(count, 2);
  part.GetDocument().SetAvailable(false);
  const auto idle = Export(part);  // not initialised, which points do not ask for
  for (const int at : {-1, 0, 1, 2}) {
    KOVAIdentifier leader = SentinelIdentifier();
    EXPECT_THAT(exporter->GetAnnotationLeader(Naming(&text), at, leader),
                HasCode(leaders[at + 1] != nullptr ? 0 : kFailure));
    EXPECT_THAT(leader, Became(leaders[at + 1]));
    for (const int index : {0, 1, 2, -1}) {
      Untouched<double, 3> point;
      if (leaders[at + 1] == nullptr) leader = KOVAIdentifier();
      const bool there = leaders[at + 1] != nullptr;
      EXPECT_THAT(idle->GetLeader3DPoint(leader, index, point), HasCode(there ? 0 : kFailure));
      EXPECT_THAT(idle->GetLeaderPointCount(leader, count), HasCode(there ? 0 : kFailure));
      const double first = !there ? kUntouched : index == 0 ? 1 : 4;
      EXPECT_THAT(point, ElementsAre(first, there ? first + 1 : kUntouched,
                                     there ? first + 2 : kUntouched));
    }
  }
  // A leader by name alone.
  KOVAIdentifier nameless;
  nameless.SetTypeName("KOVAOrvoPMILeader");
  Untouched<double, 3> point;
  EXPECT_THAT(exporter->GetLeader3DPoint(nameless, 0, point), FailsWith(kFailure));
  EXPECT_THAT(point, Each(kUntouched));
}

}  // namespace

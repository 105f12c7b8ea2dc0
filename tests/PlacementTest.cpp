// Plane frames, projection and leaders. Where annotations stand in their views is told for models
// drawn by lot.

#include <algorithm>
#include <cmath>
#include <random>

#include "Matchers.h"
#include "orvo_kernel/geometry.h"

namespace {

using standin::Edit;
using standin::Part;
using ::testing::Each;
using ::testing::ElementsAre;

struct Frame {
  QENposition origin;
  QENvector normal, x, y;
};
std::vector<double> Numbers(const Frame& f) {
  return {f.origin.x(), f.origin.y(), f.origin.z(), f.normal.x(), f.normal.y(), f.normal.z(),
          f.x.x(),      f.x.y(),      f.x.z(),      f.y.x(),      f.y.y(),      f.y.z()};
}
KOVAResult FrameOf(KOVAOrvoPMIExporter& exporter, const PLANE& surface, Frame& f) {
  return ExporterInsides::GetPlaneParameters(exporter, surface, f.origin, f.normal, f.x, f.y);
}
// The projection from an orthogonal basis of the axes' plane, in a wider format.
std::array<long double, 2> FromOrthogonalBasis(const Frame& frame, const QENposition& point) {
  const auto wide = [](const QENvector& a, const QENvector& b) {
    const long double x = a.x(), y = a.y(), z = a.z();
    return x * b.x() + y * b.y() + z * b.z();
  };
  const QENvector d = point - frame.origin;
  const long double first = wide(frame.x, d) / wide(frame.x, frame.x);
  const long double skew = wide(frame.x, frame.y) / wide(frame.x, frame.x);
  const long double v = (wide(frame.y, d) - skew * wide(frame.x, d)) /
                        (wide(frame.y, frame.y) - skew * wide(frame.x, frame.y));
  return {first - v * skew, v};
}

// Seeded random planes and frames with axes of any length from 1e-3 to 1e3. The axes of an oblique
// frame lean up to 0.1 rad towards each other; the u direction of a plane leans up to 0.005 rad
// towards the normal, which makes for a short y axis.
struct Random {
  double Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine);
  }
  double Power(double low, double high) { return std::pow(10, Between(low, high)); }
  double Sign() { return Between(-1, 1) < 0 ? -1 : 1; }
  QENposition Position() { return {Between(-500, 500), Between(-500, 500), Between(-500, 500)}; }
  QENunit_vector Direction() { return {Between(-1, 1), Between(-1, 1), Between(-1, 1)}; }
  QENvector Leaning(const QENunit_vector& direction, double least, double length) {
    const QENvector aside = cross(direction, Direction());
    const double angle = Power(std::log10(least), std::log10(std::acos(0)));
    return length * (Sign() * std::cos(angle) * direction +
                     std::sin(angle) / std::sqrt(aside.length_squared()) * aside);
  }
  Frame Oblique() {
    const QENunit_vector direction = Direction();
    const double length = Power(-3, 3);
    return {Position(), {}, length * direction, Leaning(direction, 0.1, length * Between(0.3, 3))};
  }
  plane Plane() {
    const QENunit_vector normal = Direction();
    return {Position(), normal, Leaning(normal, 0.005, Power(-3, 3))};
  }
  // Off the axes' plane, and nowhere near an axis.
  QENposition Point(const Frame& f) {
    const QENvector off = cross(f.x, f.y);
    const double height = Between(-2, 2) * std::sqrt(dot(f.x, f.x) / dot(off, off));
    return f.origin + Sign() * Between(0.25, 4) * f.x + Sign() * Between(0.25, 4) * f.y +
           height * off;
  }

  std::mt19937_64 engine{20240917};
};

TEST(Projection, AgreesWithAnOrthogonalBasisAndKeepsItsOrderOfOperations) {
  Part part;
  const auto exporter = Export(part);
  Random random;
  long double worst = 0;
  for (int i = 0; i < 4000; ++i) {
    Frame frame = random.Oblique();
    if (i % 2 != 0) {
      const plane surface = random.Plane();
      ASSERT_THAT(FrameOf(*exporter, PLANE(surface), frame), IsSuccess());
      ASSERT_EQ(Numbers(frame), Numbers({surface.root_point, surface.normal, surface.u_direction,
                                         cross(surface.normal, surface.u_direction)}));
    }
    const QENposition point = random.Point(frame);
    std::array<double, 2> uv{};
    ASSERT_THAT(ExporterInsides::InvertPointOnPlane(*exporter, frame.origin, frame.x, frame.y,
                                                    point, uv.data()),
                IsSuccess());
    ASSERT_EQ(uv, Projected(frame.origin, frame.x, frame.y, point)) << "frame " << i;
    const auto wide = FromOrthogonalBasis(frame, point);
    for (const std::size_t k : {0u, 1u})
      worst = std::max(worst, std::abs((uv[k] - wide[k]) / wide[k]));
  }
  EXPECT_LE(worst, 1e-12L);
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

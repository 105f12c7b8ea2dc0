// Where annotations stand in their views: plane frames, projection, positions, depths, leaders and
// the points of dimensions.

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
  QENposition origin{77, 77, 77};
  QENvector normal{77, 77, 77}, x{77, 77, 77}, y{77, 77, 77};
};
std::vector<double> Numbers(const Frame& f) {
  return {f.origin.x(), f.origin.y(), f.origin.z(), f.normal.x(), f.normal.y(), f.normal.z(),
          f.x.x(),      f.x.y(),      f.x.z(),      f.y.x(),      f.y.y(),      f.y.z()};
}
KOVAResult FrameOf(KOVAOrvoPMIExporter& exporter, const PLANE& surface, Frame& f) {
  return ExporterInsides::GetPlaneParameters(exporter, surface, f.origin, f.normal, f.x, f.y);
}
KOVAResult FrameOf(KOVAOrvoPMIExporter& exporter, ENTITY* annotation, Frame& f) {
  return ExporterInsides::GetAnnotPlaneParameters(exporter, Naming(annotation), f.origin, f.normal,
                                                  f.x, f.y);
}

// The projection in the order of operations that callers rely on.
std::array<double, 2> InOrder(const Frame& frame, const QENposition& point) {
  const QENvector d = point - frame.origin;
  const double a = dot(frame.x, d), b = dot(frame.y, d);
  const double xx = dot(frame.x, frame.x), yy = dot(frame.y, frame.y), xy = dot(frame.x, frame.y);
  const double det = yy * xx - xy * xy;
  return {(yy * a - xy * b) / det, (xx * b - xy * a) / det};
}
std::vector<float> Narrowed(const Frame& frame, std::initializer_list<QENposition> points) {
  std::vector<float> narrowed;
  for (const QENposition& point : points) {
    for (const double value : InOrder(frame, point)) narrowed.push_back(static_cast<float>(value));
  }
  return narrowed;
}

// The same from an orthogonal basis of the axes' plane, in a wider format.
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
    ASSERT_EQ(uv, InOrder(frame, point)) << "frame " << i;
    const auto wide = FromOrthogonalBasis(frame, point);
    for (const std::size_t k : {0u, 1u})
      worst = std::max(worst, std::abs((uv[k] - wide[k]) / wide[k]));
  }
  EXPECT_LE(worst, 1e-12L);
}

TEST(AnnotationFrame, IsThatOfTheFirstViewWithAPlaneInTheMapsOrder) {
  Part part;
  auto& face = part.Face();
  ENTITY* const annotations[] = {&part.AddText(face, L"a"), &part.AddText(face, L"b")};
  const auto exporter = Export(part);
  Frame frame;
  // In the null view alone, and in no view.
  for (ENTITY* entity : {annotations[0], annotations[1], static_cast<ENTITY*>(&face)}) {
    EXPECT_THAT(FrameOf(*exporter, entity, frame), FailsWith(kFailure));
    EXPECT_EQ(Numbers(frame), Numbers(Frame()));
  }
  for (int i = 0; i < 9; ++i) {
    auto& surface = part.Make<PLANE>(plane({1.0 * i, 2, 3}, {0, 0, 1}, {1, 0, 0}));
    if (i % 3 == 0) ExporterInsides::Register(*exporter, Naming(&surface), Naming(annotations[0]));
    ExporterInsides::Register(*exporter, Naming(&surface), Naming(annotations[1]));
    for (ENTITY* entity : annotations) {
      Frame first;
      ExporterInsides::Views(*exporter).Walk([&](const KOVAIdentifier& view, const auto& list) {
        if (view.GetNativeObject() == nullptr ||
            std::find(list.begin(), list.end(), Naming(entity)) == list.end()) {
          return true;
        }
        FrameOf(*exporter, *static_cast<PLANE*>(view.GetNativeObject()), first);
        return false;
      });
      EXPECT_THAT(FrameOf(*exporter, entity, frame), IsSuccess());
      EXPECT_EQ(Numbers(frame), Numbers(first)) << i;
    }
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
    float frame[9] = {77, 77, 77, 77, 77, 77, 77, 77, 77};
    EXPECT_THAT(exporter->GetViewCoordinateSystem(view, frame), FailsWith(kFailure));
    EXPECT_THAT(frame, Each(77));
  }
}

// Position and depth; both codes have to be the same.
std::vector<float> Placed(KOVAOrvoPMIExporter& exporter, ENTITY& annotation, long code = 0) {
  std::vector<float> placed = {77, 77, 77};
  KOVAPMIOrientation orientation = OrientationVertical;
  float angle = 77;
  EXPECT_THAT(
      exporter.GetAnnotationPositionInView(Naming(&annotation), placed.data(), orientation, angle),
      HasCode(code));
  EXPECT_THAT(exporter.GetAnnotationZDepth(Naming(&annotation), placed[2]), HasCode(code));
  return placed;
}
// The line's two points, then the three of the extension lines.
std::vector<float> Lines(KOVAOrvoPMIExporter& exporter, ENTITY& dimension, long lineCode = 0,
                         long extensionCode = 0) {
  std::vector<float> points(10, 77);
  float* const p = points.data();
  KOVAPMIArrowSymbol arrow = ArrowSymbolDot;
  bool hasThird = false;
  EXPECT_THAT(exporter.GetDimensionLine(Naming(&dimension), arrow, p, arrow, p + 2, hasThird, p),
              HasCode(lineCode));
  EXPECT_THAT(exporter.GetDimensionExtensionLines(Naming(&dimension), p + 4, p + 6, p + 8),
              HasCode(extensionCode));
  return points;
}

TEST(Placement, IsTheNarrowedProjectionInRandomViews) {
  Part part;
  Random random;
  std::vector<KOVAPMI_DIMENSION*> dimensions;
  for (std::size_t i = 0; i < 300; ++i) {
    const plane at = random.Plane();
    dimensions.push_back(&part.AddDimension({}, dim_linear, dim_sub_width, 1));
    part.Place(*dimensions[i], at.root_point, at.u_direction, random.Power(-3, 3) * at.normal);
  }
  const auto exporter = Export(part);
  for (KOVAPMI_DIMENSION* dimension : dimensions) {
    EXPECT_THAT(Placed(*exporter, *dimension), Each(0));
    Frame frame;
    ASSERT_THAT(FrameOf(*exporter, dimension, frame), IsSuccess());
    QENposition p[6] = {frame.origin};
    std::generate(p + 1, p + 5, [&] { return random.Point(frame); });
    Edit(*dimension).line = {p[0], p[1]};
    Edit(*dimension).extension_lines = {p[2], p[3], p[4]};
    EXPECT_EQ(Lines(*exporter, *dimension), Narrowed(frame, {p[0], p[1], p[2], p[3], p[4]}));
    // Off the plane, and in it: then the depth is what rounding leaves.
    p[5] = frame.origin + 1.3 * frame.x + 0.7 * frame.y;
    for (const QENposition& at : {p[4], p[5]}) {
      Edit(*dimension->get_display_properties()).point = at;
      const auto [u, v] = InOrder(frame, at);
      const QENvector away = at - (frame.origin + u * frame.x + v * frame.y);
      std::vector<float> expected = Narrowed(frame, {at});
      expected.push_back(static_cast<float>(std::sqrt(dot(away, away))));
      EXPECT_EQ(Placed(*exporter, *dimension), expected);
    }
  }
}

TEST(Placement, FailsWithoutPlaneOrDisplayButGivesLinesInModelXAndY) {
  Part part;
  auto& face = part.Face();
  auto& dimension = part.AddDimension({}, dim_linear, dim_sub_width, 40);
  part.Place(dimension, {1, 2, 3}, {0, 0, 4}, {0, 0, 1});
  auto& damaged = part.Make<ATTRIB_KOVAPMI_DATUM>(&face);
  Edit(damaged).datum = &face;
  ENTITY* const unplaced[] = {&dimension, &damaged, &part.AddText(face, L"no display"),
                              &part.Make<ATTRIB_KOVAPMI_DATUM_TARGET>(&face)};
  const auto exporter = Export(part);
  for (ENTITY* entity : unplaced) {
    EXPECT_THAT(Placed(*exporter, *entity, kFailure), Each(77));
    int count = 77;
    KOVAIdentifier leader = SentinelIdentifier();
    const bool drawn = entity == &dimension;
    EXPECT_THAT(exporter->GetAnnotationLeaderCount(Naming(entity), count),
                HasCode(drawn ? 0 : kFailure));
    EXPECT_EQ(count, drawn ? 0 : 77);
    EXPECT_THAT(exporter->GetAnnotationLeader(Naming(entity), 0, leader), FailsWith(kFailure));
    EXPECT_THAT(leader, IsSentinel());
  }
  EXPECT_THAT(Lines(*exporter, dimension, kFailure, kFailure), Each(77));
  Edit(dimension).line = {{0.1, 2, 3}, {4, 5, 6}};
  EXPECT_THAT(Lines(*exporter, dimension, 0, kFailure),
              ElementsAre(0.1F, 2, 4, 5, 77, 77, 77, 77, 77, 77));
  Edit(dimension).line.clear();
  Edit(dimension).extension_lines = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  EXPECT_THAT(Lines(*exporter, dimension, kFailure, 0),
              ElementsAre(77, 77, 77, 77, 1, 2, 4, 5, 7, 8));
}

TEST(Callouts, ArePlacedInTheirLastDimensionsViewWithDepthAndLinesInTheirOwn) {
  Part part;
  std::vector<ENTITY*> members;
  // Two callouts, a dimension among the members that is none, and a callout of no dimension.
  for (const bool marked : {true, true, false, true}) {
    auto& dimension = part.AddDimension({}, dim_linear, dim_sub_width, 1);
    if (marked) part.Integer(dimension, "QENATTRIB_COANNOT_TYPE", callout_feature_depth);
    part.Place(dimension, {10, 20, 5}, {0, 1, 0}, {1, 0, 0});
    Edit(dimension).line = {{10, 20, 5}, {10, 21, 5}};
    members.push_back(&dimension);
  }
  std::vector<KOVAPMI_DIMENSION*> dimensions;
  for (int i = 0; i < 6; ++i) {
    auto& owner =
        part.AddDimension({members[0], members[1], members[2]}, dim_linear, dim_sub_width, 1);
    part.Place(owner, {0.0, 0, 1.0 + i}, {1.0 + i, 0, 0}, {0, 0, 1});
  }
  const auto exporter = Export(part);
  ENTITY* last = nullptr;
  ExporterInsides::Callouts(*exporter).Walk([&](const KOVAIdentifier& dimension, const auto&) {
    last = static_cast<ENTITY*>(dimension.GetNativeObject());
    return true;
  });
  Frame frame;
  ASSERT_THAT(FrameOf(*exporter, last, frame), IsSuccess());
  std::vector<float> expected = Narrowed(frame, {{10, 20, 5}});
  expected.push_back(0);
  for (const std::size_t callout : {0u, 1u})
    EXPECT_EQ(Placed(*exporter, *members[callout]), expected);
  for (ENTITY* other : {members[2], members[3], last}) {
    EXPECT_THAT(Placed(*exporter, *other), Each(0));
  }
  EXPECT_THAT(Lines(*exporter, *members[0], 0, kFailure),
              ElementsAre(0, 0, 1, 0, 77, 77, 77, 77, 77, 77));
  // A failed look at the mark makes it any other dimension, whatever it found.
  const auto fault = standin::Fault::KernelCall(1, 42, true);
  EXPECT_THAT(Placed(*exporter, *members[0]), Each(0));
  EXPECT_TRUE(fault.HasFired());
}

TEST(DatumTargets, ArePlacedInTheViewOfTheDatumTheyWereLastReachedFrom) {
  Part part;
  auto& face = part.Face();
  auto &a = part.AddDatum(face, L"A"), &b = part.AddDatum(face, L"B");
  auto& attribute = part.AddDatumTarget(face, L"A1", &a);
  auto& target = standin::TargetOf(attribute);
  Edit(standin::DatumOf(b)).targets.push_back(&target);
  part.Place(standin::DatumOf(a), {0, 0, 0}, {1, 0, 0}, {0, 0, 1});
  part.Place(standin::DatumOf(b), {1, 1, 1}, {2, 0, 0}, {0, 0, 1});
  part.Place(target, {11, 21, 5}, {0, 1, 0}, {1, 0, 0});
  const auto exporter = Export(part);
  EXPECT_THAT(Placed(*exporter, target, kFailure), Each(77));
  const std::vector<float> inA = {11, 21, 5}, inB = {5, 10, 4}, nowhere = {77, 77, 77};
  const struct {
    ENTITY* from;
    unsigned index;
    const std::vector<float>& expected;
  } cases[] = {{&a, 0, inA}, {&b, 0, inB},
               {&b, 1, inB}, {&a, 0, inA},
               {&b, 1, inA}, {&standin::DatumOf(b), 0, nowhere}};  // a datum itself is in no view
  for (const auto& reached : cases) {
    unsigned index = reached.index;
    KOVAIdentifier handedOut;
    exporter->GetDatumTargetAt(Naming(reached.from), index, handedOut);
    EXPECT_EQ(Placed(*exporter, target, &reached.expected == &nowhere ? kFailure : 0),
              reached.expected);
    // The attribute that carries it stays in its own view.
    EXPECT_THAT(Placed(*exporter, attribute), Each(0));
  }
}

TEST(Leaders, AreNamedInOrderAndGiveTailThenHeadInModelCoordinates) {
  Part part;
  auto& text = part.AddText(part.Face(), L"text");
  auto& display = part.Place(text, {7, 8, 9}, {0, 2, 0}, {1, 1, 0});
  ENTITY* leaders[] = {nullptr, &part.AddLeader(display, {1, 2, 3}, {4, 5, 6}),
                       &part.AddLeader(display, {1, 2, 3}, {4, 5, 6}), nullptr};
  const auto exporter = Export(part);
  int count = 77;
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
      double point[3] = {77, 77, 77};
      if (leaders[at + 1] == nullptr) leader = KOVAIdentifier();
      const bool there = leaders[at + 1] != nullptr;
      EXPECT_THAT(idle->GetLeader3DPoint(leader, index, point), HasCode(there ? 0 : kFailure));
      EXPECT_THAT(idle->GetLeaderPointCount(leader, count), HasCode(there ? 0 : kFailure));
      const double first = !there ? 77 : index == 0 ? 1 : 4;
      EXPECT_THAT(point, ElementsAre(first, there ? first + 1 : 77, there ? first + 2 : 77));
    }
  }
  // A leader by name alone.
  KOVAIdentifier nameless;
  nameless.SetTypeName("KOVAOrvoPMILeader");
  double point[3] = {77, 77, 77};
  EXPECT_THAT(exporter->GetLeader3DPoint(nameless, 0, point), FailsWith(kFailure));
  EXPECT_THAT(point, Each(77));
}

}  // namespace

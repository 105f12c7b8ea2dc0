// The drawing beside the model: curves, faces in triangles, and both formats' shapes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <set>

#include "HostDocuments.h"
#include "model/Shape.h"
#include "readers/step/StepReader.h"

namespace {

using geometry::Curve;
using geometry::Mesh;
using geometry::Undrawable;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr double kPi = 3.14159265358979323846;

double Length(const QENvector& vector) { return std::sqrt(vector.length_squared()); }

std::string WhyUndrawable(const std::function<void()>& work) {
  try {
    work();
  } catch (const Undrawable& problem) {
    return problem.what();
  }
  return "";
}

std::vector<QENposition> Points(const Curve& curve, double tolerance) {
  geometry::Budget work(100'000'000);
  return Sample(curve, tolerance, work);
}

// --- Curves --------------------------------------------------------------------------------------

// A quarter of the circle of radius 2, as weighted control points.
const geometry::Nurbs kQuarter{
    3, {0, 0, 0, 1, 1, 1}, {{2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, {1, std::sqrt(0.5), 1}};

TEST(HostShape, CurvesAreSampledWithinTheTolerance) {
  constexpr double kTolerance = 0.001;
  const QENposition o;
  const auto offCircle = [](const QENposition& p) { return std::hypot(p.x(), p.y()) - 2; };
  const auto offParabola = [](const QENposition& p) { return p.y() - p.x() * p.x(); };
  const auto square = [](double t) { return t * t; };
  const auto same = [](double t) { return t; };
  const struct {
    const char* name;
    Curve curve;
    QENposition begin, end;
    std::function<double(const QENposition&)> off;  // how far a point is from the curve, about
  } cases[] = {{"line",
                geometry::Polyline({{0, 0, 0}, {1, 1, 0}}),
                {0, 0, 0},
                {1, 1, 0},
                [](const QENposition& p) { return p.x() - p.y(); }},
               {"circle",
                geometry::Arc(o, {2, 0, 0}, {0, 2, 0}, 0, 2 * kPi),
                {2, 0, 0},
                {2, 0, 0},
                offCircle},
               {"arc",
                geometry::Arc(o, {2, 0, 0}, {0, 2, 0}, kPi / 2, kPi),
                {0, 2, 0},
                {-2, 0, 0},
                offCircle},
               {"turned",
                geometry::Reversed(geometry::Arc(o, {2, 0, 0}, {0, 2, 0}, kPi / 2, kPi)),
                {-2, 0, 0},
                {0, 2, 0},
                offCircle},
               {"ellipse",
                geometry::Arc(o, {4, 0, 0}, {0, 1, 0}, 0, kPi),
                {4, 0, 0},
                {-4, 0, 0},
                [](const QENposition& p) { return std::hypot(p.x() / 4, p.y()) - 1; }},
               {"parabola",
                geometry::Conic(o, {0, 1, 0}, {1, 0, 0}, -1, 2, square, same),
                {-1, 1, 0},
                {2, 4, 0},
                offParabola},
               {"rational", geometry::BSpline(kQuarter), {2, 0, 0}, {0, 2, 0}, offCircle},
               {"part",
                geometry::BSpline(kQuarter, 0.5, 1),
                {std::sqrt(2), std::sqrt(2), 0},
                {0, 2, 0},
                offCircle},
               {"polynomials",
                geometry::Polynomials(
                    {0, 1, 3}, {3, 3},
                    {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 1, 0}}, false),
                {0, 0, 0},
                {3, 9, 0},
                offParabola},
               {"normalized",
                geometry::Polynomials({0, 2}, {3}, {{0, 0, 0}, {3, 0, 0}, {0, 9, 0}}, true),
                {0, 0, 0},
                {3, 9, 0},
                offParabola}};
  for (const auto& test : cases) {
    const std::vector<QENposition> points = Points(test.curve, kTolerance);
    EXPECT_LT(Length(points.front() - test.begin), 1e-12) << test.name;
    EXPECT_LT(Length(points.back() - test.end), 1e-12) << test.name;
    for (std::size_t i = 1; i < points.size(); ++i) {
      for (const double part : {0.25, 0.5, 0.75}) {
        const QENposition on = points[i - 1] + part * (points[i] - points[i - 1]);
        // The measures are steeper than distances by less than ten.
        ASSERT_LT(std::abs(test.off(on)), 10 * kTolerance) << test.name << " " << i;
      }
      ASSERT_LT(std::abs(test.off(points[i])), 1e-9) << test.name << " " << i;
    }
    EXPECT_LT(points.size(), 200U) << test.name;
  }
}

TEST(HostShape, WhatIsNoCurveOrTooCostlyIsRefused) {
  const auto nurbs = [](const std::function<void(geometry::Nurbs&)>& change) {
    return [change] {
      geometry::Nurbs changed = kQuarter;
      change(changed);
      Points(geometry::BSpline(changed), 0.001);
    };
  };
  const auto arc = [](double from, double to, double radius) {
    return [=] { Points(geometry::Arc({}, {radius, 0, 0}, {0, 1, 0}, from, to), 0.001); };
  };
  const auto wave = [] {
    const auto sine = [](double t) { return std::sin(1e6 * t); };
    const auto same = [](double t) { return t; };
    Points(geometry::Conic({}, {0, 1, 0}, {1, 0, 0}, 0, 100, sine, same), 1e-5);
  };
  const std::pair<std::function<void()>, const char*> cases[] = {
      {nurbs([](auto& n) { n.knots[1] = -1; }), "ascend"},
      {nurbs([](auto& n) { n.knots[1] = std::nan(""); }), "ascend"},
      {nurbs([](auto& n) { n.knots = {1, 1, 1, 1, 1, 1}; }), "ascend"},
      {nurbs([](auto& n) { n.knots.pop_back(); }), "do not match"},
      {nurbs([](auto& n) { n.order = 100; }), "order"},
      {nurbs([](auto& n) { n.weights[1] = 0; }), "weights"},
      {nurbs([](auto& n) {
         n.points[1] = {1e308, 1e308, 0}, n.weights[1] = 1e10;
       }),
       "far"},
      {arc(0, 1e6, 1), "turn"},
      {arc(1, 1, 1), "ascend"},
      {arc(0, std::nan(""), 1), "ascend"},
      {wave, "too many points"},
      {[] {
         geometry::Polyline({{0, 0, 0}});
       },
       "two points"},
      {[] {
         geometry::Polynomials({0, 1}, {3}, {{0, 0, 0}}, false);
       },
       "match"}};
  for (const auto& [work, says] : cases) EXPECT_THAT(WhyUndrawable(work), HasSubstr(says));
}

// --- Faces ---------------------------------------------------------------------------------------

using Loop = std::vector<QENposition>;

// Points on a circle round z, counter-clockwise seen from above, or clockwise.
Loop Circle(double radius, double z, int count, bool isClockwise = false, double x = 0) {
  Loop loop;
  for (int i = 0; i < count; ++i) {
    const double angle = (isClockwise ? -i : i) * 2 * kPi / count;
    loop.emplace_back(x + radius * std::cos(angle), radius * std::sin(angle), z);
  }
  return loop;
}

struct Totals {
  double area = 0;
  double volume = 0;  // between the triangles and the origin
  long openEdges = 0;
};

template <typename Point>
QENposition PositionOf(const Point& p) {
  if constexpr (std::is_same_v<Point, QENposition>) {
    return p;
  } else {
    return {p[0], p[1], p[2]};
  }
}

// Adds triangles to the totals; `edges` counts the ways along each of their edges, by place.
using Ways = std::map<std::pair<DrawnPoint, DrawnPoint>, int>;
template <typename Face>
void Add(const Face& face, Totals& totals, Ways& ways) {
  for (const auto& triangle : face.triangles) {
    QENposition p[3];
    for (std::size_t i = 0; i < 3; ++i) p[i] = PositionOf(face.points.at(triangle[i]));
    const QENvector twice = cross(p[1] - p[0], p[2] - p[0]);
    totals.area += Length(twice) / 2;
    totals.volume += dot(p[0] - QENposition(), twice) / 6;
    for (int i = 0; i < 3; ++i) {
      const QENposition &a = p[i], &b = p[(i + 1) % 3];
      ++ways[{{a.x(), a.y(), a.z()}, {b.x(), b.y(), b.z()}}];
    }
  }
}

// How many edges have no neighbour, or several.
long OpenEdges(const Ways& ways) {
  return std::count_if(ways.begin(), ways.end(), [&](const auto& way) {
    const auto back = ways.find({way.first.second, way.first.first});
    return way.second != 1 || back == ways.end() || back->second != 1;
  });
}

Loop Joined(Loop a, const Loop& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST(HostShape, FacesOfEverySurfaceHaveTheirAreaAndFaceOutwards) {
  const geometry::Frame frame;
  const auto half = [](double z, bool isBack) {
    Loop loop;
    for (int i = 0; i <= 16; ++i) {
      const double angle = (isBack ? 16 - i : i) * kPi / 16;
      loop.emplace_back(std::cos(angle), std::sin(angle), z);
    }
    return loop;
  };
  // A hole in a cylinder of radius 1 where the angle jumps.
  Loop hole, octant;
  for (int i = 0; i < 12; ++i) {
    const double angle = -i * kPi / 6;
    const double around = kPi + 0.4 * std::cos(angle);
    hole.emplace_back(std::cos(around), std::sin(around), 1 + 0.4 * std::sin(angle));
  }
  const QENvector corners[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  for (int side = 0; side < 3; ++side) {
    for (int i = 0; i < 8; ++i) {
      const double angle = i * kPi / 16;
      octant.push_back(QENposition() + (std::cos(angle) * corners[side] +
                                        std::sin(angle) * corners[(side + 1) % 3]));
    }
  }
  Loop seam = Circle(1, 0, 32);  // round, up the seam, back round and down again
  seam.push_back(seam.front());
  seam = Joined(seam, Circle(1, 2, 32, true));
  seam.emplace_back(1, 0, 2);
  const Curve line = geometry::Polyline({{1, 0, 0}, {1, 0, 2}});
  const Curve arc = geometry::Arc({}, {1, 0, 0}, {0, 1, 0}, 0, kPi);
  const geometry::NurbsSurface saddle{
      2, 2, {0, 0, 1, 1}, {0, 0, 1, 1}, {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 1}}, {}};
  const Loop square{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
  const auto up = [](const QENposition&) { return QENvector(0, 0, 1); };
  const auto fromAxis = [](const QENposition& p) { return QENvector(p.x(), p.y(), 0); };
  const auto fromMiddle = [](const QENposition& p) { return p - QENposition(); };
  const auto fromTube = [](const QENposition& p) {
    const double r = std::hypot(p.x(), p.y());
    return p - QENposition(3 * p.x() / r, 3 * p.y() / r, 0);
  };
  const double cap = 2 * kPi * (1 - 0.8);  // of a sphere, above z = 0.8
  const struct {
    const char* name;
    geometry::SurfacePointer surface;
    std::vector<Loop> loops;
    double area;
    std::function<QENvector(const QENposition&)> outwards;
  } cases[] = {
      {"square with holes",
       geometry::Plane(frame),
       {square, {{1, 1, 0}, {1, 2, 0}, {2, 2, 0}, {2, 1, 0}}, {{3, 1, 0}, {3, 3, 0}, {3.5, 2, 0}}},
       14.5,
       up},
      {"round a spiral",
       geometry::Plane(frame),
       {{{0, 0, 0},
         {5, 0, 0},
         {5, 5, 0},
         {1, 5, 0},
         {1, 2, 0},
         {3, 2, 0},
         {3, 3, 0},
         {2, 3, 0},
         {2, 4, 0},
         {4, 4, 0},
         {4, 1, 0},
         {0, 1, 0}}},
       5 + 4 + 3 + 2 + 1,
       up},
      {"cylinder",
       geometry::Cylinder(frame, 1),
       {Circle(1, 0, 32), Circle(1, 2, 40, true)},
       4 * kPi,
       fromAxis},
      {"cylinder with a seam", geometry::Cylinder(frame, 1), {seam}, 4 * kPi, fromAxis},
      {"half a cylinder",
       geometry::Cylinder(frame, 1),
       {Joined(half(0, false), half(2, true))},
       2 * kPi,
       fromAxis},
      {"cylinder with a hole",
       geometry::Cylinder(frame, 1),
       {Circle(1, 0, 32), hole, Circle(1, 2, 32, true)},
       4 * kPi - 0.16 * kPi,
       fromAxis},
      {"frustum",
       geometry::Cone(frame, 2, std::atan(-0.5)),
       {Circle(2, 0, 32), Circle(1, 2, 32, true)},
       kPi * 3 * std::sqrt(5),
       fromAxis},
      {"cone to its tip",
       geometry::Cone(frame, 2, std::atan(-0.5)),
       {Circle(2, 0, 32)},
       kPi * 2 * std::sqrt(20),
       fromAxis},
      {"octant", geometry::Sphere({}, 1), {octant}, kPi / 2, fromMiddle},
      {"cap", geometry::Sphere({}, 1), {Circle(0.6, 0.8, 32)}, cap, fromMiddle},
      {"all but a cap",
       geometry::Sphere({}, 1),
       {Circle(0.6, 0.8, 32, true)},
       4 * kPi - cap,
       fromMiddle},
      {"belt",
       geometry::Sphere({}, 1),
       {Circle(0.6, -0.8, 32), Circle(0.6, 0.8, 32, true)},
       4 * kPi - 2 * cap,
       fromMiddle},
      {"sphere", geometry::Sphere({}, 1), {}, 4 * kPi, fromMiddle},
      {"torus", geometry::Torus(frame, 3, 1), {}, 4 * kPi * kPi * 3, fromTube},
      {"outer half of a torus",
       geometry::Torus(frame, 3, 1),
       {Circle(3, -1, 96), Circle(3, 1, 96, true)},
       2 * kPi * (3 * kPi + 2),
       fromTube},
      {"inner half of a torus",
       geometry::Torus(frame, 3, 1),
       {Circle(3, 1, 96), Circle(3, -1, 96, true)},
       2 * kPi * (3 * kPi - 2),
       fromTube},
      {"saddle",
       geometry::BSpline(saddle),
       {{{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}},
       1.280789,
       up},
      {"extrusion",
       geometry::Extrusion(arc, {0, 0, 5}),
       {Joined(half(0, false), half(2, true))},
       2 * kPi,
       fromAxis},
      {"revolution",
       geometry::Revolution(line, frame),
       {Circle(1, 0, 32), Circle(1, 2, 32, true)},
       4 * kPi,
       fromAxis}};
  for (const auto& test : cases) {
    geometry::Budget work(100'000'000);
    const Mesh mesh = MeshOf(test.surface, test.loops, 0.005, work);
    Totals totals;
    Ways ways;
    Add(mesh, totals, ways);
    EXPECT_NEAR(totals.area / test.area, 1, 0.01) << test.name;
    long inwards = 0;
    for (const auto& triangle : mesh.triangles) {
      const QENposition &a = mesh.points.at(triangle[0]), &b = mesh.points.at(triangle[1]),
                        &c = mesh.points.at(triangle[2]);
      const QENposition middle = a + 1 / 3.0 * ((b - a) + (c - a));
      inwards += dot(cross(b - a, c - a), test.outwards(middle)) > 0 ? 0 : 1;
    }
    EXPECT_EQ(inwards, 0) << test.name << " of " << mesh.triangles.size();
    // What is open is the outline, as it was given.
    std::size_t outline = 0;
    for (const Loop& loop : test.loops) outline += loop.size();
    if (test.name == std::string("cylinder with a seam")) outline -= 2;
    EXPECT_EQ(OpenEdges(ways), static_cast<long>(outline)) << test.name;
  }
}

TEST(HostShape, FacesThatAreNoneAreRefused) {
  const geometry::Frame frame;
  const std::tuple<geometry::SurfacePointer, std::vector<Loop>, const char*> cases[] = {
      {geometry::Plane(frame), {}, "no outline"},
      {geometry::Plane(frame), {{{0, 0, 0}, {1, 0, 0}}}, "no area"},
      {geometry::Plane(frame), {{{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}}, "crosses itself"},
      {geometry::Plane(frame), {Circle(1, 0, 16), Circle(1, 0, 8, true, 5)}, "outside"},
      {geometry::Plane(frame), {Circle(1, 0, 7000)}, "too many points"},
      {geometry::Plane(frame), {Circle(1, 1, 16)}, "leaves its surface"},
      {geometry::Cylinder(frame, 1), {Circle(1, 0, 16)}, "without an end"},
      {geometry::Cylinder(frame, 1), {Circle(1, 0, 16), Circle(1, 1, 16)}, "same direction"},
      {geometry::Cylinder(frame, 2), {Circle(1, 0, 16), Circle(1, 1, 16, true)}, "leaves"}};
  for (const auto& [surface, loops, says] : cases) {
    geometry::Budget budget(10'000'000);
    const auto work = [&, &s = surface, &l = loops] { MeshOf(s, l, 0.001, budget); };
    EXPECT_THAT(WhyUndrawable(work), HasSubstr(says));
  }
}

// --- Documents -----------------------------------------------------------------------------------

struct Drawn {
  Drawing drawing;
  Model model;
  std::string left;  // what is not in the picture, a line each
};

Drawn Draw(const std::string& text) {
  Drawn drawn;
  drawn.model = IsStep(text) ? ReadStepText(text, "part", &drawn.drawing)
                             : ReadQifText(text, "part", &drawn.drawing);
  for (const SkippedItem& item : drawn.model.skipped) {
    if (item.reason.find("not in the picture") != 0) continue;
    EXPECT_EQ(item.severity, Severity::kIgnored);
    drawn.left += item.kind + " " + item.id + item.reason.substr(18) + "\n";
  }
  return drawn;
}

template <typename Shapes>
std::set<std::string> IdsOf(const Shapes& shapes) {
  std::set<std::string> ids;
  for (const auto& shape : shapes) ids.insert(shape.id);
  return ids;
}

Totals TotalsOf(const Drawing& drawing) {
  Totals totals;
  Ways ways;
  for (const DrawnFace& face : drawing.faces) Add(face, totals, ways);
  totals.openEdges = OpenEdges(ways);
  return totals;
}

TEST(HostShape, BundledModelsAreDrawnWhole) {
  const double bracket = 80 * (120 * 15 + 15 * 55 + 100 - 25 * kPi - 18) -
                         kPi * (17.5 * 17.5 * 15 + 4 * 4.7625 * 4.7625 * 15 + 100 * 12 + 399);
  const double plate = 10 * 50 * (85.7735026918963 + 80) / 2 - 2 * kPi * 16 * 10;
  const std::pair<const char*, double> models[] = {{BUNDLED_MODEL, bracket}, {STEP_MODEL, plate}};
  for (const auto& [path, volume] : models) {
    const std::string text = Read(path);
    const Drawn drawn = Draw(text);
    EXPECT_EQ(drawn.left, "");
    EXPECT_EQ(drawn.drawing.edges.size(), static_cast<std::size_t>(drawn.model.counts.at("edges")));
    EXPECT_EQ(drawn.drawing.faces.size(), static_cast<std::size_t>(drawn.model.counts.at("faces")));
    EXPECT_EQ(drawn.drawing.vertices.size(),
              static_cast<std::size_t>(drawn.model.counts.at("vertices")));
    const Totals totals = TotalsOf(drawn.drawing);
    EXPECT_EQ(totals.openEdges, 0);
    EXPECT_NEAR(totals.volume / volume, 1, 0.001);
    // The edges of a face are drawn, and their points are points of the face.
    std::map<std::string, const DrawnEdge*> edges;
    for (const DrawnEdge& edge : drawn.drawing.edges) edges[edge.id] = &edge;
    std::set<DrawnPoint> ends;
    for (const DrawnEdge& edge : drawn.drawing.edges) {
      ends.insert({edge.points.front(), edge.points.back()});
    }
    for (const DrawnVertex& vertex : drawn.drawing.vertices) {
      EXPECT_EQ(ends.count(vertex.point), 1U) << vertex.id;
    }
    for (const DrawnFace& face : drawn.drawing.faces) {
      const std::set<DrawnPoint> points(face.points.begin(), face.points.end());
      for (const std::string& id : face.edges) {
        for (const DrawnPoint& point : edges.at(id)->points) EXPECT_EQ(points.count(point), 1U);
      }
    }
    // The ids are those of the report.
    std::set<std::string> known = IdsOf(drawn.drawing.edges);
    known.merge(IdsOf(drawn.drawing.faces));
    known.merge(IdsOf(drawn.drawing.vertices));
    for (const AppliedEntityReport& applied : ReportOn(drawn.model).entities) {
      const std::string& kind = applied.entity.kind;
      const bool isDrawn = known.count(*applied.entity.id) != 0;
      EXPECT_EQ(isDrawn, kind != "body") << *applied.entity.id;
    }
  }
}

TEST(HostShape, RealModelsAreDrawnNearlyWhole) {
  const struct {
    const char* file;
    std::size_t edges, faces;  // at least
    double volume;             // of what is visible
  } models[] = {{"nist_ctc_01_asme1_ap242.qif", 318, 117, 14.65e6},
                {"nist_ctc_03_asme1_ap242.qif", 456, 156, 331.3e3},
                {"nist_ftc_08_asme1_ap242.qif", 863, 248, 30.73},
                {"step/nist_ctc_01_asme1_ap242-e1.stp", 318, 117, 14.65e6},
                {"step/nist_ctc_02_asme1_ap242-e2.stp", 1531, 637, 47.12e6},
                {"step/nist_ctc_03_asme1_ap242-e1.stp", 456, 156, 331.3e3},
                {"step/nist_ftc_07_asme1_ap242-e2.stp", 971, 338, 105.27},
                {"step/nist_ftc_08_asme1_ap242-e1.stp", 839, 248, 30.73}};
  for (const auto& model : models) {
    const std::string path = std::string(REAL_MODELS) + "/" + model.file;
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "no real models in " << REAL_MODELS;
    Drawn drawn = Draw(Read(path));
    EXPECT_GE(drawn.drawing.edges.size(), model.edges) << model.file;
    EXPECT_GE(drawn.drawing.faces.size(), model.faces) << model.file;
    // Those of sets of points, too.
    const std::set<std::string> vertices = IdsOf(drawn.drawing.vertices);
    for (const AppliedEntityReport& applied : ReportOn(drawn.model).entities) {
      if (applied.entity.kind != "vertex") continue;
      EXPECT_EQ(vertices.count(*applied.entity.id), 1U) << model.file << *applied.entity.id;
    }
    auto& faces = drawn.drawing.faces;
    faces.erase(std::remove_if(faces.begin(), faces.end(), [](auto& f) { return f.isHidden; }),
                faces.end());
    const Totals totals = TotalsOf(drawn.drawing);
    EXPECT_EQ(totals.openEdges, 0) << model.file;
    EXPECT_NEAR(totals.volume / model.volume, 1, 0.001) << model.file;
  }
}

// Replaces the text from one mark to the end of another.
std::string Without(std::string text, const std::string& from, const std::string& to,
                    const std::string& by) {
  const std::size_t begin = text.find(from);
  EXPECT_NE(begin, std::string::npos) << from;
  return text.replace(begin, text.find(to, begin) + to.size() - begin, by);
}

TEST(HostShape, CurvesOfEveryKindAreReadAndWhatIsNotCostsItsFacesAlone) {
  const std::string qif = Read(BUNDLED_MODEL);
  const std::string step = Read(STEP_MODEL);
  const std::string qifLost =
      "Edge 1501: WHY\nFace 1701: an edge of it is not\nFace 1709: an edge of it is not\n";
  const std::string stepLost =
      "EDGE_CURVE #306: WHY\nADVANCED_FACE #369: an edge of it is not\n"
      "ADVANCED_FACE #395: an edge of it is not\n";
  // What stands for the line of the first edge, and why it is not drawn; empty when it is.
  const std::pair<const char*, const char*> curves[] = {
      {"<Nurbs13Core domain='0 1'><Order>2</Order><Knots count='5'>0 0 0.5 1 1</Knots><CPs "
       "count='3'>0 0 0 60 0 0 120 0 0</CPs></Nurbs13Core>",
       ""},
      {"<Nurbs13Core domain='0 1'><Order>2</Order><Knots count='4'>0 0 1 1</Knots><CPsBinary "
       "count='2' sizeElement='12'>AAAAAAAAAAAAAAAAAADwQgAAAAAAAAAA</CPsBinary></Nurbs13Core>",
       ""},
      {"<Spline13Core domain='0 2' normalized='1'><Knots count='2'>0 2</Knots><Orders count='1'>2"
       "</Orders><Coefficients count='2'>0 0 0 120 0 0</Coefficients></Spline13Core>",
       ""},
      {"<Polyline13Core domain='0 2'><Points count='3'>0 0 0 9 0 0 120 0 0</Points>"
       "</Polyline13Core>",
       ""},
      {"<Segment13Core domain='0.25 0.75'><StartPoint>-60 0 0</StartPoint><EndPoint>180 0 0"
       "</EndPoint></Segment13Core>",
       ""},
      {"<Aggregate13Core domain='0 2'><SubCurves n='2'><SubCurve turned='1'><Segment13Core domain="
       "'0 1'><StartPoint>9 0 0</StartPoint><EndPoint>0 0 0</EndPoint></Segment13Core></SubCurve>"
       "<SubCurve><Segment13Core domain='0 1'><StartPoint>9 0 0</StartPoint><EndPoint>120 0 0"
       "</EndPoint></Segment13Core></SubCurve></SubCurves></Aggregate13Core>",
       ""},
      {"<Segment13Core domain='0 1'><StartPoint>0 0 0</StartPoint><EndPoint>121 0 0</EndPoint>"
       "</Segment13Core>",
       "its curve does not end at its vertices"},
      {"<ArcConic13Core domain='0 1' form='PARABOLA'/>", "a conic arc of its form is not drawn"},
      {"<Nurbs13Core domain='0 1'><Order>2</Order><Knots count='4'>0 0 x 1</Knots></Nurbs13Core>",
       "Knots holds what is no number"}};
  const auto expect = [](const std::string& text, std::string lost, const std::string& why) {
    const Drawn drawn = Draw(text);
    if (why.empty()) lost.clear();
    EXPECT_EQ(drawn.left, lost.empty() ? "" : With(lost, "WHY", why));
    EXPECT_EQ(TotalsOf(drawn.drawing).openEdges == 0, lost.empty());
  };
  for (const auto& [core, why] : curves) {
    const std::string kind(core + 1, std::strchr(core, '1') + 2);
    expect(Without(qif, "<Segment13 id=\"1101\"", "</Segment13>",
                   "<" + kind + " id='1101'>" + core + "</" + kind + ">"),
           qifLost, why);
  }
  const std::pair<const char*, const char*> lines[] = {
      {"POLYLINE('',(#261,#262))", ""},
      {"TRIMMED_CURVE('',#309,(#261),(#262),.T.,.CARTESIAN.)", ""},
      {"B_SPLINE_CURVE_WITH_KNOTS('',1,(#261,#262),.U.,.F.,.F.,(2,2),(0.,1.),.U.)", ""},
      {"(BOUNDED_CURVE()B_SPLINE_CURVE(1,(#261,#262),.U.,.F.,.F.)B_SPLINE_CURVE_WITH_KNOTS((2,2),"
       "(0.,1.),.U.)CURVE()GEOMETRIC_REPRESENTATION_ITEM()RATIONAL_B_SPLINE_CURVE((1.,2.))"
       "REPRESENTATION_ITEM(''))",
       ""},
      {"SURFACE_CURVE('',#309,(),.CURVE_3D.)", ""},
      {"COMPOSITE_CURVE('',(#9001),.F.);#9001=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.F.,#9002);"
       "#9002=POLYLINE('',(#262,#261))",
       ""},
      {"CIRCLE('',#329,-4.)", "a radius of it is not positive"},
      {"POLYLINE('',(#263,#264))", "its curve does not end at its vertices"},
      {"SURFACE_CURVE('',#305,(),.CURVE_3D.)", "its curves refer to each other without end"},
      {"B_SPLINE_CURVE_WITH_KNOTS('',1,(#261,#262),.U.,.F.,.F.,(2,1E9),(0.,1.),.U.)",
       "it has too many knots"},
      {"OFFSET_CURVE_3D('',#305,1.,.F.,#24)", "a curve of its kind is not drawn"}};
  for (const auto& [line, why] : lines) {
    expect(Without(step, "#305=", ";", std::string("#305=") + line + ";"), stepLost, why);
  }
}

TEST(HostShape, ShapesComeWhereTheDocumentPutsThem) {
  const std::string qif = Read(BUNDLED_MODEL);
  const auto first = [](const std::string& text) {
    return Draw(text).drawing.edges.at(0).points.at(1);
  };
  EXPECT_THAT(first(qif), ElementsAre(120, 0, 0));
  const std::string matrix =
      "<TransformSet n='1'><Transform id='9000'><Rotation><XDirection>0 1 "
      "0</XDirection><YDirection>"
      "-1 0 0</YDirection><ZDirection>0 0 1</ZDirection></Rotation><Origin>5 0 1</Origin>"
      "</Transform></TransformSet>";
  const std::string withMatrix = With(qif, "<GeometrySet>", matrix + "<GeometrySet>");
  const std::string moved =
      With(withMatrix, "<ShellIds n=\"1\"><Id>4</Id>",
           "<Transform><Id>9000</Id></Transform><ShellIds n=\"1\"><Id>4</Id>");
  EXPECT_THAT(first(moved), ElementsAre(5, 120, 1));
  EXPECT_THAT(Draw(moved).drawing.vertices.at(1).point, ElementsAre(5, 120, 1));
  EXPECT_EQ(Draw(moved).model.skipped.size(), Draw(withMatrix).model.skipped.size());
  const Totals before = TotalsOf(Draw(qif).drawing);
  const Totals after = TotalsOf(Draw(moved).drawing);
  EXPECT_EQ(after.openEdges, 0);
  EXPECT_NEAR(after.volume, before.volume, 2e-3 * before.volume);
  const Drawn scaled = Draw(With(moved, "<ScaleCoefficient>1<", "<ScaleCoefficient>4<"));
  EXPECT_THAT(scaled.drawing.edges.at(0).points.at(1), ElementsAre(1.25, 30, 0.25));
  EXPECT_THAT(scaled.drawing.vertices.at(1).point, ElementsAre(1.25, 30, 0.25));
  EXPECT_NEAR(TotalsOf(scaled.drawing).volume, after.volume / 64, 1e-9 * after.volume);
  // A curve of its own place no longer reaches the vertices.
  const std::string torn = With(withMatrix, "</EndPoint></Segment13Core></Segment13>",
                                "</EndPoint></Segment13Core><Transform><Id>9000</Id></Transform>"
                                "</Segment13>");
  EXPECT_THAT(Draw(torn).left, HasSubstr("Edge 1501: its curve does not end at its vertices"));
  const Drawn hidden = Draw(With(qif, "form=\"SOLID\"", "form=\"SOLID\" hidden=\"true\""));
  const auto isHidden = [](const auto& shape) { return shape.isHidden; };
  const auto& [edges, faces, vertices] = hidden.drawing;
  EXPECT_TRUE(std::all_of(faces.begin(), faces.end(), isHidden));
  EXPECT_EQ(std::count_if(edges.begin(), edges.end(), isHidden), 47);
  EXPECT_EQ(std::count_if(vertices.begin(), vertices.end(), isHidden), 31);
}

TEST(HostShape, StepAssembliesArePlacedAndTessellatedFacesTaken) {
  const std::string step = Read(STEP_MODEL);
  const auto occurrence = [](const std::string& at, const std::string& place) {
    return "#" + at + "4=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#9000,#8,$);#" + at +
           "5=PRODUCT_DEFINITION_SHAPE('','',#" + at + "4);#" + at +
           "6=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#" + at + "7,#" + at + "5);#" + at +
           "7=(REPRESENTATION_RELATIONSHIP('','',#11,#9001)"
           "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#" +
           at + "8)SHAPE_REPRESENTATION_RELATIONSHIP());#" + at +
           "8=ITEM_DEFINED_TRANSFORMATION('','',#28," + place + ");\n";
  };
  const std::string assembly =
      "#9000=PRODUCT_DEFINITION('','',$,$);#9001=SHAPE_REPRESENTATION('',(#9002),#22);"
      "#9002=AXIS2_PLACEMENT_3D('',#9003,#26,#25);#9003=CARTESIAN_POINT('',(200.,0.,0.));\n" +
      occurrence("901", "#9002") + occurrence("902", "#28");
  const Drawn twice = Draw(With(step, "ENDSEC;\nEND-ISO", assembly + "ENDSEC;\nEND-ISO"));
  EXPECT_EQ(twice.left, "");
  std::map<std::string, DrawnPoint> ends;
  for (const DrawnEdge& edge : twice.drawing.edges) ends[edge.id] = edge.points.back();
  EXPECT_EQ(ends.size(), 48U);
  std::map<std::string, DrawnPoint> corners;
  for (const DrawnVertex& corner : twice.drawing.vertices) corners[corner.id] = corner.point;
  EXPECT_EQ(corners.size(), 32U);
  EXPECT_EQ(corners.at("#9014/#282"), ends.at("#9014/#306"));
  EXPECT_EQ(corners.at("#9024/#282"), ends.at("#9024/#306"));
  EXPECT_THAT(ends["#9014/#306"], ElementsAre(200, testing::DoubleNear(85.7735, 1e-3), 0));
  EXPECT_THAT(ends["#9024/#306"], ElementsAre(testing::DoubleNear(85.7735, 1e-3), 0, 0));
  const Totals both = TotalsOf(twice.drawing);
  EXPECT_EQ(both.openEdges, 0);
  EXPECT_NEAR(both.volume, 2 * TotalsOf(Draw(step).drawing).volume, 100);

  // A shell that a solid has turned round is a void of it.
  for (const auto& [sense, sign] : {std::pair{".F.", -1.0}, {".T.", 1.0}}) {
    const std::string hollow =
        std::string(
            "#454=BREP_WITH_VOIDS('',#9000,(#9001));#9000=CLOSED_SHELL('',());"
            "#9001=ORIENTED_CLOSED_SHELL('',*,#453,") +
        sense + ");";
    EXPECT_NEAR(
        TotalsOf(Draw(With(step, "#454=MANIFOLD_SOLID_BREP('base plate',#453);", hollow)).drawing)
            .volume,
        sign * both.volume / 2, 100);
  }

  // Two squares: triangles over the points, and a strip and a fan over the points that are named.
  const std::string tessellated =
      "#9000=TESSELLATED_SOLID('',(#9001,#9002,#9004),$);"
      "#9003=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(1.,1.,0.),(0.,1.,0.)));"
      "#9001=TRIANGULATED_FACE('',#9003,4,(),$,(),((1,2,3),(1,3,4)));"
      "#9002=COMPLEX_TRIANGULATED_FACE('',#9003,4,(),$,(2,3,1,4),((1,2,3,4)),((3,1,2,4)));"
      "#9004=TRIANGULATED_FACE('',#9003,4,(),$,(),((1,2,5)));\n";
  const Drawn faces = Draw(With(With(step, "(#454,#28)", "(#454,#28,#9000)"), "ENDSEC;\nEND-ISO",
                                tessellated + "ENDSEC;\nEND-ISO"));
  EXPECT_EQ(faces.left, "TRIANGULATED_FACE #9004: it names points that do not exist\n");
  for (const auto& [id, area] : {std::pair{"#9001", 1.0}, {"#9002", 2.0}}) {
    Totals totals;
    Ways ways;
    for (const DrawnFace& face : faces.drawing.faces) {
      if (face.id != id) continue;
      Add(face, totals, ways);
      for (const auto& t : face.triangles) {
        const QENposition a = PositionOf(face.points[t[0]]);
        EXPECT_GT(cross(PositionOf(face.points[t[1]]) - a, PositionOf(face.points[t[2]]) - a).z(),
                  0);
      }
    }
    EXPECT_EQ(totals.area, area);
  }
}

TEST(HostShape, QifMeshFacesAreTaken) {
  const std::string qif = Read(BUNDLED_MODEL);
  const auto with = [&](const std::string& chosen) {
    const std::string mesh =
        "<SurfaceMeshSet n='1'><MeshTriangle id='9100'><MeshTriangleCore><Triangles count='2'>0 1 "
        "2 "
        "0 2 3</Triangles><Vertices count='4'>0 0 0 1 0 0 1 1 0 0 1 0</Vertices></MeshTriangleCore>"
        "</MeshTriangle></SurfaceMeshSet>";
    const std::string face =
        "<FaceMesh id='9101' turned='true'><Mesh><Id>9100</Id></Mesh>" + chosen + "</FaceMesh>";
    return Draw(With(With(With(qif, "</GeometrySet>", mesh + "</GeometrySet>"), "</FaceSet>",
                          face + "</FaceSet>"),
                     "<FaceIds n=\"18\">", "<FaceIds n=\"19\"><Id>9101</Id>"));
  };
  const Drawn whole = with("");
  EXPECT_EQ(whole.left, "");
  EXPECT_EQ(whole.drawing.faces.back().triangles.size(), 2U);
  const Drawn part = with("<TrianglesBinary count='1' sizeElement='4'>AQAAAA==</TrianglesBinary>");
  EXPECT_EQ(part.left, "");
  const DrawnFace& face = part.drawing.faces.back();
  EXPECT_EQ(face.points.size(), 3U);
  EXPECT_THAT(face.triangles, ElementsAre(ElementsAre(0, 2, 1)));
  EXPECT_EQ(with("<Triangles count='1'>2</Triangles>").left,
            "FaceMesh 9101: it names triangles that do not exist\n");
}

}  // namespace

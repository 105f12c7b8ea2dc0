#include <initializer_list>
#include <utility>
#include <vector>

#include "Matchers.h"

namespace {

using standin::Fault;
using standin::Part;

// Parts are taken a batch at a time; none may be lost or met twice where a batch ends.
TEST(Gathering, MeetsEveryPartOfABodyOfAnySize) {
  for (const int faces : {31, 32, 33, 64, 100}) {
    Part part;
    Entities texts;
    for (int i = 0; i < faces; ++i) texts.push_back(&part.AddText(part.Face(), L""));
    EXPECT_EQ(Annotations(*Export(part)), texts) << faces << " faces";
  }
}

TEST(Gathering, HappensOnce) {
  Part part;
  part.AddText(part.Face(), L"");
  part.AddCapture({});
  const auto exporter = Export(part);
  part.AddText(part.Face(), L"too late");
  EXPECT_THAT(exporter->Initialize(), FailsWith(kFailure));
  EXPECT_THAT(exporter->PreProcess(), IsSuccess());
  EXPECT_EQ(Annotations(*exporter).size(), 1u);
  unsigned captures = 0;
  EXPECT_THAT(exporter->GetCaptureCount(KOVAIdentifier(), captures), IsSuccess());
  EXPECT_EQ(captures, 1u);
}

// A marked group of wire bodies, dimensions and a collection.
struct GroupOfAll {
  GroupOfAll(Part& part, int mark) {
    const auto newEdge = [&] {
      return &part.Make<EDGE>(&part.Make<VERTEX>(), &part.Make<VERTEX>());
    };
    const auto wiresOf = [&](std::vector<EDGE*> edges) {
      return &part.Make<BODY>(std::vector<FACE*>(), std::move(edges), std::vector<VERTEX*>());
    };
    EDGE *edge = newEdge(), *other = newEdge();
    ENTITY* const dimension[] = {&part.Make<KOVAPMI_DIMENSION>(), &part.Make<QENCOLLECTION>(),
                                 &part.Make<KOVAPMI_DIMENSION>()};
    part.Group(mark, {dimension[0], wiresOf({newEdge(), edge}), dimension[1], wiresOf({other}),
                      dimension[2]});
    dimensions.assign(dimension, dimension + 3);
    onEdges = {&part.AddText(*edge, L""), &part.AddText(*other, L"")};
  }

  Entities onEdges, dimensions;  // what a manufacturing and a driving-dimension group yields
};

TEST(FailedKernelCall, SkipsItsStepAndNothingElse) {
  Part solid, manufacturing, driving;
  BODY& body = solid.Body();
  FACE& face = solid.Face(nullptr, &body);
  EDGE& edge = solid.Edge(nullptr, &face);
  const Entities on{&solid.AddText(body, L""), &solid.AddText(face, L""), &solid.AddText(edge, L""),
                    &solid.AddText(*edge.end(), L"")};
  const Entities both = GroupOfAll(manufacturing, 3).onEdges;
  const Entities driven = GroupOfAll(driving, 6).dimensions;
  const struct {
    Part& part;
    long call;
    Entities without, afterWork;  // met when the call fails without its work and after it
  } kFailures[] = {
      {solid, 1, {on[0], on[2], on[3]}, on},  // faces, edges, vertices: one list
      {solid, 2, {on[0], on[1], on[3]}, on},
      {solid, 3, {on[0], on[1], on[2]}, on},
      // A group is no topology: its first three calls fail by themselves.
      {manufacturing, 4, {}, {}},                // the mark
      {manufacturing, 5, {both[1]}, {both[1]}},  // a wire body's edges
      {manufacturing, 6, {both[0]}, {both[0]}},
      {manufacturing, 7, both, both},  // the mark once more
      {driving, 4, driven, driven},
      {driving, 5, {}, {}},
      {driving, 6, {}, driven},  // the members: what there is counts, not the outcome
  };
  for (const auto& [part, call, without, afterWork] : kFailures) {
    for (const bool work : {false, true}) {
      const Fault fault = Fault::KernelCall(call, 7, work);
      const auto exporter = Export(part);
      EXPECT_TRUE(fault.HasFired());
      EXPECT_EQ(Annotations(*exporter), work ? afterWork : without) << call << work;
    }
  }
}

}  // namespace

#include <initializer_list>
#include <utility>
#include <vector>

#include "Matchers.h"

namespace {

using standin::DatumOf;
using standin::Edit;
using standin::Fault;
using standin::Part;

constexpr const wchar_t* kDummyName = L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI";
constexpr const char* kMark = "ATTRIB_XORVO_GROUP_TYPE";

Entities Captures(KOVAOrvoPMIExporter& exporter) {
  Entities captures;
  KOVAIdentifier capture;
  for (unsigned i = 0; exporter.GetCapture(KOVAIdentifier(), i, capture).IsSuccess(); ++i) {
    EXPECT_THAT(capture, Consists(capture.GetNativeObject(), nullptr, nullptr, nullptr));
    captures.push_back(EntityOf(capture));
  }
  return captures;
}

// --- Where annotations are looked for, and in which order ----------------------------------------

TEST(Gathering, WalksABodyThenItsFacesEdgesAndVerticesOnce) {
  Part part;
  BODY &body = part.Body(), &next = part.Body();
  FACE &top = part.Face(nullptr, &body), &side = part.Face(nullptr, &body);
  EDGE &shared = part.Edge(nullptr, &top), &own = part.Edge(nullptr, &side);
  entity_fields::edges(side).push_back(&shared);
  auto& onNext = part.AddText(next, L"");
  auto& onVertex = part.AddText(*own.end(), L"");
  auto& onOtherVertex = part.AddText(*shared.start(), L"");
  auto& onOwn = part.AddText(own, L"");
  auto& onShared = part.AddText(shared, L"");
  auto& onSide = part.AddText(side, L"");
  auto& onTop = part.AddText(top, L"");
  auto& onBody = part.AddText(body, L"");
  const auto exporter = Export(part);
  EXPECT_EQ(Annotations(*exporter), (Entities{&onBody, &onTop, &onSide, &onShared, &onOwn,
                                              &onOtherVertex, &onVertex, &onNext}));
  EXPECT_EQ(Owners(*exporter, onShared), Entities{&shared});
  EXPECT_EQ(Owners(*exporter, onBody), Entities{&body});
  EXPECT_EQ(Owners(*exporter, onVertex), Entities{own.end()});
}

TEST(Gathering, GoesThroughTopLevelEntitiesOfEveryKindInDocumentOrder) {
  Part part;
  auto& onCollection = part.AddText(part.Collection({}), L"");
  auto& first = part.AddCapture({});
  auto& dimension = part.AddDimension({}, dim_linear, dim_sub_width, 1);
  part.AddText(dimension, L"on a dimension");
  auto& derived = part.Make<Derived<KOVAPMI_DIMENSION>>();
  part.GetDocument().Add(derived);
  EDGE& edge = part.Make<EDGE>(&part.Make<VERTEX>(), &part.Make<VERTEX>());
  part.GetDocument().Add(edge);
  auto& onEdge = part.AddText(edge, L"");
  auto& onItsVertex = part.AddText(*edge.start(), L"");
  part.AddText(part.Group(0, {&edge}), L"on a group");
  APOINT& point = part.Make<APOINT>(QENposition());
  part.AddText(point, L"on a point");
  part.GetDocument().Add(point);
  part.AddText(first, L"on a capture");
  auto& onFace = part.AddText(part.Face(), L"");
  auto& second = part.AddCapture({&edge});
  const auto exporter = Export(part);
  EXPECT_EQ(Annotations(*exporter),
            (Entities{&onCollection, &dimension, &derived, &onEdge, &onItsVertex, &onFace}));
  EXPECT_EQ(Captures(*exporter), (Entities{&first, &second}));
}

template <typename... Classes>
void MakeDerived(Part& part, ENTITY& owner) {
  (part.Make<Derived<Classes>>(&owner), ...);
}

TEST(Gathering, TakesTheSixClassesInClassOrderThenChainOrderAndNothingDerived) {
  Part part;
  FACE& face = part.Face(L"top");
  Entities expected(12);
  for (std::size_t i = 0; i < 2; ++i) {
    expected[10 + i] = &part.AddGeometricTolerance(face, tol_flatness, 0.1);
    expected[8 + i] = &part.AddDatumTarget(face, L"");
    expected[6 + i] = &part.AddDatum(face, L"");
    MakeDerived<ATTRIB_KOVAPMI_TEXT, ATTRIB_KOVAPMI_FLAGNOTE, ATTRIB_KOVAPMI_ROUGHNESS,
                ATTRIB_KOVAPMI_DATUM, ATTRIB_KOVAPMI_DATUM_TARGET, ATTRIB_KOVAPMI_GEOM_TOL>(part,
                                                                                            face);
    expected[4 + i] = &part.AddRoughness(face, {});
    expected[2 + i] = &part.AddFlagNote(face, L"");
    expected[0 + i] = &part.AddText(face, L"");
  }
  const auto exporter = Export(part);
  EXPECT_EQ(Annotations(*exporter), expected);
  for (const ENTITY* annotation : expected) {
    EXPECT_EQ(Owners(*exporter, *const_cast<ENTITY*>(annotation)), Entities{&face});
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
  EXPECT_EQ(Captures(*exporter).size(), 1u);
}

// --- Owner lists ---------------------------------------------------------------------------------

TEST(OwnerList, NamesTheEntityOrTheMembersButNoDummyPoint) {
  Part part;
  FACE &a = part.Face(), &b = part.Face();
  BODY &wide = part.WireBody(kDummyName), &narrow = part.WireBody(), &unnamed = part.WireBody(),
       &longer = part.WireBody(L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI2"),
       &shorter = part.WireBody(L"ATTRIB_XORVO_DUMMY_POINT_FOR_PM"), &solid = part.Body(kDummyName);
  part.NarrowName(narrow, "ATTRIB_XORVO_DUMMY_POINT_FOR_PMI");
  FACE& named = part.Face(kDummyName, &solid);
  std::vector<std::pair<ENTITY*, Entities>> expected{{&wide, {}}, {&narrow, {}}};
  for (ENTITY* self :
       std::initializer_list<ENTITY*>{&a, &unnamed, &longer, &shorter, &solid, &named}) {
    expected.push_back({self, {self}});
  }
  expected.push_back({&part.Collection({&b, &wide, &a}), {&b, &wide, &a}});
  expected.push_back({&part.Collection({}), {}});
  for (auto& row : expected) row.first = &part.AddText(*row.first, L"");
  for (const auto& members : {std::vector<ENTITY*>{&wide, &b, &a}, std::vector<ENTITY*>{}}) {
    expected.push_back({&part.AddDimension(members, dim_linear, dim_sub_width, 1),
                        Entities(members.begin(), members.end())});
  }
  // A datum target's owners, looked for when it is asked about.
  auto& datum = part.AddDatum(a, L"A");
  APOINT& point = part.Make<APOINT>(QENposition());
  for (ENTITY* geometry : std::initializer_list<ENTITY*>{&b, &wide, &point}) {
    auto& target = part.Make<KOVAPMI_DATUMTGT>();
    Edit(target).geometry = geometry;
    Edit(DatumOf(datum)).targets.push_back(&target);
    expected.push_back({&target, geometry == &b ? Entities{&b} : Entities()});
  }
  const auto exporter = Export(part);
  KOVAIdentifier target;
  for (unsigned i = 0; i < 3; ++i) exporter->GetDatumTargetAt(Naming(&datum), i, target);
  for (const auto& [annotation, owners] : expected) {
    EXPECT_EQ(Owners(*exporter, *annotation), owners);
    EXPECT_EQ(CountFrom(*exporter, &KOVAPMIExporter::GetNumberOfEntitiesFromAnnotation,
                        Naming(annotation)),
              Answer(0, owners.size()));
  }
}

// --- Groups --------------------------------------------------------------------------------------

// A top-level group of members of every sort, which are only reachable through it.
struct GroupOfAll {
  explicit GroupOfAll(Part& part) : group(part.Group(0, {})) {
    const auto newEdge = [&] {
      return &part.Make<EDGE>(&part.Make<VERTEX>(), &part.Make<VERTEX>());
    };
    const auto newBody = [&](std::vector<FACE*> faces, std::vector<EDGE*> wires) {
      return &part.Make<BODY>(std::move(faces), std::move(wires), std::vector<VERTEX*>());
    };
    EDGE *bound = newEdge(), *other = newEdge();
    edge = newEdge();
    face = &part.Make<FACE>(std::vector<EDGE*>{bound});
    collection = &part.Make<QENCOLLECTION>();
    entity_fields::members(*collection).add(face);
    dimensions = {&part.Make<KOVAPMI_DIMENSION>(), collection, &part.Make<KOVAPMI_DIMENSION>()};
    for (const ENTITY* member : Entities{newBody({face}, {}), face, dimensions[0],
                                         newBody({}, {newEdge(), edge, newEdge()}), collection,
                                         newBody({}, {other}), dimensions[2]}) {
      entity_fields::members(group).add(const_cast<ENTITY*>(member));
      part.AddText(*const_cast<ENTITY*>(member), L"on a member");
    }
    part.AddText(group, L"on the group");
    part.AddText(*bound, L"on an edge of a face");
    roughness = &part.AddRoughness(*edge, {});
    onEdges = {roughness, &part.AddText(*other, L"")};
  }

  QENGROUP& group;
  EDGE* edge;
  FACE* face;
  QENCOLLECTION* collection;
  ENTITY* roughness;
  Entities onEdges, dimensions;  // what a manufacturing and a driving-dimension group yields
};

TEST(Group, IsReadByItsMarkAlone) {
  const struct {
    const char* mark;
    int value;
    bool manufacturing, driving;
  } kMarks[] = {{kMark, 3, true, false},
                {kMark, 6, false, true},
                {kMark, 5, false, false},
                {kMark, 0, false, false},
                {"GROUP_TYPE", 6, false, false}};
  for (const auto& [mark, value, manufacturing, driving] : kMarks) {
    Part part;
    GroupOfAll all(part);
    part.Integer(all.group, mark, value);
    const auto exporter = Export(part);
    EXPECT_EQ(Annotations(*exporter), manufacturing ? all.onEdges
                                      : driving     ? all.dimensions
                                                    : Entities());
    EXPECT_EQ(Owners(*exporter, *all.roughness), manufacturing ? Entities{all.edge} : Entities());
    EXPECT_EQ(Owners(*exporter, *all.collection), driving ? Entities{all.face} : Entities());
  }
  struct Lookalike : ATTRIB_GEN_NAME {  // a mark that is no integer, though it reads like one
    using ATTRIB_GEN_NAME::ATTRIB_GEN_NAME;
    int value = 3;
  };
  Part part;
  part.Make<Lookalike>(&GroupOfAll(part).group, kMark);
  EXPECT_EQ(Annotations(*Export(part)), Entities());
}

// --- Failed kernel calls -------------------------------------------------------------------------

TEST(FailedKernelCall, SkipsItsStepAndNothingElse) {
  Part solid, manufacturing, driving;
  BODY& body = solid.Body();
  FACE& face = solid.Face(nullptr, &body);
  EDGE& edge = solid.Edge(nullptr, &face);
  const Entities on{&solid.AddText(body, L""), &solid.AddText(face, L""), &solid.AddText(edge, L""),
                    &solid.AddText(*edge.end(), L"")};
  GroupOfAll wires(manufacturing), dimensions(driving);
  manufacturing.Integer(wires.group, kMark, 3);
  driving.Integer(dimensions.group, kMark, 6);
  const Entities &both = wires.onEdges, &driven = dimensions.dimensions;
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

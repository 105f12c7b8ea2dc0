// What datums, datum targets and roughness symbols answer beyond one full one of each.

#include "Matchers.h"

namespace {

using standin::DatumOf;
using standin::Edit;
using standin::Part;
using standin::TargetOf;
using ::testing::Each;
using ::testing::ElementsAre;

TEST(Datums, AndTargetsFailOrAnswerNothingWhenTheirAttributeCarriesAnythingElse) {
  Part part;
  auto& face = part.Face();
  const std::pair<std::pair<ENTITY*, ENTITY*>, long> cases[] = {
      {{nullptr, nullptr}, kFailure},
      {{&face, &face}, kFailure},
      {{&part.Make<KOVAPMI_DATUMTGT>(), &part.Make<KOVAPMI_DATUM>()}, kFailure},
      {{&part.Make<Derived<KOVAPMI_DATUM>>(), &part.Make<Derived<KOVAPMI_DATUMTGT>>()}, 0}};
  auto& attribute = part.AddDatum(face, L"A");
  auto& targetAttribute = part.AddDatumTarget(face, L"A1", &attribute);
  const auto exporter = Export(part);
  for (const auto& [carried, code] : cases) {
    Edit(attribute).datum = carried.first;
    Edit(targetAttribute).target = carried.second;
    KOVAString s[3] = {SentinelString(), SentinelString(), SentinelString()};
    unsigned count = kUntouched, index = 0;
    KOVAIdentifier handedOut = SentinelIdentifier();
    auto type = DatumTargetTypeArea;
    bool movable = true;
    Untouched<double, 6> points;
    const KOVAIdentifier datum = Naming(&attribute), target = Naming(&targetAttribute);
    for (const KOVAResult& result :
         {exporter->GetDatumLabel(datum, s[0]), exporter->GetDatumTargetCount(datum, count),
          exporter->GetDatumTargetAt(datum, index, handedOut),
          exporter->GetDatumTargetLabel(target, s[0]),
          exporter->GetDatumTargetInfo(target, type, movable, s[1], s[2], points, points + 3)}) {
      EXPECT_THAT(result, HasCode(code));
    }
    EXPECT_THAT(s, Each(Reads(L"untouched")));
    EXPECT_EQ(count, 77u);
    EXPECT_THAT(handedOut, IsSentinel());
    EXPECT_EQ(type, DatumTargetTypeArea);
    EXPECT_THAT(points, Each(kUntouched));
  }
}

TEST(DatumTargets, LeaveTheArrayOfAMissingPointAlone) {
  Part part;
  auto& target = TargetOf(part.AddDatumTarget(part.Face(), L"A1"));
  auto& point = part.Make<APOINT>(QENposition(1, 2, 3));
  const auto exporter = Export(part);
  for (const bool first : {true, false}) {
    (first ? Edit(target).position1 : Edit(target).position2) = &point;
    (first ? Edit(target).position2 : Edit(target).position1) = nullptr;
    auto type = DatumTargetTypeArea;
    bool movable = true;
    KOVAString size, note;
    Untouched<double, 3> points[2];
    EXPECT_THAT(exporter->GetDatumTargetInfo(Naming(&target), type, movable, size, note, points[0],
                                             points[1]),
                IsSuccess());
    EXPECT_THAT(points[first ? 0 : 1], ElementsAre(1, 2, 3));
    EXPECT_THAT(points[first ? 1 : 0], Each(kUntouched));
  }
}

TEST(Roughness, GivesItsFieldsInOrderAndNoneOutside) {
  Part part;
  auto& roughness = part.AddRoughness(part.Face(), {L"turned", L"-", L"Ra 1.6"});
  Edit(roughness).texts[1] = std::nullopt;
  const auto exporter = Export(part);
  const wchar_t* const expected[] = {L"turned", L"", L"Ra 1.6"};
  for (const unsigned index : {0u, 1u, 2u, 3u, ~0u}) {
    KOVAString field = SentinelString();
    EXPECT_THAT(exporter->GetRoughnessFieldAt(Naming(&roughness), index, field),
                HasCode(index < 3 ? 0 : kFailure));
    EXPECT_THAT(field, Reads(index < 3 ? expected[index] : L"untouched"));
  }
}

}  // namespace

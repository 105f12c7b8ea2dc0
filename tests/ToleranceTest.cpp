// What tolerances and their datum reference frames answer beyond one full tolerance of one row.

#include "Matchers.h"

namespace {

using standin::Edit;
using standin::Part;

const char* const kModifierData = KOVAPMIExporter::KOVAPMITypeZoneModifierData;

struct Tolerance : ::testing::Test {
  Part part;
  FACE& face = part.Face();
  ATTRIB_KOVAPMI_GEOM_TOL& tolerance = part.AddGeometricTolerance(face, tol_position, 0.5);
  KOVAPMI_GEOM_TOL_ROW& row = *Edit(tolerance).rows[0];
  KOVAIdentifier named = Naming(&tolerance);
  std::unique_ptr<KOVAOrvoPMIExporter> exporter = Export(part);
};

TEST_F(Tolerance, IsAllAroundForExactlyOne) {
  for (const int around : {0, 1, 2, -1}) {
    Edit(tolerance).all_around = around;
    auto type = ToleranceTypeUnknown;
    bool allAround = around != 1;
    EXPECT_THAT(exporter->GetToleranceInfo(named, type, allAround), IsSuccess());
    EXPECT_EQ(allAround, around == 1) << around;
  }
}

TEST_F(Tolerance, AnswersForEachOfItsRowsAndForNoOther) {
  auto& second = part.AddRow(tolerance, 1.5);
  part.AddModifier(second, zone_mod_basic);
  Edit(tolerance).rows.push_back(nullptr);
  for (const int index : {0, 1, 2, 3, -1}) {
    SCOPED_TRACE(index);
    auto shape = ToleranceValueTypeRadial;
    Untouched<double, 4> n;
    KOVAIdentifiers modifiers;
    const bool there = index == 0 || index == 1;
    EXPECT_THAT(exporter->GetToleranceRowInfo(named, index, shape, n[0], n[1], n[2], n[3]),
                HasCode(there ? 0 : kFailure));
    EXPECT_EQ(shape, there ? ToleranceValueTypeNone : ToleranceValueTypeRadial);
    EXPECT_EQ(n[0], there ? 0.5 + index : kUntouched);
    // A row without modifiers fails as one that is not there.
    EXPECT_THAT(exporter->GetAnnotationToleranceModifiers(named, index, modifiers),
                HasCode(index == 1 ? 0 : kFailure));
    EXPECT_EQ(modifiers.count(), index == 1 ? 1 : 0);
  }
}

TEST_F(Tolerance, AppendsARowsModifiersInOrderEvenWhereOneIsMissing) {
  auto& first = part.AddModifier(row, zone_mod_maximum_material);
  Edit(row).modifiers.push_back(nullptr);
  auto& last = part.AddModifier(row, zone_mod_projected_zone, 12.5);
  ENTITY* const expected[] = {&first, nullptr, &last};
  KOVAIdentifiers modifiers;
  for (int i = 0; i < 6; ++i) {
    if (i % 3 == 0) exporter->GetAnnotationToleranceModifiers(named, 0, modifiers);
    ASSERT_EQ(modifiers.count(), i < 3 ? 3 : 6);
    EXPECT_THAT(modifiers.at(i), Consists(expected[i % 3], kModifierData, nullptr, nullptr));
  }
  auto type = ToleranceModifierBoundary;
  bool hasMagnitude = true;
  double magnitude = kUntouched;
  EXPECT_THAT(exporter->GetZoneModifierData(modifiers.at(0), type, hasMagnitude, magnitude),
              IsSuccess());
  EXPECT_EQ(type, ToleranceModifierMaximumMaterial);
  EXPECT_FALSE(hasMagnitude);
  EXPECT_EQ(magnitude, kUntouched);
}

TEST_F(Tolerance, HasNoNotesWithoutANoteAndEmptyOnesWhereTextsAreMissing) {
  using E = KOVAOrvoPMIExporter;
  for (const auto get :
       {&E::GetBeforeToleranceNote, &E::GetAfterToleranceNote, &E::GetUpperToleranceNote,
        &E::GetLowerToleranceNote, &E::GetPrefixToleranceNote, &E::GetSuffixToleranceNote}) {
    Edit(tolerance).note = nullptr;
    KOVAString text = SentinelString();
    EXPECT_THAT((*exporter.*get)(named, text), FailsWith(kFailure));
    EXPECT_THAT(text, Reads(L"untouched"));
    Edit(tolerance).note = &part.Make<KOVAPMI_NOTE>();
    EXPECT_THAT((*exporter.*get)(named, text), IsSuccess());
    EXPECT_THAT(text, Reads(L""));
  }
}

TEST_F(Tolerance, AppendsAFramesReferencesInOrderLeavingOutMissingOnes) {
  std::vector<const void*> expected{&part.AddReference(row, L"A", {})};
  KOVAPMI_DRF& frame = *row.GetDRF();
  Edit(frame).references.push_back(nullptr);
  for (int i = 0; i < 3; ++i) expected.push_back(&part.AddReference(row, L"B", {}));
  KOVAIdentifiers references;
  EXPECT_THAT(exporter->GetDatumReferences(Naming(&frame), references), IsSuccess());
  Edit(frame).references.clear();
  EXPECT_THAT(exporter->GetDatumReferences(Naming(&frame), references), IsSuccess());
  ASSERT_EQ(references.count(), 4);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(references.at(i).GetNativeObject(), expected[static_cast<std::size_t>(i)]);
  }
}

TEST(DatumReference, NamesEachDatumByItsCarrierAndAppendsItsModifiers) {
  Part part;
  auto& attribute = part.AddDatum(part.Face(), L"A");
  auto& bare = part.Make<KOVAPMI_DATUM>();
  auto& row = part.AddRow(part.AddGeometricTolerance(part.Face(), tol_position, 0.5), 1);
  auto& reference = part.AddReference(row, L"A-B", {&standin::DatumOf(attribute), &bare, nullptr});
  auto& datums = Edit(reference).datums;
  std::vector<KOVAPMI_ZONE_MODIFIER*> of[3];
  for (const std::size_t i : {0u, 2u, 2u}) {
    of[i].push_back(&part.AddModifier(*datums[i], zone_mod_basic));
  }
  datums.push_back(nullptr);
  const auto exporter = Export(part);
  const struct {
    int index;
    long code;
    ENTITY* datum;
  } cases[] = {{0, 0, &attribute},     {1, 0, &bare},          {2, 0, nullptr},
               {3, kFailure, nullptr}, {4, kFailure, nullptr}, {-1, kFailure, nullptr},
               {1, 0, &bare}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.index);
    KOVAIdentifier datum = SentinelIdentifier(), owner = SentinelIdentifier();
    KOVAIdentifiers modifiers;
    EXPECT_THAT(exporter->GetDatumAt(Naming(&reference), each.index, datum, owner, modifiers),
                HasCode(each.code));
    EXPECT_THAT(datum, Became(each.datum));
    EXPECT_THAT(owner, IsSentinel());
    const auto expected = each.code == 0 ? of[each.index] : of[1];
    ASSERT_EQ(modifiers.count(), static_cast<int>(expected.size()));
    for (int i = 0; i < modifiers.count(); ++i) {
      EXPECT_THAT(modifiers.at(i),
                  Consists(expected[static_cast<std::size_t>(i)], kModifierData, nullptr, nullptr));
    }
  }
}

}  // namespace

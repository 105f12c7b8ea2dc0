// The model entities that an annotation applies to.

#include "Matchers.h"

namespace {

using standin::Edit;
using standin::Part;

TEST(AssociatedGeometry, NamesTopologyAsTheBRepDoesAndEverythingElseAsTheExporterDoes) {
  Part part;
  auto& document = part.GetDocument();
  auto& face = part.Face();
  auto& dimension = part.AddDimension({}, dim_linear, dim_sub_width, 1);
  const std::pair<ENTITY*, bool> owners[] = {
      {&part.Body(), true},   {&face, true},
      {&part.Edge(), true},   {&part.Make<Derived<FACE>>(std::vector<EDGE*>()), true},
      {&part.Vertex(), true}, {&part.Group(0, {}), false},
      {nullptr, false},       {&part.AddText(face, L"note"), false}};
  const auto exporter = Export(part);
  auto& list = ExporterInsides::Owners(*exporter)[&dimension];
  for (const auto& [owner, topology] : owners) list.push_back(owner);

  KOVAIdentifiers entities;
  const auto expectOwners = [&](KOVARepresentation* brep) {
    int count = kUntouched;
    EXPECT_THAT(exporter->GetNumberOfEntitiesFromAnnotation(Naming(&dimension), count),
                IsSuccess());
    EXPECT_EQ(count, 8);
    for (int index = -1; index <= 8; ++index) {
      SCOPED_TRACE(index);
      const auto& [owner, topology] = owners[index < 0 || index > 7 ? 6 : index];
      const int before = entities.count();
      EXPECT_THAT(exporter->GetEntityFromAnnotationAt(Naming(&dimension), index, entities),
                  HasCode(owner != nullptr ? 0 : kFailure));
      ASSERT_EQ(entities.count(), before + (owner != nullptr ? 1 : 0));
      if (owner == nullptr) continue;
      KOVARepresentation* const representation = topology ? brep : exporter.get();
      EXPECT_THAT(entities.at(before), Consists(owner, nullptr, representation, "ENTITY"));
    }
  };
  expectOwners(document.GetBRep());
  document.SetAvailable(false);
  expectOwners(nullptr);
  document.SetAvailable(true);
  document.DropBRep();
  expectOwners(nullptr);
}

TEST(AssociatedGeometry, OfATargetIsThatOfItsLastGeometryOnceTheTargetIsHandedOut) {
  Part part;
  FACE &face = part.Face(), &other = part.Face();
  auto& datum = part.AddDatum(face, L"A");
  auto& target = standin::TargetOf(part.AddDatumTarget(face, L"A1", &datum));
  const auto exporter = Export(part);
  const struct {
    ENTITY* geometry;
    std::vector<ENTITY*> owners;
  } cases[] = {{nullptr, {}},
               {&part.Collection({&other, &face}), {&other, &face}},
               {&face, {&face}},
               {nullptr, {&face}}};
  bool known = false;
  for (const auto& each : cases) {
    int count = kUntouched;
    // Asking alone makes no annotation of it.
    for (int ask = 0; ask < 2; ++ask) {
      EXPECT_THAT(exporter->GetNumberOfEntitiesFromAnnotation(Naming(&target), count),
                  HasCode(known ? 0 : kFailure));
    }
    EXPECT_EQ(count == kUntouched, !known);
    Edit(target).geometry = each.geometry;
    unsigned index = 0;
    KOVAIdentifier handedOut;
    EXPECT_THAT(exporter->GetDatumTargetAt(Naming(&datum), index, handedOut), IsSuccess());
    known = known || each.geometry != nullptr;
    EXPECT_EQ(ExporterInsides::Owners(*exporter).count(&target), known ? 1u : 0u);
    EXPECT_TRUE(!known || ExporterInsides::Owners(*exporter)[&target] == each.owners);
  }
}

}  // namespace

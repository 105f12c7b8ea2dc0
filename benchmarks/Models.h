#pragma once

#include <memory>
#include <vector>

#include "KOVAOrvoPMIExporter.h"
#include "KOVAOrvoPMIExporterFactory.h"
#include "standin/Part.h"

namespace models {

using Exporter = std::unique_ptr<KOVAPMIExporter>;

inline Exporter Index(standin::Part& part) {
  KOVAPMIExporter* exporter = nullptr;
  KOVACreateOrvoPMIExporter(&part.GetDocument(), &exporter);
  return Exporter(exporter);
}

// Whether annotations stand in planes of their own or all in the null view.
enum Placement { InPlanes, InNullView };

// One annotation of the n-th kind; the first four kinds need nothing of the index but a record.
constexpr int kPlainKinds = 4;
constexpr int kAllKinds = 7;
inline void Annotate(standin::Part& part, ENTITY& on, int kind, Placement placement) {
  const auto finish = [&](ENTITY& annotation, auto& placed) {
    part.Name(annotation, L"an annotation");
    if (placement == InPlanes) part.Place(placed, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
  };
  const auto finishItself = [&](auto& annotation) { finish(annotation, annotation); };
  if (kind == 0) finishItself(part.AddText(on, L"BREAK ALL EDGES"));
  if (kind == 1) finishItself(part.AddFlagNote(on, L"FLAG"));
  if (kind == 2) finishItself(part.AddRoughness(on, {L"Ra 1.6"}));
  if (kind == 3) finishItself(part.AddGeometricTolerance(on, tol_flatness, 0.1));
  if (kind == 4) finishItself(part.AddDimension({&on}, dim_linear, dim_sub_width, 40));
  if (kind == 5) {
    auto& datum = part.AddDatum(on, L"A");
    finish(datum, standin::DatumOf(datum));
  } else if (kind == 6) {
    auto& target = part.AddDatumTarget(on, L"A1");
    finish(target, standin::TargetOf(target));
  }
}

// Few entities, many annotations: ten on each face, kind by kind.
inline std::unique_ptr<standin::Part> Dense(int annotations, int kinds, Placement placement) {
  auto part = std::make_unique<standin::Part>();
  FACE* face = nullptr;
  for (int i = 0; i < annotations; ++i) {
    if (i % 10 == 0) face = &part->Face();
    Annotate(*part, *face, i % kinds, placement);
  }
  return part;
}

// Many entities, few annotations: one body, closed in both directions like a torus, of n x n faces
// with two edges and a vertex to each; a note or the like on every hundredth entity.
inline std::unique_ptr<standin::Part> Sparse(int n) {
  auto part = std::make_unique<standin::Part>();
  std::vector<VERTEX*> vertices;
  std::vector<EDGE*> along, across;
  const auto at = [n](int i, int j) { return static_cast<std::size_t>((i % n) * n + j % n); };
  const auto each = [n](auto visit) {
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) visit(i, j);
    }
  };
  each([&](int, int) { vertices.push_back(&part->Make<VERTEX>()); });
  each([&](int i, int j) {
    along.push_back(&part->Make<EDGE>(vertices[at(i, j)], vertices[at(i, j + 1)]));
    across.push_back(&part->Make<EDGE>(vertices[at(i, j)], vertices[at(i + 1, j)]));
  });
  each([&](int i, int j) {
    entity_fields::edges(part->Face()) = {along[at(i, j)], across[at(i, j + 1)],
                                          along[at(i + 1, j)], across[at(i, j)]};
  });
  const std::vector<ENTITY*> entities = part->GetEntities();
  for (std::size_t i = 50; i < entities.size(); i += 100) {
    Annotate(*part, *entities[i], static_cast<int>(i / 100) % kPlainKinds, InPlanes);
  }
  return part;
}

// The model and the index of the row that is being measured; another one takes their place.
class Held {
 public:
  template <typename Make>
  standin::Part& Part(const std::string& name, Make make) {
    if (name != name_) {
      exporter_.reset();
      part_.reset();
      part_ = make();
      name_ = name;
    }
    return *part_;
  }
  standin::Part& Part() { return *part_; }
  KOVAPMIExporter& Exporter() {
    if (exporter_ == nullptr) exporter_ = Index(*part_);
    return *exporter_;
  }

 private:
  std::string name_;
  std::unique_ptr<standin::Part> part_;
  models::Exporter exporter_;
};

}  // namespace models

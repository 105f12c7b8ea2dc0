#pragma once

#include <memory>
#include <string>
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

// Whether annotations are drawn in planes of their own or in none: then they share the null view.
enum Placement { InPlanes, InNullView };

// Annotations of the plain kinds have names and places, and need nothing of the index but owners
// and a view. In a drawing of all kinds they also have leaders, lines, callouts, references.
constexpr int kPlainKinds = 4;
constexpr int kAllKinds = 7;

// Annotates entities, kind by kind.
class Annotator {
 public:
  Annotator(standin::Part& part, int kinds, Placement placement)
      : part_(part), kinds_(kinds), placement_(placement) {}

  // Adds an annotation of the n-th kind, counted round and round.
  void Add(ENTITY& on, int n) {
    const int kind = n % kinds_;
    if (kind == 0) Finish(part_.AddText(on, L"BREAK ALL EDGES"));
    if (kind == 1) Finish(part_.AddFlagNote(on, L"FLAG"));
    if (kind == 2) Finish(part_.AddRoughness(on, {L"Ra 1.6"}));
    if (kind == 3) AddTolerance(on);
    if (kind == 4) AddDimension(on);
    if (kind == 5) {
      auto& attribute = part_.AddDatum(on, L"A");
      datum_ = &standin::DatumOf(attribute);
      Finish(attribute, *datum_);
    } else if (kind == 6) {
      auto& attribute = part_.AddDatumTarget(on, L"A1");
      Finish(attribute, standin::TargetOf(attribute));
    }
  }

 private:
  void AddTolerance(ENTITY& on) {
    auto& tolerance = part_.AddGeometricTolerance(on, tol_flatness, 0.1);
    if (datum_ != nullptr) part_.AddReference(*standin::Edit(tolerance).rows[0], L"A", {datum_});
    Finish(tolerance);
  }

  // A dimension with a callout.
  void AddDimension(ENTITY& on) {
    auto& callout = part_.MakeCallout(callout_feature_hole, 8);
    Finish(callout);
    auto& dimension = part_.AddDimension({&on, &callout}, dim_linear, dim_sub_width, 40);
    standin::Edit(dimension).line = {{1, 2, 3}, {41, 2, 3}};
    standin::Edit(dimension).extension_lines = {{1, 0, 3}, {41, 0, 3}, {1, 2, 3}};
    Finish(dimension);
  }

  template <typename Annotation>
  void Finish(Annotation& annotation) {
    Finish(annotation, annotation);
  }
  template <typename Annotation, typename Placed>
  void Finish(Annotation& annotation, Placed& placed) {
    part_.Name(annotation, L"an annotation");
    const QENvector direction = placement_ == InPlanes ? QENvector(1, 0, 0) : QENvector();
    auto& display = part_.Place(placed, {1, 2, 3}, direction, {0, 0, 1});
    if (kinds_ == kAllKinds) part_.AddLeader(display, {1, 2, 3}, {0, 0, 0});
  }

  standin::Part& part_;
  int kinds_;
  Placement placement_;
  KOVAPMI_DATUM* datum_ = nullptr;  // the last one
};

// Few entities, many annotations: ten on each face.
inline std::unique_ptr<standin::Part> Dense(int annotations, int kinds, Placement placement) {
  auto part = std::make_unique<standin::Part>();
  Annotator annotator(*part, kinds, placement);
  FACE* face = nullptr;
  for (int i = 0; i < annotations; ++i) {
    if (i % 10 == 0) face = &part->Face();
    annotator.Add(*face, i);
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
  Annotator annotator(*part, kPlainKinds, InPlanes);
  for (std::size_t i = 50; i < entities.size(); i += 100) {
    annotator.Add(*entities[i], static_cast<int>(i / 100));
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

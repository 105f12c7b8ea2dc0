#pragma once

#include <unordered_map>
#include <unordered_set>

#include "orvo_kernel/geometry.h"
#include "readers/step/Exchange.h"

namespace step {

class Reading;

// A rigid motion: where the axes and the origin of a component come to stand.
struct Transform {
  QENvector x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
  QENposition origin;

  QENvector operator()(const QENvector& v) const { return v.x() * x + v.y() * y + v.z() * z; }
  QENposition operator()(const QENposition& p) const { return origin + (*this)(p - QENposition()); }
  Transform operator*(const Transform& inner) const;
  Transform Inverse() const;
};

// A product at one place of an assembly. A file of one product has one, without a path.
struct Occurrence {
  std::string path;     // "#12/#34/" from the outermost component inwards
  Transform transform;  // from the product's space to the assembly's
  Id product = 0;       // the product definition; 0 stands for all that the file holds
  bool isFirst = true;  // of its product
};

// The products of a file, which shape belongs to which, and where they are placed (ISO 10303-44).
class Assembly {
 public:
  // Reads the structure. Parts that can't be read are listed and left out.
  explicit Assembly(Reading& reading);

  const std::vector<Occurrence>& Occurrences() const { return occurrences_; }

  // The product definition of a shape aspect or of a product's shape; 0 when it names none.
  Id ProductOfShape(Id shape);
  // Whether PMI may be on a product: something names its shape, or parts of it.
  bool HasAspects(Id product);
  // The products whose shape has an item.
  const std::unordered_set<Id>& ProductsOfItem(Id item);

 private:
  struct Use {
    Id occurrence;
    Id component;
    Transform transform;
  };

  void FindItems();
  void FindUses();
  Transform TransformOf(Id relationship, Id component);
  void Place(Id product, const std::string& path, const Transform& transform, int depth);

  Reading& reading_;
  std::vector<Occurrence> occurrences_;
  std::unordered_map<Id, std::vector<Use>> uses_;  // by the product that contains the component
  std::unordered_map<Id, std::unordered_set<Id>> productsOfRepresentation_;
  std::unordered_map<Id, std::unordered_set<Id>> productsOfItem_;
  std::unordered_map<Id, Id> productOfShape_;  // of those asked for
  std::unordered_map<Id, bool> hasAspects_;    // by product; of those asked for
  std::unordered_set<Id> placed_;
  std::size_t most_;  // occurrences
};

}  // namespace step

#include "readers/step/Reading.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace step {

namespace {

Model EmptyModel() {
  Model model;
  model.part = std::make_unique<standin::Part>();
  return model;
}

Units ReadUnits(Exchange& file) {
  try {
    return Units(file);
  } catch (const Unreadable& problem) {
    file.FailAt(problem.Of(), problem.what());
  }
}

}  // namespace

Reading::Reading(std::string_view text, const std::string& name)
    : file(text, name),
      units(ReadUnits(file)),
      model(EmptyModel()),
      part(*model.part),
      pointsLeft(2'000'000 + text.size()),
      name_(name),
      most_(std::min<std::size_t>(200'000 + text.size() / 8, 4'000'000)),
      left_(most_),
      account_(10'000 + text.size() / 200) {
  const auto& schemas = file.Schemas();
  const bool isAp242 = std::any_of(schemas.begin(), schemas.end(), [](const std::string& schema) {
    return schema.substr(0, 5) == "AP242";
  });
  if (!isAp242) {
    throw ModelError(name + ": the schema is " + (schemas.empty() ? "not named" : schemas.front()) +
                     ", not AP242");
  }
  model.format = "STEP AP242";
  model.linearUnit = units.LinearUnit();
  if (!units.IsStated() && !units.LinearUnit().empty()) {
    Skip(Severity::kReduced, file.Of("LENGTH_UNIT").front(),
         "no shape states its unit of length; it is taken to be in metres");
  }
}

// --- Instances -----------------------------------------------------------------------------------

const Instance& Reading::Get(Id id) {
  const Instance* const instance = file.Find(id);
  if (instance == nullptr) {
    throw Unreadable(
        id, id == 0 ? "a reference is missing" : "#" + std::to_string(id) + " does not exist");
  }
  return *instance;
}

bool Reading::Is(Id id, std::string_view entity) {
  try {
    const Instance* const instance = id == 0 ? nullptr : file.Find(id);
    return instance != nullptr && instance->Find(entity) != nullptr;
  } catch (const Unreadable&) {
    return false;
  }
}

// By its entities' names. Instances that can't be read count as such.
bool Reading::IsPmi(Id id) {
  constexpr std::string_view kWords[] = {
      "ANNOTATION", "ASPECT",  "CALLOUT", "CAMERA", "DATUM",     "DIMENSION", "DRAUGHTING",
      "FEATURE",    "LEADER",  "LIMITS",  "MARK",   "MEASURE",   "MODIFIER",  "PLACEHOLDER",
      "QUALIFIER",  "TEXTURE", "TEXT",    "USAGE",  "TOLERANCE", "VALUE",     "ZONE"};
  try {
    for (const Record& record : Get(id).records) {
      for (const std::string_view word : kWords) {
        if (record.name.find(word) != std::string_view::npos) return true;
      }
    }
    return false;
  } catch (const Unreadable&) {
    return true;
  }
}

std::string Reading::NameOf(Id item) {
  try {
    const Instance* const instance = item == 0 ? nullptr : file.Find(item);
    if (instance == nullptr) return {};
    const Record* named = instance->Find("REPRESENTATION_ITEM");
    if (named == nullptr) named = &instance->records.front();
    const bool isNamed = named->count > 0 && named->values[0].kind == Value::kString;
    return isNamed ? Spend(named->Text(0)) : std::string();
  } catch (const Unreadable&) {
    return {};
  }
}

std::vector<Id> Reading::ReferrersOf(Id id, std::string_view entity) {
  std::vector<Id> found;
  if (file.Of(entity).empty()) return found;
  const std::vector<Id> referrers = file.ReferrersOf(id);
  Spend(referrers.size() / 100);
  for (const Id referrer : referrers) {
    if (Is(referrer, entity)) found.push_back(referrer);
  }
  return found;
}

QENposition Reading::PointOf(Id id, double scale) {
  const Record& record = Get(id).As("CARTESIAN_POINT");
  const Value& list = record.List(record.count - 1);
  double xyz[3] = {};
  if (list.size < 2 || list.size > 3) throw Unreadable(id, "a point has three coordinates");
  for (std::uint32_t i = 0; i < list.size; ++i) xyz[i] = scale * NumberOf(id, list.items[i]);
  if (!std::isfinite(xyz[0]) || !std::isfinite(xyz[1]) || !std::isfinite(xyz[2])) {
    throw Unreadable(id, "its coordinates are too large");
  }
  return Placed({xyz[0], xyz[1], xyz[2]});
}

QENposition Reading::Placed(const QENposition& point) const {
  return occurrence_ == nullptr ? point : occurrence_->transform(point);
}

namespace {

QENvector DirectionOf(Reading& reading, Id id, const QENvector& otherwise) {
  if (id == 0) return otherwise;
  const Record& record = reading.Get(id).As("DIRECTION");
  const Value& list = record.List(record.count - 1);
  if (list.size != 3) throw Unreadable(id, "a direction has three components");
  return QENunit_vector(NumberOf(id, list.items[0]), NumberOf(id, list.items[1]),
                        NumberOf(id, list.items[2]));
}

}  // namespace

// Without a direction of x, or with one along the axis, it is the model's x or, along that, y.
Placement Reading::PlacementOf(Id id, double scale) {
  const Record& record = Get(id).As("AXIS2_PLACEMENT_3D");
  Placement placement;
  placement.origin = PointOf(record.Reference(1), scale);
  placement.axis = DirectionOf(*this, record.Reference(2), placement.axis);
  const bool isAlongX = std::abs(placement.axis.x()) > 0.999999;
  const QENvector otherwise = isAlongX ? QENvector(0, 1, 0) : QENvector(1, 0, 0);
  QENvector x = DirectionOf(*this, record.Reference(3), otherwise);
  if (!(cross(placement.axis, x).length_squared() > 1e-12)) x = otherwise;
  x = x + -dot(x, placement.axis) * placement.axis;
  placement.x = QENunit_vector(x.x(), x.y(), x.z());
  if (occurrence_ != nullptr) {
    placement.axis = occurrence_->transform(placement.axis);
    placement.x = occurrence_->transform(placement.x);
  }
  return placement;
}

// --- Products ------------------------------------------------------------------------------------

void Reading::Begin(Assembly& assembly, const Occurrence& occurrence) {
  assembly_ = &assembly;
  occurrence_ = &occurrence;
  wholeShape.clear();
  topology.clear();
  entitiesOf_.clear();
  annotations.clear();
  elsewhere_.clear();
}

bool Reading::IsOfProduct(Id shape) {
  if (occurrence_ == nullptr || occurrence_->product == 0) return true;
  const Id product = assembly_->ProductOfShape(shape);
  return product == occurrence_->product || (product == 0 && occurrence_->path.empty());
}

bool Reading::IsOfProduct(Id shape, Id annotation) {
  if (IsOfProduct(shape)) return true;
  elsewhere_.insert(annotation);
  return false;
}

bool Reading::HasItem(Id item) {
  if (occurrence_ == nullptr || occurrence_->product == 0) return true;
  const auto& products = assembly_->ProductsOfItem(item);
  return products.count(occurrence_->product) != 0 ||
         (products.empty() && occurrence_->path.empty());
}

void Reading::Spend(std::size_t more) {
  if (more > left_)
    throw ModelError(name_ +
                     ": it states more associations and repeated texts than its size allows");
  left_ -= more;
}

std::string Reading::Spend(std::string text) {
  Spend(text.size() / 16);
  return text;
}

// --- The model -----------------------------------------------------------------------------------

// What is missing of a product is missing of each of its occurrences, and listed once.
void Reading::Skip(Severity severity, Id id, const std::string& reason, const ENTITY* annotation) {
  if (occurrence_ != nullptr && !occurrence_->isFirst) return;
  std::string kind;
  try {
    const Instance* const instance = file.Find(id);
    if (instance != nullptr) kind = instance->records.front().name;
  } catch (const Unreadable&) {
    // It has a line all the same.
  }
  const auto known = ids_.find(annotation);
  account_.Add({severity, kind, "#" + std::to_string(id),
                known == ids_.end() ? "" : Path() + "#" + std::to_string(known->second), reason,
                file.LineOf(id), 1});
}

void Reading::SkipDangling() {
  const std::vector<std::pair<Id, Id>> dangling = file.Dangling();
  if (dangling.empty()) return;
  std::unordered_set<std::string> told;
  for (const SkippedItem& item : account_.Items()) told.insert(item.reason);
  for (const auto& [to, from] : dangling) {
    const std::string reason = "#" + std::to_string(to) + " does not exist";
    if (told.count(reason) != 0) continue;
    Skip(IsPmi(from) ? Severity::kLost : Severity::kIgnored, from, reason);
  }
}

Model Reading::Finish() {
  model.skipped = account_.Take();
  return std::move(model);
}

void Reading::Describe(ENTITY& entity, Id id, const char* kind, const std::string& name) {
  const std::string text = Path() + "#" + std::to_string(id);
  part.Id(entity, text.c_str());
  if (!name.empty()) part.Name(entity, Wide(name).c_str());
  model.labels[&entity] = {kind, name.empty() ? text : name};
  if (topology.count(id) == 0) ids_[&entity] = id;
}

void Reading::Write(const ENTITY& annotation, const char* field, const Quantity& quantity) {
  if (quantity.unit == (quantity.isAngle ? "degree" : units.LinearUnit())) return;
  model.written[&annotation].push_back({field, quantity.written, quantity.unit});
  std::string& unit = quantity.isAngle ? model.pmiAngularUnit : model.pmiLinearUnit;
  if (unit.empty()) unit = quantity.unit;
}

ENTITY& Reading::Carrier(const std::vector<ENTITY*>& entities) {
  Spend(entities.size());
  if (entities.size() == 1 && inBody.count(entities.front()) != 0) return *entities.front();
  return part.Collection(entities);
}

std::wstring Wide(std::string_view utf8) {
  std::wstring wide;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto first = static_cast<unsigned char>(utf8[i]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    auto code = static_cast<std::uint32_t>(length == 1 ? first : first & (0xFF >> (length + 1)));
    for (std::size_t k = 1; k < length && i + k < utf8.size(); ++k) {
      code = code << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
    }
    wide += static_cast<wchar_t>(code);
    i += length;
  }
  return wide;
}

}  // namespace step

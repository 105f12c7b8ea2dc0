#include "writers/qif/Plan.h"

#include <algorithm>
#include <cmath>

#include "writers/qif/Kinds.h"
#include "writers/qif/Targets.h"
#include "writers/qif/Texture.h"

namespace qif_writer {

namespace {

// Ids beyond are left for what the document has besides.
constexpr double kLargestKept = 4e9;

// The number that an id is, or 0.
Id NumberOf(const Text& id) {
  std::string text = id.value_or("");
  if (!text.empty() && text.front() == '#') text.erase(0, 1);
  const bool isNumber = !text.empty() && text.size() <= 10 && text.front() != '0' &&
                        text.find_first_not_of("0123456789") == std::string::npos;
  const double number = isNumber ? NumberIn(text).value_or(0) : 0;
  return number <= kLargestKept ? static_cast<Id>(number) : 0;
}

bool IsNameToken(const std::string& text) {
  const auto mayStand = [](unsigned char c) {
    return c >= 0x80 || std::isalnum(c) != 0 || c == '.' || c == '-' || c == '_' || c == ':';
  };
  return !text.empty() && std::all_of(text.begin(), text.end(), mayStand);
}

template <typename Thing>
bool IsBefore(const Thing& a, const Thing& b) {
  return a.id < b.id;
}

// All that tells frames apart.
std::string KeyOf(const FrameReport& frame) {
  std::string key = frame.note.value_or("");
  const auto add = [&](const std::string& text) { key += '\x1f' + text; };
  for (const ReferenceReport& reference : frame.references) {
    add("|");
    for (const FrameDatumReport& datum : reference.datums) {
      add(datum.id.value_or("") + "\x1e" + datum.label.value_or(""));
      for (const ModifierReport& modifier : datum.modifiers) {
        add(modifier.type.value_or("") + " " + Real(modifier.magnitude.value_or(0)));
      }
    }
  }
  return key;
}

}  // namespace

void Omissions::Add(const char* severity, const std::string& kind, const std::string& id,
                    const std::string& reason) {
  const std::string key = std::string(severity) + '\x1f' + kind + '\x1f' + id + '\x1f' + reason;
  const auto [place, isNew] = places_.try_emplace(key, items_.size());
  if (isNew) {
    items_.push_back({severity, kind, id, id, reason, 0, 1});
  } else {
    ++items_[place->second].count;
  }
}

std::string WhyNotWritten(const AnnotationReport& annotation, const Units& units) {
  if (annotation.kind == "text" || annotation.kind == "flagNote") return "";
  if (annotation.dimension) {
    const Text& type = annotation.dimension->type;
    if (KindOf(kDimensionKinds, type) != nullptr) return "";
    return "QIF has no dimension of type \"" + type.value_or("unknown") + "\"";
  }
  if (annotation.tolerance) {
    const ToleranceReport& tolerance = *annotation.tolerance;
    if (KindOf(kToleranceKinds, tolerance.type) == nullptr) {
      return "QIF has no tolerance of type \"" + tolerance.type.value_or("unknown") + "\"";
    }
    const bool hasValue = !tolerance.rows.empty() && tolerance.rows.front().magnitude &&
                          std::isfinite(*tolerance.rows.front().magnitude);
    return hasValue ? "" : "a QIF tolerance needs a value, and it has none";
  }
  if (annotation.datum) {
    const bool hasLabel = IsNameToken(Collapsed(annotation.datum->label.value_or("")));
    return hasLabel ? "" : "its label is no name that a QIF datum can have";
  }
  if (annotation.datumTarget) return "";
  if (annotation.roughness) {
    const bool isLength = IsTextureLength(*annotation.roughness, 0, units);
    return isLength ? "" : "a QIF texture needs a roughness average, and its own is no length";
  }
  return "QIF has no annotations of this kind";
}

Plan::Plan(const ModelReport& theReport, const Units& theUnits, Omissions& theOmissions)
    : report(theReport), units(theUnits), omissions(theOmissions) {
  Measure();
  TakeAnnotations();
  NumberAll();
  TakeEntities();
  TakeViews();
  AddParts();
}

void Plan::TakeAnnotations() {
  for (const ViewReport& view : report.views) {
    for (const AnnotationReport& annotation : view.annotations) {
      Item item{&annotation, &view};
      const std::string reason = WhyNotWritten(annotation, units);
      if (!reason.empty()) {
        omissions.Add("lost", item, reason);
      } else if (annotation.id && !byId_.emplace(*annotation.id, 0).second) {
        omissions.Add("reduced", item, "it has its place in one view only");
      } else {
        items.push_back(item);
      }
    }
  }
  for (const CaptureReport& capture : report.captures) captures.push_back({&capture});
}

Id Plan::Keep(const Text& id) {
  const Id number = NumberOf(id);
  if (number == 0 || !used_.insert(number).second) return 0;
  last_ = std::max(last_, number);
  return number;
}

void Plan::NumberAll() {
  std::map<std::string, Id> kept;
  for (Item& item : items) item.id = Keep(item.annotation->id);
  for (Capture& capture : captures) capture.id = Keep(capture.capture->id);
  const auto keep = [&](const EntityReport& entity) {
    if (entity.id && kept.count(*entity.id) == 0) kept[*entity.id] = Keep(entity.id);
  };
  for (const Item& item : items) {
    for (const EntityReport& entity : item.annotation->entities) keep(entity);
  }
  for (const Capture& capture : captures) {
    for (const EntityReport& entity : capture.capture->entities) keep(entity);
  }
  for (Item& item : items) item.id = item.id == 0 ? Next() : item.id;
  for (Capture& capture : captures) capture.id = capture.id == 0 ? Next() : capture.id;
  std::sort(items.begin(), items.end(), IsBefore<Item>);
  std::sort(captures.begin(), captures.end(), IsBefore<Capture>);
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].annotation->id) byId_[*items[i].annotation->id] = i;
  }
  const auto take = [&](const EntityReport& entity, bool isBody) {
    const std::size_t place = entities.size();
    if (entity.id) {
      const auto [known, isNew] = entityById_.emplace(*entity.id, place);
      if (!isNew) return void(entities[known->second].isBody |= isBody);
    } else {
      noIds_.emplace(&entity, place);
    }
    const Id number = entity.id ? kept[*entity.id] : 0;
    entities.push_back({entity, isBody, number == 0 ? Next() : number});
  };
  for (const Capture& capture : captures) {
    for (const EntityReport& entity : capture.capture->entities) {
      if (entity.kind == "body") take(entity, true);
    }
  }
  std::set<std::string> kinds = {"face", "edge", "vertex", "body"};
  for (const AppliedEntityReport& applied : report.entities) kinds.insert(applied.entity.kind);
  for (const Item& item : items) {
    for (const EntityReport& entity : item.annotation->entities) {
      if (kinds.count(entity.kind) != 0) {
        take(entity, false);
      } else {
        omissions.Add("lost", item, "QIF has no annotations that apply to a " + entity.kind);
      }
    }
  }
}

std::vector<std::size_t> Plan::EntitiesOf(const Item& item) const {
  std::vector<std::size_t> places;
  for (const EntityReport& entity : item.annotation->entities) {
    if (entity.id) {
      const auto found = entityById_.find(*entity.id);
      if (found != entityById_.end()) places.push_back(found->second);
    } else if (const auto found = noIds_.find(&entity); found != noIds_.end()) {
      places.push_back(found->second);
    }
  }
  return places;
}

Id Plan::FeatureOf(const Item& item) {
  const std::vector<std::size_t> places = EntitiesOf(item);
  if (places.empty()) return 0;
  const auto [known, isNew] = featureIds_.try_emplace(places, 0);
  if (isNew) {
    known->second = Next();
    features.push_back({known->second, places});
  }
  return known->second;
}

Id Plan::FrameOf(const Item& item, std::size_t row) {
  const FrameReport& frame = *item.annotation->tolerance->rows[row].frame;
  const auto [known, isNew] = frameIds_.try_emplace(KeyOf(frame), 0);
  if (isNew) {
    known->second = Next();
    frames.push_back({known->second, &frame, static_cast<std::size_t>(&item - items.data()), row});
  }
  return known->second;
}

void Plan::TakeEntities() {
  for (Item& item : items) {
    const AnnotationReport& annotation = *item.annotation;
    const bool isNote = annotation.kind == "text" || annotation.kind == "flagNote";
    if (!isNote) item.feature = FeatureOf(item);
    if (!isNote && !annotation.datum && !annotation.datumTarget) {
      item.definition = Next();
      item.measured = Next();
    }
    const bool hasFeature = item.feature != 0;
    if (annotation.datumTarget && HasZone(*annotation.datumTarget, units, hasFeature)) {
      item.zone = Next();
    }
    if (annotation.dimension && annotation.dimension->type == "thread") item.thread = Next();
    if (!annotation.tolerance) continue;
    for (std::size_t row = 0; row < annotation.tolerance->rows.size(); ++row) {
      item.frames.push_back(annotation.tolerance->rows[row].frame ? FrameOf(item, row) : 0);
    }
  }
}

void Plan::TakeViews() {
  for (const Item& item : items) {
    if (views.count(item.view) != 0 || !item.view->frame) continue;
    const ViewFrameReport& frame = *item.view->frame;
    const std::optional<Axes> axes = AxesOf(frame);
    const std::string id = item.view->id.value_or("");
    if (!axes) {
      omissions.Add("lost", "view", id, "its axes span no plane");
      continue;
    }
    views.emplace(item.view, View{Next(), frame, *axes});
    const Point3 offX = axes->x - frame.xAxis, offY = axes->y - frame.yAxis;
    if (Dot(offX, offX) + Dot(offY, offY) > 1e-9) {
      omissions.Add("ignored", "view", id, "QIF has axes of unit length at right angles only");
    }
  }
}

void Plan::AddParts() {
  for (Capture& capture : captures) {
    if (capture.capture->camera) capture.camera = Next();
    if (capture.capture->clippingPlane) capture.section = Next();
  }
  for (Id* id : {&part, &definition, &model, &standard, &featureDefinition}) *id = Next();
}

// The size of the part is that of the largest coordinate, as a power of ten.
void Plan::Measure() {
  double size = 1e-3;
  const auto add = [&](const Point3& point) {
    for (const double value : point) {
      if (std::isfinite(value)) size = std::max(size, std::abs(value));
    }
  };
  for (const ViewReport& view : report.views) {
    if (view.frame) add(view.frame->origin);
    for (const AnnotationReport& annotation : view.annotations) {
      for (const auto& leader : annotation.leaders) {
        for (const Point3& end : leader) add(end);
      }
    }
  }
  for (const CaptureReport& capture : report.captures) {
    if (capture.camera) add(capture.camera->target);
  }
  places_ = 13 - static_cast<int>(std::ceil(std::log10(size)));
}

const Item* Plan::Find(const Text& id) const {
  const auto found = id ? byId_.find(*id) : byId_.end();
  return found == byId_.end() ? nullptr : &items[found->second];
}

const Entity* Plan::FindEntity(const Text& id) const {
  const auto found = id ? entityById_.find(*id) : entityById_.end();
  return found == entityById_.end() ? nullptr : &entities[found->second];
}

std::vector<const Item*> Plan::OfKind(const std::string& kind) const {
  std::vector<const Item*> found;
  for (const Item& item : items) {
    if (item.annotation->kind == kind) found.push_back(&item);
  }
  return found;
}

}  // namespace qif_writer

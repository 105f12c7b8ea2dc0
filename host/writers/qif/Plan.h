#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "report/Report.h"
#include "writers/qif/Planes.h"
#include "writers/qif/Units.h"

namespace qif_writer {

using Id = std::uint32_t;  // 0 for none

// An annotation that the document has.
struct Item {
  const AnnotationReport* annotation;
  const ViewReport* view;
  Id id = 0;
  Id definition = 0;            // of a characteristic
  Id measured = 0;              // its item
  Id feature = 0;               // that carries its entities
  Id zone = 0, thread = 0;      // of a datum target and of a thread
  std::vector<Id> frames = {};  // of a tolerance's rows
};

struct Capture {
  const CaptureReport* capture;
  Id id = 0;
  Id camera = 0, section = 0;
};

struct Entity {
  EntityReport entity;
  bool isBody = false;  // of the document itself, because a saved view names it
  Id id = 0;
};

struct Feature {
  Id id;
  std::vector<std::size_t> entities;  // in Plan::entities
};

struct Frame {
  Id id;
  const FrameReport* frame;
  std::size_t item, row;  // the first tolerance with it, by its place in Plan::items
};

struct View {
  Id id;
  ViewFrameReport frame;
  Axes axes;
};

// What the document cannot say, in the order in which it was met; alike ones are counted.
class Omissions {
 public:
  void Add(const char* severity, const std::string& kind, const std::string& id,
           const std::string& reason);
  void Add(const char* severity, const Item& item, const std::string& reason) {
    Add(severity, item.annotation->kind, item.annotation->id.value_or(""), reason);
  }
  std::vector<SkippedReport> Take() { return std::move(items_); }
  const std::vector<SkippedReport>& Items() const { return items_; }

 private:
  std::vector<SkippedReport> items_;
  std::map<std::string, std::size_t> places_;
};

// What stands in the document, and under which ids. An id of the report that is a number, at most
// with # before it, is kept.
class Plan {
 public:
  Plan(const ModelReport& report, const Units& units, Omissions& omissions);

  const ModelReport& report;
  const Units& units;
  Omissions& omissions;
  std::vector<Item> items;        // by id
  std::vector<Capture> captures;  // by id
  std::vector<Entity> entities;   // by id
  std::vector<Feature> features;
  std::vector<Frame> frames;
  std::map<const ViewReport*, View> views;  // those with a plane
  // The ids of what the document has one of.
  Id part = 0, definition = 0, model = 0, standard = 0, featureDefinition = 0;

  Id Last() const { return last_; }
  // The annotation of an id of the report, or null.
  const Item* Find(const Text& id) const;
  // The entity of an id of the report, or null.
  const Entity* FindEntity(const Text& id) const;
  std::vector<const Item*> OfKind(const std::string& kind) const;
  // The entities of an annotation, by their places in `entities`.
  std::vector<std::size_t> EntitiesOf(const Item& item) const;
  // Lists a name that can't be kept as it is.
  void ReduceName(const Item& item) {
    omissions.Add("reduced", item, "a name in QIF has single spaces only");
  }
  // Lists a value whose unit can't be kept.
  void OmitUnit(const Item& item, const std::string& unit) {
    omissions.Add("reduced", item, "its values stand in the report's unit, not in " + unit);
  }
  // How far places of points go behind the point: a 10^13th of the part's size.
  int Places() const { return places_; }

 private:
  void TakeAnnotations();
  void NumberAll();
  void TakeEntities();
  void AddParts();
  void Measure();
  void TakeViews();
  Id FeatureOf(const Item& item);
  Id FrameOf(const Item& item, std::size_t row);
  Id Keep(const Text& id);
  Id Next() { return ++last_; }

  Id last_ = 0;
  int places_ = 13;
  std::set<Id> used_;
  std::map<std::string, std::size_t> byId_;           // in items
  std::map<std::string, std::size_t> entityById_;     // in entities
  std::map<const EntityReport*, std::size_t> noIds_;  // those without one
  std::map<std::vector<std::size_t>, Id> featureIds_;
  std::map<std::string, Id> frameIds_;
};

// Why an annotation can't be written; empty when it can.
std::string WhyNotWritten(const AnnotationReport& annotation, const Units& units);

}  // namespace qif_writer

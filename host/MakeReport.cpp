#include "MakeReport.h"

#include "pmi_entities/pmi_semantics.h"
#include "report/Walk.h"

namespace {

const char* NameOf(Severity severity) {
  switch (severity) {
    case Severity::kLost:
      return "lost";
    case Severity::kReduced:
      return "reduced";
    case Severity::kIgnored:
      break;
  }
  return "ignored";
}

}  // namespace

ModelReport MakeReport(const Model& model, KOVAPMIExporter& exporter, const std::string& file) {
  exporter.PreProcess();
  DocumentNames names;
  names.entity = [&](const void* object) {
    const auto found = model.labels.find(object);
    return found == model.labels.end() ? EntityReport{"entity", {}, {}}
                                       : EntityReport{found->second.kind, {}, found->second.label};
  };
  names.written = [&](const void* object) {
    std::vector<WrittenReport> written;
    const auto found = model.written.find(object);
    if (found == model.written.end()) return written;
    for (const WrittenValue& value : found->second) {
      written.push_back({value.field, value.text, value.unit});
    }
    return written;
  };
  names.members = [&](const void* object) {
    const auto* const entity = static_cast<const ENTITY*>(object);
    std::vector<void*> members;
    // A plug-in may name anything; only what the reader made is an entity.
    if (model.labels.count(object) == 0 || !is_KOVAPMI_CAPTURE(entity)) return members;
    const ENTITY_LIST& list = static_cast<const KOVAPMI_CAPTURE*>(entity)->GetMembers();
    list.init();
    while (ENTITY* member = list.next()) members.push_back(member);
    return members;
  };
  ModelReport report = WalkModel(exporter, names);
  SourceReport& source = report.source;
  source.file = file;
  source.format = model.format;
  source.partFile = model.partFile;
  source.partFormat = model.partFormat;
  source.linearUnit = model.linearUnit;
  source.pmiLinearUnit = model.pmiLinearUnit;
  source.pmiAngularUnit = model.pmiAngularUnit;
  source.counts = model.counts;
  source.skipped.reserve(model.skipped.size());
  for (const SkippedItem& item : model.skipped) {
    source.skipped.push_back({NameOf(item.severity), item.kind, item.id, item.annotation,
                              item.reason, item.line, item.count});
  }
  return report;
}

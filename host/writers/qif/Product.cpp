// The part: notes, bodies that saved views show, and the entities of its own file.

#include <algorithm>

#include "writers/qif/Sections.h"

namespace qif_writer {

namespace {

void WriteNotes(Xml& xml, Plan& plan, const char* set, const char* name, const std::string& kind) {
  const std::vector<const Item*> notes = plan.OfKind(kind);
  if (notes.empty()) return;
  xml.OpenList(set, notes.size());
  for (const Item* item : notes) {
    const AnnotationReport& note = *item->annotation;
    xml.Open(name);
    if (note.name.value_or("") != "") xml.Attribute("label", *note.name);
    xml.Attribute("id", std::to_string(item->id));
    if (note.hidden.value_or(false)) xml.Attribute("hidden", "true");
    WriteEntityIds(xml, plan, plan.EntitiesOf(*item));
    xml.Leaf("Text", note.texts.empty() ? "" : note.texts.front().string.value_or(""));
    xml.Close();
  }
  xml.Close();
}

std::vector<const Entity*> Entities(const Plan& plan, bool isBody) {
  std::vector<const Entity*> found;
  for (const Entity& entity : plan.entities) {
    if (entity.isBody == isBody) found.push_back(&entity);
  }
  return found;
}

// The label of an entity that has one besides its id.
std::string LabelOf(const EntityReport& entity) {
  return entity.label == entity.id ? "" : entity.label.value_or("");
}

void WriteBodies(Xml& xml, Plan& plan) {
  const std::vector<const Entity*> bodies = Entities(plan, true);
  if (bodies.empty()) return;
  xml.Open("TopologySet");
  xml.OpenList("BodySet", bodies.size());
  for (const Entity* body : bodies) {
    const std::string label = LabelOf(body->entity);
    xml.Open("Body");
    if (!label.empty()) xml.Attribute("label", label);
    xml.Attribute("id", std::to_string(body->id));
    xml.Close();
  }
  xml.Close();
  xml.Close();
}

void WriteEntities(Xml& xml, Plan& plan) {
  const std::vector<const Entity*> entities = Entities(plan, false);
  if (entities.empty()) return;
  xml.OpenList("Entities", entities.size());
  for (const Entity* entity : entities) {
    const std::string id = Collapsed(entity->entity.id.value_or(""));
    const std::string label = LabelOf(entity->entity);
    xml.OpenWithId("Entity", entity->id);
    xml.Leaf("EntityId", id);
    if (!label.empty()) xml.Leaf("Name", Collapsed(label));
    if (entity->entity.kind != "entity") xml.Leaf("Description", entity->entity.kind);
    xml.Close();
    if (Collapsed(label) != label) {
      plan.omissions.Add("ignored", entity->entity.kind, id,
                         "a name in QIF has single spaces only");
    }
  }
  xml.Close();
}

// The part's own file, in which the entities are.
void WritePart(Xml& xml, Plan& plan) {
  const SourceReport& source = plan.report.source;
  const std::string& path = source.partFile.empty() ? source.file : source.partFile;
  const std::string& format = source.partFile.empty() ? source.format : source.partFormat;
  const std::string file = path.substr(path.find_last_of('/') + 1);
  xml.OpenList("PartSet", 1);
  xml.OpenWithId("Part", plan.part);
  xml.OpenList("DefinitionExternal", 1);
  xml.Attribute("id", std::to_string(plan.definition));
  xml.OpenWithId("DigitalModel", plan.model);
  xml.Leaf("Name", file);
  xml.Open("File");
  xml.Leaf("Name", Collapsed(file));
  xml.Open("Format");
  if (format == "STEP AP242") {
    xml.Leaf("DigitalModelFormatEnum", "STEPAP242");
  } else {
    xml.Leaf("OtherDigitalModelFormat", format);
  }
  xml.Close();
  xml.Close();
  WriteEntities(xml, plan);
  xml.Close();
  xml.Close();
  xml.Close();
  xml.Close();
  xml.Open("RootPart");
  xml.Reference("Id", plan.part);
  xml.Close();
}

}  // namespace

void WriteProduct(Xml& xml, Plan& plan) {
  xml.Open("Product");
  WriteBodies(xml, plan);
  WriteNotes(xml, plan, "NoteSet", "Note", "text");
  WriteNotes(xml, plan, "NoteFlagSet", "NoteFlag", "flagNote");
  WriteViews(xml, plan);
  WriteDisplays(xml, plan);
  WritePart(xml, plan);
  xml.Close();
}

}  // namespace qif_writer

// The sections of a document: lists those that nothing is read from.

#include <algorithm>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

using Names = std::vector<std::string_view>;

// A section and what stands in it. What it has besides is not known.
struct Section {
  std::initializer_list<const char*> path;
  bool isList;  // may have several children of a name
  Names read;   // or tying elements together
  Names noPmi;  // not read, and nothing of PMI
  Names pmi;    // not read, but PMI
};

// Names as QIF 3.0 has them.
const Section kSections[] = {
    {{},
     false,
     {"QPId", "Attributes", "FileUnits", "DatumDefinitions", "DatumTargetDefinitions",
      "DatumReferenceFrames", "ThreadSpecifications", "Product", "Features", "FeatureZones",
      "Characteristics"},
     {"VersionHistory",
      "Version",
      "Header",
      "ValidationCounts",
      "ProductDataQuality",
      "ExternalQIFReferences",
      "StandardsDefinitions",
      "SoftwareDefinitions",
      "AlgorithmDefinitions",
      "PreInspectionTraceability",
      "Transforms",
      "CoordinateSystems",
      "MeasurementResources",
      "Plan",
      "Results",
      "Statistics",
      "ManufacturingProcessTraceabilities",
      "Rules",
      "UserDataXML",
      "Signature"},
     {}},
    {{"FileUnits"}, false, {"PrimaryUnits", "OtherUnits", "UserDefinedUnits"}, {}, {}},
    {{"FileUnits", "PrimaryUnits"},
     false,
     {"LinearUnit", "PMILinearUnit", "AngularUnit", "PMIAngularUnit", "AreaUnit", "PMIAreaUnit",
      "ForceUnit", "MassUnit", "PressureUnit", "SpeedUnit", "TemperatureUnit", "TimeUnit"},
     {},
     {}},
    {{"FileUnits", "OtherUnits"},
     true,
     {"LinearUnit", "AngularUnit", "AreaUnit", "ForceUnit", "MassUnit", "PressureUnit", "SpeedUnit",
      "TemperatureUnit", "TimeUnit"},
     {},
     {}},
    {{"DatumDefinitions"}, true, {"DatumDefinition"}, {}, {}},
    {{"DatumTargetDefinitions"}, true, {"DatumTarget"}, {}, {}},
    {{"DatumReferenceFrames"}, true, {"DatumReferenceFrame"}, {}, {}},
    {{"ThreadSpecifications"}, true, {"ThreadSpecification"}, {}, {}},
    {{"Product"},
     false,
     {"TopologySet", "NoteSet", "NoteFlagSet", "PartNoteSet", "ViewSet", "VisualizationSet",
      "PartSet", "AssemblySet", "ComponentSet", "RootPart", "RootAssembly", "RootComponent"},
     {"Header", "GeometrySet", "LayerSet", "CoordinateSystemSet", "AuxiliarySet", "AsmPaths",
      "MaterialLibrary"},
     {}},
    {{"Product", "TopologySet"},
     false,
     {"VertexSet", "EdgeSet", "LoopSet", "FaceSet", "ShellSet", "BodySet", "PointCloudSet"},
     {},
     {}},
    {{"Product", "TopologySet", "VertexSet"}, true, {"Vertex"}, {}, {}},
    {{"Product", "TopologySet", "EdgeSet"}, true, {"Edge"}, {}, {}},
    {{"Product", "TopologySet", "LoopSet"}, true, {"Loop", "LoopMesh"}, {}, {}},
    {{"Product", "TopologySet", "FaceSet"}, true, {"Face", "FaceMesh"}, {}, {}},
    {{"Product", "TopologySet", "ShellSet"}, true, {"Shell"}, {}, {}},
    {{"Product", "TopologySet", "BodySet"}, true, {"Body"}, {}, {}},
    {{"Product", "TopologySet", "PointCloudSet"}, true, {"PointCloud"}, {}, {}},
    {{"Product", "NoteSet"}, true, {"Note", "NoteFlag"}, {}, {}},
    {{"Product", "NoteFlagSet"}, true, {"NoteFlag"}, {}, {}},
    {{"Product", "PartNoteSet"}, true, {"PartNote"}, {}, {}},
    {{"Product", "ViewSet"},
     false,
     {"CameraSet", "SavedViewSet", "AnnotationViewSet", "ZoneSectionSet"},
     {"SimplifiedRepresentationSet", "ExplodedViewSet", "DisplayStyleSet", "HatchStyleSet"},
     {}},
    {{"Product", "ViewSet", "CameraSet"}, true, {"Camera"}, {}, {}},
    {{"Product", "ViewSet", "SavedViewSet"}, true, {"SavedView"}, {}, {}},
    {{"Product", "ViewSet", "AnnotationViewSet"}, true, {"AnnotationView"}, {}, {}},
    {{"Product", "ViewSet", "ZoneSectionSet"}, true, {"ZoneSection"}, {}, {}},
    {{"Product", "VisualizationSet"},
     false,
     {"Fonts", "PMIDisplaySet"},
     {},
     {"TrailingZeroDisplay"}},
    {{"Product", "VisualizationSet", "Fonts"}, true, {"Font"}, {}, {}},
    {{"Product", "VisualizationSet", "PMIDisplaySet"}, true, {"PMIDisplay"}, {}, {}},
    {{"Features"},
     false,
     {"FeatureDefinitions", "FeatureNominals"},
     {"FeatureItems", "NominalPointSets"},
     {}},
    {{"Features", "FeatureDefinitions"}, true, {"*FeatureDefinition"}, {}, {}},
    {{"Features", "FeatureNominals"}, true, {"*FeatureNominal"}, {}, {}},
    {{"FeatureZones"},
     true,
     {"FeatureZonePoint", "FeatureZoneCurveLine", "FeatureZoneCurveCircular",
      "FeatureZoneCurveIrregular", "FeatureZoneAreaCircular", "FeatureZoneAreaRectangular",
      "FeatureZoneAreaIrregular", "FeatureZoneAreaCylindrical", "FeatureZoneAreaBetween",
      "FeatureZoneAreaSpherical", "FeatureZoneList"},
     {},
     {}},
    {{"Characteristics"},
     false,
     {"FormalStandardId", "CharacteristicDefinitions", "CharacteristicNominals",
      "CharacteristicItems"},
     {"CharacteristicGroups"},
     {"DefaultCharacteristicDefinitions", "DefaultToleranceDefinitions",
      "SimultaneousRequirementGroups"}},
};

// A name of the list with a star first stands for all that end so.
bool Has(const Names& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(), [name](std::string_view known) {
    return known.front() == '*' ? EndsWith(name, known.substr(1)) : name == known;
  });
}

void ListOthers(Reading& reading, const Section& section, Element element) {
  Names seen;
  for (const Element child : element.children()) {
    const std::string_view name = NameOf(child);
    if (Has(section.read, name)) {
      if (section.isList || !Has(seen, name)) {
        if (!section.isList) seen.push_back(name);
        continue;
      }
      reading.Skip(Severity::kLost, child, "this section is there already; the first is read");
    } else if (Has(section.noPmi, name)) {
      reading.Skip(Severity::kIgnored, child, "it holds no annotations");
    } else if (Has(section.pmi, name)) {
      reading.Skip(Severity::kLost, child, "the model has no place for it");
    } else {
      reading.Skip(Severity::kLost, child,
                   "such an element is not known in " + Quote(NameOf(element)));
    }
  }
}

}  // namespace

void ListOtherSections(Reading& reading) {
  for (const Section& section : kSections) {
    if (const Element element = reading.document.At(section.path)) {
      ListOthers(reading, section, element);
    }
  }
}

}  // namespace qif

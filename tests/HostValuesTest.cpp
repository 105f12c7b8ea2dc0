// What a user sees of short documents: a few lines of a document, and values of the report on it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <nlohmann/json.hpp>

#include "HostDocuments.h"
#include "standin/Control.h"

namespace {

using Json = nlohmann::json;

// A document with places for pieces: "@name@", "@name|what stands there otherwise@", or "@name!what
// comes there for each piece "name $1: $2"@". "</>" ends the innermost element, "[mm]" defines a
// unit. The body has the faces "top" and "side", each with a feature, the wire edge "rim" and the
// vertex "tip". The display of "it" has its x along the model's y and its y against the model's x;
// the camera has the model's y to the right, its z up and its x towards the viewer.
constexpr const char* kDocument =
    R"(<QIFDocument xmlns="http://qifstandards.org/xsd/qif3" versionQIF="3.0.0">
<QPId/><FileUnits><PrimaryUnits>@units|<LinearUnit>[mm]</>@</><OtherUnits>
 <LinearUnit>[m]</><LinearUnit>[mm]</><LinearUnit>[um]</><LinearUnit>[km]</><LinearUnit>[inch]</>
 <LinearUnit>[ft]</><AngularUnit>[radian]</><AngularUnit>[degree]</><AngularUnit>[grad]</></></>
@root@<DatumDefinitions>@datums@
 <DatumDefinition id="11"><DatumLabel>A</><FeatureNominalIds><Id>22</></></>
 <DatumDefinition id="12"><DatumLabel>B</></><DatumDefinition id="13"><DatumLabel>C</></></>
<DatumTargetDefinitions>@zone!<DatumTarget id="50"><DatumTargetLabel>it</>
  <FeatureNominalId>21</><TargetZoneId>80</></>@</>
<DatumReferenceFrames>@frame!<DatumReferenceFrame id="30"><Datums>$2</><Name>note</></>@</>
<Product>@product@
 <TopologySet>
  <VertexSet><Vertex id="1"/><Vertex id="2"/><Vertex id="3" label="tip"/></>
  <EdgeSet><Edge id="4" label="rim"><VertexBeg><Id>1</></><VertexEnd><Id>2</></></></>
  <FaceSet><Face id="5" label="top"/><Face id="6" label="side"/>@faces@</>
  <LoopSet>@loops@</>
  <BodySet>@body|<Body id="9" label="part"><FaceIds><Id>5</><Id>6</></><EdgeIds><Id>4</></>
   <VertexIds><Id>3</></></>@</></>
 <NoteSet>@notes@@note!<Note id="50" label="it">$2</>@</><NoteFlagSet>@flags@</>
 <ViewSet>@views@
  <CameraSet>@camera!<Camera $1><ViewPlaneOrigin>10 20 30</><Orientation><Value>1 -1 -1 -1</>$2
   </>@</><SavedViewSet>@view!<SavedView id="90" label="view">$2</>@</>
  <ZoneSectionSet>@section!<ZoneSection id="95"><SectionPlanes>$2</></>@</>
  <AnnotationViewSet><AnnotationView id="61"><Normal>0 0 1</><Direction>0 1 0</></></></>
 <VisualizationSet>@shown@<Fonts>@fonts@</><PMIDisplaySet>@displays@@drawn!<PMIDisplay><Plane>
   <AnnotationViewId><Id>61</></><Origin>10 20 30</></>$2<Reference><Id>50</></></>@</></></>
<Features>
 <FeatureDefinitions><PlaneFeatureDefinition id="20"/>
  @feature!<$1FeatureDefinition id="25">$2</>@</>
 <FeatureNominals>
  <PlaneFeatureNominal id="21"><FeatureDefinitionId>20</><EntityInternalIds><Id>5</></></>
  <PlaneFeatureNominal id="22"><FeatureDefinitionId>20</><EntityInternalIds><Id>6</></></>
  @feature!<$1FeatureNominal id="23"><FeatureDefinitionId>25</>@@entities@@feature!</>@</></>
<FeatureZones>@zone!<FeatureZone$1 id="80">$2</>@</>
<Characteristics>@lists@<FormalStandardId>1</>
 <CharacteristicDefinitions>@it!<$1CharacteristicDefinition id="40">$2</>@</>
 <CharacteristicNominals>@it!<$1CharacteristicNominal id="50"><CharacteristicDefinitionId>40</>
  <Name>it</>@@nominal@@it!</>@</></>
<ThreadSpecifications><ThreadSpecification>@things@</></>
</>)";

void Replace(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
}

// The document with pieces, whose word and text stand at their place.
using Pieces = std::multimap<std::string, std::pair<std::string, std::string>>;
std::string Document(const Pieces& pieces) {
  std::string text, part;
  std::istringstream parts(kDocument);
  for (bool isPlace = false; std::getline(parts, part, '@'); isPlace = !isPlace) {
    const std::size_t mark = std::min(part.find_first_of("!|"), part.size());
    auto [piece, end] = pieces.equal_range(isPlace ? part.substr(0, mark) : "");
    if (!isPlace) text += part;
    if (isPlace && piece == end && part[mark] == '|') text += part.substr(mark + 1);
    for (; piece != end; ++piece) {
      std::string one = part[mark] == '!' ? part.substr(mark + 1) : "$2";
      Replace(one, "$1", piece->second.first);
      Replace(one, "$2", piece->second.second);
      text += one;
    }
  }
  std::istringstream factors(
      "m 1 mm 0.001 um 0.000001 km 1000 inch 0.0254 ft 0.3048 radian 1 "
      "degree 0.017453292519943295 grad 0.015707963267948967");
  for (std::string unit, factor; factors >> unit >> factor;) {
    Replace(text, "[" + unit + "]",
            "<UnitName>" + unit + "</><UnitConversion><Factor>" + factor + "</></>");
  }
  std::vector<std::string> open;
  std::string closed;
  std::size_t from = 0;
  for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos; ++at) {
    if (text.compare(at, 3, "</>") == 0) {
      closed += text.substr(from, at - from) + "</" + open.back() + ">";
      open.pop_back();
      from = at + 3;
    } else if (text[text.find('>', at) - 1] != '/') {
      open.push_back(text.substr(at + 1, text.find_first_of(" >", at) - at - 1));
    }
  }
  return closed + text.substr(from);
}

// What a path names in a report: "listed" the kinds of what was skipped, "account" the entries as
// "severity kind id/annotation xcount", "/..." a place of the report, any other a place of the
// annotation "it".
Json At(const Json& report, const std::string& path) {
  Json kinds = Json::array(), entries = Json::array();
  for (const Json& item : report.at("source").at("skipped")) {
    const auto text = [&](const char* key) {
      return item.at(key).is_null() ? Json("") : item.at(key);
    };
    kinds.push_back(item.at("kind"));
    entries.push_back(text("severity").get<std::string>() + " " + text("kind").get<std::string>() +
                      " " + text("id").get<std::string>() + "/" +
                      text("annotation").get<std::string>() + " x" + item.at("count").dump());
  }
  if (path == "listed") return kinds;
  if (path == "account") return entries;
  if (path[0] == '/') return report.value(Json::json_pointer(path), Json("nowhere"));
  for (const Json& view : report.at("views")) {
    for (const Json& annotation : view.at("annotations")) {
      if (annotation.at("name") != "it") continue;
      return annotation.value(Json::json_pointer("/" + path), Json("nowhere"));
    }
  }
  return "no annotation";
}

// Objects may have more keys than are wanted. No text is as good as none.
bool IsLike(const Json& want, const Json& got) {
  if (want.is_number() && got.is_number()) {
    return std::abs(want.get<double>() - got.get<double>()) <= 1e-12 * std::abs(want.get<double>());
  }
  const auto isNone = [](const Json& value) { return value.is_null() || value == ""; };
  if (!want.is_structured() || want.type() != got.type()) {
    return want == got || (isNone(want) && isNone(got));
  }
  const auto& parts = want.items();
  return (want.is_object() || want.size() == got.size()) &&
         std::all_of(parts.begin(), parts.end(), [&](const auto& part) {
           const Json::json_pointer place("/" + part.key());
           return got.contains(place) && IsLike(part.value(), got.at(place));
         });
}

// Lines "place word: piece" and "path = value". Nothing is listed unless it says so or draws.
void CheckCase(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    line.erase(0, line.find_first_not_of(' '));
    if (line[0] == '#') continue;
    if (line[0] == '/' || std::isalpha(line[0]) != 0) lines.emplace_back();
    lines.back() += line;
  }
  Pieces pieces;
  std::map<std::string, Json> values;
  for (const std::string& line : lines) {
    const std::size_t is = line.find(" = "), colon = line.find(':');
    if (is < colon) {
      values[line.substr(0, is)] = Json::parse(line.substr(is + 3));
      continue;
    }
    const std::size_t space = std::min(line.find(' '), colon), word = std::min(space + 1, colon);
    const std::string place = line.substr(0, space);
    EXPECT_THAT(kDocument, testing::HasSubstr("@" + place));
    pieces.insert({place, {line.substr(word, colon - word), line.substr(colon + 1)}});
  }
  if (pieces.count("displays") + pieces.count("drawn") + values.count("account") == 0) {
    values.insert({"listed", Json::array()});
  }
  const Model model = ReadQifText(Document(pieces), "it.qif");
  const Json report = Json::parse(json::PrintJson(ReportOn(model), "tests", -1));
  for (const auto& [path, want] : values) {
    const Json got = At(report, path);
    EXPECT_TRUE(IsLike(want, got)) << path << " is " << got << ", not " << want << " in\n"
                                   << text << "\nlisted: " << report.at("source").at("skipped");
  }
}

// Cases with empty lines between them. One with a table is a case for each of its rows, whose
// columns stand for $1, $2 ...
void Check(const std::string& cases) {
  const std::size_t next = cases.find("\n\n");
  if (next != std::string::npos) Check(cases.substr(next + 2));
  const std::string text = cases.substr(0, next);
  const std::size_t table = text.find("\n|");
  std::string rows = table == std::string::npos ? "\n" : text.substr(table + 1);
  Replace(rows, "||", "|\n|");
  std::istringstream in(rows);
  for (std::string row, column; std::getline(in, row);) {
    std::string one = text.substr(0, table);
    std::istringstream columns(row);
    std::getline(columns, column, '|');
    for (int i = 1; std::getline(columns, column, '|'); ++i) {
      column.erase(0, column.find_first_not_of(' '));
      column.erase(column.find_last_not_of(' ') + 1);
      Replace(one, "$" + std::to_string(i), column);
    }
    CheckCase(one);
  }
}

TEST(HostValues, LengthsComeInThePrimaryUnitWhateverUnitTheyAreWrittenIn) {
  Check(R"(units: $1
      it Length: <Tolerance><MaxValue $2>$3</><MinValue $2>$3</></>
      nominal: <TargetValue $2>$3</>
      dimension = {"value": $4, "upper": $4, "lower": $4}
|  |  | 3 | 3 || <LinearUnit>[m]</> |  | 0.25 | 0.25 |
| <LinearUnit>[m]</> | linearUnit='mm' | 250 | 0.25 || <LinearUnit>[mm]</> |  | 0.375 | 0.375 |
| <LinearUnit>[mm]</> | linearUnit='inch' | .375 | 9.525 || <LinearUnit>[mm]</> | linearUnit='um' | 1600 | 1.6 |
| <LinearUnit>[inch]</> | linearUnit='mm' | 25.4 | 1 || <LinearUnit>[inch]</> | linearUnit='ft' | 2 | 24 |
| <LinearUnit>[ft]</> | linearUnit='inch' | 6 | 0.5 || <LinearUnit>[um]</> | linearUnit='mm' | 1.5 | 1500 |
| <LinearUnit>[mm]</><PMILinearUnit>[inch]</> |  | 2 | 50.8 |
| <LinearUnit>[mm]</><PMILinearUnit>[inch]</> | linearUnit='mm' | 2 | 2 |
| <PMILinearUnit>[mm]</><LinearUnit>[inch]</> |  | -25.4 | -1 |
| <LinearUnit>[km]</><PMILinearUnit>[m]</> |  | 100 | 0.1 |

units: <LinearUnit>[mm]</><PMILinearUnit>[inch]</>
      it Flatness: <ToleranceValue $1>2</>
      tolerance/rows/0/magnitude = $2
|  | 50.8 || linearUnit='um' | 0.002 |

units: <LinearUnit>[mm]</><PMILinearUnit>[inch]</>
      it Width: <Tolerance><MaxValue decimalPlaces="2">1.5</><MinValue linearUnit="mm">20</>
        <DefinedAsLimit>1</></>
      nominal: <TargetValue>1</>
      /source/pmiLinearUnit = "inch"
      dimension = {"value": 25.4, "upperText": "1.50 inch", "lowerText": "20"}
      written = [{"field": "value", "text": "1", "unit": "inch"},
                 {"field": "upperText", "text": "1.5", "unit": "inch"}]

# The geometry does not know the unit of PMI.
units: <LinearUnit>[mm]</><PMILinearUnit>[inch]</>
      zone AreaRectangular: <Rectangle><Length>3</><CornerPoint linearUnit='ft'>0 1 0</>
        <Width linearUnit='um'>5000</><WidthDirection>0 0 -1</><LengthDirection>0 1 0</></>
      /source/linearUnit = "mm"
      datumTarget = {"point1": [0, 304.8, 0], "point2": [0, 307.8, -5], "note": "3x5000 um"})");
}

TEST(HostValues, AnglesComeInDegreesAndSizesOfFeaturesStandInForTargets) {
  Check(R"(units: $1
      it $2: <Tolerance><MaxValue $3>$4</><MinValue $3>$4</></>
      nominal: <TargetValue $3>$4</>
      dimension = {"value": $5, "upper": $5, "lower": $5}
|  | Angle |  | 1.5707963267948966 | 90 || <AngularUnit>[degree]</> | AngleFrom |  | 45.5 | 45.5 |
| <AngularUnit>[radian]</><PMIAngularUnit>[degree]</> | AngleBetween |  | 30 | 30 |
| <AngularUnit>[degree]</> | AngularCoordinate | angularUnit='radian' | 3.141592653589793 | 180 |
| <AngularUnit>[grad]</> | UserDefinedAngular |  | 100 | 90 |
| <AngularUnit>[degree]</><PMIAngularUnit>[grad]</> | Angle |  | 50 | 45 |
| <AngularUnit>[degree]</><PMIAngularUnit>[grad]</> | Angle | angularUnit='degree' | 50 | 50 |

units: <LinearUnit>[mm]</><PMILinearUnit>[ft]</><AngularUnit>[degree]</><PMIAngularUnit>[grad]</>
      feature Cylinder: $2
      it $1:
      nominal: <FeatureNominalIds><Id>23</></>
      dimension/value = $3
| Diameter | <Diameter linearUnit='inch'>2</> | 50.8 || Diameter | <Radius>2</> | 4 |
| Radius | <Diameter>5</> | 2.5 || Radius | <Radius>5</> | 5 |
| SphericalDiameter | <Diameter>6</> | 6 || SphericalRadius | <Diameter>6</> | 3 |
| Length | <Width>1</><Length>7</> | 7 || Width | <Width>1</><Length>7</> | 1 |
| Square | <Width>3</> | 3 || Depth | <Depth>8</> | 8 || CurveLength | <Length>9</> | 9 |
| Angle | <FullAngle>60</> | 60 || Angle | <TaperAngle>3</> | 3 |

it Height:
      listed = ["HeightCharacteristicNominal"])");
}

TEST(HostValues, DimensionsHaveTheirKindLimitsAndDecimals) {
  Check(R"(it $1:
      nominal: <TargetValue>1</>
      dimension = {"type": "$2", "mainType": "$3"}
| Length | length | linear || Width | width | linear || Height | height | linear |
| Depth | depth | linear || Thickness | thickness | linear || Square | square | linear |
| DistanceFrom | distance | linear || DistanceBetween | distance | linear |
| Chord | chord | linear || CurveLength | curveLength | curveLength |
| Diameter | diameter | diametral || SphericalDiameter | sphericalDiameter | diametral |
| Radius | radius | radial || SphericalRadius | sphericalRadius | radial |
| Angle | angle | angular || AngleFrom | angleBetween | angular |
| AngleBetween | angleBetween | angular || LinearCoordinate | linearCoordinate | coordinate |
| AngularCoordinate | angularCoordinate | coordinate || ConicalTaper | conicalTaper | taper |
| FlatTaper | flatTaper | taper || UserDefinedLinear | userDefined | userDefined |
| UserDefinedAngular | userDefined | userDefined |

it UserDefinedUnit:
      nominal: <TargetValue>5</><MaxValue>7</><MinValue>4.5</><DefinedAsLimit>true</>
      dimension = {"type": "unknown", "value": 5, "upper": 2, "lower": -0.5}

it UserDefinedArea:
      nominal: <TargetValue>5</>
      listed = ["UserDefinedAreaCharacteristicNominal"]

it Diameter: <Tolerance>$1<DefinedAsLimit>$2</></>
      things: <SomeTolerance id="90"><MaxValue>0.3</><MinValue>-0.2</></>
      nominal: <TargetValue>20</>
      dimension = {"upper": $3, "lower": $4, "upperText": "$5", "lowerText": "$6",
                   "tolerancePrecision": $7}
| <MaxValue>0.300</><MinValue>-0.10</> | false | 0.3 | -0.1 |  |  | 3 |
| <MinValue>-0.1</><MaxValue decimalPlaces='2'>0.3</> | 0 | 0.3 | -0.1 |  |  | 2 |
| <MaxValue>20.1</><MinValue decimalPlaces='2'>19.9</> | true | 0.1 | -0.1 | 20.1 | 19.90 | 2 |
| <MaxValue>21</><MinValue decimalPlaces='1'>20</> | 1 | 1 | 0 | 21 | 20.0 | 1 |
| <MaxValue linearUnit='inch'>1</><MinValue>20.5</> | true | 5.4 | 0.5 | 1 inch | 20.5 | 1 |
| <MaxValue decimalPlaces='2'>2.1e1</><MinValue>20</> | true | 1 | 0 | 2.1e1 | 20 | 2 |
| <DefinitionId>90</> | false | 0.3 | -0.2 |  |  | 1 |

it Diameter: <Tolerance>$1<DefinedAsLimit>$2</></>
      nominal: <TargetValue>20</>
      dimension/$3 = $4
      dimension/$3Text = "$5"
      listed = ["Tolerance"]
| <MaxValue>0.3</> | false | upper | 0.3 | || <MinValue>-0.1</> | false | lower | -0.1 | |
| <MinValue decimalPlaces='1'>20</> | true | lower | 0 | 20.0|

it Diameter: $1
      nominal: <TargetValue>20</>
      dimension = {"tolerance": "$2", "upper": $3, "lower": $3, "tolerancePrecision": $3}
| <Tolerance><MaxValue>0</><MinValue>0</></> | plusMinus | 0 ||  | none | null |

it Length:
      nominal: <TargetValue $1>$2</>
      dimension/precision = $3
|  | 9 | 0 ||  | 9. | 0 ||  | 9.5e-1 | 0 ||  | 9.50 | 2 ||  | -.125 | 3 || decimalPlaces='3' | 9.5 | 3 |
| decimalPlaces='1' | 9.50 | 1 || decimalPlaces='15' | 9.50 | 15 |)");
}

TEST(HostValues, TextsRightAroundValuesTellBasicAndReferenceDimensionsAndFits) {
  Check(R"x(it Diameter: <DimensionType>$1</>$2
      nominal: <TargetValue>20</>
      dimension = {"texts": {"prefix": $3, "suffix": $4}, "tolerance": "$5", "upper": null}
      listed = [$6]
| BASIC_OR_TED |  | "[" | "]" | basic |  || REFERENCE_OR_AUXILIARY |  | "(" | ")" | reference |  |
| UNDEFINED |  | null | null | none |  || SET |  | null | null | none | "DimensionType" |
| UNDEFINED | <LimitsAndFitsSpecification zoneVariance="SHAFT"><Grade>7</></> | null | "7" | none | "LimitsAndFitsSpecification", "LimitsAndFitsSpecification" |
| REFERENCE_OR_AUXILIARY | <LimitsAndFitsSpecification><FormVariance>H</><Grade>7</></> | "(" | "H7)" | reference | "LimitsAndFitsSpecification" |
| UNDEFINED | <LimitsAndFitsSpecification><FormVariance>f</><Grade>8</></> | null | "f8" | none | "LimitsAndFitsSpecification" |)x");
}

TEST(HostValues, DrawnTextsAndThreadsAreTold) {
  Check(R"(feature $1
      it Length:
      nominal: <TargetValue>8</><FeatureNominalIds><Id>23</></>
      drawn: <Texts><Text><Data>$2</><XY>0 0</></></>
      dimension/texts = {"before": $3, "after": $4, "holeCallout": $5}
| Plane: | 8 | null | null | null || Plane: | 4X {DIAMETER}8 {PLUS_MINUS}0.1 DEEP | "4X" | "DEEP" | null |
| Plane: | 2X R5 | "2X" | null | null || Plane: | R5 MM | null | null | null |
| Plane: | TYP (SR.5 IN) | "TYP" | null | null || Plane: | 45{DEGREE} BOTH SIDES | null | "BOTH SIDES" | null |
| Plane: | 8 MM{BR}THRU | null | "THRU" | null || Plane: | 3 × {SQUARE}12 | "3 ×" | null | null |
| Plane: | {COUNTERBORE}12 | "⌴" | null | "⌴12" || Plane: | {DEPTH}5 | "↧" | null | "↧5" |
| Plane: | SLOT | null | null | null || Group: <IsSpotface>true</> | SF 8 | "SF" | null | "SF 8" |
| Group: <IsCounterboredHole>1</> | 8 | null | null | "8" |
| Group: <IsCountersunkHole>true</> | 8 | null | null | "8" |
| Group: <IsRunoutGroup>true</> | 8 | null | null | null || Threaded: | M8 6H | "M" | "H" | "M8 6H" |

it Thread: <ThreadSpecificationId>90</>
      things: $1
      dimension = {"type": "thread", "mainType": "thread", "texts": {"holeCallout": "$2"}}
| <TextThreadSpecification id='90'><TextSpecification>M6x1</></> | M6x1 |
| <SingleLeadSpecification id='90'><Diameter>.250</><ThreadSeries><ThreadSeriesEnum>UNC</></><ThreadToleranceClass><OtherThreadClass>2A</></><ThreadDensity>20</></> | .250-20-UNC-2A |

it Thread: <ThreadSpecificationId>90</>
      things: <SingleLeadSpecification id='90'><Diameter>.250</><LeftHanded>true</></>
      dimension/value = 0.25
      dimension/precision = 3
      listed = ["LeftHanded"]

it Thread: <ThreadSpecificationId>90</>
      listed = ["ThreadCharacteristicNominal"])");
}

TEST(HostValues, AnnotationsApplyToWhatTheirFeaturesComeDownTo) {
  // The group is one of its own features too.
  Check(R"(feature Group:
      entities: <FeatureNominalIds><Id>22</><Id>23</><Id>21</></>
      it $1:
      nominal: <TargetValue>1</>$2
      entities = [$3]
| Length | | || Length | <FeatureNominalIds><Id>21</></> | {"kind": "face", "label": "top"} |
| Length | <FeatureNominalIds><Id>23</><Id>22</></> | {"label": "side"}, {"label": "top"} |
| Length | <EntityInternalIds><Id>4</></> | {"kind": "edge", "label": "rim"} |
| Length | <EntityInternalIds><Id>3</></> | {"kind": "vertex", "label": "tip"} |
| Length | <EntityInternalIds><Id>9</></> | {"kind": "body", "label": "part"} |
| DistanceBetween | <FeatureNominalPairs><FeaturePair><FirstFeature>21</><SecondFeature>22</></></> | {"label": "top"}, {"label": "side"} |
| DistanceBetween | <FeatureNominalIds><Id>22</></><FeatureNominalPairs><FeaturePair><FirstFeature>21</><SecondFeature>22</></></> | {"label": "side"}, {"label": "top"} |
| DistanceFrom | <FeatureNominalIds><Id>21</></><OriginReference><FeatureNominalId>22</></> | {"label": "top"}, {"label": "side"} |
| DistanceFrom | <FeatureNominalIds><Id>21</></><OriginReference><DatumDefinitionId>11</></> | {"label": "top"}, {"label": "side"} |

feature Group:
      entities: <EntityExternalIds><Id>7</></>
      it Length:
      nominal: <TargetValue>1</>$1
      entities = []
      account = ["lost $2/50 x1"]
| <FeatureNominalIds><Id>61</></> | AnnotationView 61 || <FeatureNominalIds><Id>23</></> | GroupFeatureNominal 23 |
| <OriginReference><DatumDefinitionId>22</></> | LengthCharacteristicNominal 50 |

body: $1
      it Length:
      nominal: <TargetValue>1</>$2
      dimension/value = 1
      entities = [$3]
      listed = ["Vertex", $4"Face", "Face"]
|  |  |  | "Vertex", "Vertex", "Edge", |
| <Body id='9'><EdgeIds><Id>4</></></> | <EntityInternalIds><Id>4</></> | {"kind": "edge", "label": "rim"} |  |)");
}

TEST(HostValues, EdgesOfLoopsBelongToTheBodyOfTheirFace) {
  Check(R"(body: <Body id="9"><FaceIds><Id>5</><Id>6</><Id>8</></><VertexIds><Id>3</></></>
      faces: <Face id="8"><LoopIds><Id>10</></></>
      loops: <Loop id="10"><$1><CoEdge><EdgeOriented><Id>4</></></></></>
      listed = [$2]
| CoEdges | || CoEdgesMesh | || Other | "Vertex", "Vertex", "Edge" |

# What bounds one face bounds no other; an edge belongs to the first body that names it.
body: <Body id="9"><FaceIds><Id>5</><Id>6</><Id>8</></><VertexIds><Id>3</></></>
      faces: <Face id="7"><LoopIds><Id>10</></></><Face id="8"><LoopIds><Id>10</></></>
      loops: <Loop id="10"><CoEdges><CoEdge><EdgeOriented><Id>4</></></></></>
      listed = ["Face", "Vertex", "Vertex", "Edge", "Face"]

body: <Body id="9"><EdgeIds><Id>4</></></><Body id="10"><EdgeIds><Id>4</></></>
      /source/counts/wireBodies = 1
      listed = ["Vertex", "Face", "Face"])");
}

TEST(HostValues, TolerancesAreOfTheirKind) {
  for (const std::string kind :
       {"Straightness",   "Flatness",      "Circularity", "Cylindricity", "Conicity",
        "Sphericity",     "Ellipticity",   "Toroidicity", "OtherForm",    "LineProfile",
        "SurfaceProfile", "PointProfile",  "Angularity",  "Parallelism",  "Perpendicularity",
        "Position",       "Concentricity", "Coaxiality",  "Symmetry",     "CircularRunout",
        "TotalRunout"}) {
    CheckCase("it " + kind + ": <ToleranceValue>0.1</>\n tolerance/type = \"" +
              static_cast<char>(std::tolower(kind[0])) + kind.substr(1) + "\"");
  }
  Check(R"(it SurfaceProfileNonUniform: <ToleranceValue>0.1</>
      tolerance = {"type": "surfaceProfile", "allAround": false})");
}

TEST(HostValues, RowsHaveZonesModifiersRefinementsAndExtents) {
  Check(R"(it Position: <ToleranceValue>0.2</><ZoneShape><$1/></>
      tolerance/rows/0 = {"magnitude": 0.2, "valueType": "$2"}
| DiametricalZone | diametrical || SphericalZone | spherical || NonDiametricalZone | none |

it Position: <ToleranceValue>0.2</><$1</>
      tolerance/rows/0/modifiers = [{"type": "$2", "magnitude": $3}]
| ZoneShape><NonDiametricalZone><BoundaryZone>true</></> | boundary | null |
| MaterialCondition>MAXIMUM | maximumMaterial | null || MaterialCondition>LEAST | leastMaterial | null |
| MaterialCondition>REGARDLESS | regardlessOfFeatureSize | null |
| MaterialCondition>MAXIMUM_RPR | maximumMaterialReciprocity | null |
| MaterialCondition>LEAST_RPR | leastMaterialReciprocity | null || FreeState>1 | freeState | null |
| TangentPlane>true | tangentPlane | null || StatisticalCharacteristic>true | statisticalTolerance | null |
| CommonZone>true | commonZone | null || EachRadialElement>true | eachRadialElement | null |
| OrientationOnly>true | orientationOnly | null || MaximumToleranceValue>0.4 | maximumTolerance | 0.4 |
| ProjectedToleranceZoneValue>12 | projectedZone | 12 || OuterDisposition>0.1 | unequallyDisposed | 0.1 |
| UnequallyDisposedZone>-0.1 | unequallyDisposed | -0.1 |

it Position: <ToleranceValue>0.2</><MaterialCondition>NONE</><FreeState>false</>
      tolerance/rows/0/modifiers = []

it Position: <ToleranceValue>0.2</><ToleranceZonePer$1><ToleranceValuePerUnit>0.05</>$2</>
      tolerance/rows/0 = {"magnitude": 0.2, "refinement": 0.05, "rateUnit1": $3, "rateUnit2": $4}
| UnitLength | <UnitLength>25</> | 25 | 0 || UnitArcLength | <UnitLength>24</> | 24 | 0 |
| UnitArea | <CircularUnitArea><CircularUnitAreaDiameter>8</></> | 8 | 0 |
| UnitArea | <RectangularUnitArea><RectangularUnitAreaLength>25</><RectangularUnitAreaWidth>30</></> | 25 | 30 |
| UnitAngle | <UnitAngle>3.141592653589793</> | 180 | 0 |
| UnitPolarArea | <UnitAngle>3.141592653589793</><UnitLength>7</> | 180 | 7 |

it Position: <ToleranceValue>0.2</>$1
      listed = ["$2"]
| <ToleranceZonePerUnitArea><ToleranceValuePerUnit>0.05</><UnitAngle>1</><UnitLength>7</><CircularUnitArea><CircularUnitAreaDiameter>8</></></> | ToleranceZonePerUnitArea |
| <MaximumToleranceValue decimalPlaces="1">2</> | MaximumToleranceValue |
| <ZoneShape><PlanarZone><ZoneOrientationVector>0 0 1</></></> | ZoneOrientationVector |

# A value per unit alone is the row's. A row without a value is none.
it Flatness: <ToleranceZonePerUnitLength><ToleranceValuePerUnit>0.05</><UnitLength>25</></>
      tolerance/rows/0 = {"magnitude": 0.05, "refinement": 0, "rateUnit1": 25}

it Position:
      kind = "no annotation"
      listed = ["PositionCharacteristicNominal"]

it Position: <ToleranceValue>0.4</>
        <SecondCompositeSegmentPositionDefinition><ToleranceValue>0.3</>
          <MaterialCondition>LEAST</><ProjectedToleranceZone>3</></>
        <ThirdCompositeSegmentPositionDefinition><ToleranceValue>0.2</></>
        <FourthCompositeSegmentPositionDefinition><ToleranceValue>0.1</>
          <ZoneShape><SphericalZone/></></>
      tolerance/rows = [{"magnitude": 0.4, "modifiers": []},
        {"magnitude": 0.3, "modifiers": [{"type": "leastMaterial"},
                                         {"type": "projectedZone", "magnitude": 3}]},
        {"magnitude": 0.2, "valueType": "none"}, {"magnitude": 0.1, "valueType": "spherical"}]

it SurfaceProfile: <ToleranceValue>1</><Extent>$1</>
      tolerance/allAround = $2
      tolerance/notes/lower = $3
| <ExtentEnum>ALL_AROUND</> | true | null || <ExtentEnum>ALL_AROUND_THIS_SIDE</> | true | "ALL AROUND THIS SIDE" |
| <ExtentEnum>ALL_OVER</> | false | "ALL OVER" || <ExtentEnum>UNDEFINED</> | false | null |
| <OtherExtent>P to Q</> | false | "P to Q" |)");
}

TEST(HostValues, FramesNameTheirDatumsInOrderWithTheirModifiers) {
  Check(R"(it Position: <ToleranceValue>1</><DatumReferenceFrameId>30</>
      datums: <DatumDefinition id="14"><DatumLabel>D</></>
      frame: <Datum><SimpleDatum><DatumDefinitionId>13</></>
          <Precedence><PrecedenceEnum>SECONDARY</></></>
        <Datum><CompoundDatum>
            <Datum><SimpleDatum><DatumDefinitionId>14</></><SequenceNumber>2</></>
            <Datum><SimpleDatum><DatumDefinitionId>12</></><SequenceNumber>1</></></>
          <Precedence><PrecedenceEnum>TERTIARY</></></>
        <Datum><SimpleDatum><DatumDefinitionId>11</></>
          <Precedence><PrecedenceEnum>PRIMARY</></></>
      tolerance/rows/0/frame = {"note": "note", "references": [
        {"label": "A", "datums": [{"label": "A", "modifiers": []}]},
        {"label": "C", "datums": [{"label": "C"}]},
        {"label": "B-D", "datums": [{"label": "B"}, {"label": "D"}]}]}

it Position: <ToleranceValue>1</><DatumReferenceFrameId>30</>
      frame: <Datum><SimpleDatum><DatumDefinitionId>11</><$1</></></>
      tolerance/rows/0/frame/references/0/datums/0/modifiers = [{"type": "$2", "magnitude": $3}]
| MaterialModifier>MAXIMUM | maximumMaterial | null || MaterialModifier>LEAST | leastMaterial | null |
| MaterialModifier>REGARDLESS | regardlessOfFeatureSize | null |
| MaterialModifier>MAXIMUM_RPR | maximumMaterialReciprocity | null |
| MaterialModifier>LEAST_RPR | leastMaterialReciprocity | null |
| DatumTranslation><DatumTranslationAllowed>true</> | translation | null |
| DatumFeatureSimulatorModifier><BasicSize>BASIC</> | basic | null |
| ProjectedDatum>9 | projectedZone | 9 || DiameterModifier>PD | pitchDiameter | null |
| DiameterModifier>MD | majorDiameter | null || DiameterModifier>LD | minorDiameter | null |
| SectionModifier>ACS | anyCrossSection | null || SectionModifier>ALS | anyLongitudinalSection | null |
| SectionModifier>SCS | specificCrossSection | null || ContactingFeature>true | contactingFeature | null |
| DistanceVariable>true | distanceVariable | null || ReducedDatum>PT | point | null |
| ReducedDatum>SL | straightLine | null || ReducedDatum>PL | plane | null |
| ConstrainOrientation>true | orientationOnly | null |

# What has no place is listed, be it of a datum or of all in a compartment.
it Position: <ToleranceValue>1</><DatumReferenceFrameId>30</>
      frame: <Datum>$1</>
      listed = ["$2"]
| <Precedence><PrecedenceEnum>PRIMARY</></> | Datum |
| <CompoundDatum><Datum><SequenceNumber>first</></></> | PositionCharacteristicNominal |
| <SimpleDatum><DatumDefinitionId>11</></><Precedence/><Precedence/> | Precedence |
| <SimpleDatum><DatumDefinitionId>11</><DatumFixed>true</></> | DatumFixed |
| <CompoundDatum><Datum><SimpleDatum><DatumDefinitionId>11</></></><ReducedDatum>PT</></> | ReducedDatum |)");
}

TEST(HostValues, DatumTargetsHaveTheirKindPlaceAndSize) {
  Check(R"(zone $1
      datumTarget = {"label": "it", "type": "$2", "point1": $3, "point2": $4, "note": "$5"}
      entities = [{"label": "top"}]
| Point: <Point>1 2 3</> | point | [1, 2, 3] | null |  |
| CurveLine: <Line><StartPoint>1 2 3</><EndPoint>4 5 6</></> | line | [1, 2, 3] | [4, 5, 6] |  |
| CurveCircular: <Circle><CenterPoint>1 2 3</><Diameter>4.50</></> | circle | [1, 2, 3] | null | ⌀4.50 |
| AreaCircular: <Circle><CenterPoint>1 2 3</><Diameter>4.50</></> | circle | [1, 2, 3] | null | ⌀4.50 |
| AreaCylindrical: <Cylinder><CenterPoint>1 2 3</><Diameter>4.50</></> | area | [1, 2, 3] | null | ⌀4.50 |
| AreaSpherical: <Sphere><CenterPoint>1 2 3</><Diameter>4.50</></> | area | [1, 2, 3] | null | ⌀4.50 |
| AreaIrregular: | area | null | null |  |
| AreaRectangular: <Rectangle><Length>20</><CornerPoint>1 2 3</><Width>10</><WidthDirection>0 0 1</><LengthDirection>0 -2 0</></> | rectangle | [1, 2, 3] | [1, -18, 13] | 20x10 |

zone $1
      account = ["lost $2/50 x1"]
| Point: | FeatureZonePoint 80 |
| CurveLine: <Line><StartPoint>1 2 3</><EndPoint>4 5 6</><EndPoint>0 0 0</></> | EndPoint 80 |

root: <DatumTargetDefinitions><DatumTarget id="50"><DatumTargetLabel>it</><TargetZoneId>5</></></>
      kind = "datumTarget"
      account = ["lost DatumTargetDefinitions / x1", "lost DatumTarget 50/50 x1"]

zone AreaIrregular: <FaceIds><Id>6</><Id>5</></>
      datums: <DatumDefinition id="14"><DatumLabel>D</><DatumTargetIds><Id>50</></><Other>1</></>
      listed = ["Other"]
      entities = [{"label": "side"}, {"label": "top"}]
      /entities = [{"id": "6", "annotations": ["11", "50", "14"]},
                   {"id": "5", "annotations": ["50", "14"]}]
      /source/counts = {"datums": 4, "datumTargets": 1, "faces": 2, "vertices": 3, "bodies": 1}
      /totals/datum = 4
      /totals/datumTarget = 1)");
}

TEST(HostValues, TexturesHaveTheirFieldsInOrder) {
  Check(R"(it SurfaceTexture: <RoughnessAverage>3.2</>
      nominal: <Obtention>MACHINING_FORBIDDEN</><Applicability>BASIC_SURFACE</>
        <MinimumMaterialRemoval>0.5</><ProductionMethod>MILLED</><Cutoff linearUnit="um">800</>
        <SecondaryRoughnessParameter linearUnit="um">6.3</><DirectionOfLay>RADIAL</><OtherSurfaceParameter>Rz 5</>
      roughness = {"fields": ["3.2", "0.5", "MILLED", "800 um", "6.3 um", "R", "Rz 5"],
                   "obtention": "machiningForbidden", "applicability": "basicSurface"}

it SurfaceTexture:
      nominal: <$1>$2</>
      roughness/$3 = "$4"
| DirectionOfLay | PARALLEL | fields/5 | = || DirectionOfLay | PERPENDICULAR | fields/5 | ⊥ |
| DirectionOfLay | CROSS_HATCH | fields/5 | X || DirectionOfLay | MULTI_DIRECTIONAL | fields/5 | M |
| DirectionOfLay | CIRCULAR | fields/5 | C || DirectionOfLay | PARTICULATE | fields/5 | P |
| Obtention | MACHINING_MANDATORY | obtention | machiningMandatory |
| Obtention | UNDEFINED | obtention | unspecified || Obtention | UNSUPPORTED | obtention | unknown |
| Applicability | SPECIFIED_SURFACE_ONLY | applicability | specifiedSurfaceOnly |
| Applicability | ALL_PART_SURFACES | applicability | allPartSurfaces |
| Applicability | UNSUPPORTED | applicability | unknown |

note: $1
      drawn: <Texts><Text><Data>A{DIAMETER}</><XY>5 0</></><Text><Data>$2</><XY>50 0</></>
        <Text><Data>{Q}</><XY>8 0</></><Text><Data>C{BR}{NO SUCH}</><XY>5 -3</></></>
      kind = "text"
      texts/0/string = "$3"
| <Text>own</> |  | own || <Text/> | B | A⌀B\nⓆ\nC\n{NO SUCH} ||  |  | A⌀Ⓠ\nC\n{NO SUCH} |

flags: <NoteFlag id="50" label="it" hidden="1"><Text>own</></>
      kind = "flagNote"
      hidden = true)");
}

TEST(HostValues, FontsHaveTheirStyleAndHeight) {
  // 72 points are an inch; the plug-in answers in single precision.
  Check(R"(note: <Text>own</>
      fonts: <Font index="3" $1><Name>$2</><Size>72</></>
      drawn: <Texts fontIndex="3" $3/>
      texts/0/font = {"fixedPitch": $4, "bold": $5, "italic": $6, "underline": $7, "height": $8}
|  | Sans |  | false | false | false | false | 25.399999618530273 |
| bold='true' | Sans |  | false | true | false | false | 25.399999618530273 |
| italic='1' | Sans | lineHeight='3.5' | false | false | true | false | 3.5 |
| underline='true' | Sans Mono | lineHeight='0.5' | true | false | false | true | 0.5 |)");
}

TEST(HostValues, DisplaysHaveTheirPlaceLinesAndTextsAroundTheFrame) {
  Check(R"(it $1
      drawn: <$2><StartPoint>1 2</><EndPoint>3 4</>$3</>
      leaders = [$4]
| Length: | Leader |  | {"tail": [6, 23, 30], "head": [8, 21, 30]} |
| Length: | LeaderExtend | <PointExtension>7 8</> | {"tail": [2, 27, 30], "head": [8, 21, 30]} |
| Length: | LeaderCircular | <Center>0 0</> | {"tail": [6, 23, 30], "head": [8, 21, 30]} |
| Flatness: <ToleranceValue>1</> | LeaderDoubleHead | <HeadForm>NONE</><HeadForm2>ARROW_OPEN</><PointConnection>5 6</> | {"tail": [6, 23, 30], "head": [4, 25, 30]} |
| Flatness: <ToleranceValue>1</> | LeaderDoubleHead | <HeadForm>ARROW_OPEN</><HeadForm2>NONE</><PointConnection>5 6</> | {"tail": [6, 23, 30], "head": [8, 21, 30]} |
| Flatness: <ToleranceValue>1</> | LeaderDoubleHeadExtend | <HeadForm>ARROW_OPEN</><HeadForm2>ARROW_OPEN</><PointConnection>5 6</><PointExtension>7 8</> | {"tail": [2, 27, 30], "head": [8, 21, 30]}, {"tail": [2, 27, 30], "head": [4, 25, 30]} |

it Length:
      drawn: $1
      dimension/$2 = [$3]
| <LeaderDoubleHead><StartPoint>1 2</><EndPoint>5 6</><PointConnection>5 6</></> | line | [1, 2], [5, 6] |
| <WitnessLines><Segment1><StartPoint>1 2</><EndPoint>3 4</></><Segment2><StartPoint>5 6</><EndPoint>7 8</></></> | extensionLines | [1, 2], [5, 6], [3, 4] |
| <WitnessLines><BeginPoint>1 2</><EndPoint>3 4</><CircleCenter>5 6</><CircleRadius>7</></> | extensionLines | [1, 2], [3, 4], [5, 6] |

it $1
      drawn: <LeaderDoubleHead><StartPoint>0 0</><EndPoint>5 0</><HeadForm>DOT</>
        <PointConnection>$2 0</></>
      nominal: $5
      leaders = [$3]
      listed = [$4"LeaderDoubleHead"]
| Width: | 5 |  |  | <TargetValue>1</> || Width: | 2 |  | "LeaderDoubleHead", | <TargetValue>1</> |
| Flatness: <ToleranceValue>1</> | 5 | {"tail": [10, 25, 30], "head": [10, 20, 30]} | "LeaderDoubleHead", | |
| Flatness: <ToleranceValue>1</> | 2 | {"tail": [10, 25, 30], "head": [10, 20, 30]}, {"tail": [10, 25, 30], "head": [10, 22, 30]} |  | |

it Flatness: <ToleranceValue>1</>
      drawn: <LeaderExtend><StartPoint>1 2</><EndPoint>3 4</><PointExtension>7 8</><Modifier>$1</></>
      tolerance/allAround = $2
| ALL_AROUND | true || ALL_AROUND_FLAG | true || ALL_OVER | false |

note: <Text>own</>
      drawn:
      /views/0/frame = {"origin": [10, 20, 30], "xAxis": [0, 1, 0], "yAxis": [-1, 0, 0]}
      position = [0, 0]
      depth = 0

# A direction of its own takes the place of the view's.
note: <Text>own</>
      displays: <PMIDisplay><Plane><AnnotationViewId><Id>61</></><Direction>2 0 0</></>
        <Reference><Id>50</></></>
      /views/0/frame = {"origin": [0, 0, 0], "xAxis": [1, 0, 0], "yAxis": [0, 1, 0]}

it Flatness: <ToleranceValue>1</>
      drawn: <Texts><Text><Data>in</><XY>10 2</></><Text><Data>4X</><XY>-8 2</></>
          <Text><Data>ST</><XY>16 2</></><Text><Data>P</><XY>1 8</></>
          <Text><Data>Q</><XY>1 6</></><Text><Data>R</><XY>1 -3</></></>
        <Frames><FrameRectangular><XY>0 0</><Width>6</><Height>4</></>
          <FrameRectangular><XY>6 0</><Width>9</><Height>4</></></>
      tolerance/notes = {"before": "4X", "after": "ST", "upper": "P\nQ", "lower": "R",
                         "prefix": null, "suffix": null})");
}

TEST(HostValues, DistancesOfTheProductAreDividedByItsScale) {
  Check(R"(note: <Text>own</>
      product: <Header><ScaleCoefficient>4</></>
      drawn: <Leader><StartPoint>4 8</><EndPoint>12 16</></><Texts fontIndex="3" lineHeight="2"/>
      fonts: <Font index="3"><Name>Sans</><Size>72</></>
      camera id='91' label='flat': </><Near>-400</><Height>50</>
      section: <SectionPlane><Plane><Point>1 2 3</><Normal>0 -1 0</></></>
      view: <CameraIds><Id>91</></><ZoneSectionId active="true">95</>
      /views/0/frame/origin = [2.5, 5, 7.5]
      leaders = [{"tail": [-1.5, 8, 7.5], "head": [0.5, 6, 7.5]}]
      texts/0/font/height = 0.5
      /captures/0/camera/target = [2.5, 5, 7.5]
      /captures/0/camera/origin = [102.5, 5, 7.5]
      /captures/0/camera/zoom = 0.08
      /captures/0/clippingPlane = {"point": [0.25, 0.5, 0.75], "normal": [0, -1, 0]}
      listed = ["Header"]

# What characteristics, zones and fonts state is no distance of the product.
zone Point: <Point>1 2 3</>
      product: <Header><ScaleCoefficient>4</></>
      datumTarget/point1 = [1, 2, 3]
      listed = ["Header"]

it Diameter:
      product: <Header><ScaleCoefficient>4</></>
      nominal: <TargetValue>20</>
      dimension/value = 20
      listed = ["Header"])");
}

TEST(HostValues, CapturesHaveTheirMembersCameraAndSection) {
  Check(R"(note: <Text>own</>
      view: <AnnotationVisibleIds><Id>50</></><BodyIds><Id>9</></>
      /captures/0 = {"name": "view", "camera": null, "clippingPlane": null, "hiddenText": null}
      /captures/0/members/count = 2

camera id='91' label='flat': </><Near>-400</><Height>50</>
      camera id='92' form='PERSPECTIVE': </><Near>100</><Height>100</>
      view: <CameraIds>$1</>
      /captures/0/camera = {"type": "$2", "name": "$3", "viewAngle": $4, "zoom": $5,
        "origin": $6, "target": $7, "viewDirection": [-1, 0, 0], "viewDirectionNormal": [0, 0, 1]}
      listed = [$8]
| <Id>91</> | parallel | flat | 0 | 0.02 | [410, 20, 30] | [10, 20, 30] |  |
| <Id>91</><Id active='1'>92</> | perspective | view | 90 | 0.01 | [10, 20, 30] | [-90, 20, 30] | "SavedView" |

camera id='91': </><Near>1</><Height>$1</>
      view: <CameraIds><Id>91</></>
      listed = ["SavedView"]
| -50 || 0 || 1e-321 |

section: $1
      view: <ZoneSectionId active="1">95</>
      listed = ["SavedView"]
|  || <SectionPlane><Plane><Point>1 2 3</><Normal>0 0 0</></></> |

views: <SavedViewSet><SavedView id="96"/><SavedView id="97"><AnnotationVisibleIds><Id>96</></></></>
      account = ["lost SavedViewSet / x1", "lost SavedView 97/97 x1"]

section: $1<SectionPlane><Plane><Point>1 2 3</><Normal>0 -1 0</></></>
      view: <ZoneSectionId active="$2">95</>
      /captures/0/clippingPlane = $3
      listed = [$4]
|  | true | {"point": [1, 2, 3], "normal": [0, -1, 0]} |  |
| <SectionPlane><Plane><Point>4 5 6</><Normal>1 0 0</><Direction>0 0 1</></></> | 1 | {"point": [4, 5, 6], "normal": [1, 0, 0]} | "SavedView", "Direction" |
| <Cap/> | 0 | null | "SavedView" |
| <Cap/> | 1 | {"point": [1, 2, 3], "normal": [0, -1, 0]} | "Cap" |

camera id='91': <Roll>2</></><Near>1</><Height>5</>
      view: <CameraIds><Id>91</></>
      listed = ["Roll"]

things: </><Screw id='90'/><ThreadSpecification>
      listed = ["Screw"])");
}

TEST(HostValues, DrawnTextsFontsAndColoursAreInTheReportOrListed) {
  Check(R"($1
      fonts: <Font index="3"><Name>Sans</><Size>72</></>
      drawn: $2<Texts fontIndex="3"><Text><Data>8</><XY>$3</></></>
      listed = [$4]
| note: | | 0 0 | || note: | | 0 3 | "Texts" || note: | | 3 0 | "Texts" |
| note: <Text>7</> | | 0 0 | "Texts" || it Flatness: <ToleranceValue>1</> | | 0 0 | "Texts" |
| note: | <Color>0 255 0</> | 0 0 | || note: | <Color>0 256 0</> | 0 0 | "PMIDisplay" |
| note: | <Color>0 0 -1</> | 0 0 | "PMIDisplay" |

it Width: <StatisticalCharacteristic>1</><Tolerance><MaxValue>1</><MinValue>0</></>
      nominal: <TargetValue>7</>
      drawn: $1
      dimension/texts = {"suffix": "$2", "after": "$3"}
      listed = [$4]
| <Leader><StartPoint>0 0</><EndPoint>5 0</><StartPoint>0 0 0</></> | ⟨ST⟩ | | "StartPoint" |
| <WitnessLines><Segment1><StartPoint>1 2</><EndPoint>3 4</><EndPoint>0 0</></><Segment2><StartPoint>5 6</></></> | ⟨ST⟩ | | "EndPoint", "WitnessLines" |
| <Leader><HeadHeight>2</><StartPoint>0 0</><EndPoint>5 0</></> | ⟨ST⟩ | | "Leader" |
| <Leader><StartPoint>0 1e39</><EndPoint>5 0</></> | ⟨ST⟩ | | "PMIDisplay" |
| <Texts><Text><Data>7{ST} DEEP</><XY>0 0</></><Text><Data>{DIAMETER_SPHERICAL}</><XY>0 1</></></><Frames/> | ⟨ST⟩ | DEEP\nS⌀ | "Texts", "Texts", "Texts", "Frames" |

note: <Text>own</>
      drawn: <Texts fontIndex="9" lineHeight="2"/>
      texts/0/font = {"bold": false, "italic": false, "underline": false, "height": 2}
      listed = ["Texts"])");
}

TEST(HostValues, EachLossSaysHowGraveItIsAndWhichAnnotationItTouches) {
  Check(R"(note: <Text>own</>
      displays: <PMIDisplay><Plane><AnnotationViewId><Id>$1</></><Origin>$2</></>$3
        <Reference><Id>$4</></></>
      account = ["lost PMIDisplay $4/$5 x1"]
| 61 | 0 0 INF |  | 50 | 50 || 61 | 0 0 |  | 50 | 50 || 97 | 0 0 0 |  | 50 | 50 |
| 61 | 0 0 0 |  | 98 |  || 61 | 0 0 0 | <Leader><StartPoint>here</><EndPoint>5 0</></> | 50 | 50 |

feature Group:
      entities: <EntityInternalIds><Id>99</></>
      it Width: <Tolerance><MaxValue>1</><MinValue>0</></>$1
      nominal: $2
      account = [$3]
|  | <TargetValue>1</> |  ||  | <TargetValue>NaN</><Other/> | "lost WidthCharacteristicNominal 50/ x1" |
| <NonTolerance>SET</> | <TargetValue>1</> | "reduced NonTolerance 40/50 x1" |
|  | <TargetValue>1</><TargetValue>0</> | "lost TargetValue 50/50 x1" |
| <Tolerance><MinValue>0</></> | <TargetValue>1</> | "lost Tolerance 40/50 x1" |
|  | <TargetValue significantFigures="3">1</> | "reduced TargetValue 50/50 x1" |
|  | <TargetValue decimalPlaces="16">1</> | "reduced TargetValue 50/50 x1" |
|  | <TargetValue>1</><FeatureNominalIds><Id>98</></> | "lost WidthCharacteristicNominal 50/50 x1" |
|  | <TargetValue>1</><FeatureNominalIds><Id>23</></> | "lost GroupFeatureNominal 23/50 x1" |

product: <PartNoteSet><PartNote id="7" label="it"><Text>Clean</></></><AssemblySet><a/><a/></>
      account = ["ignored a / x2"]
      kind = "text"
      entities = []
      texts = [{"string": "Clean"}]

feature Group:
      entities: <EntityInternalIds><Id>99</></><FeatureNominalIds><Id>97</></>
      note: <EntityInternalIds><Id>23</></>
      notes: <Note id="51"><EntityInternalIds><Id>23</><Id>98</><Id>98</></></>
      account = ["lost GroupFeatureNominal 23/51 x1", "lost GroupFeatureNominal 23/51 x1",
                 "lost Note 51/51 x2", "lost GroupFeatureNominal 23/50 x1",
                 "lost GroupFeatureNominal 23/50 x1"])");
}

TEST(HostValues, WordsFlagsAndCountsThatAreNoneAreLost) {
  std::string cases = R"(it $1
      nominal: $2
      things: <TextThreadSpecification id='90'><TextSpecification>LONG</></>
      feature Group: <IsSpotface>yes</>
      name = "it"
      account = ["lost $3/50 x1"]
| Length: | <TargetValue decimalPlaces="x">1</> | TargetValue 50 |
| Length: | <TargetValue>1</><FeatureNominalIds><Id>23</></> | IsSpotface 25 |
| Thread: <ThreadSpecificationId>90</> | | TextSpecification 90 |
| SurfaceTexture: | <Obtention>MACHINED</> | Obtention 50 |
| SurfaceTexture: | <Applicability>ALL</> | Applicability 50 |

it Length: <$1</>
      nominal: <TargetValue>1</>
      account = ["lost $2 40/50 x1"]
| DimensionType>BASICX | DimensionType || Independency>yes | Independency |
| Tolerance><MaxValue decimalPlaces="-1">1</><MinValue>0</> | MaxValue |
| Tolerance><MaxValue>1</><MinValue>0</><DefinedAsLimit>TRUE</> | DefinedAsLimit |

it Position: <ToleranceValue>1</><$1</>
      account = ["lost $2 40/50 x1"]
| MaterialCondition>MAXIMUMX | MaterialCondition || FreeState> | FreeState |
| ZoneShape><SquareZone/> | SquareZone || Extent><ExtentEnum>ALL_AROUNDX</> | ExtentEnum |
| ZoneShape><NonDiametricalZone><BoundaryZone>2</></> | BoundaryZone |)";
  Replace(cases, "LONG", std::string(1001, 'x'));
  Check(cases);
  Check(R"(it Position: <ToleranceValue>1</><DatumReferenceFrameId>30</>
      frame: <Datum><SimpleDatum><DatumDefinitionId>11</>$1</></>
      tolerance/rows/0/frame/references = [{"label": "A"}]
      account = ["$2 30/50 x1"]
| <MaterialModifier>MAXIMUMX</> | lost MaterialModifier || <ReducedDatum>LINE</> | lost ReducedDatum |
| <DiameterModifier>ACS</> | lost DiameterModifier || <SectionModifier>PD</> | lost SectionModifier |
| <DistanceVariable>no</> | lost DistanceVariable || </><Datums> | lost Datums |
| <DatumTranslation><DatumTranslationAllowed>+</></> | lost DatumTranslationAllowed |
| </><Precedence><PrecedenceEnum>PRIMARYX</> | lost PrecedenceEnum |
| </><Precedence><OtherPrecedence>LAST</> | reduced OtherPrecedence |

it Flatness: <ToleranceValue>1</>
      fonts: <Font index="3" $1><Name>Sans</><Size>72</></>
      camera id='91' $2: </><Near>1</><Height>1</>
      section: <SectionPlane><Plane><Point>1 2 3</><Normal>0 -1 0</></></>
      view: <CameraIds><Id $3>91</></><ZoneSectionId active="$4">95</>
      faces: <Face id="8" $5/>
      drawn: <Leader><StartPoint>0 0</><EndPoint>5 0</><Modifier>$6</></>
      account = ["ignored Face 8/ x1", $7]
| bold='yes' | form="ORTHOGRAPHIC" | active="1" | true | hidden="0" | ALL_AROUND | "reduced Font / x1" |
| | form="PERSPECTIVEX" | active="1" | true | hidden="0" | ALL_AROUND | "lost Camera 91/90 x1" |
| | | active="yes" | true | hidden="0" | ALL_AROUND | "lost Id 90/90 x1" |
| | | | t | | ALL_AROUND | "lost ZoneSectionId 90/90 x1", "reduced SavedView 90/90 x1" |
| | | | true | hidden="no" | ALL_AROUND | "ignored Face 8/ x1" |
| | | | true | | ALL_AROUNDX | "lost Modifier 50/50 x1" |

note: <Text>own</>
      fonts: <Font index="3"><Name>A</><Size>9</><Alignment>LEFT</></><Font index="3"><Size>8</></>
      drawn: <Color>1 2 3</>
      account = ["reduced Alignment / x1", "reduced Font / x1", "reduced Color 50/50 x1"]

flags: <NoteFlag id="50" label="it" hidden="yes" form="SCREEN" size="2"><Text>own</></>
      hidden = false
      account = ["lost NoteFlag 50/50 x1", "reduced NoteFlag 50/50 x1", "reduced NoteFlag 50/50 x1"])");
}

TEST(HostValues, WhatNothingIsReadFromIsListed) {
  Check(R"($1: <$2/><$2/>
      account = ["$3 $2 / x2"]
| root | Header | ignored || root | Tolerances | lost || product | GeometrySet | ignored |
| product | AnnotationSet | lost || faces | Facet | lost || flags | Note | lost |
| notes | Memo | lost || views | HatchStyleSet | ignored || views | Captures | lost |
| shown | PMIDisplaySetX | lost || shown | TrailingZeroDisplay | lost || fonts | Style | lost |
| displays | Display | lost || lists | CharacteristicGroups | ignored || datums | Datum | lost |
| lists | DefaultToleranceDefinitions | lost || units | PMIUnit | lost |

$1: <$2/>
      account = ["lost $2 / x1"]
| root | Characteristics || product | NoteSet || views | SavedViewSet || shown | PMIDisplaySet |

root: <Features><FeatureNominals><a/></></><FeatureZones><a/><FeatureZonePoint/></>
      account = ["lost Features / x1", "lost FeatureZones / x1", "lost a / x1", "lost a / x1"]

drawn: <Texts><Line/><Text><Data>a</><XY>0 0</><Data>b</></></>
      note:
      texts/0/string = "a"
      account = ["reduced Texts 50/50 x1", "lost Data 50/50 x1", "reduced Line 50/50 x1"])");
}

TEST(HostValues, ValuesThatOverflowAreListed) {
  std::string cases = R"($1
      nominal: $2
      kind = "no annotation"
      listed = ["$3"]
| it Length: | <TargetValue linearUnit='km'>HUGE</> | LengthCharacteristicNominal |
| it Length: | <TargetValue linearUnit='um'>1e-321</> | LengthCharacteristicNominal |
| it Length: | <TargetValue linearUnit='cubit'>1</> | LengthCharacteristicNominal |
| it Length: | <TargetValue angularUnit='degree'>1</> | LengthCharacteristicNominal |
| it Angle: | <TargetValue linearUnit='mm'>1</> | AngleCharacteristicNominal |
| it Length: | <TargetValue>1e-400</> | LengthCharacteristicNominal |
| it Length: <Tolerance><MaxValue>HUGE</><MinValue>0</><DefinedAsLimit>true</></> | <TargetValue>-HUGE</> | LengthCharacteristicNominal |
| it Flatness: <ToleranceValue linearUnit='km'>HUGE</> |  | FlatnessCharacteristicNominal |
| zone Point: <Point linearUnit='km'>1 2 HUGE</> |  | DatumTarget |
| zone AreaRectangular: <Rectangle><Length>HUGE</><CornerPoint>1 2 3</><Width>HUGE</><WidthDirection>0 -1 0</><LengthDirection>0 -1 0</></> |  | DatumTarget |)";
  Replace(cases, "HUGE", "17" + std::string(307, '0'));
  Check(cases);
}

TEST(HostValues, AssociationsAreLimitedInProportionToTheDocument) {
  const auto document = [](int notes) {
    std::string faces, ids, all;
    for (int i = 1000; i < 3000; ++i) {
      faces += "<Face id='" + std::to_string(i) + "'/>";
      ids += "<Id>" + std::to_string(i) + "</>";
    }
    for (int i = 3000; i < 3000 + notes; ++i) {
      all += "<Note id='" + std::to_string(i) + "'><FeatureNominalIds><Id>23</></></>";
    }
    return Document({{"feature", {"Group", ""}},
                     {"faces", {"", faces}},
                     {"notes", {"", all}},
                     {"entities", {"", "<EntityInternalIds>" + ids + "</>"}}});
  };
  EXPECT_NO_THROW(ReadQifText(document(100), "it.qif"));
  EXPECT_THROW(ReadQifText(document(110), "it.qif"), ModelError);
  // However large the document is, four million.
  std::string space;
  for (int i = 0; i < 40; ++i) space += "<!--" + std::string(1'000'000, ' ') + "-->";
  EXPECT_NO_THROW(ReadQifText(document(1990) + space, "it.qif"));
  EXPECT_THROW(ReadQifText(document(2005) + space, "it.qif"), ModelError);
}

TEST(HostValues, PluginsThatMakeNoExporterAreErrorsAndNothingOfThemStays) {
  const Model model = ReadQifText(Document({}), "it.qif");
  const long alive = standin::Count().liveEntities;
  for (const auto& [plugin, says] :
       {std::pair(EMPTY_PLUGIN, "result 0x0"), std::pair(LEAKING_PLUGIN, "result 0x1000001")}) {
    try {
      PluginLibrary(plugin).CreateExporter(model.part->GetDocument());
      ADD_FAILURE() << plugin << " made one";
    } catch (const PluginError& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr(says));
    }
    EXPECT_EQ(standin::Count().liveEntities, alive);
  }
}

}  // namespace

#include "writers/html/PrintPage.h"

#include <gmock/gmock.h>
#include <libxml/HTMLparser.h>
#include <libxml/xpath.h>
#include <sys/resource.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "EveryReport.h"
#include "HostProgram.h"
#include "writers/html/Html.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

// A page as another parser than a browser's understands it.
class Page {
 public:
  explicit Page(std::string text) : text_(std::move(text)) {
    document_.reset(htmlReadMemory(text_.data(), static_cast<int>(text_.size()), nullptr, "UTF-8",
                                   HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING));
  }
  explicit Page(const ModelReport& report, const Drawing& drawing = {})
      : Page(Print(report, drawing)) {}

  // The texts of the nodes that an XPath finds.
  std::vector<std::string> All(const std::string& path) const {
    const std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContextPtr)> context(
        xmlXPathNewContext(document_.get()), xmlXPathFreeContext);
    const std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)> found(
        xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), context.get()),
        xmlXPathFreeObject);
    std::vector<std::string> texts;
    const xmlNodeSetPtr nodes = found == nullptr ? nullptr : found->nodesetval;
    for (int i = 0; nodes != nullptr && i < nodes->nodeNr; ++i) {
      xmlChar* text = xmlNodeGetContent(nodes->nodeTab[i]);
      texts.emplace_back(reinterpret_cast<const char*>(text));
      xmlFree(text);
    }
    return texts;
  }
  std::string Only(const std::string& path) const {
    const std::vector<std::string> all = All(path);
    EXPECT_EQ(all.size(), 1U) << path;
    return all.empty() ? "" : all[0];
  }
  // The names of all elements and attributes in their order.
  std::string Shape() const {
    std::string names;
    for (xmlNodePtr node = xmlDocGetRootElement(document_.get()); node != nullptr;) {
      if (node->type == XML_ELEMENT_NODE) {
        names += std::string(" ") + reinterpret_cast<const char*>(node->name);
        for (xmlAttrPtr a = node->properties; a != nullptr; a = a->next) {
          names += std::string(".") + reinterpret_cast<const char*>(a->name);
        }
      }
      if (node->children != nullptr) {
        node = node->children;
        continue;
      }
      while (node != nullptr && node->next == nullptr) node = node->parent;
      if (node != nullptr) node = node->next;
    }
    return names;
  }

 private:
  static std::string Print(const ModelReport& report, const Drawing& drawing) {
    std::string text;
    html::PrintPage(
        report, drawing,
        [&report](const html::Sink& sink) { json::PrintJson(report, "p", -1, sink); },
        [&text](const std::string& piece) { text += piece; });
    return text;
  }

  std::string text_;
  std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document_{nullptr, xmlFreeDoc};
};

// Everything, with `text` for every text of a document.
ModelReport SayingOnly(const std::string& text) {
  ModelReport report = Everything();
  report.source.file = report.source.format = report.source.linearUnit = text;
  report.source.pmiLinearUnit = report.source.pmiAngularUnit = text;
  for (SkippedReport& skipped : report.source.skipped) {
    skipped.kind = skipped.id = skipped.annotation = skipped.reason = text;
  }
  for (ViewReport& view : report.views) {
    view.id = text;
    for (AnnotationReport& annotation : view.annotations) {
      annotation.id = annotation.name = text;
      annotation.position = {0, 0};
      annotation.written = {{text, text, text}};
      annotation.entities = {{text, text, text}};
      for (TextReport& each : annotation.texts) each.string = text;
      if (annotation.dimension) {
        annotation.dimension->texts = {text, text, text, text, text, text, text + "c", text};
      }
      if (annotation.tolerance) {
        annotation.tolerance->notes = {text, text, text, text, text, text};
        for (RowReport& row : annotation.tolerance->rows) {
          if (row.frame) row.frame->references = {{text, {{text, text, {}}}}, {text, {}}};
        }
      }
      if (annotation.datum) *annotation.datum = {text, {text}, {text}};
      if (annotation.datumTarget)
        annotation.datumTarget->label = annotation.datumTarget->note = text;
      if (annotation.roughness) annotation.roughness->fields = {text};
    }
  }
  for (CaptureReport& capture : report.captures) {
    capture.id = capture.name = capture.hiddenText = text;
    capture.members = {{text, text}};
  }
  return report;
}

TEST(HostHtml, EveryAnnotationHasARowWithANameOfItsOwn) {
  ModelReport report = Everything();
  report.views[0].annotations[1].id = "10";   // that of the first
  report.views[1].annotations[2].id = "0:1";  // the place of the one that has no own
  report.views[1].annotations[0].id = {};
  report.views[1].annotations[1].texts.clear();
  const Page page(report);
  EXPECT_THAT(page.All("//@data-annotation"),
              ElementsAre("30", "31", "35", "0:1'", "10", "1:0", "50", "0:1", "1:3"));
  EXPECT_THAT(page.All("//tr[@data-annotation]/@data-index"),
              ElementsAre("0:3", "0:2", "0:4", "0:1", "0:0", "1:0", "1:1", "1:2", "1:3"));
  EXPECT_THAT(page.All("//caption"),
              ElementsAre("Datums", "Datum targets", "Tolerances", "Dimensions", "Surface textures",
                          "Notes", "Flag notes", "Unknown annotations"));
  EXPECT_THAT(page.All("//tr[@data-annotation='10']//@data-entity"),
              ElementsAre("101", "102", "103", "104", "105"));
  EXPECT_EQ(page.Only("//tr[@data-annotation='10']/td[2]"), "diameter, hidden");
  EXPECT_EQ(page.Only("//tr[@data-annotation='50']/td[2]"), "without text");
  EXPECT_THAT(page.All("//header//@data-severity/.."),
              ElementsAre("3 lost", "1 reduced", "2 ignored"));
  EXPECT_THAT(page.All("//table[@data-severity='lost']/tbody/tr/td[1]"),
              ElementsAre("no number", "no number"));
  EXPECT_EQ(Page(ModelReport()).Only("//*[@id='list']/p"), "There are none.");
}

TEST(HostHtml, WhateverATextHoldsItStaysText) {
  const std::string hostile =
      "</title></script><!--<script>alert(1)</script>]]>\"'&amp;<img src=x onerror=y>\u202E\x1b\x9b"
      "\u0085\u2028-->";
  const std::string shown =
      "</title></script><!--<script>alert(1)</script>]]>\"'&amp;<img src=x onerror=y>[U+202E]"
      "\u241B\uFFFD[U+0085]\n-->";
  const Page page(SayingOnly(hostile));
  std::string harmless;  // as long, so that both are cut at the same places
  while (harmless.size() < 3 * hostile.size()) harmless += "ä";
  EXPECT_EQ(page.Shape(), Page(SayingOnly(harmless)).Shape());
  EXPECT_EQ(page.Only("//title[not(ancestor::svg)]"), shown.substr(shown.rfind('/') + 1));
  EXPECT_EQ(page.Only("//tr[@data-index='0:0']/th"), shown);
  EXPECT_EQ(page.Only("//tr[@data-index='0:0']/@data-annotation"), shown);
  EXPECT_EQ(nlohmann::json::parse(page.Only("//script[@id='report']")),
            nlohmann::json::parse(json::PrintJson(SayingOnly(hostile), "p", -1)));
  EXPECT_THAT(page.Only("//script[@id='report']"),
              Not(testing::AnyOf(HasSubstr("<"), HasSubstr("\u202E"), HasSubstr("\u2028"))));
}

TEST(HostHtml, TheDrawingIsToldToAMillionthOfItsSize) {
  Drawing drawing;
  drawing.edges = {{"1\"<", {{0, 0, -1e-9}, {123.456789, -50, 0.1}}},
                   {"2", {{1, 2, 3}, {4, 5, 6}}}};
  drawing.faces = {{"7", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}, {"1\"<", "2"}}};
  drawing.vertices = {{"8", {1, 2.00006, 3}, true}};
  const auto told = nlohmann::json::parse(Page({}, drawing).Only("//script[@id='drawing']"));
  EXPECT_EQ(told, nlohmann::json::parse(R"({
    "edges": [{"id": "1\"<", "points": [0, 0, 0, 123.4568, -50, 0.1]},
              {"id": "2", "points": [1, 2, 3, 4, 5, 6]}],
    "faces": [{"id": "7", "points": [0, 0, 0, 1, 0, 0, 0, 1, 0], "triangles": [0, 1, 2],
               "edges": ["1\"<", "2"]}],
    "vertices": [{"id": "8", "hidden": true, "points": [1, 2.0001, 3]}]})"));
  drawing.edges[0].points = {{NAN, 1e300, -INFINITY}, {-0.0, 1e-300, 1}};
  EXPECT_EQ(nlohmann::json::parse(Page({}, drawing).Only("//script[@id='drawing']"))["edges"][0],
            nlohmann::json::parse(R"({"id": "1\"<", "points": [null, 1e300, null, 0, 0, 1]})"));
}

TEST(HostHtml, FindingsAreCountedListedAndSaidInTheirRows) {
  ModelReport report = Everything();
  EXPECT_THAT(Page(report).All("//*[@id='findings'] | //header//a[@href='#findings']"),
              ElementsAre());
  report.checks = ChecksReport{{{"N", "note", "late", "", "wait"},
                                {"E", "error", "<b>", "ISO 1", "mend & go"},
                                {"F", "error", "unbroken", "", "rest"}},
                               {{0, "30", "Datum", "soft"},
                                {0, {}, {}, "nowhere"},
                                {1, "90", "Front", "of a view"},
                                {1, "10", {}, "hard <i>"},
                                {1, "gone", {}, "not chosen"}}};
  report.captures[0].id = "90";
  const Page page(report);
  EXPECT_THAT(page.All("//header//a[@href='#findings']/span"), ElementsAre("3 errors", "2 notes"));
  EXPECT_THAT(page.All("//*[@id='findings']/h3"), ElementsAre("error E: <b>", "note N: late"));
  EXPECT_THAT(
      page.All("//*[@id='findings']/p"),
      ElementsAre("Checked by 3 rules.", "What to do: mend & go (ISO 1)", "What to do: wait"));
  EXPECT_THAT(page.All("//table[@data-rule='E']/tbody/tr"),
              ElementsAre("Frontof a view90", "10hard <i>10", "gonenot chosengone"));
  EXPECT_THAT(page.All("//*[@id='findings']//a/@href"),
              ElementsAre("#picture-0", "#annotation-0:0", "#annotation-0:3"));
  EXPECT_EQ(page.Only("//*[@id='picture-0']/@data-picture"), "90");
  EXPECT_EQ(page.Only("//tr[@id='annotation-0:0']//*[@class='findings']/li"), "error E: hard <i>");
  EXPECT_EQ(page.Only("//tr[@id='annotation-0:3']//*[@class='findings']/li"), "note N: soft");
  EXPECT_EQ(page.All("//*[@class='findings']").size(), 2U);
  report.checks->findings.clear();
  EXPECT_EQ(Page(report).Only("//header//a[@href='#findings']"), "found by the rules: nothing");
}

TEST(HostHtml, APictureShowsWhatItsCameraSees) {
  // 6 units of the picture to one of length; 60 in perspective where the model's z is 0.
  CameraReport above{{}, "parallel", {0, 0, 10}, {}, {0, 0, -2}, {0, 3, 0}, 0, 0.01};
  CameraReport near = above;
  near.type = "perspective";
  near.viewAngle = 90;
  CameraReport nowhere = above;
  nowhere.viewDirection = {0, 0, 0};
  CameraReport upAlong = above;
  upAlong.viewDirectionNormal = upAlong.viewDirection;
  using Plane = std::optional<std::array<Point3, 2>>;
  const struct {
    CameraReport camera;
    Plane plane;
    std::vector<DrawnPoint> edge;
    std::string path;
  } cases[] = {
      {above, {}, {{0, 0, 0}, {10, 0, 7}, {10, 20, 7}}, "M900 600l60 0 0 -120"},
      {above, {}, {{0, 0, 0}, {0.05, 0.05, 0}, {0, 10, 0}}, "M900 600l0 -60"},
      {above, {}, {{0, 200, 0}, {10, 200, 0}}, ""},
      {above,
       {{{{5, 0, 0}, {1, 0, 0}}}},
       {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}},
       "M930 600l30 0 -30 -30"},
      // What is nearer than the plane is cut away, whichever way its normal points.
      {above, {{{{0, 0, 0}, {0, 0, 1}}}}, {{0, 0, -10}, {20, 0, 10}}, "M900 600l60 0"},
      {above, {{{{0, 0, 0}, {0, 0, -1}}}}, {{0, 0, -10}, {20, 0, 10}}, "M900 600l60 0"},
      {near, {}, {{0, 0, 0}, {1, 0, 0}, {2, 0, -10}}, "M900 600l60 0"},
      {near, {}, {{0, 0, 20}, {1, 0, 30}}, ""},
      {upAlong, {}, {{0, 0, 0}, {10, 0, 0}}, "M900 600l60 0"},
      // Isometric, filled to four fifths.
      {nowhere, {}, {{0, 0, 0}, {10, 10, 0}}, "M180 600l1440 0"},
  };
  for (const auto& [camera, plane, edge, path] : cases) {
    ModelReport report;
    report.captures.push_back({{}, "V", {}, camera, plane, 0, {}, {}});
    const Drawing drawing = {{{"1", edge}, {"2", {{0, 0, 0}, {0, 90, 0}}, true}}, {}, {}};
    EXPECT_EQ(Page(report, drawing).Only("//path[@class='edges']/@d"), path);
  }
}

TEST(HostHtml, APictureShowsWhatItsCaptureShowsAndSaysWhatIsLeftOut) {
  ModelReport report = Everything();
  report.views[0].annotations[1].position = {1, 1};
  report.captures.push_back(report.captures[0]);
  report.captures[1].members = {{"20", {}}};
  Page page(report);
  EXPECT_THAT(page.All("//figcaption"), ElementsAre("Front: 1 of 5 annotations, 4 without a place",
                                                    "Front: 1 of 1 annotation"));
  EXPECT_THAT(page.All("//figure/@id"), ElementsAre("picture-0", "picture-1"));
  EXPECT_THAT(page.All("//figure//g/g/title"), ElementsAre("Bore", "Holes"));
  report.captures.clear();
  EXPECT_EQ(Page(report).Only("//figcaption"),
            "The part, isometric: 1 of 8 annotations, 7 without a place");

  ViewReport& many = report.views.emplace_back(ViewReport{"9", report.views[0].frame, {}});
  many.annotations.assign(501, report.views[0].annotations[1]);
  CaptureReport all{"1", "All", {}, {}, {}, 501, {}, {}};
  for (int i = 0; i < 501; ++i) {
    many.annotations[static_cast<std::size_t>(i)].id = "many " + std::to_string(i);
    all.members.push_back({"many " + std::to_string(i), {}});
  }
  report.captures.assign(40, all);
  const std::vector<std::string> captions = Page(report).All("//figcaption");
  EXPECT_EQ(captions.front(), "All (isometric: it has no camera): 500 of 501 annotations");
  EXPECT_EQ(captions.back(), "All: not drawn, the pictures before it fill this page");
}

using HostHtmlPage = HostProgram;

TEST_F(HostHtmlPage, IsWrittenWholeOrNotAtAllAndShowsOneModel) {
  const std::string there = File("there", "before");
  const std::string model = File("m.qif", Read(BUNDLED_MODEL));
  const struct {
    const char* command;
    int code;
    const char* err;
  } cases[] = {
      {"$P --html $F/there $F/m.qif $F/m.qif", 105, "a page shows one model"},
      {"$P --html $F/m.qif $F/m.qif", 105, "m.qif is one of the models"},
      {"$P --html $F/there --json $F/m.qif", 108, "excludes"},
      {"$P --html $F/there --output $F/o $F/m.qif", 108, "excludes"},
      {"$P --html $F/there --by view $F/m.qif", 108, "excludes"},
      {"$P --html $F/there --summary $F/m.qif", 108, "excludes"},
      {"$P --html $F/there --verbose $F/m.qif", 108, "excludes"},
      {"$P --html '' $F/m.qif", 105, "the name of a file is empty"},
      {"$P --html $F/there $F/none.qif", 2, "none.qif"},
      {"$P --html $F/there --capture none $F/m.qif", 2, "no capture"},
      {"ulimit -f 1; $P --html $F/there $F/m.qif", 1, "File too large"},
  };
  for (const auto& [command, code, err] : cases) {
    const Outcome run = Shell(command);
    EXPECT_EQ(run.code, code) << command << run.err;
    EXPECT_THAT(run.err, HasSubstr(err)) << command;
    EXPECT_EQ(run.out, "") << command;
    EXPECT_EQ(Read(there), "before") << command;
  }
  EXPECT_EQ(Read(model), Read(BUNDLED_MODEL));
  const Outcome written = Shell("$P --strict --kind datum,text --html $F/there $F/m.qif");
  EXPECT_EQ(written.code, 4) << "as of other reports";
  EXPECT_EQ(written.out, "");
  EXPECT_EQ(Page(Read(there)).All("//tr[@data-annotation]").size(), 11U);
  EXPECT_EQ(Shell("$P --kind datum,text --html - $F/m.qif").out, Read(there));
  const Page checked(Shell("$P --check --kind text --html - $F/m.qif").out);
  EXPECT_EQ(checked.Only("//title[not(ancestor::svg)]"), "m.qif");
  EXPECT_EQ(checked.Only("//tr[@data-annotation='7']//*[@data-severity]"),
            "note V3: is drawn nowhere");
}

}  // namespace

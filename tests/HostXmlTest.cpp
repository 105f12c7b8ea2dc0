// Documents written otherwise than usual, which say the same, and documents that are damaged, no
// XML, or nothing that anybody would write in good faith.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <functional>
#include <limits>
#include <regex>

#include "HostDocuments.h"
#include "HostProgram.h"
#include "readers/qif/Xml.h"
#include "standin/Control.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

std::string All(const std::string& text, const char* from, const char* to) {
  return std::regex_replace(text, std::regex(from), to);
}

std::string Repeat(const std::string& text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

// The whole report, but for lines, which a rewritten document has other ones of; or the one line
// that says why there is none.
std::string ReportOf(const std::string& text) {
  const long alive = standin::Count().liveEntities;
  try {
    Model model = ReadQifText(text, "part.qif");
    for (SkippedItem& item : model.skipped) item.line = 0;
    return json::PrintJson(ReportOn(model), "program", 1);
  } catch (const ModelError& error) {
    EXPECT_EQ(standin::Count().liveEntities, alive);
    EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
    return error.what();
  }
}

// Each value between a start and an end tag becomes what `edit` makes of it and its element's name.
// Values with references stay.
std::string EditValues(
    const std::string& text,
    const std::function<std::string(const std::string&, const std::string&)>& edit) {
  std::string edited;
  std::size_t open = 0, close = 0;
  for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', close)) {
    const std::string value = text.substr(close, at - close);
    const bool isWhole = text[at + 1] == '/' && std::isalpha(text[open + 1]) != 0;
    const bool isPlain = value.find('&') == std::string::npos &&
                         text[std::max<std::size_t>(close, 2) - 2] != '/' &&
                         value.find_first_not_of(" \r\n") != std::string::npos;
    const std::string name = text.substr(open + 1, text.find_first_of(" >", open) - open - 1);
    edited += isWhole && isPlain ? edit(name, value) : value;
    open = at;
    close = text.find(text.compare(at, 4, "<!--") == 0 ? "-->" : ">", at);
    close = text.find('>', close) + 1;
    edited += text.substr(at, close - at);
  }
  return edited + text.substr(close);
}

// Puts `piece` behind the first character of each value.
std::string Insert(const std::string& text, const std::string& piece) {
  return EditValues(text, [&](const std::string&, const std::string& value) {
    return (value[0] & 0x80) != 0 ? value : value.substr(0, 1) + piece + value.substr(1);
  });
}

// Edits texts that are nothing but numbers, two or more.
std::string EditLists(const std::string& text, const char* from, const char* to) {
  return EditValues(text, [&](const std::string&, const std::string& value) {
    const bool isList = value.find_first_not_of("0123456789.- ") == std::string::npos &&
                        value.find(' ') != std::string::npos;
    return isList ? All(value, from, to) : value;
  });
}

std::string Declaring(const std::string& text, const std::string& encoding) {
  return With(text, text.substr(0, text.find("?>")),
              "<?xml version=\"1.0\" encoding=\"" + encoding + "\"");
}

std::string WithEntity(const std::string& text, const std::string& declaration) {
  return With(text, "?>", "?><!DOCTYPE QIFDocument [" + declaration + "]>");
}

// In an encoding of two bytes a character, or of one with references for what it has not.
std::string Utf16(const std::string& text, bool bigEndian, bool mark) {
  std::string bytes;
  for (const wchar_t c : (mark ? L"\uFEFF" : L"") + qif::Wide(Declaring(text, "UTF-16"))) {
    const char low = static_cast<char>(c & 0xFF), high = static_cast<char>(c >> 8);
    bytes += {bigEndian ? high : low, bigEndian ? low : high};
  }
  return bytes;
}

std::string OneByte(const std::string& text, const char* encoding, wchar_t from, char to) {
  std::string bytes;
  for (const wchar_t c : qif::Wide(Declaring(text, encoding))) {
    bytes += c == from   ? std::string(1, to)
             : c <= 0xFF ? std::string(1, static_cast<char>(c))
                         : "&#" + std::to_string(static_cast<long>(c)) + ";";
  }
  return bytes;
}

std::string Gzip(const std::string& text) {
  z_stream stream{};
  deflateInit2(&stream, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, text.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

using Text = const std::string&;
const struct {
  const char* name;
  std::function<std::string(Text)> write;
} kRewritings[] = {
    {"prefix",
     [](Text t) { return All(With(t, "xmlns=", "xmlns:q="), "<(/?)([A-Za-z])", "<$1q:$2"); }},
    {"UTF-16, little endian", [](Text t) { return Utf16(t, false, true); }},
    {"UTF-16, big endian", [](Text t) { return Utf16(t, true, true); }},
    {"UTF-16 without mark", [](Text t) { return Utf16(t, false, false); }},
    {"latin-1", [](Text t) { return OneByte(t, "iso-8859-1", 0, 0); }},
    {"windows-1252", [](Text t) { return OneByte(t, "windows-1252", L'\u20AC', '\x80'); }},
    {"byte-order mark", [](Text t) { return "\xEF\xBB\xBF" + t; }},
    {"no declaration", [](Text t) { return t.substr(t.find("?>") + 2); }},
    {"gzip", [](Text t) { return Gzip(t); }},
    {"gzip in two members", [](Text t) { return Gzip(t.substr(0, 999)) + Gzip(t.substr(999)); }},
    {"gzip of UTF-16", [](Text t) { return Gzip(Utf16(t, true, true)); }},
    {"comments in values", [](Text t) { return Insert(t, "<!-- c -->"); }},
    {"instructions in values", [](Text t) { return Insert(t, "<?i 1?>"); }},
    {"CDATA in values", [](Text t) { return Insert(t, "<![CDATA[]]>"); }},
    {"CDATA for values",
     [](Text t) { return EditValues(t, [](Text, Text v) { return "<![CDATA[" + v + "]]>"; }); }},
    {"an entity in values",
     [](Text t) { return Insert(WithEntity(t, "<!ENTITY no ''><!ENTITY e '&no;'>"), "&e;"); }},
    {"an entity for characters",
     [](Text t) {
       const std::string declared = WithEntity(t, "<!ENTITY zero '0'>");
       return EditValues(declared, [](Text, Text v) { return All(v, "0", "&zero;"); });
     }},
    {"references to characters",
     [](Text t) {
       return EditValues(t, [](Text, Text v) { return All(All(v, "0", "&#48;"), "e", "&#x65;"); });
     }},
    {"white space around values",
     [](Text t) {
       return EditValues(t, [](Text name, Text v) {
         return name == "Text" || name == "Data" ? v : "\n \t" + v + "\r\n  ";
       });
     }},
    {"lists over lines", [](Text t) { return EditLists(t, " ", "\n     "); }},
    {"signs of numbers", [](Text t) { return EditLists(t, "(^| )([0-9])", "$1+$2"); }},
    {"exponents of numbers", [](Text t) { return EditLists(t, "(\\.[0-9]+)", "$1E+00"); }},
    {"white space in attributes",
     [](Text t) {
       return All(t, " ((?!label|xmlns|version|encoding|xsi)[A-Za-z]+)=\"([^\"<>]*)\"",
                  "\n $1 = \" $2\n\"");
     }},
    {"booleans as numbers", [](Text t) { return All(t, "=\"true\"", "=\"1\""); }},
    {"attributes of others",
     [](Text t) {
       return All(t, "<([A-Za-z]+) (id|n)=", "<$1 xmlns:z=\"urn:z\" z:id=\"9\" z:n=\"x\" $2=");
     }},
    {"CRLF", [](Text t) { return All(t, "\n", "\r\n"); }},
    {"one line", [](Text t) { return All(t, ">\\s+<", "><"); }},
    {"comments between elements",
     [](Text t) {
       return All(t, "</([A-Za-z]+)>\n", "</$1><!-- <c a='> --><?p <?>") + "<!-- end -->\n";
     }},
    {"a DTD that is not loaded", [](Text t) {
       return With(t, "?>",
                   "?><!DOCTYPE QIFDocument SYSTEM 'none.dtd' [<!ELEMENT Id ANY>"
                   "<!ATTLIST Id active CDATA #IMPLIED x (y|z) #REQUIRED>]>");
     }}};

TEST(HostXml, DocumentsWrittenOtherwiseReportTheSame) {
  std::vector<std::string> models = {
      With(Read(BUNDLED_MODEL), ">BREAK EDGE", ">  Höhe  3 € ÷ {ST} &lt; &amp;amp; BREAK EDGE")};
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(REAL_MODELS, none)) {
    // Regular expressions take their time: the smallest shows what the bundled model has not.
    if (entry.path().extension() == ".qif" && entry.file_size() < 1'000'000) {
      models.push_back(Read(entry.path()));
    }
  }
  for (const std::string& model : models) {
    const std::string expected = ReportOf(model);
    EXPECT_THAT(expected, StartsWith("{"));
    for (const auto& rewriting : kRewritings) {
      const std::string text = rewriting.write(model);
      const std::string report = ReportOf(text);
      const auto differs =
          std::mismatch(expected.begin(), expected.end(), report.begin(), report.end());
      EXPECT_TRUE(report == expected)
          << rewriting.name << ": " << std::string(differs.second, report.end()).substr(0, 200)
          << "\ninstead of " << std::string(differs.first, expected.end()).substr(0, 200);
      EXPECT_TRUE(text != model || &model != &models.front()) << rewriting.name;
    }
  }
  EXPECT_THAT(models.front(), HasSubstr("€"));
  EXPECT_THAT(ReportOf(models.front()), HasSubstr("\"  Höhe  3 € ÷"));
}

TEST(HostXml, WhatIsNotWellFormedIsRefusedWithItsPlace) {
  const std::string model = Read(BUNDLED_MODEL);
  const std::string name = "<Name>Bore diameter</Name>";
  const struct {
    const char* before;  // what ends at the place
    std::string text;
    const char* says;
  } cases[] = {
      {"Bore &", With(model, name, "<Name>Bore & diameter</Name>"), "no name"},
      {"id=\"302\" label=\"", With(model, "id=\"302\"", "id=\"302\" label=\"<\""),
       "'<' not allowed"},
      {"Bore&#1;", With(model, name, "<Name>Bore&#1;</Name>"), "xmlChar value 1"},
      {"<Name>\u00e4B", With(model, name, "<Name>\u00e4B\xF6re</Name>"), "0xF6"},
      {"</Nome>", With(model, name, "<Name>Bore</Nome>"), "mismatch"},
      {"</QIFDocument>\n", model + "text", "Extra content"},
      {"<q:Name", With(model, name, "<q:Name/>"), "prefix q"},
      {"Bore &none;", With(model, name, "<Name>Bore &none;</Name>"), "'none' not defined"},
      {"Bore &none;",
       With(With(model, name, "<Name>Bore &none;</Name>"), "?>", "?><!DOCTYPE a SYSTEM 'b'>"),
       "'none' not defined"},
      {"&e;",
       With(WithEntity(model, "<!ENTITY e SYSTEM 'file:///etc/hostname'>"), name,
            "<Name>&e;</Name>"),
       "'e' not defined"},
      {"<!ATTLIST a b CDATA 'x'", WithEntity(model, "<!ATTLIST a b CDATA 'x'>"), "that of 'b'"},
      {"<LeaderExtend>\n", model.substr(0, model.find("<LeaderExtend>") + 15), "truncated"},
      {"<Name>Bore dia", model.substr(0, model.find(name) + 14), "truncated"},
      {"", Declaring(model, "klingon"), "'klingon' is not known"}};
  for (const auto& broken : cases) {
    const std::string error = ReportOf(broken.text);
    EXPECT_THAT(error, HasSubstr(broken.says));
    ASSERT_NE(broken.text.find(broken.before), std::string::npos) << broken.before;
    std::string before = broken.text.substr(0, broken.text.find(broken.before));
    before += broken.before;
    const std::string place =
        std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ":" +
        std::to_string(qif::Wide(before).size() - qif::Wide(before).rfind(L'\n'));
    EXPECT_THAT(error, StartsWith("part.qif:" + place + ": ")) << broken.before;
  }
}

TEST(HostXml, DamagedStructureIsRefusedWithItsPlace) {
  const struct {
    const char *from, *to, *says;
  } cases[] = {
      {"id=\"302\"", "id=\"301\"", "301"},
      {"id=\"302\"", "id=\"99999999999999999999\"", "99999999999999999999"},
      {"id=\"302\"", "id=\"-3\"", "-3"},
      {"id=\"302\"", "id=\"three\"", "three"},
      {"<CharacteristicDefinitionId>201<", "<CharacteristicDefinitionId>88888<", "88888"},
      {"<Id>1701</Id><Id>1702</Id>", "<Id>88888</Id><Id>1702</Id>", "88888"},
      {">inch<", ">mm<", "'mm' is declared in two ways"},
      {"<ScaleCoefficient>1<", "<ScaleCoefficient>0<", "its scale is not positive"},
      {"<ScaleCoefficient>1<", "<ScaleCoefficient>-1<", "its scale is not positive"},
      {"<ScaleCoefficient>1<", "<ScaleCoefficient>1e-10<", "out of range"},
      {"<ScaleCoefficient>1<", "<ScaleCoefficient>1e10<", "out of range"},
      {"<ScaleCoefficient>", "<ScaleCoefficient>1</ScaleCoefficient><ScaleCoefficient>", "twice"},
      {"<ScaleCoefficient>1<", "<ScaleCoefficient>two<", "'two' is not"},
      {"<Factor>0.0254</Factor>", "", "not by a factor"},
      {"<Factor>0.0254</Factor>", "<Rate>0.0254</Rate>", "a unit with 'Rate'"},
      {"meter</SIUnitName><UnitName>inch", "yard</SIUnitName><UnitName>inch", "is 'yard'"},
      {"<Factor>0.0254<", "<Offset>1</Offset><Factor>0.0254<", "not by a factor"},
      {"xmlns=\"http://qifstandards.org/xsd/qif3\"", "xmlns=\"http://nowhere\"", "part.qif:"}};
  for (const auto& [from, to, says] : cases) {
    EXPECT_THAT(ReportOf(With(Read(BUNDLED_MODEL), from, to)),
                AllOf(testing::ContainsRegex("^part\\.qif:[0-9]+:[0-9]+: "), HasSubstr(says)));
  }
}

TEST(HostXml, WhatIsNoDocumentIsCalledByItsKind) {
  using namespace std::string_literals;
  const std::string whole = Read(BUNDLED_MODEL), packed = Gzip(whole);
  const std::string end = std::to_string(1 + std::count(whole.begin(), whole.end(), '\n')) + ":1: ";
  const std::pair<std::string, std::string> cases[] = {
      {"", "1:1: the document is empty"},
      {" \r\n", "2:1: the document is empty"},
      {"ISO-10303-21;\nHEADER;", "STEP"},
      {"\xEF\xBB\xBFISO-10303-21;", "STEP"},
      {Gzip("ISO-10303-21;\nHEADER;"), "STEP"},
      {"PK\3\4\0"s, "zip"},
      {"\177ELF\2\1\0"s, "binary"},
      {"%PDF-1.4\n1 0 obj << /Length 2 >>\nstream\n\0\1"s, "binary"},
      {"solid part", "'<' not found"},
      {packed.substr(0, packed.size() - 9), end + "its gzip data is truncated"},
      {With(packed, packed.substr(5000, 9), "damaged"), "gzip data is damaged"},
      {packed + "more", "gzip data is damaged"},
      {Utf16(whole, false, true).substr(0, 9999), "truncated inside"}};
  for (const auto& [text, says] : cases) {
    EXPECT_THAT(ReportOf(text), AllOf(StartsWith("part.qif:"), HasSubstr(says)));
  }
}

TEST(HostXml, NumbersAreReadInEverySpellingAndToldWhenTheyAreNone) {
  const auto number = [](const std::string& text) {
    return qif::NumberOf(qif::Xml("<a>" + text + "</a>").Root());
  };
  const double least = std::numeric_limits<double>::denorm_min();
  for (const auto& [text, value] :
       std::initializer_list<std::pair<const char*, double>>{{"+0", 0},
                                                             {"-0", 0},
                                                             {"0.0", 0},
                                                             {" +1.5\n", 1.5},
                                                             {".5", 0.5},
                                                             {"15.e-1", 1.5},
                                                             {"1.5E+2", 150},
                                                             {"0e-999", 0},
                                                             {"4.9e-324", least}}) {
    EXPECT_EQ(number(text), value) << text;
  }
  for (const std::string text : {"1e999", "-1e999", "INF", "1e-999", "-.01e-999", "NaN", "0x10",
                                 "1,5", "+-1", "1 2", "1<b/>2", "1<b/>", ""}) {
    const bool isLarge = text.find("e999") != std::string::npos || text == "INF";
    const bool isSmall = text.find("e-999") != std::string::npos;
    try {
      number(text);
      ADD_FAILURE() << text;
    } catch (const qif::Unreadable& problem) {
      EXPECT_THAT(problem.what(), HasSubstr(isLarge   ? "larger than any number"
                                            : isSmall ? "smaller than any number"
                                                      : "not a number"));
    }
  }
}

// In a path of elements, the QIF document itself is the outermost.
std::string Nested(std::initializer_list<const char*> path, std::string content) {
  for (auto name = std::rbegin(path); name != std::rend(path); ++name) {
    content = "<" + std::string(*name) + ">" + content + "</" + *name + ">";
  }
  return "<QIFDocument xmlns=\"http://qifstandards.org/xsd/qif3\" versionQIF=\"3.0.0\">" + content +
         "</QIFDocument>";
}

std::string Numbered(const std::string& element, int count) {
  std::string all;
  for (int i = 1; i <= count; ++i) all += "<" + element + " id=\"" + std::to_string(i) + "\"/>";
  return all;
}

TEST(HostXml, DeepAndWideDocumentsEndInBoundedTime) {
  const int many = 1'000'000;
  const std::string model = Read(BUNDLED_MODEL), name = "<Name>Bore diameter<";
  const std::pair<std::string, const char*> cases[] = {
      {Nested({}, Repeat("<a>", many) + Repeat("</a>", many)), "250 levels"},
      {Nested({}, Repeat("<Product/>", many)), "too many"},
      {Nested({"Thing"}, Repeat("<a/>", 15'000)), "{"},
      {Nested({"Product", "NoteSet"}, "<Note/><Note id='0'/>"), "Note has no id"},
      {"<!DOCTYPE a [<!ENTITY b \"&b;&b;\">]><QIFDocument>&b;</QIFDocument>", "loop"},
      {With(model, "n=\"40\"", "n=\"18446744073709551615\""), "{"},
      {With(model, name, "<Name>" + std::string(10'000'000, 'x') + "<"), "{"},
      {With(model, name, "<Name><"), "{"}};
  for (const auto& [text, says] : cases) {
    const std::string report = ReportOf(text);
    EXPECT_THAT(report.substr(0, 200),
                AllOf(StartsWith(*says == '{' ? "{" : "part.qif:1:"), HasSubstr(says)));
  }
}

TEST(HostXml, DocumentsAreReadUpToTheLimitsOfTheParser) {
  const auto many = [](std::size_t count, const char* before, const char* after) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += before + std::to_string(i) + after;
    return all;
  };
  const auto attributes = [&](std::size_t n) {
    return "<a " + many(n, "attribute", "='' ") + "/>";
  };
  const auto entity = [](Text content, Text use) {
    return "<?i?><!-- --><!DOCTYPE a [<!ENTITY e \"" + content + "\">]>" + Nested({"Name"}, use);
  };
  const auto in = [](Text text) { return Nested({"Name"}, text); };
  const struct {
    std::function<std::string(std::size_t)> write;
    std::size_t most, more;
    const char* says;
  } limits[] = {
      {[&](std::size_t n) { return in(attributes(n)); }, 1000, 1, "too many attributes"},
      {[&](std::size_t n) { return entity(attributes(n), "&e;"); }, 1000, 1, "too many attributes"},
      {[&](std::size_t n) { return in(Repeat("<a>", n) + Repeat("</a>", n)); }, 248, 1,
       "250 levels"},
      {[&](std::size_t n) { return in("<a " + many(n, "xmlns:n", "='u' ") + "/>"); }, 249, 1,
       "namespaces"},
      {[&](std::size_t n) { return in(many(n, "<n", "/>")); }, 49'900, 200, "too many names"},
      {[&](std::size_t n) { return in("<a b='" + Repeat("x", n) + "'/>"); }, 9'999'900, 200,
       "too long"},
      {[&](std::size_t n) { return in("<a" + Repeat(" ", n) + "/>"); }, 9'999'900, 200,
       "than 10 MB"},
      {[&](std::size_t n) { return entity(std::string(n - 29, ']'), ""); }, 65'536, 1,
       "is too long"}};
  for (const auto& limit : limits) {
    EXPECT_THAT(ReportOf(limit.write(limit.most)).substr(0, 200), StartsWith("{")) << limit.says;
    EXPECT_THAT(ReportOf(limit.write(limit.most + limit.more)).substr(0, 200),
                AllOf(StartsWith("part.qif:1:"), HasSubstr(limit.says)));
  }
}

TEST(HostXml, MemoryStaysInProportionToAnyDocument) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer takes memory of its own";
#endif
  const std::string bomb = "<!DOCTYPE QIFDocument [<!ENTITY a '" + Repeat("<a/>", 9999) + "'>]>";
  const std::string nothing = Repeat("<a/>", 2'000'000);
  const std::string name(200'000, 'x');
  std::string names;
  for (int i = 0; i < 500'000; ++i) names += "<a" + std::to_string(i) + "/>";
  const struct {
    const char* what;
    std::string text;
    int code = 0;
  } documents[] = {
      {"displays", Nested({"Product", "VisualizationSet", "PMIDisplaySet"}, nothing), 4},
      {"assemblies", Nested({"Product", "AssemblySet"}, nothing)},
      {"items", Nested({"Characteristics", "CharacteristicItems"}, nothing), 4},
      {"items with ids",
       Nested({"Characteristics", "CharacteristicItems"}, Numbered("Item", 600'000)), 4},
      {"vertices", Nested({"Product", "TopologySet", "VertexSet"}, Numbered("Vertex", 400'000))},
      {"a feature with a long name and bad references",
       With(With(Read(BUNDLED_MODEL), "<Name>Bore</Name>", "<Name>" + name + "</Name>"),
            "<EntityInternalIds n=\"2\"><Id>1711</Id>",
            "<EntityInternalIds>" + Repeat("<Id>99999</Id>", 5000)),
       4},
      {"notes", Nested({"Product", "NoteSet"}, Numbered("Note", 200'000))},
      {"attributes", Nested({"Name"}, Repeat("<a b=''/>", 800'000)), 4},
      {"many attributes", Nested({}, "<a " + Repeat("b='' ", 800'000) + "/>"), 2},
      {"many names", Nested({"Name"}, names), 2},
      {"pieces of text", Nested({"Name"}, Repeat("x<!-- -->", 800'000)), 4},
      {"pieces between elements", Nested({"Name"}, Repeat("x<a/>", 800'000)), 4},
      {"entities of elements", bomb + Nested({}, Repeat("&a;", 50'000)), 2},
      {"an entity of text",
       "<!DOCTYPE QIFDocument [<!ENTITY a '" + name.substr(0, 60'000) + "'>]>" +
           Nested({"Name"}, Repeat("&a;", 50'000)),
       2},
      {"gzip", Gzip(std::string(50'000'000, ' ')), 2}};
  for (const auto& document : documents) {
    const double bound = 60.0 * static_cast<double>(document.text.size()) + 100e6;
    EXPECT_EQ(CodeWithin(bound, document.text), document.code) << document.what;
  }
}

}  // namespace

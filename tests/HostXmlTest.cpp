// Documents written otherwise than usual, which say the same, and documents that are no XML.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <regex>
#include <sstream>

#include "HostProgram.h"
#include "MakeReport.h"
#include "plugin/PluginLibrary.h"
#include "readers/qif/QifReader.h"
#include "readers/qif/Xml.h"
#include "writers/json/PrintJson.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

std::string Read(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// The first `from` become `to`.
std::string With(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

std::string All(const std::string& text, const char* from, const char* to) {
  return std::regex_replace(text, std::regex(from), to);
}

std::string Repeat(const std::string& text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

// The whole report, but for lines, which a rewritten document has other ones of.
std::string ReportOf(const std::string& text) {
  static const PluginLibrary plugin(PLUGIN);
  try {
    Model model = ReadQifText(text, "part.qif");
    for (SkippedItem& item : model.skipped) item.line = 0;
    const auto exporter = plugin.CreateExporter(model.part->GetDocument());
    return PrintJson(MakeReport(model, *exporter, "part.qif"), "program", 1);
  } catch (const ModelError& error) {
    return error.what();
  }
}

// Each value between two tags becomes what `edit` makes of it and of its element's name.
std::string EditValues(
    const std::string& text,
    const std::function<std::string(const std::string&, const std::string&)>& edit) {
  static const std::regex value("<([A-Za-z]+)([^<>]*[^<>/])?>([^<>&\\s][^<>&]*)</");
  std::string edited;
  auto rest = text.cbegin();
  for (std::sregex_iterator at(text.begin(), text.end(), value), end; at != end; ++at) {
    edited.append(rest, (*at)[3].first);
    edited += edit((*at)[1], (*at)[3]);
    rest = (*at)[3].second;
  }
  return edited.append(rest, text.cend());
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
    {"single quotes", [](Text t) { return All(t, "=\"([^\"'<>]*)\"", "='$1'"); }},
    {"attributes the other way round",
     [](Text t) {
       return All(t, "<([A-Za-z]+) ([a-z]+=\"[^\"]*\") ([a-z]+=\"[^\"]*\")>", "<$1 $3 $2>");
     }},
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
    {"empty elements with two tags",
     [](Text t) { return All(t, "<([A-Za-z0-9]+)([^<>]*)/>", "<$1$2></$1>"); }},
    {"a DTD that is not loaded", [](Text t) {
       return With(t, "?>", "?><!DOCTYPE QIFDocument SYSTEM 'none.dtd' [<!ELEMENT Id ANY>]>");
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
      {"id=\"302\" id=\"303\"", With(model, "id=\"302\"", "id=\"302\" id=\"303\""), "redefined"},
      {"Bore&#1;", With(model, name, "<Name>Bore&#1;</Name>"), "xmlChar value 1"},
      {"<Name>\u00e4B", With(model, name, "<Name>\u00e4B\xF6re</Name>"), "0xF6"},
      {"<Name>\u00e4C", With(model, name, "<Name>\u00e4C\x01re</Name>"), "Char value 1"},
      {"</Nome>", With(model, name, "<Name>Bore</Nome>"), "mismatch"},
      {"</QIFDocument>\n", model + "text", "Extra content"},
      {"</QIFDocument>\n", model + "<!DOCTYPE a>", "Extra content"},
      {"<!DOCTYPE a><", With(model, "<!--", "<!DOCTYPE a><!DOCTYPE b><!--"),
       "invalid element name"},
      {"<q:Name", With(model, name, "<q:Name/>"), "prefix q"},
      {"Bore &none;", With(model, name, "<Name>Bore &none;</Name>"), "'none' not defined"},
      {"Bore &none;",
       With(With(model, name, "<Name>Bore &none;</Name>"), "?>", "?><!DOCTYPE a SYSTEM 'b'>"),
       "'none' not defined"},
      {"&e;",
       With(WithEntity(model, "<!ENTITY e SYSTEM 'file:///etc/hostname'>"), name,
            "<Name>&e;</Name>"),
       "'e' not defined"},
      {"<!ATTLIST a b CDATA 'x'", WithEntity(model, "<!ATTLIST a b CDATA 'x'>"), "not read"},
      {"<LeaderExtend>\n", model.substr(0, model.find("<LeaderExtend>") + 15), "truncated"},
      {"<Name>Bore dia", model.substr(0, model.find(name) + 14), "truncated"},
      {"", Declaring(model, "klingon"), "'klingon' is not known"}};
  for (const auto& broken : cases) {
    const std::string error = ReportOf(broken.text);
    EXPECT_THAT(error, HasSubstr(broken.says));
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    ASSERT_NE(broken.text.find(broken.before), std::string::npos) << broken.before;
    std::string before = broken.text.substr(0, broken.text.find(broken.before));
    before += broken.before;
    const std::string place =
        std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ":" +
        std::to_string(qif::Wide(before).size() - qif::Wide(before).rfind(L'\n'));
    EXPECT_THAT(error, StartsWith("part.qif:" + place + ": ")) << broken.before;
  }
}

TEST(HostXml, WhatIsNoDocumentIsCalledByItsKind) {
  using namespace std::string_literals;
  const std::string packed = Gzip(Read(BUNDLED_MODEL));
  const struct {
    std::string text;
    const char* says;
  } cases[] = {{"", "empty"},
               {" \r\n", "empty"},
               {"ISO-10303-21;\nHEADER;", "STEP"},
               {Gzip("ISO-10303-21;\nHEADER;"), "STEP"},
               {"PK\3\4\0"s, "zip"},
               {"\x7F"
                "ELF\2\1\0"s,
                "binary"},
               {"solid part", "'<' not found"},
               {packed.substr(0, packed.size() - 9), "gzip data is truncated"},
               {With(packed, packed.substr(5000, 9), "damaged"), "gzip data is damaged"},
               {packed + "more", "gzip data is damaged"},
               {Utf16(Read(BUNDLED_MODEL), false, true).substr(0, 9999), "truncated inside"}};
  for (const auto& other : cases) {
    EXPECT_THAT(ReportOf(other.text),
                testing::AllOf(StartsWith("part.qif:"), HasSubstr(other.says)));
  }
}

TEST(HostXml, NumbersAreReadInEverySpellingAndToldWhenTheyAreNone) {
  const struct {
    const char* text;
    double value;
  } numbers[] = {{"+0", 0},       {"-0", 0},
                 {"0.0", 0},      {" +1.5\n", 1.5},
                 {".5", 0.5},     {"15.e-1", 1.5},
                 {"1.5E+2", 150}, {"1e-999", 0},
                 {"-1e-999", 0},  {"4.9e-324", std::numeric_limits<double>::denorm_min()}};
  for (const auto& number : numbers) {
    const qif::Xml xml("<a>" + std::string(number.text) + "</a>");
    EXPECT_EQ(qif::NumberOf(xml.Root()), number.value) << number.text;
  }
  const struct {
    const char* text;
    const char* says;
  } others[] = {{"1e999", "larger than any number"},
                {"-1e999", "larger than any number"},
                {"INF", "larger than any number"},
                {"NaN", "not a number"},
                {"0x10", "not a number"},
                {"1,5", "not a number"},
                {"+-1", "not a number"},
                {"1 2", "not a number"},
                {"1<b/>2", "not a number"},
                {"", "not a number"}};
  for (const auto& other : others) {
    const qif::Xml xml("<a>" + std::string(other.text) + "</a>");
    try {
      qif::NumberOf(xml.Root());
      ADD_FAILURE() << other.text;
    } catch (const qif::Unreadable& problem) {
      EXPECT_THAT(problem.what(), HasSubstr(other.says)) << other.text;
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
      {"attributes", Nested({"Name"}, Repeat("<a b=''/>", 800'000))},
      {"many attributes", Nested({}, "<a " + Repeat("b='' ", 800'000) + "/>"), 2},
      {"many names", Nested({"Name"}, names), 2},
      {"pieces of text", Nested({"Name"}, Repeat("x<!-- -->", 800'000))},
      {"pieces between elements", Nested({"Name"}, Repeat("x<a/>", 800'000))},
      {"entities of elements", bomb + Nested({}, Repeat("&a;", 50'000)), 2},
      {"an entity of text",
       "<!DOCTYPE QIFDocument [<!ENTITY a '" + name + "'>]>" +
           Nested({"Name"}, Repeat("&a;", 50'000)),
       2},
      {"gzip", Gzip(std::string(50'000'000, ' ')), 2}};
  for (const auto& document : documents) {
    const double bound = 60.0 * static_cast<double>(document.text.size()) + 100e6;
    EXPECT_EQ(CodeWithin(bound, document.text), document.code) << document.what;
  }
}

}  // namespace

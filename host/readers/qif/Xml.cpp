#include "readers/qif/Xml.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <limits>

#include "readers/qif/TreeBuilder.h"

namespace qif {

namespace {

constexpr int kMostAttributes = 1000;
constexpr const char* kTooManyAttributes = "an element has too many attributes";
constexpr std::size_t kMostDeclaration = 65'536;
constexpr int kMostNames = 50'000;  // that differ; the parser's table of them is made for few

const char* Chars(const xmlChar* text) {
  return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

// Where a text goes on behind the next `end`.
std::size_t Behind(std::string_view text, std::size_t from, std::string_view end) {
  const std::size_t at = text.find(end, from);
  return at == std::string_view::npos ? text.size() : at + end.size();
}

// Behind the comments and instructions at a place in a text.
std::size_t PassRemarks(std::string_view text, std::size_t at) {
  while (true) {
    const std::size_t from = at;
    if (text.compare(at, 4, "<!--") == 0) at = Behind(text, at + 4, "-->");
    if (text.compare(at, 2, "<?") == 0) at = Behind(text, at + 2, "?>");
    if (at == from) return at;
  }
}

// Where a document type declaration starts that is longer than any that is read; npos for none. The
// parser compares what stands in one with all the rest of it.
std::size_t FindLongDeclaration(std::string_view text) {
  std::size_t at = text.find('<');
  for (std::size_t next = 0; at < text.size() && (next = PassRemarks(text, at)) != at;) {
    at = text.find('<', next);
  }
  const std::size_t start = at;
  if (at >= text.size() || text.compare(at, 9, "<!DOCTYPE") != 0) return std::string_view::npos;
  const bool isLonger = text.size() - start > kMostDeclaration;
  text = text.substr(0, start + kMostDeclaration);
  int depth = 0;
  while ((at = PassRemarks(text, at)) < text.size()) {
    const char c = text[at++];
    if (c == '"' || c == '\'') at = Behind(text, at, {&c, 1});
    if (c == '[') ++depth;
    if (c == ']') --depth;
    if (c == '>' && depth == 0) return std::string_view::npos;
  }
  return isLonger ? start : std::string_view::npos;
}

// Where an element with too many attributes starts; npos for none. The parser compares each with
// all others. A tag reaches to the next bracket, for values have none, and a short one cannot have
// many.
std::size_t FindTooManyAttributes(std::string_view text) {
  constexpr std::size_t kShort = 4096;
  for (std::size_t at = text.find('<'), next = 0; at != std::string_view::npos; at = next) {
    next = text.find('<', at + 1);
    const std::string_view tag = text.substr(at, next - at);
    if (tag.size() < kShort) continue;
    int quotes = 0;
    char inside = 0;
    for (const char c : tag) {
      if (inside == 0 && c == '>') break;
      if (inside == 0 ? c == '"' || c == '\'' : c == inside) {
        inside = inside == 0 ? c : '\0';
        ++quotes;
      }
    }
    if (quotes > 2 * kMostAttributes) return at;
  }
  return std::string_view::npos;
}

// The parser's reason, on one line and not long.
std::string OneLine(std::string_view text) {
  constexpr std::size_t kLongest = 300;
  text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
  std::string line(text.substr(0, kLongest));
  while (text.size() > kLongest && (line.back() & 0x80) != 0) line.pop_back();
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return line + (text.size() > kLongest ? "..." : "");
}

// One parse. An entity's content is parsed by a parser of its own, which has the same handlers:
// places are always those of the document's parser.
class Parse {
 public:
  Parse(std::string_view text, TreeBuilder& tree) : text_(text), tree_(tree) {
    static const bool isReady = (xmlInitParser(), true);
    if (!isReady || text.size() > std::numeric_limits<int>::max() / 2) {
      throw Malformed("the document is larger than 1 GB");
    }
    parser_.reset(xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())));
    if (parser_ == nullptr) throw std::bad_alloc();
    parser_->_private = this;
    xmlCtxtUseOptions(parser_.get(), XML_PARSE_RECOVER | XML_PARSE_NONET | XML_PARSE_NOENT |
                                         XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC);
    SetHandlers(*parser_->sax);
  }

  void Run() {
    xmlParseDocument(parser_.get());
    if (exception_ != nullptr) std::rethrow_exception(exception_);
    if (problem_.empty() && parser_->wellFormed != 0 && tree_.Root() != nullptr) return;
    const std::string what = problem_.empty() ? "it is not well-formed" : problem_;
    const bool isHuge = what.find("Huge input") != std::string::npos;
    if (isHuge) throw Malformed("a piece of it is longer than 10 MB", PlaceAt(text_, offset_));
    const bool isCut = offset_ > text_.find_last_not_of(" \t\r\n");
    throw Malformed(isCut ? "the document is truncated (" + what + ")" : what,
                    PlaceAt(text_, offset_));
  }

  xmlDict* Names() const { return parser_->dict; }
  const std::string& RootNamespace() const { return rootNamespace_; }

 private:
  struct Free {
    void operator()(xmlParserCtxt* parser) const {
      xmlFreeDoc(parser->myDoc);
      xmlFreeParserCtxt(parser);
    }
  };

  // --- Handlers ---

  static void SetHandlers(xmlSAXHandler& sax) {
    sax.startElementNs = [](void* parser, const xmlChar* name, const xmlChar*, const xmlChar* space,
                            int namespaces, const xmlChar**, int count, int,
                            const xmlChar** attributes) {
      Build(parser, [&](Parse& parse) { parse.Start(name, space, namespaces, count, attributes); });
    };
    sax.endElementNs = [](void* parser, const xmlChar*, const xmlChar*, const xmlChar*) {
      Build(parser, [](Parse& parse) { parse.tree_.End(); });
    };
    sax.characters = sax.ignorableWhitespace = [](void* parser, const xmlChar* text, int length) {
      Build(parser, [&](Parse& parse) {
        parse.tree_.Text({Chars(text), static_cast<std::size_t>(length)});
      });
    };
    // Entities in other files are left out, so that using one is an error and nothing is loaded.
    sax.entityDecl = [](void* parser, const xmlChar* name, int type, const xmlChar* publicId,
                        const xmlChar* systemId, xmlChar* content) {
      Handle(parser, [&](Parse& parse) {
        const bool isInternal =
            type == XML_INTERNAL_GENERAL_ENTITY || type == XML_INTERNAL_PARAMETER_ENTITY;
        if (!isInternal || xmlGetPredefinedEntity(name) != nullptr) return;
        const bool isLong = FindTooManyAttributes(Chars(content)) != std::string_view::npos;
        if (isLong) return parse.Fail(kTooManyAttributes);
        xmlSAX2EntityDecl(parser, name, type, publicId, systemId, content);
      });
    };
    // The parser would add attributes with a default to each of their elements.
    sax.attributeDecl = [](void* parser, const xmlChar*, const xmlChar* name, int, int,
                           const xmlChar* byDefault, xmlEnumeration* values) {
      xmlFreeEnumeration(values);
      if (byDefault == nullptr) return;
      Handle(parser, [&](Parse& parse) {
        parse.Fail("defaults of attributes are not read, such as that of " + Quote(Chars(name)));
      });
    };
    sax.comment = nullptr;
    sax.processingInstruction = nullptr;
    sax.elementDecl = nullptr;
    sax.notationDecl = nullptr;
    sax.unparsedEntityDecl = nullptr;
    sax.externalSubset = nullptr;
    sax.reference = nullptr;
    sax.serror = OnError;
  }

  // The parser's versions differ in whether the error is const.
  template <typename Error>
  static void OnError(void* parser, Error* error) {
    // An entity that nobody declares is a warning where a DTD that is not loaded might declare it.
    if (error->level < XML_ERR_ERROR && error->code != XML_WAR_UNDECLARED_ENTITY) return;
    Handle(parser, [&](Parse& parse) {
      const std::string what = error->message == nullptr ? "" : OneLine(error->message);
      parse.Fail(what.empty() ? "it is not well-formed" : what);
    });
  }

  // Does the work unless there is a problem already. What it throws must not pass the parser.
  template <typename Work>
  static void Handle(void* parser, Work work) {
    Parse& parse = Of(parser);
    if (!parse.problem_.empty()) return;
    try {
      work(parse);
    } catch (const TreeBuilder::LimitExceeded& limit) {
      parse.Fail(limit.what());
    } catch (...) {
      parse.exception_ = std::current_exception();
      parse.Fail("out of memory");
    }
  }

  // As Handle, for content: ends parsing after a problem. The parser recovers from each, so that it
  // gets here, and takes no entity from then on.
  template <typename Work>
  static void Build(void* parser, Work work) {
    Handle(parser, work);
    Parse& parse = Of(parser);
    if (parse.problem_.empty()) return;
    parse.parser_->wellFormed = 0;
    xmlStopParser(static_cast<xmlParserCtxt*>(parser));
  }

  static Parse& Of(void* parser) {
    return *static_cast<Parse*>(static_cast<xmlParserCtxt*>(parser)->_private);
  }

  void Start(const xmlChar* name, const xmlChar* space, int namespaces, int count,
             const xmlChar** attributes) {
    if (xmlDictSize(parser_->dict) > kMostNames) return Fail("too many names");
    // The parser is at the end of the tag, whose bracket is the last one before.
    const xmlParserInput& input = *parser_->inputTab[0];
    const std::string_view before(Chars(input.base),
                                  static_cast<std::size_t>(input.cur - input.base));
    const std::size_t bracket = std::min(before.rfind('<'), before.size());
    const std::string_view tag = before.substr(bracket);
    const auto line = input.line - std::count(tag.begin(), tag.end(), '\n');
    int plain = 0;
    for (int i = 0; i < count; ++i) plain += attributes[5 * i + 1] == nullptr ? 1 : 0;
    if (tree_.Root() == nullptr) rootNamespace_ = Chars(space);
    tree_.Start(Chars(name), static_cast<std::size_t>(line), input.consumed + bracket, namespaces,
                static_cast<std::size_t>(plain));
    for (int i = 0; i < count; ++i, attributes += 5) {
      if (attributes[1] != nullptr) continue;
      const auto length = static_cast<std::size_t>(attributes[4] - attributes[3]);
      tree_.AddAttribute(Chars(attributes[0]), {Chars(attributes[3]), length});
    }
  }

  // The first problem counts; nothing that comes after it is taken.
  void Fail(const std::string& what) {
    const xmlParserInput& input = *parser_->inputTab[0];
    offset_ = input.consumed + static_cast<std::size_t>(input.cur - input.base);
    problem_ = what;
  }

  std::string_view text_;
  TreeBuilder& tree_;
  std::unique_ptr<xmlParserCtxt, Free> parser_;
  std::string rootNamespace_;
  std::string problem_;
  std::size_t offset_ = 0;
  std::exception_ptr exception_;
};

}  // namespace

Place PlaceAt(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, std::min(offset, text.size()));
  const std::string_view inLine = before.substr(before.rfind('\n') + 1);
  const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return {1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')),
          1 + static_cast<std::size_t>(std::count_if(inLine.begin(), inLine.end(), isFirstByte))};
}

Xml::Xml(std::string_view text) : names_(nullptr, [](_xmlDict* names) { xmlDictFree(names); }) {
  if (const std::size_t at = FindTooManyAttributes(text); at != std::string_view::npos) {
    throw Malformed(kTooManyAttributes, PlaceAt(text, at));
  }
  if (const std::size_t at = FindLongDeclaration(text); at != std::string_view::npos) {
    throw Malformed("its document type declaration is too long", PlaceAt(text, at));
  }
  TreeBuilder tree(memory_, text.size());
  Parse parse(text, tree);
  parse.Run();
  xmlDictReference(parse.Names());
  names_.reset(parse.Names());
  root_ = tree.Root();
  namespace_ = parse.RootNamespace();
}

}  // namespace qif

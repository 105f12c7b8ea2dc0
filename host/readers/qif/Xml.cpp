#include "readers/qif/Xml.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace qif {

namespace {

constexpr std::size_t kMostLevels = 250;
constexpr int kMostAttributes = 1000;
constexpr int kMostNamespaces = 250;  // in scope; the parser searches them one by one

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool IsBlank(std::string_view text) { return std::all_of(text.begin(), text.end(), IsSpace); }

std::string_view View(const xmlChar* text) {
  return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

// Elements whose text is kept as it stands; that of all others is numbers, words and names.
bool KeepsSpace(std::string_view element) { return element == "Text" || element == "Data"; }

// The parser compares each attribute of an element with all others. A tag reaches to the next
// bracket, for values have none, and a short one cannot have many.
bool HasTooManyAttributes(std::string_view text) {
  constexpr std::size_t kShort = 4096;
  for (std::size_t at = text.find('<'); at != std::string_view::npos;) {
    const std::size_t next = text.find('<', at + 1);
    const std::string_view tag = text.substr(at, next - at);
    at = next;
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
    if (quotes > 2 * kMostAttributes) return true;
  }
  return false;
}

// A reason on one line and not long.
std::string OneLine(std::string_view text) {
  constexpr std::size_t kLongest = 300;
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  std::string line(text.substr(0, kLongest));
  while (text.size() > kLongest && (line.back() & 0x80) != 0) line.pop_back();
  std::replace_if(line.begin(), line.end(), IsSpace, ' ');
  return line + (text.size() > kLongest ? "..." : "");
}

}  // namespace

Place PlaceAt(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, std::min(offset, text.size()));
  const std::string_view inLine = before.substr(before.rfind('\n') + 1);
  const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return {1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')),
          1 + static_cast<std::size_t>(std::count_if(inLine.begin(), inLine.end(), isFirstByte))};
}

// Takes what the parser reports. An entity's content is parsed by a parser of its own, which has
// the same handlers: places are always those of the document's parser.
class XmlBuilder {
 public:
  XmlBuilder(Xml& xml, std::string_view text)
      : xml_(xml), text_(text), mostBytes_(20 * text.size() + 1'000'000), open_(1) {}

  void Parse() {
    static const bool isReady = (xmlInitParser(), true);
    if (!isReady || text_.size() > std::numeric_limits<int>::max() / 2) {
      throw Malformed("the document is larger than 1 GB");
    }
    if (HasTooManyAttributes(text_)) throw Malformed("an element has too many attributes");
    const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt*)> parser(
        xmlCreateMemoryParserCtxt(text_.data(), static_cast<int>(text_.size())), [](auto* made) {
          xmlFreeDoc(made->myDoc);
          xmlFreeParserCtxt(made);
        });
    if (parser == nullptr) throw std::bad_alloc();
    parser_ = parser.get();
    parser_->_private = this;
    xmlCtxtUseOptions(parser_,
                      XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC);
    SetHandlers(*parser_->sax);
    xmlDictReference(parser_->dict);
    xml_.names_.reset(parser_->dict);
    xmlParseDocument(parser_);
    if (exception_ != nullptr) std::rethrow_exception(exception_);
    if (!problem_.empty() || parser_->wellFormed == 0 || xml_.root_ == nullptr) ThrowProblem();
  }

 private:
  struct Open {
    Node* node = nullptr;
    Node* lastChild = nullptr;
    std::string text;
    int namespaces = 0;  // in scope
  };

  // --- Handlers ---

  static void SetHandlers(xmlSAXHandler& sax) {
    sax.startElementNs = [](void* parser, const xmlChar* name, const xmlChar*, const xmlChar* space,
                            int namespaces, const xmlChar**, int count, int,
                            const xmlChar** attributes) {
      Handle(parser, [&](XmlBuilder& builder) {
        builder.Start(name, space, namespaces, count, attributes);
      });
    };
    sax.endElementNs = [](void* parser, const xmlChar*, const xmlChar*, const xmlChar*) {
      Handle(parser, [](XmlBuilder& builder) { builder.End(); });
    };
    sax.characters = sax.ignorableWhitespace = [](void* parser, const xmlChar* text, int length) {
      Handle(parser, [&](XmlBuilder& builder) {
        builder.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
      });
    };
    sax.entityDecl = [](void* parser, const xmlChar* name, int type, const xmlChar* publicId,
                        const xmlChar* systemId, xmlChar* content) {
      Handle(parser, [&](XmlBuilder& builder) {
        const bool isInternal =
            type == XML_INTERNAL_GENERAL_ENTITY || type == XML_INTERNAL_PARAMETER_ENTITY;
        if (!isInternal || xmlGetPredefinedEntity(name) != nullptr) return;
        if (HasTooManyAttributes(View(content))) {
          return builder.Fail("an element has too many attributes");
        }
        xmlSAX2EntityDecl(parser, name, type, publicId, systemId, content);
      });
    };
    sax.attributeDecl = [](void* parser, const xmlChar*, const xmlChar*, int, int, const xmlChar*,
                           xmlEnumeration* values) {
      xmlFreeEnumeration(values);
      Handle(parser, [](XmlBuilder& builder) {
        builder.Fail("attributes that a DTD declares are not read");
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

  // What a handler throws must not pass through the parser.
  template <typename Work>
  static void Handle(void* parser, Work work) {
    XmlBuilder& builder = Of(parser);
    if (!builder.problem_.empty()) return;
    try {
      work(builder);
    } catch (...) {
      builder.exception_ = std::current_exception();
      builder.Fail("out of memory");
    }
  }

  static XmlBuilder& Of(void* parser) {
    return *static_cast<XmlBuilder*>(static_cast<xmlParserCtxt*>(parser)->_private);
  }

  // The parser's versions differ in whether the error is const.
  template <typename Error>
  static void OnError(void* parser, Error* error) {
    // An entity that nobody declares is a warning where a DTD that is not loaded might declare it.
    if (error->level < XML_ERR_ERROR && error->code != XML_WAR_UNDECLARED_ENTITY) return;
    Handle(parser, [&](XmlBuilder& builder) {
      const std::string what = error->message == nullptr ? "" : OneLine(error->message);
      builder.Fail(what.empty() ? "it is not well-formed" : what);
    });
  }

  // --- Building ---

  void Start(const xmlChar* name, const xmlChar* space, int namespaces, int count,
             const xmlChar** attributes) {
    Open& parent = open_[level_];
    if (level_ >= kMostLevels) {
      return Fail("elements lie more than " + std::to_string(kMostLevels) + " levels deep");
    }
    if (parent.namespaces + namespaces > kMostNamespaces) {
      return Fail("too many namespaces are declared");
    }
    if (IsBlank(parent.text)) {
      parent.text.clear();
    } else if (!IsSpace(parent.text.back())) {
      parent.text += ' ';
    }
    const xmlParserInput& input = *parser_->inputTab[0];
    const auto* const base = reinterpret_cast<const char*>(input.base);
    const std::string_view before(base, static_cast<std::size_t>(input.cur - input.base));
    const std::size_t bracket = std::min(before.rfind('<'), before.size());
    const auto lines =
        std::count(before.begin() + static_cast<std::ptrdiff_t>(bracket), before.end(), '\n');
    Node& node = *New<Node>(1);
    node.name = reinterpret_cast<const char*>(name);
    node.parent = parent.node;
    node.line = static_cast<std::uint32_t>(input.line - lines);
    node.offset = static_cast<std::uint32_t>(input.consumed + bracket);
    AddAttributes(node, count, attributes);
    if (parent.lastChild != nullptr) {
      parent.lastChild->nextSibling = &node;
    } else if (parent.node != nullptr) {
      parent.node->firstChild = &node;
    } else {
      xml_.root_ = &node;
      xml_.namespace_ = View(space);
    }
    parent.lastChild = &node;
    const int inScope = parent.namespaces + namespaces;
    if (++level_ == open_.size()) open_.emplace_back();
    open_[level_].node = &node;
    open_[level_].lastChild = nullptr;
    open_[level_].text.clear();
    open_[level_].namespaces = inScope;
  }

  void AddAttributes(Node& node, int count, const xmlChar** attributes) {
    if (count == 0) return;
    auto* const fields = New<Node::Field>(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i, attributes += 5) {
      if (attributes[1] != nullptr) continue;
      const auto* const begin = reinterpret_cast<const char*>(attributes[3]);
      const std::string_view value(begin, static_cast<std::size_t>(attributes[4] - attributes[3]));
      const std::string_view name = View(attributes[0]);
      fields[node.fieldCount++] = {name.data(), Keep(value, name == "label").data()};
    }
    node.fields = fields;
  }

  void Text(std::string_view text) {
    Open& parent = open_[level_];
    if (parent.lastChild != nullptr && parent.text.empty() && IsBlank(text)) return;
    parent.text += text;
  }

  void End() {
    Open& ended = open_[level_--];
    if (IsBlank(ended.text)) return;
    const std::string_view text = Keep(ended.text, KeepsSpace(ended.node->name));
    ended.node->text = text.data();
    ended.node->textLength = static_cast<std::uint32_t>(text.size());
  }

  // A text that ends in a null and lives as long as the document, with its white space or without
  // what is too much of it.
  std::string_view Keep(std::string_view text, bool withSpace) {
    char* const kept = New<char>(text.size() + 1);
    char* end = kept;
    if (withSpace) {
      end = std::copy(text.begin(), text.end(), kept);
    } else {
      for (const char c : text) {
        if (!IsSpace(c)) {
          *end++ = c;
        } else if (end != kept && end[-1] != ' ') {
          *end++ = ' ';
        }
      }
      if (end != kept && end[-1] == ' ') --end;
    }
    *end = '\0';
    return {kept, static_cast<std::size_t>(end - kept)};
  }

  template <typename Thing>
  Thing* New(std::size_t count) {
    bytes_ += count * sizeof(Thing);
    if (bytes_ > mostBytes_) Fail("its entities make it many times larger than it is");
    auto* const made =
        static_cast<Thing*>(xml_.memory_.allocate(count * sizeof(Thing), alignof(Thing)));
    std::uninitialized_default_construct_n(made, count);
    return made;
  }

  // --- Failing ---

  // The first problem counts; nothing that comes after it is taken.
  void Fail(const std::string& what) {
    const xmlParserInput& input = *parser_->inputTab[0];
    offset_ = input.consumed + static_cast<std::size_t>(input.cur - input.base);
    problem_ = what;
    parser_->disableSAX = 1;
  }

  [[noreturn]] void ThrowProblem() const {
    const std::string what = problem_.empty() ? "it is not well-formed" : problem_;
    const std::size_t last = text_.find_last_not_of(" \t\r\n");
    const bool isCut = offset_ > last;
    throw Malformed(isCut ? "the document is truncated (" + what + ")" : what,
                    PlaceAt(text_, offset_));
  }

  Xml& xml_;
  std::string_view text_;
  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
  xmlParserCtxt* parser_ = nullptr;
  std::vector<Open> open_;  // by level; the first is around the root
  std::size_t level_ = 0;
  std::string problem_;
  std::size_t offset_ = 0;
  std::exception_ptr exception_;
};

Xml::Xml(std::string_view text) : names_(nullptr, [](_xmlDict* dict) { xmlDictFree(dict); }) {
  XmlBuilder(*this, text).Parse();
}

}  // namespace qif

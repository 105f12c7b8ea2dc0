#include "writers/qif/Xml.h"

#include <libxml/xmlstring.h>
#include <libxml/xmlwriter.h>

#include <new>

namespace qif_writer {

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

const xmlChar* Characters(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}
const xmlChar* Characters(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

// The writer fails for want of memory alone.
void Require(int result) {
  if (result < 0) throw std::bad_alloc();
}

}  // namespace

void Xml::Free::operator()(_xmlBuffer* buffer) const { xmlBufferFree(buffer); }
void Xml::Free::operator()(_xmlTextWriter* writer) const { xmlFreeTextWriter(writer); }

Xml::Xml() : buffer_(xmlBufferCreate()), writer_(xmlNewTextWriterMemory(buffer_.get(), 0)) {
  if (buffer_ == nullptr || writer_ == nullptr) throw std::bad_alloc();
  Require(xmlTextWriterSetIndent(writer_.get(), 1));
  Require(xmlTextWriterSetIndentString(writer_.get(), Characters("  ")));
  Require(xmlTextWriterStartDocument(writer_.get(), nullptr, "UTF-8", nullptr));
}

Xml::~Xml() = default;

void Xml::Open(const char* name) {
  Require(xmlTextWriterStartElement(writer_.get(), Characters(name)));
}

void Xml::Attribute(const char* name, const std::string& value) {
  Require(
      xmlTextWriterWriteAttribute(writer_.get(), Characters(name), Characters(Writable(value))));
}

void Xml::Close() { Require(xmlTextWriterEndElement(writer_.get())); }

void Xml::Leaf(const char* name, const std::string& text) {
  Open(name);
  Content(text);
  Close();
}

void Xml::Content(const std::string& text) {
  Require(xmlTextWriterWriteString(writer_.get(), Characters(Writable(text))));
}

void Xml::Comment(const std::string& text) {
  std::string safe = Writable(text);
  for (std::size_t at = 0; (at = safe.find("--", at)) != std::string::npos;) {
    safe.insert(at + 1, " ");
  }
  if (!safe.empty() && safe.back() == '-') safe += ' ';
  Require(xmlTextWriterWriteComment(writer_.get(), Characters(safe)));
}

void Xml::OpenWithId(const char* name, std::uint32_t id) {
  Open(name);
  Attribute("id", std::to_string(id));
}

void Xml::OpenList(const char* name, std::size_t count) {
  Open(name);
  Attribute("n", std::to_string(count));
}

std::string Xml::Finish() {
  Require(xmlTextWriterEndDocument(writer_.get()));
  writer_.reset();
  return {reinterpret_cast<const char*>(xmlBufferContent(buffer_.get())),
          static_cast<std::size_t>(xmlBufferLength(buffer_.get()))};
}

std::string Writable(const std::string& text) {
  const bool isUtf8 = xmlCheckUTF8(Characters(text)) != 0;
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const bool isControl = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
    // U+FFFE and U+FFFF, which no document may hold.
    const bool isNone = text.compare(i, 2, "\xEF\xBF") == 0 && i + 2 < text.size() &&
                        static_cast<unsigned char>(text[i + 2]) >= 0xBE;
    if (isControl || isNone || (!isUtf8 && c >= 0x80)) {
      result += kReplacement;
      if (isNone && isUtf8) i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace qif_writer

#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct _xmlBuffer;
struct _xmlTextWriter;

namespace qif_writer {

// Writes elements one after the other into memory. Throws std::bad_alloc when memory runs out.
class Xml {
 public:
  Xml();
  ~Xml();
  Xml(const Xml&) = delete;
  Xml& operator=(const Xml&) = delete;

  void Open(const char* name);
  // Of the element that was opened last and has no content yet.
  void Attribute(const char* name, const std::string& value);
  void Close();
  // An element with a text alone. What XML cannot hold becomes U+FFFD.
  void Leaf(const char* name, const std::string& text);
  void Content(const std::string& text);
  void Comment(const std::string& text);

  // An element with an id, and a list of `count`.
  void OpenWithId(const char* name, std::uint32_t id);
  void OpenList(const char* name, std::size_t count);
  void Reference(const char* name, std::uint32_t id) { Leaf(name, std::to_string(id)); }

  // The document, when all elements are closed. Nothing may be written afterwards.
  std::string Finish();

 private:
  struct Free {
    void operator()(_xmlBuffer* buffer) const;
    void operator()(_xmlTextWriter* writer) const;
  };
  std::unique_ptr<_xmlBuffer, Free> buffer_;
  std::unique_ptr<_xmlTextWriter, Free> writer_;  // writes into buffer_
};

// A text that XML can hold: UTF-8 without control characters but tab and the ends of lines.
std::string Writable(const std::string& text);

}  // namespace qif_writer

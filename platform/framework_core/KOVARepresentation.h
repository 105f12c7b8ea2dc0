#pragma once

#include "framework_base/KOVAReferenceCount.h"
#include "framework_base/KOVAResult.h"
#include "framework_base/KOVAString.h"
#include "framework_core/KOVAIdentifier.h"

class KOVAAttributeExporter;
class KOVAExportRepresentation;

// Names a kind of representation, such as "BRep".
class KOVARepType {
 public:
  // `name` is a constant that outlives the type.
  explicit KOVARepType(const char* name) : name_(name) {}
  // The name, as it was given.
  const char* GetName() const noexcept { return name_; }

 private:
  const char* name_;
};

// A model as the framework sees it.
class KOVADocument {
 public:
  KOVADocument() = default;
  KOVADocument(const KOVADocument&) = delete;
  KOVADocument& operator=(const KOVADocument&) = delete;
  virtual ~KOVADocument();

  // False until the model behind the document has been opened.
  virtual bool IsAvailable() const = 0;

  // The document's export representation of a type; on failure `representation` is untouched.
  // The document keeps ownership.
  virtual KOVAResult GetExportRep(const KOVARepType& type,
                                  KOVAExportRepresentation*& representation) = 0;
};

// One way of looking at a document.
class KOVARepresentation : public KOVAReferenceCount {
 public:
  // REQUIRES: `document` outlives the representation.
  explicit KOVARepresentation(KOVADocument& document) : document_(document) {}
  ~KOVARepresentation() override;

  // The document, or null while it is not available.
  virtual KOVADocument* GetDocument() const {
    return document_.IsAvailable() ? &document_ : nullptr;
  }

 private:
  KOVADocument& document_;
};

// A representation that the framework reads a model through.
class KOVAExportRepresentation : public KOVARepresentation {
 public:
  // REQUIRES: `document` outlives the representation.
  explicit KOVAExportRepresentation(KOVADocument& document) : KOVARepresentation(document) {}
  ~KOVAExportRepresentation() override;

  // Hands out the attribute exporter; this representation keeps ownership.
  // DEFAULT: 0x1000005, output untouched.
  virtual KOVAResult GetAttributeExporter(KOVAAttributeExporter*& exporter);

  // The persistent identifier of an object. DEFAULT: 0x1000005, output untouched.
  virtual KOVAResult GetPID(const KOVAIdentifier& identifier, KOVAString& pid);

  // Lets the representation get ready before it is queried; the result, and what may be thrown, are
  // the hook's.
  KOVAResult PreProcess() { return DoPreProcess(); }

 protected:
  // The hook behind PreProcess. DEFAULT: sets the pre-processed flag, success.
  virtual KOVAResult DoPreProcess();

  // False after construction.
  bool IsPreProcessed() const noexcept { return preProcessed_; }
  // Sets the flag for good.
  void SetPreProcessed() noexcept { preProcessed_ = true; }

 private:
  bool preProcessed_ = false;
};

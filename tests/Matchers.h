#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ios>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KOVAOrvoPMIExporter.h"
#include "KOVAOrvoPMIExporterFactory.h"
#include "framework_base/KOVAResult.h"
#include "framework_base/KOVAString.h"
#include "standin/Control.h"
#include "standin/Part.h"

// How a failed expectation shows a result.
inline void PrintTo(const KOVAResult& result, std::ostream* out) {
  *out << "0x" << std::hex << result.GetCode() << std::dec;
}
inline void PrintTo(const KOVAString& string, std::ostream* out) {
  *out << ::testing::PrintToString(std::wstring(string.GetText()));
}

// A query's exact code.
MATCHER_P(HasCode, code, "") { return arg.GetCode() == code; }
inline auto IsSuccess() { return HasCode(0L); }
inline auto FailsWith(long code) { return HasCode(code); }

constexpr long kFailure = 0x1000001;
constexpr long kNotImplemented = 0x1000005;
constexpr long kNotInitialised = 0x1000008;

// A string's exact text.
MATCHER_P(Reads, text, "") { return std::wstring(arg.GetText()) == text; }

// What an untouched output holds: this number, or what follows.
constexpr int kUntouched = 77;
// An array of numbers, to be passed as one.
template <typename Number, std::size_t size>
struct Untouched : std::array<Number, size> {
  Untouched() { this->fill(static_cast<Number>(kUntouched)); }
  operator Number*() { return this->data(); }
};
inline KOVAString SentinelString() { return KOVAString(L"untouched"); }
inline constexpr char kSentinelType[] = "sentinel type", kSentinelNative[] = "sentinel native";
inline KOVAIdentifier SentinelIdentifier() {
  static int object = 0;
  return KOVAIdentifier(&object, kSentinelType, reinterpret_cast<KOVARepresentation*>(&object),
                        kSentinelNative, KOVAIdentifierCastHandle(nullptr));
}
MATCHER(IsSentinel, "") {
  const KOVAIdentifier sentinel = SentinelIdentifier();
  return arg.GetNativeObject() == sentinel.GetNativeObject() &&
         arg.GetTypeName() == sentinel.GetTypeName() &&
         arg.GetRepresentation() == sentinel.GetRepresentation() &&
         arg.GetNativeTypeName() == sentinel.GetNativeTypeName();
}

// What becomes of a sentinel: an identifier of the object, or with null nothing.
MATCHER_P(Became, object, "") {
  return object != nullptr ? arg.GetNativeObject() == object
                           : ::testing::ExplainMatchResult(IsSentinel(), arg, result_listener);
}

// An identifier's four components, names by content.
inline bool SameName(const char* a, const char* b) {
  return a == b || (a != nullptr && b != nullptr && std::string_view(a) == b);
}
MATCHER_P4(Consists, nativeObject, typeName, representation, nativeTypeName, "") {
  return arg.GetNativeObject() == nativeObject && SameName(arg.GetTypeName(), typeName) &&
         arg.GetRepresentation() == representation &&
         SameName(arg.GetNativeTypeName(), nativeTypeName);
}
inline void PrintTo(const KOVAIdentifier& identifier, std::ostream* out) {
  const auto name = [](const char* text) { return text == nullptr ? "(none)" : text; };
  *out << "{" << identifier.GetNativeObject() << ", " << name(identifier.GetTypeName()) << ", "
       << identifier.GetRepresentation() << ", " << name(identifier.GetNativeTypeName()) << "}";
}

// An identifier that names an entity and says nothing else about it.
inline KOVAIdentifier Naming(void* nativeObject) {
  return KOVAIdentifier(nativeObject, nullptr, nullptr, nullptr, KOVAIdentifierCastHandle(nullptr));
}

// Entities of classes derived from the library's, which exact-type tests have to turn away.
constexpr int kDerivedType = 9000;
template <typename Base>
class Derived : public Base {
 public:
  using Base::Base;
  int identity(int level = 0) const override {
    return level == 0 || level == Base::derivation_level + 1 ? kDerivedType : Base::identity(level);
  }
};

// The exporter's private side, as far as tests look at it; the one definition of this struct.
struct ExporterInsides {
  template <typename... Arguments>
  static KOVAResult InvertPointOnPlane(KOVAOrvoPMIExporter& exporter, Arguments&&... arguments) {
    return exporter.InvertPointOnPlane(std::forward<Arguments>(arguments)...);
  }
  static KOVAResult InitializeCapture(KOVAOrvoPMIExporter& exporter, ENTITY*& capture) {
    return exporter.InitializeCapture(capture);
  }
  static auto& Views(KOVAOrvoPMIExporter& exporter) { return exporter.viewAnnotationMap; }
  static auto& Callouts(KOVAOrvoPMIExporter& exporter) { return exporter.calloutAnnotationMap; }
  static auto& Owners(KOVAOrvoPMIExporter& exporter) { return exporter.annotationOwnerMap; }
};

// The exporter that the factory makes.
inline std::unique_ptr<KOVAOrvoPMIExporter> Export(KOVADocument& document) {
  KOVAPMIExporter* exporter = nullptr;
  EXPECT_EQ(KOVACreateOrvoPMIExporter(&document, &exporter), 0);
  return std::unique_ptr<KOVAOrvoPMIExporter>(static_cast<KOVAOrvoPMIExporter*>(exporter));
}
inline std::unique_ptr<KOVAOrvoPMIExporter> Export(standin::Part& part) {
  return Export(part.GetDocument());
}

// The native objects that an exporter's walks meet.
using Entities = std::vector<const ENTITY*>;
inline const ENTITY* EntityOf(const KOVAIdentifier& identifier) {
  return static_cast<const ENTITY*>(identifier.GetNativeObject());
}
// Of all views.
inline Entities Views(KOVAOrvoPMIExporter& exporter) {
  Entities views;
  KOVAIdentifier view;
  for (int i = 0; exporter.GetAnnotationView(KOVAIdentifier(), i, view).IsSuccess(); ++i) {
    views.push_back(EntityOf(view));
  }
  return views;
}
// Of a view's annotations; of all annotations, view after view.
inline Entities Annotations(KOVAOrvoPMIExporter& exporter, const ENTITY* view) {
  Entities annotations;
  KOVAIdentifier annotation;
  const KOVAIdentifier naming = Naming(const_cast<ENTITY*>(view));
  for (int i = 0; exporter.GetViewAnnotation(naming, i, annotation).IsSuccess(); ++i) {
    annotations.push_back(EntityOf(annotation));
  }
  return annotations;
}
inline Entities Annotations(KOVAOrvoPMIExporter& exporter) {
  Entities annotations;
  for (const ENTITY* view : Views(exporter)) {
    for (const ENTITY* annotation : Annotations(exporter, view)) annotations.push_back(annotation);
  }
  return annotations;
}
// Of the entities that an annotation is attached to.
inline Entities Owners(KOVAOrvoPMIExporter& exporter, ENTITY& annotation) {
  KOVAIdentifiers identifiers;
  for (int i = 0;
       exporter.GetEntityFromAnnotationAt(Naming(&annotation), i, identifiers).IsSuccess(); ++i) {
  }
  Entities owners;
  for (int i = 0; i < identifiers.count(); ++i) owners.push_back(EntityOf(identifiers.at(i)));
  return owners;
}

// What a query that ends with a count answers: its code, and the count.
using Answer = std::pair<long, int>;
template <typename... Parameters, typename... Arguments>
Answer CountFrom(KOVAPMIExporter& exporter, KOVAResult (KOVAPMIExporter::*query)(Parameters...),
                 const Arguments&... arguments) {
  int count = kUntouched;
  const KOVAResult result = (exporter.*query)(arguments..., count);
  return {result.GetCode(), count};
}

// The coordinates of a point between two axes, in the order of operations that callers rely on.
inline std::array<double, 2> Projected(const QENposition& origin, const QENvector& x,
                                       const QENvector& y, const QENposition& point) {
  const QENvector d = point - origin;
  const double a = dot(x, d), b = dot(y, d), xx = dot(x, x), yy = dot(y, y), xy = dot(x, y);
  const double det = yy * xx - xy * xy;
  return {(yy * a - xy * b) / det, (xx * b - xy * a) / det};
}

// A text on a face of its own, with a plane of its own.
inline ATTRIB_KOVAPMI_TEXT& AddPlacedText(standin::Part& part) {
  auto& text = part.AddText(part.Face(), L"placed");
  part.Place(text, {}, {1, 0, 0}, {0, 0, 1});
  return text;
}

// What the platform counts, deletion calls left out: the same before and after whatever gives back
// all that it took.
inline std::array<long, 8> Balance() {
  const standin::Counters now = standin::Count();
  return {now.liveEntities, now.trackedBytes, now.managerStarts,  now.openBoards,
          now.errorDepth,   now.logging,      now.errorMarkState, now.deletionsOfDead};
}

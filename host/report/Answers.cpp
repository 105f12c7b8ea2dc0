#include "report/Answers.h"

#include "report/Wide.h"

namespace {

// A string that a query may succeed without having written.
template <typename Query>
Text WrittenText(Query query) {
  static const KOVAString unset(L"\x1");
  KOVAString value = unset;
  if (!query(value).IsSuccess() || value.equals(unset)) return {};
  return TextOf(value);
}

}  // namespace

Text TextOf(const KOVAString& string) { return ToUtf8(string.GetText()); }

Text NameOfObject(KOVAPMIExporter& exporter, const KOVAIdentifier& object) {
  return WrittenText([&](KOVAString& name) { return exporter.GetAnnotationName(object, name); });
}

Text IdOfObject(KOVAPMIExporter& exporter, const KOVAIdentifier& object) {
  Text id = WrittenText([&](KOVAString& pid) { return exporter.GetPID(object, pid); });
  return id == "" ? Text() : id;
}

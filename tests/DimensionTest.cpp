// What dimensions answer beyond one full dimension: missing texts, callout marks.

#include "Matchers.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

using standin::Edit;
using standin::Part;

TEST(DimensionTexts, AreEmptyWhereMissingAndWithoutANoteOnlyTheHoleCalloutIsWritten) {
  Part part;
  auto& dimension = part.AddDimension({}, dim_linear, dim_sub_width, 40);
  auto& note = part.Make<KOVAPMI_NOTE>();
  Edit(note).suffix = L"suffix";
  Edit(dimension).hole_callout = L"M6";
  const auto exporter = Export(part);
  const wchar_t* const k = L"untouched";
  const std::pair<KOVAPMI_NOTE*, std::array<const wchar_t*, 8>> cases[] = {
      {&note, {L"", L"suffix", L"", L"", L"", L"", L"M6", L""}},
      {nullptr, {k, k, k, k, k, k, L"M6", k}}};
  for (const auto& [has, texts] : cases) {
    Edit(dimension).note = has;
    std::vector<KOVAString> s(8, SentinelString());
    EXPECT_THAT(exporter->GetDimensionTexts(Naming(&dimension), s[0], s[1], s[2], s[3], s[4], s[5],
                                            s[6], s[7]),
                IsSuccess());
    for (std::size_t i = 0; i < s.size(); ++i) EXPECT_THAT(s[i], Reads(texts[i])) << i;
  }
}

TEST(DimensionTolerance, IsThereWhateverTheLimits) {
  Part part;
  auto& dimension = part.AddDimension({}, dim_linear, dim_sub_width, 40);
  const auto exporter = Export(part);
  double lower = kUntouched, upper = kUntouched, precision = kUntouched;
  bool has = false;
  KOVAString upperText = SentinelString(), lowerText = SentinelString();
  EXPECT_THAT(exporter->GetDimensionTolerance(Naming(&dimension), lower, upper, precision, has,
                                              upperText, lowerText),
              IsSuccess());
  EXPECT_TRUE(has);
  EXPECT_THAT((std::vector<double>{lower, upper, precision}), ::testing::Each(0));
  EXPECT_THAT(upperText, Reads(L""));
  EXPECT_THAT(lowerText, Reads(L""));
}

TEST(CalloutFeature, IsTheMarksIntegerAndNothingWithoutAReadableMark) {
  Part part;
  const auto exporter = Export(part);
  auto answer = CalloutFeatureAnnotationTypeThread;
  const auto ask = [&](ENTITY& dimension) {
    return exporter->GetCalloutFeatureAnnotationProperties(Naming(&dimension), answer);
  };
  EXPECT_THAT(ask(part.MakeCallout(callout_feature_depth, 1)), IsSuccess());
  EXPECT_EQ(answer, CalloutFeatureAnnotationTypeDepth);
  auto& unmarked = part.AddDimension({}, dim_linear, dim_sub_width, 1);
  auto& misread = part.AddDimension({}, dim_linear, dim_sub_width, 1);
  part.Make<ATTRIB_GEN_STRING>(&misread, "QENATTRIB_COANNOT_TYPE", "1");
  auto& marked = part.MakeCallout(callout_feature_hole, 1);
  EXPECT_THAT(ask(unmarked), FailsWith(kFailure));
  EXPECT_THAT(ask(misread), FailsWith(kFailure));
  // A lookup that fails counts for nothing, whatever it found.
  const auto fault = standin::Fault::KernelCall(1, 42, true);
  EXPECT_THAT(ask(marked), FailsWith(kFailure));
  EXPECT_TRUE(fault.HasFired());
  EXPECT_EQ(answer, CalloutFeatureAnnotationTypeDepth);
}

}  // namespace

// What notes answer beyond one of them: each flag of the character format, missing properties.

#include "Matchers.h"

namespace {

using standin::Edit;
using standin::Part;

TEST(TextFont, TakesEachFlagForAnyNonZeroValueNarrowsToTheNearestAndNeedsBothProperties) {
  Part part;
  using Fields = KOVAPMI_TEXT_PROPERTIES::fields;
  int Fields::*const flags[] = {&Fields::fixed_pitch, &Fields::bold,           &Fields::italic,
                                &Fields::underline,   &Fields::strike_through, &Fields::overline};
  auto& properties = part.Make<KOVAPMI_TEXT_PROPERTIES>();
  auto& text = part.AddText(part.Face(), L"text");
  auto& flagNote = part.AddFlagNote(part.Face(), nullptr);
  const auto exporter = Export(part);
  // Without display properties, without text properties, and one flag after the other.
  for (int step = -2; step < 6; ++step) {
    auto* const textDisplay = step < -1 ? nullptr : &part.Place(text, {}, {1, 0, 0}, {0, 0, 1});
    Edit(flagNote).display = textDisplay;
    if (step >= 0) Edit(*textDisplay).text_properties = &properties;
    for (ENTITY* entity : std::initializer_list<ENTITY*>{&text, &flagNote}) {
      for (const int value : {1, 2, -1, 0}) {
        Edit(properties) = {0, 0, 0, 0, 0, 0, 0.1, 1 + 1e-9, 1e300, {1, 1, 1}};
        if (step >= 0) Edit(properties).*flags[step] = value;
        auto font = FontOutline;
        KOVAString name = SentinelString();
        bool b[6] = {true, true, true, true, true, true};
        Untouched<float, 3> f;
        Untouched<double, 3> colour;
        EXPECT_THAT(exporter->GetTextFont(Naming(entity), font, name, b[0], f[0], b[1], b[2], b[3],
                                          b[4], b[5], f[1], f[2], colour),
                    HasCode(step >= 0 ? 0 : kFailure));
        for (int i = 0; i < 6; ++i) EXPECT_EQ(b[i], step < 0 || (i == step && value != 0)) << i;
        EXPECT_EQ(f[0], step < 0 ? kUntouched : 0.1F);
        EXPECT_EQ(f[1], step < 0 ? kUntouched : 1);
        EXPECT_THAT(colour, ::testing::Each(kUntouched));
      }
    }
  }
  KOVAString string = SentinelString();
  EXPECT_THAT(exporter->GetTextString(Naming(&flagNote), string), IsSuccess());
  EXPECT_THAT(string, Reads(L""));
}

}  // namespace

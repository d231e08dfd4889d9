#include "platform/text/fonts_windows.h"

#include "platform/settings/settings_store.h"
#include "support/settings_place.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

std::vector<std::string> texts(const std::vector<installed_font>& fonts) {
  std::vector<std::string> shown;
  for (const installed_font& f : fonts)
    shown.push_back(f.name + "=" + f.file + "=" + f.path);
  return shown;
}

/// Two keys of the test's own. The settings store writes text values, as fonts have them.
class RegistryFonts : public testing::Test {
 protected:
  static std::string key(const testing_support::settings_place& place) {
    return "HKEY_CURRENT_USER\\" + place.name();
  }
  testing_support::settings_place first, second;
};

TEST_F(RegistryFonts, AreTheValuesOfAKey) {
  const auto values = settings_at(first.name());
  values->set("Times New Roman (TrueType)", "times.TTF");
  values->set("Modern (All res)", "MODERN.FON");
  values->set("\xC3\x89t\xC3\xA9 (TrueType)", "\xC3\xA9t\xC3\xA9.ttf");
  values->set("Nothing", "");
  EXPECT_THAT(texts(fonts_at({key(first)})),
              UnorderedElementsAre("Times New Roman (TrueType)=times.TTF=times.TTF",
                                   "Modern (All res)=MODERN.FON=MODERN.FON",
                                   "\xC3\x89t\xC3\xA9 (TrueType)=\xC3\xA9t\xC3\xA9.ttf=\xC3\xA9t"
                                   "\xC3\xA9.ttf"));
}

TEST_F(RegistryFonts, OfTheSecondKeyAreReadWhenTheFirstHasNone) {
  settings_at(second.name())->set("Arial", "arial.ttf");
  EXPECT_THAT(texts(fonts_at({key(first), key(second)})),
              UnorderedElementsAre("Arial=arial.ttf=arial.ttf"));
  settings_at(first.name())->set("Times", "times.ttf");
  EXPECT_THAT(texts(fonts_at({key(first), key(second)})),
              UnorderedElementsAre("Times=times.ttf=times.ttf"));
}

TEST_F(RegistryFonts, AreNoneWithoutBothKeys) {
  EXPECT_THAT(fonts_at({key(first), key(second), "HKEY_OTHER\\x"}), IsEmpty());
}

TEST(FontPlace, OfAFileNameIsAmongTheSystemsFonts) {
  EXPECT_THAT(font_place("arial.ttf"), EndsWith("\\Fonts\\arial.ttf"));
  EXPECT_EQ(font_place("C:\\own\\arial.ttf"), "C:\\own\\arial.ttf");
}

}  // namespace
}  // namespace corvane

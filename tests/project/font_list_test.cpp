#include "project/font_list.h"

#include "platform/files/paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using ::testing::ElementsAre;

/// A font in a folder that paths of this system can name.
installed_font font(const std::string& name, const std::string& file,
                    const std::string& folder = "fonts") {
  const std::string root = native_style() == path_style::windows ? "C:\\" : "/";
  return {name, file, join_path(root + folder, file)};
}

std::vector<std::string> names(const font_list& list) {
  std::vector<std::string> shown;
  for (const offered_font& f : list.fonts())
    shown.push_back(f.name + "=" + f.file);
  return shown;
}

TEST(FontList, OffersTrueTypeFilesInLowerCaseByName) {
  const font_list list({font("Times", "times.TTF"), font("Fixed", "vgafix.fon"),
                        font("arial", "ARIAL.ttf"), font("Cambria", "cambria.ttc"),
                        font("Script", "script.pfb"), font("Open", "open.otf")});
  EXPECT_THAT(names(list),
              ElementsAre("arial=arial.ttf", "Cambria=cambria.ttc", "Times=times.ttf"));
}

TEST(FontList, AStoredNameIsFoundWhateverItsCaseOnDisk) {
  const font_list list({font("Times", "Times New.TTF")});
  EXPECT_EQ(list.path_of_file("times new.ttf"), font("", "Times New.TTF").path);
  EXPECT_EQ(list.path_of_file("TIMES NEW.ttf"), font("", "Times New.TTF").path);
  EXPECT_EQ(list.index_of("times new.ttf"), 0u);
  EXPECT_EQ(list.path_of_file("times.ttf"), std::nullopt);
  EXPECT_EQ(list.index_of(""), std::nullopt);
}

TEST(FontList, NamesThatASettingsRowCannotHoldAreNotOffered) {
  const font_list list({font("Comma", "a,b.ttf"), font("Bar", "a|b.ttf"), font("Quote", "a\"b.ttf"),
                        font("Apostrophe", "a'b.ttf"), font("Less", "a<b.ttf"),
                        font("Break", "a\nb.ttf"), font("Bytes", "a\xFF.ttf"),
                        font("Accent", "\xC3\xA9t\xC3\xA9.ttf"), font("Amp", "a&b.ttf")});
  EXPECT_THAT(names(list), ElementsAre("Accent=\xC3\xA9t\xC3\xA9.ttf", "Amp=a&b.ttf"));
}

TEST(FontList, OfTwoFilesOfOneNameTheFirstByNameIsOffered) {
  const font_list list(
      {font("Beta", "Regular.ttf", "beta"), font("Alpha", "regular.ttf", "alpha")});
  EXPECT_THAT(names(list), ElementsAre("Alpha=regular.ttf"));
  EXPECT_EQ(list.path_of_file("regular.ttf"), font("", "regular.ttf", "alpha").path);
}

TEST(FontList, FontsOfOneFileAreAllOffered) {
  const font_list list({font("Beta", "both.ttc"), font("Alpha", "both.ttc")});
  EXPECT_THAT(names(list), ElementsAre("Alpha=both.ttc", "Beta=both.ttc"));
  EXPECT_EQ(list.index_of("both.ttc"), 0u);
}

TEST(FontList, WithoutFontsIsEmpty) {
  EXPECT_TRUE(font_list(std::vector<installed_font>()).fonts().empty());
  EXPECT_EQ(font_list().path_of_file("arial.ttf"), std::nullopt);
}

}  // namespace
}  // namespace corvane

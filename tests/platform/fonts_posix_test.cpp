// With the real fontconfig on a folder of the test's own.
#include "platform/files/files.h"
#include "platform/text/fonts.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace corvane {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

/// The font that the package fonts-dejavu-core brings.
constexpr const char* dejavu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class InstalledFonts : public testing::Test {
 protected:
  InstalledFonts() {
    folder.add("fonts.conf",
               "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
               "<fontconfig><dir>" +
                   folder.path("fonts") + "</dir><cachedir>" + folder.path("cache") +
                   "</cachedir></fontconfig>");
    make_folders(folder.path("fonts"));
  }

  testing_support::temporary_folder folder;
  testing_support::environment_variable configuration{"FONTCONFIG_FILE", folder.path("fonts.conf")};
};

TEST_F(InstalledFonts, HaveTheirNameTheirFileAndItsPath) {
  const auto bytes = read_file(dejavu, 1u << 24);
  ASSERT_TRUE(bytes) << dejavu << ": " << bytes.error;
  const std::string path = folder.add("fonts/My D\xC3\xA9j\xC3\xA0.TTF", *bytes);
  EXPECT_THAT(installed_fonts(),
              ElementsAre(AllOf(Field(&installed_font::name, "DejaVu Sans"),
                                Field(&installed_font::file, "My D\xC3\xA9j\xC3\xA0.TTF"),
                                Field(&installed_font::path, path))));
}

TEST_F(InstalledFonts, AreNoneWhereThereAreNone) {
  folder.add("fonts/text.ttf", "not a font");
  EXPECT_THAT(installed_fonts(), IsEmpty());
}

TEST_F(InstalledFonts, AreNoneWithoutFontconfigsProgram) {
  folder.add("fonts/DejaVuSans.ttf", *read_file(dejavu, 1u << 24));
  ASSERT_EQ(installed_fonts().size(), 1u);
  const testing_support::environment_variable path("PATH", folder.path("nothing"));
  EXPECT_THAT(installed_fonts(), IsEmpty());
}

}  // namespace
}  // namespace corvane

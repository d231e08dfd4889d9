// The texts written beside the disc against the files in golden/, in both path styles.
#include "authoring/avisynth_script.h"
#include "authoring/layout_report.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "platform/files/files.h"
#include "support/golden.h"
#include "tools/association.h"

#include <gtest/gtest.h>

#include <map>

namespace corvane::testing_support {
namespace {

std::map<std::string, std::string> texts_of(path_style style) {
  std::map<std::string, std::string> texts;
  for (const sample& s : all_samples(style)) {
    texts[s.name + ".html"] = layout_html(s.p);
    texts[s.name + ".avs"] = avisynth_script(s.p, style);
  }
  if (style == path_style::windows) {
    texts["extension.reg"] = registry_script("C:\\Program Files\\Corvane");
    texts["removeextension.reg"] = registry_removal_script();
  } else {
    texts["corvane.desktop"] = desktop_entry("/usr/bin/corvane");
    texts["corvane.xml"] = mime_type_xml();
  }
  return texts;
}

class SideGolden : public ::testing::TestWithParam<path_style> {};

TEST_P(SideGolden, TextsAreTheExpectedBytes) {
  const std::string folder = std::string(CORVANE_GOLDEN_FOLDER) +
                             (GetParam() == path_style::windows ? "/windows" : "/linux");
  expect_golden(folder, texts_of(GetParam()));
}

// An installed program is found by its name, one that a user associates by its path.
TEST(PackagedFiles, AreWhatTheAssociationWrites) {
  const auto packaged = [](const char* name) {
    return read_file(std::string(CORVANE_PACKAGING_FOLDER) + "/" + name, 1u << 20)
        .value.value_or("");
  };
  EXPECT_EQ(packaged("corvane.desktop"), desktop_entry("corvane"));
  EXPECT_EQ(packaged("corvane.xml"), mime_type_xml());
}

INSTANTIATE_TEST_SUITE_P(BothStyles, SideGolden,
                         ::testing::Values(path_style::windows, path_style::posix),
                         golden_style_name);

}  // namespace
}  // namespace corvane::testing_support

// The texts written beside the disc against the files in golden/, byte for byte, in both path
// styles. With CORVANE_WRITE_GOLDEN set in the environment the files are written instead, and the
// test fails so that nobody takes that for a check; read the difference before committing it.
#include "authoring/sample_projects.h"
#include "platform/files.h"
#include "tools/association.h"
#include "tools/avisynth_script.h"
#include "tools/layout_report.h"

#include <gtest/gtest.h>

#include <cstdlib>
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
  std::vector<std::string> names;
  for (const auto& [name, text] : texts_of(GetParam())) {
    SCOPED_TRACE(folder + "/" + name);
    names.push_back(name);
    if (std::getenv("CORVANE_WRITE_GOLDEN") != nullptr) {
      make_folders(folder);
      ASSERT_FALSE(write_file(folder + "/" + name, text));
      ADD_FAILURE() << "written, not checked";
      continue;
    }
    const auto expected = read_file(folder + "/" + name, 1u << 20);
    ASSERT_TRUE(expected) << expected.error;
    EXPECT_EQ(*expected, text);
  }
  EXPECT_EQ(files_in(folder), names) << "a text that is expected is not made";
}

INSTANTIATE_TEST_SUITE_P(BothStyles, SideGolden,
                         ::testing::Values(path_style::windows, path_style::posix),
                         [](const auto& style) {
                           return style.param == path_style::windows ? "Windows" : "Linux";
                         });

}  // namespace
}  // namespace corvane::testing_support

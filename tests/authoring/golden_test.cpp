// Every text of the sample projects against the files in golden/, byte for byte, in both path
// styles. With CORVANE_WRITE_GOLDEN set in the environment the files are written instead, and the
// test fails so that nobody takes that for a check; read the difference before committing it.
#include "authoring/menu_overlays.h"
#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "authoring/subtitle_xml.h"
#include "authoring/work_script.h"
#include "platform/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

namespace corvane::testing_support {
namespace {

std::map<std::string, std::string> texts_of(const sample& s) {
  std::map<std::string, std::string> texts;
  texts["process.bat"] = work_script(s.p, s.where);
  texts["config.xml"] = config_xml(s.p, s.where);
  for (int menu = 1; menu <= static_cast<int>(s.p.menulist.size()); ++menu)
    texts["menu" + std::to_string(menu) + ".xml"] = menu_subpicture_xml(s.p, s.where, menu);
  for (int title = 1; title <= static_cast<int>(s.p.List11.size()); ++title)
    for (int sub = 1; sub <= subtitle_count(s.p, title); ++sub)
      texts["sub" + std::to_string(title) + "-" + std::to_string(sub) + ".xml"] =
          subtitle_xml(s.p, s.where, title, sub);
  return texts;
}

class Golden : public ::testing::TestWithParam<path_style> {};

TEST_P(Golden, TextsAreTheExpectedBytes) {
  const std::string style = GetParam() == path_style::windows ? "windows" : "linux";
  for (const sample& s : all_samples(GetParam())) {
    const std::string folder = std::string(CORVANE_GOLDEN_FOLDER) + "/" + style + "/" + s.name;
    std::vector<std::string> names;
    for (const auto& [name, text] : texts_of(s)) {
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
}

INSTANTIATE_TEST_SUITE_P(BothStyles, Golden,
                         ::testing::Values(path_style::windows, path_style::posix),
                         [](const auto& style) {
                           return style.param == path_style::windows ? "Windows" : "Linux";
                         });

}  // namespace
}  // namespace corvane::testing_support

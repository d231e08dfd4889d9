// Every text of the sample projects against the files in golden/, in both path styles.
#include "support/golden.h"

#include "authoring/menu_overlays.h"
#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "authoring/subtitle_xml.h"
#include "authoring/texts_of_project.h"
#include "authoring/work_script.h"

#include <gtest/gtest.h>

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
  for (const sample& s : all_samples(GetParam()))
    expect_golden(std::string(CORVANE_GOLDEN_FOLDER) + "/" + style + "/" + s.name, texts_of(s));
}

INSTANTIATE_TEST_SUITE_P(BothStyles, Golden,
                         ::testing::Values(path_style::windows, path_style::posix),
                         golden_style_name);

}  // namespace
}  // namespace corvane::testing_support

// What corvane-author.exe writes for the sample projects, run in the folders that the expected
// texts name, against those texts byte for byte.
#include "apps/program_windows.h"
#include "authoring/sample_projects.h"
#include "platform/files/program_folder.h"
#include "project/project_file.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace corvane::testing_support {
namespace {

const run_paths where = sample_run_paths(path_style::windows);
const std::string media = "C:\\media";

/// Enough of each kind of file for it not to be refused: a sequence header, a bitmap's first bytes,
/// a subtitle.
std::string beginning_of(const std::string& file, const std::string& region) {
  const std::string extension = lower_extension_of(file);
  if (extension == "bmp")
    return "BM\x01\x02";
  if (extension == "srt")
    return "1\r\n00:00:01,000 --> 00:00:02,000\r\nText\r\n";
  if (extension == "sub")
    return "{30}{75}Text\r\n";
  return region == "PAL" ? std::string("\0\0\1\xB3\x2D\x02\x40\x23", 8)
                         : std::string("\0\0\1\xB3\x2D\x01\xE0\x24", 8);
}

/// The folders are the Wine folder's; one that this test did not make is left alone.
class GoldenProgram : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    for (const std::string& folder : {where.app, media})
      ASSERT_FALSE(folder_exists(folder)) << folder << " is in the way";
    install_author(where.app, "stand_in_disc_tool.exe");
    make_folders(media);
  }
  void TearDown() override {
    if (HasFatalFailure())
      return;
    remove_all(where.app);
    remove_all(media);
  }

  static void add_media(const sample& s) {
    for (const char* name :
         {"movie.m2v",  "english.ac3", "french.mp2",       "vts_01_1.vob",      "extra.mpv",
          "extra.mpa",  "one.vob",     "two & a half.mpg", "movie.ac3",         "extra.m2v",
          "extra.ac3",  "main.m2v",    "main.ac3",         "still.m2v",         "last.m2v",
          "last.ac3",   "play.bmp",    "pressed.bmp",      "second.m2v",        "empty.m2v",
          "silent.m2v", "silent.ac3",  "english.srt",      "deutsch & mehr.sub"})
      ASSERT_FALSE(write_file(join_path(media, name), beginning_of(name, s.p.globalregion)));
  }

  /// Everything the program wrote into its folder, by name.
  static std::map<std::string, std::string> texts() {
    std::map<std::string, std::string> found;
    for (const std::string& name : files_in(where.app))
      if (name.ends_with(".bat") || name.ends_with(".xml"))
        found[name] = *read_file(where.in_app(name), 1u << 20);
    return found;
  }
};

TEST_P(GoldenProgram, WritesTheExpectedBytes) {
  for (const sample& s : all_samples(path_style::windows)) {
    if (s.name != GetParam())
      continue;
    add_media(s);
    const temporary_folder home;
    const std::string project = home.add("film.cvp", project_text(s.p));
    std::string out, err;
    EXPECT_EQ(
        run_program({where.in_app("corvane-author.exe"),
                     "--prepare --force \"" + project + "\" \"" + s.where.out + "\"", home.path()},
                    &out, &err),
        0u)
        << err;
    expect_golden(CORVANE_GOLDEN_FOLDER "/" + s.name, texts());
    return;
  }
  FAIL() << "there is no such sample";
}

INSTANTIATE_TEST_SUITE_P(Samples, GoldenProgram,
                         testing::Values("elementary_titles", "muxed_titles", "plain_menus",
                                         "jump_table", "one_menu", "subtitles"),
                         [](const auto& name) { return name.param; });

TEST(GoldenProgram, OfEverySampleIsLookedAt) {
  EXPECT_EQ(all_samples(path_style::windows).size(), 6u);
}

}  // namespace
}  // namespace corvane::testing_support

// What of the windows needs no display.
#include "ui/widgets/file_filter.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;

constexpr const char* video_filter =
    "mpeg elementry stream(*.m2v, *.m1v,*.mpv)|*.m2v;*.m1v;*.mpv|mpeg with NAV packets(*.vob, "
    "*.mpg, *.mpeg)|*.vob; *.mpg; *.mpeg";

TEST(FileFilter, EntriesLoseBlanksAroundPatternsOnly) {
  const std::vector<filter_entry> entries = filter_entries(video_filter);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].text, "mpeg elementry stream(*.m2v, *.m1v,*.mpv)");
  EXPECT_THAT(entries[0].patterns, ElementsAre("*.m2v", "*.m1v", "*.mpv"));
  EXPECT_EQ(entries[1].text, "mpeg with NAV packets(*.vob, *.mpg, *.mpeg)");
  EXPECT_THAT(entries[1].patterns, ElementsAre("*.vob", "*.mpg", "*.mpeg"));
}

TEST(FileFilter, PatternsHeedNoCaseWhereTheToolkitWould) {
  EXPECT_EQ(toolkit_filter("film|*.m2v; *.VOB", path_style::posix),
            "film|*.[mM]2[vV];*.[vV][oO][bB]");
  EXPECT_EQ(toolkit_filter("film|*.m2v; *.VOB", path_style::windows), "film|*.m2v;*.VOB");
  EXPECT_EQ(toolkit_filter("", path_style::posix), "");
}

TEST(FileFilter, AnExtensionIsImpliedOnlyByASinglePattern) {
  constexpr const char* project_filter = "corvane project file(*.cvp)|*.cvp";
  EXPECT_EQ(with_implied_extension("/a/disc", project_filter), "/a/disc.cvp");
  EXPECT_EQ(with_implied_extension("/a.b/disc", project_filter), "/a.b/disc.cvp");
  EXPECT_EQ(with_implied_extension("/a/disc.cvp", project_filter), "/a/disc.cvp");
  EXPECT_EQ(with_implied_extension("/a/disc.txt", project_filter), "/a/disc.txt.cvp");
  EXPECT_EQ(with_implied_extension("/a/disc v1.0", project_filter), "/a/disc v1.0.cvp");
  EXPECT_EQ(with_implied_extension("/a/DISC.CVP", project_filter), "/a/DISC.CVP");
  EXPECT_EQ(with_implied_extension("C:\\a.cvp\\disc", project_filter), "C:\\a.cvp\\disc.cvp");
  EXPECT_EQ(with_implied_extension("/a/.hidden", project_filter), "/a/.hidden.cvp");
  EXPECT_EQ(with_implied_extension("", project_filter), "");
  EXPECT_EQ(with_implied_extension("/a/", project_filter), "/a/");
  EXPECT_EQ(with_implied_extension("/a/film", video_filter), "/a/film");
  EXPECT_EQ(with_implied_extension("/a/folder", ""), "/a/folder");
}

TEST(WxText, DamagedTextIsShownButForTheDamagedBytes) {
  EXPECT_EQ(utf8_of(wx_text("größe 漢")), "größe 漢");
  EXPECT_EQ(utf8_of(wx_text("a\xFFz")), "a\xEF\xBF\xBDz");
  EXPECT_EQ(utf8_of(wx_text("\xC3")), "\xEF\xBF\xBD");
  EXPECT_EQ(utf8_of(wx_text("gr\xF6\xDF")), "gr\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(utf8_of(wx_text("")), "");
}

TEST(WxText, CarriageReturnsBeforeLineFeedsGo) {
  EXPECT_EQ(utf8_of(wx_lines("a\r\nb\r\n")), "a\nb\n");
}

TEST(Icons, EveryPictureOfTheWindowIsEmbedded) {
  std::vector<std::string> names;
  for (const embedded_icon& icon : embedded_icons())
    names.emplace_back(icon.name);
  EXPECT_THAT(names, testing::UnorderedElementsAre(
                         "add-title", "remove-title", "chapters", "nav-commands", "menus", "extras",
                         "author-dvd", "up", "down", "remove", "stop", "play", "pause", "gop-back",
                         "gop-forward", "picture-back", "picture-forward", "corvane", "found-error",
                         "found-warning", "found-note", "found-nothing"));
}

}  // namespace
}  // namespace corvane

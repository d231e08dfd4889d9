#include "authoring/menu_overlays.h"

#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::testing_support {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

sample with_buttons(path_style style, const std::string& buttons, const std::string& thickness) {
  sample s{"", {}, {"/app", "/out", style}};
  if (style == windows)
    s.where = {"C:\\app", "C:\\out", style};
  add_menu(s.p, style, "a.m2v", "", "0\t00:00:00.0\t00:00:00.0\t" + thickness, buttons);
  return s;
}

std::vector<std::string> image_lines(const sample& s, int menu = 1) {
  std::string text = button_image_commands(s.p, s.where, menu);
  text.resize(text.size() - 2);
  return split(text, crlf);
}

TEST(MenuOverlays, DefaultButtonIsASolidBarInBothPictures) {
  EXPECT_THAT(
      image_lines(with_buttons(posix, " 0/0/100/3/exit/black/black", "1")),
      ElementsAre(R"("/app/bin/gm.exe" convert -size 720x480 null:#010101 "/app/highlight1.png")",
                  R"("/app/bin/gm.exe" convert -size 720x480 null:#010101 "/app/select1.png")",
                  "echo *generating highlight button 1 for menu 1",
                  R"("/app/bin/gm.exe" mogrify +antialias -fill black -draw )"
                  R"("roundrectangle 0,0  98, 2, 2,3" "/app/highlight1.png")",
                  "echo *generating select button 1 for menu 1",
                  R"("/app/bin/gm.exe" mogrify +antialias -fill black -draw )"
                  R"("roundrectangle 0,0  98, 2, 2,3" "/app/select1.png")"));
}

TEST(MenuOverlays, TallerButtonIsClearedInsideToAFrameOfTheThickness) {
  const auto lines = image_lines(with_buttons(windows, " 40/ 100/ 240/ 104/exit/green/blue", " 2"));
  EXPECT_EQ(lines[3], R"("C:\app\bin\gm.exe" mogrify +antialias -fill green -draw )"
                      R"("roundrectangle 40,100  238, 103, 2,3" "C:\app\highlight1.png")");
  EXPECT_EQ(lines[4], R"("C:\app\bin\gm.exe" mogrify +antialias -fill #010101 -draw )"
                      R"("roundrectangle  43, 103  235, 100, 2,3" "C:\app\highlight1.png")");
}

TEST(MenuOverlays, ComputedCornersBelowZeroHaveNoBlank) {
  const auto lines = image_lines(with_buttons(posix, " 0/ 0/ 1/ 4/exit/green/blue", "1"));
  EXPECT_THAT(lines[3], HasSubstr("\"roundrectangle 0,0 -1, 3, 2,3\""));
  EXPECT_THAT(lines[4], HasSubstr("\"roundrectangle  2, 2 -3, 1, 2,3\""));
}

TEST(MenuOverlays, BitmapIsPastedAtTheButtonsCorner) {
  EXPECT_THAT(
      image_lines(with_buttons(windows, R"( 40/ 99/ 70/ 109/exit/D:\b\1.bmp/D:\b\2.bmp)", "1")),
      Contains(R"("C:\app\bin\gm.exe" composite -geometry +40+99 "D:\b\1.bmp" )"
               R"("C:\app\highlight1.png" "C:\app\highlight1.png")"));
  EXPECT_THAT(image_lines(with_buttons(posix, R"( 40/ 99/ 70/ 109/exit/\b\1.bmp/\b\2.bmp)", "1")),
              Contains(R"("/app/bin/gm.exe" composite -geometry +40+99 "/b/2.bmp" )"
                       R"("/app/select1.png" "/app/select1.png")"));
}

TEST(MenuOverlays, BitmapHighlightMayHaveAColourSelect) {
  const auto lines =
      image_lines(with_buttons(posix, R"( 40/ 99/ 70/ 102/exit/\b\1.bmp/cyan)", "1"));
  EXPECT_THAT(lines[3], HasSubstr(" composite "));
  EXPECT_THAT(lines[5], HasSubstr(" -fill cyan "));
  const auto reverse =
      image_lines(with_buttons(posix, R"( 40/ 99/ 70/ 102/exit/cyan/\b\1.bmp)", "1"));
  EXPECT_THAT(reverse[3], HasSubstr(" -fill cyan "));
  EXPECT_THAT(reverse[5], HasSubstr(" composite "));
}

TEST(MenuOverlays, TheTransparentColourIsOneEverywhere) {
  const sample s = with_buttons(posix, " 40/ 100/ 240/ 140/exit/green/blue", "1");
  const std::string commands = button_image_commands(s.p, s.where, 1);
  EXPECT_THAT(commands, HasSubstr("null:#010101"));
  EXPECT_THAT(commands, HasSubstr("-fill #010101"));
  EXPECT_THAT(menu_subpicture_xml(s.p, s.where, 1), HasSubstr("transparent=\"010101\""));
}

TEST(MenuOverlays, HighlightsAreDrawnBeforeSelects) {
  const auto lines = image_lines(
      with_buttons(posix, " 0/0/100/3/exit/black/black| 0/9/100/12/exit/black/black", "1"));
  std::vector<std::string> echoes;
  for (const std::string& line : lines)
    if (line.starts_with("echo "))
      echoes.push_back(line.substr(17));
  EXPECT_THAT(echoes, ElementsAre("highlight button 1 for menu 1", "highlight button 2 for menu 1",
                                  "select button 1 for menu 1", "select button 2 for menu 1"));
}

TEST(MenuOverlays, PalPicturesAreTaller) {
  sample s = with_buttons(posix, "", "1");
  EXPECT_EQ(video_size(s.p), "720x480");
  s.p.globalregion = "PAL";
  EXPECT_EQ(video_size(s.p), "720x576");
  EXPECT_THAT(image_lines(s)[0], HasSubstr(" -size 720x576 "));
}

TEST(MenuOverlays, ButtonElementHasStoredEdgesAndAWholeTop) {
  const std::pair<const char*, const char*> table[] = {
      {" 10/ 20/ 110/ 23", R"(x0="10" y0="20" x1="110" y1="23")"},
      {" 0/0/100/3", R"(x0="0" y0="0" x1="100" y1="3")"},
      {"1/2.5/3/4", R"(x0="1" y0="2" x1="3" y1="4")"},
      {"1/3.5/3/4", R"(x0="1" y0="4" x1="3" y1="4")"},
      {"1/2.6 /3/4", R"(x0="1" y0="3" x1="3" y1="4")"},
      {"1/-4/3/4", R"(x0="1" y0="-4" x1="3" y1="4")"}};
  for (const auto& [edges, element] : table) {
    const sample s = with_buttons(posix, std::string(edges) + "/exit/black/black", "1");
    EXPECT_THAT(menu_subpicture_xml(s.p, s.where, 1),
                HasSubstr(std::string("    <button ") + element + "/>\r\n"));
  }
}

TEST(MenuOverlays, AmpersandInTheProgramFolderIsEscapedInTheXml) {
  sample s = with_buttons(posix, "", "1");
  s.where.app = "/a&b";
  EXPECT_THAT(menu_subpicture_xml(s.p, s.where, 1),
              HasSubstr("highlight=\"/a&amp;b/highlight1.png\"\r\n"));
  EXPECT_THAT(button_image_commands(s.p, s.where, 1), HasSubstr("\"/a&b/highlight1.png\"\r\n"));
}

TEST(MenuOverlays, HugeNumbersDoNotOverflow) {
  const sample s = with_buttons(
      posix, "99999999999999999999/-99999999999999999999/1e9/9999999999/exit/black/black",
      "2147483647");
  EXPECT_FALSE(button_image_commands(s.p, s.where, 1).empty());
  EXPECT_FALSE(menu_subpicture_xml(s.p, s.where, 1).empty());
}

}  // namespace
}  // namespace corvane::testing_support

// The AviSynth script: its layout of thumbnails, what it does with names, and the command's
// conversation.
#include "authoring/avisynth_script.h"

#include "authoring/texts_of_project.h"
#include "support/command_test.h"
#include "support/recorded_desktop.h"

namespace corvane {
namespace {

using testing_support::avisynth_script;
using testing_support::recorded_desktop;
using testing_support::rows;

const char* const announced =
    "This will generate a simple avisynth script based on the titles that are loaded.  Be sure to "
    "edit this script for your needs, then encode in an mpeg encoder to an mpeg2 elementry stream.";
const char* const created =
    "Script created.  Make sure that the latest Avisynth (2.5.5 or greater) is installed and that "
    "mpegdecoder.dll is in the plugins directory to use this script.  Mpegdecoder.dll can be "
    "downloaded at http://avisynth.nl/index.php/External_filters. \r\nIf you choose to use "
    "rectangular buttons for the menu, the coordinates needed are located at the bottom of the "
    "script.\r\n   Edit script now?";

/// The lines that begin with `start`.
rows lines_with(const std::string& text, const std::string& start) {
  rows found;
  for (const std::string& line : split(text, crlf))
    if (line.starts_with(start))
      found.push_back(line);
  return found;
}

class AvisynthScript : public testing_support::command_test {
 protected:
  void add_titles(int count) {
    for (int i = 0; i < count; ++i)
      add_title(p, "\\v\\movie.m2v/\\v\\movie.ac3");
  }
  void expect_announced() { ask.expect(box(announced, icon::information)); }
  void expect_save(const std::string& native) {
    ask.expect_save({"save the avisynth script", "avisynth script(*.avs)|*.avs", ""}, native);
  }
  void expect_created(answer reply) {
    ask.expect(box(created, icon::information, buttons::ok_cancel), reply);
  }
  avisynth_result create() { return avisynth_command(doc, user_desktop); }

  recorded_desktop user_desktop;
};

// The script -------------------------------------------------------------------------------------

TEST_F(AvisynthScript, PlacesFivePalThumbnails) {
  p.globalregion = "PAL";
  add_titles(5);
  const std::string text = avisynth_script(p);
  EXPECT_EQ(lines_with(text, "overlay("),
            (rows{"overlay(title1,80,100)", "overlay(title2,230,100)", "overlay(title3,380,100)",
                  "overlay(title4,530,100)", "overlay(title5,80,280)"}));
  EXPECT_EQ(lines_with(text, "#Button").front(),
            "#Button1 coordinates are: Left=78 width=108 top=98 height=88");
  EXPECT_EQ(lines_with(text, "#Button").back(),
            "#Button5 coordinates are: Left=78 width=108 top=278 height=88");
  EXPECT_EQ(lines_with(text, "blankclip("),
            rows{"blankclip(length,720,576,\"yuy2\",2500,100,color=backgroundcolor).killaudio()"});
}

TEST_F(AvisynthScript, OfAnNtscProjectHasThumbnails66HighAndItsRate) {
  add_titles(5);
  const std::string text = avisynth_script(p, path_style::windows);
  EXPECT_EQ(lines_with(text, "title1="),
            rows{"title1=mpegsource(\"\\v\\movie.m2v\").bilinearresize(100,66).addborders(2,2,2,2,"
                 "bordercolor)"});
  EXPECT_EQ(lines_with(text, "blankclip("),
            rows{"blankclip(length,720,480,\"yuy2\",2997,100,color=backgroundcolor).killaudio()"});
  EXPECT_EQ(lines_with(text, "overlay(title5"), rows{"overlay(title5,80,266)"});
  EXPECT_EQ(lines_with(text, "#Button1"),
            rows{"#Button1 coordinates are: Left=78 width=108 top=98 height=74"});
}

TEST_F(AvisynthScript, IsPalForEveryStandardButNtsc) {
  add_titles(1);
  p.globalregion = "";
  EXPECT_EQ(lines_with(avisynth_script(p), "blankclip(length,720,576").size(), 1u);
}

TEST_F(AvisynthScript, CaptionsStandJustBelowTheirThumbnails) {
  p.globalregion = "PAL";
  add_titles(2);
  EXPECT_EQ(lines_with(avisynth_script(p), "subtitle("),
            (rows{"subtitle(TitleText1, 80, fontsize+184, font=fontface, size=fontsize, "
                  "text_color=textcolor, halo_color=halocolor) ",
                  "subtitle(TitleText2, 230, fontsize+184, font=fontface, size=fontsize, "
                  "text_color=textcolor, halo_color=halocolor) ",
                  "subtitle(header, 72, 90, font=fontface, size=(fontsize+10), "
                  "text_color=textcolor, halo_color=halocolor) "}));
}

TEST_F(AvisynthScript, CaptionsAreTheVideosNamesWithoutExtension) {
  add_title(p, "\\v\\our summer.m2v/\\v\\sound.ac3");
  add_title(p, "\\v\\vts_01_1.vob");
  add_title(p, "\\v\\no extension");
  add_title(p, "\\v\\.m2v");
  EXPECT_EQ(lines_with(avisynth_script(p), "TitleText"),
            (rows{"TitleText1=\"our summer\"", "TitleText2=\"vts_01_1\"",
                  "TitleText3=\"no extension\"", "TitleText4=\".m2v\""}));
}

TEST_F(AvisynthScript, ACaptionCannotEndItsQuotes) {
  add_title(p, "\\v\\say \"hello\".vob");
  EXPECT_EQ(lines_with(avisynth_script(p), "TitleText"), rows{"TitleText1=\"say 'hello'\""});
}

TEST_F(AvisynthScript, HashRowsAre96And97Long) {
  add_titles(1);
  const rows hashes = lines_with(avisynth_script(p), "####");
  ASSERT_EQ(hashes.size(), 3u);
  EXPECT_EQ(hashes[0], std::string(96, '#'));
  EXPECT_EQ(hashes[1], std::string(96, '#'));
  EXPECT_EQ(hashes[2], std::string(97, '#'));
}

// The command ------------------------------------------------------------------------------------

TEST_F(AvisynthScript, WithoutATitleIsRefused) {
  expect_refusal("please add more titles");
  EXPECT_EQ(create(), avisynth_result::no_title);
}

TEST_F(AvisynthScript, IsWrittenAndOpenedInTheEditorOnOk) {
  add_titles(2);
  p.saved = 1;
  const std::string file = folder.path("menu.avs");
  expect_announced();
  expect_save(file);
  expect_created(answer::ok);
  EXPECT_EQ(create(), avisynth_result::written);
  EXPECT_EQ(folder.read("menu.avs"), avisynth_script(p));
  EXPECT_EQ(user_desktop.asked, rows{"edit " + file});
  EXPECT_EQ(p.saved, 1);
}

TEST_F(AvisynthScript, StaysClosedOnCancel) {
  add_titles(1);
  expect_announced();
  expect_save(folder.path("menu.avs"));
  expect_created(answer::cancel);
  EXPECT_EQ(create(), avisynth_result::written);
  EXPECT_EQ(folder.read("menu.avs"), avisynth_script(p));
  EXPECT_TRUE(user_desktop.asked.empty());
}

TEST_F(AvisynthScript, IsNotWrittenWhenTheDialogIsCancelled) {
  add_titles(1);
  expect_announced();
  expect_save("");
  EXPECT_EQ(create(), avisynth_result::cancelled);
  EXPECT_TRUE(files_in(folder.path()).empty());
}

TEST_F(AvisynthScript, AsksBeforeItReplacesAFile) {
  add_titles(1);
  const std::string kept = folder.add("kept.avs", "kept");
  const std::string replaced = folder.add("replaced.avs", std::string(100000, 'x'));
  expect_announced();
  expect_save(kept);
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::no);
  expect_save(replaced);
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::yes);
  expect_created(answer::cancel);
  EXPECT_EQ(create(), avisynth_result::written);
  EXPECT_EQ(folder.read("kept.avs"), "kept");
  EXPECT_EQ(folder.read("replaced.avs"), avisynth_script(p));
}

TEST_F(AvisynthScript, NeverReplacesAStreamOfTheProject) {
  add_files_and_title({"movie.m2v", "movie.ac3"});
  expect_announced();
  expect_save(folder.path("movie.ac3"));
  expect_refusal("The script cannot be written over a stream of the project.");
  expect_save("");
  EXPECT_EQ(create(), avisynth_result::cancelled);
  EXPECT_EQ(folder.read("movie.ac3"), "x");
}

TEST_F(AvisynthScript, ThatCannotBeWrittenIsTold) {
  add_titles(1);
  const std::string file = folder.path("no such folder/menu.avs");
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  expect_announced();
  expect_save(file);
  expect_error("The file \"" + file + "\" could not be written: " + *why + ".");
  EXPECT_EQ(create(), avisynth_result::not_written);
  EXPECT_TRUE(user_desktop.asked.empty());
}

TEST_F(AvisynthScript, WhoseEditorDoesNotStartIsToldWithItsPlace) {
  add_titles(1);
  user_desktop.fails = "xdg-open is not installed";
  const std::string file = folder.path("menu.avs");
  expect_announced();
  expect_save(file);
  expect_created(answer::ok);
  expect_refusal(
      "The editor could not be started: xdg-open is not installed.\r\nThe script is the file \"" +
      file + "\".");
  EXPECT_EQ(create(), avisynth_result::written);
}

TEST_F(AvisynthScript, APathThatWouldEndItsQuotesIsRefused) {
  add_titles(1);
  add_title(p, "\\v\\a\").evil(\"\\b.vob");
  const std::string native = native_from_stored("\\v\\a\").evil(\"\\b.vob");
  expect_refusal("The video \"" + native +
                 "\" of title 2 cannot stand in a script: its name contains a double quote (\").");
  EXPECT_EQ(create(), avisynth_result::refused);
}

}  // namespace
}  // namespace corvane

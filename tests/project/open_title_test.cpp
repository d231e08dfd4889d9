// Adding a title: the whole conversation and what it leaves in the stores.
#include "project/title_commands.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::nav_block;
using testing_support::rows;

class OpenTitle : public testing_support::command_test {};

TEST_F(OpenTitle, AddsAnElementaryTitleWithTheDefaultsOfANewOne) {
  p.saved = 1;
  expect_video(folder.add("movie.m2v"));
  expect_audio(folder.add("movie.ac3"));
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:movie.m2v/movie.ac3"});
  EXPECT_EQ(p.List11, rows{folder.stored("movie.m2v") + "/" + folder.stored("movie.ac3")});
  EXPECT_EQ(p.chapters, rows{"00:00:00.00"});
  EXPECT_EQ(p.delay, rows{"0"});
  EXPECT_EQ(p.subtitledata, rows{"<none>"});
  EXPECT_EQ(p.subtitleoptions,
            rows{"center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|"});
  EXPECT_EQ(p.Frame1, "1 titles loaded");
  EXPECT_EQ(p.dvdsizetext, "1 titles\r\n0 menus\r\n0.000 gig total");
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(OpenTitle, TakesThePalSubtitleOptionsInAPalProject) {
  p.globalregion = "PAL";
  expect_video(folder.add("movie.m1v"));
  expect_audio(folder.add("movie.mp2"));
  open_command(doc);
  EXPECT_EQ(p.subtitleoptions,
            rows{"center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1|"});
}

TEST_F(OpenTitle, NumbersTheSecondTitleTwo) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_video(folder.add("b.m2v"));
  expect_audio(folder.add("b.ac3"));
  open_command(doc);
  EXPECT_EQ(p.List1.back(), "title2:b.m2v/b.ac3");
  EXPECT_EQ(p.Frame1, "2 titles loaded");
}

TEST_F(OpenTitle, EmptiesThePostCommandsOfAllTitles) {
  add_files_and_title({"a.m2v", "a.ac3"});
  p.postinfo = {"jump title 1             ", "exit                     "};
  expect_video(folder.add("b.m2v"));
  expect_audio(folder.add("b.ac3"));
  open_command(doc);
  EXPECT_TRUE(p.postinfo.empty());
}

TEST_F(OpenTitle, CancelInTheVideoDialogChangesNothing) {
  p.saved = 1;
  p.postinfo = {"exit"};
  expect_video("");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
  EXPECT_EQ(p.postinfo, rows{"exit"});
  EXPECT_TRUE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(OpenTitle, CancelInTheAudioDialogAddsNothingAndLeavesPostCommands) {
  p.saved = 1;
  p.postinfo = {"exit"};
  expect_video(folder.add("movie.m2v"));
  expect_audio("");
  open_command(doc);
  EXPECT_TRUE(p.List11.empty());
  EXPECT_EQ(p.postinfo, rows{"exit"});
  EXPECT_TRUE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(OpenTitle, KeepsHandEditedXmlWhenTheUserWantsTo) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::cancel);
  open_command(doc);
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
}

TEST_F(OpenTitle, DiscardsHandEditedXmlWhenTheUserAgrees) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  expect_video("");
  open_command(doc);
  EXPECT_EQ(p.customxml, "");
}

TEST_F(OpenTitle, ProgramStreamWithNavPacketsIsAMuxedTitleWithoutAudioDialog) {
  for (const std::string name : {"a.vob", "b.mpg", "c.mpeg", "D.VOB", "e.Mpg"}) {
    expect_video(folder.add(name, nav_block()));
    open_command(doc);
    EXPECT_EQ(p.List11.back(), folder.stored(name));
  }
  EXPECT_EQ(p.List1, (rows{"title1:a.vob", "title2:b.mpg", "title3:c.mpeg", "title4:D.VOB",
                           "title5:e.Mpg"}));
  EXPECT_EQ(p.Frame1, "5 titles loaded");
}

TEST_F(OpenTitle, ProgramStreamWithoutNavPacketsIsRefusedAndLeavesPostCommandsEmpty) {
  p.saved = 1;
  p.postinfo = {"exit"};
  expect_video(folder.add("plain.vob", std::string(40000, '\0')));
  expect_error("NAV packets are not detected in plain.vob.  Please demultiplex.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
  EXPECT_TRUE(p.List11.empty());
  EXPECT_TRUE(p.postinfo.empty());
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(OpenTitle, UpperCaseExtensionIsLookedIntoForNavPackets) {
  expect_video(folder.add("PLAIN.VOB", "no packets"));
  expect_error("NAV packets are not detected in PLAIN.VOB.  Please demultiplex.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
}

TEST_F(OpenTitle, EmptyProgramStreamIsRefused) {
  expect_video(folder.add("empty.mpg", ""));
  expect_error("NAV packets are not detected in empty.mpg.  Please demultiplex.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
}

TEST_F(OpenTitle, NavPacketsCountOnlyWhereTheFileBegins) {
  const std::size_t packet_of_data_search = 6 + 980;
  // The last header ends with byte 16384, then one byte later.
  const std::size_t fits = nav_search_bytes - packet_of_data_search - 6;
  expect_video(folder.add("fits.vob", nav_block(fits)));
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:fits.vob"});
  expect_video(folder.add("late.vob", nav_block(fits + 1)));
  expect_error("NAV packets are not detected in late.vob.  Please demultiplex.");
  open_command(doc);
  EXPECT_EQ(p.List1.size(), 1u);
}

TEST_F(OpenTitle, FileThatCannotBeReadIsToldSo) {
  expect_video(folder.path("gone.vob"));
  expect_error("\"" + folder.path("gone.vob") + "\" cannot be read: the file cannot be opened.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
}

TEST_F(OpenTitle, AnyOtherExtensionIsAnElementaryStream) {
  expect_video(folder.add("movie"));
  expect_audio(folder.add("movie.wav"));
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:movie/movie.wav"});
}

TEST_F(OpenTitle, NamesWithBlanksAndOtherLettersAreKept) {
  const std::string video = "M\xC3\xBCller & S\xC3\xB6hne \xE6\x98\xA0\xE7\x94\xBB 100%!.m2v";
  expect_video(folder.add(video));
  expect_audio(folder.add("it's.ac3"));
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:" + video + "/it's.ac3"});
}

TEST_F(OpenTitle, VideoWhoseNameCannotBeStoredIsRefusedLikeACancel) {
  p.postinfo = {"exit"};
  const std::string video = folder.path("a|b.m2v");
  expect_video(video);
  expect_refusal("\"" + video +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
  EXPECT_EQ(p.postinfo, rows{"exit"});
  EXPECT_TRUE(p.Comboregion_enabled);
}

TEST_F(OpenTitle, AudioWhoseNameCannotBeStoredIsRefusedLikeACancel) {
  p.postinfo = {"exit"};
  expect_video(folder.add("a.m2v"));
  const std::string audio = folder.path("a\"b.ac3");
  expect_audio(audio);
  expect_refusal("\"" + audio +
                 "\" cannot be used: its name contains a double quote (\").  Please rename it.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
  EXPECT_EQ(p.postinfo, rows{"exit"});
}

TEST_F(OpenTitle, ANameThatIsNotTextIsRefusedInReadableWords) {
  const std::string video = folder.path("a\xFF\n.m2v");
  expect_video(video);
  expect_refusal("\"" + folder.path("a??.m2v") +
                 "\" cannot be used: its name contains bytes that are not UTF-8 text.  Please "
                 "rename it.");
  open_command(doc);
  EXPECT_TRUE(p.List1.empty());
}

}  // namespace
}  // namespace corvane

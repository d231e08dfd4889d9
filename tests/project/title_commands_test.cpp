// Removing and moving titles, adding audio, the A/V delay.
#include "project/title_commands.h"

#include "sample_project.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::contents_of;
using testing_support::rows;

class TitleCommands : public testing_support::command_test {
 protected:
  /// Titles one, two, three with rows that tell them apart.
  void add_three_titles() {
    add_files_and_title({"one.m2v", "one.ac3"});
    add_files_and_title({"two.m2v", "two.ac3", "deux.mp2"});
    add_files_and_title({"three.vob"});
    p.chapters = {"c1", "c2", "c3"};
    p.delay = {"1", "2", "3"};
    p.subtitledata = {"s1", "s2", "s3"};
    p.subtitleoptions = {"o1", "o2", "o3"};
    p.postinfo = {"p1", "p2", "p3"};
    p.languagetags = {"Audio tag:\tenglish en"};
    p.Comboregion_enabled = false;
    p.saved = 1;
  }

  // What is said after a delay was typed.
  void expect_note(const std::string& text) { ask.expect(box(text, icon::information)); }
  static std::string taken_as(const char* number) {
    return std::string(" was taken as ") + number +
           " ms.  A delay is a number of milliseconds with a point before its fraction, such as "
           "200, -40 or 12.5.";
  }
  static std::string not_borne(const char* number) {
    return std::string("With a delay of ") + number +
           " ms the title cannot be multiplexed: the video can be delayed by less than 1000 ms.  "
           "Set a smaller delay, or cut the beginning off the sound.";
  }
};

TEST_F(TitleCommands, RemovingATitleRenumbersTheOnesAfterIt) {
  add_three_titles();
  p.selected = 1;
  remove_title_command(doc);
  EXPECT_EQ(p.List1, (rows{"title1:one.m2v/one.ac3", "title2:three.vob"}));
  EXPECT_EQ(p.List11, (rows{folder.stored("one.m2v") + "/" + folder.stored("one.ac3"),
                            folder.stored("three.vob")}));
  EXPECT_EQ(p.chapters, (rows{"c1", "c3"}));
  EXPECT_EQ(p.delay, (rows{"1", "3"}));
  EXPECT_EQ(p.subtitledata, (rows{"s1", "s3"}));
  EXPECT_EQ(p.subtitleoptions, (rows{"o1", "o3"}));
  EXPECT_EQ(p.Frame1, "2 titles loaded");
  EXPECT_EQ(p.dvdsizetext, "2 titles\r\n0 menus\r\n0.000 gig total");
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(p.selected, 1) << "the next one";
  EXPECT_FALSE(p.Comboregion_enabled);
}

TEST_F(TitleCommands, RemovingATitleKeepsPostCommandsAndLanguageTagsWhereTheyAre) {
  add_three_titles();
  p.selected = 0;
  remove_title_command(doc);
  EXPECT_EQ(p.postinfo, (rows{"p1", "p2", "p3"}));
  EXPECT_EQ(p.languagetags, rows{"Audio tag:\tenglish en"});
}

TEST_F(TitleCommands, RemovingTheLastTitleFreesTheRegionOnlyWithoutMenus) {
  add_files_and_title({"one.m2v", "one.ac3"});
  p.Comboregion_enabled = false;
  p.selected = 0;
  folder.add("menu.m2v");
  p.menulist = {folder.stored("menu.m2v") + "/"};
  remove_title_command(doc);
  EXPECT_TRUE(p.List1.empty());
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.Frame1, "0 titles loaded");

  p.menulist.clear();
  add_files_and_title({"one.m2v", "one.ac3"});
  p.selected = 0;
  remove_title_command(doc);
  EXPECT_TRUE(p.Comboregion_enabled);
}

TEST_F(TitleCommands, RemovingWithoutASelectionIsRefusedButCountsAsAChange) {
  add_three_titles();
  expect_refusal("Please select a title first to remove.");
  remove_title_command(doc);
  EXPECT_EQ(p.List1.size(), 3u);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(TitleCommands, ASelectionBeyondTheListIsNone) {
  add_three_titles();
  p.selected = 3;
  expect_refusal("Please select a title first to remove.");
  remove_title_command(doc);
  EXPECT_EQ(p.List1.size(), 3u);
}

TEST_F(TitleCommands, GuardRefusesEveryCommandThatChangesTitles) {
  add_three_titles();
  const project before = p;
  for (auto* const command : {remove_title_command, titleup_command, titledown_command,
                              addaudiostream_command, editdelay_command}) {
    p = before;
    p.customxml = "<dvdauthor/>";
    p.selected = 1;
    expect_guard(answer::cancel);
    command(doc);
    EXPECT_EQ(p.customxml, "<dvdauthor/>");
    EXPECT_EQ(p.List11, before.List11);
    EXPECT_EQ(p.delay, before.delay);
    EXPECT_EQ(p.saved, 1);
  }
}

TEST_F(TitleCommands, RefusedCommandsChangeNothingButTheSavedFlag) {
  add_three_titles();
  const project before = p;
  const auto refused = [&](int selected, void (*command)(document&), const std::string& text) {
    p.saved = 1;
    p.selected = selected;
    expect_refusal(text);
    command(doc);
    EXPECT_EQ(contents_of(p), contents_of(before)) << text;
    EXPECT_EQ(p.List1, before.List1) << text;
    EXPECT_EQ(p.Frame1, before.Frame1) << text;
    EXPECT_EQ(p.dvdsizetext, before.dvdsizetext) << text;
    EXPECT_EQ(p.Comboregion_enabled, before.Comboregion_enabled) << text;
    EXPECT_EQ(p.selected, selected) << text;
    EXPECT_EQ(p.saved, 0) << text;
  };
  const int none = -1, muxed = 2;
  refused(none, remove_title_command, "Please select a title first to remove.");
  refused(none, addaudiostream_command, "Please select a title to add an audio stream to.");
  refused(none, editdelay_command, "Please select a title to adjust delays.");
  refused(muxed, addaudiostream_command,
          "Unable to add audio streams to already muxed files, please de-mux if you wish to add an "
          "audio stream.");
  refused(muxed, editdelay_command,
          "Unable to adjust delays to already muxed files, please demultiplex");
}

TEST_F(TitleCommands, MovingUpSwapsAllSixListsAndTheSelectionFollows) {
  add_three_titles();
  p.selected = 1;
  titleup_command(doc);
  EXPECT_EQ(p.List1, (rows{"title1:two.m2v/two.ac3/deux.mp2", "title2:one.m2v/one.ac3",
                           "title3:three.vob"}));
  EXPECT_EQ(p.chapters, (rows{"c2", "c1", "c3"}));
  EXPECT_EQ(p.delay, (rows{"2", "1", "3"}));
  EXPECT_EQ(p.subtitledata, (rows{"s2", "s1", "s3"}));
  EXPECT_EQ(p.subtitleoptions, (rows{"o2", "o1", "o3"}));
  EXPECT_EQ(p.postinfo, (rows{"p1", "p2", "p3"}));
  EXPECT_EQ(p.selected, 0);
}

TEST_F(TitleCommands, MovingDownSwapsWithTheNextTitle) {
  add_three_titles();
  p.selected = 1;
  titledown_command(doc);
  EXPECT_EQ(p.List1, (rows{"title1:one.m2v/one.ac3", "title2:three.vob",
                           "title3:two.m2v/two.ac3/deux.mp2"}));
  EXPECT_EQ(p.delay, (rows{"1", "3", "2"}));
  EXPECT_EQ(p.selected, 2);
}

TEST_F(TitleCommands, AMoveDoesNotCountAsAChange) {
  add_three_titles();
  p.selected = 1;
  titleup_command(doc);
  EXPECT_EQ(p.saved, 1);
  titledown_command(doc);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(TitleCommands, FirstTitleDoesNotMoveUpNorTheLastDown) {
  add_three_titles();
  const rows before = p.List11;
  p.selected = 0;
  titleup_command(doc);
  EXPECT_EQ(p.selected, 0);
  p.selected = 2;
  titledown_command(doc);
  EXPECT_EQ(p.selected, 2);
  p.selected = -1;
  titleup_command(doc);
  titledown_command(doc);
  EXPECT_EQ(p.selected, -1);
  EXPECT_EQ(p.List11, before);
}

TEST_F(TitleCommands, AudioIsAppendedToBothRowsOfTheSelectedTitle) {
  add_three_titles();
  p.selected = 0;
  expect_audio(folder.add("uno.mpa"));
  addaudiostream_command(doc);
  EXPECT_EQ(p.List1[0], "title1:one.m2v/one.ac3/uno.mpa");
  EXPECT_EQ(p.List11[0], folder.stored("one.m2v") + "/" + folder.stored("one.ac3") + "/" +
                             folder.stored("uno.mpa"));
  EXPECT_EQ(p.List1[1], "title2:two.m2v/two.ac3/deux.mp2");
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(p.dvdsizetext, "3 titles\r\n0 menus\r\n0.000 gig total");
}

TEST_F(TitleCommands, CancelledAudioDialogAddsNothing) {
  add_three_titles();
  p.selected = 0;
  expect_audio("");
  addaudiostream_command(doc);
  EXPECT_EQ(p.List1[0], "title1:one.m2v/one.ac3");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(TitleCommands, AddingAudioWithoutASelectionIsRefused) {
  add_three_titles();
  expect_refusal("Please select a title to add an audio stream to.");
  addaudiostream_command(doc);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(TitleCommands, MuxedTitleTakesNoAudio) {
  add_three_titles();
  p.selected = 2;
  expect_refusal(
      "Unable to add audio streams to already muxed files, please de-mux if you wish to add an "
      "audio stream.");
  addaudiostream_command(doc);
  EXPECT_EQ(p.List11[2], folder.stored("three.vob"));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(TitleCommands, EighthAudioStreamIsTakenAndTheNinthRefused) {
  add_files_and_title({"v.m2v", "1.ac3", "2.ac3", "3.ac3", "4.ac3", "5.ac3", "6.ac3", "7.ac3"});
  p.selected = 0;
  expect_audio(folder.add("8.ac3"));
  addaudiostream_command(doc);
  EXPECT_EQ(std::count(p.List11[0].begin(), p.List11[0].end(), '/'), 8);
  expect_refusal("Only eight audio streams allowed.");
  addaudiostream_command(doc);
  EXPECT_EQ(std::count(p.List11[0].begin(), p.List11[0].end(), '/'), 8);
}

TEST_F(TitleCommands, DelayIsAskedWithTheOldOneAndStoredAsANumber) {
  const std::pair<const char*, const char*> answers[] = {
      {"250", "250"}, {"-120 ms", "-120"}, {" -1 000 ms", "-1000"}, {"12.5", "12.5"},
      {"7", "7"},     {"7 ms", "7"},       {"+40MS", "40"},         {"999.9", "999.9"}};
  add_three_titles();
  p.selected = 1;
  for (const auto& [text, stored] : answers) {
    p.saved = 1;
    ask.expect_input({"A/V sync delay", "Set the A/V delay for this title.", p.delay[1] + " ms"},
                     text);
    editdelay_command(doc);
    EXPECT_EQ(p.delay, (rows{"1", stored, "3"})) << text;
    EXPECT_EQ(p.saved, 0);
  }
}

TEST_F(TitleCommands, DelayOfLettersOnlyIsZero) {
  add_three_titles();
  p.selected = 0;
  ask.expect_input({"A/V sync delay", "Set the A/V delay for this title.", "1 ms"}, "soon");
  expect_note("\"soon\"" + taken_as("0"));
  editdelay_command(doc);
  EXPECT_EQ(p.delay[0], "0");
}

TEST_F(TitleCommands, DelayReadAsAnotherNumberThanItSeemsIsTold) {
  const std::pair<const char*, const char*> answers[] = {
      {"1,5", "1"},     {"1,000", "1"}, {"1.5 s", "1.5"},    {"0 & calc", "0"},
      {"1.2.3", "1.2"}, {"--5", "0"},   {"200 or so", "200"}};
  add_three_titles();
  p.selected = 1;
  for (const auto& [text, stored] : answers) {
    ask.expect_input({"A/V sync delay", "Set the A/V delay for this title.", p.delay[1] + " ms"},
                     text);
    expect_note("\"" + std::string(text) + "\"" + taken_as(stored));
    editdelay_command(doc);
    EXPECT_EQ(p.delay[1], stored) << text;
  }
}

TEST_F(TitleCommands, DelayThatMplexDoesNotBearIsTold) {
  add_three_titles();
  p.selected = 1;
  const auto type = [this](const char* text) {
    ask.expect_input({"A/V sync delay", "Set the A/V delay for this title.", p.delay[1] + " ms"},
                     text);
  };
  for (const char* const text : {"1000", "100000"}) {
    type(text);
    expect_note(not_borne(text));
    editdelay_command(doc);
    EXPECT_EQ(p.delay[1], text);
  }
  type("1500,5");
  expect_note("\"1500,5\"" + taken_as("1500") + "\r\n\r\n" + not_borne("1500"));
  editdelay_command(doc);
  type("-5000");  // how long the video is, decides the examination
  editdelay_command(doc);
  EXPECT_EQ(p.delay[1], "-5000");
}

TEST_F(TitleCommands, TheOfferedDelayTakenAsItIsGivesItselfBack) {
  add_three_titles();
  p.selected = 0;
  for (const std::string delay : {"0", "-250", "12.5", "-100000"}) {
    p.delay[0] = delay;
    ask.expect_input({"A/V sync delay", "Set the A/V delay for this title.", delay + " ms"},
                     delay + " ms");
    editdelay_command(doc);
    EXPECT_EQ(p.delay[0], delay);
  }
}

TEST_F(TitleCommands, CancelledDelayKeepsTheOldOne) {
  add_three_titles();
  p.selected = 0;
  ask.expect_input({"A/V sync delay", "Set the A/V delay for this title.", "1 ms"}, "");
  editdelay_command(doc);
  EXPECT_EQ(p.delay, (rows{"1", "2", "3"}));
}

TEST_F(TitleCommands, DelayWithoutASelectionIsRefused) {
  add_three_titles();
  expect_refusal("Please select a title to adjust delays.");
  editdelay_command(doc);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(TitleCommands, MuxedTitleTakesNoDelay) {
  add_three_titles();
  p.selected = 2;
  expect_refusal("Unable to adjust delays to already muxed files, please demultiplex");
  editdelay_command(doc);
  EXPECT_EQ(p.delay[2], "3");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(TitleCommands, AMissingStreamIsToldAfterEveryCommandAndTheStatusStays) {
  add_files_and_title({"one.m2v", "one.ac3"});
  add_files_and_title({"two.m2v", "two.ac3"});
  p.dvdsizetext = "as it was";
  ASSERT_FALSE(remove_all(folder.path("one.ac3")));
  p.selected = 1;
  for (int i = 0; i < 2; ++i) {
    expect_missing(folder.path("one.ac3"));
    (i == 0 ? titleup_command : titledown_command)(doc);
    EXPECT_EQ(p.dvdsizetext, "as it was");
  }
}

TEST_F(TitleCommands, AboutNamesEachToolWithItsAddress) {
  ask.expect(
      box("This is a simple graphical front end written for the dvdauthor package.  The projects "
          "that it uses are:\r\n"
          "-dvdauthor https://dvdauthor.sourceforge.net\r\n"
          "-mjpegtools https://mjpeg.sourceforge.io\r\n"
          "-graphicsmagick http://www.graphicsmagick.org\r\n"
          "-mkisofs http://cdrtools.sourceforge.net",
          icon::information));
  about_command(doc);
}

}  // namespace
}  // namespace corvane

// What conspawn knows of single tools, as it shows in a script's run.
#include "noting_host.h"
#include "runner/tools/spumux.h"
#include "runner/tools/spumux_subtitles.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing_support::noting_host;
using kind = program_end::kind;

TEST(MenuOverlay, StreamIsLookedAtAfterSpumux) {
  noting_host host;
  EXPECT_TRUE(
      run_script("bin/spumux.exe \"/app/menu12.xml\" <\"/o/menu12.mpg\" > "
                 "\"/o/menusub12.mpg\"\necho next\n",
                 host));
  EXPECT_EQ(host.notes,
            "[run /own/spumux.exe,/app/menu12.xml]\n[look at /o/menusub12.mpg]\nnext\n");
}

TEST(MenuOverlay, MenuWhoseButtonsWouldNotBeSeenIsNamedThoughSpumuxEndedWell) {
  noting_host host;
  host.why_no_buttons = "no picture of them was added";
  EXPECT_FALSE(
      run_script("bin/spumux.exe \"/app/menu2.xml\" </o/menu2.mpg > /o/menusub2.mpg\n"
                 "echo next\n",
                 host));
  EXPECT_EQ(
      host.notes,
      "[run /own/spumux.exe,/app/menu2.xml]\n[look at /o/menusub2.mpg]\n\nERR:  the buttons of "
      "menu 2 will not be seen: no picture of them was added\nnext\n");
}

TEST(MenuOverlay, MenuThatHasNoButtonsNeedsNoPictureOfThem) {
  noting_host host;
  host.buttons = 0;
  host.why_no_buttons = "no picture of them was added";
  EXPECT_TRUE(run_script("bin/spumux.exe /app/menu2.xml </o/menu2.mpg > /o/menusub2.mpg\n", host));
  EXPECT_EQ(host.notes, "[run /own/spumux.exe,/app/menu2.xml]\n");
}

TEST(MenuOverlay, ManyButtonsAreAnnouncedSinceTheyMayTakeMinutes) {
  noting_host host;
  host.buttons = 19;
  EXPECT_TRUE(run_script("bin/spumux.exe /app/menu2.xml </o/menu2.mpg > /o/menusub2.mpg\n", host));
  EXPECT_EQ(
      host.notes,
      "INFO: menu 2 has 19 buttons; when their colours are many too, this takes some minutes\n"
      "[run /own/spumux.exe,/app/menu2.xml]\n[look at /o/menusub2.mpg]\n");
  host.notes.clear();
  host.buttons = 18;
  EXPECT_TRUE(run_script("bin/spumux.exe /app/menu2.xml </o/menu2.mpg > /o/menusub2.mpg\n", host));
  EXPECT_EQ(host.notes, "[run /own/spumux.exe,/app/menu2.xml]\n[look at /o/menusub2.mpg]\n");
}

TEST(MenuOverlay, NoOtherProgramAddsButtons) {
  EXPECT_EQ(menu_of_overlay({"/app/bin/spumux.exe", "/app/menu7.xml"}), "7");
  EXPECT_FALSE(menu_of_overlay({"/app/bin/spumux.exe", "-s", "0", "/app/sub1-1.xml"}));
  EXPECT_FALSE(menu_of_overlay({"/app/bin/spumux.exe", "/app/sub1-1.xml"}));
  EXPECT_FALSE(menu_of_overlay({"/app/bin/spumux.exe", "/app/menu"}));
  EXPECT_FALSE(menu_of_overlay({"/app/bin/spumux.exe"}));
  noting_host host;
  host.why_no_buttons = "no picture of them was added";
  EXPECT_TRUE(run_script("bin/dvdauthor.exe /app/menu7.xml\n", host));
  EXPECT_EQ(host.notes, "[run /own/dvdauthor.exe,/app/menu7.xml]\n");
}

const char* const refused_drawing =
    "/app/bin/gm.exe mogrify: Non-conforming drawing primitive definition (roundrectangle).\n";

TEST(HarmlessRefusal, IsStatus1OfGmWithNothingButTheRefusedDrawing) {
  EXPECT_TRUE(ways_of("gm.exe").forgives({kind::exited, 1, ""}, refused_drawing));
  EXPECT_TRUE(ways_of("gm.exe").forgives({kind::exited, 1, ""},
                                         std::string(refused_drawing) + "\r\n" + refused_drawing));
}

TEST(HarmlessRefusal, IsNothingElse) {
  const std::string refused = refused_drawing;
  EXPECT_FALSE(ways_of("gm.exe").forgives({kind::exited, 1, ""}, ""));
  EXPECT_FALSE(ways_of("gm.exe").forgives({kind::exited, 1, ""}, "gm: Unable to open file\n"));
  EXPECT_FALSE(ways_of("gm.exe").forgives({kind::exited, 1, ""}, refused + "gm: no file\n"));
  EXPECT_FALSE(ways_of("gm.exe").forgives({kind::exited, 2, ""}, refused));
  EXPECT_FALSE(ways_of("gm.exe").forgives({kind::by_signal, 1, ""}, refused));
  EXPECT_FALSE(ways_of("mplex.exe").forgives({kind::exited, 1, ""}, refused));
}

TEST(HarmlessRefusal, GivesNoErrorLineInAScript) {
  noting_host host;
  host.ends = {{kind::exited, 1, ""}};
  host.printed = {refused_drawing};
  EXPECT_TRUE(run_script("bin/gm.exe mogrify", host));
  EXPECT_EQ(host.notes, "[run /own/gm.exe,mogrify]\n" + std::string(refused_drawing));
}

const char* const subtitle_line =
    "bin/spumux.exe -s 1 \"/app/sub3-2.xml\" <\"/o/presub.mpg\" > \"/o/title3.mpg\"\necho next\n";
const std::string ran = "[run /own/spumux.exe,-s,1,/app/sub3-2.xml]\n";
const std::string read_it = "[read /app/sub3-2.xml]\n";

TEST(Image, IsMadeOfADiscThatWentWell) {
  noting_host host;
  host.printed = {"INFO: dvdauthor creating table of contents\nWARN: ERR is no error\n"};
  EXPECT_TRUE(run_script("bin/dvdauthor.exe -x c.xml\nbin/mkisofs.exe -o o.iso o\n", host));
  EXPECT_EQ(host.notes,
            "[read c.xml]\n[run /own/dvdauthor.exe,-x,c.xml]\n"
            "INFO: dvdauthor creating table of contents\nWARN: ERR is no error\n"
            "[run /own/mkisofs.exe,-o,o.iso,o]\n");
}

TEST(Image, IsNotMadeOnceAnythingWentWrong) {
  noting_host host;
  host.failures["mkdir /o"] = "No space left on device";
  EXPECT_FALSE(run_script(
      "mkdir /o\nbin/dvdauthor.exe -x c.xml\nbin/mkisofs.exe -o o.iso o\necho next\n", host));
  EXPECT_EQ(host.notes,
            "[mkdir /o]\n\nERR:  mkdir /o: No space left on device\n[read c.xml]\n"
            "[run /own/dvdauthor.exe,-x,c.xml]\n"
            "INFO: no image is made, since something went wrong before\nnext\n");
}

// As after a first play that leads nowhere.
TEST(Image, IsNotMadeAfterAnErrorLineOfAToolWhateverItsStatus) {
  for (const std::string& printed :
       {std::string("ERR:  Cannot jump to titleset 1 title 5\n"),
        std::string("STAT: Picking VTS 01\nERR:  x\n"), std::string("STAT: VOBU 15\rERR:  x\n"),
        std::string("INFO: a\n**ERROR: x\n"), "ERR:  x\n" + std::string(3000, 'x') + "\n"}) {
    for (const std::string tool : {"dvdauthor", "mplex"}) {
      noting_host host;
      host.printed = {printed.substr(0, 3), printed.substr(3)};
      EXPECT_FALSE(run_script("bin/" + tool + ".exe c.xml\nbin/mkisofs.exe -o o.iso o\n", host));
      EXPECT_EQ(host.notes, "[run /own/" + tool + ".exe,c.xml]\n" + printed +
                                "INFO: no image is made, since something went wrong before\n");
    }
  }
}

TEST(Image, IsNotMadeAfterAnErrorLineAmongMegabytesOfOthers) {
  noting_host host;
  const std::string lines = std::string(99, 'x').append("\n");
  for (int i = 0; i < 20000; ++i)
    host.printed.push_back(lines);
  host.printed[15000] = "ERR:  x\n";
  EXPECT_FALSE(run_script("bin/dvdauthor.exe c.xml\nbin/mkisofs.exe -o o.iso o\n", host));
  EXPECT_EQ(host.notes.find("[run /own/mkisofs"), std::string::npos);
}

TEST(Chapters, ThatDvdauthorWillLeaveOutAreToldBeforeItRunsAndAreNoError) {
  noting_host host;
  host.control = "<vob file=\"/o/title1.mpg\" chapters=\"00:00:00.00,00:02:00.00,00:01:00.00\" />";
  EXPECT_TRUE(run_script("\"bin/dvdauthor.exe\" -x \"/app/config.xml\"", host));
  EXPECT_EQ(host.notes,
            "[read /app/config.xml]\n"
            "INFO: the chapter 00:01:00.00 of title 1 is not on the disc, since it stands behind "
            "the later one 00:02:00.00\n"
            "[run /own/dvdauthor.exe,-x,/app/config.xml]\n");
}

TEST(Chapters, AreNotLookedForWhenNoNavigationXmlIsNamed) {
  noting_host host;
  run_script("\"bin/dvdauthor.exe\" -x \"\"\n\"bin/dvdauthor.exe\" -o \"/o/out\"\n", host);
  EXPECT_EQ(host.notes.find("[read "), std::string::npos) << host.notes;
}

TEST(TextSubtitle, WhoseSpumuxAddedItIsNoError) {
  noting_host host;
  const std::string said =
      "STAT: 0:00:01.000INFO: 5 subtitles added, 0 subtitles skipped, stream: 33, offset: 0.13\n";
  host.printed = {said};
  EXPECT_TRUE(run_script(subtitle_line, host));
  EXPECT_EQ(host.notes, ran + said + read_it + "next\n");
}

TEST(TextSubtitle, ThatCannotBeReadIsNamedWithItsFileAndTheReason) {
  noting_host host;
  host.control = "    <textsub filename=\"/in/a & b.srt\"\r\n";
  host.ends = {{kind::exited, 1, ""}};
  const std::string said =
      "INFO: default video format is NTSC\n"
      "ERR:  Could not determine format of subtitle file \"/in/a & b.srt\"\n";
  host.printed = {said};
  EXPECT_FALSE(run_script(subtitle_line, host));
  EXPECT_EQ(host.notes,
            ran + said + "\nERR:  spumux.exe ended with status 1\n" + read_it +
                "\nERR:  subtitle 2 of title 3 (/in/a & b.srt) is not on the "
                "disc: it is in none of the subtitle formats that spumux reads\nnext\n");
}

TEST(TextSubtitle, OfWhichNothingWasAddedIsAnErrorThoughSpumuxEndedWell) {
  noting_host host;
  host.control = "<textsub filename=\"/in/a.srt\"";
  const std::string said =
      "STAT: 0:00:01.000INFO: 0 subtitles added, 0 subtitles skipped, stream: 33, offset: 0.13\n";
  host.printed = {said};
  EXPECT_FALSE(run_script(subtitle_line, host));
  EXPECT_EQ(host.notes, ran + said + read_it +
                            "\nERR:  subtitle 2 of title 3 (/in/a.srt) is not as it should be: "
                            "spumux added nothing\nnext\n");
}

TEST(TextSubtitle, OnWhichSpumuxCrashedIsNamed) {
  noting_host host;
  host.control = "<textsub filename=\"/in/a.srt\"";
  host.ends = {{kind::by_signal, 11, "Segmentation fault"}};
  host.printed = {"WARN: Out of screen at Y: 186\n"};
  EXPECT_FALSE(run_script(subtitle_line, host));
  EXPECT_NE(host.notes.find("subtitle 2 of title 3 (/in/a.srt) is not on the disc: spumux crashed "
                            "on it, as it does on text larger than the "
                            "screen and on some JACOsub files"),
            std::string::npos)
      << host.notes;
}

TEST(TextSubtitle, OfWhichLettersAreMissingIsAnError) {
  noting_host host;
  host.control = "<textsub filename=\"/in/a.srt\"";
  host.printed = {"WARN: Subtitle word 'Donau' too long!\n",
                  "INFO: 5 subtitles added, 0 subtitles skipped, stream: 33, offset: 0.13\n"};
  EXPECT_FALSE(run_script(subtitle_line, host));
  EXPECT_NE(host.notes.find("letters of its text are missing: a word is wider than the space "
                            "between the margins\n"),
            std::string::npos)
      << host.notes;
}

TEST(TextSubtitle, AtTheRightThatLosesLettersTellsWhatToDoInstead) {
  const std::string warning = "WARN: Text out of range: bbox [57 496 362 451], txt [-119 -90 365]";
  EXPECT_EQ(what_is_missing(warning, "horizontal-alignment=\"center\""),
            "letters of its text are missing, since they stand beyond the margins");
  EXPECT_EQ(what_is_missing(warning, "horizontal-alignment=\"right\""),
            "letters of its text are missing, since they stand beyond the margins.  spumux does "
            "not place text at the right as it should; align it left with a larger left margin "
            "instead");
}

TEST(TextSubtitle, EachWarningThatTextIsLostHasItsReason) {
  EXPECT_EQ(what_is_missing("WARN: Out of screen at Y: 186\n", ""),
            "lines of its text are missing, since they do not fit on the screen");
  EXPECT_EQ(what_is_missing("WARN: input subtitle line too long on line 3\n", ""),
            "text is missing, since a line of the file is longer than spumux reads");
  EXPECT_EQ(what_is_missing("WARN: Subtitles requested but not found.\n", ""), "");
}

TEST(TextSubtitle, TextsThatSpumuxSkippedAreCounted) {
  const auto told = [](const std::string& counts) {
    return what_is_missing("STAT: 0:00:01.000INFO: " + counts + ", stream: 33, offset: 0.13\r\n",
                           "");
  };
  EXPECT_EQ(told("3 subtitles added, 0 subtitles skipped"), "");
  EXPECT_EQ(told("30 subtitles added, 1 subtitles skipped"),
            "1 text of it that lasts no time is missing");
  EXPECT_EQ(told("10 subtitles added, 20 subtitles skipped"),
            "20 texts of it that last no time are missing");
  EXPECT_EQ(told("0 subtitles added, 2 subtitles skipped"), "spumux added nothing");
}

TEST(TextSubtitle, ComplaintThatIsNotKnownIsToldAsItStands) {
  EXPECT_EQ(why_not_subtitled("INFO: a\rERR:  Unknown horizontal-alignment type middle\r\n"),
            "spumux says \"Unknown horizontal-alignment type middle\"");
  EXPECT_EQ(why_not_subtitled("INFO: 5 subtitles added\nWARN: x\n"), "");
}

TEST(TextSubtitle, NoOtherProgramIsOne) {
  const auto found = subtitle_of({"/app/bin/spumux.exe", "-s", "0", "/app/sub12-3.xml"});
  ASSERT_TRUE(found);
  EXPECT_EQ(found->title, "12");
  EXPECT_EQ(found->number, "3");
  EXPECT_FALSE(subtitle_of({"/app/bin/spumux.exe", "/app/menu7.xml"}));
  EXPECT_FALSE(subtitle_of({"/app/bin/spumux.exe", "/app/sub7.xml"}));
  EXPECT_FALSE(subtitle_of({"/app/bin/spumux.exe"}));
  noting_host host;
  EXPECT_TRUE(run_script("bin/mplex.exe /app/sub1-1.xml\n", host));
  EXPECT_EQ(host.notes, "[run /own/mplex.exe,/app/sub1-1.xml]\n");
}

}  // namespace
}  // namespace corvane

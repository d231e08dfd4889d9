#include "runner/script_interpreter.h"

#include "formats/text.h"
#include "runner/tools/spumux_subtitles.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace corvane {
namespace {

using kind = program_end::kind;

/// Notes everything the script does, with "\n" for every line end.
class noting_host : public script_host {
 public:
  std::string notes;
  std::map<std::string, std::string> failures;  ///< of a note, the reason
  std::vector<std::string> files;
  std::vector<program_end> ends;
  pipeline_result result_of_run;
  pipeline last;
  std::string why_no_buttons;  ///< of the last menu looked at
  int buttons = 1;             ///< that a control file asks for
  std::string control;         ///< text of a control file

  void print(const std::string& text) override { notes += replace_all(text, "\r\n", "\n"); }
  failure make_folder(const std::string& path) override { return note("mkdir " + path); }
  std::vector<std::string> matching(const std::string& /*pattern*/) override { return files; }
  failure erase(const std::string& path) override { return note("erase " + path); }
  failure rename(const std::string& path, const std::string& new_path) override {
    return note("rename " + path + " " + new_path);
  }
  std::string allowed_program(const std::string& path) override {
    return path.substr(0, 4) == "bin/" ? "/own/" + path.substr(4) : std::string();
  }
  pipeline_result run(const pipeline& programs) override {
    last = programs;
    for (const auto& words : programs.programs)
      note("run " + join(words, ","));
    pipeline_result r = result_of_run;
    r.ends = ends;
    r.ends.resize(programs.programs.size());
    return r;
  }
  std::string why_no_buttons_seen(const std::string& menu_stream) override {
    note("look at " + menu_stream);
    return why_no_buttons;
  }
  int buttons_asked_for(const std::string& /*control_file*/) override { return buttons; }
  std::string control_text(const std::string& control_file) override {
    note("read " + control_file);
    return control;
  }

 private:
  failure note(const std::string& what) {
    notes += "[" + what + "]\n";
    const auto found = failures.find(what);
    return found == failures.end() ? failure() : failure(found->second);
  }
};

TEST(Script, RunsItsLinesInOrder) {
  noting_host host;
  host.files = {"/o/a.mpg", "/o/b.mpg"};
  EXPECT_TRUE(
      run_script("@echo off\r\necho Send\r\nmkdir \"/o\"\r\n\r\n\"bin/mplex.exe\" -f 8\r\n"
                 "rename \"/o/a.mpg\" b.mpg\r\nerase \"/o\"/*.mpg\r\necho *process complete",
                 host));
  EXPECT_EQ(host.notes,
            "Send\n[mkdir /o]\n[run /own/mplex.exe,-f,8]\n[rename /o/a.mpg /o/b.mpg]\n"
            "[erase /o/a.mpg]\n[erase /o/b.mpg]\n*process complete\n");
}

TEST(Script, EmptyScriptIsFine) {
  noting_host host;
  EXPECT_TRUE(run_script("", host));
  EXPECT_TRUE(run_script("\n\r\n\n", host));
  EXPECT_EQ(host.notes, "");
}

TEST(Script, LineThatIsNotUnderstoodIsToldByItsNumberAndTheNextOneRuns) {
  noting_host host;
  EXPECT_FALSE(run_script("echo a\nformat c:\necho b\n", host));
  EXPECT_EQ(host.notes,
            "a\n\nERR:  line 2 of the work script is not understood: it is neither a command nor a "
            "program of the tools' folder\nb\n");
}

TEST(Script, FailingBuiltInCommandsAreTold) {
  noting_host host;
  host.files = {"/o/a"};
  host.failures = {{"mkdir /o", "no room"}, {"erase /o/a", "busy"}, {"rename /o/a /o/b", "gone"}};
  EXPECT_FALSE(run_script("mkdir /o\nerase /o/a\nrename /o/a b\n", host));
  EXPECT_EQ(host.notes,
            "[mkdir /o]\n\nERR:  mkdir /o: no room\n[erase /o/a]\n\nERR:  erase /o/a: busy\n"
            "[rename /o/a /o/b]\n\nERR:  rename /o/a: gone\n");
}

TEST(Script, NothingToEraseIsSaidButNoError) {
  noting_host host;
  EXPECT_TRUE(run_script("erase \"/o\"/*.mpg\n", host));
  EXPECT_EQ(host.notes, "Could not find /o/*.mpg\n");
}

TEST(Script, RenameStaysInTheFolder) {
  for (const char* name : {"../b", "/b", "..", ".", "c/b"}) {
    noting_host host;
    EXPECT_FALSE(run_script(std::string("rename /o/a ") + name, host));
    EXPECT_EQ(host.notes, "\nERR:  rename /o/a: the new name is not one of the same folder\n");
  }
}

TEST(Script, ProgramOutsideOfTheOwnFolderIsNotRun) {
  noting_host host;
  EXPECT_FALSE(run_script("/bin/sh.exe -c id\nbin/a.exe | sh.exe\n", host));
  EXPECT_EQ(host.notes,
            "\nERR:  sh.exe is not started: it is not one of the program's tools\n"
            "\nERR:  sh.exe is not started: it is not one of the program's tools\n");
}

TEST(Script, RedirectionsReachThePrograms) {
  noting_host host;
  EXPECT_TRUE(run_script("bin/a.exe <\"in\" | bin/b.exe > \"out\"", host));
  EXPECT_EQ(host.last.input, "in");
  EXPECT_EQ(host.last.output, "out");
  EXPECT_FALSE(host.last.watch_errors);
}

TEST(Script, RedirectionThatCannotBeOpenedIsTold) {
  noting_host host;
  host.result_of_run.unusable_file = "/in";
  host.result_of_run.why_unusable = "No such file or directory";
  EXPECT_FALSE(run_script("bin/spumux.exe < /in", host));
  EXPECT_EQ(host.notes,
            "[run /own/spumux.exe]\n\nERR:  spumux.exe could not be started: /in: No such file or "
            "directory\n");
}

TEST(Script, EveryMemberOfAPipelineCounts) {
  noting_host host;
  host.ends = {{kind::exited, 1, ""}, {kind::exited, 0, ""}, {kind::by_signal, 6, "Aborted"}};
  EXPECT_FALSE(run_script("bin/a.exe | bin/b.exe | bin/c.exe", host));
  EXPECT_EQ(host.notes,
            "[run /own/a.exe]\n[run /own/b.exe]\n[run /own/c.exe]\n"
            "\nERR:  a.exe ended with status 1\n\nERR:  c.exe was ended by signal 6 (Aborted)\n");
}

TEST(Complaint, NamesTheToolAndHowItEnded) {
  EXPECT_EQ(complaint_about("mplex.exe", {kind::exited, 0, ""}), "");
  EXPECT_EQ(complaint_about("mplex.exe", {kind::exited, 1, ""}), "mplex.exe ended with status 1");
  EXPECT_EQ(complaint_about("spumux.exe", {kind::by_signal, 11, "Segmentation fault"}),
            "spumux.exe was ended by signal 11 (Segmentation fault)");
  EXPECT_EQ(complaint_about("gm.exe", {kind::not_started, 2, "No such file or directory"}),
            "gm.exe could not be started: No such file or directory");
  EXPECT_EQ(complaint_about("gm.exe", {kind::by_exception, 0xC0000005, "access violation"}),
            "gm.exe was ended by exception 0xC0000005 (access violation)");
}

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
  EXPECT_EQ(menu_of_overlay({"/app/bin/spumux.exe", "-s", "0", "/app/sub1-1.xml"}), "");
  EXPECT_EQ(menu_of_overlay({"/app/bin/spumux.exe", "/app/sub1-1.xml"}), "");
  EXPECT_EQ(menu_of_overlay({"/app/bin/spumux.exe", "/app/menu"}), "");
  EXPECT_EQ(menu_of_overlay({"/app/bin/spumux.exe"}), "");
  EXPECT_EQ(menu_of_overlay({"/app/bin/dvdauthor.exe", "/app/menu7.xml"}), "");
}

const char* const refused_drawing =
    "/app/bin/gm.exe mogrify: Non-conforming drawing primitive definition (roundrectangle).\n";

TEST(HarmlessRefusal, IsStatus1OfGmWithNothingButTheRefusedDrawing) {
  EXPECT_TRUE(is_harmless_refusal("gm.exe", {kind::exited, 1, ""}, refused_drawing));
  EXPECT_TRUE(is_harmless_refusal("gm.exe", {kind::exited, 1, ""},
                                  std::string(refused_drawing) + "\r\n" + refused_drawing));
}

TEST(HarmlessRefusal, IsNothingElse) {
  const std::string refused = refused_drawing;
  EXPECT_FALSE(is_harmless_refusal("gm.exe", {kind::exited, 1, ""}, ""));
  EXPECT_FALSE(is_harmless_refusal("gm.exe", {kind::exited, 1, ""}, "gm: Unable to open file\n"));
  EXPECT_FALSE(is_harmless_refusal("gm.exe", {kind::exited, 1, ""}, refused + "gm: no file\n"));
  EXPECT_FALSE(is_harmless_refusal("gm.exe", {kind::exited, 2, ""}, refused));
  EXPECT_FALSE(is_harmless_refusal("gm.exe", {kind::by_signal, 1, ""}, refused));
  EXPECT_FALSE(is_harmless_refusal("mplex.exe", {kind::exited, 1, ""}, refused));
}

TEST(HarmlessRefusal, GivesNoErrorLineInAScript) {
  noting_host host;
  host.ends = {{kind::exited, 1, ""}};
  host.result_of_run.errors = refused_drawing;
  EXPECT_TRUE(run_script("bin/gm.exe mogrify", host));
  EXPECT_TRUE(host.last.watch_errors);
  EXPECT_EQ(host.notes, "[run /own/gm.exe,mogrify]\n");
}

const char* const subtitle_line =
    "bin/spumux.exe -s 1 \"/app/sub3-2.xml\" <\"/o/presub.mpg\" > \"/o/title3.mpg\"\necho next\n";
const char* const ran_and_read =
    "[run /own/spumux.exe,-s,1,/app/sub3-2.xml]\n[read /app/sub3-2.xml]\n";

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
  run_script("\"bin/dvdauthor.exe\" -x \"\"", host);
  EXPECT_EQ(host.notes.find("[read "), std::string::npos) << host.notes;
}

TEST(TextSubtitle, WhoseSpumuxAddedItIsNoError) {
  noting_host host;
  host.result_of_run.errors =
      "STAT: 0:00:01.000INFO: 5 subtitles added, 0 subtitles skipped, stream: 33, offset: 0.13\n";
  EXPECT_TRUE(run_script(subtitle_line, host));
  EXPECT_TRUE(host.last.watch_errors);
  EXPECT_EQ(host.notes, std::string(ran_and_read) + "next\n");
}

TEST(TextSubtitle, ThatCannotBeReadIsNamedWithItsFileAndTheReason) {
  noting_host host;
  host.control = "    <textsub filename=\"/in/a & b.srt\"\r\n";
  host.ends = {{kind::exited, 1, ""}};
  host.result_of_run.errors =
      "INFO: default video format is NTSC\n"
      "ERR:  Could not determine format of subtitle file \"/in/a & b.srt\"\n";
  EXPECT_FALSE(run_script(subtitle_line, host));
  EXPECT_EQ(host.notes,
            "[run /own/spumux.exe,-s,1,/app/sub3-2.xml]\n\nERR:  spumux.exe ended with status 1\n"
            "[read /app/sub3-2.xml]\n\nERR:  subtitle 2 of title 3 (/in/a & b.srt) is not on the "
            "disc: it is in none of the subtitle formats that spumux reads\nnext\n");
}

TEST(TextSubtitle, OfWhichNothingWasAddedIsAnErrorThoughSpumuxEndedWell) {
  noting_host host;
  host.control = "<textsub filename=\"/in/a.srt\"";
  host.result_of_run.errors =
      "STAT: 0:00:01.000INFO: 0 subtitles added, 0 subtitles skipped, stream: 33, offset: 0.13\n";
  EXPECT_FALSE(run_script(subtitle_line, host));
  EXPECT_EQ(host.notes, std::string(ran_and_read) +
                            "\nERR:  subtitle 2 of title 3 (/in/a.srt) is not as it should be: "
                            "spumux added nothing\nnext\n");
}

TEST(TextSubtitle, OnWhichSpumuxCrashedIsNamed) {
  noting_host host;
  host.control = "<textsub filename=\"/in/a.srt\"";
  host.ends = {{kind::by_signal, 11, "Segmentation fault"}};
  host.result_of_run.errors = "WARN: Out of screen at Y: 186\n";
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
  host.result_of_run.errors =
      "WARN: Subtitle word 'Donau' too long!\n"
      "INFO: 5 subtitles added, 0 subtitles skipped, stream: 33, offset: 0.13\n";
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
  EXPECT_FALSE(subtitle_of({"/app/bin/gm.exe", "/app/sub1-1.xml"}));
}

}  // namespace
}  // namespace corvane

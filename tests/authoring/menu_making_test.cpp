// Menus made from beginning to end, with a painter and tools that do what the test wants.
#include "authoring/menu_making.h"

#include "import/import_names.h"
#include "import/made_source.h"
#include "menus/made_pages.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "runner/run_files.h"
#include "support/command_test.h"
#include "support/fake_run.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing_support::rows;

const std::string all_made = "*process complete\n";

class MenuMaking : public testing_support::command_test {
 protected:
  MenuMaking() {
    for (const char* const name : {"one.m2v", "two.m2v"}) {
      add_files_and_title({name, name + std::string(".ac3")});
      folder.add(name, testing_support::small_video());
    }
    p.chapters[0] = "00:00:00.00,00:01:00.00,00:02:00.00";
    doc.set_file(folder.path("film.cvp"), {});
    p.saved = 1;
    for (const char* const tool : {"gm", "jpeg2yuv", "mpeg2enc", "ffmpeg"})
      add_tool(tool);
    design.id = "plain";
    design.design = result<menu_design>::ok({});
    wishes = preset_wishes(doc, design);
    film = import_test::made_source(import_test::made_video(1280, 720, {30000, 1001}),
                                    import_test::made_sound("aac"));
  }

  void add_tool(const std::string& name) const {
    std::filesystem::permissions(path_of(app.add("bin/" + name + ".exe")),
                                 std::filesystem::perms::owner_all);
  }

  void prepare() {
    page_painter painter;
    painter.measure = testing_support::measured_text;
    painter.fetch = [this](const drawn_page&) { ++fetched; };
    painter.paint = [this](const drawn_page& page) {
      painted.push_back(page);
      return paints ? result<painted_page>::ok({"png", missing})
                    : result<painted_page>::fail("there is not enough memory");
    };
    making_events events;
    events.progress = [this](const making_progress& now) { told.push_back(now); };
    events.ended = [this](const making_end& end) { ends.push_back(end); };
    const source_prober probe = [this](const std::string&) {
      return result<source_facts>::ok(film);
    };
    making.emplace(doc, wishes, making_equipment{painter, probe, launcher, lock, app.path()},
                   std::move(events));
  }
  void begin() {
    prepare();
    ASSERT_EQ(making->start(), std::nullopt);
    EXPECT_TRUE(making->running());
    EXPECT_TRUE(lock.held());
  }
  /// Until the tools run, or it has ended.
  void draw_all() {
    for (int pass = 0; pass < 500 && launcher.started.empty() && making->running(); ++pass)
      making->update();
  }
  void feed(const std::string& piece) {
    launcher.output->pieces.push_back(piece);
    making->update();
  }
  void make(const std::string& name,
            const std::string& bytes = testing_support::small_video()) const {
    folder.add(temporary_name(name), bytes);
  }
  void make_both() const {
    make("titles-1.m2v");
    make("one-1.m2v");
  }
  std::string why_not() {
    prepare();
    const failure why = making->start();
    EXPECT_FALSE(making->running());
    EXPECT_FALSE(lock.held());
    EXPECT_THAT(ends, IsEmpty());
    return why.value_or("it began");
  }

  /// The project and the folders are as they were.
  void expect_nothing_of_it() {
    EXPECT_FALSE(making->running());
    EXPECT_FALSE(lock.held());
    EXPECT_THAT(p.menulist, IsEmpty());
    EXPECT_EQ(p.saved, 1);
    EXPECT_EQ(doc.undo_name(), std::nullopt);
    expect_no_files();
  }
  void expect_no_files() const {
    EXPECT_THAT(files_in(folder.path()),
                ElementsAre("one.m2v", "one.m2v.ac3", "two.m2v", "two.m2v.ac3"));
    EXPECT_FALSE(entry_exists(app.path(run_file::menu_pages)));
    EXPECT_FALSE(entry_exists(app.path(run_file::unfinished_import)));
  }
  /// The only end.
  making_end ended() {
    EXPECT_EQ(ends.size(), 1u);
    return ends.empty() ? making_end() : ends.front();
  }

  testing_support::temporary_folder app;
  testing_support::fake_launcher launcher;
  folder_lock lock{app.path()};
  found_design design;
  making_wishes wishes;
  source_facts film;
  bool paints = true;
  std::vector<std::string> missing;
  int fetched = 0;
  std::vector<drawn_page> painted;
  std::vector<making_progress> told;
  std::vector<making_end> ends;
  std::optional<menu_making> making;
};

TEST_F(MenuMaking, PutsTheMenusInOneStepWhenAllBackgroundsAreThere) {
  begin();
  draw_all();
  EXPECT_EQ(painted.size(), 2u);
  EXPECT_EQ(fetched, 2);
  ASSERT_EQ(launcher.started.size(), 1u);
  EXPECT_THAT(p.menulist, IsEmpty());
  make_both();
  feed("*making the background of menu 1 of 2.....\n");
  EXPECT_THAT(p.menulist, IsEmpty());
  EXPECT_FALSE(file_exists(folder.path("titles-1.m2v")));
  feed("*making the background of menu 2 of 2.....\n" + all_made);
  making->update();
  EXPECT_EQ(ended().problem, "");
  EXPECT_FALSE(ended().stopped);
  EXPECT_EQ(ended().menus, 2);
  EXPECT_THAT(ended().files, ElementsAre(folder.path("titles-1.m2v"), folder.path("one-1.m2v")));
  EXPECT_EQ(p.menulist,
            (rows{folder.stored("titles-1.m2v") + "/", folder.stored("one-1.m2v") + "/"}));
  for (const char* const name : {"titles-1.m2v", "titles-1.menu", "one-1.m2v", "one-1.menu"})
    EXPECT_TRUE(file_exists(folder.path(name))) << name;
  EXPECT_FALSE(entry_exists(folder.path("titles-1.m2v.part")));
  EXPECT_FALSE(entry_exists(app.path(run_file::menu_pages)));
  EXPECT_FALSE(entry_exists(app.path(run_file::unfinished_import)));
  EXPECT_THAT(app.read(run_file::menus_log), HasSubstr("*making the background of menu 2 of 2"));
  EXPECT_FALSE(lock.held());
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(doc.undo_name(), "make menus");
  doc.undo();
  EXPECT_THAT(p.menulist, IsEmpty());
  EXPECT_EQ(doc.undo_name(), std::nullopt);
}

TEST_F(MenuMaking, StillsAreMadeByTheToolsOfStillsInTheMenusProportions) {
  wishes.menus.is_wide = true;
  p.globalregion = "PAL";
  begin();
  draw_all();
  const std::string script = app.read(run_file::menus_script);
  EXPECT_THAT(script, AllOf(HasSubstr("echo *making the background of menu 1 of 2.....\r\n"),
                            HasSubstr(" -f 25 -j "), HasSubstr(" -f 8 -n p -a 3 -o "),
                            HasSubstr("titles-1.m2v.part\""), HasSubstr("one-1.m2v.part\""),
                            ::testing::EndsWith("echo *process complete\r\n")));
  EXPECT_THAT(script, HasSubstr("\"PNG:-[0]\""));
  EXPECT_EQ(app.read("menu-pages/1.png"), "png");
  EXPECT_EQ(painted.at(0).height, 576);
  EXPECT_TRUE(painted.at(0).is_wide);
}

TEST_F(MenuMaking, ProgressNeverGoesBackAndEndsBelowAll) {
  begin();
  draw_all();
  make_both();
  feed("*making the background of menu 1 of 2.....\n");
  feed("*making the background of menu 2 of 2.....\n");
  feed(all_made);
  making->update();
  ASSERT_GE(told.size(), 4u);
  EXPECT_EQ(told.front().step, "drawing menu 1 of 2");
  EXPECT_EQ(told.back().step, "making the background of menu 2 of 2");
  for (std::size_t i = 1; i < told.size(); ++i)
    EXPECT_GE(told[i].percent, told[i - 1].percent);
  EXPECT_GT(told.back().percent, 60);
  EXPECT_LT(told.back().percent, 100);
}

TEST_F(MenuMaking, WhatPicturesAreMissingIsSaidOnce) {
  missing = {"There is no picture of \"one.m2v\": it is empty"};
  begin();
  draw_all();
  make_both();
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().notes, ElementsAre("There is no picture of \"one.m2v\": it is empty."));
}

// Stopped ----------------------------------------------------------------------------------------

TEST_F(MenuMaking, StoppedBeforeAnythingIsDrawnItLeavesNothing) {
  begin();
  making->stop();
  EXPECT_TRUE(ended().stopped);
  expect_nothing_of_it();
  making->stop();
  making->update();
  EXPECT_EQ(ends.size(), 1u);
}

TEST_F(MenuMaking, StoppedAfterAnyPassItLeavesNothing) {
  for (int passes = 1; passes < 12; ++passes) {
    SCOPED_TRACE(passes);
    launcher.started.clear();
    ends.clear();
    begin();
    for (int pass = 0; pass < passes; ++pass) {
      making->update();
      if (launcher.started.size() == 1 && pass == passes - 1)
        make("titles-1.m2v", "half");
    }
    making->stop();
    EXPECT_TRUE(ended().stopped);
    expect_nothing_of_it();
    making.reset();
  }
}

TEST_F(MenuMaking, StoppedWhenTheToolsHaveMadeAllItLeavesNothing) {
  begin();
  draw_all();
  make_both();
  launcher.output->pieces.push_back(all_made);
  making->stop();
  EXPECT_TRUE(ended().stopped);
  expect_nothing_of_it();
}

TEST_F(MenuMaking, GivenUpWithItsWindowItSaysNothingAndLeavesNothing) {
  begin();
  draw_all();
  make("titles-1.m2v", "half");
  making.reset();
  EXPECT_THAT(ends, IsEmpty());
  EXPECT_FALSE(lock.held());
  EXPECT_THAT(p.menulist, IsEmpty());
  expect_no_files();
}

// Failed -----------------------------------------------------------------------------------------

TEST_F(MenuMaking, APageThatCannotBeDrawnEndsIt) {
  paints = false;
  begin();
  draw_all();
  EXPECT_EQ(ended().problem, "The menus could not be drawn: there is not enough memory.");
  expect_nothing_of_it();
}

TEST_F(MenuMaking, AToolThatFailsEndsIt) {
  begin();
  draw_all();
  make("titles-1.m2v");
  feed("*making the background of menu 2 of 2.....\nERR:  mpeg2enc.exe ended with status 1\n" +
       all_made);
  making->update();
  EXPECT_EQ(ended().problem,
            "The backgrounds of the menus could not be made: mpeg2enc.exe ended with status 1.");
  EXPECT_FALSE(ended().stopped);
  expect_nothing_of_it();
}

TEST_F(MenuMaking, ABackgroundThatLacksItsEndIsNotWhole) {
  begin();
  draw_all();
  make("titles-1.m2v");
  make("one-1.m2v", testing_support::small_video().substr(0, 100));
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().problem, HasSubstr("one-1.m2v\": it is not whole."));
  expect_nothing_of_it();
}

TEST_F(MenuMaking, ABackgroundThatIsNotThereWasNotMade) {
  begin();
  draw_all();
  make("titles-1.m2v");
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().problem, HasSubstr("one-1.m2v\": it was not made."));
  expect_nothing_of_it();
}

TEST_F(MenuMaking, ANameThatIsTakenMeanwhileLeavesNothingBehind) {
  begin();
  draw_all();
  make_both();
  folder.add("one-1.m2v", "somebody else's");
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().problem, HasSubstr("one-1.m2v\": "));
  EXPECT_EQ(folder.read("one-1.m2v"), "somebody else's");
  EXPECT_FALSE(entry_exists(folder.path("titles-1.m2v")));
  EXPECT_EQ(remove_all(folder.path("one-1.m2v")), std::nullopt);
  expect_nothing_of_it();
}

TEST_F(MenuMaking, AFolderThatIsRenamedMeanwhileEndsIt) {
  wishes.menus.folder = folder.path("menus");
  begin();
  draw_all();
  make("menus/titles-1.m2v");
  make("menus/one-1.m2v");
  if (move_entry(folder.path("menus"), folder.path("renamed")))
    GTEST_SKIP() << "this system renames no folder that is in use";
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().problem, HasSubstr("menus\" is not there any more"));
#ifndef _WIN32  // where a folder cannot be followed
  EXPECT_THAT(files_in(folder.path("renamed")), IsEmpty());
#endif
  EXPECT_THAT(p.menulist, IsEmpty());
}

// Hand-edited XML --------------------------------------------------------------------------------

class MenuMakingOfEditedXml : public MenuMaking {
 protected:
  MenuMakingOfEditedXml() { p.customxml = "<dvdauthor/>"; }
};

TEST_F(MenuMakingOfEditedXml, WhoKeepsItGetsNoMenusAndNoWord) {
  expect_guard(answer::cancel);
  EXPECT_EQ(why_not(), "");
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  expect_nothing_of_it();
}

TEST_F(MenuMakingOfEditedXml, ItStaysUntilTheMenusAreThere) {
  expect_guard(answer::ok);
  begin();
  draw_all();
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  making->stop();
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  expect_nothing_of_it();
}

TEST_F(MenuMakingOfEditedXml, ItGoesWithTheMenusComingAndComesBackWithUndo) {
  expect_guard(answer::ok);
  begin();
  draw_all();
  make_both();
  feed(all_made);
  making->update();
  EXPECT_EQ(p.customxml, "");
  EXPECT_EQ(p.menulist.size(), 2u);
  doc.undo();
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  EXPECT_THAT(p.menulist, IsEmpty());
}

// Why not ----------------------------------------------------------------------------------------

TEST_F(MenuMaking, AToolThatIsMissingIsNamedBeforeAnything) {
  EXPECT_EQ(remove_all(app.path("bin/mpeg2enc.exe")), std::nullopt);
  EXPECT_THAT(why_not(), HasSubstr("mpeg2enc"));
  expect_nothing_of_it();
}

TEST_F(MenuMaking, AnotherRunInTheProgramFolderIsWaitedFor) {
  folder_lock other(app.path());
  ASSERT_TRUE(other.take());
  EXPECT_THAT(why_not(), HasSubstr("Another run is using the program folder"));
}

TEST_F(MenuMaking, AFolderThatCannotBeMadeIsNamed) {
  wishes.menus.folder = join_path(folder.path("one.m2v"), "menus");
  EXPECT_THAT(why_not(), AllOf(HasSubstr("cannot be made"), HasSubstr("Choose another folder.")));
  expect_nothing_of_it();
}

TEST_F(MenuMaking, MenusThatStayAndAreOfOtherProportionsAreToldBefore) {
  folder.add("own.m2v", testing_support::small_video(video_standard::ntsc, 3));
  p.menulist = {folder.stored("own.m2v") + "/"};
  p.moremenuoptions = {new_menu_options};
  p.menubuttons = {first_button};
  EXPECT_EQ(why_not(),
            "Menu 1, which stays, is 16:9, and all menus of a disc are of the same proportions.  "
            "Make the new ones 16:9, too, or replace all menus.");
  wishes.menus.replaces_own = true;
  begin();
}

TEST_F(MenuMaking, ADesignThatShowsAFilmWantsOne) {
  design.design->background = video_background{};
  design.design->name = "Film";
  wishes = preset_wishes(doc, design);
  EXPECT_EQ(why_not(),
            "The design \"Film\" shows a film behind the menus.  Please choose one, or another "
            "design.");
}

// A film behind the menus ------------------------------------------------------------------------

class MenuMakingOverFilm : public MenuMaking {
 protected:
  MenuMakingOverFilm() { wishes.motion = menu_motion{folder.path("one.m2v"), 5, 20, true}; }
};

TEST_F(MenuMakingOverFilm, FfmpegPutsThePagesOverItAndTheMenusLoopWithItsSound) {
  begin();
  draw_all();
  EXPECT_TRUE(std::holds_alternative<video_background>(painted.at(0).background));
  const std::string script = app.read(run_file::menus_script);
  EXPECT_THAT(script, AllOf(HasSubstr(" -ss 5 -t 20 -f matroska -i "),
                            HasSubstr(" -f png_pipe -i "), HasSubstr("[film][page]overlay="),
                            HasSubstr(" -aspect 4:3 "), HasSubstr("titles-1.ac3.part")));
  EXPECT_THAT(script, Not(HasSubstr("one-1.ac3")));
  make_both();
  make("titles-1.ac3", "sound");
  feed(all_made);
  making->update();
  EXPECT_EQ(ended().problem, "");
  const std::string sound = folder.stored("titles-1.ac3");
  EXPECT_EQ(p.menulist, (rows{folder.stored("titles-1.m2v") + "/" + sound,
                              folder.stored("one-1.m2v") + "/" + sound}));
  EXPECT_EQ(p.moremenuoptions[0], " 1\t00:00:00.0\t00:00:00.0\t 2");
  EXPECT_TRUE(file_exists(folder.path("titles-1.ac3")));
}

TEST_F(MenuMakingOverFilm, ItMayBeSilent) {
  wishes.motion->with_sound = false;
  begin();
  draw_all();
  EXPECT_THAT(app.read(run_file::menus_script), Not(HasSubstr(".ac3")));
  make_both();
  feed(all_made);
  making->update();
  EXPECT_EQ(p.menulist[0], folder.stored("titles-1.m2v") + "/");
  EXPECT_THAT(ended().notes, IsEmpty());
}

TEST_F(MenuMakingOverFilm, OneWithoutSoundIsTold) {
  film.streams.pop_back();
  begin();
  draw_all();
  make_both();
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().notes, ElementsAre(HasSubstr("has no sound; so the menus have none.")));
}

TEST_F(MenuMakingOverFilm, SoundThatIsNotThereEndsItAndLeavesNothing) {
  begin();
  draw_all();
  make_both();
  feed(all_made);
  making->update();
  EXPECT_THAT(ended().problem, HasSubstr("titles-1.ac3\": it is empty."));
  expect_nothing_of_it();
}

TEST_F(MenuMakingOverFilm, ADiskThatBecomesFullEndsItThoughTheToolSaysNothing) {
  begin();
  draw_all();
  make_both();
  make("titles-1.ac3", "sound");
  feed("Error closing file a.m2v.part: No space left on device\n" + all_made);
  making->update();
  EXPECT_EQ(ended().problem, "The backgrounds of the menus could not be made: the disk is full.");
  expect_nothing_of_it();
}

TEST_F(MenuMakingOverFilm, WithoutFfmpegItSaysWhereThatComesFrom) {
  EXPECT_EQ(remove_all(app.path("bin/ffmpeg.exe")), std::nullopt);
  EXPECT_THAT(why_not(), HasSubstr("ffmpeg"));
  expect_nothing_of_it();
}

TEST_F(MenuMakingOverFilm, OneThatIsOverByThenIsTold) {
  wishes.motion->begin = 70;
  EXPECT_THAT(why_not(), AllOf(HasSubstr("cannot stand behind the menus: it lasts 60"),
                               HasSubstr("was to begin 70")));
}

TEST_F(MenuMakingOverFilm, AFileWithoutVideoIsTold) {
  film.streams.erase(film.streams.begin());
  EXPECT_THAT(why_not(), HasSubstr("cannot stand behind the menus: there is no video in it."));
}

TEST_F(MenuMakingOverFilm, ItLastsAsLongAsThereIsFilm) {
  wishes.motion->begin = 50;
  begin();
  draw_all();
  EXPECT_THAT(app.read(run_file::menus_script), HasSubstr(" -ss 50 -t 10 "));
}

// What is offered --------------------------------------------------------------------------------

TEST_F(MenuMaking, PresetsFollowTheTitles) {
  EXPECT_EQ(wishes.menus.folder, folder.path());
  EXPECT_THAT(wishes.menus.choices.chapters_of, ElementsAre(1));
  EXPECT_FALSE(wishes.menus.is_wide);
  EXPECT_TRUE(wishes.menus.sets_ends);
  folder.add("one.m2v", testing_support::small_video(video_standard::ntsc, 3));
  EXPECT_TRUE(preset_wishes(doc, design).menus.is_wide);
  p.postinfo = {"exit                     "};
  EXPECT_FALSE(preset_wishes(doc, design).menus.sets_ends);
}

TEST_F(MenuMaking, PresetsFollowTheMenusThatStayBeforeTheTitles) {
  folder.add("own.m2v", testing_support::small_video(video_standard::ntsc, 3));
  p.menulist = {folder.stored("own.m2v") + "/"};
  p.moremenuoptions = {new_menu_options};
  p.menubuttons = {first_button};
  EXPECT_TRUE(preset_wishes(doc, design).menus.is_wide);
}

TEST_F(MenuMaking, PresetsAreWhatWasChosenBefore) {
  wishes.menus.is_wide = true;
  wishes.menus.choices.chapters_of.clear();
  wishes.menus.texts["heading of titles"] = "Films";
  begin();
  draw_all();
  make("titles-1.m2v");
  feed(all_made);
  making->update();
  ASSERT_EQ(ended().menus, 1);
  const making_wishes again = preset_wishes(doc, design);
  EXPECT_TRUE(again.menus.is_wide);
  EXPECT_THAT(again.menus.choices.chapters_of, IsEmpty());
  EXPECT_EQ(again.menus.texts, wishes.menus.texts);
}

}  // namespace
}  // namespace corvane

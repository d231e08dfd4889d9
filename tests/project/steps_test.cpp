// What is done to the project in steps: undone, redone, and told from what its file holds.
#include "platform/files/files.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Steps : public testing_support::command_test {
 protected:
  /// One command, as the window runs it.
  template <class Command>
  void run(const char* name, Command command) {
    const document::step step(doc, name);
    command(doc);
  }
  void add(const std::string& name) {
    folder.add(name + ".m2v");
    folder.add(name + ".ac3");
    expect_video(folder.path(name + ".m2v"));
    expect_audio(folder.path(name + ".ac3"));
    run("add title", open_command);
  }
  static message_box save_question() {
    return box("Do you want to save project?", icon::exclamation, buttons::yes_no_cancel);
  }
};

TEST_F(Steps, ARemovedTitleComesBackWithAllItsRowsAndItsSelection) {
  add("a");
  add("b");
  p.chapters[0] = "00:00:00.00,00:00:05.00";
  p.delay[0] = "-40";
  p.selected = 0;
  run("remove title", remove_title_command);
  EXPECT_THAT(p.List1, ElementsAre("title1:b.m2v/b.ac3"));
  EXPECT_EQ(doc.undo_name(), "remove title");
  doc.undo();
  EXPECT_THAT(p.List1, ElementsAre("title1:a.m2v/a.ac3", "title2:b.m2v/b.ac3"));
  EXPECT_EQ(p.chapters[0], "00:00:00.00,00:00:05.00");
  EXPECT_EQ(p.delay[0], "-40");
  EXPECT_EQ(p.selected, 0);
  EXPECT_EQ(p.Frame1, "2 titles loaded");
  EXPECT_THAT(p.dvdsizetext, ::testing::StartsWith("2 titles"));
  EXPECT_EQ(doc.redo_name(), "remove title");
  doc.redo();
  EXPECT_THAT(p.List1, ElementsAre("title1:b.m2v/b.ac3"));
  EXPECT_EQ(doc.redo_name(), std::nullopt);
}

TEST_F(Steps, TheRegionIsLockedAndFreeAsItWas) {
  EXPECT_TRUE(p.Comboregion_enabled);
  add("a");
  EXPECT_FALSE(p.Comboregion_enabled);
  doc.undo();
  EXPECT_TRUE(p.Comboregion_enabled);
  doc.redo();
  EXPECT_FALSE(p.Comboregion_enabled);
}

TEST_F(Steps, PostCommandsThatAddingATitleWipesComeBack) {
  add("a");
  p.postinfo = {"call menu                "};
  add("b");
  EXPECT_THAT(p.postinfo, IsEmpty());
  doc.undo();
  EXPECT_THAT(p.postinfo, ElementsAre("call menu                "));
}

TEST_F(Steps, DiscardedXmlComesBackAlsoWhenTheFileDialogWasCancelled) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  expect_video("");
  run("add title", open_command);
  EXPECT_EQ(p.customxml, "");
  EXPECT_EQ(doc.undo_name(), "add title");
  doc.undo();
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
}

TEST_F(Steps, ACommandThatChangesNothingIsNone) {
  expect_video("");
  run("add title", open_command);
  run("about", [](document& d) { d.p.selected = -1; });
  EXPECT_EQ(doc.undo_name(), std::nullopt);
}

TEST_F(Steps, WhatWasUndoneIsGoneWithTheNextStep) {
  add("a");
  doc.undo();
  add("b");
  EXPECT_EQ(doc.redo_name(), std::nullopt);
  doc.undo();
  EXPECT_THAT(p.List1, IsEmpty());
}

TEST_F(Steps, StepsWithinAStepAreOne) {
  {
    const document::step whole(doc, "add dropped files");
    add("a");
    add("b");
    EXPECT_EQ(doc.undo_name(), std::nullopt) << "nothing is undone under a window or a command";
    doc.undo();
    EXPECT_THAT(p.List1, SizeIs(2));
  }
  EXPECT_EQ(doc.undo_name(), "add dropped files");
  doc.undo();
  EXPECT_THAT(p.List1, IsEmpty());
}

TEST_F(Steps, PreferencesAreNotUndone) {
  run("change \"clean up files\"", cleanup_command);
  EXPECT_EQ(doc.undo_name(), std::nullopt);
  start_up(doc);
  run("change DVD format", [](document& d) { region_command(d, "PAL"); });
  doc.undo();
  EXPECT_EQ(p.globalregion, "NTSC");
  EXPECT_EQ(prefs.get("dvdregion"), "PAL");
  EXPECT_TRUE(p.cleanup);
}

TEST_F(Steps, TheOldestAreForgottenWhereMemoryEnds) {
  project_history history(100'000);
  project big;
  big.List11 = {std::string(30'000, 'x')};
  const auto state = [&](const std::string& title, const project_state* like) {
    big.List11[0].replace(0, title.size(), title);
    return project_state(big, like);
  };
  for (int i = 0; i < 10; ++i) {
    project_state before = state("a" + std::to_string(i), nullptr);
    project_state after = state("b" + std::to_string(i), &before);
    history.add({"step " + std::to_string(i), std::move(before), std::move(after), {}, {}});
  }
  EXPECT_EQ(history.undone_next()->name, "step 9");
  history.undo();
  EXPECT_EQ(history.undone_next(), nullptr) << "two states of each step: more does not fit";
}

TEST_F(Steps, WhatStepsShareIsCountedOnce) {
  project_history history(200'000);
  project big;
  big.List11 = {std::string(100'000, 'x')};
  big.delay = {"0"};
  for (int i = 0; i < 50; ++i) {
    const project_step* const last = history.undone_next();
    project_state before(big, last == nullptr ? nullptr : &last->after);
    big.delay[0] = std::to_string(i);
    project_state after(big, &before);
    history.add({"step", std::move(before), std::move(after), {}, {}});
  }
  int steps = 0;
  for (; history.undone_next() != nullptr; ++steps)
    history.undo();
  EXPECT_EQ(steps, 50);
}

TEST_F(Steps, UnsavedIsWhatTheFileDoesNotHold) {
  start_up(doc);
  EXPECT_FALSE(doc.is_unsaved());
  add("a");
  add("b");
  EXPECT_TRUE(doc.is_unsaved());
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path("p.cvp"));
  run("save project", saveproject_command);
  EXPECT_FALSE(doc.is_unsaved());
  EXPECT_EQ(doc.file(), folder.path("p.cvp"));
  p.selected = 0;
  run("move title down", titledown_command);
  EXPECT_TRUE(doc.is_unsaved()) << "although closing does not ask";
  EXPECT_EQ(p.saved, 1);
  doc.undo();
  EXPECT_FALSE(doc.is_unsaved());
  EXPECT_EQ(p.saved, 1);
  doc.undo();
  EXPECT_TRUE(doc.is_unsaved());
  EXPECT_EQ(p.saved, 0) << "closing asks";
  doc.redo();
  EXPECT_EQ(p.saved, 1);
}

TEST_F(Steps, SaveWritesIntoTheProjectsFileWithoutAQuestion) {
  add("a");
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path("p.cvp"));
  run("save", savefile_command);
  add("b");
  run("save", savefile_command);
  EXPECT_EQ(folder.read("p.cvp"), project_text(p));
  EXPECT_FALSE(doc.is_unsaved());
}

TEST_F(Steps, AFileThatAnotherProgramHasChangedIsNotReplacedUnasked) {
  add("a");
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path("p.cvp"));
  run("save", savefile_command);
  const std::string ours = folder.read("p.cvp");
  project other = p;
  other.List11.clear();
  const std::string theirs = project_text(other);
  folder.add("p.cvp", theirs);
  add("b");
  const auto expect_question = [&](answer reply) {
    expect_loss("\"" + folder.path("p.cvp") +
                    "\" is not as it was when this project was loaded or saved last, as when "
                    "another program has changed it; what stands there now would be lost.  With "
                    "Cancel nothing is saved, and \"save project...\" saves under another name."
                    "\r\n\r\nDo you want to replace it?",
                icon::exclamation, reply);
  };
  expect_question(answer::cancel);
  run("save", savefile_command);
  EXPECT_EQ(folder.read("p.cvp"), theirs);
  EXPECT_TRUE(doc.is_unsaved());
  expect_question(answer::ok);
  run("save", savefile_command);
  EXPECT_EQ(folder.read("p.cvp"), project_text(p));
  // Ours again, and one that is gone: nothing is asked.
  add("c");
  run("save", savefile_command);
  EXPECT_EQ(folder.read("p.cvp"), project_text(p));
  std::filesystem::remove(path_of(folder.path("p.cvp")));
  add("d");
  run("save", savefile_command);
  EXPECT_EQ(folder.read("p.cvp"), project_text(p));
}

TEST_F(Steps, AFileThatHoldsTheSameInOtherBytesIsReplaced) {
  add("a");
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path("p.cvp"));
  run("save", savefile_command);
  folder.add("p.cvp", "\xEF\xBB\xBF" + folder.read("p.cvp"));
  add("b");
  run("save", savefile_command);
  EXPECT_EQ(folder.read("p.cvp"), project_text(p));
}

TEST_F(Steps, ALoadIsUndoneWithItsFile) {
  add("a");
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path("p.cvp"));
  run("save", savefile_command);
  run("new project", newproject_command);
  EXPECT_THAT(p.List1, IsEmpty());
  EXPECT_EQ(doc.file(), "");
  EXPECT_TRUE(p.Comboregion_enabled);
  EXPECT_FALSE(doc.is_unsaved());
  run("load project", [&](document& d) { loadprojectf(d, folder.path("p.cvp")); });
  EXPECT_EQ(doc.file(), folder.path("p.cvp"));
  EXPECT_EQ(doc.undo_name(), "load project");
  doc.undo();
  EXPECT_EQ(doc.file(), "");
  EXPECT_FALSE(doc.is_unsaved());
  doc.undo();
  EXPECT_EQ(doc.file(), folder.path("p.cvp"));
  EXPECT_FALSE(doc.is_unsaved());
  EXPECT_THAT(p.List1, ElementsAre("title1:a.m2v/a.ac3"));
}

TEST_F(Steps, ASaveCountsForTheStepsBeforeIt) {
  add("a");
  const auto save_as = [&](const char* name) {
    ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path(name));
    run("save project", saveproject_command);
  };
  save_as("1.cvp");
  run("new project", newproject_command);
  run("load project", [&](document& d) { loadprojectf(d, folder.path("1.cvp")); });
  add("b");
  run("save", savefile_command);
  doc.undo();
  doc.undo();
  doc.redo();
  EXPECT_EQ(doc.file(), folder.path("1.cvp"));
  EXPECT_TRUE(doc.is_unsaved()) << "the file has the second title";
  doc.redo();
  EXPECT_FALSE(doc.is_unsaved());
  save_as("2.cvp");
  doc.undo();
  doc.undo();
  doc.redo();
  EXPECT_EQ(doc.file(), folder.path("2.cvp")) << "\"save\" does not write into the old file";
}

TEST_F(Steps, ANewProjectIsBegunWhenTheOldOneIsSavedOrGivenUp) {
  add("a");
  ask.expect(save_question(), answer::cancel);
  run("new project", newproject_command);
  EXPECT_THAT(p.List1, SizeIs(1));
  ask.expect(save_question(), answer::yes);
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, "");
  run("new project", newproject_command);
  EXPECT_THAT(p.List1, SizeIs(1)) << "it was not saved";
  ask.expect(save_question(), answer::no);
  p.cleanup = true;
  run("new project", newproject_command);
  EXPECT_THAT(p.List1, IsEmpty());
  EXPECT_TRUE(p.cleanup) << "a preference";
  EXPECT_EQ(doc.undo_name(), "new project");
}

TEST_F(Steps, ANewTitleAfterALoadThatWasTakenBackHasNoDelay) {
  add("a");
  p.delay[0] = "-500";
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, folder.path("p.cvp"));
  run("save", savefile_command);
  remove_all(folder.path("a.ac3"));
  expect_missing(folder.path("a.ac3"));
  run("load project", [&](document& d) { loadprojectf(d, folder.path("p.cvp")); });
  EXPECT_THAT(p.delay, ElementsAre("-500")) << "stays as it was loaded";
  EXPECT_THAT(p.List1, IsEmpty());
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(doc.file(), "");
  run("new project", newproject_command);
  EXPECT_TRUE(p.Comboregion_enabled) << "the region is free again";
  doc.undo();
  add("b");
  EXPECT_THAT(p.delay, ElementsAre("0"));
}

TEST_F(Steps, CreateIsoAndTheRegionAreAskedAboutWhenTheWindowCloses) {
  add("a");
  p.saved = 1;
  run("change \"create iso\"", isocreate_command);
  EXPECT_EQ(p.saved, 0);
  ask.expect(save_question(), answer::no);
  EXPECT_TRUE(close_command(doc));
  p.saved = 1;
  p.Comboregion_enabled = true;
  run("change DVD format", [](document& d) { region_command(d, "PAL"); });
  EXPECT_EQ(p.saved, 0);
  p.saved = 1;
  run("change DVD format", [](document& d) { region_command(d, "PAL"); });
  EXPECT_EQ(p.saved, 1) << "it was PAL before";
}

TEST_F(Steps, AnswersOfAnotherAreTheUsersAgainAfterwards) {
  testing_support::scripted_prompts other;
  {
    const prompts_relay::answered_by others(doc.ask, other);
    other.expect_open({"t", "f", ""}, "");
    EXPECT_EQ(doc.ask.open_file({"t", "f", ""}), "");
  }
  ask.expect_open({"t", "f", ""}, "/x");
  EXPECT_EQ(doc.ask.open_file({"t", "f", ""}), "/x");
}

}  // namespace
}  // namespace corvane

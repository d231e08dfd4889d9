// Projects kept for the case that their program ends without saving them.
#include "project/recovery.h"

#include "platform/files/files.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "project/title_rows.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class Recovery : public testing_support::command_test {
 protected:
  Recovery() { doc.keep_in(&keeper); }
  ~Recovery() override { doc.keep_in(nullptr); }

  void change(const std::string& delay) {
    const document::step step(doc, "edit A/V delay");
    p.delay[0] = delay;
  }
  /// What another program finds that is started after this one has died.
  static std::vector<kept_project> found(const std::string& folder) {
    recovery other(folder);
    std::vector<kept_project> all;
    for (const left_project& project : other.left())
      all.push_back(project.what());
    return all;
  }

  std::string kept = folder.path("app/kept");
  recovery keeper{kept};
};

TEST_F(Recovery, WhatIsNotSavedIsKeptAfterEachStep) {
  {
    recovery dying(kept);
    doc.keep_in(&dying);
    {
      const document::step step(doc, "add title");
      add_files_and_title({"a.m2v", "a.ac3"});
    }
    change("40");
    doc.set_file("/home/u/p.cvp", "what the file holds");
    change("80");
    EXPECT_EQ(dying.flush(), std::nullopt);
    EXPECT_THAT(found(kept), IsEmpty()) << "its program lives";
    doc.keep_in(nullptr);
  }
  const auto left = found(kept);
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_EQ(left[0].file, "/home/u/p.cvp");
  EXPECT_EQ(left[0].text, project_text(p));
  EXPECT_EQ(left[0].editor, "");
}

TEST_F(Recovery, WhatIsSavedOrGivenUpIsForgotten) {
  add_files_and_title({"a.m2v", "a.ac3"});
  for (const bool saved : {true, false}) {
    recovery ending(kept);
    doc.keep_in(&ending);
    change(saved ? "40" : "80");
    EXPECT_EQ(ending.flush(), std::nullopt);
    if (saved) {
      const document::step step(doc, "save");
      doc.saved_to("/p.cvp");
    }
    doc.end(!saved);
    doc.keep_in(nullptr);
  }
  EXPECT_THAT(found(kept), IsEmpty());
  EXPECT_THAT(found(kept), IsEmpty());
}

TEST_F(Recovery, WhatAnOpenWindowHoldsIsKeptWithItsName) {
  add_files_and_title({"a.m2v", "a.ac3"});
  {
    recovery dying(kept);
    doc.keep_in(&dying);
    project draft = p;
    draft.chapters[0] = "00:05:00";
    doc.keep_draft(draft, "chapters");
    doc.keep_draft(draft, "chapters");
    EXPECT_EQ(dying.flush(), std::nullopt);
    doc.keep_in(nullptr);
  }
  const auto left = found(kept);
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_EQ(left[0].editor, "chapters");
  EXPECT_THAT(left[0].text, ::testing::HasSubstr("00:05:00\r\n"));
}

TEST_F(Recovery, EachProgramHasItsOwn) {
  {
    recovery one(kept), other(kept);
    one.keep({"/1.cvp", "", "first"});
    other.keep({"/2.cvp", "", "second"});
  }
  const auto left = found(kept);
  ASSERT_THAT(left, SizeIs(2));
  EXPECT_NE(left[0].file, left[1].file);
}

TEST_F(Recovery, WhatWasOfferedIsGoneOnceItIsDropped) {
  { recovery(kept).keep({"", "", "text"}); }
  recovery next(kept);
  {
    auto left = next.left();
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_THAT(found(kept), IsEmpty()) << "nobody else is offered it meanwhile";
  }
  EXPECT_THAT(found(kept), SizeIs(1)) << "nobody has decided";
  next.left().front().drop();
  EXPECT_THAT(found(kept), IsEmpty());
}

TEST_F(Recovery, AFileThatIsNoneIsLeftAlone) {
  folder.add("app/kept/1/project.kept", "something");
  EXPECT_THAT(found(kept), IsEmpty());
  EXPECT_EQ(folder.read("app/kept/1/project.kept"), "something");
}

TEST_F(Recovery, GoesOnWhereItsFolderWasRemoved) {
  keeper.keep({"", "", "one"});
  EXPECT_EQ(keeper.flush(), std::nullopt);
  remove_all(kept);
  keeper.keep({"", "", "two"});
  EXPECT_EQ(keeper.flush(), std::nullopt);
  EXPECT_EQ(folder.read("app/kept/1/project.kept"), "Corvane kept project 2\n\n\n\ntwo");
}

TEST_F(Recovery, WhatItsFileHoldsAlreadyIsNotOffered) {
  const std::string file = folder.add("p.cvp", project_text(project()));
  { recovery(kept).keep({file, "", project_text(project())}); }
  EXPECT_FALSE(recover_command(doc, keeper));
  EXPECT_THAT(found(kept), IsEmpty());
}

TEST_F(Recovery, WhereNothingCanBeWrittenThatIsTold) {
  folder.add("app/kept", "a file in the place of the folder");
  keeper.keep({"", "", "text"});
  EXPECT_NE(keeper.flush(), std::nullopt);
}

// Brought back ------------------------------------------------------------------------------------

class Recovered : public Recovery {
 protected:
  static message_box question(const std::string& about) {
    message_box asked = box(about +
                                "\r\n\r\nDo you want to bring them back?  With No they are gone "
                                "for good.",
                            icon::information, buttons::yes_no);
    asked.enter_answers_yes = true;
    return asked;
  }
  static message_box never_saved() {
    return question(
        "A project that was never saved had changes that were not saved when Corvane "
        "ended.");
  }
  void leave(const project& left, const std::string& file = {}, const std::string& editor = {}) {
    recovery(kept).keep({file, editor, project_text(left)});
  }
  project one_title() {
    project left;
    add_title(left, folder.stored("gone.m2v") + "/" + folder.stored("gone.ac3"));
    left.languagetags = {"Audio tag:\tENGLISH EN"};
    return left;
  }
  bool recover() {
    const document::step step(doc, "recover project");
    return recover_command(doc, keeper);
  }
};

TEST_F(Recovered, WithItsFileAndWithoutAWordAboutMissingFiles) {
  const std::string file = folder.add("p.cvp", project_text(project()));
  leave(one_title(), file, "chapters");
  ask.expect(question("The project \"" + file +
                      "\" had changes that were not saved when Corvane ended.  The window "
                      "\"chapters\" was open; what stood there is among them."),
             answer::yes);
  EXPECT_TRUE(recover());
  EXPECT_THAT(p.List1, testing::ElementsAre("title1:gone.m2v/gone.ac3"));
  EXPECT_THAT(p.languagetags, SizeIs(1));
  EXPECT_EQ(doc.file(), file);
  EXPECT_TRUE(doc.is_unsaved());
  EXPECT_EQ(p.saved, 0);
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.dvdsizetext, "1 titles\r\n0 menus\r\n0.000 gig total");
  EXPECT_THAT(found(kept), IsEmpty()) << "this program keeps it now";
  EXPECT_EQ(doc.undo_name(), "recover project");
}

TEST_F(Recovered, AFileThatAnotherHasSavedMeanwhileIsNotReplacedUnasked) {
  const std::string file = folder.add("p.cvp", project_text(project()));
  const std::string mark = mark_of_text(project_text(project()));
  { recovery(kept).keep({file, "", project_text(one_title()), mark}); }
  project theirs;
  theirs.isocreate = true;
  folder.add("p.cvp", project_text(theirs));
  ask.expect(
      question("The project \"" + file + "\" had changes that were not saved when Corvane ended."),
      answer::yes);
  ASSERT_TRUE(recover());
  expect_loss("\"" + file +
                  "\" is not as it was when this project was loaded or saved last, as when "
                  "another program has changed it; what stands there now would be lost.  With "
                  "Cancel nothing is saved, and \"save project...\" saves under another name."
                  "\r\n\r\nDo you want to replace it?",
              icon::exclamation, answer::cancel);
  savefile_command(doc);
  EXPECT_EQ(folder.read("p.cvp"), project_text(theirs));
}

TEST_F(Recovered, IntoAFileThatIsAsItWasItIsSavedWithoutAQuestion) {
  const std::string file = folder.add("p.cvp", project_text(project()));
  const std::string mark = mark_of_text(project_text(project()));
  { recovery(kept).keep({file, "", project_text(one_title()), mark}); }
  ask.expect(
      question("The project \"" + file + "\" had changes that were not saved when Corvane ended."),
      answer::yes);
  ASSERT_TRUE(recover());
  savefile_command(doc);
  EXPECT_EQ(folder.read("p.cvp"), project_text(p));
}

TEST_F(Recovered, WhatAnOlderProgramHasKept) {
  folder.add("app/kept/1/project.kept",
             "Corvane kept project 1\n\nchapters\n" + project_text(one_title()));
  ask.expect(question("A project that was never saved had changes that were not saved when Corvane "
                      "ended.  The window \"chapters\" was open; what stood there is among them."),
             answer::yes);
  EXPECT_TRUE(recover());
  EXPECT_THAT(p.List1, testing::ElementsAre("title1:gone.m2v/gone.ac3"));
}

TEST_F(Recovered, NotWithNo) {
  leave(one_title());
  ask.expect(never_saved(), answer::no);
  EXPECT_FALSE(recover());
  EXPECT_THAT(p.List1, IsEmpty());
  EXPECT_THAT(found(kept), IsEmpty());
}

TEST_F(Recovered, LaterWhenNothingWasAnswered) {
  leave(one_title());
  ask.expect(never_saved(), answer::cancel);
  EXPECT_FALSE(recover());
  EXPECT_THAT(found(kept), SizeIs(1));
}

TEST_F(Recovered, OneAfterTheOtherUntilOneIsTaken) {
  leave(one_title());
  leave(one_title());
  leave(one_title());
  ask.expect(never_saved(), answer::no);
  ask.expect(never_saved(), answer::yes);
  EXPECT_TRUE(recover());
  EXPECT_THAT(found(kept), SizeIs(1));
}

TEST_F(Recovered, NotWhatCannotBeRead) {
  { recovery(kept).keep({"", "", "no project"}); }
  ask.expect(never_saved(), answer::yes);
  ask.expect(box("What was kept of the project cannot be read.  It stays kept.", icon::critical));
  EXPECT_FALSE(recover());
  EXPECT_THAT(found(kept), SizeIs(1));
}

// The end of the program --------------------------------------------------------------------------

TEST_F(Recovered, AfterACloseThatDidNotAsk) {
  folder.add("a.vob");
  folder.add("b.vob");
  add_title(p, folder.stored("a.vob"));
  add_title(p, folder.stored("b.vob"));
  std::string target;
  const auto closed = [&](answer reply) {
    recovery ending(kept);
    doc.keep_in(&ending);
    doc.saved_to("/p.cvp");
    {
      const document::step step(doc, "move title up");
      p.selected = 1;
      titleup_command(doc);
    }
    if (reply != answer::ok) {
      p.saved = 0;
      ask.expect(box("Do you want to save project?", icon::exclamation, buttons::yes_no_cancel),
                 reply);
    } else {
      p.saved = 1;
    }
    if (reply == answer::yes)
      ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, target);
    const close_end end = close_project(doc);
    doc.end(end == close_end::given_up);
    doc.keep_in(nullptr);
    return end;
  };
  EXPECT_EQ(closed(answer::ok), close_end::ends);
  EXPECT_THAT(found(kept), SizeIs(1)) << "only moved: the close does not ask";
  EXPECT_EQ(closed(answer::no), close_end::given_up);
  EXPECT_THAT(found(kept), SizeIs(1)) << "this one is not wanted";
  EXPECT_EQ(closed(answer::yes), close_end::ends);
  EXPECT_THAT(found(kept), SizeIs(2)) << "no file was chosen";
  target = folder.path("saved.cvp");
  EXPECT_EQ(closed(answer::yes), close_end::ends);
  EXPECT_THAT(found(kept), SizeIs(2)) << "this one was saved";
}

}  // namespace
}  // namespace corvane

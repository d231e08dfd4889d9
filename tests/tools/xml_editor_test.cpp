// The navigation XML editor without its window: its text, its conversation, what it leaves behind.
#include "tools/xml_editor.h"

#include "support/command_test.h"

#include <filesystem>
#include <memory>

namespace corvane {
namespace {

const std::string generated =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"/dvd\">\r\n</dvdauthor>\r\n";

class XmlEditor : public testing_support::command_test {
 protected:
  XmlEditor() {
    folder.add("app/config.xml", generated);
    lock = std::make_unique<folder_lock>(app);
    lock->take();
    p.saved = 1;
  }
  xmleditor opened() {
    return {doc, {app, *lock, [] { return generated; }}};
  }

  void expect_save(answer reply, bool changed = true) {
    message_box question = box("Save changes?", icon::information, buttons::yes_no);
    question.enter_answers_yes = changed;
    ask.expect(question, reply);
  }
  void expect_proceed(answer reply) {
    ask.expect(box("Proceed with Authoring?", icon::information, buttons::yes_no), reply);
  }
  void expect_fault(const std::string& where_and_what, answer reply) {
    ask.expect(box("The XML is not well formed.  " + where_and_what +
                       ".\r\n\r\nClose the editor nevertheless?",
                   icon::exclamation, buttons::ok_cancel),
               reply);
  }
  std::string config() { return folder.read("app/config.xml"); }

  std::string app = folder.path("app");
  std::unique_ptr<folder_lock> lock;
  const std::string edited =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"/dvd\">\r\n"
      "<!-- mine -->\r\n</dvdauthor>\r\n";
};

// Opening ----------------------------------------------------------------------------------------

TEST_F(XmlEditor, OpensWithTheGeneratedFile) {
  EXPECT_EQ(opened().Text1(), generated);
}

TEST_F(XmlEditor, FollowsEveryLineOfTheFileWithALineEnd) {
  folder.add("app/config.xml", "<a>\n<b/>\r\n</a>");
  EXPECT_EQ(opened().Text1(), "<a>\r\n<b/>\r\n</a>\r\n");
}

TEST_F(XmlEditor, OpensWithTheEditedTextOnceThereIsOne) {
  p.customxml = edited;
  EXPECT_EQ(opened().Text1(), edited);
}

TEST_F(XmlEditor, OpensEmptyWhenTheFileIsMissing) {
  std::filesystem::remove(path_of(join_path(app, "config.xml")));
  EXPECT_EQ(opened().Text1(), "");
}

TEST_F(XmlEditor, LineEndsOfTheWindowBecomeThoseOfTheFile) {
  xmleditor editor = opened();
  editor.set_Text1("a\nb\r\nc\rd");
  EXPECT_EQ(editor.Text1(), "a\r\nb\r\nc\r\nd");
}

// Closing ----------------------------------------------------------------------------------------

TEST_F(XmlEditor, SavedAndProceedingHandsTheEditToTheRun) {
  xmleditor editor = opened();
  editor.set_Text1(edited);
  expect_save(answer::yes);
  expect_proceed(answer::yes);
  EXPECT_EQ(editor.close(), xmleditor_end::proceed);
  EXPECT_EQ(config(), edited + "\r\n");
  EXPECT_EQ(p.customxml, edited);
  EXPECT_EQ(p.saved, 0);
  EXPECT_TRUE(lock->held());
}

TEST_F(XmlEditor, NotSavedButProceedingLeavesTheGeneratedFileToTheRun) {
  xmleditor editor = opened();
  editor.set_Text1(edited);
  expect_save(answer::no);
  expect_proceed(answer::yes);
  EXPECT_EQ(editor.close(), xmleditor_end::proceed);
  EXPECT_EQ(config(), generated);
  EXPECT_EQ(p.customxml, "");
  EXPECT_EQ(p.saved, 1);
  EXPECT_TRUE(lock->held());
}

TEST_F(XmlEditor, SavedAndDecliningKeepsTheEditInProjectAndFile) {
  xmleditor editor = opened();
  editor.set_Text1(edited);
  expect_save(answer::yes);
  expect_proceed(answer::no);
  EXPECT_EQ(editor.close(), xmleditor_end::declined);
  EXPECT_EQ(config(), edited + "\r\n");
  EXPECT_EQ(p.customxml, edited);
  EXPECT_EQ(opened().Text1(), edited);
}

TEST_F(XmlEditor, DecliningLetsAnotherRunHaveTheProgramFolder) {
  xmleditor editor = opened();
  folder_lock other(app);
  EXPECT_FALSE(other.take());
  expect_save(answer::no, false);
  expect_proceed(answer::no);
  EXPECT_EQ(editor.close(), xmleditor_end::declined);
  EXPECT_FALSE(lock->held());
  EXPECT_TRUE(other.take());
}

TEST_F(XmlEditor, NeitherSavedNorProceedingChangesNothing) {
  p.customxml = edited;
  xmleditor editor = opened();
  editor.set_Text1("<other/>");
  expect_save(answer::no);
  expect_proceed(answer::no);
  EXPECT_EQ(editor.close(), xmleditor_end::declined);
  EXPECT_EQ(config(), generated);
  EXPECT_EQ(p.customxml, edited);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(XmlEditor, SavingTheSameEditAgainIsNoChangeOfTheProject) {
  p.customxml = edited;
  xmleditor editor = opened();
  expect_save(answer::yes, false);
  expect_proceed(answer::yes);
  EXPECT_EQ(editor.close(), xmleditor_end::proceed);
  EXPECT_EQ(p.customxml, edited);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(XmlEditor, TellsTheFirstFaultBeforeAnythingAndStaysOpenOnCancel) {
  xmleditor editor = opened();
  editor.set_Text1("<dvdauthor>\n  <titleset>\n</dvdauthor>\n");
  expect_fault(
      "Line 3, column 1: the end tag is that of \"dvdauthor\", but \"titleset\", opened in line 2, "
      "is still open",
      answer::cancel);
  EXPECT_EQ(editor.close(), xmleditor_end::stays_open);
  EXPECT_EQ(config(), generated);
  EXPECT_EQ(p.customxml, "");
  EXPECT_TRUE(lock->held());
  ASSERT_TRUE(editor.fault());
  EXPECT_EQ(editor.fault()->line, 3);
}

TEST_F(XmlEditor, AFaultyTextIsSavedWhenTheUserWantsIt) {
  xmleditor editor = opened();
  editor.set_Text1("<dvdauthor>");
  expect_fault("Line 1, column 12: the element \"dvdauthor\", opened in line 1, is not closed",
               answer::ok);
  expect_save(answer::yes);
  expect_proceed(answer::no);
  EXPECT_EQ(editor.close(), xmleditor_end::declined);
  EXPECT_EQ(p.customxml, "<dvdauthor>");
}

// A press of Enter must not make an edit of what the program wrote itself.
TEST_F(XmlEditor, EnterSavesOnlyATextThatWasChanged) {
  xmleditor editor = opened();
  editor.set_Text1(edited);
  editor.restore();
  expect_save(answer::no, false);
  expect_proceed(answer::no);
  EXPECT_EQ(editor.close(), xmleditor_end::declined);
  EXPECT_EQ(p.customxml, "");
}

TEST_F(XmlEditor, ATextTakenBackIsSavedByteByByteAsItWasOpened) {
  p.customxml = "<a>\r<b/>\n</a>\r\n";
  const std::string before = p.customxml;
  xmleditor editor = opened();
  editor.set_Text1("<a/>");
  editor.restore();
  EXPECT_EQ(editor.Text1(), before);
  expect_save(answer::yes, false);
  expect_proceed(answer::no);
  EXPECT_EQ(editor.close(), xmleditor_end::declined);
  EXPECT_EQ(p.customxml, before);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(XmlEditor, ASaveQuestionClosedWithoutAButtonLeadsBackToTheText) {
  xmleditor editor = opened();
  editor.set_Text1(edited);
  expect_save(answer::cancel);
  EXPECT_EQ(editor.close(), xmleditor_end::stays_open);
  EXPECT_EQ(editor.Text1(), edited);
  EXPECT_EQ(config(), generated);
  EXPECT_TRUE(lock->held());
}

// A project with it could be saved, and never loaded again.
TEST_F(XmlEditor, ATextTooLargeForAProjectFileIsNotSaved) {
  xmleditor editor = opened();
  editor.set_Text1("<dvdauthor>" + std::string(33u << 20, ' ') + "</dvdauthor>");
  expect_save(answer::yes);
  expect_error("The text is too large for a project: it has more than 32 megabytes.");
  EXPECT_EQ(editor.close(), xmleditor_end::stays_open);
  EXPECT_EQ(config(), generated);
  EXPECT_EQ(p.customxml, "");
  EXPECT_TRUE(lock->held());
}

TEST_F(XmlEditor, AnEmptyTextTakesTheEditBack) {
  p.customxml = edited;
  folder.add("app/config.xml", edited);
  xmleditor editor = opened();
  editor.set_Text1(" \n\t\n");
  expect_save(answer::yes);
  expect_proceed(answer::yes);
  EXPECT_EQ(editor.close(), xmleditor_end::proceed);
  EXPECT_EQ(p.customxml, "");
  EXPECT_EQ(config(), generated);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(XmlEditor, AFileThatCannotBeWrittenIsToldAndTheEditStaysInTheWindow) {
  const std::string file = join_path(app, "config.xml");
  xmleditor editor = opened();
  std::filesystem::remove(path_of(file));
  make_folders(join_path(file, "in the way"));
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  editor.set_Text1(edited);
  expect_save(answer::yes);
  expect_error("The file \"" + file + "\" could not be written: " + *why + ".");
  EXPECT_EQ(editor.close(), xmleditor_end::stays_open);
  EXPECT_EQ(editor.Text1(), edited);
  EXPECT_EQ(p.customxml, "");
  EXPECT_TRUE(lock->held());
}

// The switch -------------------------------------------------------------------------------------

TEST_F(XmlEditor, TheSwitchTellsWhatItIsForAndIsSet) {
  ask.expect(
      box("This will allow you to customize the config.xml file, before the authoring "
          "process begins.  (This is useful if you wish to label the audio/subtitle "
          "streams, move titles to different titlesets, etc.)  For more information on the "
          "tags, read the DVDAuthor documentation, found here:  "
          "https://dvdauthor.sourceforge.net/doc/dvdauthor.html",
          icon::information));
  editxml_command(doc);
  EXPECT_TRUE(p.editxml);
}

TEST_F(XmlEditor, TheSwitchIsUnsetWithoutAWord) {
  p.editxml = true;
  editxml_command(doc);
  EXPECT_FALSE(p.editxml);
}

}  // namespace
}  // namespace corvane

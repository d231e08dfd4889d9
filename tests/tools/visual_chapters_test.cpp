#include "tools/visual_chapters.h"

#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;

class VisualChapters : public testing_support::command_test {
 protected:
  VisualChapters() {
    add_files_and_title({"one.m2v", "one.ac3"});
    p.selected = 0;
    dialog = chapter::open(doc);
    dialog->set_text("00:00:00.00\r\n00:05:00.00\r\n00:10:00.00\r\n");
  }

  vchapters edit() {
    ask.expect(
        box("This visual editor uses the same method that Windows Media Player uses to "
            "determine time.  If WMP reports time incorrectly, then this visual editor will "
            "not be accurate.",
            icon::information));
    return {doc, *dialog};
  }

  std::optional<chapter> dialog;
};

TEST_F(VisualChapters, OpensWithANoteTheDialogsTimesAndTheTitlesVideo) {
  const vchapters editor = edit();
  EXPECT_TRUE(ask.all_asked());
  EXPECT_EQ(editor.List1(), (rows{"00:00:00.00", "00:05:00.00", "00:10:00.00"}));
  EXPECT_EQ(editor.video(), folder.path("one.m2v"));
  EXPECT_EQ(editor.selected(), -1);
}

TEST_F(VisualChapters, LinesOf3CharactersOrFewerAreNotListed) {
  dialog->set_text("00:00:00.00\r\nabc\r\n\r\n0:5:1\r\n");
  EXPECT_EQ(edit().List1(), (rows{"00:00:00.00", "0:5:1"}));
}

TEST_F(VisualChapters, CharactersAreCountedAndNotBytes) {
  dialog->set_text(
      "00:00:00.00\r\n\xC3\xA4\xC3\xB6\xC3\xBC\r\n\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\r\n");
  EXPECT_EQ(edit().List1(), (rows{"00:00:00.00", "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4"}));
}

TEST_F(VisualChapters, ARowBehindALaterOneIsLeftOutOfTheDisc) {
  vchapters editor = edit();
  editor.add(300);
  editor.add(600);
  editor.add(601);
  for (const int row : {0, 1, 2, 4, 5, 6, -1})
    EXPECT_FALSE(editor.left_out(row)) << row;
  EXPECT_TRUE(editor.left_out(3));
}

TEST_F(VisualChapters, TakesWhatIsTypedAndNotYetStored) {
  p.chapters = {"00:00:33.00"};
  EXPECT_EQ(edit().List1().front(), "00:00:00.00");
}

TEST_F(VisualChapters, AddsThePlayingPositionAtTheEnd) {
  vchapters editor = edit();
  editor.add(3725.5);
  editor.add(59.999);
  editor.add(0);
  EXPECT_EQ(editor.List1(), (rows{"00:00:00.00", "00:05:00.00", "00:10:00.00", "01:02:05.50",
                                  "00:00:60.00", "00:00:00.00"}));
}

TEST_F(VisualChapters, ARowGivesThePositionToPlayFrom) {
  dialog->set_text("00:00:00.00\r\n01:02:05.50\r\n00:00:60.00\r\nab:cd:ef.gh\r\n");
  const vchapters editor = edit();
  EXPECT_EQ(editor.position_of(1), 3725.5);
  EXPECT_EQ(editor.position_of(2), 60);
  EXPECT_EQ(editor.position_of(3), std::nullopt);
  EXPECT_EQ(editor.position_of(4), std::nullopt);
  EXPECT_EQ(editor.position_of(-1), std::nullopt);
}

TEST_F(VisualChapters, RemovesTheSelectedRowAndSelectsNone) {
  vchapters editor = edit();
  editor.select(1);
  editor.remove();
  EXPECT_EQ(editor.List1(), (rows{"00:00:00.00", "00:10:00.00"}));
  EXPECT_EQ(editor.selected(), -1);
  editor.remove();
  EXPECT_EQ(editor.List1().size(), 2u);
}

TEST_F(VisualChapters, TheFirstRowCannotBeRemoved) {
  vchapters editor = edit();
  editor.select(0);
  editor.remove();
  EXPECT_EQ(editor.List1(), (rows{"00:00:00.00", "00:05:00.00", "00:10:00.00"}));
  EXPECT_EQ(editor.selected(), 0);
}

TEST_F(VisualChapters, ARowThatIsNotThereIsNotSelected) {
  vchapters editor = edit();
  editor.select(2);
  for (const int row : {-1, 3}) {
    editor.select(row);
    EXPECT_EQ(editor.selected(), 2) << row;
  }
}

TEST_F(VisualChapters, AcceptingReplacesTheDialogsTextAndStoresNothingYet) {
  vchapters editor = edit();
  editor.add(720);
  editor.accept();
  EXPECT_EQ(dialog->RichTextBox1(), "00:00:00.00\r\n00:05:00.00\r\n00:10:00.00\r\n00:12:00.00\r\n");
  EXPECT_EQ(p.chapters[0], "00:00:00.00");
  EXPECT_TRUE(dialog->accept());
  EXPECT_EQ(p.chapters[0], "00:00:00.00,00:05:00.00,00:10:00.00,00:12:00.00");
}

TEST_F(VisualChapters, ClosingWithoutAcceptLeavesTheDialogsText) {
  { edit().add(720); }
  EXPECT_EQ(dialog->RichTextBox1(), "00:00:00.00\r\n00:05:00.00\r\n00:10:00.00\r\n");
}

}  // namespace
}  // namespace corvane

#include "tools/finding_list.h"

#include "project/disc_of.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;
using place = finding_target::place;

finding found(finding_severity severity, const std::string& what,
              finding_item item = {whole::title, 1, part::video, 0}) {
  finding f;
  f.rule = "some-rule";
  f.severity = severity;
  f.item = item;
  f.found = what;
  return f;
}
finding error(const std::string& what) {
  return found(finding_severity::error, what);
}
finding warning(const std::string& what) {
  return found(finding_severity::warning, what);
}
finding note(const std::string& what) {
  return found(finding_severity::note, what);
}

std::vector<std::string> texts(const finding_list& list) {
  std::vector<std::string> all;
  for (const finding& f : list.findings())
    all.push_back(f.found);
  return all;
}

finding_list read_whole(std::vector<finding> findings) {
  return {std::move(findings), files_read::whole};
}

TEST(FindingList, ErrorsComeFirstThenWarningsEachInTheirOrder) {
  const finding_list list =
      read_whole({note("n1"), warning("w1"), error("e1"), warning("w2"), note("n2"), error("e2")});
  EXPECT_THAT(texts(list), ElementsAre("e1", "e2", "w1", "w2", "n1", "n2"));
}

TEST(FindingList, CountsNameEachSeverityThatThereIs) {
  EXPECT_EQ(read_whole({}).counts(), "");
  EXPECT_EQ(read_whole({error("e")}).counts(), "1 error");
  EXPECT_EQ(read_whole({note("n"), note("n")}).counts(), "2 notes");
  EXPECT_EQ(read_whole({warning("w"), error("e"), error("f"), note("n")}).counts(),
            "2 errors, 1 warning, 1 note");
}

TEST(FindingList, SummaryOfNothingFoundIsASentence) {
  EXPECT_EQ(read_whole({}).summary(), "Nothing was found that would spoil this disc.");
}

TEST(FindingList, SummarySaysWhenNotEverythingWasRead) {
  EXPECT_EQ(finding_list({error("e")}, files_read::whole).summary(), "1 error");
  EXPECT_EQ(finding_list({error("e")}, files_read::beginnings).summary(),
            "1 error. Only the beginnings of the files were read.");
  EXPECT_EQ(finding_list({error("e")}, files_read::some).summary(),
            "1 error. The check was stopped before its end.");
  EXPECT_EQ(finding_list({}, files_read::beginnings).summary(),
            "Nothing was found yet. Only the beginnings of the files were read.");
  EXPECT_EQ(finding_list({}, files_read::some).summary(),
            "Nothing was found before the check was stopped.");
}

TEST(FindingList, HeadlineIsWhatThereIsAndTheWorstOfIt) {
  EXPECT_EQ(
      read_whole({note("n"), warning("the sound is short"), error("the video is\nPAL")}).headline(),
      "1 error, 1 warning, 1 note: title 1, video: the video is?PAL");
  EXPECT_EQ(read_whole({warning("the sound is short")}).headline(),
            "1 warning: title 1, video: the sound is short");
}

TEST(FindingList, NotesAloneMakeNoHeadline) {
  EXPECT_EQ(read_whole({note("n")}).headline(), "");
  EXPECT_EQ(read_whole({}).headline(), "");
}

TEST(FindingList, TextHoldsAllOfEachFinding) {
  finding f = error("the video is PAL");
  f.remedy = "encode it again";
  const std::string text = read_whole({note("n"), f}).text();
  EXPECT_EQ(text, text_of(f) + "\n" + text_of(note("n")) + "\n");
  EXPECT_THAT(text, HasSubstr("encode it again"));
}

TEST(FindingList, SelectionStaysOnAFindingThatIsStillThere) {
  const finding_list before = read_whole({error("a"), error("b"), error("c")});
  EXPECT_EQ(read_whole({error("b"), error("c")}).row_instead(before, 1), 0u);
}

TEST(FindingList, SelectionGoesToTheNextFindingWhenTheSelectedOneIsRepaired) {
  const finding_list before = read_whole({error("a"), error("b"), error("c")});
  EXPECT_EQ(read_whole({error("a"), error("c")}).row_instead(before, 1), 1u);
  EXPECT_EQ(read_whole({error("a"), error("b")}).row_instead(before, 2), 1u);
  EXPECT_EQ(read_whole({}).row_instead(before, 2), std::nullopt);
  EXPECT_EQ(read_whole({error("a")}).row_instead(finding_list(), 0), 0u);
}

TEST(FindingDetails, AreLabelledAndLeaveOutWhatIsNotSaid) {
  finding f = error("the picture is 640x480");
  f.wanted = "720x480";
  f.consequence = "a distorted\tpicture";
  f.remedy = "encode it again";
  f.file = "/films/a.m2v";
  EXPECT_THAT(
      details_of(f),
      ElementsAre(finding_detail{"", "The picture is 640x480."},
                  finding_detail{"Must be", "720x480."},
                  finding_detail{"A viewer would see", "a distorted?picture."},
                  finding_detail{"What to do", "encode it again."},
                  finding_detail{"File", "/films/a.m2v"}, finding_detail{"Rule", "some-rule"}));
  EXPECT_THAT(details_of(note("x")),
              ElementsAre(finding_detail{"", "X."}, finding_detail{"Rule", "some-rule"}));
}

// Two titles and two menus.
class FindingTarget : public testing::Test {
 protected:
  static disc_title title(const std::string& video) {
    disc_title t;
    t.streams = {video, "sound.ac3"};
    return t;
  }
  static disc_menu menu(const std::string& video) {
    disc_menu m;
    m.files = {video, ""};
    return m;
  }
  FindingTarget() {
    rows_.titles = {title("a.m2v"), title("b.m2v")};
    rows_.menus = {menu("m.m2v"), menu("n.m2v")};
    examined_ = rows_;
  }
  finding_target to(finding_item item, std::optional<double> seconds = std::nullopt) const {
    finding f = found(finding_severity::error, "x", item);
    f.seconds = seconds;
    return target_of(f, examined_, rows_);
  }

  disc_description examined_, rows_;
};

TEST_F(FindingTarget, StreamsOfATitleLeadToTheTitle) {
  for (const part p : {part::whole, part::video, part::audio})
    EXPECT_EQ(to({whole::title, 2, p, 1}, 65),
              (finding_target{place::title, 2, 0, 0, std::nullopt}));
}

TEST_F(FindingTarget, ChapterLeadsToItsLineInTheChapterDialog) {
  EXPECT_EQ(to({whole::title, 1, part::chapter, 3}, 5),
            (finding_target{place::chapters, 1, 0, 3, std::nullopt}));
}

TEST_F(FindingTarget, WhatIsOfAllChaptersLeadsToTheirDialog) {
  finding f = found(finding_severity::warning, "x", {whole::title, 2, part::whole, 0});
  for (const char* const rule : {"chapter-added", "chapter-moved", "title-too-many-chapters"}) {
    f.rule = rule;
    EXPECT_EQ(target_of(f, examined_, rows_),
              (finding_target{place::chapters, 2, 0, 0, std::nullopt}));
  }
  f.rule = "chapter-number";
  f.item = {whole::menu, 1, part::button, 2};
  EXPECT_EQ(target_of(f, examined_, rows_), (finding_target{place::menu, 0, 1, 2, std::nullopt}));
}

TEST_F(FindingTarget, LanguageTagsLeadToTheirDialog) {
  finding f = found(finding_severity::error, "x", {});
  f.rule = "language-code";
  EXPECT_EQ(target_of(f, examined_, rows_),
            (finding_target{place::languages, 0, 0, 0, std::nullopt}));
}

TEST_F(FindingTarget, SubtitleLeadsToItsFileAndCue) {
  EXPECT_EQ(to({whole::title, 2, part::subtitle, 2}, 65.5),
            (finding_target{place::subtitles, 2, 0, 2, 65.5}));
  EXPECT_EQ(to({whole::title, 2, part::subtitle, 1}),
            (finding_target{place::subtitles, 2, 0, 1, std::nullopt}));
}

TEST_F(FindingTarget, ButtonLeadsToTheMenuEditorWithThatButton) {
  EXPECT_EQ(to({whole::menu, 2, part::button, 5}),
            (finding_target{place::menu, 0, 2, 5, std::nullopt}));
  EXPECT_EQ(to({whole::menu, 1, part::video, 0}),
            (finding_target{place::menu, 0, 1, 0, std::nullopt}));
}

TEST_F(FindingTarget, CommandsLeadToTheNavigationCommands) {
  EXPECT_EQ(to({whole::title, 2, part::command, 0}),
            (finding_target{place::title_command, 2, 0, 0, std::nullopt}));
  EXPECT_EQ(to({whole::disc, 0, part::command, 0}),
            (finding_target{place::first_play, 0, 0, 0, std::nullopt}));
}

TEST_F(FindingTarget, WhatIsAboutTheWholeDiscLeadsNowhere) {
  EXPECT_EQ(to({}), finding_target{});
}

TEST_F(FindingTarget, RowsThatMovedAreFoundByTheirFiles) {
  std::swap(rows_.titles[0], rows_.titles[1]);
  rows_.menus.erase(rows_.menus.begin());
  EXPECT_EQ(to({whole::title, 1, part::video, 0}).title, 2);
  EXPECT_EQ(to({whole::title, 2, part::video, 0}).title, 1);
  EXPECT_EQ(to({whole::menu, 2, part::button, 1}).menu, 1);
  EXPECT_EQ(to({whole::menu, 1, part::button, 1}), finding_target{}) << "it is gone";
}

TEST_F(FindingTarget, OneOfSeveralRowsOfTheSameFilesIsTheOneOfThatNumber) {
  rows_.titles = examined_.titles = {title("a.m2v"), title("a.m2v")};
  EXPECT_EQ(to({whole::title, 2, part::video, 0}).title, 2);
}

TEST_F(FindingTarget, NumbersThatNoTitleHasLeadNowhere) {
  for (const int number : {-1, 0, 3}) {
    EXPECT_EQ(to({whole::title, number, part::video, 0}), finding_target{});
    EXPECT_EQ(to({whole::menu, number, part::video, 0}), finding_target{});
  }
}

class SaveFindings : public testing_support::command_test {
 protected:
  void expect_file(const std::string& path) {
    ask.expect_save({"save the findings", "text file(*.txt)|*.txt", "findings.txt"}, path);
  }
  const finding_list list_ = read_whole({error("the video is PAL")});
};

TEST_F(SaveFindings, WritesThemAllAsText) {
  expect_file(folder.path("out.txt"));
  save_findings(doc, list_);
  EXPECT_EQ(folder.read("out.txt"), list_.text());
}

TEST_F(SaveFindings, AsksBeforeAFileIsReplaced) {
  folder.add("out.txt", "old");
  expect_file(folder.path("out.txt"));
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::no);
  save_findings(doc, list_);
  EXPECT_EQ(folder.read("out.txt"), "old");
  expect_file(folder.path("out.txt"));
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::yes);
  save_findings(doc, list_);
  EXPECT_EQ(folder.read("out.txt"), list_.text());
}

TEST_F(SaveFindings, TellsWhenTheFileCannotBeWritten) {
  const std::string file = folder.path("no such folder/out.txt");
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  expect_file(file);
  expect_error("The file \"" + file + "\" could not be written: " + *why + ".");
  save_findings(doc, list_);
}

TEST_F(SaveFindings, DoesNothingWhenTheUserCancels) {
  expect_file("");
  save_findings(doc, list_);
}

}  // namespace
}  // namespace corvane

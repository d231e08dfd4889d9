// Files dropped on the window: which go together, and the commands' own conversations.
#include "project/dropped_files.h"

#include "project/dropped_match.h"
#include "project/project_file.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::nav_block;
using testing_support::rows;

class DroppedFiles : public testing_support::command_test {
 protected:
  std::string native(const std::string& name) const { return folder.path(name); }
  /// Makes the files and gives their native paths.
  rows add_all(const rows& names) {
    rows paths;
    for (const std::string& name : names)
      paths.push_back(folder.add(name));
    return paths;
  }
  void expect_other_kinds(const std::string& list) {
    expect_refusal(
        "These files are neither streams nor a project:\r\n" + list +
        "Video (*.m2v, *.m1v, *.mpv), video with NAV packets (*.vob, *.mpg, *.mpeg), audio "
        "(*.ac3, *.mp2, *.mpa) and one project file (*.cvp) can be dropped here.  How other films "
        "and sounds are made into those, the user guide (F1) says under \"What Corvane takes\".");
  }
};

TEST_F(DroppedFiles, FilesOfOtherKindsAreNamedWithWhatTheyAre) {
  using namespace std::string_literals;
  const std::string film = folder.add("holiday.mp4", "\0\0\0\x20"s + "ftypisom");
  const std::string text = folder.add("notes.txt");
  expect_other_kinds(film + ": an MP4 film\r\n" + text + "\r\n");
  drop_files(doc, {film, text});
  EXPECT_TRUE(p.List1.empty());
}

TEST_F(DroppedFiles, FilmsAmongThemAreToImportAndStreamsAreNot) {
  using namespace std::string_literals;
  const std::string film = folder.add("holiday.mp4", "\0\0\0\x20"s + "ftypisom");
  const std::string recording = folder.add("camera.dat", "\0\0\1\xBA\x44"s + nav_block());
  EXPECT_EQ(films_to_import({folder.add("notes.txt"), film, folder.add("a.m2v"), recording,
                             folder.add("a.vob", nav_block()), folder.path("none.mp4")}),
            (rows{film, recording}));
}

TEST_F(DroppedFiles, PicturesAmongThemAreForStills) {
  using namespace std::string_literals;
  const std::string photo = folder.add("photo.jpg", "\xFF\xD8\xFF\xE0");
  const std::string drawing = folder.add("drawing", "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(pictures_for_stills({folder.add("notes.jpg", "notes"), photo, folder.add("a.m2v"),
                                 drawing, folder.path("none.png")}),
            (rows{photo, drawing}));
}

TEST_F(DroppedFiles, VideoTakesTheAudioOfItsName) {
  drop_files(doc, add_all({"movie.ac3", "movie.m2v"}));
  EXPECT_EQ(p.List1, rows{"title1:movie.m2v/movie.ac3"});
  EXPECT_EQ(p.List11, rows{folder.stored("movie.m2v") + "/" + folder.stored("movie.ac3")});
}

TEST_F(DroppedFiles, PlainlyNamedAudioIsFirstAndTheOthersFollow) {
  p.selected = -1;
  drop_files(doc, add_all({"movie.de.ac3", "movie.m2v", "movie.fr.mp2", "movie.ac3"}));
  EXPECT_EQ(p.List1, rows{"title1:movie.m2v/movie.ac3/movie.de.ac3/movie.fr.mp2"});
  EXPECT_EQ(p.selected, -1);
}

TEST_F(DroppedFiles, EachVideoTakesItsOwnAndTheLongestStemWins) {
  drop_files(doc, add_all({"a.m2v", "a.b.m2v", "a.b.ac3", "a.c.ac3", "a.b.d.ac3"}));
  EXPECT_EQ(p.List1, (rows{"title1:a.m2v/a.c.ac3", "title2:a.b.m2v/a.b.ac3/a.b.d.ac3"}));
}

TEST_F(DroppedFiles, TheLongestStemWinsWhicheverVideoComesFirst) {
  drop_files(doc, add_all({"a.b.m2v", "a.m2v", "a.b.ac3", "a.ac3"}));
  EXPECT_EQ(p.List1, (rows{"title1:a.b.m2v/a.b.ac3", "title2:a.m2v/a.ac3"}));
}

TEST_F(DroppedFiles, AudioOfAnotherFolderDoesNotGoWithAVideo) {
  const dropped_set set =
      sort_dropped(add_all({join_path("one", "movie.m2v"), join_path("two", "movie.ac3"),
                            join_path("one", "other.m2v")}));
  ASSERT_EQ(set.titles.size(), 2u);
  EXPECT_TRUE(set.titles[0].audio.empty());
  EXPECT_EQ(set.audio, rows{native(join_path("two", "movie.ac3"))});
}

TEST_F(DroppedFiles, AudioInAFolderNamedLikeTheVideoDoesNotGoWithIt) {
  const dropped_set set =
      sort_dropped(add_all({"movie.m2v", "b.m2v", join_path("movie.x", "a.ac3")}));
  ASSERT_EQ(set.titles.size(), 2u);
  EXPECT_TRUE(set.titles[0].audio.empty());
}

TEST_F(DroppedFiles, ANameThatOnlyBeginsLikeTheVideoDoesNotGoWithIt) {
  const dropped_set set = sort_dropped(add_all({"movie.m2v", "b.m2v", "movie2.ac3"}));
  EXPECT_TRUE(set.titles[0].audio.empty());
  EXPECT_EQ(set.audio.size(), 1u);
}

TEST_F(DroppedFiles, OneVideoAloneTakesAllAudio) {
  drop_files(doc, add_all({"english.ac3", "movie.m2v", "french.mp2"}));
  EXPECT_EQ(p.List1, rows{"title1:movie.m2v/english.ac3/french.mp2"});
}

TEST_F(DroppedFiles, AudioIsAskedForWhereNoneWasDropped) {
  const rows files = add_all({"movie.m2v"});
  expect_audio(folder.add("elsewhere.ac3"));
  drop_files(doc, files);
  EXPECT_EQ(p.List1, rows{"title1:movie.m2v/elsewhere.ac3"});
}

TEST_F(DroppedFiles, CancellingThatQuestionSkipsThisVideoOnly) {
  const rows files = add_all({"a.m2v", "b.m2v", "b.ac3"});
  expect_audio("");
  drop_files(doc, files);
  EXPECT_EQ(p.List1, rows{"title1:b.m2v/b.ac3"});
}

TEST_F(DroppedFiles, ProgramStreamIsATitleOfItsOwn) {
  drop_files(doc, {folder.add("a.vob", nav_block())});
  EXPECT_EQ(p.List1, rows{"title1:a.vob"});
}

TEST_F(DroppedFiles, ProgramStreamWithoutNavPacketsIsRefusedByTheCommand) {
  expect_error("NAV packets are not detected in a.vob.  Please demultiplex.");
  drop_files(doc, {folder.add("a.vob")});
  EXPECT_TRUE(p.List1.empty());
}

TEST_F(DroppedFiles, ProgramStreamsThatAreRefusedAreGivenForAnImport) {
  const std::string packs("\0\0\1\xBA\x44\0\4\0\4\1", 10);
  const std::string refused = folder.add("a.mpg", packs);
  expect_error("NAV packets are not detected in a.mpg.  Please demultiplex.");
  expect_error("NAV packets are not detected in b.mpg.  Please demultiplex.");
  EXPECT_EQ(drop_files(doc, {refused, folder.add("b.mpg"), folder.add("c.mpg", nav_block())}),
            std::vector<std::string>{refused});
  EXPECT_EQ(p.List1, rows{"title1:c.mpg"});
}

TEST_F(DroppedFiles, AudioForAProgramStreamIsRefusedOnce) {
  expect_refusal(
      "Unable to add audio streams to already muxed files, please de-mux if you wish to add an "
      "audio stream.");
  drop_files(doc, {folder.add("a.vob", nav_block()), folder.add("a.ac3"), folder.add("a.de.ac3")});
  EXPECT_EQ(p.List1, rows{"title1:a.vob"});
}

TEST_F(DroppedFiles, AudioAloneIsAddedToTheSelectedTitle) {
  add_files_and_title({"a.m2v", "a.ac3"});
  p.selected = 0;
  drop_files(doc, add_all({"x.ac3", "y.mp2"}));
  EXPECT_EQ(p.List1, rows{"title1:a.m2v/a.ac3/x.ac3/y.mp2"});
  EXPECT_EQ(p.selected, 0);
}

TEST_F(DroppedFiles, AudioAloneWithoutASelectionIsRefusedOnce) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_refusal("Please select a title to add an audio stream to.");
  drop_files(doc, add_all({"x.ac3", "y.mp2"}));
}

TEST_F(DroppedFiles, NinthAudioStreamIsRefusedOnce) {
  expect_refusal("Only eight audio streams allowed.");
  drop_files(doc, add_all({"m.m2v", "1.ac3", "2.ac3", "3.ac3", "4.ac3", "5.ac3", "6.ac3", "7.ac3",
                           "8.ac3", "9.ac3", "10.ac3"}));
  EXPECT_EQ(p.List1, rows{"title1:m.m2v/1.ac3/2.ac3/3.ac3/4.ac3/5.ac3/6.ac3/7.ac3/8.ac3"});
}

TEST_F(DroppedFiles, UnmatchedAudioOfSeveralVideosGoesToTheSelectedTitle) {
  add_files_and_title({"s.m2v", "s.ac3"});
  p.selected = 0;
  drop_files(doc, add_all({"a.m2v", "a.ac3", "b.m2v", "b.ac3", "left.ac3"}));
  EXPECT_EQ(p.List1,
            (rows{"title1:s.m2v/s.ac3/left.ac3", "title2:a.m2v/a.ac3", "title3:b.m2v/b.ac3"}));
}

TEST_F(DroppedFiles, ProjectFileIsLoaded) {
  folder.add("a.vob");
  project one;
  add_title(one, folder.stored("a.vob"));
  drop_files(doc, {folder.add("disc.cvp", project_text(one))});
  EXPECT_EQ(p.List1, rows{"title1:a.vob"});
  EXPECT_EQ(p.saved, 1);
}

TEST_F(DroppedFiles, ProjectFileAsksBeforeItReplacesTitles) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_loss("overwrite currect project?", icon::information, answer::cancel);
  drop_files(doc, {folder.add("disc.cvp", project_text(project()))});
  EXPECT_EQ(p.List1.size(), 1u);
}

TEST_F(DroppedFiles, StreamsDroppedWithAProjectThatIsNotLoadedAreNotAdded) {
  add_files_and_title({"a.m2v", "a.ac3"});
  expect_loss("overwrite currect project?", icon::information, answer::cancel);
  std::vector<std::string> dropped = add_all({"b.m2v", "b.ac3"});
  dropped.push_back(folder.add("disc.cvp", project_text(project())));
  drop_files(doc, dropped);
  EXPECT_EQ(p.List1, rows{"title1:a.m2v/a.ac3"});
}

TEST_F(DroppedFiles, HandEditedXmlIsAskedAboutOnce) {
  p.customxml = "<a/>";
  expect_guard(answer::ok);
  drop_files(doc, add_all({"a.m2v", "a.ac3", "b.m2v", "b.ac3"}));
  EXPECT_EQ(p.List1.size(), 2u);
  EXPECT_EQ(p.customxml, "");
}

TEST_F(DroppedFiles, HandEditedXmlThatIsKeptStopsTheStreams) {
  p.customxml = "<a/>";
  expect_guard(answer::cancel);
  drop_files(doc, add_all({"a.m2v", "a.ac3", "b.m2v", "b.ac3"}));
  EXPECT_TRUE(p.List1.empty());
}

TEST_F(DroppedFiles, OtherKindsAndFoldersAreNamedInOneMessage) {
  ASSERT_FALSE(make_folders(native("folder.m2v")));
  const std::string text = folder.add("a.txt");
  const std::string gone = native("gone.m2v");
  expect_other_kinds(text + "\r\n" + native("folder.m2v") + "\r\n" + gone + "\r\n");
  drop_files(doc, {text, native("folder.m2v"), folder.add("m.m2v"), folder.add("m.ac3"), gone});
  EXPECT_EQ(p.List1, rows{"title1:m.m2v/m.ac3"});
}

TEST_F(DroppedFiles, SecondProjectFileIsNotLoaded) {
  const std::string first = folder.add("1.cvp", project_text(project()));
  const std::string second = folder.add("2.cvp", project_text(project()));
  expect_other_kinds(second + "\r\n");
  drop_files(doc, {first, second});
}

TEST_F(DroppedFiles, ManyOtherFilesAreCountedAfterTheTenth) {
  rows files;
  std::string list;
  for (int i = 0; i < 25; ++i) {
    files.push_back(folder.add(std::to_string(i) + ".txt"));
    if (i < 10)
      list += files.back() + "\r\n";
  }
  expect_other_kinds(list + "and 15 more\r\n");
  drop_files(doc, files);
}

TEST_F(DroppedFiles, TenOtherFilesAreAllNamed) {
  rows files;
  std::string list;
  for (int i = 0; i < 10; ++i) {
    files.push_back(folder.add(std::to_string(i) + ".txt"));
    list += files.back() + "\r\n";
  }
  expect_other_kinds(list);
  drop_files(doc, files);
}

TEST_F(DroppedFiles, NothingDroppedDoesNothing) {
  p.customxml = "<a/>";
  drop_files(doc, {});
}

}  // namespace
}  // namespace corvane

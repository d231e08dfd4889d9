// Loading: the conversation, what it replaces, and files that are missing.
#include "formats/text.h"
#include "project/edited_xml.h"
#include "project/project_file.h"
#include "sample_project.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::contents_of;
using testing_support::rows;
using testing_support::sample_project;
using testing_support::sample_project_text;

class LoadProject : public testing_support::command_test {
 protected:
  /// The sample with its files, as a file in the folder; gives its native path.
  std::string add_sample() {
    for (const char* const name : {"movie.m2v", "english.ac3",
                                   "fran\xC3\xA7"
                                   "ais.mp2",
                                   "vts_01_1.vob", "intro.m2v", "intro.ac3", "still.m2v", "new.m2v",
                                   "select.bmp", "movie.srt"})
      folder.add(name, "12345");
    return folder.add("disc.cvp", sample_project_text(root()));
  }
  std::string root() const { return stored_from_native(folder.path()); }

  void expect_load_dialog(const std::string& native) {
    ask.expect_open({"load corvane project", testing_support::cvp_filter, ""}, native);
  }
  void expect_replace_question(answer reply) {
    expect_loss("overwrite currect project?", icon::information, reply);
  }
  void take_away(const std::string& name) { ASSERT_FALSE(remove_all(folder.path(name))); }
};

TEST_F(LoadProject, FillsTheStoresAndWhatTheWindowShows) {
  expect_load_dialog(add_sample());
  loadproject_command(doc);
  const project sample = sample_project(root());
  EXPECT_EQ(contents_of(p), contents_of(sample));
  EXPECT_EQ(p.List1, sample.List1);
  EXPECT_EQ(p.Frame1, "2 titles loaded");
  EXPECT_EQ(p.dvdsizetext, "2 titles\r\n3 menus\r\n0.000 gig total");
  EXPECT_EQ(p.saved, 1);
  EXPECT_EQ(p.selected, -1);
  EXPECT_FALSE(p.Comboregion_enabled);
}

TEST_F(LoadProject, AByteOrderMarkIsNoPartOfTheFile) {
  add_sample();
  const std::string marked = folder.add("marked.cvp", "\xEF\xBB\xBF" + folder.read("disc.cvp"));
  EXPECT_TRUE(loadprojectf(doc, marked));
  EXPECT_EQ(contents_of(p), contents_of(sample_project(root())));
  EXPECT_EQ(project_text(p), folder.read("disc.cvp"));
}

TEST_F(LoadProject, WhatIsNotUtf8IsReadAsWindows1252AndThatIsTold) {
  add_sample();
  const std::string old =
      folder.add("old.cvp", replace_all(folder.read("disc.cvp"), "\xC3\xA7", "\xE7"));
  ask.expect(
      box("\"" + old +
              "\" is not UTF-8 text.  It was read as Windows-1252, as older programs and "
              "editors write it; please look whether all names are right.  Saved, it will be "
              "UTF-8.",
          icon::information));
  EXPECT_TRUE(loadprojectf(doc, old));
  EXPECT_EQ(contents_of(p), contents_of(sample_project(root())));
}

TEST_F(LoadProject, BytesThatWindows1252LacksAreRefused) {
  add_sample();
  const std::string file =
      folder.add("bad.cvp", replace_all(folder.read("disc.cvp"), "\xC3\xA7", "\x81"));
  expect_error("\"" + file +
               "\" is not a project file that can be loaded: it is neither UTF-8 text nor "
               "Windows-1252 text.");
  EXPECT_FALSE(loadprojectf(doc, file));
}

TEST_F(LoadProject, ABlankLastLineStaysInTheFileAndIsNoHandEditedXml) {
  add_sample();
  project plain = sample_project(root());
  plain.customxml.clear();
  const std::string file = folder.add("blank.cvp", project_text(plain) + "\r\n \t\r\n");
  EXPECT_TRUE(loadprojectf(doc, file));
  EXPECT_EQ(edited_xml(p), "");
  EXPECT_EQ(custom(doc), 1) << "without a question";
  EXPECT_EQ(project_text(p), folder.read("blank.cvp"));
  p.customxml += "<a/>";
  EXPECT_EQ(edited_xml(p), p.customxml);
}

TEST_F(LoadProject, NoTitleIsSelectedAfterALoad) {
  p.selected = 1;
  EXPECT_TRUE(loadprojectf(doc, add_sample()));
  EXPECT_EQ(p.selected, -1);
}

TEST_F(LoadProject, LoadThenSaveGivesTheSameBytes) {
  EXPECT_TRUE(loadprojectf(doc, add_sample()));
  EXPECT_EQ(project_text(p), folder.read("disc.cvp"));
}

TEST_F(LoadProject, CancelledDialogDoesNothing) {
  expect_load_dialog("");
  loadproject_command(doc);
  EXPECT_EQ(p.saved, 0);
}

TEST_F(LoadProject, TitlesAreReplacedOnlyOnOk) {
  const std::string row = add_files_and_title({"a.m2v", "a.ac3"});
  expect_replace_question(answer::cancel);
  loadproject_command(doc);
  EXPECT_EQ(p.List11, rows{row});

  expect_replace_question(answer::ok);
  expect_load_dialog(add_sample());
  loadproject_command(doc);
  EXPECT_EQ(p.List11, sample_project(root()).List11);
}

TEST_F(LoadProject, MenusAloneAreReplacedUnasked) {
  p.menulist = {"C:\\m.m2v/"};
  expect_load_dialog(add_sample());
  loadproject_command(doc);
  EXPECT_EQ(p.menulist, sample_project(root()).menulist);
}

TEST_F(LoadProject, EverythingOfTheOldProjectGoesButItsLanguageTags) {
  p = testing_support::random_project(7);
  p.languagetags = {"Audio tag:\tolder od"};
  EXPECT_TRUE(loadprojectf(doc, add_sample()));
  loaded_project expected = contents_of(sample_project(root()));
  expected.languagetags = {"Audio tag:\tolder od", "Audio tag:\tenglish en",
                           "Subtitle tag:\tgerman de"};
  EXPECT_EQ(contents_of(p), expected);
}

TEST_F(LoadProject, LoadingTwiceDoublesTheLanguageTags) {
  const std::string file = add_sample();
  EXPECT_TRUE(loadprojectf(doc, file));
  EXPECT_TRUE(loadprojectf(doc, file));
  EXPECT_EQ(p.languagetags.size(), 4u);
}

TEST_F(LoadProject, MenusWithoutTitlesLeaveTheRegionSelectable) {
  project menus;
  folder.add("m.m2v");
  menus.menulist = {folder.stored("m.m2v") + "/"};
  menus.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t1"};
  menus.globalregion = "PAL";
  const std::string file = folder.add("menus.cvp", project_text(menus));
  EXPECT_TRUE(loadprojectf(doc, file));
  EXPECT_TRUE(p.Comboregion_enabled);
  EXPECT_EQ(p.globalregion, "PAL");
}

TEST_F(LoadProject, AFrozenRegionStaysFrozen) {
  p.Comboregion_enabled = false;
  EXPECT_TRUE(loadprojectf(doc, folder.add("empty.cvp", project_text(project()))));
  EXPECT_FALSE(p.Comboregion_enabled);
}

TEST_F(LoadProject, RegionOfTheFileIsNotRemembered) {
  EXPECT_TRUE(loadprojectf(doc, add_sample()));
  EXPECT_EQ(p.globalregion, "PAL");
  EXPECT_EQ(prefs.get("dvdregion"), "");
  EXPECT_EQ(prefs.get("jumptable"), "");
}

TEST_F(LoadProject, VersionBefore0996IsRefusedWithItsNumber) {
  const std::pair<const char*, const char*> table[] = {{"Corvane 0.995 - 1/2/2005", " 0.995"},
                                                       {"Corvane 0.99", " 0.99"},
                                                       {"Corvane nan", " 0"},
                                                       {"Corvane -1", "-1"},
                                                       {"something else", " 0"},
                                                       {"", " 0"}};
  const project before = p = sample_project("C:\\gone");
  for (const auto& [line, number] : table) {
    const std::string file = folder.add("old.cvp", std::string(line) + "\r\n***\r\n");
    p.List11.clear();  // nothing is missing when the size is refreshed
    p.menulist.clear();
    p.dvdsizetext = "as it was";
    expect_refusal("Sorry, but this project file is from Corvane" + std::string(number) +
                   " and is incompatible with the lastest version.");
    EXPECT_FALSE(loadprojectf(doc, file)) << line;
    EXPECT_EQ(p.dvdsizetext, "2 titles\r\n0 menus\r\n0.000 gig total");
    EXPECT_EQ(p.List1, before.List1);
    EXPECT_EQ(p.chapters, before.chapters);
    EXPECT_EQ(p.customxml, before.customxml);
    EXPECT_EQ(p.saved, 0);
  }
}

TEST_F(LoadProject, Version0996Loads) {
  std::string text = project_text(project());
  text.replace(text.find("0.997"), 5, "0.996");
  EXPECT_TRUE(loadprojectf(doc, folder.add("disc.cvp", text)));
  EXPECT_EQ(p.saved, 1);
}

TEST_F(LoadProject, AMissingAudioFileIsNamedAndTheProjectEndsWithoutTitles) {
  const std::string file = add_sample();
  take_away("english.ac3");
  expect_missing(folder.path("english.ac3"));
  EXPECT_FALSE(loadprojectf(doc, file));
  EXPECT_TRUE(p.List1.empty());
  EXPECT_TRUE(p.List11.empty());
  EXPECT_EQ(p.Frame1, "0 titles loaded");
}

TEST_F(LoadProject, WhatATakenBackLoadEmptiesAndWhatItLeaves) {
  const std::string file = add_sample();
  take_away("vts_01_1.vob");
  expect_missing(folder.path("vts_01_1.vob"));
  EXPECT_FALSE(loadprojectf(doc, file));
  const project sample = sample_project(root());
  for (const rows* list : {&p.List1, &p.List11, &p.chapters, &p.menulist, &p.moremenuoptions,
                           &p.postinfo, &p.subtitledata, &p.subtitleoptions})
    EXPECT_TRUE(list->empty());
  EXPECT_EQ(p.firstplay, "");
  EXPECT_EQ(p.delay, sample.delay);
  EXPECT_EQ(p.languagetags, sample.languagetags);
  EXPECT_EQ(p.customxml, sample.customxml);
  EXPECT_EQ(p.menubuttons, sample.menubuttons);
  EXPECT_EQ(p.globalregion, "PAL");
  EXPECT_TRUE(p.isocreate);
  EXPECT_EQ(p.saved, 1);
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n0.000 gig total");
}

TEST_F(LoadProject, EveryMissingFileIsNamedInTheOrderOfTheFile) {
  const std::string file = add_sample();
  const char* const all[] = {"movie.m2v",  "english.ac3", "fran\u00E7ais.mp2", "vts_01_1.vob",
                             "intro.m2v",  "intro.ac3",   "still.m2v",         "new.m2v",
                             "select.bmp", "movie.srt"};
  for (const char* const name : all) {
    take_away(name);
    expect_missing(folder.path(name));
  }
  EXPECT_FALSE(loadprojectf(doc, file));
}

TEST_F(LoadProject, AFolderInPlaceOfAStreamIsMissing) {
  const std::string file = add_sample();
  take_away("movie.m2v");
  ASSERT_FALSE(make_folders(folder.path("movie.m2v")));
  expect_missing(folder.path("movie.m2v"));
  EXPECT_FALSE(loadprojectf(doc, file));
}

TEST_F(LoadProject, AnEmptyStreamPathIsMissing) {
  project half;
  add_title(half, folder.stored("a.m2v") + "/");
  folder.add("a.m2v");
  expect_missing("");
  EXPECT_FALSE(loadprojectf(doc, folder.add("half.cvp", project_text(half))));
}

TEST_F(LoadProject, MoreThanAHundredMissingFilesAreSummedUp) {
  project big;
  for (int i = 0; i < 150; ++i)
    add_title(big, folder.stored("gone" + std::to_string(i) + ".vob"));
  for (int i = 0; i < 100; ++i)
    expect_missing(folder.path("gone" + std::to_string(i) + ".vob"));
  expect_error("50 more files appear to be missing");
  EXPECT_FALSE(loadprojectf(doc, folder.add("big.cvp", project_text(big))));
  EXPECT_TRUE(p.List11.empty());
}

TEST_F(LoadProject, ADamagedFileIsRefusedWithItsReasonAndChangesNothing) {
  p = testing_support::random_project(3);
  p.saved = 1;
  const project before = p;
  std::string text = sample_project_text("C:\\dvd");
  text.replace(text.find("PAL\r\n"), 5, "SECAM\r\n");
  const std::string file = folder.add("damaged.cvp", text);
  expect_error("\"" + file +
               "\" is not a project file that can be loaded: the region is \"SECAM\".");
  EXPECT_FALSE(loadprojectf(doc, file));
  EXPECT_EQ(contents_of(p), contents_of(before));
  EXPECT_EQ(p.List1, before.List1);
  EXPECT_EQ(p.dvdsizetext, before.dvdsizetext);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(LoadProject, WhatIsNoFileIsRefusedWithTheReason) {
  const std::string gone = folder.path("gone.cvp");
  expect_error("\"" + gone +
               "\" is not a project file that can be loaded: the file does not exist.");
  EXPECT_FALSE(loadprojectf(doc, gone));
  expect_error("\"" + folder.path() +
               "\" is not a project file that can be loaded: it is a folder, not a file.");
  EXPECT_FALSE(loadprojectf(doc, folder.path()));
  EXPECT_EQ(p.saved, 0);
}

TEST(CommandLine, EveryDoubleQuoteIsRemoved) {
  EXPECT_EQ(path_from_command_line("\"C:\\my dvd\\a.cvp\""), "C:\\my dvd\\a.cvp");
  EXPECT_EQ(path_from_command_line("a\"\"b\""), "ab");
  EXPECT_EQ(path_from_command_line(""), "");
}

}  // namespace
}  // namespace corvane

#include "tools/subtitles.h"

#include "project/subtitle_file.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;

const char* const ntsc_row = "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1";
const char* const pal_row = "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1";

class SubtitlesDialog : public testing_support::command_test {
 protected:
  SubtitlesDialog() {
    add_files_and_title({"one.m2v", "one.ac3"});
    add_files_and_title({"two.m2v", "two.ac3"});
    p.selected = 1;
    p.saved = 1;
  }

  static font_list fonts() {
    const std::string root = native_style() == path_style::windows ? "C:\\fonts" : "/fonts";
    std::vector<installed_font> installed;
    for (const auto& [name, file] : std::vector<std::pair<std::string, std::string>>{
             {"Times New Roman", "times.TTF"}, {"Arial", "arial.ttf"}, {"Fixed", "vgafix.fon"}})
      installed.push_back({name, file, join_path(root, file)});
    return font_list(installed);
  }
  Subtitles edit() {
    auto dialog = Subtitles::open(doc, fonts());
    EXPECT_TRUE(dialog);
    return *dialog;
  }
  void expect_file(const std::string& native) {
    ask.expect_open({"open compatible text subtitles",
                     "text subtitles(*.sub, *.srt, *.ssa, *.smi, *.rt, *.txt, *.aqt, *.jss, "
                     "*.js)|*.sub; *.srt; *.ssa; *.smi; *.rt; *.txt; *.aqt; *.jss; *.js",
                     ""},
                    native);
  }
  void add(Subtitles& dialog, const std::string& name) {
    expect_file(folder.add(name));
    dialog.add_file();
  }
  /// "Read it as UTF-8 instead of ISO-8859-1?", which Enter answers with yes.
  void expect_question(const std::string& text, answer reply) {
    message_box question{text, icon::exclamation, buttons::yes_no, "Corvane"};
    question.enter_answers_yes = true;
    ask.expect(question, reply);
  }
  std::string& files() { return p.subtitledata[1]; }
  std::string& options() { return p.subtitleoptions[1]; }
};

TEST_F(SubtitlesDialog, TellsTheFilesForThePreview) {
  p.globalregion = "PAL";
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.file(), std::nullopt);
  EXPECT_EQ(dialog.video(), folder.path("two.m2v"));
  EXPECT_EQ(dialog.region(), "PAL");
  add(dialog, "one.srt");
  add(dialog, "two.srt");
  EXPECT_EQ(dialog.file(), folder.path("two.srt"));
  dialog.select(0);
  EXPECT_EQ(dialog.file(), folder.path("one.srt"));
  dialog.reset();
  EXPECT_EQ(dialog.file(), std::nullopt);
}

// Opening ----------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, WithoutATitleSelectedIsRefused) {
  p.selected = -1;
  expect_refusal("Please select a title to add a subtitle to.");
  EXPECT_FALSE(Subtitles::open(doc, fonts()));
}

TEST_F(SubtitlesDialog, HandEditedXmlStaysWhenTheUserKeepsIt) {
  p.customxml = "<dvdauthor/>";
  p.selected = -1;  // is not looked at
  expect_guard(answer::cancel);
  EXPECT_FALSE(Subtitles::open(doc, fonts()));
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SubtitlesDialog, HandEditedXmlIsAskedAboutBeforeTheTitle) {
  p.customxml = "<dvdauthor/>";
  p.selected = -1;
  expect_guard(answer::ok);
  expect_refusal("Please select a title to add a subtitle to.");
  EXPECT_FALSE(Subtitles::open(doc, fonts()));
  EXPECT_EQ(p.customxml, "");
}

TEST_F(SubtitlesDialog, HandEditedXmlGoesWhenTheUserAgrees) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  edit();
  EXPECT_EQ(p.customxml, "");
}

TEST_F(SubtitlesDialog, ForAMuxedTitleIsRefused) {
  add_title(p, folder.stored("ready.vob"));
  p.selected = 2;
  expect_refusal(
      "Unable to add subtitles to already muxed files, please de-mux if you wish to add "
      "subtitles.");
  EXPECT_FALSE(Subtitles::open(doc, fonts()));
}

TEST_F(SubtitlesDialog, OfATitleWithoutSubtitlesShowsNoneAndItsSettings) {
  const Subtitles dialog = edit();
  EXPECT_EQ(dialog.label(), "Subtitles for: title2:two.m2v/two.ac3");
  EXPECT_EQ(dialog.list1(), rows{"<none>"});
  EXPECT_EQ(dialog.selected(), 0);
  EXPECT_EQ(dialog.suboptions(), rows{ntsc_row});
  EXPECT_EQ(dialog.shown(), parse_subtitle_settings(ntsc_row));
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SubtitlesDialog, ShowsFileNamesWithoutFoldersAndTheFirstFilesSettings) {
  files() = "\\media\\english.srt/\\more\\deutsch.sub";
  options() = "left,top,1,2,3,4,5,b.ttf,6,7,8,c|right,center,9,8,7,6,5,a.ttf,4,3,2,d|";
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.list1(), (rows{"english.srt", "deutsch.sub"}));
  EXPECT_EQ(dialog.shown(), parse_subtitle_settings("left,top,1,2,3,4,5,b.ttf,6,7,8,c"));
  dialog.select(1);
  EXPECT_EQ(dialog.selected(), 1);
  EXPECT_EQ(dialog.shown(), parse_subtitle_settings("right,center,9,8,7,6,5,a.ttf,4,3,2,d"));
  for (const int row : {-1, 2}) {
    dialog.select(row);
    EXPECT_EQ(dialog.selected(), 1) << row;
  }
}

TEST_F(SubtitlesDialog, OffersThreeAlignmentsEachThreeRatesAnd23CharacterSets) {
  EXPECT_EQ(halign_items, (std::array<std::string_view, 3>{"left", "center", "right"}));
  EXPECT_EQ(valign_items, (std::array<std::string_view, 3>{"top", "center", "bottom"}));
  EXPECT_EQ(mfps_items, (std::array<std::string_view, 3>{"23.976", "25", "29.97"}));
  EXPECT_EQ(charact_items.size(), 23u);
  EXPECT_EQ(charact_items[3], "ISO-8859-5");
  EXPECT_EQ(charact_items[11], "KOI8-R");
  EXPECT_EQ(charact_items[15], "CP1250");
  EXPECT_EQ(charact_items[22], "BIG5-HKSCS");
}

// Files ------------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, OneFileOfAFreshNtscTitle) {
  Subtitles dialog = edit();
  add(dialog, "english.srt");
  dialog.accept();
  EXPECT_EQ(files(), folder.stored("english.srt"));
  EXPECT_EQ(options(), std::string(ntsc_row) + "|");
  EXPECT_EQ(dialog.list1(), rows{"english.srt"});
  EXPECT_EQ(p.subtitledata[0], "<none>");
}

TEST_F(SubtitlesDialog, OneFileOfAFreshPalTitle) {
  p.globalregion = "PAL";
  add_files_and_title({"three.m2v", "three.ac3"});
  p.selected = 2;
  Subtitles dialog = edit();
  add(dialog, "english.srt");
  dialog.accept();
  EXPECT_EQ(p.subtitleoptions[2], std::string(pal_row) + "|");
}

TEST_F(SubtitlesDialog, TheSecondFilesSettingsStartAsACopyOfTheFirstsCurrentOnes) {
  Subtitles dialog = edit();
  add(dialog, "english.srt");
  dialog.change(subtitle_field::left_margin, "99");
  add(dialog, "deutsch.srt");
  EXPECT_EQ(dialog.selected(), 1);
  dialog.change(subtitle_field::left_margin, "11");  // the added one's
  dialog.accept();
  EXPECT_EQ(files(), folder.stored("english.srt") + "/" + folder.stored("deutsch.srt"));
  EXPECT_EQ(options(),
            "center,bottom,99,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|"
            "center,bottom,11,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|");
}

TEST_F(SubtitlesDialog, AUtf8FileIsAskedAboutAndYesMakesItItsCharacterSet) {
  Subtitles dialog = edit();
  add(dialog, "plain.srt");
  const std::string accents = folder.add("accents.srt", "1\n00:00:01,000 --> x\nCaf\xC3\xA9\n");
  expect_file(accents);
  expect_question("\"" + accents + "\" is UTF-8 text.  Read it as UTF-8 instead of ISO-8859-1?",
                  answer::yes);
  dialog.add_file();
  EXPECT_EQ(dialog.suboptions(), rows({ntsc_row, std::string(ntsc_row).replace(55, 10, "UTF-8")}));
  EXPECT_EQ(dialog.shown()[subtitle_field::character_set], "UTF-8");
  dialog.select(0);
  EXPECT_EQ(dialog.shown()[subtitle_field::character_set], "ISO-8859-1");
}

TEST_F(SubtitlesDialog, TheFirstFilesSetIsShownAtOnceWhenItBecomesUtf8) {
  Subtitles dialog = edit();
  const std::string file = folder.add("a.srt",
                                      "\xEF\xBB\xBF"
                                      "1\n00:00:01 --> x\nCaf\xC3\xA9\n");
  expect_file(file);
  expect_question("\"" + file + "\" is UTF-8 text.  Read it as UTF-8 instead of ISO-8859-1?",
                  answer::yes);
  dialog.add_file();
  EXPECT_EQ(dialog.shown()[subtitle_field::character_set], "UTF-8");
}

TEST_F(SubtitlesDialog, AUtf8FileIsAskedAboutWhateverTheSetThatStands) {
  options() = std::string(ntsc_row).replace(55, 10, "SHIFT_JIS") + "|";
  Subtitles dialog = edit();
  const std::string file = folder.add("a.srt", "1\n00:00:01 --> x\nCaf\xC3\xA9\n");
  expect_file(file);
  expect_question("\"" + file + "\" is UTF-8 text.  Read it as UTF-8 instead of SHIFT_JIS?",
                  answer::no);
  dialog.add_file();
  EXPECT_EQ(dialog.shown()[subtitle_field::character_set], "SHIFT_JIS");
}

TEST_F(SubtitlesDialog, AFileThatIsReadAsUtf8ByItsNameIsNotAskedAbout) {
  Subtitles dialog = edit();
  expect_file(folder.add("a.utf8", "1\n00:00:01 --> x\nCaf\xC3\xA9\n"));
  dialog.add_file();
  EXPECT_EQ(dialog.suboptions(), rows({ntsc_row}));
}

TEST_F(SubtitlesDialog, WithNoTheCharacterSetStays) {
  Subtitles dialog = edit();
  const std::string file = folder.add("a.srt", std::string("\xFF\xFE"
                                                           "1\0\n\0",
                                                           6));
  expect_file(file);
  expect_question("\"" + file + "\" is UTF-16 text.  Read it as UTF-16 instead of ISO-8859-1?",
                  answer::no);
  dialog.add_file();
  EXPECT_EQ(dialog.suboptions(), rows({ntsc_row}));
  EXPECT_EQ(files(), stored_from_native(file));
}

TEST_F(SubtitlesDialog, OffersTheSetThatTheSelectedFileTellsBelowThe23) {
  const std::vector<std::string> the_23(charact_items.begin(), charact_items.end());
  const auto with = [&the_23](const char* set) {
    std::vector<std::string> all = the_23;
    all.emplace_back(set);
    return all;
  };
  folder.add("plain.srt", "1\n00:00:01,000 --> x\nCafe\n");
  folder.add("latin.srt", "1\n00:00:01,000 --> x\nCaf\xE9\n");
  folder.add("eight.srt", "1\n00:00:01,000 --> x\nCaf\xC3\xA9\n");
  folder.add("sixteen.srt", std::string("\xFF\xFE"
                                        "1\0\n\0",
                                        6));
  for (const char* const name : {"plain.srt", "latin.srt", "eight.srt", "sixteen.srt", "gone.srt"})
    files() = with_subtitle(files(), folder.stored(name));
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.character_sets(), the_23);
  const std::vector<std::string> told[] = {the_23, the_23, with("UTF-8"), with("UTF-16"), the_23};
  for (int row = 0; row < 5; ++row) {
    dialog.select(row);
    EXPECT_EQ(dialog.character_sets(), told[row]) << row;
  }
  dialog.reset();
  EXPECT_EQ(dialog.character_sets(), the_23);
}

TEST_F(SubtitlesDialog, AfterNoTheFilesOwnSetCanStillBeChosenAndMakesItReadable) {
  const std::string accents = folder.add("a.srt", "1\n00:00:01,000 --> x\nCaf\xC3\xA9\n");
  {
    Subtitles dialog = edit();
    expect_file(accents);
    expect_question("\"" + accents + "\" is UTF-8 text.  Read it as UTF-8 instead of ISO-8859-1?",
                    answer::no);
    dialog.add_file();
    EXPECT_EQ(dialog.character_sets().back(), "UTF-8");
    // left without "accept", as after yes: the file stays, its set is the old one
  }
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.shown()[subtitle_field::character_set], "ISO-8859-1");
  ASSERT_EQ(dialog.character_sets().back(), "UTF-8");
  const auto file = subtitle_file::read(accents);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->why_not(dialog.shown()[subtitle_field::character_set]));
  dialog.change(subtitle_field::character_set, dialog.character_sets().back());
  dialog.accept();
  EXPECT_EQ(options(), std::string(ntsc_row).replace(55, 10, "UTF-8") + "|");
  EXPECT_EQ(file->why_not("UTF-8"), std::nullopt);
}

TEST_F(SubtitlesDialog, AFileThatCannotTellItsCharactersIsNotAskedAbout) {
  Subtitles dialog = edit();
  for (const char* const text : {"", "1\n00:00:01,000 --> x\nCaf\xE9\n",
                                 "\xEF\xBB\xBF"
                                 "1\nCafe\n"}) {
    expect_file(folder.add("a.srt", text));
    dialog.add_file();
  }
  EXPECT_EQ(dialog.suboptions(), rows({ntsc_row, ntsc_row, ntsc_row}));
}

TEST_F(SubtitlesDialog, CancellingTheFileDialogChangesNothing) {
  Subtitles dialog = edit();
  expect_file("");
  dialog.add_file();
  EXPECT_EQ(files(), "<none>");
  EXPECT_EQ(dialog.suboptions(), rows{ntsc_row});
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SubtitlesDialog, AFileWhoseNameCannotBeStoredIsRefused) {
  Subtitles dialog = edit();
  const std::string native = folder.path("a|b.srt");
  expect_file(native);
  expect_refusal("\"" + native +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  dialog.add_file();
  EXPECT_EQ(files(), "<none>");
}

TEST_F(SubtitlesDialog, AFileNameMayHoldAccentsAndCommas) {
  Subtitles dialog = edit();
  add(dialog, "d\xC3\xA9j\xC3\xA0, vu.srt");
  EXPECT_EQ(dialog.list1(), rows{"d\xC3\xA9j\xC3\xA0, vu.srt"});
  EXPECT_EQ(files(), folder.stored("d\xC3\xA9j\xC3\xA0, vu.srt"));
}

TEST_F(SubtitlesDialog, FilesAreStoredAtOnceAndSettingsOnlyOnAccept) {
  {
    Subtitles dialog = edit();
    add(dialog, "english.srt");
    dialog.change(subtitle_field::font_size, "40");
    add(dialog, "deutsch.srt");
  }
  EXPECT_EQ(files(), folder.stored("english.srt") + "/" + folder.stored("deutsch.srt"));
  EXPECT_EQ(options(), std::string(ntsc_row) + "|");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SubtitlesDialog, WithFewerSettingsThanFilesTheLastOnesServe) {
  files() = "\\a.srt/\\b.srt/\\c.srt";
  options() = "left,top,1,2,3,4,5,b.ttf,6,7,8,c|right,center,9,8,7,6,5,a.ttf,4,3,2,d|";
  Subtitles dialog = edit();
  dialog.select(2);
  EXPECT_EQ(dialog.shown()[subtitle_field::left_margin], "9");
  dialog.change(subtitle_field::left_margin, "77");
  dialog.accept();
  EXPECT_EQ(options(),
            "left,top,1,2,3,4,5,b.ttf,6,7,8,c|right,center,9,8,7,6,5,a.ttf,4,3,2,d|"
            "right,center,77,8,7,6,5,a.ttf,4,3,2,d|");
}

TEST_F(SubtitlesDialog, WithoutSettingsTheRegionsDefaultsServe) {
  options() = "";
  EXPECT_EQ(edit().suboptions(), rows{ntsc_row});
  p.subtitleoptions.clear();
  p.subtitledata.clear();
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.suboptions(), rows{ntsc_row});
  EXPECT_EQ(dialog.list1(), rows{"<none>"});
}

TEST_F(SubtitlesDialog, RowsThatAreNotTouchedAreStoredAsTheyWere) {
  files() = "\\a.srt/\\b.srt";
  options() = "1,2,3|1,2,3,4,5,6,7,8,9,10,11,12,13|";
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.shown()[subtitle_field::left_margin], "3");
  EXPECT_EQ(dialog.shown()[subtitle_field::character_set], "");
  dialog.accept();
  EXPECT_EQ(options(), "1,2,3|1,2,3,4,5,6,7,8,9,10,11,12,13|");
}

// Reset ------------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, ResetAfterThreeFilesLeavesTheLastSettings) {
  Subtitles dialog = edit();
  for (const char* const name : {"a.srt", "b.srt", "c.srt"})
    add(dialog, name);
  dialog.select(2);
  dialog.change(subtitle_field::font_size, "33");
  dialog.select(0);
  dialog.reset();
  EXPECT_EQ(files(), "<none>");
  EXPECT_EQ(dialog.list1(), rows{"<none>"});
  EXPECT_EQ(dialog.suboptions(),
            rows{"center,bottom,60,60,30,30,33,arial.ttf,720,478,29.97,ISO-8859-1"});
  EXPECT_EQ(dialog.shown()[subtitle_field::font_size], "33");
  dialog.accept();
  EXPECT_EQ(options(), "center,bottom,60,60,30,30,33,arial.ttf,720,478,29.97,ISO-8859-1|");
}

TEST_F(SubtitlesDialog, TheNextFileAfterAResetTakesWhatWasLeft) {
  files() = "\\a.srt/\\b.srt";
  options() = "left,top,1,2,3,4,5,b.ttf,6,7,8,c|right,center,9,8,7,6,5,a.ttf,4,3,2,d|";
  Subtitles dialog = edit();
  dialog.reset();
  add(dialog, "next.srt");
  dialog.accept();
  EXPECT_EQ(files(), folder.stored("next.srt"));
  EXPECT_EQ(options(), "right,center,9,8,7,6,5,a.ttf,4,3,2,d|");
}

TEST_F(SubtitlesDialog, AResetThatWasNotAcceptedLeavesNoSettingsBetweenLaterFiles) {
  files() = "<none>";
  options() = "left,top,1,2,3,4,5,b.ttf,6,7,8,c|right,center,9,8,7,6,5,a.ttf,4,3,2,d|";
  Subtitles dialog = edit();
  add(dialog, "a.srt");
  add(dialog, "b.srt");
  dialog.accept();
  EXPECT_EQ(options(), "left,top,1,2,3,4,5,b.ttf,6,7,8,c|left,top,1,2,3,4,5,b.ttf,6,7,8,c|");
}

// Accept -----------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, AcceptingRefreshesTheStatus) {
  p.dvdsizetext = "old";
  edit().accept();
  EXPECT_EQ(p.dvdsizetext, "2 titles\r\n0 menus\r\n0.000 gig total");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SubtitlesDialog, AcceptingWithAMissingStreamTellsSoAndStoresTheSettings) {
  Subtitles dialog = edit();
  dialog.change(subtitle_field::font_size, "33");
  p.List11[0] = folder.stored("gone.m2v");
  expect_missing(folder.path("gone.m2v"));
  dialog.accept();
  EXPECT_EQ(options(), "center,bottom,60,60,30,30,33,arial.ttf,720,478,29.97,ISO-8859-1|");
}

// Settings ---------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, EachFieldIsStoredInItsPlaceAsTyped) {
  Subtitles dialog = edit();
  const char* const texts[] = {"left", "top", " 1", "2 px",    "",   "x",
                               "12.5", "f",   "w",  "h & \"'", "24", "CP850"};
  for (std::size_t i = 0; i < subtitle_field_count; ++i)
    dialog.change(static_cast<subtitle_field>(i), texts[i]);
  EXPECT_EQ(dialog.suboptions(), rows{"left,top, 1,2 px,,x,12.5,f,w,h & \"',24,CP850"});
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SubtitlesDialog, AChangeIsThatOfTheSelectedFileAlone) {
  files() = "\\a.srt/\\b.srt";
  options() = "left,top,1,2,3,4,5,b.ttf,6,7,8,c|right,center,9,8,7,6,5,a.ttf,4,3,2,d|";
  Subtitles dialog = edit();
  dialog.select(1);
  dialog.change(subtitle_field::horizontal_alignment, "left");
  EXPECT_EQ(dialog.suboptions(),
            (rows{"left,top,1,2,3,4,5,b.ttf,6,7,8,c", "left,center,9,8,7,6,5,a.ttf,4,3,2,d"}));
}

TEST_F(SubtitlesDialog, ATextThatWouldBreakTheRowIsToldAndNotTaken) {
  Subtitles dialog = edit();
  expect_refusal("The font size \"28,5\" cannot be used: it contains \",\".");
  dialog.change(subtitle_field::font_size, "28,5");
  expect_refusal("The left margin \"6|0\" cannot be used: it contains \"|\".");
  dialog.change(subtitle_field::left_margin, "6|0");
  expect_refusal(
      "The character set \"a?b\" cannot be used: it contains a line break, a tab or another "
      "control character.");
  dialog.change(subtitle_field::character_set, "a\tb");
  EXPECT_EQ(dialog.shown(), parse_subtitle_settings(ntsc_row));
  EXPECT_EQ(dialog.suboptions(), rows{ntsc_row});
}

// Fonts ------------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, OffersTrueTypeFontsAndSelectsTheStoredOne) {
  Subtitles dialog = edit();
  ASSERT_EQ(dialog.fonts().fonts().size(), 2u);
  EXPECT_EQ(dialog.fonts().fonts()[0].name, "Arial");
  EXPECT_EQ(dialog.fonts().fonts()[1].name, "Times New Roman");
  EXPECT_EQ(dialog.fontface(), 0u);
}

TEST_F(SubtitlesDialog, PickedFontIsStoredByItsFileInLowerCase) {
  Subtitles dialog = edit();
  dialog.pick_font(1);
  EXPECT_EQ(dialog.shown()[subtitle_field::font_file], "times.ttf");
  EXPECT_EQ(dialog.suboptions(),
            rows{"center,bottom,60,60,30,30,28.0,times.ttf,720,478,29.97,ISO-8859-1"});
  EXPECT_EQ(dialog.fontface(), 1u);
  dialog.pick_font(2);
  EXPECT_EQ(dialog.fontface(), 1u);
}

TEST_F(SubtitlesDialog, SelectingAFileSelectsItsFont) {
  files() = "\\a.srt/\\b.srt";
  options() = "left,top,1,2,3,4,5,arial.ttf,6,7,8,c|left,top,1,2,3,4,5,times.ttf,6,7,8,c|";
  Subtitles dialog = edit();
  EXPECT_EQ(dialog.fontface(), 0u);
  dialog.select(1);
  EXPECT_EQ(dialog.fontface(), 1u);
}

TEST_F(SubtitlesDialog, WithoutFontsTheStoredFileIsKept) {
  const auto dialog = Subtitles::open(doc, font_list());
  ASSERT_TRUE(dialog);
  EXPECT_TRUE(dialog->fonts().fonts().empty());
  EXPECT_EQ(dialog->fontface(), std::nullopt);
  EXPECT_EQ(dialog->shown()[subtitle_field::font_file], "arial.ttf");
}

}  // namespace
}  // namespace corvane

#include "tools/language_tags.h"

#include "support/command_test.h"

#include <algorithm>
#include <set>

namespace corvane {
namespace {

using testing_support::rows;

class Language : public testing_support::command_test {
 protected:
  Language() {
    p.languagetags = {"Audio tag:\tFRENCH FR", "Subtitle tag:\tAFAR AA", "Audio tag:\tLATIN LA"};
    p.saved = 1;
  }

  language edit() {
    auto dialog = language::open(doc);
    EXPECT_TRUE(dialog);
    return *dialog;
  }
};

std::string code_of(std::string_view entry) {
  return std::string(entry.substr(entry.find(' ') + 1, 2));
}

TEST(LanguageEntries, Are139InOrderOfWhich23EndInABlank) {
  EXPECT_EQ(language_entries.size(), 139u);
  EXPECT_EQ(std::count_if(language_entries.begin(), language_entries.end(),
                          [](std::string_view entry) { return entry.ends_with(' '); }),
            23);
  EXPECT_EQ(language_entries.front(), "ABKHAZIAN AB ");
  EXPECT_EQ(language_entries[30], "ENGLISH EN");
  EXPECT_EQ(language_entries.back(), "ZULU ZU");
}

TEST(LanguageEntries, AreANameABlankAndATwoLetterCode) {
  for (const std::string_view entry : language_entries) {
    const auto blank = entry.find(' ');
    ASSERT_NE(blank, std::string_view::npos) << entry;
    std::string_view code = entry.substr(blank + 1);
    if (code.ends_with(' '))
      code.remove_suffix(1);
    EXPECT_EQ(code.size(), 2u) << entry;
    EXPECT_TRUE(std::all_of(code.begin(), code.end(), [](char c) { return c >= 'A' && c <= 'Z'; }))
        << entry;
  }
}

TEST(LanguageEntries, LanguagesWithTwoNamesStandTwice) {
  std::set<std::string> codes, twice;
  std::set<std::string_view> names;
  for (const std::string_view entry : language_entries) {
    names.insert(entry.substr(0, entry.find(' ')));
    if (!codes.insert(code_of(entry)).second)
      twice.insert(code_of(entry));
  }
  EXPECT_EQ(twice, (std::set<std::string>{"BN", "LV", "PS"}));
  EXPECT_EQ(names.size(), language_entries.size());
}

TEST(LanguageEntries, FollowTheOldCodes) {
  const std::set<std::string_view> entries(language_entries.begin(), language_entries.end());
  for (const char* const old : {"HEBREW IW", "INDONESIAN IN", "YIDDISH JI ", "MOLDAVIAN MO",
                                "SERBO-CROATIAN SH", "AFAN(OROMO) OM", "PERSIAN(farsi) FA"})
    EXPECT_TRUE(entries.contains(old)) << old;
}

TEST_F(Language, OpensWithTheProjectsTagsInOrderAndNoneSelected) {
  const language dialog = edit();
  EXPECT_EQ(dialog.List1(), p.languagetags);
  EXPECT_EQ(dialog.selected(), -1);
  EXPECT_EQ(dialog.Combo1(), "");
}

TEST_F(Language, HandEditedXmlStaysWhenTheUserKeepsIt) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::cancel);
  EXPECT_FALSE(language::open(doc));
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  EXPECT_EQ(p.saved, 1);
}

TEST_F(Language, HandEditedXmlGoesWhenTheUserAgrees) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  EXPECT_TRUE(language::open(doc));
  EXPECT_EQ(p.customxml, "");
}

TEST_F(Language, AddingAnAudioTagToAnEmptyListGivesOneEnglishRowSelected) {
  p.languagetags.clear();
  language dialog = edit();
  dialog.add_audio_tag();
  EXPECT_EQ(dialog.List1(), rows{"Audio tag:\tENGLISH EN"});
  EXPECT_EQ(dialog.selected(), 0);
  EXPECT_EQ(dialog.Combo1(), "ENGLISH EN");
}

TEST_F(Language, AddingASubTagAppendsItAndSelectsIt) {
  language dialog = edit();
  dialog.select(0);
  dialog.add_sub_tag();
  EXPECT_EQ(dialog.List1().back(), "Subtitle tag:\tENGLISH EN");
  EXPECT_EQ(dialog.selected(), 3);
  EXPECT_EQ(dialog.Combo1(), "ENGLISH EN");
}

TEST_F(Language, SelectingARowShowsItsLanguage) {
  language dialog = edit();
  dialog.select(1);
  EXPECT_EQ(dialog.selected(), 1);
  EXPECT_EQ(dialog.Combo1(), "AFAR AA");
  for (const int row : {-1, 3}) {
    dialog.select(row);
    EXPECT_EQ(dialog.selected(), 1) << row;
  }
}

TEST_F(Language, RowWithoutALanguageIsShownWithoutOne) {
  p.languagetags = {"Audio tag:"};
  language dialog = edit();
  dialog.select(0);
  EXPECT_EQ(dialog.Combo1(), "");
  dialog.pick("ZULU ZU");
  EXPECT_EQ(dialog.List1(), rows{"Audio tag:\tZULU ZU"});
}

TEST_F(Language, PickingALanguageReplacesTheSelectedRowsAndKeepsItsKind) {
  language dialog = edit();
  dialog.select(1);
  dialog.pick("GERMAN DE ");
  EXPECT_EQ(dialog.List1(),
            (rows{"Audio tag:\tFRENCH FR", "Subtitle tag:\tGERMAN DE ", "Audio tag:\tLATIN LA"}));
  EXPECT_EQ(dialog.selected(), 1);
}

TEST_F(Language, PickingWithNoRowSelectedChangesNothing) {
  language dialog = edit();
  dialog.pick("GERMAN DE ");
  EXPECT_EQ(dialog.List1(), p.languagetags);
}

TEST_F(Language, RemovingAMiddleRowSelectsTheLastOne) {
  p.languagetags.emplace_back("Subtitle tag:\tZULU ZU");
  language dialog = edit();
  dialog.select(1);
  dialog.remove();
  EXPECT_EQ(dialog.List1(),
            (rows{"Audio tag:\tFRENCH FR", "Audio tag:\tLATIN LA", "Subtitle tag:\tZULU ZU"}));
  EXPECT_EQ(dialog.selected(), 2);
  EXPECT_EQ(dialog.Combo1(), "ZULU ZU");
}

TEST_F(Language, RemovingTheOnlyRowLeavesAnEmptyListWithNothingSelected) {
  p.languagetags = {"Audio tag:\tENGLISH EN"};
  language dialog = edit();
  dialog.select(0);
  dialog.remove();
  EXPECT_TRUE(dialog.List1().empty());
  EXPECT_EQ(dialog.selected(), -1);
  dialog.pick("ZULU ZU");
  EXPECT_TRUE(dialog.List1().empty());
}

TEST_F(Language, RemovingWithNoRowSelectedChangesNothing) {
  language dialog = edit();
  dialog.remove();
  EXPECT_EQ(dialog.List1(), p.languagetags);
  EXPECT_EQ(dialog.selected(), -1);
}

TEST_F(Language, AcceptingReplacesTheProjectsTagsInOrder) {
  language dialog = edit();
  dialog.select(0);
  dialog.remove();
  dialog.add_sub_tag();
  dialog.accept();
  EXPECT_EQ(p.languagetags,
            (rows{"Subtitle tag:\tAFAR AA", "Audio tag:\tLATIN LA", "Subtitle tag:\tENGLISH EN"}));
  EXPECT_EQ(p.saved, 0);
}

TEST_F(Language, AcceptingAnEmptyListClearsTheProjectsTags) {
  language dialog = edit();
  for (int i = 0; i < 3; ++i) {
    dialog.select(0);
    dialog.remove();
  }
  dialog.accept();
  EXPECT_TRUE(p.languagetags.empty());
}

TEST_F(Language, AcceptingRefreshesTheStatus) {
  language dialog = edit();
  dialog.accept();
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n0.000 gig total");
}

TEST_F(Language, AcceptingWithAMissingStreamTellsSoAndStoresTheTags) {
  p.List11 = {folder.stored("gone.vob")};
  language dialog = edit();
  dialog.add_audio_tag();
  expect_missing(folder.path("gone.vob"));
  dialog.accept();
  EXPECT_EQ(p.languagetags.size(), 4u);
}

TEST_F(Language, ClosingWithoutAcceptLeavesTheProjectsTags) {
  const rows before = p.languagetags;
  {
    language dialog = edit();
    dialog.add_audio_tag();
    dialog.pick("ZULU ZU");
  }
  EXPECT_EQ(p.languagetags, before);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(Language, PickedAfrikaansKeepsItsTrailingBlank) {
  language dialog = edit();
  dialog.add_audio_tag();
  dialog.pick("AFRIKAANS AF ");
  dialog.accept();
  EXPECT_EQ(p.languagetags.back(), "Audio tag:\tAFRIKAANS AF ");
}

TEST_F(Language, SelectedTagTellsItsStream) {
  language dialog = edit();
  EXPECT_EQ(dialog.stream(), "");
  dialog.select(0);
  EXPECT_EQ(dialog.stream(), "audio stream 1 of each title");
  dialog.select(1);
  EXPECT_EQ(dialog.stream(), "subtitle stream 1 of each title");
  dialog.select(2);
  EXPECT_EQ(dialog.stream(), "audio stream 2 of each title");
  dialog.add_sub_tag();
  EXPECT_EQ(dialog.stream(), "subtitle stream 2 of each title");
}

}  // namespace
}  // namespace corvane

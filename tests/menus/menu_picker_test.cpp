// The menu picker: its entries, picking to edit, erasing.
#include "menus/menu_picker.h"

#include "project/menu_rows.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;

class MenuPicker : public testing_support::command_test {
 protected:
  void add_menu(const std::string& name, const std::string& audio, const std::string& buttons) {
    folder.add(name);
    std::string row = folder.stored(name) + "/";
    if (!audio.empty()) {
      folder.add(audio);
      row += folder.stored(audio);
    }
    p.menulist.push_back(row);
    p.moremenuoptions.push_back("options of " + name);
    p.menubuttons.resize(p.menulist.size() + 1);
    p.menubuttons[p.menulist.size() - 1] = buttons;
  }
  void add_three_menus() {
    add_menu("intro.m2v", "intro.ac3", "1/a|2/b|3/jump menu 3");
    add_menu("two.mpv", "", "");
    add_menu("three.m2v", "", "3/c");
    add_files_and_title({"t.vob"});
    p.postinfo = {"call menu 3              "};
    p.Comboregion_enabled = false;
    p.saved = 1;
  }
};

TEST_F(MenuPicker, EntriesNameNumberVideoAudioAndButtonCount) {
  add_three_menus();
  const menu_picker picker(doc);
  EXPECT_EQ(picker.entries(), (rows{"menu 1:intro.m2v(with audio) (3 buttons)",
                                    "menu 2:two.mpv(no audio) (0 buttons)",
                                    "menu 3:three.m2v(no audio) (1 buttons)"}));
}

TEST_F(MenuPicker, DefaultCaption) {
  EXPECT_EQ(menu_picker(doc).caption(), "please select menu");
  EXPECT_EQ(menu_picker(doc, picker_edit_caption).caption(), "Please select menu to edit");
  EXPECT_EQ(menu_picker(doc, picker_erase_caption).caption(), "Please select menu to erase");
}

TEST_F(MenuPicker, PickingToEditSetsTheIndexerAndChangesNothingElse) {
  add_three_menus();
  const project before = p;
  EXPECT_TRUE(menu_picker(doc, picker_edit_caption).confirm(1));
  EXPECT_EQ(p.indexer, 2);
  EXPECT_EQ(p.menulist, before.menulist);
  EXPECT_EQ(p.menubuttons, before.menubuttons);
  EXPECT_EQ(p.saved, 1);
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.dvdsizetext, "1 titles\r\n3 menus\r\n0.000 gig total");
}

TEST_F(MenuPicker, DefaultCaptionPicksToEdit) {
  add_three_menus();
  EXPECT_TRUE(menu_picker(doc).confirm(2));
  EXPECT_EQ(p.indexer, 3);
  EXPECT_EQ(p.menulist.size(), 3u);
}

TEST_F(MenuPicker, ErasingRemovesTheMenuFromAllThreeLists) {
  add_three_menus();
  const rows menulist = p.menulist;
  EXPECT_FALSE(menu_picker(doc, picker_erase_caption).confirm(1));
  EXPECT_EQ(p.menulist, (rows{menulist[0], menulist[2]}));
  EXPECT_EQ(p.moremenuoptions, (rows{"options of intro.m2v", "options of three.m2v"}));
  EXPECT_EQ(p.menubuttons, (rows{"1/a|2/b|3/jump menu 3", "3/c", ""}));
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(p.dvdsizetext, "1 titles\r\n2 menus\r\n0.000 gig total");
}

TEST_F(MenuPicker, CommandsThatNameMenusKeepTheirNumbersWhenAnEarlierMenuIsErased) {
  add_three_menus();
  p.menubuttons[2] = "1/2/3/4/jump menu 3/black/black";
  menu_picker(doc, picker_erase_caption).confirm(0);
  EXPECT_EQ(p.menubuttons[1], "1/2/3/4/jump menu 3/black/black");
  EXPECT_EQ(p.postinfo, rows{"call menu 3              "});
}

TEST_F(MenuPicker, WhatCommandsLedToIsKnownWhenAnEarlierMenuIsErased) {
  add_three_menus();
  p.menubuttons[2] = "1/2/3/4/jump menu 3/black/black";
  const std::string third = parse_menu_row(p.menulist[2]).video;
  menu_picker(doc, picker_erase_caption).confirm(0);
  ASSERT_FALSE(p.led_to.empty());
  const finding_item button = {finding_item::whole_kind::menu, 2, finding_item::part_kind::button,
                               1};
  EXPECT_EQ(p.led_to.back(), (command_target{button, "jump menu 3", third}));
}

TEST_F(MenuPicker, ErasingTheOnlyMenuLeavesOneEmptyElement) {
  add_menu("only.m2v", "", "1/a");
  menu_picker(doc, picker_erase_caption).confirm(0);
  EXPECT_EQ(p.menubuttons, rows{""});
  EXPECT_TRUE(p.menulist.empty());
  EXPECT_TRUE(p.moremenuoptions.empty());

  // As a loaded project has it: an element for each menu and none more.
  add_menu("only.m2v", "", "");
  p.menubuttons = {"1/a"};
  menu_picker(doc, picker_erase_caption).confirm(0);
  EXPECT_EQ(p.menubuttons, rows{""});
}

TEST_F(MenuPicker, RegionStaysFrozenWhileThereAreTitles) {
  add_three_menus();
  for (int i = 0; i < 3; ++i)
    menu_picker(doc, picker_erase_caption).confirm(0);
  EXPECT_TRUE(p.menulist.empty());
  EXPECT_FALSE(p.Comboregion_enabled);
}

TEST_F(MenuPicker, RegionIsFreedWithoutTitlesEvenWhenMenusAreLeft) {
  for (const char* const caption : {picker_erase_caption, picker_edit_caption}) {
    p = project();
    add_menu("a.m2v", "", "");
    add_menu("b.m2v", "", "");
    p.Comboregion_enabled = false;
    menu_picker(doc, caption).confirm(0);
    EXPECT_TRUE(p.Comboregion_enabled) << caption;
  }
}

TEST_F(MenuPicker, RegionStaysFrozenWhileButtonsAreBeingMoved) {
  add_menu("a.m2v", "", "");
  p.Comboregion_enabled = false;
  p.buttondata = {"1/a"};
  menu_picker(doc, picker_edit_caption).confirm(0);
  EXPECT_FALSE(p.Comboregion_enabled);
}

TEST_F(MenuPicker, EntryThatIsNotThereChangesNothing) {
  add_three_menus();
  const project before = p;
  for (const int i : {-1, 3, 1000}) {
    EXPECT_FALSE(menu_picker(doc, picker_erase_caption).confirm(i)) << i;
    EXPECT_FALSE(menu_picker(doc, picker_edit_caption).confirm(i)) << i;
  }
  EXPECT_EQ(p.menulist, before.menulist);
  EXPECT_EQ(p.menubuttons, before.menubuttons);
  EXPECT_EQ(p.indexer, 0);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(MenuPicker, ErasingAMenuWithoutOptionsRowOrButtonsIsSafe) {
  add_three_menus();
  p.moremenuoptions.clear();
  p.menubuttons = {"1/a"};
  menu_picker(doc, picker_erase_caption).confirm(2);
  EXPECT_EQ(p.menulist.size(), 2u);
  EXPECT_EQ(p.menubuttons, rows{"1/a"});  // those of the other menus
}

}  // namespace
}  // namespace corvane

// Where a disc leads: first play, titles and buttons, through menus that only lead on.
#include "examine/disc_walk.h"

#include "support/made_command.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace corvane {
namespace {

using testing_support::made_command;

vm_command jump_vts_title(int title) {
  return made_command({0x30, 0x03, 0, 0, 0, title, 0, 0});
}
vm_command link_chain(int chain) {
  return made_command({0x20, 0x04, 0, 0, 0, 0, 0, chain});
}
const vm_command exit_command = made_command({0x30, 0x01, 0, 0, 0, 0, 0, 0});
const vm_command link_tail = made_command({0x20, 0x01, 0, 0, 0, 0, 0, 13});
const vm_command call_root_menu = made_command({0x30, 0x08, 0, 0, 0, 0x83, 0, 0});
const vm_command jump_root_of_titleset_1 = made_command({0x30, 0x06, 0, 1, 1, 0x83, 0, 0});

/// A disc of two titles and two menus in titleset 1, of which the first has the jump table.
class DiscWalk : public ::testing::Test {
 protected:
  DiscWalk() {
    disc_.titlesets.resize(1);
    for (int number = 1; number <= 2; ++number) {
      disc_title_contents title;
      title.number = title.number_in_titleset = number;
      title.titleset = 1;
      title.chain.tables = title_[number - 1];
      title.chapters = {0, 5};
      disc_.titles.push_back(title);
      disc_menu_contents menu;
      menu.titleset = 1;
      menu.number = number;
      menu.language = "en";
      menu.entry = number == 1 ? menu_kind::root : menu_kind::none;
      menu.chain.tables = menu_[number - 1];
      menu.chain.seconds = 1;
      disc_.menus.push_back(menu);
    }
    first_->pre = {jump_root_of_titleset_1};
    disc_.first_play = first_;
    menu_[0]->pre = {made_command({0x20, 0xA4, 0, 1, 0, 2, 0, 2})};  // if (g1 == 2) LinkPGCN 2
  }

  std::optional<std::string> pressed(const vm_command& command, std::size_t menu = 0) {
    auto buttons = std::make_shared<highlight_information>();
    buttons->buttons.resize(1);
    buttons->buttons[0].command = command;
    disc_.menus[menu].chain.highlight = buttons;
    return disc_walks(disc_).after_button(disc_.menus[menu], 0);
  }

  std::optional<std::string> start() { return disc_walks(disc_).after_start(); }
  std::optional<std::string> end_of_title(std::size_t number) {
    return disc_walks(disc_).after_title(disc_.titles[number - 1]);
  }

  disc_contents disc_;
  using chain = std::shared_ptr<program_chain>;
  chain first_ = std::make_shared<program_chain>();
  chain title_[2] = {std::make_shared<program_chain>(), std::make_shared<program_chain>()};
  chain menu_[2] = {std::make_shared<program_chain>(), std::make_shared<program_chain>()};
};

TEST_F(DiscWalk, FirstPlayLeadsToTheFirstMenu) {
  EXPECT_EQ(start(), "menu 1");
  disc_.first_play = nullptr;
  EXPECT_EQ(start(), "title 1 chapter 1");
  disc_.titles.clear();
  EXPECT_EQ(start(), "nowhere");
}

TEST_F(DiscWalk, ButtonsLeadToTitlesChaptersMenusAndTheEnd) {
  EXPECT_EQ(pressed(jump_vts_title(2)), "title 2 chapter 1");
  EXPECT_EQ(pressed(made_command({0x30, 0x05, 0, 2, 0, 1, 0, 0})), "title 1 chapter 2");
  EXPECT_EQ(pressed(link_chain(2)), "menu 2");
  EXPECT_EQ(pressed(exit_command), "stop");
}

TEST_F(DiscWalk, WhatIsNotThereLeadsNowhere) {
  EXPECT_EQ(pressed(jump_vts_title(3)), "nowhere");
  EXPECT_EQ(pressed(made_command({0x30, 0x05, 0, 3, 0, 1, 0, 0})), "nowhere") << "chapter 3 of 2";
  EXPECT_EQ(pressed(link_chain(3)), "nowhere");
  EXPECT_EQ(pressed(made_command({0, 0, 0, 0, 0, 0, 0, 0})), "nowhere") << "it does nothing";
}

TEST_F(DiscWalk, ButtonThatOnlySetsSomethingStaysInItsMenu) {
  const vm_command audio = made_command({0x51, 0, 0, 0x81, 0, 0, 0, 0});
  EXPECT_EQ(pressed(audio), std::nullopt);
  EXPECT_EQ(pressed(made_command({0x71, 0, 0, 1, 0, 2, 0, 0})), std::nullopt) << "g1 = 2";
}

TEST_F(DiscWalk, WhereAConditionMayLeadIsNotNowhere) {
  const vm_command if_g3 = made_command({0x20, 0xA4, 0, 3, 0, 2, 0, 2});  // if (g3 == 2) LinkPGCN 2
  menu_[0]->pre.clear();
  EXPECT_EQ(pressed(if_g3), std::nullopt);
  menu_[0]->post = {if_g3};
  EXPECT_EQ(pressed(link_tail), std::nullopt);
  menu_[0]->post = {made_command({0x71, 0, 0, 3, 0, 1, 0, 0}), if_g3};
  EXPECT_EQ(pressed(link_tail), "nowhere") << "g3 is set to 1 before";
  first_->pre = {if_g3};
  disc_.titlesets[0].chains.clear();
  EXPECT_EQ(start(), "nowhere") << "all are 0 when a disc is put in";
}

TEST_F(DiscWalk, CommandsThatNeverEndLeadNowhere) {
  menu_[0]->pre = {made_command({0, 0x01, 0, 0, 0, 0, 0, 1})};
  EXPECT_EQ(start(), "nowhere");
}

TEST_F(DiscWalk, AllWalksOfADiscTogetherEnd) {
  const vm_command loop_once[] = {
      made_command({0x73, 0, 0, 1, 0, 1, 0, 0}),         // g1 += 1
      made_command({0, 0xF1, 0, 1, 0x13, 0x00, 0, 1})};  // < 4864: again
  menu_[0]->pre = {loop_once[0], loop_once[1]};
  menu_[1]->pre = menu_[0]->pre;
  disc_walks walks(disc_);
  EXPECT_EQ(walks.after_start(), "menu 1");
  int told = 1;
  while (told < 10'000 && walks.after_start())
    ++told;
  EXPECT_LT(told, 5'000'000 / 9'728 + 2);
}

TEST_F(DiscWalk, RememberedMenuIsComeBackTo) {
  title_[0]->post = {made_command({0x71, 0, 0, 1, 0, 2, 0, 0}), call_root_menu};
  EXPECT_EQ(end_of_title(1), "menu 2");
  title_[1]->post = {call_root_menu};
  EXPECT_EQ(end_of_title(2), "menu 1");
}

TEST_F(DiscWalk, ButtonOfSeveralCommandsIsDoneBehindItsMenu) {
  menu_[1]->post = {made_command({0x71, 0, 0, 1, 0, 2, 0, 0}), jump_vts_title(1)};
  EXPECT_EQ(pressed(link_tail, 1), "title 1 chapter 1");
}

TEST_F(DiscWalk, TitleWithoutACommandGoesToTheNextChainOrStops) {
  EXPECT_EQ(end_of_title(1), "stop");
  disc_.titlesets[0].chains.resize(2);
  disc_.titlesets[0].chains[1].title = 2;
  title_[0]->next = 2;
  EXPECT_EQ(end_of_title(1), "title 2 chapter 1");
}

TEST_F(DiscWalk, MenusThatLeadInACircleAreLeft) {
  menu_[0]->pre = {link_chain(2)};
  menu_[1]->pre = {link_chain(1)};
  EXPECT_EQ(start(), std::nullopt);
}

TEST_F(DiscWalk, MenusWithoutPicturesAreNotCounted) {
  disc_.menus[0].chain.seconds = 0;
  ASSERT_EQ(menus_with_pictures(disc_).size(), 1u);
  EXPECT_EQ(menus_with_pictures(disc_)[0].second->number, 2);
  menu_[0]->pre.clear();
  menu_[0]->post = {link_chain(2)};
  EXPECT_EQ(start(), "menu 1") << "the second is the first that shows anything";
}

TEST_F(DiscWalk, TitlesDoFirstWhatStandsBeforeThem) {
  title_[1]->pre = {jump_vts_title(1)};
  EXPECT_EQ(pressed(jump_vts_title(2)), "title 1 chapter 1");
  EXPECT_EQ(pressed(made_command({0x30, 0x05, 0, 1, 0, 2, 0, 0})), "title 2 chapter 1")
      << "not on the way to a chapter";
  title_[0]->pre = {jump_vts_title(2)};
  EXPECT_EQ(pressed(jump_vts_title(2)), std::nullopt) << "round and round";
}

TEST_F(DiscWalk, CommandsOfATitleOrMenuLeadSomewhereOrGoOn) {
  disc_walks walks(disc_);
  const auto of_title = [&](const vm_command& c) {
    return walks.by_commands(disc_.titles[0], {&c, 1});
  };
  const auto of_menu = [&](const vm_command& c) {
    return walks.by_commands(disc_.menus[0], {&c, 1});
  };
  EXPECT_EQ(of_title(jump_vts_title(2)), "title 2 chapter 1");
  EXPECT_EQ(of_title(made_command({0x71, 0, 0, 1, 0, 2, 0, 0})), goes_on);
  EXPECT_EQ(of_menu(link_chain(2)), "menu 2");
  EXPECT_EQ(of_menu(made_command({0x20, 0xA4, 0, 3, 0, 2, 0, 2})), goes_on);
  EXPECT_EQ(of_menu(exit_command), "stop");
}

TEST_F(DiscWalk, EntriesLeadToAMenuByThemselvesOrThroughAnother) {
  disc_menu_contents only_leads = disc_.menus[0];
  auto leading = std::make_shared<program_chain>();
  leading->pre = {link_chain(2)};
  only_leads.number = 3;
  only_leads.entry = menu_kind::audio;
  only_leads.chain.tables = leading;
  only_leads.chain.seconds = 0;
  disc_.menus.push_back(only_leads);
  menu_[0]->pre = {link_chain(2)};
  menu_[1]->pre = {link_chain(1)};  // which is not done to know the entry
  disc_walks walks(disc_);
  EXPECT_EQ(walks.entries_of(disc_.menus[0]), std::vector<std::string>{"root"});
  EXPECT_EQ(walks.entries_of(disc_.menus[1]), std::vector<std::string>{"audio"});
}

}  // namespace
}  // namespace corvane

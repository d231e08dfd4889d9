// What is told of a menu while it is edited.
#include "menus/menu_problems.h"

#include "editor_test.h"
#include "menus/button_overlaps.h"

#include <optional>
#include <vector>

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

/// Two buttons of which nothing is to be said, and a title that they lead to.
class MenuProblems : public testing_support::editor_test {
 protected:
  MenuProblems() {
    add_files_and_title({"one.vob"});
    p.chapters = {"00:00:00.00,00:05:00.00"};
  }
  static std::string button(int y, const std::string& action = "jump title 1 chapter  1",
                            const std::string& looks = "yellow/white") {
    return " 100/ " + std::to_string(y) + "/ 300/ " + std::to_string(y + 40) + "/" + action + "/" +
           looks;
  }
  rows problems(const std::string& records) {
    const menu_editor& e = edit(records);
    project copy = p;
    e.keep_in(copy);
    rows rules;
    for (const finding& f : menu_problems(copy, 1))
      rules.push_back(f.rule + " " + std::to_string(f.item.part_number));
    return rules;
  }
};

TEST_F(MenuProblems, GoodMenuHasNone) {
  EXPECT_EQ(problems(button(100) + "|" + button(200)), rows{});
  EXPECT_EQ(problems_line({}), "no problems");
}

TEST_F(MenuProblems, EachRuleIsToldWithItsButton) {
  EXPECT_EQ(problems(button(100) + "|" + button(200, "jump title 9")),
            rows{"command-target-missing 2"});
  EXPECT_EQ(problems(button(100) + "|" + button(201)), rows{"button-odd-line 2"});
  EXPECT_EQ(problems(button(100) + "|" + button(130)),
            (rows{"accept-overlap 1", "button-not-reachable 2"}));
  EXPECT_EQ(problems(button(100) + "|" + button(140)), rows{"accept-overlap 1"});  // they touch
  EXPECT_EQ(problems(button(100) + "|" + button(200, "jump title 1 chapter  1", "red/white")),
            rows{"button-colour-unknown 2"});
  EXPECT_EQ(problems(button(0)), rows{"button-outside-safe-area 1"});
  EXPECT_EQ(problems(""), rows{"menu-without-buttons 0"});
  p.moremenuoptions = {"0\t00:00:09.0\t00:00:03.0\t1"};
  EXPECT_EQ(problems(button(100)), rows{"menu-button-time-order 0"});
}

TEST_F(MenuProblems, MoreButtonsAndLooksThanAMenuHoldsAreTold) {
  std::string records;
  for (int i = 0; i < 37; ++i)
    records += (i == 0 ? "" : "|") +
               record_at(40 + i % 6 * 100, 30 + i / 6 * 60, 130 + i % 6 * 100, 70 + i / 6 * 60);
  EXPECT_EQ(problems(records).front(), "menu-too-many-buttons 0");
  std::string looks;
  for (int i = 0; i < 10; ++i)
    looks += (i == 0 ? "" : "|") +
             button(40 + i * 42, "exit", button_colours[static_cast<std::size_t>(i)] + "/white");
  EXPECT_EQ(problems(looks).front(), "menu-too-many-colours 0");
}

TEST_F(MenuProblems, ThirteenButtonsAreTooManyWhereTheMenusAre16To9) {
  const auto records = [](int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
      all += (i == 0 ? "" : "|") +
             record_at(40 + i % 6 * 100, 30 + i / 6 * 60, 130 + i % 6 * 100, 70 + i / 6 * 60);
    return all;
  };
  const auto told = [&](int count, std::optional<bool> is_wide) {
    const menu_editor& e = edit(records(count));
    project copy = p;
    e.keep_in(copy);
    rows rules;
    for (const finding& f : menu_problems(copy, 1, std::vector<menu_facts>{{{}, is_wide}}))
      if (f.severity == finding_severity::error)
        rules.push_back(f.rule);
    return rules;
  };
  EXPECT_EQ(told(12, true), rows{});
  EXPECT_EQ(told(13, true), rows{"menu-too-many-wide-buttons"});
  EXPECT_EQ(told(13, false), rows{});
  EXPECT_EQ(told(13, std::nullopt), rows{});
}

TEST_F(MenuProblems, AcceptRefusesExactlyWhatIsToldOfIt) {
  for (const int y : {100, 139, 140, 141, 142}) {
    const std::string records = button(100) + "|" + button(y);
    menu_editor& e = edit(records);
    project copy = p;
    e.keep_in(copy);
    const auto found = menu_problems(copy, 1);
    const bool told = !found.empty() && found.front().rule == "accept-overlap";
    if (told)
      expect_refusal("button1 intersects with button2");
    EXPECT_EQ(e.accept(), !told) << y;
  }
}

TEST_F(MenuProblems, OtherMenusAndTitlesAreNotToldOf) {
  add_files_and_title({"two.vob"});
  p.menulist.push_back(p.menulist[0]);
  p.moremenuoptions.emplace_back(new_menu_options);
  p.menubuttons = {"", button(3, "nonsense")};
  EXPECT_EQ(problems(button(100)), rows{});
}

TEST_F(MenuProblems, ThatNothingLeadsToTheMenuIsNotToldInIt) {
  p.menulist.push_back(p.menulist[0]);
  p.moremenuoptions.emplace_back(new_menu_options);
  p.menubuttons = {button(100), button(100)};
  EXPECT_TRUE(menu_problems(p, 2).empty());
}

TEST_F(MenuProblems, WorstIsFirstAndTheLineCountsThemAll) {
  const std::string records = button(101) + "|" + button(200, "jump title 9") + "|" + button(301);
  EXPECT_EQ(problems(records),
            (rows{"command-target-missing 2", "button-odd-line 1", "button-odd-line 3"}));
  project copy = p;
  edit(records).keep_in(copy);
  const auto found = menu_problems(copy, 1);
  EXPECT_EQ(problems_line(found).substr(0, 34), "1 error, 2 notes: button 2: the co");
  EXPECT_NE(problem_text(found[0], true).find(".  To do: choose another"), std::string::npos);
}

}  // namespace
}  // namespace corvane

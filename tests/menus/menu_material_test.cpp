// Menus moved, copied and given other streams: whole conversations, and what goes along.
#include "menus/menu_material.h"

#include "examine/navigation_map.h"
#include "platform/files/files.h"
#include "project/disc_of.h"
#include "project/menu_order.h"
#include "project/menu_rows.h"
#include "project/moved_commands.h"
#include "project/post_rows.h"
#include "project/project_file.h"
#include "support/command_test.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>

namespace corvane {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::rows;
using testing_support::small_video;

const char* const material_video_filter = "mpeg elementry stream(*.m2v, *.mpv)|*.m2v;*.mpv";

class MenuMaterial : public testing_support::command_test {
 protected:
  MenuMaterial() {
    add_files_and_title({"a.m2v", "a.ac3"});
    add_files_and_title({"b.m2v", "b.ac3"});
    for (const char* const name : {"one", "two", "three"}) {
      folder.add(std::string(name) + ".m2v", small_video());
      p.menulist.push_back(folder.stored(std::string(name) + ".m2v") + "/");
      p.moremenuoptions.push_back(std::string(new_menu_options) + name);
    }
    p.menubuttons = {"0/0/9/9/jump menu 2/black/black| 0/20/9/29/jump title 2/black/black",
                     "0/0/9/9/jump menu 3/red/black", "0/0/9/9/exit/blue/black"};
    p.saved = 1;
  }
  /// What a window does: the command is one step.
  template <class Command>
  std::string run(const char* name, Command command) {
    const document::step step(doc, name);
    return command();
  }
  std::string move(int menu, int to) {
    return run("move menu", [&] { return move_menu_command(doc, menu, to); });
  }
  std::string copy(int menu) {
    return run("copy menu", [&] { return copy_menu_command(doc, menu); });
  }
  std::string video(int menu, const std::string& picked, const std::string& refusal = {}) {
    ask.expect_open(
        {"select video stream for menu " + std::to_string(menu), material_video_filter, ""},
        picked);
    if (!refusal.empty())
      expect_refusal(refusal);
    return run("change menu video", [&] { return menu_video_command(doc, menu); });
  }
  std::string audio(int menu) {
    return run("change menu audio", [&] { return menu_audio_command(doc, menu); });
  }
  void expect_menu_audio(int menu, const std::string& picked) {
    ask.expect_open(
        {"select audio stream for menu " + std::to_string(menu), testing_support::audio_filter, ""},
        picked);
  }
  void expect_audio_question(int menu, const std::string& name, answer reply) {
    ask.expect(box("Menu " + std::to_string(menu) + " plays \"" + name +
                       "\".  Do you want to choose another audio stream?\n\nYes: choose one.\n"
                       "No: the menu plays without audio.\nCancel: it stays as it is.",
                   icon::none, buttons::yes_no_cancel),
               reply);
  }
  rows videos() const {
    rows names;
    for (const std::string& row : p.menulist)
      names.emplace_back(file_name_of(parse_menu_row(row).video));
    return names;
  }
};

// Moving -----------------------------------------------------------------------------------------

TEST_F(MenuMaterial, AMenuThatMovesTakesItsRowsAndWhatNamesItAlong) {
  p.firstplay = "jump titleset 1 menu";
  EXPECT_EQ(move(2, 3), "Menu 2 is menu 3 now; 2 buttons go along.");
  EXPECT_EQ(videos(), (rows{"one.m2v", "three.m2v", "two.m2v"}));
  EXPECT_EQ(p.moremenuoptions[2], std::string(new_menu_options) + "two");
  EXPECT_EQ(p.menubuttons,
            (rows{"0/0/9/9/jump menu 3/black/black| 0/20/9/29/jump title 2/black/black",
                  "0/0/9/9/exit/blue/black", "0/0/9/9/jump menu 2/red/black"}));
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(doc.undo_name(), "move menu");
}

TEST_F(MenuMaterial, AMoveIsOneStepThatIsUndone) {
  const project before = p;
  p.postinfo = {post_row("call menu 2"), post_row("exit")};
  const rows ends = p.postinfo;
  move(2, 3);
  EXPECT_NE(p.postinfo, ends);
  doc.undo();
  EXPECT_EQ(p.menulist, before.menulist);
  EXPECT_EQ(p.moremenuoptions, before.moremenuoptions);
  EXPECT_EQ(p.menubuttons, before.menubuttons);
  EXPECT_EQ(p.postinfo, ends);
  doc.redo();
  EXPECT_EQ(videos(), (rows{"one.m2v", "three.m2v", "two.m2v"}));
}

TEST_F(MenuMaterial, EndsOfTitlesAndFirstPlayGoAlong) {
  p.jumptable = true;
  p.postinfo = {post_row("call menu 3"), post_row("call last menu")};
  p.firstplay = "jump titleset 1 menu 3";
  EXPECT_EQ(move(3, 2),
            "Menu 3 is menu 2 now; 2 buttons, the end of title 1 and first play go "
            "along.");
  EXPECT_EQ(p.postinfo, (rows{post_row("call menu 2"), post_row("call last menu")}));
  EXPECT_EQ(p.firstplay, "jump titleset 1 menu 2");
}

TEST_F(MenuMaterial, TypedProgramsGoAlong) {
  p.menubuttons[2] = "0/0/9/9/if (g3 == 2) jump menu 2; else { jump menu 3; }/black/black";
  p.menubuttons[0] = "0/0/9/9/jump vmgm menu 2/black/black";
  EXPECT_EQ(move(3, 2), "Menu 3 is menu 2 now; 2 buttons go along.");
  EXPECT_EQ(p.menubuttons[1],
            "0/0/9/9/if (g3 == 2) jump menu 3; else { jump menu 2; }/black/black");
  EXPECT_EQ(p.menubuttons[0], "0/0/9/9/jump vmgm menu 2/black/black");
}

TEST_F(MenuMaterial, WhatNamesNoMenuStaysByteForByte) {
  p.menubuttons = {" 0/0/9/9/exit/black/black/more|", "0/0/9/9/Jump Menu 2/red/black", ""};
  p.postinfo = {"call menu", "exit  "};
  const rows buttons = p.menubuttons;
  EXPECT_EQ(move(3, 2), "Menu 3 is menu 2 now; no command names either of them by its number.");
  EXPECT_EQ(p.menubuttons, (rows{buttons[0], buttons[2], buttons[1]}));
  EXPECT_EQ(p.postinfo, (rows{"call menu", "exit  "}));
}

TEST_F(MenuMaterial, AnotherFirstMenuIsToldWithWhatLeadsToIt) {
  EXPECT_EQ(move(2, 1),
            "Menu 2 is menu 1 now; 1 button goes along.  The first menu is \"two.m2v\" now: the "
            "menu key and the beginning of the disc lead to it.");
  p.firstplay = "jump title 1";
  EXPECT_THAT(move(2, 1), HasSubstr("now: the menu key leads to it."));
  p.postinfo = {post_row("call menu"), post_row("call menu")};
  EXPECT_THAT(move(1, 3),
              HasSubstr("now: the menu key and the ends of titles 1 and 2 lead to it."));
}

TEST_F(MenuMaterial, AnEndWithoutRoomForTheLongerNumberStaysAndIsTold) {
  for (int menu = 4; menu <= 10; ++menu)
    p.menulist.push_back(p.menulist.back());
  const std::string full = "if (g5 == 11) call menu 9";
  ASSERT_EQ(full.size(), post_width);
  p.postinfo = {full, post_row("exit")};
  EXPECT_EQ(move(9, 10),
            "Menu 9 is menu 10 now.  There is no room for the new number in the end of title 1: "
            "choose it anew in \"nav cmds\".");
  EXPECT_EQ(p.postinfo[0], full);
}

TEST_F(MenuMaterial, ARegisterThatHoldsAMenusNumberIsTold) {
  p.postinfo = {post_row("g1 = 2; call menu"), post_row("exit")};
  EXPECT_THAT(move(2, 3), Not(HasSubstr("g1")));
  p.jumptable = true;
  EXPECT_THAT(move(2, 3), HasSubstr("A typed command uses g1"));
}

TEST_F(MenuMaterial, WhatIsNotedOfMovedCommandsGoesAlong) {
  note_command_targets(p);
  move(2, 3);
  EXPECT_THAT(moved_commands(p), IsEmpty());
  // A title that goes away makes a button lead elsewhere, and that is still known after a move.
  p.selected = 0;
  p.menubuttons[2] = "0/0/9/9/jump title 1/red/black";
  p.led_to.clear();
  note_command_targets(p);
  std::swap(p.List11[0], p.List11[1]);
  ASSERT_THAT(moved_commands(p), testing::SizeIs(2));
  move(3, 1);
  EXPECT_EQ(moved_commands_note(moved_commands(p)),
            "Button 1 of menu 1 and button 2 of menu 2 lead elsewhere than before.");
}

TEST_F(MenuMaterial, HandEditedXmlIsAskedAboutFirst) {
  p.customxml = "<dvdauthor/>\nby hand\n";
  const rows before = p.menulist;
  expect_guard(answer::cancel);
  EXPECT_EQ(move(1, 2), "");
  EXPECT_EQ(p.menulist, before);
  expect_guard(answer::ok);
  EXPECT_NE(move(1, 2), "");
  EXPECT_EQ(p.customxml, "");
}

TEST_F(MenuMaterial, AMenuThatIsNotThereIsNotMoved) {
  const rows before = p.menulist;
  for (const auto& [menu, to] : {std::pair(0, 1), {1, 0}, {4, 3}, {3, 4}, {2, 2}})
    EXPECT_EQ(move(menu, to), "");
  EXPECT_EQ(p.menulist, before);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(MenuMaterial, MissingRowsOfADamagedProjectAreFilledUp) {
  p.moremenuoptions.clear();
  p.menubuttons = {"0/0/9/9/jump menu 3/black/black"};
  move(3, 1);
  EXPECT_EQ(p.moremenuoptions, rows(3, new_menu_options));
  EXPECT_EQ(p.menubuttons, (rows{"", "0/0/9/9/jump menu 1/black/black", ""}));
}

// The disc after any moves has the same ways, between the same menus, as before: held against the
// reader of commands that the run's rules use.
class RandomMenuMoves : public MenuMaterial, public testing::WithParamInterface<unsigned> {
 protected:
  std::mt19937 random_{GetParam()};
  int up_to(int most) { return std::uniform_int_distribution<int>(1, most)(random_); }

  std::string action(int menus) {
    const auto number = [&] { return std::to_string(up_to(menus)); };
    switch (up_to(6)) {
      case 1:
        return "jump title " + std::to_string(up_to(2));
      case 2:
        return "if (g4 == " + number() + ") jump menu " + number() + "; else jump menu " + number();
      case 3:
        return "exit";
      case 4:
        return "jump  menu   " + number();
      default:
        return "jump menu " + number();
    }
  }
  void fill(int menus) {
    p.menulist.clear();
    p.menubuttons.clear();
    p.moremenuoptions.assign(static_cast<std::size_t>(menus), new_menu_options);
    for (int menu = 1; menu <= menus; ++menu) {
      p.menulist.push_back("\\menus\\" + std::to_string(menu) + ".m2v/");
      std::string element;
      for (int button = up_to(5); button > 0; --button)
        element += (element.empty() ? "0/0/9/9/" : "|0/0/9/9/") + action(menus) + "/black/black";
      p.menubuttons.push_back(element);
    }
    p.jumptable = true;
    p.postinfo = {post_row("call menu " + std::to_string(up_to(menus))),
                  post_row("call menu " + std::to_string(up_to(menus)))};
  }
  /// "from > to" of all commands, by what is played there.
  std::multiset<std::string> ways() const {
    const disc_description d = disc_of(p);
    const navigation_map map(d, false);
    std::multiset<std::string> all;
    const auto name = [&](int place) {
      const int number = map.number_of(place);
      return map.is_menu(place) ? d.menu(number).video() : d.title(number).video();
    };
    const auto add = [&](const std::string& from, const command_outcome& to) {
      EXPECT_THAT(to.problems, IsEmpty());
      for (const int place : to.places)
        all.insert(from + " > " + name(place));
    };
    for (int title = 1; title <= d.title_count(); ++title)
      add(d.title(title).video(), map.after_title(title));
    for (int menu = 1; menu <= d.menu_count(); ++menu)
      for (const disc_button& button : d.menu(menu).buttons)
        add(d.menu(menu).video(),
            map.outcome_of({command_owner::kind::menu, menu, 1}, button.action));
    return all;
  }
};

TEST_P(RandomMenuMoves, KeepEveryWayThroughTheDisc) {
  const int menus = 1 + up_to(98);
  fill(menus);
  const std::multiset<std::string> before = ways();
  for (int time = 0; time < 12; ++time)
    move_menu(p, up_to(menus), up_to(menus));
  EXPECT_EQ(ways(), before);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomMenuMoves, testing::Range(1U, 41U));

// Copying ----------------------------------------------------------------------------------------

TEST_F(MenuMaterial, ACopySharesTheStreamsAndHasButtonsOfItsOwn) {
  EXPECT_EQ(copy(2),
            "Menu 4 is a copy of menu 2, with the same video and audio and with buttons of "
            "its own.  Nothing leads to it yet.");
  EXPECT_EQ(videos(), (rows{"one.m2v", "two.m2v", "three.m2v", "two.m2v"}));
  EXPECT_EQ(p.menubuttons[3], p.menubuttons[1]);
  EXPECT_EQ(p.moremenuoptions[3], p.moremenuoptions[1]);
  EXPECT_EQ(p.saved, 0);
  p.menubuttons[3] = "0/0/9/9/exit/white/black";
  EXPECT_EQ(p.menubuttons[1], "0/0/9/9/jump menu 3/red/black");
  doc.undo();
  EXPECT_EQ(p.menulist.size(), 3u);
}

TEST_F(MenuMaterial, ACopyDoesNotInheritWhatALoadLeftBehindTheMenus) {
  p.menubuttons.emplace_back("9/9/9/9/exit/black/black");
  copy(3);
  EXPECT_EQ(p.menubuttons.size(), 4u);
  EXPECT_EQ(p.menubuttons[3], p.menubuttons[2]);
}

TEST_F(MenuMaterial, NoCopyBeyondTheMenusThatAProjectHolds) {
  p.menulist.resize(most_menus, p.menulist[0]);
  expect_refusal("A project holds at most 99 menus.  Please remove one first.");
  EXPECT_EQ(copy(1), "");
  EXPECT_EQ(p.menulist.size(), 99u);
}

// Another video ----------------------------------------------------------------------------------

TEST_F(MenuMaterial, AnotherVideoLeavesTheButtons) {
  folder.add("two.ac3");
  p.menulist[1] += folder.stored("two.ac3");
  const rows buttons = p.menubuttons;
  EXPECT_EQ(video(2, folder.add("new.m2v", small_video())),
            "Menu 2 shows \"new.m2v\" now; its buttons are where they were.");
  EXPECT_EQ(p.menulist[1], folder.stored("new.m2v") + "/" + folder.stored("two.ac3"));
  EXPECT_EQ(p.menubuttons, buttons);
  EXPECT_EQ(p.saved, 0);
  doc.undo();
  EXPECT_EQ(videos()[1], "two.m2v");
}

TEST_F(MenuMaterial, CancelledVideoDialogChangesNothing) {
  EXPECT_EQ(video(2, ""), "");
  EXPECT_EQ(videos()[1], "two.m2v");
  EXPECT_EQ(p.saved, 1);
}

TEST_F(MenuMaterial, VideoOfTheOtherStandardIsRefused) {
  const std::string pal = folder.add("pal.m2v", small_video(video_standard::pal));
  const std::string refusal =
      "\"pal.m2v\" cannot be the video of menu 2: the video is PAL (720x576, 25 pictures a second) "
      "in a project of NTSC.  A menu needs: NTSC.  The menu keeps its video.";
  EXPECT_EQ(video(2, pal, refusal), "");
  EXPECT_EQ(videos()[1], "two.m2v");
}

TEST_F(MenuMaterial, VideoOfAnotherShapeThanTheOtherMenusIsRefused) {
  const std::string wide = folder.add("wide.m2v", small_video(video_standard::ntsc, 3));
  const std::string refusal =
      "\"wide.m2v\" cannot be the video of menu 2: its picture is 720x480, 16:9, that of menu 1 is "
      "720x480, 4:3.  All menus of a disc must have pictures of one size and shape.  The menu "
      "keeps its video.";
  EXPECT_EQ(video(2, wide, refusal), "");
  p.menulist.resize(1);
  EXPECT_NE(video(1, wide), "") << "the only menu may have any shape";
}

TEST_F(MenuMaterial, VideoOfASizeThatNoDiscHasIsRefused) {
  std::string odd = small_video();
  odd[4] = 0x28;  // 640 pixels wide
  const std::string file = folder.add("odd.m2v", odd);
  const std::string refusal =
      "\"odd.m2v\" cannot be the video of menu 2: the picture is 640x480.  A menu needs: 720, 704 "
      "or 352 pixels wide and 480 (NTSC) or 576 (PAL) high, or 352x240 (NTSC), 352x288 (PAL); of "
      "MPEG-1 only the last two.  The menu keeps its video.";
  EXPECT_EQ(video(2, file, refusal), "");
}

TEST_F(MenuMaterial, AFileThatIsNoVideoIsAskedAboutAsWhenAMenuIsAdded) {
  const std::string sound = folder.add("s.m2v", testing_support::small_sound());
  ask.expect_open({"select video stream for menu 2", material_video_filter, ""}, sound);
  expect_loss("\"" + sound +
                  "\" is MPEG sound, not an MPEG-2 video stream, which a menu takes its picture "
                  "from.\r\n\r\nChoose the video first; its sound is asked for after that, and "
                  "\"add audio stream\" adds more.\r\n\r\nDo you want to take it nonetheless?  "
                  "With Cancel nothing is added.",
              icon::exclamation, answer::cancel);
  EXPECT_EQ(menu_video_command(doc, 2), "");
  EXPECT_EQ(videos()[1], "two.m2v");
}

TEST_F(MenuMaterial, CommandsThatLeadToTheMenuStillDoWithAnotherVideo) {
  note_command_targets(p);
  copy(2);  // has the same video
  p.menubuttons[2] = "0/0/9/9/jump menu 4/black/black";
  note_command_targets(p);
  video(4, folder.add("new.m2v", small_video()));
  EXPECT_THAT(moved_commands(p), IsEmpty());
  video(2, folder.add("newer.m2v", small_video()));
  EXPECT_THAT(moved_commands(p), IsEmpty());
}

// Another audio ----------------------------------------------------------------------------------

TEST_F(MenuMaterial, AMenuWithoutAudioGetsOne) {
  expect_menu_audio(2, folder.add("m.ac3"));
  EXPECT_EQ(audio(2), "Menu 2 plays \"m.ac3\" now.");
  EXPECT_EQ(p.menulist[1], folder.stored("two.m2v") + "/" + folder.stored("m.ac3"));
  expect_menu_audio(3, "");
  EXPECT_EQ(audio(3), "");
  EXPECT_EQ(p.menulist[2], folder.stored("three.m2v") + "/");
}

TEST_F(MenuMaterial, AudioIsChangedTakenAwayOrLeft) {
  p.menulist[1] += folder.stored("old.ac3");
  folder.add("old.ac3");
  const std::string before = p.menulist[1];
  expect_audio_question(2, "old.ac3", answer::cancel);
  EXPECT_EQ(audio(2), "");
  EXPECT_EQ(p.menulist[1], before);
  expect_audio_question(2, "old.ac3", answer::yes);
  expect_menu_audio(2, folder.add("new.ac3"));
  EXPECT_EQ(audio(2), "Menu 2 plays \"new.ac3\" now.");
  expect_audio_question(2, "new.ac3", answer::no);
  EXPECT_EQ(audio(2), "Menu 2 plays without audio now.");
  EXPECT_EQ(p.menulist[1], folder.stored("two.m2v") + "/");
  doc.undo();
  EXPECT_EQ(p.menulist[1], folder.stored("two.m2v") + "/" + folder.stored("new.ac3"));
}

}  // namespace
}  // namespace corvane

// How buttons look: what is foreseen of them, and what a disc shows, from its highlight
// information, palette and subpicture.
#include "examine/button_looks.h"

#include "examine/disc_rules.h"
#include "examine/foreseen_disc.h"
#include "examine/found_disc.h"
#include "formats/made_subpicture.h"
#include "made_disc.h"
#include "made_packs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using examine_test::pack_maker;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing_support::made_button;
using testing_support::made_disc;
using testing_support::made_menu;
using testing_support::made_overlay;

// What is foreseen -------------------------------------------------------------------------------

std::vector<seen_button> looks_foreseen(const disc_menu& menu) {
  return foreseen_buttons(made_disc({}, {menu}), menu);
}

disc_menu looked_menu(std::vector<disc_button> buttons, const std::string& thickness = "1") {
  disc_menu menu = made_menu({});
  menu.buttons = std::move(buttons);
  menu.thickness = number_of(thickness);
  return menu;
}

bool anything_known(const seen_button& b) {
  return !b.highlighted.empty() || !b.selected.empty() || !b.drawn.empty();
}

TEST(ForeseenButtons, HaveTheColoursAndDotsThatARunDraws) {
  const auto seen = looks_foreseen(looked_menu({made_button("100", "50", "300", "90")}));
  ASSERT_THAT(seen, SizeIs(1));
  EXPECT_EQ(seen[0].highlighted, "white");
  EXPECT_EQ(seen[0].selected, "grey");
  // 199 by 40, without 195 by 36.
  EXPECT_EQ(seen[0].drawn, "940 dots within 100,50 to 298,89");
}

TEST(ForeseenButtons, ABarIsSolidAndAFrameAsThickAsAsked) {
  const auto drawn = [](const std::string& y1, const std::string& thickness) {
    return looks_foreseen(looked_menu({made_button("100", "50", "120", y1)}, thickness))[0].drawn;
  };
  EXPECT_EQ(drawn("53", "1"), "57 dots within 100,50 to 118,52");
  EXPECT_EQ(drawn("80", "0"), "94 dots within 100,50 to 118,79");
  EXPECT_EQ(drawn("80", "3"), "328 dots within 100,50 to 118,79");
  EXPECT_EQ(drawn("80", "8"), "570 dots within 100,50 to 118,79") << "an inside of one pixel";
  EXPECT_EQ(drawn("80", "50"), "570 dots within 100,50 to 118,79") << "none";
}

TEST(ForeseenButtons, OfAStateWithABitmapNothingIsKnown) {
  const disc_button plain = made_button("100", "50", "300", "90");
  const auto selects = looks_foreseen(
      looked_menu({plain, made_button("100", "150", "300", "190", "exit", "red", "\\a.bmp")}));
  EXPECT_EQ(selects[0].highlighted, "white");
  EXPECT_EQ(selects[0].selected, "") << "the bitmap may reach into this button";
  const auto highlights = looks_foreseen(
      looked_menu({plain, made_button("100", "150", "300", "190", "exit", "\\a.bmp", "cyan")}));
  EXPECT_EQ(highlights[0].highlighted, "");
  EXPECT_EQ(highlights[0].drawn, "");
  EXPECT_EQ(highlights[1].selected, "cyan");
}

TEST(ForeseenButtons, OfAColourThatIsNotOfferedNothingIsKnown) {
  const auto seen =
      looks_foreseen(looked_menu({made_button("100", "50", "300", "90", "exit", "red", "blue")}));
  EXPECT_EQ(seen[0].highlighted, "");
  EXPECT_EQ(seen[0].drawn, "");
  EXPECT_EQ(seen[0].selected, "blue");
}

TEST(ForeseenButtons, OfButtonsThatTouchNothingIsKnown) {
  const auto seen = looks_foreseen(
      looked_menu({made_button("100", "50", "300", "90"), made_button("100", "90", "300", "130"),
                   made_button("100", "132", "300", "170")}));
  EXPECT_FALSE(anything_known(seen[0])) << "on the disc both have line 90";
  EXPECT_FALSE(anything_known(seen[1]));
  EXPECT_TRUE(anything_known(seen[2]));
}

TEST(ForeseenButtons, WithEdgesOrAThicknessThatAreNoneNothingIsKnown) {
  const disc_button good = made_button("100", "50", "300", "90");
  const auto known = [&](const disc_button& other, const std::string& thickness = "1") {
    return anything_known(looks_foreseen(looked_menu({good, other}, thickness))[0]);
  };
  EXPECT_TRUE(known(made_button("100", "150", "720", "480")));
  EXPECT_FALSE(known(made_button("100", "150", "721", "480")));
  EXPECT_FALSE(known(made_button("100", "150", "300", "500"))) << "the picture has 480 lines";
  EXPECT_FALSE(known(made_button("100.5", "150", "300", "190")));
  EXPECT_FALSE(known(made_button("-1", "150", "300", "190")));
  EXPECT_FALSE(known(made_button("x", "150", "300", "190")));
  EXPECT_FALSE(known(made_button("300", "150", "100", "190")));
  EXPECT_FALSE(known(made_button("100", "150", "105", "152"))) << "too small to be drawn";
  const disc_button other = made_button("100", "150", "300", "190");
  EXPECT_TRUE(known(other, " 2"));
  for (const char* const thickness : {"x", "-1", "1e300", ""})
    EXPECT_FALSE(known(other, thickness)) << thickness;
}

TEST(Drawings, AreTheSameWithinTheirTolerance) {
  const std::string asked = "1000 dots within 100,50 to 298,89";
  EXPECT_TRUE(is_same_drawing(asked, asked));
  EXPECT_TRUE(is_same_drawing(asked, "984 dots within 102,50 to 296,88"));
  EXPECT_FALSE(is_same_drawing(asked, "984 dots within 103,50 to 296,88"));
  EXPECT_FALSE(is_same_drawing(asked, "1000 dots within 100,53 to 298,92"));
  EXPECT_TRUE(is_same_drawing(asked, "1082 dots within 100,50 to 298,89"));
  EXPECT_FALSE(is_same_drawing(asked, "10114 dots within 100,50 to 298,89"));
  EXPECT_FALSE(is_same_drawing(asked, "nothing"));
  EXPECT_TRUE(is_same_drawing("nothing", "nothing"));
  EXPECT_FALSE(is_same_drawing(asked, "99999999999999999999 dots within 100,50 to 298,89"));
}

// What a disc shows ------------------------------------------------------------------------------

constexpr int picture_left = 100, picture_top = 50, picture_lines = 60;

/// Frames of two pixels: of code 1 at line 50, of code 2 at line 90, each 39 by 20.
std::vector<std::string> drawn_lines() {
  std::vector<std::string> all(picture_lines, std::string(39, '0'));
  for (const auto& [first, code] : {std::pair(0, '1'), std::pair(40, '2')})
    for (int y = 0; y < 20; ++y) {
      const bool solid = y < 2 || y >= 18;
      std::string& line = all[static_cast<std::size_t>(first + y)];
      line.replace(0, 2, 2, code);
      line.replace(37, 2, 2, code);
      if (solid)
        line.assign(39, code);
    }
  return all;
}

/// A disc with one menu of two buttons, white and grey, yellow and blue, and the same as a project
/// asks for it.
class ButtonsOnDisc : public ::testing::Test {
 protected:
  ButtonsOnDisc() {
    chain_->palette[1] = 0x00EB8080;
    chain_->palette[2] = 0x007C8080;
    chain_->palette[3] = 0x00D29210;
    chain_->palette[4] = 0x00296EF0;
    chain_->still_seconds = 255;
    chain_->subpictures[0].present = true;
    shown_->buttons_stated = 2;
    shown_->buttons.resize(2);
    shown_->buttons[0] = button_at(1, 50);
    shown_->buttons[1] = button_at(2, 90);
    shown_->colours[0] = {0x001000F0, 0x002000F0};
    shown_->colours[1] = {0x03000F00, 0x04000F00};
    asked_.buttons = {made_button("100", "50", "140", "70"),
                      made_button("100", "90", "140", "110", "exit", "yellow", "blue")};
    put(made_overlay(picture_left, picture_top, drawn_lines()));
  }

  static menu_button button_at(int row, int y) {
    menu_button b;
    b.colours = row;
    b.x0 = 100;
    b.x1 = 140;
    b.y0 = y;
    b.y1 = y + 20;
    return b;
  }

  /// The menu's stream: the unit in pieces, each in a pack of its own, with another one between.
  void put(const std::vector<std::uint8_t>& unit, int number = 0, std::size_t piece = 100) {
    pack_maker maker;
    maker.pack(0).navigation(1, 1);
    maker.bytes.resize(disc_sector_size);
    const std::string bytes(unit.begin(), unit.end());
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
      maker.pack(27000 * (at + 1));
      maker.subpicture(bytes.substr(at, piece),
                       at == 0 ? std::optional<stream_time>(9000) : std::nullopt, number);
      maker.fill().pack(27000 * (at + 2)).subpicture("\1\2\3", 9000, 7).fill();
    }
    stream_ = maker.bytes;
  }

  disc_contents contents() const {
    disc_contents disc;
    disc.titlesets.resize(1);
    const auto sectors = static_cast<std::uint32_t>(stream_.size() / disc_sector_size);
    disc.vobs.push_back({1, true, {"VIDEO_TS/VTS_01_0.VOB"}, {sectors}, sectors, {}});
    auto chain = std::make_shared<program_chain>(*chain_);
    cell_playback cell;
    cell.last_sector = cell.last_unit_sector = sectors - 1;
    cell.vob = cell.cell = 1;
    chain->cells = {cell};
    disc_menu_contents menu;
    menu.titleset = menu.number = 1;
    menu.language = "en";
    menu.entry = menu_kind::root;
    menu.video.aspect_code = aspect_code_;
    menu.chain.tables = chain;
    menu.chain.seconds = 1;
    menu.chain.highlight = shown_;
    disc.menus.push_back(menu);
    return disc;
  }

  struct looked_at {
    disc_traits found;
    std::vector<finding> own;
  };
  looked_at look(std::size_t sectors_at_once = 3) const {
    const disc_contents disc = contents();
    disc_stream_reader reader(disc);
    const std::vector<std::uint8_t> bytes(stream_.begin(), stream_.end());
    const std::size_t slice = sectors_at_once * disc_sector_size;
    for (std::size_t at = 0; at < bytes.size(); at += slice)
      reader.feed(disc.vobs[0], static_cast<std::uint32_t>(at / disc_sector_size),
                  std::span(bytes).subspan(at, std::min(slice, bytes.size() - at)));
    const disc_streams streams = reader.finish();
    return {found_disc(disc, streams), disc_findings(disc, streams)};
  }

  /// What is told of the looks, "rule @ place: found".
  std::vector<std::string> told(std::size_t sectors_at_once = 3) const {
    const looked_at at = look(sectors_at_once);
    std::vector<finding> all =
        differences(foreseen_disc(made_disc({}, {asked_}), {}, false), at.found, {});
    all.insert(all.end(), at.own.begin(), at.own.end());
    std::vector<std::string> lines;
    for (const finding& f : all)
      if (f.rule.starts_with("disc-button-") || f.rule == "disc-no-overlay")
        lines.push_back(f.rule + " @ " + place_text(f) + ": " + f.found);
    return lines;
  }

  std::string said(int button, disc_trait_kind what) const {
    const looked_at at = look();
    const disc_trait* const one = at.found.find(
        {finding_item::whole_kind::menu, 1, finding_item::part_kind::button, button}, what);
    return one == nullptr ? "(nothing)" : one->value;
  }

  std::shared_ptr<program_chain> chain_ = std::make_shared<program_chain>();
  std::shared_ptr<highlight_information> shown_ = std::make_shared<highlight_information>();
  disc_menu asked_ = made_menu({});
  std::string stream_;
  std::uint8_t aspect_code_ = 0;
};

TEST_F(ButtonsOnDisc, ThatAreAsAskedAreNotTold) {
  EXPECT_THAT(told(), IsEmpty());
  EXPECT_THAT(told(1), IsEmpty());
  EXPECT_EQ(said(1, disc_trait_kind::highlighted), "white");
  EXPECT_EQ(said(1, disc_trait_kind::selected), "grey");
  EXPECT_EQ(said(2, disc_trait_kind::highlighted), "yellow");
  EXPECT_EQ(said(2, disc_trait_kind::selected), "blue");
  EXPECT_EQ(said(2, disc_trait_kind::drawn), "220 dots within 100,90 to 138,109");
}

TEST_F(ButtonsOnDisc, AWrongPaletteEntryIsToldOfTheButtonThatHasIt) {
  chain_->palette[3] = 0x0051F05A;
  EXPECT_THAT(told(), ElementsAre("disc-button-colours @ menu 1, button 2: highlighted: #FE0000"));
}

TEST_F(ButtonsOnDisc, SwappedStatesAreTold) {
  std::swap(shown_->colours[0][0], shown_->colours[0][1]);
  EXPECT_THAT(told(), ElementsAre("disc-button-colours @ menu 1, button 1: highlighted: grey",
                                  "disc-button-colours @ menu 1, button 1: selected: white"));
}

TEST_F(ButtonsOnDisc, AnotherRowOfColoursIsTold) {
  shown_->buttons[0].colours = 2;
  EXPECT_THAT(told(), ElementsAre("disc-button-colours @ menu 1, button 1: highlighted: nothing",
                                  "disc-button-colours @ menu 1, button 1: selected: nothing",
                                  "disc-button-drawn @ menu 1, button 1: drawn: nothing"));
  shown_->buttons[0].colours = 0;
  EXPECT_EQ(said(1, disc_trait_kind::highlighted), "nothing") << "as it is at rest";
}

TEST_F(ButtonsOnDisc, AnEmptyPictureIsTold) {
  put(made_overlay(picture_left, picture_top,
                   std::vector<std::string>(picture_lines, std::string(39, '0'))));
  EXPECT_THAT(told(), AllOf(SizeIs(6), Each(HasSubstr(": nothing"))));
}

TEST_F(ButtonsOnDisc, APictureThatHasMovedIsTold) {
  put(made_overlay(picture_left, picture_top + 10, drawn_lines()));
  EXPECT_THAT(told(), ElementsAre("disc-button-drawn @ menu 1, button 1: drawn: 114 dots within "
                                  "100,60 to 138,70",
                                  "disc-button-drawn @ menu 1, button 2: drawn: 114 dots within "
                                  "100,100 to 138,110"));
}

TEST_F(ButtonsOnDisc, AFrameThatIsFilledIsTold) {
  std::vector<std::string> drawn = drawn_lines();
  std::fill_n(drawn.begin(), 20, std::string(39, '1'));
  put(made_overlay(picture_left, picture_top, drawn));
  EXPECT_THAT(told(), ElementsAre(HasSubstr("button 1: drawn: 780 dots")));
}

TEST_F(ButtonsOnDisc, HalfOfTheirOpacityIsTold) {
  shown_->colours[0][0] = 0x00100080;
  EXPECT_THAT(told(), ElementsAre(HasSubstr("button 1: highlighted: white, 46 % transparent")));
}

TEST_F(ButtonsOnDisc, ColoursAreNamedTogether) {
  std::vector<std::string> drawn = drawn_lines();
  drawn[0].assign(39, '3');
  put(made_overlay(picture_left, picture_top, drawn));
  shown_->colours[0][0] = 0x3010F0F0;
  EXPECT_EQ(said(1, disc_trait_kind::highlighted), "white and yellow");
  EXPECT_EQ(said(1, disc_trait_kind::drawn), "220 dots within 100,50 to 138,69");
}

TEST_F(ButtonsOnDisc, WithoutAPictureOneFindingTellsIt) {
  stream_ = pack_maker().pack(0).navigation(1, 1).bytes;
  stream_.resize(disc_sector_size);
  EXPECT_THAT(told(), ElementsAre("disc-no-overlay @ menu 1: its buttons have no picture"));
}

TEST_F(ButtonsOnDisc, APictureThatCannotBeReadIsTold) {
  std::vector<std::uint8_t> unit = made_overlay(picture_left, picture_top, drawn_lines());
  unit[0] = 0x30;
  put(unit);
  EXPECT_THAT(told(),
              ElementsAre("disc-no-overlay @ menu 1: the picture of its buttons is cut off"));
  unit = made_overlay(picture_left, picture_top, drawn_lines());
  unit[2] = 0x40;
  put(unit);
  EXPECT_THAT(told(),
              ElementsAre("disc-no-overlay @ menu 1: the picture of its buttons cannot be read"));
}

TEST_F(ButtonsOnDisc, APictureInAStreamThatThePlayerDoesNotShowIsToldAsNothing) {
  put(made_overlay(picture_left, picture_top, drawn_lines()), 1);
  EXPECT_THAT(told(), AllOf(SizeIs(6), Each(HasSubstr(": nothing"))));
}

TEST_F(ButtonsOnDisc, AWideMenuShowsTheStreamForWideDisplays) {
  put(made_overlay(picture_left, picture_top, drawn_lines()), 1);
  chain_->subpictures[0].wide = 1;
  EXPECT_THAT(told(), SizeIs(6)) << "the menu is 4:3";
  aspect_code_ = 3;
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(ButtonsOnDisc, TheFirstPictureCounts) {
  const std::string first = stream_;
  put(made_overlay(picture_left, picture_top,
                   std::vector<std::string>(picture_lines, std::string(39, '0'))));
  stream_ = first + stream_;
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(ButtonsOnDisc, OfEditedXmlTheyAreForeseenWhereTheRunDrawsThem) {
  const auto foreseen_looks = [this](bool hand_edited) {
    std::vector<disc_trait> looks;
    const disc_traits foreseen = foreseen_disc(made_disc({}, {asked_}), {}, hand_edited);
    for (const disc_trait& trait : foreseen.all())
      if (trait.kind == disc_trait_kind::highlighted || trait.kind == disc_trait_kind::selected ||
          trait.kind == disc_trait_kind::drawn)
        looks.push_back(trait);
    return looks;
  };
  EXPECT_FALSE(foreseen_looks(true).empty());
  EXPECT_EQ(foreseen_looks(true), foreseen_looks(false));
  asked_.has_other_looks = true;
  EXPECT_TRUE(foreseen_looks(true).empty()) << "a palette of its own";
  asked_.has_other_looks = false;
  asked_.is_ready = true;
  EXPECT_TRUE(foreseen_looks(true).empty()) << "a file that the run does not make";
}

TEST_F(ButtonsOnDisc, AnyDamageOfThePictureIsSurvived) {
  std::mt19937 random(5);
  const std::vector<std::uint8_t> unit = made_overlay(picture_left, picture_top, drawn_lines());
  for (int i = 0; i < 100; ++i) {
    std::vector<std::uint8_t> damaged = unit;
    damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
    put(damaged, 0, 1 + random() % 200);
    const looked_at at = look();
    EXPECT_FALSE(at.found.all().empty());
  }
}

}  // namespace
}  // namespace corvane

// Subpicture units: pictures of four codes, and what breaks them.
#include "formats/subpicture.h"

#include "made_subpicture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing_support::made_overlay;
using unit_of_test = std::vector<std::uint8_t>;

const std::vector<std::string> small_picture = {"0012", "3333", "1000"};

/// As lines of codes again.
std::vector<std::string> lines_of(const subpicture& picture) {
  std::vector<std::string> lines(static_cast<std::size_t>(picture.y1 - picture.y0 + 1));
  for (const subpicture_run& run : picture.runs) {
    std::string& line = lines.at(static_cast<std::size_t>(run.y - picture.y0));
    EXPECT_EQ(run.x0, picture.x0 + static_cast<int>(line.size())) << "no gap, nothing twice";
    line.append(static_cast<std::size_t>(run.x1 - run.x0 + 1), static_cast<char>('0' + run.code));
  }
  return lines;
}

std::string why_not_read(const unit_of_test& unit) {
  return read_subpicture(unit, 720, 576).error;
}

/// Where its commands are: behind the time and the next list's place, 4 bytes, they are in the
/// order in which made_overlay puts them.
std::size_t list_of(const unit_of_test& unit) {
  return std::size_t{unit[2]} << 8 | unit[3];
}

TEST(Subpicture, IsReadWithItsPlaceLooksAndDots) {
  const auto picture = read_subpicture(made_overlay(100, 52, small_picture, 0x3210F081), 720, 576);
  ASSERT_TRUE(picture) << picture.error;
  EXPECT_EQ(picture->x0, 100);
  EXPECT_EQ(picture->x1, 103);
  EXPECT_EQ(picture->y0, 52);
  EXPECT_EQ(picture->y1, 54);
  EXPECT_EQ(picture->at_rest.colour, (std::array<std::uint8_t, 4>{0, 1, 2, 3}));
  EXPECT_EQ(picture->at_rest.opacity, (std::array<std::uint8_t, 4>{1, 8, 0, 15}));
  EXPECT_EQ(picture->at_rest, code_looks_of(0x3210F081));
  EXPECT_EQ(lines_of(*picture), small_picture);
}

TEST(Subpicture, RunsOfAllLengthsAreReadAsTheyWereWritten) {
  std::mt19937 random(7);
  for (const std::size_t width : {1, 3, 4, 15, 16, 63, 64, 255, 256, 719, 720}) {
    std::vector<std::string> lines(9);
    for (std::string& line : lines)
      while (line.size() < width)
        line.append(std::min<std::size_t>(1 + random() % 400, width - line.size()),
                    static_cast<char>('0' + random() % 4));
    const auto picture = read_subpicture(made_overlay(0, 567, lines), 720, 576);
    ASSERT_TRUE(picture) << picture.error;
    EXPECT_EQ(lines_of(*picture), lines) << width;
  }
}

TEST(Subpicture, ARunOfNoLengthGoesToTheEndOfItsLine) {
  unit_of_test unit = made_overlay(0, 0, {std::string(300, '0'), std::string(300, '2')});
  // 255 dots in two bytes, 45 in one and a half: the line would be 300 dots long with any end.
  unit[4] = unit[5] = 0;
  unit[5] = 1;
  const auto picture = read_subpicture(unit, 720, 576);
  ASSERT_TRUE(picture) << picture.error;
  EXPECT_EQ(picture->runs.front(), (subpicture_run{0, 0, 299, 1}));
}

TEST(Subpicture, CutOffAnywhereItIsRefused) {
  const unit_of_test unit = made_overlay(100, 52, small_picture);
  for (std::size_t size = 0; size < unit.size(); ++size)
    EXPECT_NE(why_not_read({unit.begin(), unit.begin() + static_cast<std::ptrdiff_t>(size)}), "")
        << size;
  EXPECT_EQ(why_not_read(unit), "");
}

TEST(Subpicture, WhatLeadsOutOfItIsRefused) {
  const unit_of_test unit = made_overlay(100, 52, small_picture);
  const std::size_t list = list_of(unit);
  const auto with = [&](std::size_t at, std::uint8_t value) {
    unit_of_test changed = unit;
    changed.at(at) = value;
    return why_not_read(changed);
  };
  EXPECT_EQ(with(list + 4, 9), "cannot be read") << "a command that is not known";
  EXPECT_EQ(with(list + 3, 1), "cannot be read") << "a list that leads back";
  EXPECT_EQ(with(list + 12, 0xFF), "cannot be read") << "a left edge behind the right one";
  EXPECT_EQ(with(list + 16, 0x4F), "does not fit into the picture");
  EXPECT_EQ(with(list + 19, 0xFF), "is cut off") << "lines behind its end";
}

TEST(Subpicture, PartsWithOtherLooksArePassedOver) {
  unit_of_test unit = made_overlay(100, 52, small_picture);
  unit.pop_back();
  for (const int byte : {7, 0, 6, 1, 2, 3, 4, 0xFF})  // six bytes with their number
    unit.push_back(static_cast<std::uint8_t>(byte));
  unit[1] = static_cast<std::uint8_t>(unit.size());
  EXPECT_EQ(why_not_read(unit), "");
  unit[unit.size() - 6] = 60;
  EXPECT_EQ(why_not_read(unit), "cannot be read");
}

TEST(Subpicture, ListsWithinEachOtherAreRefused) {
  unit_of_test unit = made_overlay(100, 52, small_picture);
  const std::size_t list = list_of(unit);
  unit[list + 3] = static_cast<std::uint8_t>(list + 5);  // the next list begins in this one
  EXPECT_EQ(why_not_read(unit), "cannot be read");
}

TEST(Subpicture, AnyBytesEnd) {
  std::mt19937 random(11);
  const unit_of_test unit = made_overlay(100, 52, small_picture);
  for (int i = 0; i < 20000; ++i) {
    unit_of_test changed = unit;
    for (auto changes = 1 + random() % 3; changes > 0; --changes)
      changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
    const auto picture = read_subpicture(changed, 720, 576);
    EXPECT_TRUE(picture ? picture->runs.size() <= std::size_t{720} * 576 : !picture.error.empty());
  }
}

TEST(Subpicture, ItsSizeIsStated) {
  const unit_of_test unit = made_overlay(0, 0, {"0"});
  EXPECT_EQ(stated_unit_size(unit), unit.size());
  EXPECT_EQ(stated_unit_size({unit.data(), 1}), 0u);
}

TEST(Subpicture, ColoursAreThoseThatATelevisionShows) {
  EXPECT_EQ(colour_of_entry(0x00108080), (rgb_colour{0, 0, 0}));
  EXPECT_EQ(colour_of_entry(0x00EB8080), (rgb_colour{255, 255, 255}));
  EXPECT_EQ(colour_of_entry(0xFF000000), colour_of_entry(0)) << "the first byte says nothing";
  const rgb_colour red = colour_of_entry(0x0051F05A);
  EXPECT_NEAR(red.red, 255, 2);
  EXPECT_NEAR(red.green, 0, 2);
  EXPECT_NEAR(red.blue, 0, 2);
}

}  // namespace
}  // namespace corvane

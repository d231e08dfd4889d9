// What is on a disc, read back from files made by hand.
#include "examine/read_disc.h"

#include "formats/made_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace corvane {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using namespace testing_support;

class made_files : public disc_files {
 public:
  explicit made_files(const std::map<std::string, std::vector<std::uint8_t>>& contents)
      : contents_(contents) {
    for (const auto& [path, bytes] : contents)
      files_.push_back({path, bytes.size(), 0});
  }
  const std::vector<disc_file>& files() const override { return files_; }
  bool read(const disc_file& file, std::uint64_t at, std::span<std::uint8_t> buffer) override {
    ++reads;
    memory_source source(contents_.at(file.path));
    return source.read(at, buffer);
  }

  /// Puts the file at a sector, as in an image.
  void place(const std::string& path, std::uint32_t sector) {
    for (disc_file& file : files_)
      if (file.path == path)
        file.first_sector = sector;
  }

  int reads = 0;

 private:
  const std::map<std::string, std::vector<std::uint8_t>>& contents_;
  std::vector<disc_file> files_;
};

struct made_unit {
  unsigned sector, end, cell;
};

/// VOBs of `sectors` with these units, half a second for each ten sectors; buttons from the second
/// unit on when there are any.
made_bytes made_vobs(std::size_t sectors, const std::vector<made_unit>& units, bool buttons) {
  made_bytes vobs(sectors * 2048);
  for (const made_unit& unit : units) {
    made_bytes pack = made_navigation_pack();
    const std::size_t pci = 0x2D, dsi = 0x407;
    pack.u32(pci, unit.sector);
    pack.u32(dsi + 4, unit.sector);
    pack.u32(pci + 12, 4500 * unit.sector + 1000);
    pack.u32(pci + 16, 4500 * unit.end + 1000);
    pack.u32(dsi + 8, unit.end - unit.sector - 1);
    pack.u8(dsi + 27, unit.cell);
    pack.u16(pci + 96, buttons && unit.sector > 0 ? 1 : 0);
    for (std::size_t i = 0; i < 2048; ++i)
      vobs.bytes[unit.sector * std::size_t{2048} + i] = pack.bytes[i];
  }
  return vobs;
}

std::map<std::string, std::vector<std::uint8_t>> made_files_of_disc() {
  made_bytes set = made_titleset();
  set.u32(0x22, 0x1234);  // as the video manager's copy has it
  const std::vector<made_unit> menus{{0, 10, 1}, {10, 20, 2}};
  const auto menu_vobs = made_vobs(20, menus, true).bytes;
  return {{"VIDEO_TS/VIDEO_TS.BUP", made_manager().bytes},
          {"VIDEO_TS/VIDEO_TS.IFO", made_manager().bytes},
          {"VIDEO_TS/VIDEO_TS.VOB", menu_vobs},
          {"VIDEO_TS/VTS_01_0.BUP", set.bytes},
          {"VIDEO_TS/VTS_01_0.IFO", set.bytes},
          {"VIDEO_TS/VTS_01_0.VOB", menu_vobs},
          {"VIDEO_TS/VTS_01_1.VOB",
           made_vobs(100, {{0, 20, 1}, {20, 40, 1}, {40, 70, 2}, {70, 100, 2}}, false).bytes}};
}

std::string told(const disc_contents& contents) {
  std::string text;
  for (const disc_trouble& trouble : contents.troubles)
    text += trouble.file + ": " + trouble.what + "\n";
  return text;
}

/// What is told of the disc after a change.
std::string damaged(
    const std::function<void(std::map<std::string, std::vector<std::uint8_t>>&)>& change) {
  auto made = made_files_of_disc();
  change(made);
  made_files files(made);
  const auto contents = read_disc(files);
  return contents ? told(*contents) : contents.error;
}

TEST(ReadDisc, TitlesAreFoundWithTheirTimes) {
  const auto made = made_files_of_disc();
  made_files files(made);
  const auto contents = read_disc(files);
  ASSERT_TRUE(contents) << contents.error;
  EXPECT_EQ(told(*contents), "");
  ASSERT_THAT(contents->titles, SizeIs(2));
  const disc_title_contents &first = contents->titles[0], &second = contents->titles[1];
  EXPECT_EQ(first.titleset, 1);
  EXPECT_DOUBLE_EQ(first.chain.seconds, 5);
  EXPECT_THAT(first.chapters, ElementsAre(0, DoubleEq(2)));
  EXPECT_THAT(first.chain.units, ElementsAre(0, DoubleEq(1), DoubleEq(2), DoubleEq(3.5)));
  EXPECT_EQ(first.video.aspect(), "16:9");
  ASSERT_THAT(first.audio, SizeIs(2));
  EXPECT_EQ(first.audio[0].id, 0x80);
  EXPECT_EQ(first.audio[1].id, 0xC3);
  EXPECT_EQ(first.audio[1].attributes.language, "en");
  ASSERT_THAT(first.subpictures, SizeIs(1));
  EXPECT_EQ(first.subpictures[0].id, 0x22) << "the stream for wide displays";
  EXPECT_EQ(second.number_in_titleset, 2);
  EXPECT_DOUBLE_EQ(second.chain.seconds, 3);
  EXPECT_THAT(second.chapters, ElementsAre(0));
}

TEST(ReadDisc, MenusAreFoundWithTheirButtons) {
  const auto made = made_files_of_disc();
  made_files files(made);
  const auto contents = read_disc(files);
  ASSERT_TRUE(contents) << contents.error;
  ASSERT_THAT(contents->menus, SizeIs(4)) << "two languages of both";
  EXPECT_EQ(contents->menus[0].titleset, 0);
  EXPECT_EQ(contents->menus[0].entry, menu_kind::title);
  const disc_menu_contents& menu = contents->menus[2];
  EXPECT_EQ(menu.titleset, 1);
  EXPECT_EQ(menu.language, "en");
  EXPECT_EQ(menu.entry, menu_kind::root);
  ASSERT_TRUE(menu.chain.highlight);
  EXPECT_THAT(menu.chain.highlight->buttons, SizeIs(3));
  EXPECT_FALSE(contents->titles[0].chain.highlight);
  ASSERT_TRUE(contents->first_play);
  EXPECT_THAT(contents->first_play->pre, SizeIs(1));
}

TEST(ReadDisc, FilesThatAreMissingCutOrOfAnotherSizeAreTold) {
  EXPECT_EQ(damaged([](auto& f) { f["VIDEO_TS/VTS_01_0.BUP"][5000] ^= 1; }),
            "VIDEO_TS/VTS_01_0.BUP: is not the same as VIDEO_TS/VTS_01_0.IFO\n");
  EXPECT_EQ(damaged([](auto& f) { f.erase("VIDEO_TS/VIDEO_TS.BUP"); }),
            "VIDEO_TS/VIDEO_TS.BUP: there is no VIDEO_TS/VIDEO_TS.BUP\n");
  EXPECT_THAT(damaged([](auto& f) { f["VIDEO_TS/VTS_01_1.VOB"].resize(80 * 2048); }),
              HasSubstr("VIDEO_TS/VTS_01_1.VOB: the VOBs of titles have 163840 bytes; the tables "
                        "say 204800\n"));
  EXPECT_THAT(damaged([](auto& f) { f["VIDEO_TS/VTS_01_1.VOB"].resize(100 * 2048 + 5); }),
              HasSubstr("VIDEO_TS/VTS_01_1.VOB: has 204805 bytes, which no VOB has\n"));
  EXPECT_THAT(damaged([](auto& f) { f.erase("VIDEO_TS/VTS_01_0.VOB"); }),
              HasSubstr("VIDEO_TS/VTS_01_0.IFO: the VOBs of menus have 0 bytes; the tables say"));
  EXPECT_THAT(damaged([](auto& f) { f["VIDEO_TS/VTS_02_0.IFO"] = f["VIDEO_TS/VTS_01_0.IFO"]; }),
              HasSubstr("VTS_02_0.IFO: is a titleset that the video manager does not know\n"));
  EXPECT_EQ(damaged([](auto& f) { f.erase("VIDEO_TS/VIDEO_TS.IFO"); }),
            "VIDEO_TS/VIDEO_TS.IFO: there is no VIDEO_TS/VIDEO_TS.IFO");
}

TEST(ReadDisc, VobsInSeveralFilesAreOne) {
  EXPECT_EQ(damaged([](auto& f) {
              auto& first = f["VIDEO_TS/VTS_01_1.VOB"];
              f["VIDEO_TS/VTS_01_2.VOB"].assign(first.begin() + 50 * 2048, first.end());
              first.resize(50 * 2048);
            }),
            "");
}

TEST(ReadDisc, UnitsThatAreNotWhereTheTablesSayAreTold) {
  const char* const video = "VIDEO_TS/VTS_01_1.VOB";
  EXPECT_THAT(damaged([video](auto& f) { f[video][20 * 2048 + 3] = 0; }),
              HasSubstr("unit at sector 20 does not begin with a navigation pack\n"));
  EXPECT_THAT(damaged([video](auto& f) { f[video][40 * 2048 + 0x30] = 41; }),
              HasSubstr("unit at sector 40: says that it is at sector 41\n"));
  EXPECT_THAT(damaged([video](auto& f) { f[video][40 * 2048 + 0x407 + 11] = 40; }),
              HasSubstr("unit at sector 40 ends at sector 80, the next begins at 70\n"));
  EXPECT_THAT(damaged([video](auto& f) { f[video][70 * 2048 + 0x407 + 11] = 40; }),
              HasSubstr("its last unit ends at sector 110 of 100\n"));
}

TEST(ReadDisc, UnitsThatSayWhatTheirPlaceContradictsAreTold) {
  const auto made = made_files_of_disc();
  made_files files(made);
  const auto contents = read_disc(files);
  ASSERT_TRUE(contents) << contents.error;
  const auto is_told = [&](bool menus, std::uint32_t sector, const std::string& what) {
    return std::any_of(contents->unit_troubles.begin(), contents->unit_troubles.end(),
                       [&](const unit_trouble& one) {
                         return one.titleset == 1 && one.menus == menus && one.sector == sector &&
                                one.what.find(what) != std::string::npos;
                       });
  };
  EXPECT_TRUE(is_told(false, 0, "search by 0.5 s back leads out of the VOBs"));
  EXPECT_TRUE(is_told(false, 0, "the next unit of its cell is said to be 30 sectors away"));
  EXPECT_TRUE(is_told(true, 0, "search by 0.5 s back leads out of the VOBs"));
  EXPECT_EQ(contents->vobs[2].units[0].audio[0], 4);
  EXPECT_THAT(contents->vobs[2].units[0].reference_ends, ElementsAre(11, 15, 19));
  EXPECT_THAT(contents->vobs[2].file_sectors, ElementsAre(100));
}

TEST(ReadDisc, WhatTheManagerAndATitlesetSayDifferentlyIsTold) {
  const auto manager = [](std::size_t at, std::uint8_t value) {
    return damaged([at, value](auto& f) {
      f["VIDEO_TS/VIDEO_TS.IFO"][at] = f["VIDEO_TS/VIDEO_TS.BUP"][at] = value;
    });
  };
  EXPECT_EQ(manager(made_manager_at::titles + 8 + 3, 3),
            "VIDEO_TS/VIDEO_TS.IFO: title 1 leads to 3 chapters; its titleset has 2\n");
  EXPECT_EQ(manager(made_manager_at::titles + 20 + 7, 3),
            "VIDEO_TS/VIDEO_TS.IFO: title 2 leads to title 3 of titleset 1, which is not there\n");
  EXPECT_EQ(manager(made_manager_at::copies + 12 + 8 + 0x104, 0x44),
            "VIDEO_TS/VIDEO_TS.IFO: VMG_VTS_ATRT says of the streams of titleset 1 what its own "
            "tables do not\n");
}

TEST(ReadDisc, FilesElsewhereInAnImageThanTheTablesSayAreTold) {
  const auto made = made_files_of_disc();
  const std::map<std::string, std::uint32_t> right{
      {"VIDEO_TS/VIDEO_TS.IFO", 300},          {"VIDEO_TS/VIDEO_TS.VOB", 307},
      {"VIDEO_TS/VIDEO_TS.BUP", 300 + 27},     {"VIDEO_TS/VTS_01_0.IFO", 334},
      {"VIDEO_TS/VTS_01_0.VOB", 334 + 9},      {"VIDEO_TS/VTS_01_1.VOB", 334 + 29},
      {"VIDEO_TS/VTS_01_0.BUP", 334 + 9 + 120}};
  const auto told_of = [&](const std::map<std::string, std::uint32_t>& places) {
    made_files files(made);
    for (const auto& [path, sector] : places)
      files.place(path, sector);
    const auto contents = read_disc(files);
    return contents ? told(*contents) : contents.error;
  };
  EXPECT_EQ(told_of(right), "");
  for (const auto& [path, sector] : right) {
    auto wrong = right;
    wrong[path] = sector + 1;
    EXPECT_NE(told_of(wrong), "") << path;
  }
  auto moved = right;
  moved["VIDEO_TS/VTS_01_1.VOB"] = 400;
  EXPECT_EQ(told_of(moved), "VIDEO_TS/VTS_01_1.VOB: is at sector 400; by its tables at 363\n");
}

TEST(ReadDisc, ReadingCanBeStopped) {
  const auto made = made_files_of_disc();
  made_files files(made);
  int left = 3;
  EXPECT_EQ(read_disc(files, [&left] { return left-- > 0; }).error, "stopped");
  EXPECT_LT(files.reads, 10);
}

TEST(ReadDisc, DamagedFilesAreReadToTheEnd) {
  std::mt19937 random(5);
  auto made = made_files_of_disc();
  std::size_t found = 0;
  for (int i = 0; i < 400; ++i) {
    auto file = made.begin();
    std::advance(file, static_cast<std::ptrdiff_t>(random() % made.size()));
    const std::size_t at = random() % (file->second.size() / 2048) * 2048 + random() % 300;
    const std::uint8_t before = file->second[at];
    file->second[at] = static_cast<std::uint8_t>(random());
    made_files files(made);
    const auto contents = read_disc(files);
    found += !contents || !contents->troubles.empty() ? 1U : 0U;
    if (contents) {
      ASSERT_LE(contents->titles.size(), 99u);
    }
    file->second[at] = before;
  }
  EXPECT_GT(found, 40u);
}

}  // namespace
}  // namespace corvane

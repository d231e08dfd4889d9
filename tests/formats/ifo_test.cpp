// The tables of IFO files, made by hand: in order, and damaged in one place each.
#include "formats/ifo.h"

#include "made_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using namespace testing_support;

namespace manager_at = made_manager_at;
namespace titleset_at = made_titleset_at;

/// Troubles of a made file after a change.
std::string damaged_manager(const std::function<void(made_bytes&)>& change) {
  made_bytes file = made_manager();
  change(file);
  return texts(read_video_manager(file.bytes).troubles);
}

std::string damaged_titleset(const std::function<void(made_bytes&)>& change) {
  made_bytes file = made_titleset();
  change(file);
  return texts(read_titleset(file.bytes).troubles);
}

TEST(Ifo, HeadOfTheManagerIsRead) {
  const video_manager manager = read_video_manager(made_manager().bytes);
  EXPECT_EQ(texts(manager.troubles), "");
  EXPECT_EQ(manager.head.last_sector, 33u);
  EXPECT_EQ(manager.head.last_ifo_sector, 6u);
  EXPECT_EQ(manager.head.version, 0x11);
  EXPECT_EQ(manager.head.last_byte, 0x1FFu);
  EXPECT_EQ(manager.head.menu_vobs_sector, 7u);
  EXPECT_EQ(manager.volumes, 1);
  EXPECT_EQ(manager.volume, 1);
  EXPECT_EQ(manager.side, 1);
  EXPECT_EQ(manager.titlesets, 1);
  EXPECT_EQ(manager.forbidden_regions, 0xFE);
  EXPECT_EQ(manager.provider, "A PROVIDER");
  EXPECT_EQ(manager.menu_streams.video.standard(), "PAL");
  EXPECT_EQ(manager.menu_streams.video.height(), 576);
  EXPECT_THAT(manager.menu_streams.audio, IsEmpty());
}

TEST(Ifo, TitlesMenusAndFirstPlayOfTheManagerAreRead) {
  const video_manager manager = read_video_manager(made_manager().bytes);
  const title_entry first{0x3C, 1, 2, 0, 1, 1, 34}, second{0x3C, 1, 1, 0, 1, 2, 34};
  EXPECT_THAT(manager.titles, ElementsAre(first, second));
  ASSERT_TRUE(manager.first_play);
  ASSERT_THAT(manager.first_play->pre, SizeIs(1));
  EXPECT_EQ(manager.first_play->pre[0].bytes[7], 0xA1);
  EXPECT_THAT(manager.first_play->cells, IsEmpty());
  ASSERT_THAT(manager.menus, SizeIs(2));
  EXPECT_EQ(manager.menus[0].language, "de");
  EXPECT_EQ(manager.menus[0].kinds, 0x80);
  ASSERT_THAT(manager.menus[0].chains, SizeIs(1));
  EXPECT_TRUE(manager.menus[0].chains[0].entry);
  EXPECT_EQ(manager.menus[0].chains[0].menu, menu_kind::title);
  EXPECT_EQ(manager.menu_vobs.vobs, 1);
  EXPECT_THAT(manager.menu_vobs.cells,
              ElementsAre(cell_address{1, 1, 0, 9}, cell_address{1, 2, 10, 19}));
  EXPECT_THAT(manager.menu_vobs.units, ElementsAre(0, 10));
  ASSERT_THAT(manager.titlesets_again, SizeIs(1));
  EXPECT_EQ(manager.titlesets_again[0].category, 0x1234u);
  EXPECT_EQ(manager.titlesets_again[0].titles, read_titleset(made_titleset().bytes).title_streams);
}

TEST(Ifo, StreamsOfTheTitlesAreRead) {
  const titleset set = read_titleset(made_titleset().bytes);
  EXPECT_EQ(texts(set.troubles), "");
  const video_attributes& video = set.title_streams.video;
  EXPECT_EQ(video.coding, 1);
  EXPECT_EQ(video.standard(), "NTSC");
  EXPECT_EQ(video.aspect(), "16:9");
  EXPECT_TRUE(video.no_pan_scan);
  EXPECT_FALSE(video.no_letterbox);
  EXPECT_TRUE(video.line21_field1);
  EXPECT_FALSE(video.line21_field2);
  EXPECT_EQ(video.width(), 352);
  EXPECT_EQ(video.height(), 480);
  ASSERT_THAT(set.title_streams.audio, SizeIs(2));
  const audio_attributes &first = set.title_streams.audio[0], &second = set.title_streams.audio[1];
  EXPECT_EQ(first.format(), "ac3");
  EXPECT_EQ(first.language, "de");
  EXPECT_EQ(first.channels, 6);
  EXPECT_EQ(first.sample_rate(), 48000);
  EXPECT_EQ(first.first_stream(), 0x80);
  EXPECT_EQ(first.code_extension, 1);
  EXPECT_EQ(second.format(), "mp2");
  EXPECT_EQ(second.language, "en");
  EXPECT_EQ(second.channels, 2);
  EXPECT_EQ(second.quantization, 1);
  EXPECT_EQ(second.first_stream(), 0xC0);
  ASSERT_THAT(set.title_streams.subpictures, SizeIs(1));
  EXPECT_EQ(set.title_streams.subpictures[0].language, "fr");
  EXPECT_EQ(set.title_streams.subpictures[0].code_extension, 9);
}

TEST(Ifo, ChaptersTimesAndAddressesAreRead) {
  const titleset set = read_titleset(made_titleset().bytes);
  ASSERT_THAT(set.titles, SizeIs(2));
  EXPECT_THAT(set.titles[0], ElementsAre(chapter_entry{1, 1}, chapter_entry{1, 2}));
  EXPECT_THAT(set.titles[1], ElementsAre(chapter_entry{2, 1}));
  ASSERT_THAT(set.time_maps, SizeIs(2));
  EXPECT_EQ(set.time_maps[0].step, 4);
  EXPECT_THAT(set.time_maps[0].sectors, ElementsAre(20, 70));
  EXPECT_THAT(set.time_maps[0].clock_breaks, ElementsAre(false, true));
  EXPECT_THAT(set.time_maps[1].sectors, IsEmpty());
  EXPECT_THAT(set.title_vobs.units, ElementsAre(0, 20, 40, 70));
  EXPECT_THAT(set.title_vobs.cells,
              ElementsAre(cell_address{1, 1, 0, 39}, cell_address{1, 2, 40, 99}));
}

TEST(Ifo, ChainIsReadWithItsCellsAndCommands) {
  const titleset set = read_titleset(made_titleset().bytes);
  ASSERT_THAT(set.chains, SizeIs(2));
  EXPECT_EQ(set.chains[0].title, 1);
  EXPECT_EQ(set.chains[1].title, 2);
  ASSERT_TRUE(set.chains[0].chain);
  const program_chain& chain = *set.chains[0].chain;
  EXPECT_EQ(chain.at, titleset_at::chains + 24);
  EXPECT_EQ(chain.time, (playback_time{1, 2, 3, 4, 30, true}));
  EXPECT_EQ(chain.prohibited, 0x180u);
  EXPECT_EQ(chain.audio[0], (audio_control{true, 0}));
  EXPECT_EQ(chain.audio[1], (audio_control{true, 3}));
  EXPECT_FALSE(chain.audio[2].present);
  EXPECT_EQ(chain.subpictures[0], (subpicture_control{true, 1, 2, 3, 4}));
  EXPECT_EQ(chain.next, 2);
  EXPECT_EQ(set.chains[1].chain->previous, 1);
  EXPECT_EQ(chain.still_seconds, 5);
  EXPECT_EQ(chain.palette[3], 0x00108003u);
  EXPECT_EQ(chain.pre.at(0).bytes[7], 0xA1);
  EXPECT_EQ(chain.post.at(0).bytes[7], 0xB1);
  EXPECT_EQ(chain.cell_commands.at(0).bytes[7], 0xC1);
  EXPECT_THAT(chain.programs, ElementsAre(1, 2));
  ASSERT_THAT(chain.cells, SizeIs(2));
  const cell_playback& cell = chain.cells[1];
  EXPECT_TRUE(cell.seamless);
  EXPECT_TRUE(cell.clock_restarts);
  EXPECT_FALSE(cell.interleaved);
  EXPECT_EQ(cell.still_seconds, 255);
  EXPECT_EQ(cell.command, 1);
  EXPECT_EQ(cell.time, (playback_time{0, 0, 10, 15, 30, true}));
  EXPECT_DOUBLE_EQ(cell.time.total(), 10.5);
  EXPECT_EQ(cell.first_sector, 40u);
  EXPECT_EQ(cell.last_unit_sector, 70u);
  EXPECT_EQ(cell.last_sector, 99u);
  EXPECT_EQ(cell.vob, 1);
  EXPECT_EQ(cell.cell, 2);
}

TEST(Ifo, LanguagesThatLeadToTheSameMenusShareThem) {
  const titleset set = read_titleset(made_titleset().bytes);
  ASSERT_THAT(set.menus, SizeIs(2));
  EXPECT_EQ(set.menus[0].language, "en");
  EXPECT_EQ(set.menus[1].language, "de");
  ASSERT_TRUE(set.menus[0].chains.at(0).chain);
  EXPECT_EQ(set.menus[0].chains[0].menu, menu_kind::root);
  EXPECT_EQ(set.menus[0].chains[0].chain, set.menus[1].chains.at(0).chain);
}

TEST(Ifo, TimesThatAreNoneAreTold) {
  EXPECT_EQ(read_playback_time(0x01023C00).valid, false);
  EXPECT_TRUE(read_playback_time(0x23595964).valid) << "frame 24 of 25";
  EXPECT_FALSE(read_playback_time(0x23595965).valid) << "frame 25 of 25";
  EXPECT_TRUE(read_playback_time(0x000000E9).valid) << "frame 29 of 30";
  EXPECT_FALSE(read_playback_time(0x00600040).valid) << "minute 60";
  EXPECT_FALSE(read_playback_time(0x00000100).valid) << "no rate";
  EXPECT_TRUE(read_playback_time(0).valid);
}

TEST(Ifo, FilesOfAnotherKindHaveThatOneTrouble) {
  EXPECT_EQ(texts(read_titleset(made_manager().bytes).troubles),
            "VTSI_MAT at byte 0 does not begin with \"DVDVIDEO-VTS\"\n");
  EXPECT_EQ(texts(read_video_manager(made_titleset().bytes).troubles),
            "VMGI_MAT at byte 0 does not begin with \"DVDVIDEO-VMG\"\n");
  EXPECT_EQ(texts(read_video_manager({}).troubles),
            "VMGI_MAT at byte 0 is cut off: the file has 0 bytes\n");
}

TEST(Ifo, EveryTableThatIsPastTheEndIsNamed) {
  const std::pair<std::size_t, const char*> tables[] = {
      {0xC8, "VTS_PTT_SRPT"}, {0xCC, "VTS_PGCIT"},     {0xD0, "VTSM_PGCI_UT"},
      {0xD4, "VTS_TMAPT"},    {0xD8, "VTSM_C_ADT"},    {0xDC, "VTSM_VOBU_ADMAP"},
      {0xE0, "VTS_C_ADT"},    {0xE4, "VTS_VOBU_ADMAP"}};
  for (const auto& [pointer, table] : tables)
    EXPECT_THAT(damaged_titleset([at = pointer](made_bytes& f) { f.u32(at, 9); }),
                HasSubstr(std::string(table) +
                          " at byte 18432 is past the end of the file (its place stands at byte " +
                          std::to_string(pointer) + ")\n"));
  const std::pair<std::size_t, const char*> others[] = {{0xC4, "TT_SRPT"},
                                                        {0xC8, "VMGM_PGCI_UT"},
                                                        {0xD0, "VMG_VTS_ATRT"},
                                                        {0xD8, "VMGM_C_ADT"},
                                                        {0xDC, "VMGM_VOBU_ADMAP"}};
  for (const auto& [pointer, table] : others)
    EXPECT_THAT(damaged_manager([at = pointer](made_bytes& f) { f.u32(at, 0xFFFFFFFF); }),
                HasSubstr(std::string(table) + " at byte 8796093020160 is past the end"));
  EXPECT_THAT(damaged_manager([](made_bytes& f) { f.u32(0x84, 14336 - 235); }),
              HasSubstr("FP_PGC at byte 14101 is past the end of the file"));
}

TEST(Ifo, TablesThatMustBeThereAreMissed) {
  for (const auto& [pointer, table] : {std::pair{std::size_t{0xC8}, "VTS_PTT_SRPT"},
                                       {0xCC, "VTS_PGCIT"},
                                       {0xE4, "VTS_VOBU_ADMAP"}})
    EXPECT_THAT(damaged_titleset([at = pointer](made_bytes& f) { f.u32(at, 0); }),
                HasSubstr("VTSI_MAT at byte " + std::to_string(pointer) + " names no " + table));
}

TEST(Ifo, OneDamageHidesNothingElse) {
  made_bytes file = made_titleset();
  file.u32(titleset_at::chains + 12, 0x7FFFFFFF);  // the first chain
  file.u32(0xD0, 0x7FFFFFFF);                      // the menus
  const titleset set = read_titleset(file.bytes);
  ASSERT_THAT(set.chains, SizeIs(2));
  EXPECT_FALSE(set.chains[0].chain);
  EXPECT_TRUE(set.chains[1].chain);
  EXPECT_THAT(set.titles, SizeIs(2));
  EXPECT_THAT(set.title_vobs.units, SizeIs(4));
  EXPECT_THAT(texts(set.troubles), HasSubstr("VTS_PGCIT at byte 4108 has its PGC 1 outside"));
}

struct damaged_byte {
  std::size_t at;
  unsigned value;  ///< of the byte
  const char* text;
};

TEST(Ifo, DamagedBytesOfATitlesetAreTold) {
  using namespace made_titleset_at;
  constexpr std::size_t chain = chains + 24, cell = chain + 0xEC + 32 + 4;
  const damaged_byte damages[] = {
      {0x0F, 1, "VTSI_MAT at byte 12 leaves no room for its own copy"},
      {0x1F, 9, "VTSI_MAT at byte 28 states a file of 20480 bytes; it has 18432"},
      {0xC3, 3, "VTSI_MAT at byte 192 has VOBs at sector 3"},
      {0x200, 0x7E, "VTSI_MAT at byte 512 states no kind of video"},
      {0x203, 9, "VTSI_MAT at byte 514 states 9 audio streams; there can be 8"},
      {0x204, 0x24, "VTSI_MAT at byte 516 states no kind of audio"},
      {0x255, 33, "VTSI_MAT at byte 596 states 33 subpicture streams; there can be 32"},
      {0x155, 2, "VTSI_MAT at byte 340 states 2 subpicture streams; there can be 1"},
      {chapters + 1, 9, "VTS_PTT_SRPT at byte 2048 states 9 entries but has room for 5"},
      {chapters + 7, 3, "VTS_PTT_SRPT at byte 2052 ends before its first entry"},
      {chapters + 6, 0x80, "VTS_PTT_SRPT at byte 2052 ends past the end of the file"},
      {chapters + 11, 0, "VTS_PTT_SRPT at byte 2056 points out of itself"},
      {chapters + 15, 12, "VTS_PTT_SRPT at byte 2056 has its part 1 end where it cannot"},
      {chapters + 17, 3, "title 1 whose chapter 1 is program 1 of PGC 3, which is not there"},
      {chapters + 19, 3, "title 1 whose chapter 1 is program 3 of PGC 1, which is not there"},
      {chains + 8, 0x83, "VTS_PGCIT at byte 4104 has PGC 1 in title 3 of 2"},
      {chain + 3, 1, "has program 2 begin with cell 2 of 1"},
      {chain + 5, 0x1C, "PGC 1 of VTS_PGCIT at byte 4124 has a time that is none"},
      {chain + 0x9D, 3, "PGC 1 of VTS_PGCIT at byte 4120 leads to PGC 3 of 2"},
      {chain + 0xE5, 1, "PGC 1 of VTS_PGCIT at byte 4348 has its own head as commands"},
      {chain + 0xE6, 0xFF, "PGC 1 of VTS_PGCIT at byte 4350 has programs past the end"},
      {chain + 0xE8, 0xFF, "PGC 1 of VTS_PGCIT at byte 4352 has cells past the end"},
      {chain + 0xEA, 0xFF, "PGC 1 of VTS_PGCIT at byte 4354 has cell positions past the end"},
      {chain + 0xED, 200, "states 202 commands; there can be 3"},
      {cell + 3, 2, "has a cell with command 2 of 1"},
      {cell + 11, 1, "has a cell 1 that is not in VTS_C_ADT"},
      {cell + 19, 21, "has a cell 1 whose units are not in VTS_VOBU_ADMAP"},
      {cell + 20, 1, "has a cell 1 that is not in VTS_C_ADT"},
      {cell + 16, 1, "has a cell that ends before it begins"},
      {cell + 48 + 1, 2, "has a cell 1 that is not in VTS_C_ADT"},
      {menus + 24 + 8, 0x81, "VTSM_PGCI_UT (en) at byte 6176 has an entry for a menu of no kind"},
      {time_maps + 19, 3, "VTS_TMAPT at byte 8210 has a map of more entries than there is room"},
      {time_maps + 23, 21, "VTS_TMAPT at byte 8192 has in map 1 an entry 1 that is no unit"},
      {cells + 9, 2, "VTS_C_ADT at byte 14344 has a cell that cannot be"},
      {cells + 19, 100, "VTS_C_ADT at byte 14344 has a cell that cannot be"},
      {units + 7, 41, "VTS_VOBU_ADMAP at byte 16392 has a unit at sector 20, which is not behind"},
      {units + 17, 1, "VTS_VOBU_ADMAP at byte 16400 has a unit at sector 65606, which is not"}};
  for (const damaged_byte& d : damages)
    EXPECT_THAT(damaged_titleset([&d](made_bytes& f) { f.u8(d.at, d.value); }), HasSubstr(d.text))
        << d.at;
}

TEST(Ifo, DamagedBytesOfAManagerAreTold) {
  using namespace made_manager_at;
  const damaged_byte damages[] = {
      {0x3F, 100, "VMGI_MAT at byte 62 states 100 titlesets"},
      {0x3F, 2, "VMG_VTS_ATRT at byte 6144 has not one entry for each titleset"},
      {titles + 8 + 6, 2, "TT_SRPT at byte 2056 has a title 1 that cannot be"},
      {titles + 8 + 1, 0, "TT_SRPT at byte 2056 has a title 1 that cannot be"},
      {titles + 20 + 3, 0, "TT_SRPT at byte 2068 has a title 2 that cannot be"},
      {menus + 15, 250, "PGC 1 of VMGM_PGCI_UT (de) at byte"},
      {copies + 6, 0, "VMG_VTS_ATRT at byte 6156 has no room for the attributes of a titleset"}};
  for (const damaged_byte& d : damages)
    EXPECT_THAT(damaged_manager([&d](made_bytes& f) { f.u8(d.at, d.value); }), HasSubstr(d.text))
        << d.at;
}

/// As many entries as there can be, all of which lead to bytes that are read again and again.
TEST(Ifo, TablesThatOverlapAreReadForABoundedTime) {
  constexpr std::size_t file_size = std::size_t{2048} * 300, table = 2048;
  made_bytes file(file_size);
  file.text(0, "DVDVIDEO-VTS");
  file.u32(0xC8, 1);
  file.u32(0xCC, 1);
  file.u32(0xD0, 1);
  file.u32(0xD4, 1);
  for (std::size_t at = table; at + 4 <= file_size; at += 4)
    file.u32(at, 0x0000FFFE);
  file.u32(table, 0xFFFF0000);
  for (std::size_t i = 0; i < 65535; ++i)
    file.u32(table + 12 + 8 * i, static_cast<std::uint32_t>(530000 + i));
  const titleset set = read_titleset(file.bytes);
  std::size_t cells = 0;
  for (const chain_entry& entry : set.chains)
    cells += entry.chain ? entry.chain->cells.size() : 0;
  EXPECT_LE(cells * 28, file_size * 4);
  EXPECT_THAT(set.troubles, SizeIs(most_troubles));
}

}  // namespace
}  // namespace corvane

// What is told of the streams of a disc that is read back: a title and a menu made of packs.
#include "examine/disc_streams.h"

#include "examine/disc_rules.h"
#include "examine/found_disc.h"
#include "examine/last_pictures.h"
#include "examine/made_audio.h"
#include "examine/made_packs.h"
#include "examine/made_video.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using examine_test::ac3_frame;
using examine_test::made_sequence;
using examine_test::mpeg_frame;
using examine_test::pack_maker;
using examine_test::video_maker;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

constexpr stream_time one_picture = 3600;  // at 25 a second
constexpr stream_time one_unit = 12 * one_picture;

/// Small enough for a pack; the picture is shown behind the two that follow it.
std::string group_of_disc(int aspect_code = 2) {
  made_sequence quarter;
  quarter.width = 352;
  quarter.height = 288;
  quarter.aspect_code = aspect_code;
  return video_maker(quarter).whole_group("IBBPBBPBBPBB").bytes;
}

/// A unit of a disc: a NAV pack, a pack of video, one of sound.
struct made_disc_unit {
  stream_time shift = 0;        ///< of all its time stamps
  stream_time sound_shift = 0;  ///< of its sound, beside that
  std::uint64_t clock = 0;      ///< of its clock, at 27 MHz
  bool video = true;
  int vob = 1;
};

class made_streams {
 public:
  explicit made_streams(std::vector<made_disc_unit> units) : units_(std::move(units)) {}

  std::string group = group_of_disc();
  /// A packet of sound; a stream of private stream 1 states its own number.
  std::string sound = ac3_frame() + ac3_frame();
  bool mpeg_sound = false;
  std::string substream;    ///< the header of another kind of private stream 1; empty: AC-3
  bool two_sounds = false;  ///< both

  std::string bytes() const {
    pack_maker made;
    stream_time at = 0;
    for (const made_disc_unit& unit : units_) {
      const std::uint64_t clock = at * 300 + unit.clock;
      const stream_time shown = at + 90'000 + unit.shift;
      made.pack(clock).navigation(unit.vob, 1).fill();
      made.pack(clock + 270'000);
      if (unit.video)
        made.packet(first_video_stream, group, shown + 2 * one_picture, shown);
      made.fill().pack(clock + 540'000);
      if (mpeg_sound)
        made.packet(first_sound_stream, sound, shown + unit.sound_shift);
      else if (substream.empty() || two_sounds)
        made.ac3(sound, shown + unit.sound_shift);
      if (two_sounds)
        made.fill().pack(clock + 600'000);
      if (!substream.empty())
        made.packet(private_stream_1, substream + sound, shown + unit.sound_shift);
      made.fill();
      at += one_unit;
    }
    return made.bytes;
  }

 private:
  std::vector<made_disc_unit> units_;
};

/// A disc with a title, a menu and another title of these streams; empty: none.
struct read_streams {
  disc_contents disc;
  disc_streams streams;

  /// `missing`: sectors of the titles' last cells that are not there. `second_cell`: where a
  /// title's begins, behind a first one of six sectors; 0: there is none.
  read_streams(const std::string& title, const std::string& menu, std::uint32_t missing = 0,
               std::uint32_t second_cell = 0, const std::string& second_title = {}) {
    video_attributes video;
    video.coding = video.standard_code = 1;
    video.size_code = 3;
    std::size_t sector = 0;
    for (const std::string& bytes : {title, second_title}) {
      if (bytes.empty())
        continue;
      disc_title_contents one;
      one.number = one.number_in_titleset = static_cast<int>(disc.titles.size()) + 1;
      one.titleset = 1;
      one.video = video;
      one.chapters = {0};
      one.audio = {{audio_attributes{}, 0x80}};
      one.audio[0].attributes.channels = 2;
      one.chain = chain_of(bytes, sector, missing, second_cell);
      sector += bytes.size() / disc_sector_size;
      disc.titles.push_back(one);
    }
    if (!menu.empty()) {
      disc_menu_contents one;
      one.titleset = one.number = 1;
      one.video = video;
      one.chain = chain_of(menu, 0);
      disc.menus.push_back(one);
    }
    disc.titlesets.resize(1);
    disc.vobs.push_back(vobs_of(title + second_title, false));
    disc.vobs.push_back(vobs_of(menu, true));
    disc_stream_reader reader(disc);
    feed(reader, disc.vobs[0], title + second_title);
    feed(reader, disc.vobs[1], menu);
    streams = reader.finish();
  }

  std::vector<std::string> told() const {
    std::vector<std::string> lines;
    for (const finding& f : disc_findings(disc, streams))
      if (f.rule != "disc-nowhere")
        lines.push_back(line_of(f) + " [" + f.rule + "]");
    return lines;
  }

  /// "-" if nothing is said.
  std::string said(const finding_item& item, disc_trait_kind what) const {
    const disc_traits all = found_disc(disc, streams);
    const disc_trait* const one = all.find(item, what);
    return one == nullptr ? "-" : one->value;
  }

 private:
  static disc_chain chain_of(const std::string& bytes, std::size_t sector,
                             std::uint32_t missing = 0, std::uint32_t second_cell = 0) {
    auto tables = std::make_shared<program_chain>();
    cell_playback cell;
    cell.first_sector = static_cast<std::uint32_t>(sector);
    cell.last_sector =
        static_cast<std::uint32_t>(sector + bytes.size() / disc_sector_size - 1) + missing;
    cell.vob = cell.cell = 1;
    if (second_cell > 0) {
      cell_playback first = cell;
      first.last_sector = 5;
      tables->cells.push_back(first);
      cell.first_sector = second_cell;
    }
    tables->cells.push_back(cell);
    tables->subpictures[0].present = false;
    disc_chain chain;
    chain.tables = tables;
    chain.seconds = 1;
    chain.cells = {{1, 1, 0, 1}};
    return chain;
  }

  static disc_vobs vobs_of(const std::string& bytes, bool menus) {
    disc_vobs vobs;
    vobs.titleset = 1;
    vobs.menus = menus;
    vobs.sectors = bytes.size() / disc_sector_size;
    return vobs;
  }

  /// In slices of a unit.
  static void feed(disc_stream_reader& reader, const disc_vobs& vobs, const std::string& bytes) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    constexpr std::size_t slice = 3 * disc_sector_size;
    for (std::size_t at = 0; at < bytes.size(); at += slice)
      reader.feed(vobs, static_cast<std::uint32_t>(at / disc_sector_size),
                  {first + at, std::min(slice, bytes.size() - at)});
  }
};

std::vector<std::string> told_of_title(const made_streams& title) {
  return read_streams(title.bytes(), {}).told();
}

/// A unit whose commands show it at once and take it away after 1024 times so many clocks.
std::string made_subtitle(char ends_after) {
  const std::string list_of_end = "\0"s + ends_after + "\0\x0B\2\xFF"s;
  return "\0\x11\0\4\0\0\0\x0B\1\xFF\0"s + list_of_end;
}

constexpr finding_item first_title_video{finding_item::whole_kind::title, 1,
                                         finding_item::part_kind::video, 0};

std::string title_shows_until(const std::vector<made_disc_unit>& units) {
  return read_streams(made_streams(units).bytes(), {})
      .said(first_title_video, disc_trait_kind::shows_until);
}

TEST(DiscStreams, RightOnesHaveNoFindings) {
  const made_streams four({{}, {}, {}, {}});
  EXPECT_THAT(read_streams(four.bytes(), four.bytes()).told(), IsEmpty());
}

TEST(DiscStreams, PicturesAreCountedBehindTheLastStamp) {
  EXPECT_EQ(title_shows_until({{}, {}, {}, {}}), "1.84") << "from the first picture with a stamp";
  EXPECT_EQ(title_shows_until({{}, {}, {}, {0, 0, 0, false}}), "1.36");
}

constexpr finding_item first_title_sound{finding_item::whole_kind::title, 1,
                                         finding_item::part_kind::audio, 1};

TEST(DiscStreams, StampsThatBeginAgainAreOneStretch) {
  constexpr stream_time turn = stream_time{1} << 33;
  const auto heard = [](stream_time shift, stream_time sound_shift) {
    return read_streams(made_streams({{shift, sound_shift}, {shift, sound_shift}}).bytes(), {})
        .said(first_title_sound, disc_trait_kind::sounds_until);
  };
  // The first picture's stamp is 97,200.
  EXPECT_EQ(heard(0, 0), "0.424");
  EXPECT_EQ(heard(turn - 97'200, 9'000), "0.524") << "the sound begins before the turn";
  EXPECT_EQ(heard(turn - 97'201, 7'300), "0.505") << "and behind it";
  const stream_time last = turn - 90'000 - one_unit;
  EXPECT_EQ(title_shows_until({{last}, {last}, {last}}), title_shows_until({{}, {}, {}}));
}

TEST(DiscStreams, CellsBehindTheEndOfTheVobsDoNotHideTheEndOfPictures) {
  const std::string bytes = made_streams({{}, {}, {}, {}}).bytes();
  const read_streams as_it_is(bytes, {});
  read_streams longer(bytes, {}, 1'000);
  EXPECT_EQ(longer.said(first_title_video, disc_trait_kind::shows_until),
            as_it_is.said(first_title_video, disc_trait_kind::shows_until));
}

TEST(DiscStreams, CellsThatLeaveSectorsOutHaveTimesThatTellNothing) {
  const std::string bytes = made_streams({{}, {}, {}, {}, {}, {}}).bytes();
  const read_streams cut(bytes, {}, 0, 9);
  EXPECT_THAT(cut.told(), IsEmpty());
  EXPECT_EQ(cut.said(first_title_video, disc_trait_kind::shows_until), "-");
  const read_streams halves(bytes, {}, 0, 6);
  EXPECT_EQ(halves.said(first_title_video, disc_trait_kind::shows_until), "2.8");
}

TEST(DiscStreams, PicturesThatEndLongBeforeTheSoundDoSoByTheirLastStamp) {
  std::vector<made_disc_unit> units(2);
  units.resize(3 + sectors_of_last_pictures / 3, {0, 0, 0, false});
  EXPECT_EQ(title_shows_until(units), "2.48") << "0.48 s, and what may follow a stamp";
}

TEST(DiscStreams, TheEndOfPicturesIsNotSaidOverABreak) {
  EXPECT_EQ(title_shows_until({{}, {}, {900'000}, {900'000}}), "-");
}

TEST(DiscStreams, FieldsAndRepeatedOnesArePartsOfPictures) {
  made_sequence ntsc;
  ntsc.height = 480;
  ntsc.width = 352;
  ntsc.rate_code = 4;
  video_maker video(ntsc);
  video.sequence().group();
  examine_test::made_picture repeated, top, bottom;
  repeated.repeat_first_field = true;
  top.structure = picture_extension::top_field;
  bottom.structure = picture_extension::bottom_field;
  bottom.kind = 'P';
  video.picture(repeated).picture(top).picture(bottom);
  pack_maker packs;
  packs.pack(0).packet(first_video_stream, video.bytes, 1000).fill();
  ASSERT_EQ(packs.bytes.size() % disc_pack_size, 0u);
  const std::vector<std::uint8_t> bytes(packs.bytes.begin(), packs.bytes.end());
  EXPECT_EQ(end_of_pictures(bytes), 1000u + 5 * 3003 / 2);
  EXPECT_EQ(end_of_pictures({}), std::nullopt);
}

TEST(DiscStreams, EachBreakOfTheClockIsTold) {
  constexpr std::uint64_t ten = 270'000'000;
  const made_streams twice({{}, {0, 0, ten}, {}, {}});
  EXPECT_THAT(told_of_title(twice),
              ElementsAre("error: title 1, 00:00:00: the clock leaves out 10.46 s. [disc-clock]",
                          "error: title 1, 00:00:00: the clock goes back by 9.54 s. [disc-clock]"));
  const auto of_menu = read_streams({}, twice.bytes()).told();
  EXPECT_THAT(of_menu,
              Contains("error: menu 1, 00:00:00: the clock goes back by 9.54 s. [disc-clock]"));
}

TEST(DiscStreams, AnotherVobHasTimesOfItsOwn) {
  constexpr std::uint64_t ten = 270'000'000;
  const made_streams two({{}, {}, {900'000, 0, ten, true, 2}, {900'000, 0, ten, true, 2}});
  EXPECT_THAT(told_of_title(two), IsEmpty());
}

// Where spumux puts buttons that come up after the end of their menu.
TEST(DiscStreams, PacksBehindTheEndOfAMenuHaveTheirOwnTime) {
  pack_maker late;
  late.pack(27'000'000ull * 60).subpicture("\0\4\0\2"s, 60 * 90'000, 0).fill();
  const std::string menu = made_streams({{}, {}}).bytes() + late.bytes;
  EXPECT_THAT(read_streams({}, menu).told(), IsEmpty());
  EXPECT_THAT(read_streams(menu, {}).told(),
              ElementsAre("warning: title 1, 00:00:00: the clock leaves out 59.5 s. "
                          "[disc-clock]"))
      << "a subtitle behind the end, which was told before";
  const std::string second = pack_maker().pack(27'000'000ull * 90).fill().bytes;
  EXPECT_THAT(read_streams(menu + second, {}).told(), testing::SizeIs(1)) << "said once";
  // Of another VOB, whose times are its own.
  pack_maker other;
  other.pack(27'000'000ull * 60).navigation(2, 1).fill();
  const std::string two = made_streams({{}, {}}).bytes() + other.bytes;
  EXPECT_THAT(read_streams(two, {}).told(), IsEmpty());
}

TEST(DiscStreams, EachBreakOfTimeStampsIsToldWithItsStream) {
  EXPECT_THAT(told_of_title(made_streams({{}, {}, {0, 180'000}, {}})),
              ElementsAre("error: title 1, audio 1, 00:00:00: its time stamps leave out 2.48 s. "
                          "[disc-times]",
                          "error: title 1, audio 1, 00:00:00: its time stamps go back by 1.52 s. "
                          "[disc-times]"));
  const made_streams all_later({{}, {}, {900'000}});
  EXPECT_THAT(read_streams({}, all_later.bytes()).told(),
              ElementsAre("error: menu 1, video, 00:00:00: its time stamps leave out 10.48 s. "
                          "[disc-times]",
                          "error: menu 1, audio, 00:00:00: its time stamps leave out 10.48 s. "
                          "[disc-times]"));
}

// How much of a disc is kept
// -----------------------------------------------------------------------

/// A pack of a group of pictures with a stamp.
std::string pack_with_stamp() {
  return pack_maker()
      .pack(0)
      .packet(first_video_stream, group_of_disc(), 90'000 + 2 * one_picture, 90'000)
      .fill()
      .bytes;
}

std::span<const std::uint8_t> view_of_bytes(const std::string& bytes) {
  return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

/// Titles that wait for their last sector: that of each lies behind the other sectors of all of
/// them, so that these are kept of all at once, as far as they may be. A last title has one sector.
struct waiting_titles {
  static constexpr std::uint32_t body = sectors_of_last_pictures - 1;
  disc_contents disc;
  disc_streams streams;

  explicit waiting_titles(std::uint32_t waiting) {
    for (std::uint32_t i = 0; i < waiting; ++i)
      add({{i * body, (i + 1) * body - 1}, {waiting * body + i, waiting * body + i}});
    const std::uint32_t end = waiting * body + waiting;
    add({{end, end}});
    disc_vobs vobs;
    vobs.titleset = 1;
    vobs.sectors = end + 1;
    disc.vobs.push_back(vobs);
    disc_stream_reader reader(disc);
    const std::string zeros(body * disc_sector_size, '\0'), last = pack_with_stamp();
    for (std::uint32_t i = 0; i < waiting; ++i)
      reader.feed(disc.vobs[0], i * body, view_of_bytes(zeros));
    for (std::uint32_t i = waiting * body; i <= end; ++i)
      reader.feed(disc.vobs[0], i, view_of_bytes(last));
    streams = reader.finish();
  }

  /// Whether it is known when the pictures of the n-th title (1-based) end.
  bool has_end(std::size_t number) const {
    const chain_streams* const found = streams.find(disc.titles.at(number - 1).chain);
    return found != nullptr && found->pictures_end.has_value();
  }

 private:
  void add(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& cells) {
    auto tables = std::make_shared<program_chain>();
    for (const auto& [first, last] : cells) {
      cell_playback cell;
      cell.first_sector = first;
      cell.last_sector = last;
      tables->cells.push_back(cell);
    }
    disc_title_contents title;
    title.number = static_cast<int>(disc.titles.size()) + 1;
    title.titleset = 1;
    title.chain.tables = tables;
    disc.titles.push_back(title);
  }
};

TEST(DiscStreams, LastSectorsAreKeptUpTo64MiBInAll) {
  constexpr std::size_t sixteen = 16;  // that have 64 MiB less 16 sectors
  const waiting_titles some(sixteen), more(sixteen + 1);
  for (std::size_t title = 1; title <= sixteen; ++title) {
    EXPECT_TRUE(some.has_end(title)) << title;
    EXPECT_TRUE(more.has_end(title)) << title;
  }
  EXPECT_FALSE(more.has_end(sixteen + 1)) << "there was no room for it";
  EXPECT_TRUE(some.has_end(sixteen + 1)) << "the room of those that have ended is free again";
  EXPECT_TRUE(more.has_end(sixteen + 2));
}

/// The table grows with what is read, whatever the disc's tables say of its size.
TEST(DiscStreams, PacksAreKnownAsFarAsTheyWereRead) {
  disc_contents disc;
  disc_vobs vobs;
  vobs.titleset = 1;
  vobs.sectors = std::uint64_t{1} << 62;
  disc_unit unit;
  unit.last_sector = 100;
  unit.vob = unit.cell = 1;
  unit.audio = {12, 5, 40};  // read, left out, not read
  vobs.units = {unit};
  disc.vobs = {vobs};
  disc_stream_reader reader(disc);
  const std::string pack = pack_with_stamp();
  reader.feed(disc.vobs[0], 0, view_of_bytes(pack));
  reader.feed(disc.vobs[0], 10, view_of_bytes(pack + pack + pack + pack));
  const disc_streams streams = reader.finish();
  ASSERT_EQ(streams.unit_troubles().size(), 1u);
  EXPECT_EQ(streams.unit_troubles()[0].what,
            "sound stream 1 is said to go on at sector 12, which has no sound");
}

TEST(DiscStreams, SubtitlesAreReadWithTheirTimes) {
  pack_maker made;
  made.raw(made_streams({{}, {}}).bytes());
  const std::string first = made_subtitle(88), second = made_subtitle(44);
  made.pack(27'000'000).subpicture(first.substr(0, 9), 180'000, 3).fill();
  made.pack(27'000'000).subpicture(first.substr(9), {}, 3).fill();
  made.pack(27'000'000).subpicture(second, 360'000, 3).fill();
  read_streams title(made.bytes, {});
  title.disc.titles[0].subpictures = {{{}, 0x23}};
  const finding_item item{finding_item::whole_kind::title, 1, finding_item::part_kind::subtitle, 1};
  // The first picture's stamp is 97,200.
  EXPECT_EQ(title.said(item, disc_trait_kind::shown), "0.92-1.921 2.92-3.421");
  made.pack(27'000'000).subpicture(first.substr(0, 9), 540'000, 3).fill();
  read_streams cut(made.bytes, {});
  cut.disc.titles[0].subpictures = {{{}, 0x23}};
  EXPECT_EQ(cut.said(item, disc_trait_kind::shown), "-");
}

TEST(DiscStreams, BytesOfNoPackAreTold) {
  std::string title = made_streams({{}, {}, {}, {}}).bytes();
  title.replace(5 * disc_sector_size, disc_sector_size, disc_sector_size, '\x55');
  EXPECT_THAT(read_streams(title, {}).told(),
              Contains("error: title 1: 2048 bytes belong to no pack. [disc-bytes]"));
}

TEST(DiscStreams, SoundOfAnotherKindThanStatedIsTold) {
  made_streams title({{}, {}, {}, {}});
  title.mpeg_sound = true;
  title.sound = mpeg_frame();
  EXPECT_THAT(told_of_title(title),
              ElementsAre("error: title 1, audio 1: the sound is MPEG audio. [disc-sound-stated]"));
}

TEST(DiscStreams, LpcmOrDtsWhereAnotherKindIsStatedIsTold) {
  made_streams lpcm({{}, {}});
  lpcm.substream = "\xA0\x01\x00\x04\x00\x01\x80"s;
  EXPECT_THAT(told_of_title(lpcm),
              ElementsAre("error: title 1, audio 1: the sound is LPCM. [disc-sound-stated]"));
  made_streams dts({{}, {}});
  dts.substream = "\x88\x01\x00\x01"s;
  EXPECT_THAT(told_of_title(dts),
              ElementsAre("error: title 1, audio 1: the sound is DTS. [disc-sound-stated]"));
  read_streams second(dts.bytes(), {});
  second.disc.titles[0].audio[0].id = 0x81;
  EXPECT_THAT(second.told(), IsEmpty()) << "a second stream, which the title has of no kind";
}

// dvdauthor states the streams of all titles for each: AC-3 and DTS of the same number here.
TEST(DiscStreams, AKindBesideAnotherOneIsNotThereInItsPlace) {
  made_streams dts({{}, {}});
  dts.substream = "\x88\x01\x00\x01"s;
  const std::string ac3 = made_streams({{}, {}}).bytes();
  const auto told_of = [](const std::string& first, const std::string& second) {
    read_streams two(first, {}, 0, 0, second);
    for (disc_title_contents& title : two.disc.titles) {
      title.audio = {title.audio[0], {{}, 0x88}};
      title.audio[1].attributes.coding = 6;
    }
    return two.told();
  };
  EXPECT_THAT(told_of(ac3, dts.bytes()),
              ElementsAre("error: title 1, audio 2: the sound is AC-3. [disc-sound-stated]",
                          "error: title 2, audio 1: the sound is DTS. [disc-sound-stated]"));
  made_streams both = dts;
  both.two_sounds = true;
  EXPECT_THAT(told_of(both.bytes(), ac3), IsEmpty());
  EXPECT_THAT(told_of(ac3, both.bytes()), IsEmpty());
}

TEST(DiscStreams, SoundOfOtherChannelsThanStatedIsTold) {
  read_streams of_two(made_streams({{}, {}}).bytes(), {});
  of_two.disc.titles[0].audio[0].attributes.channels = 6;
  of_two.disc.titles[0].audio[0].attributes.rate_code = 1;
  EXPECT_THAT(of_two.told(),
              ElementsAre("warning: title 1, audio 1: the sound has 48000 samples a second. "
                          "[disc-sound-format]",
                          "warning: title 1, audio 1: the sound has 2 channels. "
                          "[disc-sound-format]"));
}

TEST(DiscStreams, ChannelsOfMpegAudioAreNotCompared) {
  made_streams title({{}, {}});
  title.mpeg_sound = true;
  title.sound = mpeg_frame();
  read_streams of_six(title.bytes(), {});
  disc_audio_stream& stated = of_six.disc.titles[0].audio[0];
  stated.id = 0xC0;
  stated.attributes.coding = 2;
  stated.attributes.channels = 6;
  EXPECT_THAT(of_six.told(), IsEmpty());
}

TEST(DiscStreams, ProportionsOtherThanStatedAreTold) {
  made_streams title({{}, {}, {}, {}});
  title.group = group_of_disc(3);
  EXPECT_THAT(told_of_title(title),
              ElementsAre("warning: title 1, video: the picture is 16:9. [disc-aspect-stated]"));
}

}  // namespace
}  // namespace corvane

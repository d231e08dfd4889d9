// The streams in the VOBs of a disc: read once from beginning to end, each title and menu for
// itself.
//
// VOBs are read in the order of their sectors, whatever order chains play their cells in. Sectors
// that several titles play are read for the first of them.
#pragma once

#include "examine/program_stream_facts.h"
#include "examine/read_disc.h"
#include "formats/subpicture.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

/// A unit of a subpicture stream.
struct shown_unit {
  stream_time stamp = 0;
  subpicture_times times;
};

/// What plays from one chain, read.
struct chain_streams {
  program_stream_facts facts;  ///< streams inside are counted, not examined
  /// Of the first bytes, where the streams inside are examined; null if they show nothing.
  std::shared_ptr<const program_stream_facts> head;
  bool in_order = true;  ///< the cells are played as they lie, with no sector left out between them
  bool shared = false;   ///< another chain plays some of it, too: the facts lack that
  std::uint64_t sectors = 0;
  /// The time stamp up to which pictures are shown, where the last sectors tell it
  /// (examine/last_pictures.h).
  std::optional<stream_time> pictures_end;
  /// So many of its bytes come before the end of its last pack of pictures or sound.
  std::uint64_t shown_bytes = 0;
  /// Of a menu with buttons: the first unit of the subpicture that shows them
  /// (formats/subpicture.h), as far as it is there; empty: there is none.
  std::vector<std::uint8_t> overlay;
  /// Of a title: its subtitles, by number of their stream. Empty where not all units can be read.
  std::map<int, std::vector<shown_unit>> subtitles;
};

/// The stream of a number that tables give (disc_audio_stream::id); null if it is not there.
const inner_stream* stream_with(const program_stream_facts& facts, int id);

class disc_streams {
 public:
  /// By the chain's tables; null if none of it was read.
  const chain_streams* find(const disc_chain& chain) const;

  /// Units whose addresses of streams lead elsewhere.
  const std::vector<unit_trouble>& unit_troubles() const { return unit_troubles_; }

 private:
  friend class disc_stream_reader;
  std::vector<unit_trouble> unit_troubles_;
  std::map<const program_chain*, chain_streams> streams_;
};

/// Takes the VOBs of a disc, file after file, in slices.
class disc_stream_reader {
 public:
  explicit disc_stream_reader(const disc_contents& disc);
  ~disc_stream_reader();
  disc_stream_reader(const disc_stream_reader&) = delete;
  disc_stream_reader& operator=(const disc_stream_reader&) = delete;

  /// The next sectors of these VOBs; must be whole ones, and in their order.
  void feed(const disc_vobs& vobs, std::uint32_t first_sector, std::span<const std::uint8_t> bytes);

  /// What was read. Call once, at the end.
  disc_streams finish();

 private:
  struct reading;
  struct stretch {
    std::uint32_t first = 0;  ///< sector
    reading* of = nullptr;
  };
  reading* add(const disc_chain& chain, const disc_vobs& vobs);
  void take(reading& r, std::span<const std::uint8_t> bytes);
  static void take_head(reading& r, std::span<const std::uint8_t> bytes);
  void take_last(reading& r, std::span<const std::uint8_t> bytes);
  static void take_overlay(reading& r, std::span<const std::uint8_t> bytes);
  static void take_subtitles(reading& r, std::span<const std::uint8_t> sector);
  void take_packs(const disc_vobs& vobs, std::uint32_t first_sector,
                  std::span<const std::uint8_t> bytes);

  std::uint64_t shown_bytes(const reading& r) const;

  std::vector<std::unique_ptr<reading>> readings_;
  std::size_t last_bytes_ = 0;  ///< that they keep of their last sectors
  /// By their last sector; no sector is in two.
  std::map<const disc_vobs*, std::map<std::uint32_t, stretch>> stretches_;
  /// Of each sector that was read, the stream of its pack (pack_headers.h).
  std::map<const disc_vobs*, std::vector<std::uint8_t>> packs_;
};

}  // namespace corvane

// What navigation packs say of the units around them (VOBU), held against where these lie: search
// pointers, addresses of streams and angles, times, identities. Knows nothing of the streams'
// packs; what points at those is looked at where they are read (examine/disc_streams.h).
//
// Takes the packs of one stretch of VOBs, in the order of their sectors, and the tables of
// addresses of these VOBs (C_ADT, VOBU_ADMAP). Whatever they hold, time is bounded by their number
// (times its logarithm), memory by the largest number of units that are looked at.
#pragma once

#include "examine/unit_trouble.h"
#include "formats/ifo.h"
#include "formats/navigation_pack.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

class unit_checks {
 public:
  /// More units than any disc has; those behind are not looked at.
  static constexpr std::size_t most_units = 100'000;

  explicit unit_checks(const vob_addresses& addresses);

  /// The next unit; its sector is where it was read.
  void add(const navigation_pack& pack, std::uint32_t sector);

  /// All that is wrong; `titleset` and `menus` are not set. Call once, at the end.
  std::vector<unit_trouble> judge();

 private:
  /// What is the same in all units of a VOB.
  enum constant { vob_times, headers, category, prohibited, sound_gaps, count_of_constants };
  /// The kinds of trouble.
  enum class fact : int;

  struct unit {
    std::uint32_t sector = 0, end = 0;  ///< first and last
    std::uint32_t begins = 0, ends = 0;
    std::uint32_t vob_begins = 0, vob_ends = 0;
    double elapsed = 0;  ///< seconds of the cell, as stated; below 0: not stated
    bool video = false;
    bool sequence_ends = false;
    int highlight_status = 0;
    bool new_highlight = false;
    unit_search next, previous, next_video, previous_video;
    std::array<std::uint32_t, 19> forward{}, backward{};
    std::array<std::uint64_t, count_of_constants> constants{};
    std::uint32_t highlight_begins = 0;
    std::uint64_t highlight_times = 0, highlight_content = 0;
  };
  struct cell {
    int vob = 0, number = 0;
    std::vector<unit> units;
  };

  const cell_address* cell_at(std::uint64_t sector) const;
  bool is_unit(std::uint64_t sector) const;
  bool is_next_unit(std::uint64_t before, std::uint64_t sector) const;
  static std::size_t unit_at(const cell& of, std::uint64_t sector);
  void tell(const cell& of, std::uint32_t sector, std::uint32_t begins, fact kind, bool harmless,
            std::string what);
  void tell(const cell& of, const unit& at, fact kind, bool harmless, std::string what) {
    tell(of, at.sector, at.begins, kind, harmless, std::move(what));
  }

  // Of one pack.
  void check_headers(const cell& of, const navigation_pack& pack, std::uint32_t sector);
  void check_pictures(const cell& of, const navigation_pack& pack, std::uint32_t sector);
  void check_highlight(const cell& of, const navigation_pack& pack, std::uint32_t sector);
  void check_angles(const cell& of, const navigation_pack& pack, std::uint32_t sector);
  void check_subpictures(const cell& of, const navigation_pack& pack, std::uint32_t sector);

  // Of the units of a cell.
  void check_steps(const cell& of, const unit& from, bool forward);
  void check_neighbours(const cell& of, std::size_t index);
  void check_neighbour(const cell& of, std::size_t index, bool next);
  void check_video_neighbours(const cell& of);
  void check_video_neighbour(const cell& of, const unit& from, bool next,
                             std::size_t nearest_video);
  void check_times(const cell& of, std::size_t index);
  void check_vob_times(const std::vector<const cell*>& vob);
  void check_constants(const std::vector<const cell*>& vob);
  void check_highlights(const cell& of);

  std::vector<std::uint32_t> units_;  // VOBU_ADMAP, in order
  std::vector<cell_address> places_;  // C_ADT, by sector
  std::map<std::pair<int, int>, cell> cells_;
  std::size_t added_ = 0;
  unit_trouble_list troubles_;
};

}  // namespace corvane

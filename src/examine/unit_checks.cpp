#include "examine/unit_checks.h"

#include "examine/unit_facts.h"

#include <algorithm>
#include <span>
#include <utility>

namespace corvane {

namespace {

/// A sum by which contents are told apart.
class content_sum {
 public:
  content_sum& of(std::uint64_t value) {
    for (int byte = 0; byte < 8; ++byte)
      sum_ = (sum_ ^ (value >> 8 * byte & 0xFF)) * 0x100000001B3U;
    return *this;
  }
  content_sum& of(std::span<const std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes)
      sum_ = (sum_ ^ byte) * 0x100000001B3U;
    return *this;
  }
  std::uint64_t value() const { return sum_; }

 private:
  std::uint64_t sum_ = 0xCBF29CE484222325U;
};

std::uint64_t number_of(int value) {
  return static_cast<std::uint64_t>(value);
}

/// All but which button is selected: later packs may select another one.
std::uint64_t content_of(const highlight_information& h) {
  content_sum sum;
  sum.of(number_of(h.groups)).of(number_of(h.first_number)).of(number_of(h.buttons_stated));
  sum.of(number_of(h.by_number));
  for (const int display : h.group_displays)
    sum.of(number_of(display));
  for (const auto& row : h.colours)
    for (const std::uint32_t colours : row)
      sum.of(colours);
  for (const menu_button& b : h.buttons) {
    for (const int value :
         {b.colours, b.x0, b.y0, b.x1, b.y1, b.automatic ? 1 : 0, b.up, b.down, b.left, b.right})
      sum.of(number_of(value));
    sum.of(b.command.bytes);
  }
  return sum.value();
}

/// The bits that every header of such a pack has, and the system header behind it.
bool has_right_headers(const std::array<std::uint8_t, 38>& h) {
  const bool pack = (h[4] & 0xC4) == 0x44 && (h[6] & 4) != 0 && (h[8] & 4) != 0 &&
                    (h[9] & 1) != 0 && (h[12] & 3) == 3 && (h[13] & 7) == 0;
  constexpr std::array<std::uint8_t, 6> system{0, 0, 1, 0xBB, 0, 0x12};
  return pack && std::equal(system.begin(), system.end(), h.begin() + 14);
}

constexpr int interleaved = 0x4000;

}  // namespace

unit_checks::unit_checks(const vob_addresses& addresses)
    : units_(addresses.units), places_(addresses.cells) {
  std::sort(units_.begin(), units_.end());
  std::stable_sort(
      places_.begin(), places_.end(),
      [](const cell_address& a, const cell_address& b) { return a.first_sector < b.first_sector; });
}

/// Null if the sector is in none.
const cell_address* unit_checks::cell_at(std::uint64_t sector) const {
  const auto next = std::upper_bound(
      places_.begin(), places_.end(), sector,
      [](std::uint64_t searched, const cell_address& one) { return searched < one.first_sector; });
  if (next == places_.begin() || std::prev(next)->last_sector < sector)
    return nullptr;
  return &*std::prev(next);
}

bool unit_checks::is_unit(std::uint64_t sector) const {
  return std::binary_search(units_.begin(), units_.end(), sector);
}

void unit_checks::tell(const cell& of, std::uint32_t sector, std::uint32_t begins, fact kind,
                       bool harmless, std::string what) {
  if (!troubles_.is_first(of.vob, of.number, static_cast<int>(kind), sector))
    return;
  unit_trouble trouble;
  trouble.sector = sector;
  trouble.vob = of.vob;
  trouble.cell = of.number;
  trouble.clocks = of.units.empty() ? 0 : clocks_since(of.units.front().begins, begins);
  trouble.harmless = harmless;
  trouble.what = std::move(what);
  troubles_.add(static_cast<int>(kind), std::move(trouble));
}

void unit_checks::check_headers(const cell& of, const navigation_pack& pack, std::uint32_t sector) {
  if (!has_right_headers(pack.headers))
    tell(of, sector, pack.begins, fact::headers, false, "the headers of its pack are none");
  else if (static_cast<std::uint32_t>(pack.clock / 300) != pack.search_clock)
    tell(of, sector, pack.begins, fact::clock, true,
         "the clock is not that of its pack: " + std::to_string(pack.search_clock));
  if (pack.vob != of.vob || pack.cell != of.number)
    tell(of, sector, pack.begins, fact::identity, false,
         "it says that it is of VOB " + std::to_string(pack.vob) + ", cell " +
             std::to_string(pack.cell) + "; it lies in VOB " + std::to_string(of.vob) + ", cell " +
             std::to_string(of.number));
  if (pack.elapsed != pack.search_elapsed)
    tell(of, sector, pack.begins, fact::elapsed_twice, true,
         "its two times since the beginning of the cell are not the same");
}

void unit_checks::check_pictures(const cell& of, const navigation_pack& pack,
                                 std::uint32_t sector) {
  std::uint32_t before = 0;
  for (const std::uint32_t end : pack.reference_ends) {
    const bool missing = end == 0;
    if (end > pack.unit_end || (!missing && end < before) ||
        (!missing && pack.reference_ends[0] == 0)) {
      tell(of, sector, pack.begins, fact::pictures, false,
           "the ends of its first pictures do not rise, or lie behind it: " + std::to_string(end) +
               " of " + std::to_string(pack.unit_end) + " sectors");
      break;
    }
    before = std::max(before, end);
  }
  const std::uint32_t end = pack.sequence_ends;
  if (end != 0 && (end <= pack.begins || end > pack.ends))
    tell(of, sector, pack.begins, fact::sequence_end, false,
         "its pictures end at a time that is not in it");
}

void unit_checks::check_highlight(const cell& of, const navigation_pack& pack,
                                  std::uint32_t sector) {
  const highlight_information& h = pack.highlight;
  if (h.status == 0)
    return;
  const auto wrong = [&](const char* what) {
    tell(of, sector, pack.begins, fact::highlight, false, what);
  };
  constexpr int keep = 63, width = 720, height = 576;
  if (h.buttons_stated == 0)
    return wrong("it shows buttons, and has none");
  if (h.ends < h.begins || h.selection_ends < h.begins || h.selection_ends > h.ends)
    wrong("its buttons go before they come, or act when they are gone");
  if (h.by_number > h.buttons_stated)
    wrong("more of its buttons have numbers than there are buttons");
  for (const int forced : {h.forced_selection, h.forced_action})
    if (forced > h.buttons_stated && forced != keep)
      wrong("it selects a button that is not there");
  for (const menu_button& button : h.buttons)
    if (button.x1 > width || button.y1 > height)  // some tools give the edge behind the last one
      wrong("a button lies outside the picture");
}

void unit_checks::check_angles(const cell& of, const navigation_pack& pack, std::uint32_t sector) {
  constexpr std::uint32_t back = 0x80000000U;
  const auto look = [&](std::uint32_t angle) {
    const std::uint32_t distance = angle & ~back;
    if (distance == 0 || (distance & no_unit) == no_unit)
      return;
    const std::uint64_t to = (angle & back) == 0  ? std::uint64_t{sector} + distance
                             : distance <= sector ? sector - distance
                                                  : ~std::uint64_t{0};
    if (!is_unit(to))
      tell(of, sector, pack.begins, fact::angle, false,
           "another angle is said to go on where no unit begins");
  };
  for (std::size_t i = 0; i < pack.angles.size(); ++i) {
    look(pack.angles[i]);
    look(pack.seamless_angles[i]);
  }
  const bool in_piece = (pack.interleaving & interleaved) != 0;
  if (in_piece && pack.piece_end < pack.unit_end)
    tell(of, sector, pack.begins, fact::interleaving, false,
         "its interleaved piece ends before it does");
}

void unit_checks::check_subpictures(const cell& of, const navigation_pack& pack,
                                    std::uint32_t sector) {
  constexpr std::uint32_t back = 0x80000000U;
  for (std::size_t i = 0; i < pack.subpictures.size(); ++i) {
    const std::uint32_t pointer = pack.subpictures[i], distance = pointer & ~back;
    if (pointer == 0 || (pointer & no_unit) == no_unit)
      continue;
    const bool there = (pointer & back) == 0 || distance <= sector;
    const std::uint64_t to =
        (pointer & back) == 0 ? std::uint64_t{sector} + distance : std::uint64_t{sector} - distance;
    const cell_address* const place = there && is_unit(to) ? cell_at(to) : nullptr;
    if (place == nullptr || place->vob != of.vob)
      tell(of, sector, pack.begins, fact::subpicture, false,
           "subpicture stream " + std::to_string(i + 1) +
               " is said to go on where no unit of its VOB begins");
  }
}

void unit_checks::add(const navigation_pack& pack, std::uint32_t sector) {
  if (added_++ >= most_units)
    return;
  const cell_address* const place = cell_at(sector);
  const std::pair key =
      place == nullptr ? std::pair(pack.vob, pack.cell) : std::pair(place->vob, place->cell);
  cell& of = cells_[key];
  of.vob = key.first;
  of.number = key.second;
  check_headers(of, pack, sector);
  check_pictures(of, pack, sector);
  check_highlight(of, pack, sector);
  check_angles(of, pack, sector);
  check_subpictures(of, pack, sector);

  unit one;
  one.sector = sector;
  one.end = sector + std::min<std::uint32_t>(pack.unit_end, 0xFFFFFFFFU - sector);
  one.begins = pack.begins;
  one.ends = pack.ends;
  one.vob_begins = pack.vob_video_begins;
  one.vob_ends = pack.vob_video_ends;
  // At 30 a second pictures are counted as if there were 30.
  if (pack.elapsed.valid && pack.elapsed.rate != 0)
    one.elapsed = pack.elapsed.total() * (pack.elapsed.rate == 30 ? 1.001 : 1);
  else
    one.elapsed = -1;
  one.video = pack.reference_ends[0] != 0;
  one.sequence_ends = pack.sequence_ends != 0;
  one.next = pack.next;
  one.previous = pack.previous;
  one.next_video = pack.next_video;
  one.previous_video = pack.previous_video;
  one.forward = pack.forward;
  one.backward = pack.backward;
  const std::span<const std::uint8_t> declared = std::span(pack.headers).subspan(10);
  one.constants = {content_sum().of(pack.vob_video_begins).of(pack.vob_video_ends).value(),
                   content_sum().of(declared).value(), pack.category, pack.prohibited,
                   content_sum().of(pack.sound_gaps).value()};
  const highlight_information& h = pack.highlight;
  one.highlight_status = h.status;
  one.new_highlight = h.status == 1;
  if (one.new_highlight) {
    one.highlight_begins = h.begins;
    one.highlight_times = content_sum().of(h.begins).of(h.ends).of(h.selection_ends).value();
    one.highlight_content = content_of(h);
  }
  of.units.push_back(one);
}

}  // namespace corvane

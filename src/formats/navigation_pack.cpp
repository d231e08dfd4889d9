#include "formats/navigation_pack.h"

#include "formats/program_stream.h"
#include "formats/table_bytes.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>

namespace corvane {

namespace {

// Where the contents of the two packets stand in the sector; places in them follow.
constexpr std::uint64_t pci = 0x2D, dsi = 0x407, highlight_at = pci + 96;
constexpr int most_buttons = 36;

/// A number of `count` bits of a word, the highest of them bit `highest`.
int bits(std::uint64_t word, int highest, int count) {
  return static_cast<int>(word >> (highest + 1 - count) & ((std::uint64_t{1} << count) - 1));
}

bool has_at(std::span<const std::uint8_t> sector, std::size_t at,
            std::initializer_list<std::uint8_t> bytes) {
  return std::equal(bytes.begin(), bytes.end(), sector.begin() + static_cast<std::ptrdiff_t>(at));
}

class pack_reader {
 public:
  explicit pack_reader(std::span<const std::uint8_t> sector) : bytes_(sector) {}

  navigation_pack read();

 private:
  void tell(const char* table, std::uint64_t at, std::string what) {
    add_trouble(pack_.troubles, table, at, std::move(what));
  }
  playback_time time(const char* table, std::uint64_t at);
  void read_control();
  void read_highlight();
  void read_buttons(highlight_information& highlight);
  menu_button button_at(std::uint64_t at) const;
  void check_button(const menu_button& button, int number, int count, std::uint64_t at);
  void read_search();
  unit_search search_at(std::uint64_t place) const;

  table_bytes bytes_;
  navigation_pack pack_;
};

playback_time pack_reader::time(const char* table, std::uint64_t at) {
  const playback_time time = read_playback_time(bytes_.u32(at));
  if (!time.valid)
    tell(table, at, "has a time that is none");
  return time;
}

void pack_reader::read_control() {
  pack_.sector = bytes_.u32(pci);
  pack_.category = bytes_.u16(pci + 4);
  pack_.prohibited = bytes_.u32(pci + 8);
  pack_.begins = bytes_.u32(pci + 12);
  pack_.ends = bytes_.u32(pci + 16);
  pack_.sequence_ends = bytes_.u32(pci + 20);
  pack_.elapsed = time("PCI", pci + 24);
  for (std::size_t i = 0; i < pack_.angles.size(); ++i)
    pack_.angles[i] = bytes_.u32(pci + 60 + 4 * i);
  if (pack_.ends < pack_.begins)
    tell("PCI", pci + 12, "has a unit that ends before it begins");
}

menu_button pack_reader::button_at(std::uint64_t at) const {
  const std::uint64_t word = bytes_.u64(at);
  menu_button button;
  button.colours = bits(word, 63, 2);
  button.x0 = bits(word, 61, 10);
  button.x1 = bits(word, 49, 10);
  button.automatic = bits(word, 39, 2) != 0;
  button.y0 = bits(word, 37, 10);
  button.y1 = bits(word, 25, 10);
  button.up = bits(word, 13, 6);
  button.down = bits(word, 5, 6);
  button.left = bits(bytes_.u8(at + 8), 5, 6);
  button.right = bits(bytes_.u8(at + 9), 5, 6);
  button.command.bytes = bytes_.take<8>(at + 10);
  return button;
}

void pack_reader::check_button(const menu_button& button, int number, int count, std::uint64_t at) {
  const std::string name = "has a button " + std::to_string(number);
  if (button.x1 < button.x0 || button.y1 < button.y0)
    tell("HLI", at, name + " that ends before it begins");
  if (button.colours > 3)
    tell("HLI", at, name + " with colours that are not there");
  for (const int neighbour : {button.up, button.down, button.left, button.right})
    if (neighbour < 1 || neighbour > count)
      tell("HLI", at + 6,
           name + " that leads to button " + std::to_string(neighbour) + " of " +
               std::to_string(count));
}

void pack_reader::read_buttons(highlight_information& highlight) {
  constexpr std::uint64_t buttons_at = highlight_at + 46, size = 18;
  const int groups = std::max(highlight.groups, 1), room = most_buttons / groups;
  const int count = std::min(highlight.buttons_stated, room);
  if (highlight.buttons_stated > room)
    tell("HLI", highlight_at + 17,
         "states " + std::to_string(highlight.buttons_stated) + " buttons; there can be " +
             std::to_string(room));
  if (highlight.groups == 0 && count > 0)
    tell("HLI", highlight_at + 14, "has buttons but no group of them");
  for (int group = 0; group < groups; ++group)
    for (int i = 0; i < count; ++i) {
      const std::uint64_t at = buttons_at + static_cast<std::uint64_t>(group * room + i) * size;
      highlight.buttons.push_back(button_at(at));
      check_button(highlight.buttons.back(), i + 1, count, at);
    }
}

void pack_reader::read_highlight() {
  highlight_information& highlight = pack_.highlight;
  highlight.status = bytes_.u16(highlight_at) & 3;
  if (highlight.status == 0)
    return;
  highlight.begins = bytes_.u32(highlight_at + 2);
  highlight.ends = bytes_.u32(highlight_at + 6);
  highlight.selection_ends = bytes_.u32(highlight_at + 10);
  const std::uint16_t groups = bytes_.u16(highlight_at + 14);
  highlight.groups = bits(groups, 13, 2);
  highlight.group_displays = {bits(groups, 10, 3), bits(groups, 6, 3), bits(groups, 2, 3)};
  highlight.first_number = bytes_.u8(highlight_at + 16);
  highlight.buttons_stated = bytes_.u8(highlight_at + 17) & 63;
  highlight.by_number = bytes_.u8(highlight_at + 18) & 63;
  highlight.forced_selection = bytes_.u8(highlight_at + 20) & 63;
  highlight.forced_action = bytes_.u8(highlight_at + 21) & 63;
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t state = 0; state < 2; ++state)
      highlight.colours[row][state] = bytes_.u32(highlight_at + 22 + 8 * row + 4 * state);
  read_buttons(highlight);
}

unit_search pack_reader::search_at(std::uint64_t place) const {
  constexpr std::uint32_t none = 0x3FFFFFFF;
  const std::uint32_t distance = bytes_.u32(dsi + place) & none;
  return distance == none ? unit_search{} : unit_search{distance, true};
}

void pack_reader::read_search() {
  pack_.search_clock = bytes_.u32(dsi);
  pack_.search_sector = bytes_.u32(dsi + 4);
  pack_.unit_end = bytes_.u32(dsi + 8);
  for (std::size_t i = 0; i < 3; ++i)
    pack_.reference_ends[i] = bytes_.u32(dsi + 12 + 4 * i);
  pack_.vob = bytes_.u16(dsi + 24);
  pack_.cell = bytes_.u8(dsi + 27);
  pack_.search_elapsed = time("DSI", dsi + 28);
  pack_.interleaving = bytes_.u16(dsi + 32);
  pack_.piece_end = bytes_.u32(dsi + 34);
  pack_.vob_video_begins = bytes_.u32(dsi + 44);
  pack_.vob_video_ends = bytes_.u32(dsi + 48);
  pack_.sound_gaps = bytes_.take<128>(dsi + 52);
  for (std::size_t i = 0; i < pack_.seamless_angles.size(); ++i)
    pack_.seamless_angles[i] = bytes_.u32(dsi + 180 + 6 * i);
  pack_.next_video = search_at(234);
  pack_.next = search_at(314);
  pack_.previous = search_at(318);
  pack_.previous_video = search_at(398);
  for (std::size_t i = 0; i < pack_.forward.size(); ++i)
    pack_.forward[i] = bytes_.u32(dsi + 238 + 4 * i);
  for (std::size_t i = 0; i < pack_.backward.size(); ++i)
    pack_.backward[i] = bytes_.u32(dsi + 322 + 4 * i);
  for (std::size_t i = 0; i < pack_.audio.size(); ++i)
    pack_.audio[i] = bytes_.u16(dsi + 402 + 2 * i);
  for (std::size_t i = 0; i < pack_.subpictures.size(); ++i)
    pack_.subpictures[i] = bytes_.u32(dsi + 418 + 4 * i);
  if (pack_.search_sector != pack_.sector)
    tell("DSI", dsi + 4,
         "says that this is sector " + std::to_string(pack_.search_sector) + ", PCI " +
             std::to_string(pack_.sector));
}

navigation_pack pack_reader::read() {
  pack_.headers = bytes_.take<38>(0);
  read_control();
  read_highlight();
  read_search();
  return std::move(pack_);
}

}  // namespace

bool is_navigation_pack(std::span<const std::uint8_t> sector) {
  return sector.size() >= disc_pack_size && has_at(sector, 0, {0, 0, 1, pack_header}) &&
         has_at(sector, 0x26, {0, 0, 1, private_stream_2, 0x03, 0xD4, 0x00}) &&
         has_at(sector, 0x400, {0, 0, 1, private_stream_2, 0x03, 0xFA, 0x01});
}

result<navigation_pack> read_navigation_pack(std::span<const std::uint8_t> sector) {
  if (!is_navigation_pack(sector))
    return result<navigation_pack>::fail("not a navigation pack");
  navigation_pack pack = pack_reader(sector).read();
  pack.clock = read_packet(sector.data(), sector.size()).clock.value_or(0);
  return result<navigation_pack>::ok(std::move(pack));
}

}  // namespace corvane

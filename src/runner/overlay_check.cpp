#include "runner/overlay_check.h"

#include "platform/files/files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string_view>

namespace corvane {
namespace {

constexpr std::size_t pack_size = 2048;
constexpr std::size_t pack_header = 14;

// Stream ids: private stream 1 holds most kinds of sound, and subpictures. The first byte tells
// which; the menu's subpicture is the first of 32.
constexpr unsigned private_stream_1 = 0xBD, first_mpeg_sound = 0xC0, video_stream = 0xE0;
constexpr unsigned first_subpicture = 0x20, last_subpicture = 0x3F;

using pack = std::array<unsigned char, pack_size>;

/// A time of 33 bits at 90 kHz.
using stamp = std::uint64_t;

struct packet {
  unsigned stream;
  std::optional<stamp> shown;  ///< presentation time, where the packet has one
  std::optional<unsigned> substream;
};

class stream_times {
 public:
  void look_at(const pack& p) {
    // The pack header ends with stuffing bytes, whose number its last three bits tell.
    std::size_t at = pack_header + (p[pack_header - 1] & 7u);
    while (at + 9 < pack_size && p[at] == 0 && p[at + 1] == 0 && p[at + 2] == 1) {
      take(packet_at(p, at));
      at += 6 + (std::size_t{p[at + 4]} << 8 | p[at + 5]);
    }
  }

  bool has_subpicture() const { return subpicture_.has_value(); }
  bool in_time() const { return !end_ || !subpicture_ || *subpicture_ <= *end_; }

 private:
  static packet packet_at(const pack& p, std::size_t at) {
    packet found{p[at + 3], std::nullopt, std::nullopt};
    const bool has_header = found.stream == private_stream_1 ||
                            (found.stream >= first_mpeg_sound && found.stream <= video_stream);
    if (!has_header)
      return found;
    if ((p[at + 7] & 0x80) != 0 && at + 14 <= pack_size)
      found.shown = stamp_at(p, at + 9);
    const std::size_t payload = at + 9 + p[at + 8];
    if (payload < pack_size)
      found.substream = p[payload];
    return found;
  }

  static stamp stamp_at(const pack& p, std::size_t at) {
    const auto bits = [&](std::size_t i, unsigned mask) { return stamp{p[at + i] & mask}; };
    return bits(0, 0x0E) << 29 | bits(1, 0xFF) << 22 | bits(2, 0xFE) << 14 | bits(3, 0xFF) << 7 |
           bits(4, 0xFE) >> 1;
  }

  void take(const packet& found) {
    if (!found.shown)
      return;
    const bool is_private = found.stream == private_stream_1 && found.substream;
    if (is_private && *found.substream == first_subpicture)
      subpicture_ = std::min(subpicture_.value_or(*found.shown), *found.shown);
    else if (!is_private || *found.substream > last_subpicture)
      end_ = std::max(end_.value_or(0), *found.shown);
  }

  std::optional<stamp> subpicture_;  ///< when the first one comes up
  std::optional<stamp> end_;         ///< of the last picture or sound
};

}  // namespace

std::string why_no_buttons_seen(const std::string& menu_stream) {
  std::ifstream file(path_of(menu_stream), std::ios::binary);
  if (!file)
    return "its stream cannot be read";
  stream_times times;
  pack p{};
  while (file.read(reinterpret_cast<char*>(p.data()), pack_size))
    times.look_at(p);
  if (!times.has_subpicture())
    return "no picture of them was added";
  return times.in_time() ? "" : "their picture comes up after the end of the menu";
}

int buttons_asked_for(const std::string& control_file) {
  constexpr std::string_view element = "<button ";
  const result<std::string> text = read_file(control_file, std::uintmax_t{1} << 20);
  int count = 0;
  for (std::size_t at = text ? text->find(element) : std::string::npos; at != std::string::npos;
       at = text->find(element, at + 1))
    ++count;
  return count;
}

}  // namespace corvane

#include "runner/tools/spumux_buttons.h"

#include "formats/program_stream.h"
#include "platform/files/files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <span>
#include <string_view>

namespace corvane {
namespace {

using pack = std::array<std::uint8_t, disc_pack_size>;

class stream_times {
 public:
  void look_at(const pack& p) {
    each_packet_in_pack(p, [this](const stream_packet& packet,
                                  std::span<const std::uint8_t> /*payload*/) { take(packet); });
  }

  bool has_subpicture() const { return subpicture_.has_value(); }
  bool in_time() const { return !end_ || !subpicture_ || *subpicture_ <= *end_; }

 private:
  // The menu's subpicture is the first of 32.
  void take(const stream_packet& packet) {
    if (!packet.shown)
      return;
    if (packet.substream == first_subpicture)
      subpicture_ = std::min(subpicture_.value_or(*packet.shown), *packet.shown);
    else if (!packet.substream || *packet.substream > last_subpicture)
      end_ = std::max(end_.value_or(0), *packet.shown);
  }

  std::optional<stream_time> subpicture_;  ///< when the first one comes up
  std::optional<stream_time> end_;         ///< of the last picture or sound
};

}  // namespace

std::string why_no_buttons_seen(const std::string& menu_stream) {
  std::ifstream file(path_of(menu_stream), std::ios::binary);
  if (!file)
    return "its stream cannot be read";
  stream_times times;
  pack p{};
  while (file.read(reinterpret_cast<char*>(p.data()), p.size()))
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

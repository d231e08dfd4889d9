#include "tools/cue_stream.h"

#include "formats/program_stream.h"
#include "platform/files/files.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <span>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t packs_at_once = 2048;

unsigned byte_at(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

std::uint32_t number_at(std::string_view bytes, std::size_t at, std::size_t length) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < length; ++i)
    number = number << 8 | byte_at(bytes, at + i);
  return number;
}

std::string text_of_bytes(std::initializer_list<unsigned> bytes) {
  std::string text;
  for (const unsigned byte : bytes)
    text += static_cast<char>(byte);
  return text;
}

}  // namespace

bool cue_stream::read(const std::string& file) {
  std::ifstream in(path_of(file), std::ios::binary);
  in.seekg(static_cast<std::streamoff>(position_));
  std::string bytes(disc_pack_size * packs_at_once, '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  const std::size_t packs = static_cast<std::size_t>(in.gcount()) / disc_pack_size;
  for (std::size_t i = 0; i < packs; ++i)
    take_pack(std::string_view(bytes).substr(i * disc_pack_size, disc_pack_size));
  position_ += packs * disc_pack_size;
  return packs > 0;
}

void cue_stream::take_pack(std::string_view pack) {
  each_packet_in_pack({reinterpret_cast<const std::uint8_t*>(pack.data()), pack.size()},
                      [this](const stream_packet& packet, std::span<const std::uint8_t> payload) {
                        const std::string_view bytes(reinterpret_cast<const char*>(payload.data()),
                                                     payload.size());
                        if (packet.stream == padding_stream)
                          take_data(bytes);
                        else if (packet.substream == first_subpicture)
                          take_subpicture(bytes.substr(1));
                      });
}

// After the mark: version, kind, substream, begin, end, then sections; that of the colours has the
// number 1, how many there are, and each as Y, Cr, Cb.
void cue_stream::take_data(std::string_view packet) {
  using namespace std::string_view_literals;
  constexpr std::string_view mark = "dvdauthor-data\0\2\1\x20"sv;
  constexpr unsigned colour_section = 1;
  if (!packet.starts_with(mark))
    return;
  packet.remove_prefix(mark.size());
  coming_ = stream_cue{number_at(packet, 0, 4), number_at(packet, 4, 4), {}, {}};
  if (byte_at(packet, 8) != colour_section)
    return;
  const std::size_t count = std::min(byte_at(packet, 9), 16u);
  for (std::size_t i = 0; i < count; ++i) {
    disc_colour c{};
    for (std::size_t part = 0; part < c.size(); ++part)
      c[part] = static_cast<std::uint8_t>(byte_at(packet, 10 + i * c.size() + part));
    coming_.palette.push_back(c);
  }
}

// A unit begins with its size and may go on over several packs.
void cue_stream::take_subpicture(std::string_view payload) {
  coming_.unit += payload;
  const std::size_t size = number_at(coming_.unit, 0, 2);
  if (coming_.unit.size() < std::max<std::size_t>(size, 4))
    return;
  coming_.unit.resize(size);
  cues_.push_back(std::exchange(coming_, {}));
}

std::string stream_for_cues() {
  constexpr std::size_t headers = 14 + 6;  // of the pack, of the packet
  constexpr std::size_t length = disc_pack_size - headers;
  constexpr unsigned high = length >> 8, low = length & 255;
  // 10 Mbit/s, the clock at 0; a video packet with the presentation time 0.
  std::string stream = text_of_bytes({0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1, 1, 0x89, 0xC3, 0xF8}) +
                       text_of_bytes({0, 0, 1, 0xE0, high, low, 0x80, 0x80, 5, 0x21, 0, 1, 0, 1});
  stream.resize(disc_pack_size, '\0');
  // The clock at 1 s; padding.
  stream += text_of_bytes({0, 0, 1, 0xBA, 0x44, 0, 0x16, 0xFC, 0x84, 1, 1, 0x89, 0xC3, 0xF8}) +
            text_of_bytes({0, 0, 1, 0xBE, high, low});
  stream.resize(2 * disc_pack_size, '\xFF');
  return stream;
}

}  // namespace corvane

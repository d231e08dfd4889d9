#include "examine/made_packs.h"

#include <algorithm>
#include <vector>

namespace corvane::examine_test {

using namespace std::string_literals;

void pack_maker::put(std::uint64_t value, int count_of_bytes) {
  for (int byte = count_of_bytes - 1; byte >= 0; --byte)
    bytes += static_cast<char>(value >> 8 * byte & 0xFF);
}

void pack_maker::stamp(unsigned mark, stream_time time) {
  put(mark << 4 | (time >> 29 & 0x0E) | 1, 1);
  put((time >> 14 & 0xFFFE) | 1, 2);
  put((time << 1 & 0xFFFE) | 1, 2);
}

pack_maker& pack_maker::raw(const std::string& any) {
  bytes += any;
  return *this;
}

pack_maker& pack_maker::pack(std::uint64_t clock, std::uint32_t rate) {
  raw("\0\0\1\xBA"s);
  const std::uint64_t base = clock / 300, rest = clock % 300;
  if (!mpeg2_) {
    stamp(2, base);
    put(0x800001 | rate << 1, 3);
    return *this;
  }
  put(std::uint64_t{0x44} << 40 | (base >> 30 & 7) << 43 | (base >> 15 & 0x7FFF) << 27 |
          std::uint64_t{4} << 24 | (base & 0x7FFF) << 11 | 4 << 8 | rest << 1 | 1,
      6);
  put(rate << 2 | 3, 3);
  put(0xF8, 1);
  return *this;
}

pack_maker& pack_maker::system_header() {
  return raw("\0\0\1\xBB\0\x0C\x80\xC4\xE1\4\xE1\x7F\xE0\xE0\xE6\xBD\xC0\x20"s);
}

pack_maker& pack_maker::packet(std::uint8_t stream, const std::string& payload,
                               std::optional<stream_time> shown,
                               std::optional<stream_time> decoded) {
  const unsigned stamps = shown ? decoded ? 3 : 2 : 0;
  const std::size_t header = decoded ? 10u : shown ? 5u : mpeg2_ ? 0u : 1u;
  raw("\0\0\1"s);
  put(stream, 1);
  put(payload.size() + header + (mpeg2_ ? 3 : 0), 2);
  if (mpeg2_)
    put(0x810000 | stamps << 14 | header, 3);
  else if (!shown)
    put(0x0F, 1);
  if (shown)
    stamp(stamps, *shown);
  if (decoded)
    stamp(1, *decoded);
  return raw(payload);
}

pack_maker& pack_maker::ac3(const std::string& sound, std::optional<stream_time> shown,
                            int number) {
  return packet(private_stream_1, static_cast<char>(0x80 + number) + "\1\0\1"s + sound, shown);
}

pack_maker& pack_maker::lpcm(const std::string& sound, lpcm_format format,
                             std::optional<stream_time> shown) {
  const int all = (format.bits - 16) / 4 << 6 | (format.sample_rate == 96'000 ? 1 : 0) << 4 |
                  (format.channels - 1);
  return packet(private_stream_1, "\xA0\1\0\4\0"s + static_cast<char>(all) + "\x80"s + sound,
                shown);
}

pack_maker& pack_maker::subpicture(const std::string& content, std::optional<stream_time> shown,
                                   int number) {
  return packet(private_stream_1, static_cast<char>(first_subpicture + number) + content, shown);
}

pack_maker& pack_maker::navigation(int vob, int cell) {
  raw("\0\0\1\xBF\3\xD4\0"s + std::string(0x3D3, '\0'));
  raw("\0\0\1\xBF\3\xFA\1"s + std::string(24, '\0'));
  put(static_cast<unsigned>(vob) << 16 | static_cast<unsigned>(cell), 4);
  return raw(std::string(0x3FA - 29, '\0'));
}

pack_maker& pack_maker::fill() {
  const std::size_t missing = disc_pack_size - bytes.size() % disc_pack_size;
  raw("\0\0\1\xBE"s);
  put(missing - 6, 2);
  return raw(std::string(missing - 6, '\xFF'));
}

pack_maker& pack_maker::end() {
  return raw("\0\0\1\xB9"s);
}

program_stream_facts facts_in_slices(const std::string& stream, std::size_t slice,
                                     inner_streams which) {
  program_stream_scanner scanner(which);
  for (std::size_t at = 0; at < stream.size(); at += slice) {
    // Bytes behind the slice would be seen by the sanitizers alone.
    const std::size_t size = std::min(slice, stream.size() - at);
    const std::vector<std::uint8_t> part(stream.begin() + static_cast<std::ptrdiff_t>(at),
                                         stream.begin() + static_cast<std::ptrdiff_t>(at + size));
    scanner.feed(part.data(), part.size());
  }
  scanner.finish();
  return scanner.facts();
}

}  // namespace corvane::examine_test

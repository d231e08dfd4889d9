#include "examine/pack_headers.h"

#include "formats/program_stream.h"

#include <algorithm>
#include <cstring>

namespace corvane {

namespace {

using byte_span = std::span<const std::uint8_t>;

// Whether the bits that are 1 in every pack header are; looked at only where one is searched for.
bool has_marks(byte_span header) {
  const auto set = [header](std::size_t at, int bits) { return (header[at] & bits) == bits; };
  if (is_mpeg2_pack(header))
    return set(4, 4) && set(6, 4) && set(8, 4) && set(9, 1) && set(12, 3);
  return set(4, 1) && set(6, 1) && set(8, 1) && set(9, 0x80) && set(11, 1);
}

}  // namespace

bool is_mpeg2_pack(byte_span header) {
  return (header[4] & 0xC0) == 0x40;
}

bool is_pack_header(byte_span bytes) {
  if (bytes.size() < 4 ||
      read_packet(bytes.data(), bytes.size()).found == stream_packet::state::none)
    return false;
  return bytes.size() < longest_pack_header || has_marks(bytes);
}

std::uint64_t mux_rate(byte_span header) {
  const auto bits = [header](std::size_t at, unsigned mask) {
    return std::uint64_t{header[at] & mask};
  };
  constexpr std::uint64_t unit = 400;
  if (is_mpeg2_pack(header))
    return (bits(10, 0xFF) << 14 | bits(11, 0xFF) << 6 | bits(12, 0xFC) >> 2) * unit;
  return (bits(9, 0x7F) << 15 | bits(10, 0xFF) << 7 | bits(11, 0xFE) >> 1) * unit;
}

std::size_t bytes_to_length(byte_span beginning) {
  if (beginning.size() < 4)
    return 4;
  if (beginning[3] != pack_header)
    return 6;
  if (beginning.size() < 5)
    return 5;
  return is_mpeg2_pack(beginning) ? longest_pack_header : 12;
}

std::size_t bytes_to_pack(byte_span bytes) {
  constexpr std::uint8_t code[] = {0, 0, 1, pack_header};
  for (std::size_t at = 3; at < bytes.size(); ++at) {
    const void* const found = std::memchr(bytes.data() + at, pack_header, bytes.size() - at);
    if (found == nullptr)
      break;
    at = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - bytes.data());
    if (std::memcmp(bytes.data() + at - 3, code, sizeof code) == 0)
      return at - 3;
  }
  // Its first bytes may be the last ones here.
  for (std::size_t part = std::min<std::size_t>(3, bytes.size()); part > 0; --part)
    if (std::memcmp(bytes.data() + bytes.size() - part, code, part) == 0)
      return bytes.size() - part;
  return bytes.size();
}

std::uint8_t stream_of_sector(byte_span sector) {
  constexpr std::uint8_t system_header = 0xBB;
  const auto has_code = [sector](std::size_t at) {
    return sector[at] == 0 && sector[at + 1] == 0 && sector[at + 2] == 1;
  };
  if (sector.size() < disc_pack_size || !has_code(0) || sector[3] != pack_header ||
      !is_mpeg2_pack(sector))
    return 0;
  constexpr std::size_t packet_header = 9;
  std::size_t at = longest_pack_header + (sector[13] & 7U);
  if (has_code(at) && sector[at + 3] == system_header)
    at += 6 + (std::size_t{sector[at + 4]} << 8 | sector[at + 5]);
  if (at + packet_header > disc_pack_size || !has_code(at))
    return 0;
  if (sector[at + 3] != private_stream_1)
    return sector[at + 3];
  at += packet_header + sector[at + 8];
  return at < disc_pack_size ? sector[at] : std::uint8_t{0};
}

}  // namespace corvane

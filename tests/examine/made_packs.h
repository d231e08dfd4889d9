// Program streams made for tests: right packs and packets around any payload. What a test wants to
// be wrong is left out or written by raw().
#pragma once

#include "examine/program_stream_facts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace corvane::examine_test {

/// Builds a stream in `bytes`. A place in it is the size that `bytes` has there.
class pack_maker {
 public:
  explicit pack_maker(bool mpeg2 = true) : mpeg2_(mpeg2) {}

  std::string bytes;

  std::uint64_t here() const { return bytes.size(); }

  /// A pack header; `clock` at 27 MHz (of MPEG-1, the whole 300s of it), `rate` in 50 bytes a
  /// second.
  pack_maker& pack(std::uint64_t clock, std::uint32_t rate = 25'200);
  pack_maker& system_header();
  /// A packet with time stamps.
  pack_maker& packet(std::uint8_t stream, const std::string& payload,
                     std::optional<stream_time> shown = {},
                     std::optional<stream_time> decoded = {});
  /// One of private stream 1: `payload` begins with the substream's own header.
  pack_maker& ac3(const std::string& sound, std::optional<stream_time> shown = {}, int number = 0);
  pack_maker& lpcm(const std::string& sound, lpcm_format format,
                   std::optional<stream_time> shown = {});
  pack_maker& subpicture(const std::string& content, std::optional<stream_time> shown, int number);
  /// Both packets of a NAV pack.
  pack_maker& navigation(int vob = 0, int cell = 0);
  /// A padding packet up to the next multiple of 2048 bytes, which must be 7 bytes away or more.
  pack_maker& fill();
  pack_maker& end();
  pack_maker& raw(const std::string& any);

 private:
  void put(std::uint64_t value, int count_of_bytes);
  void stamp(unsigned mark, stream_time time);

  bool mpeg2_;
};

/// What the scanner says of the bytes, in slices of this many.
program_stream_facts facts_in_slices(const std::string& stream, std::size_t slice,
                                     inner_streams which = inner_streams::examined);

}  // namespace corvane::examine_test

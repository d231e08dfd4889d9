// Walks a program stream from packet to packet and gathers its facts.
#pragma once

#include "examine/inner_stream_scan.h"
#include "examine/program_stream_facts.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

class program_stream_scan {
 public:
  using bytes_view = std::span<const std::uint8_t>;

  explicit program_stream_scan(inner_streams streams)
      : examined_(streams == inner_streams::examined) {
    scan_of_.fill(nothing);
  }

  void feed(bytes_view bytes);
  /// The stream has ended (`at_end`), or no more of it will be fed.
  void end(bool at_end);

  program_stream_facts facts;

 private:
  static constexpr std::uint16_t nothing = 0xFFFF;

  std::size_t take(bytes_view view, bool at_end);
  std::size_t step(bytes_view rest, bool at_end);
  std::size_t search(bytes_view rest, bool at_end);
  std::size_t later(std::size_t bytes);
  std::size_t take_cut(const stream_packet& packet, bytes_view rest);
  void take_packet(const stream_packet& packet, bytes_view bytes);
  void take_pack_header(const stream_packet& packet, bytes_view bytes);
  void take_clock(std::uint64_t clock);
  void take_navigation(const stream_packet& packet, bytes_view bytes);
  void name_vob();
  void begin_unit();
  void take_unit_picture(const stream_packet& packet, bytes_view payload);
  void add_units();
  void take_inner(const stream_packet& packet, bytes_view bytes);
  void measure_pack(std::uint64_t end);
  void measure_nav(std::uint64_t end);
  void add_loose(bytes_view bytes);
  void close_loose();
  void order_streams();
  void add_length();

  bool examined_;
  std::vector<std::uint8_t> held_;  // the beginning of a packet whose rest was not fed yet
  std::size_t needed_ = 1;          // so many bytes must be there to go on
  bool searching_ = true;           // for a pack header
  std::uint64_t at_ = 0;            // of the next byte to be taken

  loose_bytes loose_;           // still growing; of size 0 if none are
  std::uint64_t pack_ = 0;      // position of the newest
  std::uint64_t mux_rate_ = 0;  // of that
  bool pack_open_ = false;      // its end is not known yet
  std::optional<std::uint64_t> nav_, end_code_;
  std::optional<cell_begin> cell_;
  // The first picture of a unit that has come, in the order of the stream.
  struct unit_picture {
    stream_time shown = 0;
    int pictures_before = 0;  // that are shown before it
  };
  std::vector<unit_picture> units_;
  bool unit_waits_ = false;  // for its picture
  bool units_known_ = true;
  std::uint64_t vobs_ = 0;                // how often another VOB was named
  std::vector<inner_stream_scan> scans_;  // beside facts.streams
  // By the last byte of the start code, then by substream.
  std::array<std::uint16_t, 512> scan_of_{};
};

}  // namespace corvane

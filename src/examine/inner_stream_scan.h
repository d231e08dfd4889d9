// Gathers the facts of one stream inside a program stream, packet by packet.
#pragma once

#include "examine/program_stream_facts.h"
#include "examine/time_course.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace corvane {

/// Time stamps begin again at 0 after so many.
inline constexpr std::uint64_t stamp_turn = std::uint64_t{1} << 33;

class inner_stream_scan {
 public:
  /// Fills `facts`, which the caller keeps and hands in each time: it may move meanwhile.
  /// `examined`: those of its content, too, where its kind has any.
  inner_stream_scan(inner_kind kind, bool examined);

  /// Where a packet stands.
  struct place {
    std::uint64_t position = 0;
    std::uint64_t clock = 0;  ///< since the beginning, at 27 MHz
    std::uint64_t vobs = 0;   ///< how often another VOB was named
  };

  /// The next packet; `payload` is what is there of it.
  void take(inner_stream& facts, const stream_packet& packet, place at,
            std::span<const std::uint8_t> payload);
  /// The stream has ended (`at_end`), or no more of it will come.
  void end(inner_stream& facts, bool at_end);

 private:
  void take_stamps(inner_stream& facts, const stream_packet& packet, place at);
  bool breaks(const stream_packet& packet, stream_time went_on) const;
  stream_time went_on(place at) const;

  inner_kind kind_;
  std::unique_ptr<video_scanner> video_;
  std::unique_ptr<audio_scanner> audio_;
  std::optional<stream_time> decoded_;  // of the packet before
  bool decoding_told_ = false;          // by a stamp of its own
  stream_time went_on_ = 0;             // then
  std::uint64_t vobs_ = 0;              // then
  time_stretch stretch_{stamp_turn};
  std::uint64_t length_before_ = 0;  // of the stretches before
  std::optional<lpcm_format> lpcm_;  // of the packet before
};

}  // namespace corvane

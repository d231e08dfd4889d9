// How far a video stream runs ahead of what is read of it: a second with many bits is no harm while
// a decoder's buffer evens it out, and a rate that is only a little too high empties the buffer all
// the same, if it lasts.
//
// The buffer fills at a rate, and each picture is taken out of it at once when it is decoded. What
// counts is how many bits are missing in it then: more than it holds, and the picture is late.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

/// The most bits that are missing when a picture is taken out, and which picture that is: the first
/// one that makes them more than a player's buffer holds (or has got, at the beginning), else the
/// last one that made them more.
struct missing_bits {
  double bits = 0;
  std::uint64_t byte = 0;
  double seconds = 0;
  bool operator==(const missing_bits&) const = default;
};

struct buffer_need {
  double rate = 0;        ///< at which the buffer is filled; bits a second
  missing_bits of_full;   ///< of one that is full at the beginning
  missing_bits of_empty;  ///< of one that is empty then, and so large that it never is full
  bool operator==(const buffer_need&) const = default;
};

class read_ahead {
 public:
  /// `to_multiplex`: `in_packs` is found out, too.
  explicit read_ahead(bool to_multiplex = true) : steps_(to_multiplex ? steps : 0) {}

  /// The highest rates of the video of a disc, and what is left for video of the rate of all
  /// together, 10.08 Mb/s, by the headers of its packs. Bits a second.
  static constexpr double mpeg2_rate = 9'800'000, mpeg1_rate = 1'856'000;
  static constexpr double rate_in_packs = 10'080'000.0 * 2025 / 2048;
  /// The rates that are tried are that of all packs and so much less each.
  static constexpr double step = 64'000;
  static constexpr std::size_t steps = 125;
  /// What a player's buffer holds, in bits; of MPEG-1, what a stream may ask for.
  static constexpr double buffer = 232 * 1024 * 8, mpeg1_buffer = 327'680;
  /// For about so many seconds buffers are filled before the first picture is shown.
  static constexpr double lead = 0.1;

  struct picture {
    std::uint64_t byte = 0;  ///< where it begins
    double seconds = 0;      ///< when
    std::uint64_t bytes = 0;
    double lasts = 0;          ///< seconds from its decoding to that of the next one
    bool begins_unit = false;  ///< a navigation pack stands before it on a disc
  };

  /// A new stretch, with full buffers.
  void begin(bool mpeg2);
  void add(const picture& one);

  /// At the highest rate that a disc allows for its video.
  const buffer_need& of_video() const { return of_video_; }
  /// At the rates that are tried, from the highest on.
  const std::vector<buffer_need>& in_packs() const { return in_packs_; }

 private:
  struct level {
    double of_full = 0, of_empty = 0;  // bits that are missing
  };

  std::size_t steps_;
  buffer_need of_video_;
  std::vector<buffer_need> in_packs_;
  level level_;
  std::vector<level> levels_in_packs_;  // of each rate
  double buffer_ = buffer;
};

/// What the need is at a rate, or at the next higher one that was tried; null if none is as high.
const buffer_need* need_at(const std::vector<buffer_need>& needs, double rate);

}  // namespace corvane

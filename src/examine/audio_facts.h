// What an audio stream is: its kind, rate, channels and exact length, and where bytes stand that
// are no sound. A stream is taken in slices of any size, at reading speed and in constant memory:
// the scanner goes from the header of a frame to that of the next.
//
// Positions are bytes from the beginning of the stream, the first is 0. Nothing can fail: bytes
// that are no sound are a fact like others.
#pragma once

#include "formats/ac3_checksum.h"
#include "formats/audio_frames.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

/// A time, in units of 1 / `audio_clock` s: whole numbers of them are a sample of any rate, so that
/// lengths are exact, also when the rate changes.
using audio_time = std::uint64_t;
inline constexpr audio_time audio_clock = 14'112'000;

/// A time in seconds.
constexpr double seconds_of(audio_time time) {
  return static_cast<double>(time) / static_cast<double>(audio_clock);
}

/// Bytes between two frames, before the first or behind the last, that belong to none.
struct audio_gap {
  enum content_kind : std::uint8_t {
    other,
    zeros,  ///< nothing but bytes 0
    id3v1,  ///< a tag of 128 bytes, with which MP3 files end
    id3v2,  ///< a tag with which they begin
  };
  std::uint64_t position = 0;
  std::uint64_t size = 0;  ///< in bytes, at least 1
  audio_time before = 0;   ///< length of the sound in front of it
  content_kind content = other;

  bool operator==(const audio_gap&) const = default;
};

/// The first frame that is unlike the one at the beginning in kind, sample rate or channels.
struct audio_change {
  std::uint64_t position = 0;
  audio_time before = 0;  ///< length of the sound in front of it
  audio_frame to;         ///< what the frame there says

  bool operator==(const audio_change&) const = default;
};

/// A frame with which the stream breaks off.
struct cut_audio_frame {
  std::uint64_t position = 0;
  std::uint64_t bytes_there = 0;
  std::uint64_t bytes_missing = 0;

  bool operator==(const cut_audio_frame&) const = default;
};

/// A frame whose checksum does not fit its bytes.
struct damaged_audio_frame {
  std::uint64_t position = 0;
  audio_time before = 0;  ///< length of the sound in front of it

  bool operator==(const damaged_audio_frame&) const = default;
};

/// Of a stream as a whole; of its beginning, as far as it was looked at.
struct audio_facts {
  /// No more gaps than these are kept.
  static constexpr std::size_t most_gaps = 1000;

  /// Of the first frame; where there is none, or another format is around it (WAV), what the first
  /// bytes say. Of such formats nothing else is known: the stream is one gap.
  audio_kind kind = audio_kind::unknown;
  /// The first frame: its sample rate, channels, bit rate. Not set when there is none.
  std::optional<audio_frame> first;
  int highest_bit_rate = 0;
  bool bit_rate_varies = false;
  std::optional<audio_change> change;

  std::uint64_t bytes = 0;   ///< of the stream: those of frames, gaps and the cut frame
  std::uint64_t frames = 0;  ///< whole ones
  std::uint64_t frame_bytes = 0;
  std::uint64_t samples = 0;  ///< of each channel, in whole frames
  audio_time length = 0;      ///< of whole frames, exact

  std::vector<audio_gap> gaps;  ///< the first `most_gaps` of them, in their order
  std::uint64_t gap_count = 0;  ///< all of them
  std::uint64_t gap_bytes = 0;  ///< in all of them
  /// The first gap with frames before it and behind it. mplex takes no more of an MPEG stream from
  /// there on: what is lost is `length` less the time before it.
  std::optional<audio_gap> first_inner_gap;

  std::optional<cut_audio_frame> cut;

  /// Of AC-3: frames whose checksum is wrong, and the first of them.
  std::uint64_t damaged_frames = 0;
  std::optional<damaged_audio_frame> first_damaged;

  bool operator==(const audio_facts&) const = default;
};

/// Takes a stream's bytes in their order and gives its facts, the same for any slices.
///
/// A frame counts that stands where the last one ends and is like it. Where another kind, rate or
/// bit rate begins, one more header must stand where the frame ends, and behind bytes that are no
/// sound two, for sync words are found in any bytes.
class audio_scanner {
 public:
  /// The next bytes of the stream.
  void feed(const std::uint8_t* data, std::size_t size);
  /// The stream has ended. Nothing may be fed afterwards.
  void finish();
  /// Instead, when the stream goes on, but no more of it will be fed: a frame that is not there as
  /// a whole is left out.
  void stop();
  /// Whole after `finish` or `stop`; before, without the last bytes that were fed.
  const audio_facts& facts() const { return facts_; }

 private:
  using bytes = std::span<const std::uint8_t>;
  enum class state { beginning, at_gap, in_tag, in_step, searching, foreign };
  enum class answer { no, yes, later };

  std::size_t take(bytes view, bool at_end);
  std::size_t step(bytes view, bool at_end);
  std::size_t begin(bytes view, bool at_end);
  std::size_t take_frames(bytes view, bool at_end);
  std::size_t look_for_tag(bytes view, bool at_end);
  std::size_t search(bytes view, bool at_end);
  std::size_t pass_tag(bytes view);
  static answer is_sound(bytes view, const audio_frame& frame, int headers, bool at_end);
  bool is_part_of_header(bytes view) const;
  bool goes_on(const audio_frame& frame) const;
  static std::size_t frames_alike(bytes view, const audio_frame& frame, bool at_end);
  void count(const audio_frame& frame, std::size_t frames);
  void check(bytes all, const audio_frame& frame);
  void cut_off(bytes view, std::uint64_t whole);
  void add_to_gap(bytes view);
  void close_gap();

  audio_facts facts_;
  std::vector<std::uint8_t> held_;  // behind facts_.bytes: fed, but more is needed to judge them
  state state_ = state::beginning;
  audio_kind first_bytes_ = audio_kind::unknown;
  audio_frame last_;                          // of the kind unknown before the first
  audio_gap gap_;                             // the open one; of size 0 if none is
  std::optional<audio_gap> gap_since_frame_;  // the first one behind the last frame
  std::uint64_t left_of_tag_ = 0;
  std::optional<checksum_of_frames> checksum_;  // of frames of the last size that was asked for
};

/// `read_audio_head` looks at no more bytes than these.
inline constexpr std::size_t audio_head_bytes = 65536;

/// What the first bytes of a file tell, in less than a millisecond; counts and lengths are those of
/// these bytes. `whole`: the file ends with them; else a frame that ends beyond them is not cut.
/// Nullopt if they show nothing: no frame, no tag and no format that is known.
std::optional<audio_facts> read_audio_head(std::span<const std::uint8_t> bytes, bool whole);

}  // namespace corvane

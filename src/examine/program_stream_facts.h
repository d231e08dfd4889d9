// What there is to know of an MPEG-1 or MPEG-2 program stream (a VOB, or what a multiplexer made)
// without decoding anything: its packs and navigation (NAV) packs, the streams inside with their
// time stamps and what they are themselves, the course of its clock, and bytes that belong nowhere.
//
// Nothing is judged here: rules hold these facts against what a disc allows. A stream of a stranger
// may hold anything; whatever it is, it has facts, and the scanner's memory is bounded.
//
// Positions are bytes from the beginning of the stream, the first is 0; those in the facts of a
// stream inside count its own bytes. Time stamps are those of the stream: 33 bits at 90 kHz, which
// begin again at 0 after 26 hours; that is no break. Clock references are likewise, at 27 MHz.
#pragma once

#include "examine/audio_facts.h"
#include "examine/counted_list.h"
#include "examine/video_facts.h"
#include "formats/program_stream.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

/// Time stamps count so many a second, clock references the other.
inline constexpr std::uint64_t stamps_a_second = 90'000;
inline constexpr std::uint64_t clocks_a_second = 27'000'000;

/// The kinds of streams inside, in the order of `program_stream_facts::streams`.
enum class inner_kind : std::uint8_t {
  video,          ///< E0 to EF; number 0 is E0
  mpeg_audio,     ///< C0 to DF; number 0 is C0
  ac3,            ///< private stream 1, 80 to 87; number 0 is 80
  dts,            ///< private stream 1, 88 to 8F; number 0 is 88
  lpcm,           ///< private stream 1, A0 to A7; number 0 is A0
  subpicture,     ///< private stream 1, 20 to 3F; number 0 is 20
  other_private,  ///< any other of private stream 1; the number is that of the substream
  other,          ///< any other stream; the number is the last byte of its start code
};

/// A time stamp or clock reference that does not follow the one before.
struct time_break {
  std::uint64_t position = 0;  ///< of the packet or pack header that it stands in
  std::uint64_t before = 0;    ///< the time before, as it stands
  std::uint64_t after = 0;     ///< the time there
  std::uint64_t elapsed = 0;   ///< time from the beginning up to it, without what breaks skip
  /// A NAV pack named another VOB since the time before: the times of a disc begin again there.
  bool new_vob = false;

  bool operator==(const time_break&) const = default;
};

/// What the header of each packet of LPCM sound says.
struct lpcm_format {
  int sample_rate = 0;  ///< in Hz: 48000 or 96000 on a disc
  int bits = 0;         ///< of a sample: 16, 20 or 24; 0: the forbidden value
  int channels = 0;

  bool operator==(const lpcm_format&) const = default;
};

/// A stream inside the program stream.
struct inner_stream {
  inner_kind kind = inner_kind::other;
  int number = 0;  ///< from 0 for kinds that have a range

  std::uint64_t first_packet = 0;  ///< position
  std::uint64_t packets = 0;
  /// Of the stream itself, in whole and cut packets: without packet headers and the header of a
  /// substream (4 bytes of AC-3 and DTS, 7 of LPCM, 1 of others).
  std::uint64_t payload_bytes = 0;

  std::uint64_t stamps = 0;  ///< packets with a presentation time stamp
  /// The earliest and latest presentation time stamps. In a stream with breaks, the earliest before
  /// the first of them and the latest behind the last one. Not set when there are no stamps. Of a
  /// packet with several pictures or frames, the first alone has a stamp.
  std::optional<stream_time> first, last;
  /// From the earliest to the latest, at 90 kHz; of a stream with breaks, of each stretch between
  /// them. What is shown or heard at the last stamp comes on top.
  stream_time length = 0;
  /// Where the times go back, or forward over a gap. Of video, these are the times of decoding:
  /// pictures are not in the order in which they are shown.
  counted_list<time_break> breaks;
  /// The longest way from one stamp to the next that is no gap, at 90 kHz: what any stream may
  /// take. Not of subpictures, which come when they come.
  static constexpr stream_time longest_gap = 63'000;
  /// Of video, whose multiplexers often stamp only the first picture of a group: so much more than
  /// its pictures are shown for; where streams are only counted, than the clock goes on.
  static constexpr stream_time longest_video_gap = 90'000;

  // What it is itself, as far as its kind has facts.
  std::optional<video_facts> video;  ///< of video
  std::optional<audio_facts> audio;  ///< of MPEG audio and AC-3
  std::optional<lpcm_format> lpcm;   ///< of LPCM: the first packet's
  std::uint64_t lpcm_changes = 0;    ///< packets of LPCM that say other things than the one before

  bool operator==(const inner_stream&) const = default;
};

/// Bytes between two packets, before the first or behind the last, that belong to none.
struct loose_bytes {
  std::uint64_t position = 0;
  std::uint64_t size = 0;  ///< at least 1
  bool zeros = false;      ///< nothing but bytes 0

  bool operator==(const loose_bytes&) const = default;
};

/// A packet or pack header with which the stream breaks off.
struct cut_packet {
  std::uint64_t position = 0;
  std::uint64_t bytes_there = 0;
  /// At least so many: where the length itself is cut off, those up to it.
  std::uint64_t bytes_missing = 0;

  bool operator==(const cut_packet&) const = default;
};

/// Where the NAV packs begin to name another VOB or cell.
struct cell_begin {
  std::uint64_t position = 0;  ///< of the pack
  int vob = 0;                 ///< as a disc numbers them, from 1; 0 before a disc is authored
  int cell = 0;

  bool operator==(const cell_begin&) const = default;
};

struct program_stream_facts {
  bool whole = false;       ///< the stream was read to its end; else these are of its beginning
  std::uint64_t bytes = 0;  ///< that were read

  // Packs. One reaches from its header to the next one, or to the end of the stream.
  std::uint64_t packs = 0;
  bool mpeg2 = false;                    ///< of the first pack; false: MPEG-1
  std::uint64_t packs_of_the_other = 0;  ///< MPEG-1 among MPEG-2 or the other way round
  /// Packs that do not begin on a multiple of 2048 bytes, or are not as long; by position.
  counted_list<std::uint64_t> uneven_packs;
  /// What their headers declare, in bits a second; 0 when there is none.
  std::uint64_t lowest_mux_rate = 0, highest_mux_rate = 0;
  std::uint64_t padding_bytes = 0;  ///< of padding packets, with headers

  // NAV packs: those with a presentation control packet (PCI). A unit (VOBU) begins with each.
  std::uint64_t nav_packs = 0;
  bool begins_with_nav_pack = false;            ///< the first pack is one and begins at byte 0
  std::optional<std::uint64_t> first_nav_pack;  ///< position
  /// From the beginning of one to that of the next or to the end of the stream, in bytes.
  std::uint64_t largest_nav_distance = 0;
  std::uint64_t largest_nav_distance_at = 0;  ///< position of the first of the two
  counted_list<cell_begin> cells;             ///< the first NAV pack begins one, too
  /// When the first picture of each unit is shown, in seconds from that of the first unit: by the
  /// time stamp of the unit's I picture, less the pictures that come before it. Gaps in the time
  /// stamps count. Of a whole stream whose streams are examined; empty if the times of a unit are
  /// not known, if they go back, or if there are more than `video_facts::most_units`.
  std::vector<double> unit_begins;
  double shown_until = 0;  ///< the same of the end of the last picture; 0 without `unit_begins`

  /// Streams inside, by kind and then number (before the end of the scan, by their first packets).
  /// Navigation and padding are none.
  std::vector<inner_stream> streams;

  // The clock (SCR), at 27 MHz.
  std::optional<std::uint64_t> first_clock, last_clock;
  std::uint64_t clock_length = 0;  ///< from the first to the last, without what breaks skip
  /// Where it goes back, or forward by a second more than the bytes between take at the mux rate.
  counted_list<time_break> clock_breaks;

  // What is no stream.
  counted_list<loose_bytes> loose;
  std::uint64_t loose_bytes_in_all = 0;
  std::optional<cut_packet> cut;
  bool end_code = false;                         ///< a program end code is the last packet
  counted_list<std::uint64_t> middle_end_codes;  ///< packets come after them; by position

  /// By the time stamps of the first video stream, the time of its last picture (at the rate that
  /// its sequence header states; where the streams are examined) included; 0 when there is no video
  /// or none has a stamp.
  double seconds = 0;

  /// Null if there is none.
  const inner_stream* find(inner_kind kind, int number = 0) const;
  const inner_stream* video() const;  ///< the first one
  int count_of(inner_kind kind) const;

  bool operator==(const program_stream_facts&) const = default;
};

/// Which facts are gathered of the streams inside.
enum class inner_streams : std::uint8_t {
  counted,   ///< packets, bytes and times: `video` and `audio` are not set
  examined,  ///< all of them, which takes as long as scanning each stream alone
};

class program_stream_scan;

/// Takes a stream's bytes in their order and gives its facts, the same for any slices.
///
/// Packets are walked from header to header. Behind bytes that begin none, and that are counted as
/// loose, the walk goes on at the next pack header: start codes of packets are found in any sound.
class program_stream_scanner {
 public:
  explicit program_stream_scanner(inner_streams streams = inner_streams::examined);
  program_stream_scanner(program_stream_scanner&&) noexcept;
  program_stream_scanner& operator=(program_stream_scanner&&) noexcept;
  ~program_stream_scanner();

  /// The next bytes of the stream.
  void feed(const std::uint8_t* data, std::size_t size);
  /// The stream has ended. Nothing may be fed afterwards.
  void finish();
  /// The stream goes on, but no more of it will be fed: what is not sure yet is left out.
  void stop();
  /// Complete after `finish` or `stop`; before, without `video` and `audio` of the streams inside,
  /// and of other facts what is settled so far.
  const program_stream_facts& facts() const;

 private:
  std::unique_ptr<program_stream_scan> scan_;
};

/// `read_program_stream_head` looks at no more bytes than these.
inline constexpr std::size_t program_stream_head_bytes = 256 * 1024;

/// What the first bytes of a file tell, in less than a millisecond; counts and lengths are those of
/// these bytes, and `whole` is false. Nullopt if they are no program stream: if no packet of a
/// stream, or of navigation or padding, is among them that stands behind a pack header.
std::optional<program_stream_facts> read_program_stream_head(
    std::span<const std::uint8_t> beginning);

}  // namespace corvane

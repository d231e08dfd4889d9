// What there is to know of an MPEG-1 or MPEG-2 video elementary stream without decoding a picture:
// what its headers state, how long it is shown, its groups of pictures (GOPs), its bit rate, and
// where it is not as such a stream must be.
//
// Nothing is judged here: rules hold these facts against what a disc allows. A stream of a stranger
// may hold anything; whatever it is, it has facts, and the scanner's memory stays below a megabyte.
//
// Times are seconds of display from the first picture shown, bytes are 0-based positions in the
// stream. The time of a place is that of the pictures before it in the stream; where a group
// begins, this is exactly when its first picture is shown. Fields are half pictures: a frame is
// shown for two, a repeated field makes it three.
#pragma once

#include "disc/disc_description.h"
#include "examine/counted_list.h"
#include "examine/read_ahead.h"
#include "formats/video_headers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace corvane {

struct video_place {
  std::uint64_t byte = 0;
  double seconds = 0;
  bool operator==(const video_place&) const = default;
};

enum class video_kind {
  none,        ///< no sequence header: no video, or too damaged to be called so
  elementary,  ///< what all other facts speak of
  packets,     ///< a program stream or its packets: the video is inside, these facts are not its
};

enum class video_damage_kind {
  bad_sequence_header,     ///< its values are forbidden ones; the one before stays in force
  bad_picture_header,      ///< a kind of picture that there is not; the picture does not count
  no_picture_extension,    ///< of MPEG-2: interlacing and repeated fields of the picture unknown
  picture_without_slices,  ///< headers of a picture and nothing of it
  missing_rows,            ///< a row of macroblocks, or several, is not there
  rows_out_of_order,       ///< a slice stands behind a later one, or below the picture
  slices_without_picture,  ///< no picture header before them
  lone_field,              ///< a field whose other field does not come
  group_without_intra,     ///< a GOP header, and the picture behind it is no I picture
  reserved_code,           ///< a start code that means nothing, or that tells of an error
  cut_at_end,              ///< the stream ends within a picture
};

struct video_damage {
  video_damage_kind kind = video_damage_kind::missing_rows;
  video_place place;  ///< the header or slice; of missing rows, where they are missing
  bool operator==(const video_damage&) const = default;
};

/// The stream goes on as another one.
struct video_change {
  video_place place;  ///< the sequence header
  video_shape before, after;
  bool operator==(const video_change&) const = default;
};

struct video_bytes {
  video_place place;
  std::uint64_t size = 0;
  bool operator==(const video_bytes&) const = default;
};

struct video_group {
  video_place place;  ///< its sequence or GOP header
  std::uint64_t pictures = 0;
  std::uint64_t fields = 0;  ///< shown
  bool operator==(const video_group&) const = default;
};

/// "NTSC" is 480 or 240 lines, "PAL" 576 or 288, whatever the rate.
video_standard standard_of(const video_shape& shape);

struct video_facts {
  video_kind kind = video_kind::none;
  bool whole = false;  ///< the stream was read to its end; else these are facts of its beginning
  std::uint64_t bytes = 0;  ///< that were read

  // What the first sequence header states. `shape.mpeg2` is false for MPEG-1.
  std::optional<video_shape> shape;  ///< width, height, rate, aspect code, progressive_sequence
  video_standard standard = video_standard::other;
  /// As it stands in MPEG-2: 0x48 is main profile at main level, 0x58 simple profile. 0 in MPEG-1.
  int profile_and_level = 0;
  int chroma_format = 1;   ///< 1: 4:2:0, 2: 4:2:2, 3: 4:4:4
  bool low_delay = false;  ///< no B pictures, and the buffer may run empty
  /// Declared, in bits a second. Not set: stated as variable (MPEG-1).
  std::optional<std::uint64_t> bit_rate;
  /// Stated so: by MPEG-1's bit rate, or by the first picture's vbv_delay.
  bool variable_bit_rate = false;
  std::uint64_t vbv_bytes = 0;  ///< buffer (vbv_buffer_size) that a decoder must have
  /// Of the sequence display extension, when there is one.
  std::optional<stored_size> display_size;

  // Pictures. Two fields that make a frame are one picture; it counts with its first slice, from
  // the first I picture on.
  std::uint64_t pictures = 0;
  std::uint64_t intra_pictures = 0;
  std::uint64_t field_pictures = 0;   ///< those of them that are coded as fields
  std::uint64_t hidden_pictures = 0;  ///< B pictures of an open first GOP that nobody can decode
  std::uint64_t pictures_before_intra = 0;  ///< not in `pictures`: before the first I picture
  std::uint64_t fields = 0;                 ///< shown, without those of hidden pictures
  std::uint64_t repeated_fields = 0;        ///< of `fields`, those shown again: pulldown when not 0
  double seconds = 0;  ///< exactly `fields` at the rate stated (each rate, where it changes)

  /// Where the units (VOBU) of a disc will begin: multiplexers begin one with each I picture. In
  /// seconds: the time of the pictures before it in the stream, which is when the first picture of
  /// the unit is shown. Empty, too, if there are more than `most_units`.
  std::vector<double> unit_begins;
  static constexpr std::size_t most_units = 100'000;

  // Groups of pictures. One begins with a GOP header, or with a sequence header where none is.
  std::uint64_t groups = 0;
  std::uint64_t open_groups = 0;  ///< with B pictures that need the group before
  std::optional<video_group> longest_group;
  /// How many groups are shown for so many fields; the last number is that of all longer ones, too.
  std::array<std::uint64_t, 101> groups_by_fields{};
  /// Groups of more than 30 fields, in order.
  counted_list<video_group> long_groups;
  static constexpr std::uint64_t long_group = 30;
  counted_list<video_place> groups_without_sequence_header;
  /// I pictures with no GOP header before them.
  counted_list<video_place> intra_without_group_header;
  bool first_group_open = false;  ///< it has hidden pictures
  /// GOP headers which say that the group before was cut off.
  counted_list<video_place> broken_links;

  // Bit rate, in bits a second, of pictures with their headers.
  std::uint64_t picture_bytes = 0;
  double average_rate = 0;
  /// The highest over a second of display: of the shortest runs of pictures that are shown for a
  /// second or longer. A stream shorter than a second counts as lasting one.
  double peak_rate = 0;
  video_place peak_place;  ///< where that second begins
  // Of a whole stream: what it needs of a decoder's buffer (examine/read_ahead.h).
  buffer_need need_of_video;
  std::vector<buffer_need> needs_in_packs;  ///< of a stream that is to be multiplexed
  std::uint64_t largest_picture = 0;        ///< in bytes
  video_place largest_picture_place;

  // Changes in mid stream, against the header in force before.
  counted_list<video_change> size_changes;
  counted_list<video_change> rate_changes;
  counted_list<video_change> aspect_changes;    ///< of the aspect code, within one coding
  counted_list<video_change> standard_changes;  ///< NTSC to PAL and so on
  counted_list<video_change> coding_changes;    ///< MPEG-1 to MPEG-2 and so on

  // Sequence end codes.
  bool end_code = false;                       ///< one stands behind the last picture
  counted_list<video_place> middle_end_codes;  ///< pictures come after them
  /// Where pictures go on without one after an end code.
  counted_list<video_place> missing_sequence_headers;

  // Bytes where none belong, unless all are zeros: before the first sequence header, or between an
  // end code and the next header.
  counted_list<video_bytes> stray_bytes;
  std::uint64_t stray_bytes_in_all = 0;
  counted_list<video_place> system_codes;  ///< start codes of packets (B9 to FF)

  counted_list<video_damage> damage;  ///< in order

  bool operator==(const video_facts&) const = default;
};

class video_scan;

/// Gathers the facts of a stream that is read in slices. However it is sliced, they are the same.
class video_scanner {
 public:
  /// `to_multiplex`: what the stream needs of a multiplexer's buffers is found out, too.
  explicit video_scanner(bool to_multiplex = true);
  video_scanner(video_scanner&&) noexcept;
  video_scanner& operator=(video_scanner&&) noexcept;
  ~video_scanner();

  /// The next bytes of the stream.
  void feed(const std::uint8_t* data, std::size_t size);
  /// The stream has ended. Call once.
  void finish();

  /// Of the whole stream after finish(); before it, of what is settled so far.
  const video_facts& facts() const;

 private:
  friend video_facts read_video_head(std::span<const std::uint8_t> beginning);
  std::unique_ptr<video_scan> scan_;
};

/// Facts of the beginning of a stream, from at most `enough_for_a_header` (64 KiB) of its bytes, in
/// well under a millisecond: `kind` and what the first sequence header states are those of the
/// whole stream, everything counted is only of these bytes. `whole` is false.
video_facts read_video_head(std::span<const std::uint8_t> beginning);

}  // namespace corvane

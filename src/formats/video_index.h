// Which pictures an MPEG video stream holds, where each begins, from where it can be decoded, and
// in which order and when they are shown.
//
// Two numbers name a picture: its place in the stream ("coded") and its place on the screen
// ("shown"), both 0-based. Two field pictures that make one frame are one picture. The order shown
// is the one in which a decoder gives pictures out: a B picture at once, any other when the next
// of its kind comes. For a right stream that is what temporal_reference says too; but that field
// wraps, restarts and is often wrong in edited streams, while this order never has holes.
//
// Pictures that nobody can decode have no place on the screen: those before the first I picture,
// and B pictures behind it that need a group which is not there.
//
// Costs 12 bytes a picture and a few a group: under 4 MB for two hours.
#pragma once

#include "formats/start_code_scanner.h"
#include "formats/video_headers.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

/// What decoding can begin with: an I picture and the headers before it, if it has any.
struct picture_group {
  std::uint64_t sequence_position = 0;  // of the sequence header in force
  std::uint32_t first_coded = 0;
  bool sequence_here = false;  // the group brings its sequence header along
  bool closed = false;         // its leading B pictures do without the group before
};

/// Bytes of the stream.
struct byte_range {
  std::uint64_t position = 0;
  std::uint64_t size = 0;
};

class video_index {
 public:
  /// More pictures than a day of video has are no video: the index keeps no more.
  static constexpr std::size_t most_pictures = 6'000'000;

  /// The first valid sequence header; nothing before one was found.
  const std::optional<video_shape>& shape() const { return shape_; }

  /// Pictures whose places are known. Grows while the stream is read.
  std::size_t coded() const { return settled_; }
  std::size_t shown() const { return order_.size(); }

  std::size_t coded_of(std::size_t shown) const { return order_.at(shown); }
  /// The picture and the headers before it.
  byte_range bytes_of(std::size_t coded) const;
  picture_kind kind_of(std::size_t coded) const;
  /// A B picture that is shown before the I picture of its group, which stands before it.
  bool leading(std::size_t coded) const;

  const std::vector<picture_group>& groups() const { return groups_; }
  std::size_t group_of(std::size_t coded) const;
  /// Which group is on the screen when picture `shown` is: the last one whose I picture is that
  /// picture or an earlier one.
  std::size_t group_shown(std::size_t shown) const;
  /// The I picture that a group begins with, as a number on the screen.
  std::size_t first_shown(std::size_t group) const { return first_shown_.at(group); }
  /// The picture that is on the screen first of a group: its I picture, or the first of the B
  /// pictures shown before it.
  std::size_t begin_shown(std::size_t group) const;
  /// How many groups have one.
  std::size_t groups_shown() const { return first_shown_.size(); }

  /// Fields (half frames) shown before a picture: 2 a picture, but for repeated ones.
  std::uint64_t fields_before(std::size_t shown) const;
  /// The picture on the screen during a field; `shown()` at the end.
  std::size_t shown_at_field(std::uint64_t field) const;

 private:
  friend class video_index_builder;

  std::optional<video_shape> shape_;
  std::vector<std::uint64_t> coded_;  // position << 8 | flags | fields << 2 | kind
  std::vector<std::uint32_t> order_;  // coded number by shown number
  std::vector<picture_group> groups_;
  std::vector<std::uint32_t> first_shown_;  // by group; as far as they are known
  std::vector<std::uint64_t> fields_;  // before each shown picture; empty while all are shown for 2
  std::size_t settled_ = 0;
  std::uint64_t end_ = 0;  // of the last settled picture
};

/// The headers between two slices: those of the picture that the second one begins.
struct picture_headers {
  std::uint64_t position = 0;
  bool sequence = false;
  bool group = false;
  bool closed = false;
  bool picture = false;
  picture_kind kind = picture_kind::other;
  picture_extension extension;
};

/// Makes an index from the stream, in slices.
class video_index_builder : private start_code_sink {
 public:
  /// `position` is that of the first byte that will be fed.
  explicit video_index_builder(std::uint64_t position = 0)
      : scanner_(*this, position), fed_(position) {}

  void feed(const std::uint8_t* data, std::size_t size);
  /// The stream has ended. Call once.
  void finish();

  const video_index& index() const { return index_; }

 private:
  void start_code_found(std::uint8_t code, std::uint64_t position,
                        const std::uint8_t* bytes) override;
  void header_found(std::uint8_t code, const std::uint8_t* bytes);
  void extension_found(const std::uint8_t* bytes);
  void slice_found();
  bool second_field() const;
  bool begins_group() const;
  void begin_group();
  void keep_picture();
  void settle_last(std::uint64_t end);
  void show(std::uint32_t coded);

  video_index index_;
  start_code_scanner scanner_;
  std::uint64_t fed_;
  std::optional<picture_headers> headers_;  // since the last slice
  std::optional<video_shape> shape_;        // as the last valid sequence header gave it
  std::uint64_t sequence_position_ = 0;
  std::optional<picture_extension> half_;  // of the last picture, when it is one field so far
  std::optional<std::uint32_t> waiting_;   // the I or P picture that the next one will have shown
  std::size_t references_in_group_ = 0;    // I and P pictures
};

}  // namespace corvane

// What an MPEG-2 video stream lacks for a disc when its encoder has ended, set in its headers
// without a picture being coded again: the code at its end, and the repeated fields that make
// film of 23.976 or 24 pictures a second NTSC video of 29.97 (pulldown). Proportions alone are set
// by formats/aspect_code.h.
//
// The stream is taken in slices of any size, in constant memory, and comes out as changes of single
// bytes: most of a stream stays as it is, and a file can be changed in its place.
#pragma once

#include "formats/start_code_scanner.h"
#include "platform/result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What is to be set.
struct video_finish {
  /// A sequence end code stands behind the last picture; one that is there is enough.
  bool end_code = false;

  /// Each second picture is shown for three fields, and the stream states 30000/1001 pictures a
  /// second. For streams that state 24000/1001, and for those that state 24, of which one picture
  /// in a thousand is a field shorter, so that none is late; of any other rate nothing is changed.
  /// Each group of pictures must begin with a header and number its pictures from 0, as encoders
  /// do.
  bool pulldown = false;

  bool operator==(const video_finish&) const = default;
};

/// A byte that is to be another.
struct byte_change {
  std::uint64_t position = 0;  ///< from the beginning of the stream, the first is 0
  std::uint8_t value = 0;

  bool operator==(const byte_change&) const = default;
};

class video_finisher final : private start_code_sink {
 public:
  explicit video_finisher(const video_finish& what) : what_(what), scanner_(*this) {}

  /// The next bytes of the stream.
  void feed(const std::uint8_t* data, std::size_t size) { scanner_.feed(data, size); }
  /// The stream has ended. Call once.
  void finish() { scanner_.finish(); }

  /// The changes since the last call, in no order; none stands behind what was fed, and some stand
  /// up to 12 bytes before the last slice.
  std::vector<byte_change> take_changes();

  /// After finish(): what is to be appended.
  std::string ending() const;

  /// Why the stream cannot be finished so, a sentence without a full stop. The changes are of no
  /// use then.
  const failure& why_not() const { return why_not_; }

 private:
  void start_code_found(std::uint8_t code, std::uint64_t position,
                        const std::uint8_t* bytes) override;
  void look_at_sequence(std::uint64_t position, const std::uint8_t* bytes);
  bool is_film() const;
  void look_at_extension(std::uint64_t position, const std::uint8_t* bytes);
  void set_repeated_field(std::uint64_t position, const std::uint8_t* bytes);
  void change(std::uint64_t position, std::uint8_t before, std::uint8_t value);
  void fail(const char* why);

  video_finish what_;
  std::vector<byte_change> changes_;
  failure why_not_;
  std::optional<unsigned> rate_;  // the code that the stream states; not set: no header yet
  std::uint64_t pictures_ = 0;    // before the group
  std::uint64_t in_group_ = 0;
  std::uint64_t shown_ = 0;  // the number of the picture, from 0, in the order of display
  std::optional<std::uint8_t> last_code_;
  start_code_scanner scanner_;
};

/// Finishes a short stream, as that of a still, in memory.
failure finish_video(std::string& stream, const video_finish& what);

}  // namespace corvane

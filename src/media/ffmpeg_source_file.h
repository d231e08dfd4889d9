// A file that somebody has, opened with FFmpeg: its bytes come from outside, and all that could
// lead to another file or a network is shut. A file of the module with the reader.
#pragma once

#include "media/ffmpeg_handles.h"
#include "media/source_reader.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <chrono>
#include <cstdint>
#include <cstring>
#include <memory>

namespace corvane {

/// The unit of a file's own times, AV_TIME_BASE_Q as C++ can write it.
inline constexpr AVRational unit_of_file{1, AV_TIME_BASE};

/// Seconds, as a count of units; not set for FFmpeg's "no value".
std::optional<double> seconds_of(std::int64_t count, AVRational unit);

/// A value of one of FFmpeg's enumerations as a number: what a file states stands in some of them
/// as it is, whether they have such a value or not.
template <typename Enumeration>
int number_of(const Enumeration& value) {
  static_assert(sizeof(Enumeration) == sizeof(int));
  int number = 0;
  std::memcpy(&number, &value, sizeof number);
  return number;
}

/// The pictures that are decoded have no more pixels than this: phones make 108 millions.
inline constexpr std::int64_t most_source_pixels = 120'000'000;

/// What a file is opened for: all of its streams, or a picture of one.
enum class source_purpose { facts, picture };

class source_demuxer {
 public:
  /// Opens it and looks at its streams. Fails with a sentence for a person. `bytes` must outlive
  /// what it gives.
  static result<std::unique_ptr<source_demuxer>> open(source_bytes& bytes,
                                                      const source_limits& limits,
                                                      source_purpose purpose);
  source_demuxer(const source_demuxer&) = delete;
  source_demuxer& operator=(const source_demuxer&) = delete;
  ~source_demuxer();

  AVFormatContext& format() const { return *format_; }

  /// The file's beginning, in AV_TIME_BASE; 0 where it is not known.
  std::int64_t start() const;

  /// The next packet of any stream. False at the end, at damage that nothing is read behind, and
  /// when time or bytes are spent.
  bool read(AVPacket& packet);

  /// Whether `read` came to the end of the file.
  bool at_end() const { return at_end_; }

  /// How much time went by, and how many bytes were read, since it was opened.
  std::chrono::milliseconds time_spent() const;
  std::int64_t bytes_read() const { return read_; }

  /// Lets it read and last only so much longer, within its limits, until this is called again.
  void allow(const source_limits& more);

  /// Whether the limits are used up, or what was allowed last.
  bool spent() const;

 private:
  source_demuxer(source_bytes& bytes, const source_limits& limits, source_purpose purpose)
      : bytes_(&bytes),
        limits_(limits),
        purpose_(purpose),
        allowed_(limits),
        began_(std::chrono::steady_clock::now()) {}

  static int read_bytes(void* of, std::uint8_t* to, int count);
  static std::int64_t seek_bytes(void* of, std::int64_t offset, int whence);
  static int is_interrupted(void* of);

  failure make_context();
  failure find_container();
  failure open_container();
  std::int64_t length_of_tag();
  std::string why_not_read(int error) const;

  source_bytes* bytes_;
  source_limits limits_;
  source_purpose purpose_;
  source_limits allowed_;  // counted as the limits are, from the beginning
  std::chrono::steady_clock::time_point began_;
  std::int64_t position_ = 0;
  std::int64_t read_ = 0;
  bool unreadable_ = false;
  bool at_end_ = false;
  AVIOContext* io_ = nullptr;
  AVFormatContext* format_ = nullptr;
  const AVInputFormat* kind_ = nullptr;
};

/// A decoder for a stream, for one processor. Returns nullptr if there is none.
codec_ptr decoder_of(const AVStream& stream);

}  // namespace corvane

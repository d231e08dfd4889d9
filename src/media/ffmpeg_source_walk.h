// What the first packets of a file tell that its headers do not: when pictures come up, how their
// fields stand, and, where the file says no length and is small enough, how long its streams are.
// A file of the module with the reader.
#pragma once

#include "media/ffmpeg_source_file.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

/// What was seen of a stream. Times are in its time base.
struct walked_stream {
  std::int64_t packets = 0;
  std::optional<std::int64_t> begin{};  ///< of the packet that is shown first
  std::optional<std::int64_t> end{};    ///< of the one that is shown last
  std::vector<std::int64_t> shown{};    ///< of the first pictures, as they come in
  std::vector<std::int64_t> decoded{};  ///< the times of decoding of the same packets
  int pictures = 0;                     ///< decoded, of these:
  int interlaced = 0;
  int top_first = 0;  ///< of the interlaced ones
};

/// How much of a file is looked through.
enum class walk_span {
  beginning,  ///< as much as tells how pictures come up
  both_ends,  ///< and the packets at its end, for when its streams end
  whole,      ///< all of it, unless that takes long
};

/// Reads on from where the file was opened. `ended` says afterwards whether the last packets were
/// seen, and so whether the ends of streams are known. `joined`: its clock jumps
/// (ffmpeg_source_clock.h); the times are then those without jumps.
struct packets_seen {
  std::vector<walked_stream> streams;
  bool ended = false;
  bool joined = false;
};
packets_seen walk_packets(source_demuxer& source, walk_span span);

/// Whether the times of pictures are not those of a constant rate, by the packets seen and by the
/// container's index.
bool has_variable_rate(const AVStream& stream, const walked_stream& seen);

/// Whether it is one of MPEG's, which can only be entered by bytes and has clocks that can jump.
bool is_multiplex(const AVInputFormat& container);

/// Whether the decoder of this kind tells whether pictures are interlaced.
bool tells_interlacing(AVCodecID codec);

}  // namespace corvane

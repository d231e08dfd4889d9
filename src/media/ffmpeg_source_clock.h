// The clock of a multiplex, which jumps where recordings were joined: MPEG's program and transport
// streams, whose parts each have a clock of their own. A file of the module with the reader.
#pragma once

#include "media/ffmpeg_source_file.h"

#include <cstdint>
#include <map>
#include <optional>

namespace corvane {

/// Follows packets as the ffmpeg program does when it reads a film, and so tells when what it makes
/// of them is shown: after a jump they go on where those before have ended.
class source_clock {
 public:
  /// `format` must outlive it.
  explicit source_clock(const AVFormatContext& format);

  /// Moves a packet's times to where they are without jumps.
  void follow(AVPacket& packet);

  /// What comes next is not what follows on the last packet.
  void leap();

  bool has_jumped() const { return jumped_; }

 private:
  void correct(std::int64_t by);

  const AVFormatContext& format_;
  bool may_jump_;
  bool jumped_ = false;
  std::int64_t offset_ = 0;  ///< of all times, in AV_TIME_BASE, as are these:
  struct stream_times {
    std::int64_t last, next;
  };
  std::map<int, stream_times> streams_;
  std::optional<std::int64_t> last_;  ///< of any stream
};

/// Finds the jumps in a multiplex that is too large to be read: at places all over it, and then
/// where the clock does not go on as much as between the others. What it reads, within what the
/// source allows, `clock` follows through each jump.
void find_jumps(source_demuxer& source, source_clock& clock);

}  // namespace corvane

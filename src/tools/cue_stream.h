// The stream that spumux writes while it draws text subtitles, read for its cues as it grows.
//
// It is a program stream of 2048-byte packs. spumux puts two kinds of packs into it: a padding
// packet that begins with "dvdauthor-data" and tells a cue's times and colours to dvdauthor, and
// after it the packs of private stream 1 with the cue's subpicture.
#pragma once

#include "tools/drawn_cue.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A cue as it is in the stream.
struct stream_cue {
  std::uint32_t begin = 0, end = 0;  ///< at 90 kHz, from the beginning of the stream
  std::vector<disc_colour> palette;
  std::string unit;  ///< the subpicture unit
};

class cue_stream {
 public:
  /// Takes what the stream has got since the last call, in whole packs (a part of one is left for
  /// the next call) and no more than some megabytes. False when there was nothing new. A file that
  /// is not there yet is empty.
  bool read(const std::string& file);

  /// The cues whose subpictures are complete, in the order of the stream.
  const std::vector<stream_cue>& cues() const { return cues_; }

 private:
  void take_pack(std::string_view pack);
  void take_data(std::string_view packet);
  void take_subpicture(std::string_view payload);

  std::uint64_t position_ = 0;  // of the next pack, in bytes
  stream_cue coming_;           // the cue that is being read
  std::vector<stream_cue> cues_;
};

/// A stream for spumux to put cues into: it begins at 0 and is a second long. spumux adds the cues
/// after its end too, as soon as each is drawn.
std::string stream_for_cues();

}  // namespace corvane

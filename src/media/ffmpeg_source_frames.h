// The frames of one stream, decoded one after the other: pictures, or pieces of sound. A file of
// the module with the reader.
#pragma once

#include "media/ffmpeg_source_file.h"

namespace corvane {

class frame_reader {
 public:
  /// Both must outlive it.
  frame_reader(source_demuxer& source, const AVStream& stream)
      : source_(source), stream_(stream), codec_(decoder_of(stream)), packet_(av_packet_alloc()) {}

  bool works() const { return codec_ && packet_; }

  /// The next one; nullptr at the end.
  frame_ptr next();

  /// The picture of a cover, which stands in no packet of the file's.
  frame_ptr attached();

 private:
  bool feed();

  source_demuxer& source_;
  const AVStream& stream_;
  codec_ptr codec_;
  packet_ptr packet_;
  bool drained_ = false;
};

}  // namespace corvane

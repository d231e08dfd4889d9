// FFmpeg's decoders: one packet in, at most one frame out; and frames as pictures.
#pragma once

#include "media/ffmpeg_handles.h"
#include "media/picture.h"
#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

class picture_decoder {
 public:
  /// Fails when FFmpeg was built without that decoder. FFmpeg is kept from writing to standard
  /// error, in the whole program.
  static result<picture_decoder> create(AVCodecID id);

  /// Decodes one whole picture, and gives it back; null when FFmpeg makes none of the bytes.
  /// Pictures are given in the order in which they come in, not in the one in which they are shown.
  frame_ptr decode(const std::vector<std::uint8_t>& bytes);

  /// Forgets all pictures decoded so far; the next one stands for itself.
  void restart();

 private:
  codec_ptr codec_;
  packet_ptr packet_;
  std::vector<std::uint8_t> padded_;
};

class picture_converter {
 public:
  /// Fails on frames that are too large, or when memory runs out.
  result<picture> convert(const AVFrame& frame);

 private:
  bool prepare(const AVFrame& frame);

  scaler_ptr scaler_;  // of the last frame; used again for the same kind
};

/// Bytes that a frame occupies.
std::size_t frame_bytes(const AVFrame& frame);

}  // namespace corvane

// A decoder of pictures: one coded picture in, at most one frame out; and frames as pictures.
//
// The decoders are FFmpeg's, whose libraries pull some eighty others in. So nothing here sees
// FFmpeg: decoders come from a module (decoder_module.h) that is loaded when the first one is asked
// for, and a session that shows no picture never pays for it.
#pragma once

#include "media/picture.h"
#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace corvane {

enum class picture_coding { mpeg1, mpeg2, bitmap, jpeg };

/// A picture as its decoder made it, not yet in red, green and blue.
class decoded_frame {
 public:
  decoded_frame() = default;
  decoded_frame(const decoded_frame&) = delete;
  decoded_frame& operator=(const decoded_frame&) = delete;
  virtual ~decoded_frame() = default;

  /// Bytes that it occupies.
  virtual std::size_t bytes() const = 0;
};

class picture_decoder {
 public:
  picture_decoder() = default;
  picture_decoder(const picture_decoder&) = delete;
  picture_decoder& operator=(const picture_decoder&) = delete;
  virtual ~picture_decoder() = default;

  /// Decodes one whole picture, and gives it back. Returns nullptr if the decoder makes none of the
  /// bytes. Pictures are given in the order in which they come in, not in that of the film.
  virtual std::unique_ptr<decoded_frame> decode(const std::vector<std::uint8_t>& bytes) = 0;

  /// Forgets all pictures decoded so far; the next one stands for itself.
  virtual void restart() = 0;

  /// A frame of this decoder's as a picture. Fails on frames that are too large, or when memory
  /// runs out.
  virtual result<picture> convert(const decoded_frame& frame) = 0;
};

/// Fails when FFmpeg was built without that decoder, and when the module that has the decoders is
/// missing or cannot be loaded.
result<std::unique_ptr<picture_decoder>> make_picture_decoder(picture_coding coding);

}  // namespace corvane

// How commands ask for the size of a picture file without a decoder of their own.
#pragma once

#include "platform/result.h"

#include <string>

namespace corvane {

/// Width and height of a picture, in pixels.
struct pixel_size {
  int width = 0, height = 0;
  bool operator==(const pixel_size&) const = default;
};

/// Decodes pictures; the windows have one over the media library, tests have their own.
class picture_loader {
 public:
  virtual ~picture_loader() = default;

  /// Decodes a picture file (native path) and gives its size. The reason of a failure stands in a
  /// message to the user.
  virtual result<pixel_size> size_of(const std::string& file) const = 0;
};

}  // namespace corvane

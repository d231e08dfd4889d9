// Whether a still video holds the pictures that it was to be made of: all of them, of the right
// size, to its last byte.
#pragma once

#include <string>

namespace corvane {

struct still_form {
  int pictures = 1;
  int lines = 480;  ///< of a picture: 480 or 576
  bool operator==(const still_form&) const = default;
};

/// Why the video at this native path is not of that form, as mpeg2enc makes it: a clause. Returns
/// an empty text if it is.
std::string why_not_this_still(const std::string& m2v, const still_form& asked);

}  // namespace corvane

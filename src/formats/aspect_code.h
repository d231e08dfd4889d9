// The proportions that a finished MPEG-2 video stream states, set to others.
#pragma once

#include "platform/result.h"

#include <string>

namespace corvane {

/// Values of aspect_ratio_information in MPEG-2. A DVD knows `narrow` and `wide` only.
namespace aspect_code {
inline constexpr int square = 1;  ///< pixels as high as wide
inline constexpr int narrow = 2;  ///< 4:3
inline constexpr int wide = 3;    ///< 16:9
}  // namespace aspect_code

/// Sets the code in all sequence headers of the video stream (no packs) at this native path, where
/// it is not there already. Nothing else in the file changes, not even its length: the four bits of
/// each header are written in their place, so that a stream of gigabytes needs no second one, and
/// little memory. For a file that its maker has just finished: one that is interrupted here states
/// the one in some headers and the other in the rest, and may be done again.
///
/// `code`: 1 to 15. Fails, as a clause, when the file cannot be read or written ("it cannot be
/// read: Permission denied"), when there is no video in it, and at the first header that is not of
/// MPEG-2: in MPEG-1 the codes mean something else.
failure set_aspect_code(const std::string& m2v, int code);

}  // namespace corvane

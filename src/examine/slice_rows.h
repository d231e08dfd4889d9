// Whether the slices of a picture are all there, by the rows of macroblocks that their start codes
// number from 1. Each slice of MPEG-2 lies in one row and no row goes without; a slice of MPEG-1
// may hold many rows, so that only the first one is sure.
#pragma once

#include "formats/video_headers.h"

#include <cstdint>

namespace corvane {

class slice_rows {
 public:
  enum class found : std::uint8_t { nothing, gap, disorder };

  /// A picture (a frame or one field) of such a stream begins.
  void begin(const video_shape& shape, const picture_extension& extension) {
    constexpr int highest = 2800;  // above it, start codes do not tell the row
    const int lines = extension.structure == picture_extension::frame ? 16 : 32;
    const bool pairs = shape.mpeg2 && !shape.progressive_sequence;  // rows come in pairs
    rows_ =
        lines == 16 && pairs ? 2 * ((shape.height + 31) / 32) : (shape.height + lines - 1) / lines;
    if (shape.height > highest)
      rows_ = 0;
    strict_ = shape.mpeg2;
    last_ = 0;
  }

  /// The next slice.
  found slice(int row) {
    if (row == last_ || row == last_ + 1) {
      last_ = row;
      return rows_ == 0 || row <= rows_ ? found::nothing : found::disorder;
    }
    return uneven(row);
  }

  /// Whether the last row is there; true where that cannot be told.
  bool complete() const { return !strict_ || rows_ == 0 || last_ >= rows_; }

 private:
  found uneven(int row) {
    if (rows_ == 0)
      return found::nothing;
    if (row < last_ || row > rows_)
      return found::disorder;
    const bool missing = strict_ || last_ == 0;
    last_ = row;
    return missing ? found::gap : found::nothing;
  }

  int rows_ = 0;  // 0: not known
  int last_ = 0;
  bool strict_ = false;
};

}  // namespace corvane
